#pragma once

// A memory context with pixels to look at.

#include <windows.h>

#include <string>
#include <vector>

namespace desktop_test {

class Picture {
public:
    Picture(int width, int height) : width_(width), height_(height) {
        const HDC screen = GetDC(nullptr);
        bitmap_ = CreateCompatibleBitmap(screen, width, height);
        ReleaseDC(nullptr, screen);
        before_ = SelectObject(context_, bitmap_);
        Clear(RGB(255, 0, 255));
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    ~Picture() {
        SelectObject(context_, before_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }

    HDC Context() const { return context_; }
    COLORREF At(int x, int y) const { return GetPixel(context_, x, y); }
    void Clear(COLORREF color) {
        const HBRUSH brush = CreateSolidBrush(color);
        const RECT all = {0, 0, width_, height_};
        FillRect(context_, &all, brush);
        DeleteObject(brush);
    }
    // What the window draws of its client area.
    void Print(HWND window) {
        SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(context_), PRF_CLIENT | PRF_ERASEBKGND);
    }
    int Count(COLORREF color, RECT area) const {
        int count = 0;
        for (int y = area.top; y < area.bottom; ++y) {
            for (int x = area.left; x < area.right; ++x) {
                count += At(x, y) == color ? 1 : 0;
            }
        }
        return count;
    }
    // The bounds of all that has another colour.
    RECT Ink(COLORREF background) const {
        RECT ink = {width_, height_, 0, 0};
        for (int y = 0; y < height_; ++y) {
            for (int x = 0; x < width_; ++x) {
                if (At(x, y) != background) {
                    ink = {std::min<LONG>(ink.left, x), std::min<LONG>(ink.top, y), std::max<LONG>(ink.right, x + 1),
                           std::max<LONG>(ink.bottom, y + 1)};
                }
            }
        }
        return ink;
    }

private:
    int width_;
    int height_;
    HDC context_ = CreateCompatibleDC(nullptr);
    HBITMAP bitmap_;
    HGDIOBJ before_;
};

}  // namespace desktop_test
