#pragma once

// What a Graphics knows.

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "../gdi/drawing_context.h"
#include "canvas.h"
#include "gdiplus_graphics.h"

struct Gdiplus::Graphics::Inside {
    struct State {
        SmoothingMode smoothing = SmoothingModeDefault;
        InterpolationMode interpolation = InterpolationModeBilinear;
        PixelOffsetMode offset = PixelOffsetModeDefault;
        CompositingMode compositing = CompositingModeSourceOver;
        CompositingQuality quality = CompositingQualityDefault;
        std::optional<kawin::RegionShape> clip;  // on the canvas; none: everything
    };

    State state;
    std::vector<std::pair<UINT, State>> saved;
    UINT last_saved = 0;

    // Either a context or a picture.
    std::shared_ptr<kawin::DrawingContext> context;
    std::shared_ptr<kawin::PixelStore> store;
    HDC handle = nullptr;
    bool handed_out = false;

    std::shared_ptr<kawin::Surface> surface;  // of the context, when `drawable` was asked for
    std::optional<kawin::Canvas> canvas;      // none: nothing to draw on
    kawin::RegionShape drawable;              // without the clip
    kawin::RegionShape clipped;               // with it
    POINT origin = {};                        // where 0, 0 lies on the canvas

    void OpenPicture(std::shared_ptr<kawin::PixelStore> picture);
    void OpenContext(HDC of, std::shared_ptr<kawin::DrawingContext> found);

    // Another bitmap may have been selected into a memory context meanwhile.
    void FollowContext();
    void ApplyClip();
    bool IsMono() const noexcept { return surface && surface->IsMono(); }
};
