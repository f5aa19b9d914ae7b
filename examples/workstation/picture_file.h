#pragma once

// Pictures in memory, and their way into PNG files.

#include <afxwin.h>
#include <gdiplus.h>

#include <memory>

// Keeps GDI+ started for as long as it lives.
class CGdiPlus {
public:
    CGdiPlus();
    CGdiPlus(const CGdiPlus&) = delete;
    CGdiPlus& operator=(const CGdiPlus&) = delete;
    ~CGdiPlus();

private:
    ULONG_PTR m_token = 0;
};

// A picture that GDI and GDI+ draw into, at first black. The constructor throws CResourceException* when there is no room for it.
class CPicture {
public:
    CPicture(CDC* like, int width, int height);
    CPicture(const CPicture&) = delete;
    CPicture& operator=(const CPicture&) = delete;
    ~CPicture();

    CDC& Context() { return m_dc; }
    Gdiplus::Graphics& Graphics() { return *m_graphics; }
    CBitmap& Bitmap() { return m_bitmap; }

private:
    CDC m_dc;
    CBitmap m_bitmap;
    CBitmap* m_before = nullptr;
    std::unique_ptr<Gdiplus::Graphics> m_graphics;
};

// FALSE when the file cannot be written.
BOOL SaveBitmapPicture(CBitmap& bitmap, const CString& path);
// The window with its frame and children, whether it is on a screen or not.
BOOL SaveWindowPicture(HWND window, const CString& path);
