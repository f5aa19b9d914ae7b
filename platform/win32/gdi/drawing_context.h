#pragma once

// What is behind an HDC. Belongs to one thread at a time.

#include <memory>
#include <optional>
#include <vector>

#include "gdi_objects.h"
#include "region_shape.h"
#include "surface.h"

namespace kawin {

class BitmapObject;
class BrushObject;
class FontObject;
class PenObject;

// What SaveDC keeps and RestoreDC brings back.
struct ContextState {
    std::shared_ptr<BitmapObject> bitmap;  // of a memory context
    std::shared_ptr<BrushObject> brush;
    std::shared_ptr<PenObject> pen;
    std::shared_ptr<FontObject> font;
    COLORREF text_color = RGB(0, 0, 0);
    COLORREF back_color = RGB(255, 255, 255);
    int back_mode = 2;                          // OPAQUE
    int raster_op = 13;                         // R2_COPYPEN
    COLORREF brush_color = RGB(255, 255, 255);  // of DC_BRUSH
    COLORREF pen_color = RGB(0, 0, 0);          // of DC_PEN
    int stretch_mode = 1;                       // BLACKONWHITE
    int fill_mode = 1;                          // ALTERNATE
    UINT text_align = 0;                        // TA_LEFT | TA_TOP
    POINT brush_origin = {};                    // device
    POINT position = {};                        // of the pen, logical
    POINT window_origin = {};                   // logical; device = logical - window_origin + viewport_origin
    POINT viewport_origin = {};                 // device
    std::optional<RegionShape> clip;            // what was selected; device coordinates. None: everything
};

class DrawingContext : public GdiObject {
public:
    ~DrawingContext() override;

    DWORD Type() const noexcept override { return memory ? OBJ_MEMDC : OBJ_DC; }

    ContextState state;
    std::vector<ContextState> saved;

    bool memory = false;               // made by CreateCompatibleDC: draws on state.bitmap
    std::shared_ptr<Surface> surface;  // null: nothing to draw on; measuring works, drawing changes nothing
    POINT origin = {};                 // where device 0,0 lies on the surface
    RECT extent = {};                  // the drawable part, device coordinates: of a window, its client area or all of it
    RegionShape visible;               // what may be drawn of a window, in surface coordinates (the system region)
    bool of_window = false;            // made by OpenWindowContext: ReleaseDC and EndPaint end it
    HWND window = nullptr;             // null also for the screen's context

    // Logical to device and to surface coordinates; what is too far away is cut to kFarthest.
    POINT ToDevice(POINT logical) const noexcept {
        return {CutCoordinate(std::int64_t{logical.x} - state.window_origin.x + state.viewport_origin.x),
                CutCoordinate(std::int64_t{logical.y} - state.window_origin.y + state.viewport_origin.y)};
    }
    POINT ToLogical(POINT device) const noexcept {
        return {CutCoordinate(std::int64_t{device.x} + state.window_origin.x - state.viewport_origin.x),
                CutCoordinate(std::int64_t{device.y} + state.window_origin.y - state.viewport_origin.y)};
    }
    POINT ToSurface(POINT logical) const noexcept {
        const POINT device = ToDevice(logical);
        return {CutCoordinate(std::int64_t{device.x} + origin.x), CutCoordinate(std::int64_t{device.y} + origin.y)};
    }
    RECT ToSurface(const RECT& logical) const noexcept {
        const POINT from = ToSurface(POINT{logical.left, logical.top});
        const POINT to = ToSurface(POINT{logical.right, logical.bottom});
        return {from.x, from.y, to.x, to.y};
    }

    // Everything that drawing may change now, in surface coordinates: `visible`, cut by the selected clip.
    RegionShape Drawable() const;
};

// The context behind a handle; null with ERROR_INVALID_HANDLE.
std::shared_ptr<DrawingContext> FindContext(HDC context) noexcept;

// A context for a window's part of a surface, with stock objects selected; a handle that CloseWindowContext ends. Null with
// ERROR_NOT_ENOUGH_MEMORY. `visible` is in surface coordinates.
HDC OpenWindowContext(HWND window, std::shared_ptr<Surface> surface, POINT origin, const RECT& extent,
                      RegionShape visible) noexcept;

// False when `context` is not one of OpenWindowContext's.
bool CloseWindowContext(HDC context) noexcept;

}  // namespace kawin
