#include "picture_file.h"

#include <cstddef>
#include <vector>

namespace {

BOOL FindPngEncoder(CLSID& encoder) {
    UINT count = 0;
    UINT size = 0;
    if (Gdiplus::GetImageEncodersSize(&count, &size) != Gdiplus::Ok || size == 0) {
        return FALSE;
    }
    std::vector<std::byte> buffer(size);
    auto* const encoders = reinterpret_cast<Gdiplus::ImageCodecInfo*>(buffer.data());
    if (Gdiplus::GetImageEncoders(count, size, encoders) != Gdiplus::Ok) {
        return FALSE;
    }
    for (UINT i = 0; i < count; ++i) {
        if (CString(encoders[i].MimeType) == _T("image/png")) {
            encoder = encoders[i].Clsid;
            return TRUE;
        }
    }
    return FALSE;
}

}  // namespace

CGdiPlus::CGdiPlus() {
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&m_token, &input, nullptr);
}

CGdiPlus::~CGdiPlus() {
    Gdiplus::GdiplusShutdown(m_token);
}

CPicture::CPicture(CDC* like, int width, int height) {
    if (!m_dc.CreateCompatibleDC(like) || !m_bitmap.CreateCompatibleBitmap(like, width, height)) {
        throw new CResourceException;
    }
    m_before = m_dc.SelectObject(&m_bitmap);
    m_graphics = std::make_unique<Gdiplus::Graphics>(m_dc.GetSafeHdc());
}

CPicture::~CPicture() {
    m_graphics.reset();
    m_dc.SelectObject(m_before);
}

BOOL SaveBitmapPicture(CBitmap& bitmap, const CString& path) {
    CLSID encoder = {};
    Gdiplus::Bitmap picture(static_cast<HBITMAP>(bitmap.GetSafeHandle()), nullptr);
    return FindPngEncoder(encoder) && picture.Save(path, &encoder, nullptr) == Gdiplus::Ok;
}

BOOL SaveWindowPicture(HWND window, const CString& path) {
    CRect rect;
    CDC screen;
    if (!GetWindowRect(window, rect) || !screen.CreateDC(_T("DISPLAY"), nullptr, nullptr, nullptr)) {
        return FALSE;
    }
    CPicture picture(&screen, rect.Width(), rect.Height());
    return PrintWindow(window, picture.Context().GetSafeHdc(), 0) && SaveBitmapPicture(picture.Bitmap(), path);
}
