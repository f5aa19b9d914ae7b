#pragma once

// A push button or check box of a skinned dialog.

#include <afxwin.h>

#include <memory>
#include <vector>

#include "dialog_surfaces.h"

namespace kadata {

// The control stays the system's in all that it does; only its looks are replaced. It is no owner-drawn button: those have
// neither a default state nor a check.
class SkinPushButton : public CButton {
public:
    // Whether a window is a button that this can draw.
    static bool CanDraw(HWND window, DialogSurfaces& surfaces);

    explicit SkinPushButton(DialogSurfaces& surfaces) : surfaces_(surfaces) {}

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Paint();
    void DrawOn(CDC& target);
    void DrawPushButton(CDC& dc, Gdiplus::Graphics* graphics, const CRect& rect);
    void DrawCheckBox(CDC& dc, Gdiplus::Graphics* graphics, const CRect& rect);
    void DrawCheckBoxText(CDC& dc, CRect rect);
    void DrawFocus(CDC& dc, const CRect& rect);
    bool IsCheckBox() const;
    bool ShowsFocus() const;
    // `isDefault`: the button that Enter presses, or a check box with the focus.
    CSkin::ESkinBitmapType Type(bool isDefault) const;
    void SetHot(bool hot);
    LRESULT Silently(UINT message, WPARAM wParam, LPARAM lParam);

    DialogSurfaces& surfaces_;
    bool hot_ = false;
};

// Those of one dialog.
class SkinnedButtons {
public:
    void Add(HWND button, DialogSurfaces& surfaces);

private:
    std::vector<std::unique_ptr<SkinPushButton>> buttons_;
};

}  // namespace kadata
