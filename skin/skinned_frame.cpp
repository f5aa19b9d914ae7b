#include "skinned_frame.h"

#include <algorithm>

namespace kadata {
CRect SkinnedFrame::Outer() const {
    CRect rect;
    window_.GetWindowRect(rect);
    return {CPoint(), rect.Size()};
}

int SkinnedFrame::CaptionHeight() const {
    const SkinInfo& info = surfaces_.Info();
    const bool tool = (window_.GetExStyle() & WS_EX_TOOLWINDOW) != 0;
    return static_cast<int>(tool ? info.nSmallCaptionHeight : info.nCaptionHeight);
}

void SkinnedFrame::AddTo(RECT& client) const {
    const int side = static_cast<int>(surfaces_.Info().nFrameWidth) + surfaces_.Line();
    CRect rect(client);
    rect.InflateRect(side, CaptionHeight() + surfaces_.Line(), side, side);
    client = rect;
}

void SkinnedFrame::TakeFrom(RECT& window) const {
    RECT margins = {};
    AddTo(margins);
    // Of a window that is smaller than its frame nothing is left.
    window.left -= margins.left;
    window.top -= margins.top;
    window.right = std::max(window.right - margins.right, window.left);
    window.bottom = std::max(window.bottom - margins.bottom, window.top);
}

CRect SkinnedFrame::CloseBox() const {
    if ((window_.GetStyle() & WS_SYSMENU) == 0) {
        return {};
    }
    const SkinInfo& info = surfaces_.Info();
    const int width = static_cast<int>(info.nCaptionButtonWidth);
    const int height = std::min(static_cast<int>(info.nCaptionButtonHeight), CaptionHeight());
    const int right = Outer().right - static_cast<int>(info.nFrameWidth) - surfaces_.Line();
    const int top = (CaptionHeight() + 2 * surfaces_.Line() - height) / 2;  // below the frame's upper edge
    return {right - width, top, right, top + height};
}

bool SkinnedFrame::CanClose() const {
    CMenu* const menu = window_.GetSystemMenu(FALSE);
    const UINT state = menu != nullptr ? menu->GetMenuState(SC_CLOSE, MF_BYCOMMAND) : 0;
    return state == static_cast<UINT>(-1) || (state & (MF_GRAYED | MF_DISABLED)) == 0;
}

bool SkinnedFrame::IsOverCloseBox(CPoint screen) const {
    CRect rect;
    window_.GetWindowRect(rect);
    return CloseBox().PtInRect(screen - CSize(rect.left, rect.top));
}

LRESULT SkinnedFrame::HitTest(CPoint screen) const {
    CRect window;
    window_.GetWindowRect(window);
    CRect client = window;
    TakeFrom(client);
    if (!window.PtInRect(screen)) {
        return HTNOWHERE;
    }
    if (client.PtInRect(screen)) {
        return HTCLIENT;
    }
    if (IsOverCloseBox(screen)) {
        return HTCLOSE;
    }
    const bool besides = screen.x < client.left || screen.x >= client.right;
    return screen.y >= client.top || (besides && screen.y >= window.top + CaptionHeight()) ? HTBORDER : HTCAPTION;
}

bool SkinnedFrame::Handle(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    result = 0;
    return HandleLook(message, wParam, lParam, result) || HandlePointer(message, wParam, lParam);
}

bool SkinnedFrame::HandleLook(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    switch (message) {
        case WM_NCCALCSIZE:
            TakeFrom(*reinterpret_cast<RECT*>(lParam));  // the first one of NCCALCSIZE_PARAMS, too
            return true;
        case WM_NCPAINT:
            Draw();
            return true;
        case WM_NCACTIVATE:
            active_ = wParam != FALSE;
            Draw();
            result = TRUE;
            return true;
        case WM_NCHITTEST:
            result = HitTest(CPoint(lParam));
            return true;
        case WM_PRINT:
            Print(wParam, lParam);
            return true;
        default:
            return false;
    }
}

bool SkinnedFrame::HandlePointer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NCMOUSEMOVE:
            SetHot(wParam == HTCLOSE);
            return true;
        case WM_NCMOUSELEAVE:
            SetHot(false);
            return true;
        case WM_NCLBUTTONDOWN:
        case WM_NCLBUTTONDBLCLK:
            if (wParam == HTCLOSE) {
                Press();
            }
            return wParam == HTCLOSE;
        case WM_MOUSEMOVE:
            if (pressed_) {
                Follow(ToScreen(lParam));
            }
            return pressed_;
        case WM_LBUTTONUP:
            if (pressed_) {
                Release(ToScreen(lParam));
                return true;
            }
            return false;
        case WM_CAPTURECHANGED:
            pressed_ = false;
            SetHot(false);
            return false;
        default:
            return false;
    }
}

bool SkinnedFrame::IsSpoiledBy(UINT message) {
    return message == WM_SETTEXT || message == WM_SETICON || message == WM_ENABLE;
}

// The client area is asked to print itself as a window without frame would be.
void SkinnedFrame::Print(WPARAM dc, LPARAM parts) {
    CDC& context = *CDC::FromHandle(reinterpret_cast<HDC>(dc));
    const int depth = context.SaveDC();
    if ((parts & PRF_NONCLIENT) != 0) {
        Draw(context);
        RECT margins = {};
        AddTo(margins);
        context.OffsetViewportOrg(-margins.left, -margins.top);
    }
    ::DefWindowProcW(window_, WM_PRINT, dc, parts & ~LPARAM{PRF_NONCLIENT});
    context.RestoreDC(depth);
}

CPoint SkinnedFrame::ToScreen(LPARAM client) const {
    CPoint point(client);
    window_.ClientToScreen(&point);
    return point;
}

void SkinnedFrame::SetHot(bool hot) {
    if (hot == hot_) {
        return;
    }
    hot_ = hot;
    if (hot) {
        TRACKMOUSEEVENT track = {sizeof(track), TME_LEAVE | TME_NONCLIENT, window_, 0};
        TrackMouseEvent(&track);
    }
    Draw();
}

void SkinnedFrame::Press() {
    if (!CanClose()) {
        return;
    }
    window_.SetCapture();
    pressed_ = hot_ = true;
    Draw();
}

void SkinnedFrame::Follow(CPoint screen) {
    const bool over = IsOverCloseBox(screen);
    if (over != hot_) {
        hot_ = over;
        Draw();
    }
}

void SkinnedFrame::Release(CPoint screen) {
    const bool closes = IsOverCloseBox(screen) && CanClose();
    ReleaseCapture();  // nothing is pressed then
    if (closes) {
        window_.PostMessage(WM_SYSCOMMAND, SC_CLOSE, MAKELPARAM(screen.x, screen.y));
    }
}

}  // namespace kadata
