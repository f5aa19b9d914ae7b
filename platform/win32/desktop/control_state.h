#pragma once

// What buttons and statics have in common: values of their own behind their window, colours from the parent, a font.

#include <memory>
#include <new>
#include <utility>

#include "../gdi/contexts.h"
#include "default_procedure.h"
#include "desktop_state.h"
#include "message_queue.h"
#include "painting.h"
#include "window_record.h"
#include "window_tree.h"

namespace kawin {

// The class's window bytes hold a pointer to the values; made with the window, gone with it.
template <class State>
State* ControlState(HWND control) noexcept {
    return reinterpret_cast<State*>(GetWindowLongPtrW(control, 0));
}

template <class State>
bool MakeControlState(HWND control) noexcept try {
    const auto state = std::make_shared<State>();
    {
        const DesktopLock desktop;
        Window* const window = desktop.Look(control);
        if (window == nullptr) {
            return false;
        }
        window->control = state;
    }
    SetWindowLongPtrW(control, 0, reinterpret_cast<LONG_PTR>(state.get()));
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

template <class State>
void EndControlState(HWND control) noexcept {
    SetWindowLongPtrW(control, 0, 0);
    std::shared_ptr<void> ended;  // destroyed without the lock
    const DesktopLock desktop;
    if (Window* const window = desktop.Look(control)) {
        ended = std::move(window->control);
    }
}

inline DWORD StyleOfControl(HWND control) noexcept {
    return static_cast<DWORD>(GetWindowLongW(control, GWL_STYLE));
}

inline void TellParent(HWND control, WORD what) noexcept {
    SendMessageW(GetParent(control), WM_COMMAND, MAKEWPARAM(static_cast<ULONG_PTR>(GetDlgCtrlID(control)), what),
                 reinterpret_cast<LPARAM>(control));
}

// The parent's colours for a control, in its context; the brush for what is behind it.
inline HBRUSH ParentColors(HWND control, HDC context, UINT message) noexcept {
    const HWND parent = GetParent(control);
    const auto wparam = reinterpret_cast<WPARAM>(context);
    const auto lparam = reinterpret_cast<LPARAM>(control);
    auto brush = reinterpret_cast<HBRUSH>(SendMessageW(parent, message, wparam, lparam));
    if (brush == nullptr) {
        brush = reinterpret_cast<HBRUSH>(DefWindowProcW(parent, message, wparam, lparam));
    }
    return brush;
}

// A font that is selected while it lives; null leaves the context's own.
class SelectedFont {
public:
    SelectedFont(HDC context, HFONT font) noexcept
        : context_(context), before_(font != nullptr ? SelectObject(context, font) : nullptr) {}
    SelectedFont(const SelectedFont&) = delete;
    SelectedFont& operator=(const SelectedFont&) = delete;
    ~SelectedFont() {
        if (before_ != nullptr) {
            SelectObject(context_, before_);
        }
    }

private:
    HDC context_;
    HGDIOBJ before_;
};

// WM_PAINT and WM_PRINTCLIENT alike: `draw(context)` in the context that there is, or in that of the update region.
template <class Draw>
void PaintControl(HWND control, WPARAM context, Draw&& draw) {
    if (context != 0) {
        draw(reinterpret_cast<HDC>(context));
        return;
    }
    PAINTSTRUCT paint = {};
    if (const HDC own = BeginPaint(control, &paint)) {
        draw(own);
        EndPaint(control, &paint);
    }
}

}  // namespace kawin
