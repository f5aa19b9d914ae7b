#pragma once

// What a control draws, to look at.

#include <algorithm>
#include <vector>

#include "picture.h"

namespace desktop_test {

constexpr COLORREF kUntouched = RGB(255, 0, 255);

class ControlPicture : public Picture {
public:
    // Of the client area, on `background`.
    explicit ControlPicture(HWND control, COLORREF background = kUntouched)
        : ControlPicture(control, ClientSize(control), background) {}

    RECT Client() const { return {0, 0, size_.cx, size_.cy}; }
    COLORREF At(int x, int y) const { return GetPixel(Context(), x, y); }
    int Count(COLORREF color) const { return Count(color, Client()); }
    int Count(COLORREF color, RECT area) const {
        int count = 0;
        for (int i = 0; i < size_.cx * size_.cy; ++i) {
            const POINT at = {i % size_.cx, i / size_.cx};
            count += PtInRect(&area, at) && At(at.x, at.y) == color ? 1 : 0;
        }
        return count;
    }
    // The bounds of all that has another colour.
    RECT Ink(COLORREF background) const {
        RECT ink = {};
        for (int i = 0; i < size_.cx * size_.cy; ++i) {
            const RECT pixel = {i % size_.cx, i / size_.cx, i % size_.cx + 1, i / size_.cx + 1};
            if (At(pixel.left, pixel.top) != background) {
                UnionRect(&ink, &ink, &pixel);
            }
        }
        return ink;
    }
    std::vector<COLORREF> Colors() const {
        std::vector<COLORREF> colors;
        for (int i = 0; i < size_.cx * size_.cy; ++i) {
            colors.push_back(At(i % size_.cx, i / size_.cx));
        }
        return colors;
    }

private:
    ControlPicture(HWND control, SIZE size, COLORREF background) : Picture(size.cx, size.cy, background), size_(size) {
        SendMessageW(control, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(Context()), PRF_CLIENT | PRF_ERASEBKGND);
    }
    static SIZE ClientSize(HWND control) {
        RECT client = {};
        GetClientRect(control, &client);
        return {std::max<LONG>(client.right, 1), std::max<LONG>(client.bottom, 1)};
    }

    SIZE size_;
};

}  // namespace desktop_test
