#pragma once

// A picture in memory that tests draw on through its context and read pixel by pixel, and guards for drawing objects.

#include <windows.h>

#include <algorithm>
#include <span>
#include <string>
#include <utility>

namespace test {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kGreen = RGB(0, 255, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);

// Deletes a drawing object.
template <class Handle>
class Object {
public:
    explicit Object(Handle handle) : handle_(handle) {}
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    ~Object() { DeleteObject(handle_); }
    operator Handle() const { return handle_; }

private:
    Handle handle_;
};
using Region = Object<HRGN>;
using Brush = Object<HBRUSH>;
using Pen = Object<HPEN>;
using Bitmap = Object<HBITMAP>;

// Selects while it lives.
class Selected {
public:
    Selected(HDC context, HGDIOBJ object) : context_(context), before_(SelectObject(context, object)) {}
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;
    ~Selected() { SelectObject(context_, before_); }

private:
    HDC context_;
    HGDIOBJ before_;
};

inline BITMAPINFO DibInfo(int width, int height, int depth = 32) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = static_cast<WORD>(depth);
    return info;
}

// A memory context with a bitmap: of 32 bits, whose pixels are at hand, or monochrome.
class Picture {
public:
    Picture(int width, int height, COLORREF color = kWhite) : Picture(Section(width, -height)) { Clear(color); }
    // Rows upwards in memory; black.
    static Picture Upwards(int width, int height) { return Picture(Section(width, height)); }
    static Picture Mono(int width, int height, const void* bits = nullptr) {
        return Picture(Made{width, height, CreateBitmap(width, height, 1, 1, bits), nullptr});
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    ~Picture() {
        SelectObject(context_, before_);
        DeleteDC(context_);
        DeleteObject(bitmap_);
    }

    operator HDC() const { return context_; }
    HBITMAP Handle() const { return bitmap_; }
    int Width() const { return width_; }
    int Height() const { return height_; }
    // As they lie in memory.
    std::span<DWORD> Pixels() const { return {static_cast<DWORD*>(bits_), static_cast<std::size_t>(width_ * height_)}; }

    void Clear(COLORREF color) {
        std::fill(Pixels().begin(), Pixels().end(), RGB(GetBValue(color), GetGValue(color), GetRValue(color)));
    }
    COLORREF At(int x, int y) const { return GetPixel(context_, x, y); }

    // A letter for each pixel, rows from the top: '#' black, '.' white, r, g, b, '?' anything else.
    std::string Art() const {
        std::string art;
        for (int y = 0; y < height_; ++y) {
            for (int x = 0; x < width_; ++x) {
                art += Letter(At(x, y));
            }
            art += '\n';
        }
        return art;
    }

private:
    struct Made {
        int width;
        int height;
        HBITMAP bitmap;
        void* bits;
    };

    explicit Picture(const Made& made) : width_(made.width), height_(made.height), bits_(made.bits), bitmap_(made.bitmap) {}

    static Made Section(int width, int height) {
        const BITMAPINFO info = DibInfo(width, height);
        Made made = {width, height < 0 ? -height : height, nullptr, nullptr};
        made.bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &made.bits, nullptr, 0);
        return made;
    }

    static char Letter(COLORREF color) {
        constexpr std::pair<COLORREF, char> kLetters[] = {{kBlack, '#'}, {kWhite, '.'}, {kRed, 'r'}, {kGreen, 'g'}, {kBlue, 'b'}};
        const auto* const found =
            std::find_if(std::begin(kLetters), std::end(kLetters), [color](const auto& letter) { return letter.first == color; });
        return found != std::end(kLetters) ? found->second : '?';
    }

    int width_;
    int height_;
    void* bits_;
    HBITMAP bitmap_;
    HDC context_ = CreateCompatibleDC(nullptr);
    HGDIOBJ before_ = SelectObject(context_, bitmap_);
};

inline HBRUSH StockBrush(int index) {
    return static_cast<HBRUSH>(GetStockObject(index));
}

}  // namespace test
