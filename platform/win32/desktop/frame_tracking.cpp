// Boxes of the caption while they are hot or held down.

#include "frame_tracking.h"

#include "desktop_state.h"
#include "frame_layout.h"
#include "input.h"
#include "message_queue.h"
#include "window_tree.h"

namespace kawin {
namespace {

// Drawn through WM_NCPAINT, so that a window which draws its own frame stays in charge.
void SetFrame(HWND handle, int FrameState::*member, int value) {
    {
        const DesktopLock desktop;
        Window* const window = desktop.Look(handle);
        if (window == nullptr || window->frame.*member == value) {
            return;
        }
        window->frame.*member = value;
    }
    SendMessageW(handle, WM_NCPAINT, 1, 0);
}

bool IsBox(int hit) noexcept {
    return hit == HTCLOSE || hit == HTMAXBUTTON || hit == HTMINBUTTON;
}

bool IsOver(HWND window, int box, POINT screen) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return BoxAt(LayoutOf(window), {screen.x - rect.left, screen.y - rect.top}) == box;
}

bool IsPointerMessage(UINT message) noexcept {
    return (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) || (message >= WM_NCMOUSEMOVE && message <= WM_NCXBUTTONDBLCLK);
}

}  // namespace

void SetHotBox(HWND window, int hit) {
    SetFrame(window, &FrameState::hot, IsBox(hit) ? hit : HTNOWHERE);
    if (IsBox(hit)) {
        TRACKMOUSEEVENT track = {sizeof track, TME_LEAVE | TME_NONCLIENT, window, 0};
        TrackMouseEvent(&track);
    }
}

bool TrackBox(HWND window, int box) {
    SetCapture(window);
    SetFrame(window, &FrameState::pressed, box);
    bool released_over = false;
    MSG message;
    while (GetCapture() == window) {
        if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
            PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        if (message.message == WM_LBUTTONUP) {
            released_over = IsOver(window, box, message.pt);
            break;
        }
        if (message.message == WM_MOUSEMOVE) {
            SetFrame(window, &FrameState::pressed, IsOver(window, box, message.pt) ? box : HTNOWHERE);
        } else if (!IsPointerMessage(message.message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    if (GetCapture() == window) {
        ReleaseCapture();
    }
    SetFrame(window, &FrameState::pressed, HTNOWHERE);
    return released_over && IsWindow(window);
}

}  // namespace kawin
