#pragma once

// The text of a message box: as much of it as there is room for, and the control that shows it.

#include <afxwin.h>

namespace kadata {

// How a message is measured and drawn: no mnemonics, no tabs.
constexpr UINT MESSAGE_FORMAT = DT_WORDBREAK | DT_NOPREFIX;

// The part of `text` that fits into `room` when it wraps at `wrapWidth`: the whole, or its beginning and dots. Words that are
// wider than the room are broken. `size` becomes its size in the font of the device context.
CString FitMessage(CDC& dc, const CString& text, int wrapWidth, CSize room, CSize& size);

// A static control that draws what it is given exactly as it was measured; its window text may be more than that.
class MessageText : public CStatic {
public:
    MessageText(const CString& shown, UINT alignment) : shown_(shown), format_(MESSAGE_FORMAT | alignment) {}

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void DrawOn(CDC& dc);

    CString shown_;
    UINT format_;
};

}  // namespace kadata
