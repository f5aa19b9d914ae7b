#include "update_regions.h"

#include <algorithm>

#include "painting.h"
#include "tree_walk.h"

namespace kawin {
namespace {

RegionShape Moved(RegionShape region, int dx, int dy) {
    region.Offset(dx, dy);
    return region;
}

// What the window covers of its parent, in the parent's client coordinates.
RegionShape Outline(const Window& window) {
    RegionShape outline(window.rect);
    if (window.shape) {
        outline.Intersect(Moved(*window.shape, window.rect.left, window.rect.top));
    }
    return outline;
}

bool Covers(const Window& window) noexcept {
    return window.IsVisible() && (window.extended_style & WS_EX_TRANSPARENT) == 0;
}

// Takes what the siblings above `window` cover out of `region`, both in the parent's client coordinates.
void SubtractAbove(const Window& window, RegionShape& region) {
    for (const Window* const sibling : window.parent->children) {
        if (sibling == &window) {
            return;
        }
        if (Covers(*sibling)) {
            region.Subtract(Outline(*sibling));
        }
    }
}

}  // namespace

Clipping ClippingOf(const Window& window) noexcept {
    return {(window.style & WS_CLIPCHILDREN) != 0, (window.style & WS_CLIPSIBLINGS) != 0};
}

RECT ClientInWindow(const Window& window) noexcept {
    const RECT& c = window.client;
    const POINT o = {window.rect.left, window.rect.top};
    return {c.left - o.x, c.top - o.y, c.right - o.x, c.bottom - o.y};
}

RECT WholeWindow(const Window& window) noexcept {
    return {0, 0, window.Width(), window.Height()};
}

POINT SurfaceOrigin(const Window& window) noexcept {
    POINT origin = {};
    for (const Window* at = &window; at->parent != nullptr && at->parent->parent != nullptr; at = at->parent) {
        const RECT parent_client = ClientInWindow(*at->parent);
        origin.x += at->rect.left + parent_client.left;
        origin.y += at->rect.top + parent_client.top;
    }
    return origin;
}

// Goes up from the window to its top-level window; `region` is in the client coordinates of the parent at hand.
RegionShape VisibleRegion(const Window& window, Area area, Clipping clipping) {
    if (window.parent == nullptr || !IsShown(window)) {
        return RegionShape();
    }
    RegionShape region(area == Area::Client ? window.client : window.rect);
    if (clipping.children) {
        for (const Window* const child : window.children) {
            if (Covers(*child)) {
                region.Subtract(Moved(Outline(*child), window.client.left, window.client.top));
            }
        }
    }
    for (const Window* at = &window;; at = at->parent) {
        region.Intersect(Outline(*at));
        if (at->IsTopLevel()) {
            region.Offset(-at->rect.left, -at->rect.top);
            return region;
        }
        if (at == &window ? clipping.siblings : (at->style & WS_CLIPSIBLINGS) != 0) {
            SubtractAbove(*at, region);
        }
        region.Offset(at->parent->client.left, at->parent->client.top);
        region.Intersect(at->parent->client);
    }
}

void Invalidate(Window& window, const RegionShape& part, UINT flags) {
    const POINT origin = SurfaceOrigin(window);
    // Children that are clipped away are left out when it is drawn, not here: they may go before.
    const bool siblings = ClippingOf(window).siblings;
    RegionShape shown = VisibleRegion(window, (flags & RDW_FRAME) != 0 ? Area::Window : Area::Client, {false, siblings});
    shown.Offset(-origin.x, -origin.y);
    shown.Intersect(part);
    if (!shown.IsEmpty()) {
        const RegionShape client(ClientInWindow(window));
        RegionShape frame = shown;
        frame.Subtract(client);
        window.paints_frame = window.paints_frame || !frame.IsEmpty();
        window.update.Unite(shown);
        window.erase = window.erase || (flags & RDW_ERASE) != 0;
        Signal(*window.queue, QS_PAINT);
    }
    const bool into_children = (flags & RDW_ALLCHILDREN) != 0 || (window.style & WS_CLIPCHILDREN) == 0;
    if ((flags & RDW_NOCHILDREN) != 0 || !into_children) {
        return;
    }
    const RECT client = ClientInWindow(window);
    for (Window* const child : window.children) {
        const RECT place = {child->rect.left + client.left, child->rect.top + client.top, child->rect.right + client.left,
                            child->rect.bottom + client.top};
        if (child->IsVisible() && part.Touches(place)) {
            Invalidate(*child, Moved(part, -place.left, -place.top), flags | RDW_FRAME);
        }
    }
}

void Validate(Window& window, const RegionShape& part, UINT flags) {
    RegionShape valid = part;
    if ((flags & RDW_NOFRAME) == 0) {
        valid.Intersect(ClientInWindow(window));
    }
    window.update.Subtract(valid);
    if (window.update.IsEmpty()) {
        window.erase = false;
    }
    if ((flags & RDW_NOFRAME) != 0) {
        window.paints_frame = false;
    }
    const bool into_children = (flags & RDW_ALLCHILDREN) != 0 || (window.style & WS_CLIPCHILDREN) == 0;
    if ((flags & RDW_NOCHILDREN) != 0 || !into_children) {
        return;
    }
    const RECT client = ClientInWindow(window);
    for (Window* const child : window.children) {
        Validate(*child, Moved(part, -(child->rect.left + client.left), -(child->rect.top + client.top)), flags | RDW_NOFRAME);
    }
}

void ForgetUpdates(Window& window) {
    window.update = RegionShape();
    window.erase = window.paints_frame = window.internal_paint = false;
    for (Window* const child : window.children) {
        ForgetUpdates(*child);
    }
}

RegionShape ClientUpdate(const Window& window) {
    const RECT client = ClientInWindow(window);
    RegionShape region = window.update;
    region.Intersect(client);
    region.Offset(-client.left, -client.top);
    return region;
}

std::shared_ptr<Surface> SurfaceOf(Window& window) {
    Window& top = TopLevelOf(window);
    if (top.parent == nullptr || top.Width() <= 0 || top.Height() <= 0) {
        return nullptr;
    }
    const std::shared_ptr<Surface> old = top.surface;
    if (old != nullptr && old->Width() == top.Width() && old->Height() == top.Height()) {
        return old;
    }
    top.surface = Surface::Make(top.Width(), top.Height());
    if (top.surface != nullptr && old != nullptr) {
        const int width = std::min(old->Width(), top.surface->Width());
        for (int y = 0; y < std::min(old->Height(), top.surface->Height()); ++y) {
            std::copy_n(old->Row(y), width, top.surface->Row(y));
        }
        top.surface->Touch(top.surface->Bounds());
    }
    return top.surface;
}

}  // namespace kawin
