#include <kadata/transparent_bitmap.h>

#include <tchar.h>

#include <utility>

#include "bitmap_context.h"
#include "bitmap_scaling.h"

IMPLEMENT_DYNAMIC(CTransparentBitmap, CBitmap)

namespace {

constexpr int ROW_BITS = 32;  // a row of the mask is a multiple of it

// What GetDIBits fills and SetDIBits reads for one bit a pixel.
struct MonochromeFormat {
    BITMAPINFOHEADER header;
    RGBQUAD colors[2];

    MonochromeFormat(int width, int height) : header(), colors{{0, 0, 0, 0}, {0xFF, 0xFF, 0xFF, 0}} {
        header.biSize = sizeof(header);
        header.biWidth = width;
        header.biHeight = -height;  // from the top
        header.biPlanes = 1;
        header.biBitCount = 1;
        header.biCompression = BI_RGB;
    }
    BITMAPINFO* Info() { return reinterpret_cast<BITMAPINFO*>(this); }
};

CSize SizeOf(HGDIOBJ bitmap) {
    BITMAP description = {};
    return GetObjectW(bitmap, sizeof(description), &description) != 0 ? CSize(description.bmWidth, description.bmHeight)
                                                                      : CSize();
}

// A part of a bitmap, as one of the same kind.
HBITMAP CopyOf(HBITMAP bitmap, const CRect& part) {
    const kadata::ClientContext screen(nullptr);
    const kadata::BitmapContext from(screen, bitmap);
    const HBITMAP copy = CreateCompatibleBitmap(from, part.Width(), part.Height());
    const kadata::BitmapContext to(screen, copy);
    BitBlt(to, 0, 0, part.Width(), part.Height(), from, part.left, part.top, SRCCOPY);
    return copy;
}

}  // namespace

int CTransparentBitmap::Width() const {
    return SizeOf(m_hObject).cx;
}

int CTransparentBitmap::Height() const {
    return SizeOf(m_hObject).cy;
}

BOOL CTransparentBitmap::LoadIcon(UINT id) {
    if (id > 0xFFFF) {  // MAKEINTRESOURCE would cut it to another number
        return FALSE;
    }
    const LPCTSTR name = MAKEINTRESOURCEW(static_cast<WORD>(id));
    ICONINFO icon = {};
    if (!GetIconInfo(::LoadIconW(AfxFindResourceHandle(name, RT_GROUP_ICON), name), &icon)) {
        return FALSE;
    }
    const bool taken = TakeIcon(icon);
    ::DeleteObject(icon.hbmMask);
    if (icon.hbmColor != nullptr && (!taken || m_hObject != icon.hbmColor)) {
        ::DeleteObject(icon.hbmColor);
    }
    return taken;
}

// Without a bitmap of colours, the mask is twice as high: its lower half is the picture.
bool CTransparentBitmap::TakeIcon(const ICONINFO& icon) {
    if (icon.hbmColor != nullptr) {
        return Take(icon.hbmColor, icon.hbmMask) != FALSE;
    }
    const CSize both = SizeOf(icon.hbmMask);
    const CRect upper(0, 0, both.cx, both.cy / 2);
    const HBITMAP mask = CopyOf(icon.hbmMask, upper);
    const BOOL taken = Take(CopyOf(icon.hbmMask, CRect(0, upper.bottom, both.cx, both.cy)), mask);
    ::DeleteObject(mask);
    return taken != FALSE;
}

BOOL CTransparentBitmap::LoadBitmapScaled(UINT id, HWND window) {
    if (id > 0xFFFF) {
        return FALSE;
    }
    const LPCTSTR name = MAKEINTRESOURCEW(static_cast<WORD>(id));
    HBITMAP bitmap = ::LoadBitmapW(AfxFindResourceHandle(name, RT_BITMAP), name);
    const kadata::ScaleFactors factors = kadata::ScaleFor(window);
    if (bitmap != nullptr && (factors.x > 1 || factors.y > 1)) {
        const kadata::BitmapPixels enlarged = kadata::Enlarged(kadata::ReadPixels(bitmap), factors);
        ::DeleteObject(bitmap);
        bitmap = enlarged.colors.empty() ? nullptr : kadata::MakeBitmap(enlarged);
    }
    return Take(bitmap, nullptr);
}

// Owns the bitmap when it succeeds. Without a mask it is made of the bitmap.
BOOL CTransparentBitmap::Take(HBITMAP bitmap, HBITMAP mask) {
    if (bitmap == nullptr) {
        return FALSE;
    }
    DeleteObject();
    Attach(bitmap);
    if (mask == nullptr) {
        UpdateHitInfo();
        return TRUE;
    }
    const kadata::ClientContext screen(nullptr);
    m_HasOwnMask = CreateHitInfo(screen, mask) != FALSE;
    return TRUE;
}

void CTransparentBitmap::UpdateHitInfo() {
    m_HasOwnMask = false;
    m_HitMask.clear();
    m_MaskOf = m_hObject;
    if (m_hObject == nullptr) {
        return;
    }
    const kadata::ClientContext screen(nullptr);
    const HBITMAP mask = MaskByColor(BY_HIT_MASK);
    CreateHitInfo(screen, mask);
    ::DeleteObject(mask);
}

BOOL CTransparentBitmap::CreateHitInfo(HDC dc, HBITMAP mask) {
    const CSize size = SizeOf(mask);
    m_MaskOf = m_hObject;
    m_HitMask.clear();
    MonochromeFormat format(size.cx, size.cy);
    if (GetDIBits(dc, mask, 0, static_cast<UINT>(size.cy), nullptr, format.Info(), DIB_RGB_COLORS) == 0) {
        return FALSE;
    }
    format = MonochromeFormat(size.cx, size.cy);
    m_HitMask.resize(static_cast<std::size_t>((size.cx + ROW_BITS - 1) / ROW_BITS * (ROW_BITS / 8)) *
                     static_cast<std::size_t>(size.cy));
    if (GetDIBits(dc, mask, 0, static_cast<UINT>(size.cy), m_HitMask.data(), format.Info(), DIB_RGB_COLORS) != size.cy) {
        m_HitMask.clear();
        return FALSE;
    }
    return TRUE;
}

// Somebody may have given the object another bitmap.
void CTransparentBitmap::NeedHitInfo() const {
    if (m_MaskOf != m_hObject) {
        const_cast<CTransparentBitmap*>(this)->UpdateHitInfo();
    }
}

BOOL CTransparentBitmap::HitTest(CPoint point) const {
    NeedHitInfo();
    const CSize size = SizeOf(m_hObject);
    if (m_HitMask.empty() || point.x < 0 || point.y < 0 || point.x >= size.cx || point.y >= size.cy) {
        return FALSE;
    }
    const auto row = static_cast<std::size_t>((size.cx + ROW_BITS - 1) / ROW_BITS * ROW_BITS);
    const std::size_t bit = row * static_cast<std::size_t>(point.y) + static_cast<std::size_t>(point.x);
    return bit / 8 < m_HitMask.size() && (m_HitMask[bit / 8] >> (7 - bit % 8) & 1) == 0;
}
