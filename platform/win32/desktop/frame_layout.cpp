#include "frame_layout.h"

#include <algorithm>

#include "menu_table.h"
#include "metrics.h"
#include "rectangles.h"
#include "window_tree.h"

namespace kawin {
namespace {

constexpr int kGap = 6;          // between the icon, the text and the boxes
constexpr int kCorner = 16;      // how far along an edge its corner is grabbed
constexpr int kCaptionLine = 1;  // below the caption

DWORD StyleOf(HWND window) noexcept {
    return static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
}

DWORD ExtendedStyleOf(HWND window) noexcept {
    return static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE));
}

bool HasIcon(DWORD style, DWORD extended) noexcept {
    return (style & WS_SYSMENU) != 0 && (extended & (WS_EX_TOOLWINDOW | WS_EX_DLGMODALFRAME)) == 0;
}

// Cuts a box off the right end of what is left of the caption.
RECT TakeBox(RECT& rest, int width) noexcept {
    const LONG left = std::max<LONG>(rest.left, rest.right - width);
    const RECT box = {left, rest.top, rest.right, rest.bottom};
    rest.right = left;
    return box;
}

void PlaceInCaption(FrameLayout& layout, DWORD style, DWORD extended) noexcept {
    RECT rest = layout.caption;
    const bool tool = (extended & WS_EX_TOOLWINDOW) != 0;
    const int width = GetSystemMetrics(tool ? SM_CXSMSIZE : SM_CXSIZE);
    if ((style & WS_SYSMENU) != 0) {
        layout.close = TakeBox(rest, width);
        if (!tool && (style & (WS_MINIMIZEBOX | WS_MAXIMIZEBOX)) != 0) {
            layout.maximise = TakeBox(rest, width);
            layout.minimise = TakeBox(rest, width);
        }
    }
    rest.left = std::min(rest.left + kGap, rest.right);
    if (HasIcon(style, extended)) {
        const int side = GetSystemMetrics(SM_CXSMICON);
        const LONG top = rest.top + std::max<LONG>(0, (rest.bottom - rest.top - side) / 2);
        layout.icon = {rest.left, top, std::min<LONG>(rest.left + side, rest.right), top + side};
        rest.left = std::min(layout.icon.right + kGap, rest.right);
    }
    rest.right = std::max(rest.left, rest.right - kGap);
    layout.text = rest;
}

// -1, 0 or 1: at the low end of a side, in the middle, at the high end.
int Third(LONG at, LONG low, LONG high, int reach) noexcept {
    return at < low + reach ? -1 : at >= high - reach ? 1 : 0;
}

// The edge or corner of a window that can be dragged there.
int SizingPart(const FrameLayout& layout, POINT at) noexcept {
    constexpr int kParts[3][3] = {
        {HTTOPLEFT, HTTOP, HTTOPRIGHT}, {HTLEFT, HTNOWHERE, HTRIGHT}, {HTBOTTOMLEFT, HTBOTTOM, HTBOTTOMRIGHT}};
    const RECT& window = layout.window;
    const int edge = layout.layers.edge_width;
    const int x = Third(at.x, window.left, window.right, edge);
    const int y = Third(at.y, window.top, window.bottom, edge);
    if (x == 0 && y == 0) {
        return HTNOWHERE;
    }
    const int corner_x = x != 0 ? x : Third(at.x, window.left, window.right, kCorner);
    const int corner_y = y != 0 ? y : Third(at.y, window.top, window.bottom, kCorner);
    return kParts[corner_y + 1][corner_x + 1];
}

RECT WindowRectOf(HWND window) noexcept {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return rect;
}

bool IsInClientArea(HWND window, POINT screen) noexcept {
    RECT client = {};
    GetClientRect(window, &client);
    ScreenToClient(window, &screen);
    return PtInRect(&client, screen) != FALSE;
}

}  // namespace

FrameLayers LayersOf(DWORD style, DWORD extended) noexcept {
    FrameLayers layers;
    const bool modal = (extended & WS_EX_DLGMODALFRAME) != 0;
    if ((style & WS_THICKFRAME) != 0) {
        layers.edge = FrameEdge::Sizing;
        layers.edge_width = GetSystemMetrics(SM_CXSIZEFRAME) + GetSystemMetrics(SM_CXPADDEDBORDER);
    } else if ((style & WS_DLGFRAME) != 0 || modal) {
        layers.edge = FrameEdge::Dialog;
        layers.edge_width = GetSystemMetrics(SM_CXFIXEDFRAME);
    } else if ((style & WS_BORDER) != 0) {
        layers.edge = FrameEdge::Line;
        layers.edge_width = GetSystemMetrics(SM_CXBORDER);
    }
    if ((extended & WS_EX_STATICEDGE) != 0 && !modal && layers.edge != FrameEdge::Sizing && layers.edge != FrameEdge::Dialog) {
        layers.static_edge = GetSystemMetrics(SM_CXBORDER);
    }
    if ((style & WS_CAPTION) == WS_CAPTION) {
        layers.caption = GetSystemMetrics((extended & WS_EX_TOOLWINDOW) != 0 ? SM_CYSMCAPTION : SM_CYCAPTION);
    }
    if ((extended & WS_EX_CLIENTEDGE) != 0) {
        layers.client_edge = GetSystemMetrics(SM_CXEDGE);
    }
    return layers;
}

FrameWidths FrameOf(DWORD style, DWORD extended) noexcept {
    const FrameLayers layers = LayersOf(style, extended);
    const int side = layers.edge_width + layers.static_edge + layers.client_edge;
    return {side, side + layers.caption, side, side};
}

FrameLayout LayoutOf(HWND window) {
    const DWORD style = StyleOf(window);
    const DWORD extended = ExtendedStyleOf(window);
    const RECT rect = WindowRectOf(window);
    FrameLayout layout;
    layout.window = {0, 0, rect.right - rect.left, rect.bottom - rect.top};
    layout.layers = LayersOf(style, extended);
    layout.inside = layout.window;
    const int edges = layout.layers.edge_width + layout.layers.static_edge;
    InflateRect(&layout.inside, -edges, -edges);
    layout.resizable = layout.layers.edge == FrameEdge::Sizing && (style & (WS_MAXIMIZE | WS_MINIMIZE)) == 0;
    if (layout.layers.caption > 0) {
        layout.caption = layout.inside;
        layout.caption.bottom = layout.inside.top + layout.layers.caption - kCaptionLine;
        PlaceInCaption(layout, style, extended);
    }
    return layout;
}

int BoxAt(const FrameLayout& layout, POINT point) noexcept {
    return PtInRect(&layout.close, point)      ? HTCLOSE
           : PtInRect(&layout.maximise, point) ? HTMAXBUTTON
           : PtInRect(&layout.minimise, point) ? HTMINBUTTON
                                               : HTNOWHERE;
}

bool CanClose(HWND window) {
    if ((GetClassLongW(window, GCL_STYLE) & CS_NOCLOSE) != 0) {
        return false;
    }
    const HMENU menu = OwnSystemMenu(window);
    if (menu == nullptr) {
        return true;
    }
    const UINT state = GetMenuState(menu, SC_CLOSE, MF_BYCOMMAND);
    return state != static_cast<UINT>(-1) && (state & (MF_GRAYED | MF_DISABLED)) == 0;
}

int HitTest(HWND window, POINT screen) {
    const RECT rect = WindowRectOf(window);
    if (!PtInRect(&rect, screen)) {
        return HTNOWHERE;
    }
    if (IsIconic(window)) {
        return HTCAPTION;
    }
    if (IsInClientArea(window, screen)) {
        return HTCLIENT;
    }
    const FrameLayout layout = LayoutOf(window);
    const POINT at = {screen.x - rect.left, screen.y - rect.top};
    const int part = layout.resizable ? SizingPart(layout, at) : HTNOWHERE;
    if (part != HTNOWHERE) {
        return part;
    }
    const int box = BoxAt(layout, at);
    if (box != HTNOWHERE) {
        return box;
    }
    if (PtInRect(&layout.icon, at)) {
        return HTSYSMENU;
    }
    const bool in_caption = layout.layers.caption > 0 && at.y < layout.inside.top + layout.layers.caption;
    return in_caption && PtInRect(&layout.inside, at) ? HTCAPTION : HTBORDER;
}

RECT ClientInside(HWND window, const RECT& rect) {
    if (IsIconic(window)) {
        return {rect.left, rect.top, rect.left, rect.top};
    }
    const FrameWidths widths = FrameOf(StyleOf(window), ExtendedStyleOf(window));
    RECT client = {rect.left + widths.left, rect.top + widths.top, rect.right - widths.right, rect.bottom - widths.bottom};
    client.right = std::max(client.left, client.right);
    client.bottom = std::max(client.top, client.bottom);
    return client;
}

}  // namespace kawin
