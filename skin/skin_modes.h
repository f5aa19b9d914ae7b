#pragma once

// The modes of a Graphics while one drawing operation lasts; afterwards they are as before.

#include <afxwin.h>
#include <gdiplus.h>

namespace kadata {

class SkinModes {
public:
    SkinModes(Gdiplus::Graphics& graphics, Gdiplus::InterpolationMode interpolation, Gdiplus::PixelOffsetMode offset)
        : graphics_(graphics),
          smoothing_(graphics.GetSmoothingMode()),
          interpolation_(graphics.GetInterpolationMode()),
          offset_(graphics.GetPixelOffsetMode()) {
        Set(Gdiplus::SmoothingModeNone, interpolation, offset);
    }
    SkinModes(const SkinModes&) = delete;
    SkinModes& operator=(const SkinModes&) = delete;
    ~SkinModes() { Set(smoothing_, interpolation_, offset_); }

    static SkinModes OfButtons(Gdiplus::Graphics& graphics) {
        return {graphics, Gdiplus::InterpolationModeDefault, Gdiplus::PixelOffsetModeHighQuality};
    }
    static SkinModes OfFrames(Gdiplus::Graphics& graphics) {
        return {graphics, Gdiplus::InterpolationModeBilinear, Gdiplus::PixelOffsetModeHighQuality};
    }
    static SkinModes OfBackgrounds(Gdiplus::Graphics& graphics) {
        return {graphics, Gdiplus::InterpolationModeDefault, Gdiplus::PixelOffsetModeNone};
    }

private:
    void Set(Gdiplus::SmoothingMode smoothing, Gdiplus::InterpolationMode interpolation, Gdiplus::PixelOffsetMode offset) {
        graphics_.SetSmoothingMode(smoothing);
        graphics_.SetInterpolationMode(interpolation);
        graphics_.SetPixelOffsetMode(offset);
    }

    Gdiplus::Graphics& graphics_;
    Gdiplus::SmoothingMode smoothing_;
    Gdiplus::InterpolationMode interpolation_;
    Gdiplus::PixelOffsetMode offset_;
};

}  // namespace kadata
