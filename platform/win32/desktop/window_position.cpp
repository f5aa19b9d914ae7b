// SetWindowPos: asking, reckoning, moving pixels, telling.

#include "window_position.h"

#include <algorithm>
#include <cstring>

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "activation.h"
#include "metrics.h"
#include "painting.h"
#include "system_parameters.h"
#include "tree_walk.h"
#include "update_regions.h"
#include "z_order.h"

namespace kawin {
namespace {

constexpr UINT kNothing = SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER;

int WidthOf(const RECT& rect) noexcept {
    return rect.right - rect.left;
}
int HeightOf(const RECT& rect) noexcept {
    return rect.bottom - rect.top;
}

// Takes out of the flags what would change nothing.
void Simplify(const Window& window, WINDOWPOS& position) noexcept {
    constexpr int kMost = 32767;
    position.cx = std::clamp(position.cx, 0, kMost);
    position.cy = std::clamp(position.cy, 0, kMost);
    if (window.rect.left == position.x && window.rect.top == position.y) {
        position.flags |= SWP_NOMOVE;
    }
    if (window.Width() == position.cx && window.Height() == position.cy) {
        position.flags |= SWP_NOSIZE;
    }
    if (window.IsVisible()) {
        position.flags &= ~SWP_SHOWWINDOW;
    } else {
        position.flags &= ~SWP_HIDEWINDOW;
        if ((position.flags & SWP_SHOWWINDOW) == 0) {
            position.flags |= SWP_NOREDRAW;
        }
    }
}

// What is not to change gets its present value.
void Complete(const Window& window, WINDOWPOS& position) noexcept {
    if ((position.flags & SWP_NOMOVE) != 0) {
        position.x = window.rect.left;
        position.y = window.rect.top;
    }
    if ((position.flags & SWP_NOSIZE) != 0) {
        position.cx = window.Width();
        position.cy = window.Height();
    }
}

// False with ERROR_INVALID_WINDOW_HANDLE.
bool IsAfterGood(const DesktopLock& desktop, const WINDOWPOS& position) noexcept {
    const HWND after = position.hwndInsertAfter;
    const bool place = after == HWND_TOP || after == HWND_BOTTOM || after == HWND_TOPMOST || after == HWND_NOTOPMOST;
    return (position.flags & SWP_NOZORDER) != 0 || place || desktop.Find(after) != nullptr;
}

bool Ask(WINDOWPOS& position) {
    {
        const DesktopLock desktop;
        const Window* const window = desktop.FindOwn(position.hwnd);
        if (window == nullptr || !IsAfterGood(desktop, position)) {
            return false;
        }
        Complete(*window, position);
    }
    if ((position.flags & SWP_NOSENDCHANGING) == 0) {
        SendMessageW(position.hwnd, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LPARAM>(&position));
    }
    const DesktopLock desktop;
    const Window* const window = desktop.Look(position.hwnd);
    if (window != nullptr) {
        Complete(*window, position);
        Simplify(*window, position);
    }
    return window != nullptr;
}

struct Change {
    RECT rect = {};  // the new ones
    RECT client = {};
    bool redraw_all = false;
};

// The new client area: asked of the window when its size or frame changes.
bool Reckon(WINDOWPOS& position, Change& change) {
    NCCALCSIZE_PARAMS parameters = {};
    bool asks = false;
    {
        const DesktopLock desktop;
        const Window* const window = desktop.Look(position.hwnd);
        if (window == nullptr) {
            return false;
        }
        change.rect = {position.x, position.y, position.x + position.cx, position.y + position.cy};
        const int dx = change.rect.left - window->rect.left;
        const int dy = change.rect.top - window->rect.top;
        const RECT& old = window->client;
        change.client = {old.left + dx, old.top + dy, old.right + dx, old.bottom + dy};
        asks = (position.flags & SWP_NOSIZE) == 0 || (position.flags & SWP_FRAMECHANGED) != 0;
        parameters = {{change.rect, window->rect, window->client}, &position};
    }
    if (!asks) {
        return true;
    }
    WINDOWPOS copy = position;
    parameters.lppos = &copy;
    const LRESULT result = SendMessageW(position.hwnd, WM_NCCALCSIZE, TRUE, reinterpret_cast<LPARAM>(&parameters));
    change.client = parameters.rgrc[0];
    change.redraw_all = (result & WVR_REDRAW) != 0 && (result & WVR_VALIDRECTS) == 0;
    return true;
}

// Where the client area's corner lies on the surface.
POINT ClientOnSurface(const Window& window) noexcept {
    const POINT origin = SurfaceOrigin(window);
    const RECT client = ClientInWindow(window);
    return {origin.x + client.left, origin.y + client.top};
}

// How a window shows, to be compared with how it shows afterwards.
struct Look {
    RegionShape visible;  // surface coordinates
    POINT client = {};    // on the surface
    RECT rect = {};
    RECT client_rect = {};
    bool shown = false;
};

Look LookOf(const Window& window) {
    return {VisibleRegion(window, Area::Window, {false, true}), ClientOnSurface(window), window.rect, window.client,
            IsShown(window)};
}

void CopyWithin(Surface& surface, const RegionShape& to, int dx, int dy) {
    RegionShape from = to;
    from.Offset(-dx, -dy);
    from.Intersect(surface.Bounds());
    const RECT bounds = from.Bounds();
    // Into memory first: the rectangles of source and target may overlap in any order.
    const int width = WidthOf(bounds);
    std::vector<Pixel> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(HeightOf(bounds)));
    for (int y = bounds.top; y < bounds.bottom; ++y) {
        std::copy_n(surface.Row(y) + bounds.left, width, pixels.data() + static_cast<std::ptrdiff_t>(y - bounds.top) * width);
    }
    to.ForEachIn(surface.Bounds(), [&](const RECT& part) {
        for (int y = part.top; y < part.bottom; ++y) {
            const int source_y = y - dy - bounds.top;
            const int source_x = part.left - dx - bounds.left;
            if (source_y >= 0 && source_y < HeightOf(bounds) && source_x >= 0 && source_x + WidthOf(part) <= width) {
                std::copy_n(pixels.data() + static_cast<std::ptrdiff_t>(source_y) * width + source_x, WidthOf(part),
                            surface.Row(y) + part.left);
            }
        }
        surface.Touch(part);
    });
}

// What of the old picture stays good, in its new place on the surface.
RegionShape Kept(const Window& window, const Look& before, const Look& now, const Change& change, UINT flags) {
    const bool resized = WidthOf(before.rect) != WidthOf(now.rect) || HeightOf(before.rect) != HeightOf(now.rect);
    const bool wider = WidthOf(before.client_rect) != WidthOf(now.client_rect);
    const bool taller = HeightOf(before.client_rect) != HeightOf(now.client_rect);
    const UINT style = window.window_class->style;
    const bool redraws = (wider && (style & CS_HREDRAW) != 0) || (taller && (style & CS_VREDRAW) != 0);
    if (!before.shown || !now.shown || change.redraw_all || redraws || (flags & SWP_NOCOPYBITS) != 0) {
        return RegionShape();
    }
    RegionShape kept = before.visible;
    if (resized || (flags & SWP_FRAMECHANGED) != 0) {
        const POINT at = before.client;
        kept.Intersect(RECT{at.x, at.y, at.x + std::min(WidthOf(before.client_rect), WidthOf(now.client_rect)),
                            at.y + std::min(HeightOf(before.client_rect), HeightOf(now.client_rect))});
    }
    kept.Offset(now.client.x - before.client.x, now.client.y - before.client.y);
    kept.Intersect(now.visible);
    return kept;
}

// Draws what the change has laid bare, in the window and around it.
void Repair(Window& window, const Look& before, const Change& change, UINT flags) {
    const Look now = LookOf(window);
    if (!now.shown) {
        ForgetUpdates(window);
    }
    const RegionShape kept = Kept(window, before, now, change, flags);
    const int dx = now.client.x - before.client.x;
    const int dy = now.client.y - before.client.y;
    if (!kept.IsEmpty() && (dx != 0 || dy != 0 || window.IsTopLevel())) {
        const std::shared_ptr<Surface> surface = SurfaceOf(window);
        if (surface != nullptr && (dx != 0 || dy != 0)) {
            CopyWithin(*surface, kept, dx, dy);
        }
    }
    constexpr UINT kHow = RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN;
    RegionShape fresh = now.visible;
    fresh.Subtract(kept);
    const POINT origin = SurfaceOrigin(window);
    fresh.Offset(-origin.x, -origin.y);
    if (!fresh.IsEmpty()) {
        Invalidate(window, fresh, kHow);
    }
    if (!window.IsTopLevel() && window.parent->parent != nullptr) {
        RegionShape bare = before.visible;
        bare.Subtract(now.visible);
        const POINT parent = SurfaceOrigin(*window.parent);
        bare.Offset(-parent.x, -parent.y);
        Invalidate(*window.parent, bare, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    }
}

// With what really changed in the flags. False when the window is gone.
bool Apply(WINDOWPOS& position, const Change& change) {
    const DesktopLock desktop;
    Window* const window = desktop.Look(position.hwnd);
    if (window == nullptr) {
        return false;
    }
    const Look before = LookOf(*window);
    const POINT old_offset = {window->client.left, window->client.top};
    window->rect = change.rect;
    window->client = change.client;
    if ((window->style & (WS_MINIMIZE | WS_MAXIMIZE)) == 0) {
        window->normal = change.rect;
    }
    if ((position.flags & SWP_SHOWWINDOW) != 0) {
        window->style |= WS_VISIBLE;
        window->frozen = false;
    } else if ((position.flags & SWP_HIDEWINDOW) != 0) {
        window->style &= ~WS_VISIBLE;
    }
    const bool reorders = (position.flags & SWP_NOZORDER) == 0;
    if (reorders && !PlaceInOrder(desktop, *window, position.hwndInsertAfter, (position.flags & SWP_NOOWNERZORDER) == 0)) {
        position.flags |= SWP_NOZORDER;
    }
    if (old_offset.x == change.client.left && old_offset.y == change.client.top) {
        position.flags |= kNoClientMove;
    }
    if (WidthOf(before.client_rect) == WidthOf(change.client) && HeightOf(before.client_rect) == HeightOf(change.client)) {
        position.flags |= kNoClientSize;
    }
    const bool showing = (position.flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW)) != 0;
    if (showing || (position.flags & SWP_NOREDRAW) == 0) {
        Repair(*window, before, change, position.flags);
    }
    return true;
}

void ActivateAfter(const WINDOWPOS& position) {
    bool child = false;
    {
        const DesktopLock desktop;
        const Window* const window = desktop.Look(position.hwnd);
        if (window == nullptr || window->thread != CurrentThreadId()) {
            return;
        }
        child = window->IsChild();
    }
    if (child) {
        SendMessageW(position.hwnd, WM_CHILDACTIVATE, 0, 0);
    } else {
        ActivateWindow(position.hwnd, WA_ACTIVE);
    }
}

}  // namespace

BOOL SetPosition(WINDOWPOS position) {
    Change change;
    if (!Ask(position) || !Reckon(position, change) || !Apply(position, change)) {
        return FALSE;
    }
    if ((position.flags & SWP_NOACTIVATE) == 0) {  // else a window that is hidden stays the active one
        (position.flags & SWP_HIDEWINDOW) != 0 ? LeaveHidden(position.hwnd) : ActivateAfter(position);
    }
    constexpr UINT kChanges = SWP_SHOWWINDOW | SWP_HIDEWINDOW | SWP_FRAMECHANGED;
    const bool nothing = (position.flags & kNothing) == kNothing && (position.flags & (kChanges | kStateChanged)) == 0;
    if (!nothing) {
        SendMessageW(position.hwnd, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&position));
    }
    return TRUE;
}

RECT ScreenRect() noexcept {
    return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

RECT WorkArea() noexcept {
    RECT area = ScreenRect();  // stays when memory runs out
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    return area;
}

}  // namespace kawin

BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags) noexcept {
    return kawin::NoThrow([&] { return kawin::SetPosition({window, after, x, y, width, height, flags}); });
}

BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint) noexcept {
    const UINT flags = SWP_NOZORDER | SWP_NOACTIVATE | (repaint != FALSE ? 0 : SWP_NOREDRAW);
    return SetWindowPos(window, nullptr, x, y, width, height, flags);
}

BOOL BringWindowToTop(HWND window) noexcept {
    return SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
}
