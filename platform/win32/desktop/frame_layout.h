#pragma once

// Where the parts of a window's frame are.

#include "frame.h"

namespace kawin {

// The layers of a frame, from the outside to the inside, and their widths in pixels on every side.
enum class FrameEdge { None, Sizing, Dialog, Line };
struct FrameLayers {
    FrameEdge edge = FrameEdge::None;
    int edge_width = 0;
    int static_edge = 0;
    int caption = 0;  // at the top only; the line below it counted
    int client_edge = 0;
};
FrameLayers LayersOf(DWORD style, DWORD extended_style) noexcept;

// In window coordinates: 0,0 is the window's corner. What is not there is empty.
struct FrameLayout {
    RECT window = {};
    RECT inside = {};   // without the edges: caption and client area
    RECT caption = {};  // without the line below
    RECT icon = {};
    RECT text = {};
    RECT minimise = {};
    RECT maximise = {};
    RECT close = {};
    FrameLayers layers;
    bool resizable = false;  // by its edges, now
};
FrameLayout LayoutOf(HWND window);

// HTCLOSE, HTMAXBUTTON or HTMINBUTTON for a point in one of the boxes, else HTNOWHERE.
int BoxAt(const FrameLayout& layout, POINT point) noexcept;

// Whether the close box does something.
bool CanClose(HWND window);

// WM_NCHITTEST for a point of the screen.
int HitTest(HWND window, POINT screen);

// WM_NCCALCSIZE: from a window rectangle to the client area's.
RECT ClientInside(HWND window, const RECT& rect);

}  // namespace kawin
