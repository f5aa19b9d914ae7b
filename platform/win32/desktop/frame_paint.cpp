#include "frame_paint.h"

#include "../gdi/brushes.h"
#include "../gdi/contexts.h"
#include "../gdi/fonts.h"
#include "../gdi/regions.h"
#include "../gdi/shapes.h"
#include "../gdi/text.h"
#include "caption_boxes.h"
#include "colors.h"
#include "desktop_state.h"
#include "frame_drawing.h"
#include "frame_layout.h"
#include "icons.h"
#include "metrics.h"
#include "painting.h"
#include "rectangles.h"
#include "system_parameters.h"
#include "window_tree.h"

namespace kawin {
namespace {

// What is drawn of a window, taken with the lock held.
struct Look {
    FrameState state;
    std::u16string title;
    HICON icon = nullptr;
    DWORD style = 0;
    bool top_level = false;
};

// Null: a window without a picture of its own, which gets the system's.
HICON IconOf(const Window& window) noexcept {
    const WindowClass& its_class = *window.window_class;
    for (const HICON each : {window.small_icon, its_class.small_icon.load(), window.icon, its_class.icon.load()}) {
        if (each != nullptr) {
            return each;
        }
    }
    return nullptr;
}

Look LookOf(HWND handle) {
    const DesktopLock desktop;
    const Window* const window = desktop.Look(handle);
    if (window == nullptr) {
        return {};
    }
    return {window->frame, window->text, IconOf(*window), window->style, window->IsTopLevel()};
}

// Colours of an active and an inactive window.
struct Tone {
    COLORREF band;
    COLORREF line;
    COLORREF text;
};

Tone ToneOf(bool active) noexcept {
    return active ? Tone{GetSysColor(COLOR_GRADIENTACTIVECAPTION), GetSysColor(COLOR_WINDOWFRAME), GetSysColor(COLOR_CAPTIONTEXT)}
                  : Tone{GetSysColor(COLOR_GRADIENTINACTIVECAPTION), GetSysColor(COLOR_BTNSHADOW), GetSysColor(COLOR_GRAYTEXT)};
}

// A brush that lives as long as this.
class SolidBrush {
public:
    explicit SolidBrush(COLORREF color) noexcept : brush_(CreateSolidBrush(color)) {}
    SolidBrush(const SolidBrush&) = delete;
    SolidBrush& operator=(const SolidBrush&) = delete;
    ~SolidBrush() { DeleteObject(brush_); }
    operator HBRUSH() const noexcept { return brush_; }

private:
    HBRUSH brush_;
};

void PaintTitle(HDC context, RECT place, const std::u16string& title, COLORREF color) {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    const HFONT font = CreateFontIndirectW(&metrics.lfCaptionFont);
    const HGDIOBJ before = SelectObject(context, font);
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, color);
    DrawTextW(context, title.c_str(), static_cast<int>(title.size()), &place,
              DT_SINGLELINE | DT_VCENTER | DT_LEFT | DT_NOPREFIX | DT_END_ELLIPSIS);
    SelectObject(context, before);
    DeleteObject(font);
}

BoxState StateOf(const FrameState& frame, int box, bool enabled) noexcept {
    return !enabled               ? BoxState::Disabled
           : frame.pressed == box ? BoxState::Pressed
           : frame.hot == box     ? BoxState::Hot
                                  : BoxState::Normal;
}

void PaintBoxes(HWND window, HDC context, const FrameLayout& layout, const Look& look, COLORREF back) {
    const auto paint = [&](const RECT& place, CaptionBox kind, int box, bool enabled) {
        if (!IsRectEmpty(&place)) {
            DrawCaptionBox(context, place, kind, StateOf(look.state, box, enabled), back);
        }
    };
    const bool zoomed = (look.style & WS_MAXIMIZE) != 0;
    paint(layout.close, CaptionBox::Close, HTCLOSE, CanClose(window));
    paint(layout.maximise, zoomed ? CaptionBox::Restore : CaptionBox::Maximise, HTMAXBUTTON, (look.style & WS_MAXIMIZEBOX) != 0);
    paint(layout.minimise, CaptionBox::Minimise, HTMINBUTTON, (look.style & WS_MINIMIZEBOX) != 0);
}

void PaintCaption(HWND window, HDC context, const FrameLayout& layout, const Look& look) {
    const Tone tone = ToneOf(look.state.active);
    RECT bar = layout.caption;
    FillRect(context, &bar, SolidBrush(tone.band));
    const RECT line = {bar.left, bar.bottom, bar.right, layout.inside.top + layout.layers.caption};
    FillRect(context, &line, GetSysColorBrush(COLOR_ACTIVEBORDER));
    if (!IsRectEmpty(&layout.icon)) {
        DrawIconEx(context, layout.icon.left, layout.icon.top,
                   look.icon != nullptr ? look.icon : LoadIconW(nullptr, IDI_APPLICATION), layout.icon.right - layout.icon.left,
                   layout.icon.bottom - layout.icon.top, 0, nullptr, DI_NORMAL);
    }
    PaintTitle(context, layout.text, look.title, tone.text);
    PaintBoxes(window, context, layout, look, tone.band);
}

// A sizing or dialog frame: a line, and inside of it the band in the caption's colour.
void PaintBand(HDC context, RECT rect, int width, const Tone& tone) {
    FrameRect(context, &rect, SolidBrush(tone.line));
    const SolidBrush band(tone.band);
    for (int ring = 1; ring < width; ++ring) {
        InflateRect(&rect, -1, -1);
        FrameRect(context, &rect, band);
    }
}

void PaintEdges(HDC context, const FrameLayout& layout, const Look& look) {
    RECT rect = layout.window;
    const FrameLayers& layers = layout.layers;
    if (layers.edge == FrameEdge::Line) {
        FrameRect(context, &rect, GetSysColorBrush(COLOR_WINDOWFRAME));
    } else if (layers.edge != FrameEdge::None && (look.top_level || layers.caption > 0)) {
        PaintBand(context, rect, layers.edge_width, ToneOf(look.state.active));
    } else if (layers.edge != FrameEdge::None) {
        RECT face = rect;
        DrawEdge(context, &face, EDGE_RAISED, BF_RECT | BF_ADJUST);
        for (int ring = 2; ring < layers.edge_width; ++ring) {
            FrameRect(context, &face, GetSysColorBrush(COLOR_3DFACE));
            InflateRect(&face, -1, -1);
        }
    }
    InflateRect(&rect, -layers.edge_width, -layers.edge_width);
    if (layers.static_edge > 0) {
        DrawEdge(context, &rect, BDR_SUNKENOUTER, BF_RECT);
    }
    InflateRect(&rect, -layers.static_edge, -layers.static_edge);
    rect.top += layers.caption;
    if (layers.client_edge > 0) {
        DrawEdge(context, &rect, EDGE_SUNKEN, BF_RECT);
    }
}

// The client area in window coordinates.
RECT ClientPlace(HWND handle) {
    const DesktopLock desktop;
    const Window* const window = desktop.Look(handle);
    if (window == nullptr) {
        return {};
    }
    RECT client = window->client;
    OffsetRect(&client, -window->rect.left, -window->rect.top);
    return client;
}

// The region stays the caller's, so the context gets a copy.
HDC ContextFor(HWND window, HRGN part) {
    constexpr ULONG_PTR kWholeWindow = 1;
    if (reinterpret_cast<ULONG_PTR>(part) <= kWholeWindow) {
        return GetWindowDC(window);
    }
    const HRGN copy = CreateRectRgn(0, 0, 0, 0);
    CombineRgn(copy, part, nullptr, RGN_COPY);
    return GetDCEx(window, copy, DCX_WINDOW | DCX_INTERSECTRGN);
}

}  // namespace

void PaintFrame(HWND window, HDC context) {
    const FrameLayout layout = LayoutOf(window);
    if (layout.layers.edge == FrameEdge::None && layout.layers.static_edge + layout.layers.client_edge == 0) {
        return;
    }
    const Look look = LookOf(window);
    const RECT client = ClientPlace(window);
    const int depth = SaveDC(context);
    ExcludeClipRect(context, client.left, client.top, client.right, client.bottom);
    PaintEdges(context, layout, look);
    if (layout.layers.caption > 0) {
        PaintCaption(window, context, layout, look);
    }
    RestoreDC(context, depth);
}

void PaintFrame(HWND window, HRGN part) {
    if (IsWindowVisible(window) && !IsIconic(window)) {
        const HDC context = ContextFor(window, part);
        PaintFrame(window, context);
        ReleaseDC(window, context);
    }
}

}  // namespace kawin
