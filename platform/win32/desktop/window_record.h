#pragma once

// What is behind an HWND.

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "../gdi/region_shape.h"
#include "../gdi/surface.h"
#include "class_table.h"
#include "frame_state.h"

namespace kawin {

struct ThreadQueue;

// Everything here is guarded by the room's lock (desktop_state.h), the pixels of the surface excepted: those belong to the
// window's thread.
struct Window {
    HWND handle = nullptr;
    ClassRef window_class;
    DWORD thread = 0;
    std::shared_ptr<ThreadQueue> queue;  // of the thread; null for the desktop window and the root of message-only windows

    DWORD style = 0;
    DWORD extended_style = 0;
    WNDPROC procedure = nullptr;
    HINSTANCE instance = nullptr;
    LONG_PTR id = 0;  // of a child
    LONG_PTR user_data = 0;
    std::vector<BYTE> extra;
    std::shared_ptr<void> control;  // values of a button or a static; they end with the window, whoever ends that
    std::u16string text;
    std::vector<std::pair<ATOM, HANDLE>> properties;
    HICON icon = nullptr;  // WM_SETICON
    HICON small_icon = nullptr;

    Window* parent = nullptr;       // in the tree; the desktop window for top-level ones, null for roots
    HWND owner = nullptr;           // of a top-level window
    std::vector<Window*> children;  // the topmost first
    HWND last_popup = nullptr;      // the owned window that was last active

    RECT rect = {};    // the window, in the parent's client coordinates
    RECT client = {};  // its client area, in the same
    RECT normal = {};  // `rect` when neither minimised nor maximised
    std::optional<POINT> minimised_at;
    std::optional<POINT> maximised_at;
    bool restores_to_maximised = false;

    RegionShape update;                // window coordinates: 0,0 is the corner of `rect`
    bool erase = false;                // the update region's background, too
    bool paints_frame = false;         // WM_NCPAINT is due
    bool internal_paint = false;       // WM_PAINT is due, whatever the update region
    std::optional<RegionShape> shape;  // SetWindowRgn; window coordinates
    std::shared_ptr<Surface> surface;  // of a top-level window, of its size; null before something is drawn

    FrameState frame;

    bool needs_size = false;  // WM_SIZE and WM_MOVE come with the first showing
    bool frozen = false;      // WM_SETREDRAW has taken WS_VISIBLE away for a while
    bool being_destroyed = false;
    bool created = false;  // WM_CREATE has succeeded

    bool IsTopLevel() const noexcept { return parent != nullptr && parent->parent == nullptr; }
    bool IsVisible() const noexcept { return (style & WS_VISIBLE) != 0; }
    bool IsChild() const noexcept { return (style & (WS_CHILD | WS_POPUP)) == WS_CHILD; }
    bool NeedsPaint() const noexcept { return internal_paint || paints_frame || !update.IsEmpty(); }
    int Width() const noexcept { return rect.right - rect.left; }
    int Height() const noexcept { return rect.bottom - rect.top; }
};

}  // namespace kawin
