#pragma once

#include <windows.h>

namespace kadata {

// A memory context with a bitmap selected, to draw on it or from it. The bitmap must not be selected elsewhere.
class BitmapContext {
public:
    BitmapContext(HDC like, HGDIOBJ bitmap) : m_dc(CreateCompatibleDC(like)), m_before(SelectObject(m_dc, bitmap)) {}
    BitmapContext(const BitmapContext&) = delete;
    BitmapContext& operator=(const BitmapContext&) = delete;
    ~BitmapContext() {
        if (m_before != nullptr) {
            SelectObject(m_dc, m_before);
        }
        if (m_dc != nullptr) {
            DeleteDC(m_dc);
        }
    }

    // Whether there is something to draw on.
    explicit operator bool() const { return m_before != nullptr; }
    operator HDC() const { return m_dc; }

private:
    HDC m_dc;
    HGDIOBJ m_before;
};

// The context of a window's client area; of the screen for null.
class ClientContext {
public:
    explicit ClientContext(HWND window) : m_window(window), m_dc(GetDC(window)) {}
    ClientContext(const ClientContext&) = delete;
    ClientContext& operator=(const ClientContext&) = delete;
    ~ClientContext() { ReleaseDC(m_window, m_dc); }

    operator HDC() const { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
};

}  // namespace kadata
