#pragma once

// A picture in memory to draw on.

#include <tchar.h>
#include <windows.h>

namespace desktop_test {

class Picture {
public:
    Picture(int width, int height, COLORREF background) : context_(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits_, nullptr, 0);
        before_ = SelectObject(context_, bitmap_);
        const RECT all = {0, 0, width, height};
        const HBRUSH brush = CreateSolidBrush(background);
        FillRect(context_, &all, brush);
        DeleteObject(brush);
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    ~Picture() {
        SelectObject(context_, before_);
        DeleteObject(bitmap_);
        DeleteDC(context_);
    }

    HDC Context() const { return context_; }
    HBITMAP Bitmap() const { return bitmap_; }
    const DWORD* Pixels() const { return static_cast<const DWORD*>(bits_); }  // 0xXXRRGGBB, rows from the top

private:
    HDC context_;
    void* bits_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ before_ = nullptr;
};

}  // namespace desktop_test
