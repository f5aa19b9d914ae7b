#include "bitmap_scaling.h"

#include <gdiplus.h>

#include <algorithm>
#include <cmath>

#include "bitmap_context.h"

namespace kadata {
namespace {

constexpr double LETTER_WIDTH = 6;  // of the dialogs that pictures are made for
constexpr double SCREEN_DENSITY = 96;
constexpr DWORD OPAQUE_PIXEL = 0xFF000000;
constexpr DWORD COLOR_BITS = 0x00FFFFFF;

// Keeps GDI+ started while it is needed, whether the host has started it or not.
class GdiPlus {
public:
    GdiPlus() {
        const Gdiplus::GdiplusStartupInput input;
        m_started = Gdiplus::GdiplusStartup(&m_token, &input, nullptr) == Gdiplus::Ok;
    }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;
    ~GdiPlus() {
        if (m_started) {
            Gdiplus::GdiplusShutdown(m_token);
        }
    }

private:
    ULONG_PTR m_token = 0;
    bool m_started = false;
};

int Scaled(int length, double factor) {
    return static_cast<int>(std::lround(length * factor));
}

constexpr int RIM = 2;  // pixels that a filter reads beyond an edge

// With its outermost pixels repeated all around.
BitmapPixels WithRim(const BitmapPixels& picture) {
    const int width = picture.size.cx;
    const int height = picture.size.cy;
    BitmapPixels result{{width + 2 * RIM, height + 2 * RIM}, {}};
    for (int y = -RIM; y < height + RIM; ++y) {
        for (int x = -RIM; x < width + RIM; ++x) {
            const int nearest = std::clamp(y, 0, height - 1) * width + std::clamp(x, 0, width - 1);
            result.colors.push_back(picture.colors[static_cast<std::size_t>(nearest)]);
        }
    }
    return result;
}

// Draws `source`, but for its rim, over all of `target`; pixels of both with their alpha.
bool DrawScaled(BitmapPixels& source, BitmapPixels& target) {
    using Gdiplus::REAL;
    const GdiPlus started;
    const auto over = [](BitmapPixels& pixels) {
        return Gdiplus::Bitmap(pixels.size.cx, pixels.size.cy, pixels.size.cx * static_cast<int>(sizeof(DWORD)),
                               PixelFormat32bppARGB, reinterpret_cast<BYTE*>(pixels.colors.data()));
    };
    Gdiplus::Bitmap from = over(source);
    Gdiplus::Bitmap to = over(target);
    Gdiplus::Graphics graphics(&to);
    graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
    graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHighQuality);
    const REAL x = static_cast<REAL>(target.size.cx) / static_cast<REAL>(source.size.cx - 2 * RIM);
    const REAL y = static_cast<REAL>(target.size.cy) / static_cast<REAL>(source.size.cy - 2 * RIM);
    const Gdiplus::RectF whole(-RIM * x, -RIM * y, static_cast<REAL>(source.size.cx) * x, static_cast<REAL>(source.size.cy) * y);
    const Gdiplus::Status drawn = graphics.DrawImage(&from, whole, 0, 0, static_cast<REAL>(source.size.cx),
                                                     static_cast<REAL>(source.size.cy), Gdiplus::UnitPixel);
    graphics.Flush(Gdiplus::FlushIntentionSync);
    return drawn == Gdiplus::Ok;
}

}  // namespace

ScaleFactors ScaleFor(HWND window) {
    ScaleFactors factors;
    for (; window != nullptr; window = GetParent(window)) {
        RECT rect = {0, 0, 100, 100};
        if (MapDialogRect(window, &rect)) {  // four units are a letter
            factors.x = std::max(1.0, (rect.right * 4 / 100) / LETTER_WIDTH);
            return factors;
        }
    }
    const ClientContext screen(nullptr);
    factors.x = std::max(1.0, GetDeviceCaps(screen, LOGPIXELSX) / SCREEN_DENSITY);
    factors.y = std::max(1.0, GetDeviceCaps(screen, LOGPIXELSY) / SCREEN_DENSITY);
    return factors;
}

// The transparent pixels are scaled as such: their colour reaches no other pixel. Each pixel is then one or the other again.
BitmapPixels Enlarged(const BitmapPixels& picture, ScaleFactors factors) {
    if (picture.colors.empty()) {
        return {};
    }
    const DWORD transparent = picture.colors.front();
    BitmapPixels source = WithRim(picture);
    for (DWORD& color : source.colors) {
        color = color == transparent ? 0 : color | OPAQUE_PIXEL;
    }
    BitmapPixels target{{Scaled(picture.size.cx, factors.x), Scaled(picture.size.cy, factors.y)}, {}};
    target.colors.resize(static_cast<std::size_t>(target.size.cx) * static_cast<std::size_t>(target.size.cy));
    if (!DrawScaled(source, target)) {
        return {};
    }
    for (DWORD& color : target.colors) {
        const bool isOpaque = color >> 31 != 0;  // half of it at least
        color &= COLOR_BITS;
        if (!isOpaque) {
            color = transparent;
        } else if (color == transparent) {
            color ^= 1;  // a mixture of others that must not fall through
        }
    }
    return target;
}

}  // namespace kadata
