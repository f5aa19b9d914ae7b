#pragma once

// A white picture with a font selected, on which tests draw text and look where its ink is. Fonts differ between systems, so
// tests compare with what the system measures instead of with numbers.

#include <tchar.h>

#include <ostream>
#include <string>
#include <vector>

#include "picture.h"

namespace test {

using Text = std::basic_string<TCHAR>;

// A rectangle that tests compare and print.
struct Area {
    LONG left, top, right, bottom;

    bool operator==(const Area&) const = default;
    Area Moved(int dx, int dy) const { return {left + dx, top + dy, right + dx, bottom + dy}; }
    bool IsIn(const Area& other) const {
        return left >= other.left && top >= other.top && right <= other.right && bottom <= other.bottom;
    }
    friend std::ostream& operator<<(std::ostream& out, const Area& area) {
        return out << area.left << ',' << area.top << '-' << area.right << ',' << area.bottom;
    }
};

inline HFONT MakeFont(int height, int escapement = 0, bool underline = false, bool strikeout = false,
                      const TCHAR* face = _T("Tahoma")) {
    return CreateFontW(height, 0, escapement, escapement, FW_NORMAL, FALSE, underline, strikeout, DEFAULT_CHARSET,
                       OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, DEFAULT_PITCH, face);
}

class TextCanvas {
public:
    static constexpr int kWidth = 320;
    static constexpr int kHeight = 200;

    explicit TextCanvas(HFONT font = MakeFont(-13)) : font_(font), selected_(picture_, font_) {
        SetBkMode(picture_, TRANSPARENT);
    }

    operator HDC() const { return picture_; }
    void Clear() { picture_.Clear(kWhite); }

    // Colours without the byte that nobody keeps.
    std::vector<DWORD> Pixels() const {
        std::vector<DWORD> pixels(picture_.Pixels().begin(), picture_.Pixels().end());
        for (DWORD& pixel : pixels) {
            pixel &= 0xFFFFFF;
        }
        return pixels;
    }

    // The pixels that are not white: a rectangle around them, empty when there are none.
    Area Ink() const {
        Area ink = {kWidth, kHeight, 0, 0};
        const std::vector<DWORD> pixels = Pixels();
        for (LONG index = 0; index < kWidth * kHeight; ++index) {
            if (pixels[static_cast<std::size_t>(index)] != 0xFFFFFF) {
                const LONG x = index % kWidth;
                const LONG y = index / kWidth;
                ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1), std::max(ink.bottom, y + 1)};
            }
        }
        return ink.right == 0 ? Area{} : ink;
    }

    SIZE Extent(const Text& text) const {
        SIZE size = {};
        GetTextExtentPoint32W(picture_, text.c_str(), static_cast<int>(text.size()), &size);
        return size;
    }
    int Width(const Text& text) const { return static_cast<int>(Extent(text).cx); }

    TEXTMETRICW Metrics() const {
        TEXTMETRICW metrics = {};
        GetTextMetricsW(picture_, &metrics);
        return metrics;
    }
    int LineHeight() const { return static_cast<int>(Metrics().tmHeight); }

    void Out(int x, int y, const Text& text) { TextOutW(picture_, x, y, text.c_str(), static_cast<int>(text.size())); }

private:
    Picture picture_{kWidth, kHeight};
    Object<HFONT> font_;
    Selected selected_;
};

}  // namespace test
