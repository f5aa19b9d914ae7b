#pragma once

// What the tests of GDI+ share: GDI+ started, small pictures, and pictures as text.

#include <tchar.h>
#include <windows.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <string>

#include <gtest/gtest.h>

using std::max;  // the system's header wants them
using std::min;
#include <gdiplus.h>

namespace test {

using namespace Gdiplus;

class GdiplusTest : public ::testing::Test {
protected:
    void SetUp() override {
        const GdiplusStartupInput input;
        ASSERT_EQ(GdiplusStartup(&token_, &input, nullptr), Ok);
    }
    void TearDown() override { GdiplusShutdown(token_); }

private:
    ULONG_PTR token_ = 0;
};

inline ARGB PixelAt(Bitmap& bitmap, INT x, INT y) {
    Color color;
    EXPECT_EQ(bitmap.GetPixel(x, y, &color), Ok);
    return color.GetValue();
}

inline ARGB Gray(int value) {
    return Color::MakeARGB(255, static_cast<BYTE>(value), static_cast<BYTE>(value), static_cast<BYTE>(value));
}

// One row.
inline std::unique_ptr<Bitmap> MakeRow(std::initializer_list<ARGB> pixels, PixelFormat format = PixelFormat32bppARGB) {
    auto row = std::make_unique<Bitmap>(static_cast<INT>(pixels.size()), 1, format);
    INT x = 0;
    for (const ARGB pixel : pixels) {
        row->SetPixel(x++, 0, Color(pixel));
    }
    return row;
}

// The red of every pixel of a row; "/alpha" behind it where it is not opaque, "." where it is transparent.
inline std::string RowText(Bitmap& bitmap, INT y, INT width) {
    std::string text;
    for (INT x = 0; x < width; ++x) {
        const Color color(PixelAt(bitmap, x, y));
        text += x == 0 ? "" : " ";
        if (color.GetA() == 0) {
            text += ".";
        } else {
            text += std::to_string(color.GetR());
            text += color.GetA() == 255 ? "" : "/" + std::to_string(color.GetA());
        }
    }
    return text;
}

// A memory context on a bitmap whose pixels can be looked at.
class MemoryCanvas {
public:
    MemoryCanvas(int width, int height, ARGB fill) : width_(width), context_(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        pixels_ = static_cast<ARGB*>(bits);
        count_ = width * height;
        Fill(fill);
        before_ = SelectObject(context_, bitmap_);
    }
    MemoryCanvas(const MemoryCanvas&) = delete;
    MemoryCanvas& operator=(const MemoryCanvas&) = delete;
    ~MemoryCanvas() {
        SelectObject(context_, before_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }

    HDC Context() const { return context_; }
    void Fill(ARGB pixel) { std::fill(pixels_, pixels_ + count_, pixel); }
    ARGB At(int x, int y) const { return pixels_[y * width_ + x]; }
    // The red of a row.
    std::string Row(int y) const {
        std::string text;
        for (int x = 0; x < width_; ++x) {
            text += (x == 0 ? "" : " ") + std::to_string(At(x, y) >> 16 & 0xFF);
        }
        return text;
    }

private:
    int width_;
    int count_ = 0;
    HDC context_;
    HBITMAP bitmap_ = nullptr;
    ARGB* pixels_ = nullptr;
    HGDIOBJ before_ = nullptr;
};

}  // namespace test
