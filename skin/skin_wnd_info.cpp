// Where the parts of a window's frame are.

#include <kadata/skin_window.h>

#include <algorithm>

namespace {

// In coordinates of the screen, whatever the window is mirrored or scrolled by.
CRect ClientOnScreen(HWND window) {
    CRect client;
    GetClientRect(window, &client);
    MapWindowPoints(window, nullptr, reinterpret_cast<LPPOINT>(&client), 2);
    return client;
}

HRGN RegionOf(const CRect& rect) {
    return CreateRectRgn(rect.left, rect.top, rect.right, rect.bottom);
}

// Changes `region` and returns it.
HRGN Combined(HRGN region, const CRect& rect, int mode) {
    const HRGN other = RegionOf(rect);
    CombineRgn(region, region, other, mode);
    DeleteObject(other);
    return region;
}

}  // namespace

CSkinWndInfo::CSkinWndInfo(CWnd* wnd) : m_Window(wnd != nullptr ? wnd->GetSafeHwnd() : nullptr), m_InitialStyle(Style()) {}

DWORD CSkinWndInfo::Style() const {
    return static_cast<DWORD>(GetWindowLongW(m_Window, GWL_STYLE));
}

DWORD CSkinWndInfo::ExStyle() const {
    return static_cast<DWORD>(GetWindowLongW(m_Window, GWL_EXSTYLE));
}

BOOL CSkinWndInfo::HasInitialSysMenu() const {
    return (m_InitialStyle & WS_SYSMENU) != 0;
}

BOOL CSkinWndInfo::HasInitialCaption() const {
    return (m_InitialStyle & WS_CAPTION) != 0;
}

BOOL CSkinWndInfo::HasInitialMaximizeBox() const {
    return (m_InitialStyle & WS_MAXIMIZEBOX) != 0;
}

BOOL CSkinWndInfo::HasInitialMinimizeBox() const {
    return (m_InitialStyle & WS_MINIMIZEBOX) != 0;
}

BOOL CSkinWndInfo::HasSysMenu() const {
    return (Style() & WS_SYSMENU) != 0;
}

BOOL CSkinWndInfo::HasBorder() const {
    return TRUE;
}

BOOL CSkinWndInfo::HasCaption() const {
    return (Style() & WS_CAPTION) != 0;
}

BOOL CSkinWndInfo::HasMaximizeBox() const {
    return (Style() & WS_MAXIMIZEBOX) != 0;
}

BOOL CSkinWndInfo::HasMinimizeBox() const {
    return (Style() & WS_MINIMIZEBOX) != 0;
}

BOOL CSkinWndInfo::HasThickFrame() const {
    return (Style() & WS_THICKFRAME) != 0 || (Style() & WS_OVERLAPPEDWINDOW) == WS_OVERLAPPEDWINDOW;
}

CRect CSkinWndInfo::WindowRect(int screen) const {
    CSkinWindowRect rect(m_Window);
    if (screen == 0) {
        rect.OffsetRect(-rect.left, -rect.top);
    }
    return rect;
}

// What the system's frame adds on each side, without the caption; but not more than the window has.
CRect CSkinWndInfo::BorderWidths() const {
    const DWORD style = Style();
    CRect frame;
    AdjustWindowRectEx(&frame, style, FALSE, ExStyle() & ~static_cast<DWORD>(WS_EX_CLIENTEDGE));
    const bool captioned = (style & WS_CAPTION) == WS_CAPTION;
    const LONG top = captioned ? frame.bottom : -frame.top;  // the borders above and below are of one height
    const CRect window = WindowRect(TRUE);
    const CRect client = ClientOnScreen(m_Window);
    const auto limited = [](LONG width, LONG most) { return std::clamp<LONG>(width, 0, std::max<LONG>(most, 0)); };
    return {limited(-frame.left, client.left - window.left), limited(top, client.top - window.top),
            limited(frame.right, window.right - client.right), limited(frame.bottom, window.bottom - client.bottom)};
}

CRect CSkinWndInfo::GetBorderRect(int screen) const {
    if (!HasBorder()) {
        return {};
    }
    return {GetLeftBorderRect(screen).left, GetTopBorderRect(screen).top, GetRightBorderRect(screen).right,
            GetBottomBorderRect(screen).bottom};
}

CRect CSkinWndInfo::GetClientRect(int screen) const {
    CRect client = ClientOnScreen(m_Window);
    if (screen == 0) {
        client.OffsetRect(-WindowRect(TRUE).TopLeft());
    }
    return client;
}

CRect CSkinWndInfo::GetCaptionRect(int screen) const {
    if (!HasCaption()) {
        return {};
    }
    const bool small = (ExStyle() & WS_EX_TOOLWINDOW) != 0;
    const LONG top = GetTopBorderRect(screen).bottom;
    return {GetLeftBorderRect(screen).right, top, GetRightBorderRect(screen).left,
            top + GetSystemMetrics(small ? SM_CYSMCAPTION : SM_CYCAPTION)};
}

CRect CSkinWndInfo::GetLeftBorderRect(int screen) const {
    const CRect widths = BorderWidths();
    const CRect rect = WindowRect(screen);
    return {rect.left, rect.top + widths.top, rect.left + widths.left, rect.bottom - widths.bottom};
}

CRect CSkinWndInfo::GetRightBorderRect(int screen) const {
    const CRect widths = BorderWidths();
    const CRect rect = WindowRect(screen);
    return {rect.right - widths.right, rect.top + widths.top, rect.right, rect.bottom - widths.bottom};
}

CRect CSkinWndInfo::GetTopBorderRect(int screen) const {
    const CRect rect = WindowRect(screen);
    return {rect.left, rect.top, rect.right, rect.top + BorderWidths().top};
}

CRect CSkinWndInfo::GetBottomBorderRect(int screen) const {
    const CRect rect = WindowRect(screen);
    return {rect.left, rect.bottom - BorderWidths().bottom, rect.right, rect.bottom};
}

HRGN CSkinWndInfo::GetClipRGN(int screen) const {
    return Combined(GetCaptionAndBorderRGN(screen), GetClientRect(screen), RGN_DIFF);
}

HRGN CSkinWndInfo::GetCaptionRGN(int screen) const {
    return RegionOf(GetCaptionRect(screen));
}

HRGN CSkinWndInfo::GetClientRGN(int screen) const {
    return RegionOf(GetClientRect(screen));
}

HRGN CSkinWndInfo::GetBorderRGN(int screen) const {
    HRGN region = RegionOf(GetTopBorderRect(screen));
    for (const CRect& rect : {GetLeftBorderRect(screen), GetRightBorderRect(screen), GetBottomBorderRect(screen)}) {
        Combined(region, rect, RGN_OR);
    }
    return region;
}

HRGN CSkinWndInfo::GetCaptionAndBorderRGN(int screen) const {
    return Combined(GetBorderRGN(screen), GetCaptionRect(screen), RGN_OR);
}
