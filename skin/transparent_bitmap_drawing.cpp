// A bitmap drawn without its transparent pixels: what is below is blackened where the picture is opaque, the picture where it is
// not, and both are added.

#include <kadata/transparent_bitmap.h>

#include "bitmap_context.h"
#include "bitmap_pixels.h"

IMPLEMENT_DYNAMIC(CTransparentBitmapStatic, CStatic)

namespace {

constexpr COLORREF WHITE = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF BLACK = RGB(0, 0, 0);

using kadata::BitmapContext;

// A context's colours, in which a monochrome source is drawn: 1 and 0.
class Colors {
public:
    Colors(HDC dc, COLORREF one, COLORREF zero) : m_dc(dc), m_one(SetBkColor(dc, one)), m_zero(SetTextColor(dc, zero)) {}
    Colors(const Colors&) = delete;
    Colors& operator=(const Colors&) = delete;
    ~Colors() {
        SetBkColor(m_dc, m_one);
        SetTextColor(m_dc, m_zero);
    }

private:
    HDC m_dc;
    COLORREF m_one;
    COLORREF m_zero;
};

// A bitmap that is deleted with this.
class OwnedBitmap {
public:
    explicit OwnedBitmap(HBITMAP bitmap) : m_bitmap(bitmap) {}
    OwnedBitmap(const OwnedBitmap&) = delete;
    OwnedBitmap& operator=(const OwnedBitmap&) = delete;
    ~OwnedBitmap() { ::DeleteObject(m_bitmap); }
    operator HBITMAP() const { return m_bitmap; }

private:
    HBITMAP m_bitmap;
};

// Where `isSet`, the mask is 1.
template <class Predicate>
HBITMAP MakeMask(CSize size, Predicate isSet) {
    std::vector<BYTE> bits;  // rows are a multiple of 16
    const int width = (size.cx + 15) / 16 * 16;
    for (int y = 0; y < size.cy; ++y) {
        for (int x = 0; x < width; ++x) {
            if (x % 8 == 0) {
                bits.push_back(0);
            }
            bits.back() = static_cast<BYTE>(bits.back() << 1 | (x < size.cx && isSet(x, y)));
        }
    }
    return CreateBitmap(size.cx, size.cy, 1, 1, bits.data());
}

void MakePale(kadata::BitmapPixels& pixels) {
    const COLORREF face = GetSysColor(COLOR_3DFACE);
    for (DWORD& color : pixels.colors) {
        const DWORD grey = ((color >> 16 & 0xFF) * 30 + (color >> 8 & 0xFF) * 59 + (color & 0xFF) * 11) / 100;
        color = (grey + GetRValue(face)) / 2 << 16 | (grey + GetGValue(face)) / 2 << 8 | (grey + GetBValue(face)) / 2;
    }
}

// The picture as it is to be drawn, black where the mask is 1.
HBITMAP MakePicture(HBITMAP bitmap, HDC mask, BOOL disabled) {
    kadata::BitmapPixels pixels = kadata::ReadPixels(bitmap);
    if (disabled) {
        MakePale(pixels);
    }
    const HBITMAP picture = pixels.colors.empty() ? nullptr : kadata::MakeBitmap(pixels);
    if (picture != nullptr) {
        const BitmapContext dc(mask, picture);
        const Colors colors(dc, BLACK, WHITE);
        BitBlt(dc, 0, 0, pixels.size.cx, pixels.size.cy, mask, 0, 0, SRCAND);
    }
    return picture;
}

void Combine(HDC target, CPoint at, CSize size, HDC picture, HDC mask) {
    const Colors colors(target, WHITE, BLACK);
    BitBlt(target, at.x, at.y, size.cx, size.cy, mask, 0, 0, SRCAND);
    BitBlt(target, at.x, at.y, size.cx, size.cy, picture, 0, 0, SRCPAINT);
}

}  // namespace

// The pixels of a colour are 1; of the top left one's for BY_HIT_MASK. A bitmap of one bit has no colours for BitBlt to compare.
HBITMAP CTransparentBitmap::MaskByColor(COLORREF transparent) const {
    const kadata::BitmapPixels pixels = kadata::ReadPixels(*this);
    if (pixels.colors.empty()) {
        return nullptr;
    }
    const DWORD named = DWORD{GetRValue(transparent)} << 16 | DWORD{GetGValue(transparent)} << 8 | GetBValue(transparent);
    const DWORD color = transparent == BY_HIT_MASK ? pixels.colors.front() : named;
    return MakeMask(pixels.size, [&](int x, int y) {
        return pixels.colors[static_cast<std::size_t>(y) * static_cast<std::size_t>(pixels.size.cx) +
                             static_cast<std::size_t>(x)] == color;
    });
}

HBITMAP CTransparentBitmap::MaskByHits() const {
    return MakeMask({Width(), Height()}, [this](int x, int y) { return !HitTest({x, y}); });
}

HBITMAP CTransparentBitmap::MaskFor(HDC dc, COLORREF transparent) const {
    NeedHitInfo();
    if (transparent == BY_HIT_MASK) {
        return MaskByHits();
    }
    const HBITMAP mask = MaskByColor(transparent);
    if (m_HasOwnMask) {
        const OwnedBitmap own(MaskByHits());
        const BitmapContext from(dc, own);
        const BitmapContext to(dc, mask);
        BitBlt(to, 0, 0, Width(), Height(), from, 0, 0, SRCPAINT);
    }
    return mask;
}

void CTransparentBitmap::DrawTransparent(CDC* dc, int x, int y, COLORREF transparent, BOOL disabled, BOOL buffered) {
    const CSize size(Width(), Height());
    if (dc == nullptr || size.cx == 0) {
        return;
    }
    const HDC target = dc->GetSafeHdc();
    const OwnedBitmap maskBitmap(MaskFor(target, transparent));
    const BitmapContext mask(target, maskBitmap);
    const OwnedBitmap pictureBitmap(MakePicture(*this, mask, disabled));
    const BitmapContext picture(target, pictureBitmap);
    if (!mask || !picture) {
        return;
    }
    if (!buffered) {
        return Combine(target, {x, y}, size, picture, mask);
    }
    const OwnedBitmap bufferBitmap(::CreateCompatibleBitmap(target, size.cx, size.cy));
    const BitmapContext buffer(target, bufferBitmap);
    BitBlt(buffer, 0, 0, size.cx, size.cy, target, x, y, SRCCOPY);
    Combine(buffer, {}, size, picture, mask);
    BitBlt(target, x, y, size.cx, size.cy, buffer, 0, 0, SRCCOPY);
}

void CTransparentBitmapStatic::PreSubclassWindow() {
    CStatic::PreSubclassWindow();
    ModifyStyle(SS_TYPEMASK, SS_OWNERDRAW);
}

void CTransparentBitmapStatic::DrawItem(LPDRAWITEMSTRUCT item) {
    const auto brush = reinterpret_cast<HBRUSH>(::SendMessageW(
        ::GetParent(m_hWnd), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(item->hDC), reinterpret_cast<LPARAM>(m_hWnd)));
    if (brush != nullptr) {
        FillRect(item->hDC, &item->rcItem, brush);
    }
    CDC dc;
    dc.Attach(item->hDC);
    m_Bitmap.DrawTransparent(&dc, item->rcItem.left, item->rcItem.top, CTransparentBitmap::BY_HIT_MASK,
                             (item->itemState & ODS_DISABLED) != 0, TRUE);
    dc.Detach();
}
