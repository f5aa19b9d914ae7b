#pragma once

// A bitmap with transparent pixels that knows whether a point hits it, and a static control that shows one.
//
// Of the thread of the user interface.

#include <afxwin.h>
#include <kadata/export.h>

#include <vector>

// Which pixels are opaque, the hit mask tells: of an icon its own mask; of any other bitmap each pixel is opaque that has not the
// colour of the top left one. The mask is made anew when the object gets another bitmap, whichever function gives it one; who
// draws into the bitmap calls UpdateHitInfo afterwards.
class KADATA_API CTransparentBitmap : public CBitmap {
    DECLARE_DYNAMIC(CTransparentBitmap)

public:
    // For DrawTransparent: what the hit mask leaves out.
    static constexpr COLORREF BY_HIT_MASK = 0xFFFFFFFF;

    CTransparentBitmap() = default;

    // A resource of the module that AfxFindResourceHandle tells, in place of the bitmap from before. FALSE, and nothing is
    // changed, when there is none or it is damaged. An icon has the system's size (SM_CXICON); its pixels are on or off, by its
    // mask.
    BOOL LoadIcon(UINT id);
    // Enlarged for large fonts and screens of high density, never shrunk. With a window: by the mean width of a letter in the
    // nearest dialog, from the window up, over 6 pixels, and in width only. Without a window, or a dialog: by the screen's dots
    // per inch over 96. The result is smooth inside and has a sharp edge: no colour of the picture mixes with the transparent
    // one.
    BOOL LoadBitmapScaled(UINT id, HWND window);

    // In pixels; 0 without a bitmap.
    int Width() const;
    int Height() const;

    // Whether an opaque pixel is there. FALSE outside and without a bitmap.
    BOOL HitTest(CPoint point) const;
    void UpdateHitInfo();

    // Draws the bitmap with its upper left corner at the point, without its pixels of the colour `transparent`; of an icon also
    // without those outside of its mask. BY_HIT_MASK leaves out just what cannot be hit.
    //   disabled  in shades of grey, half way to the colour of buttons (COLOR_3DFACE)
    //   buffered  put together off screen and copied at once, so that nothing flickers
    // The context's colours are afterwards as they were. The bitmap must not be selected into a context.
    virtual void DrawTransparent(CDC* dc, int x, int y, COLORREF transparent, BOOL disabled = FALSE, BOOL buffered = FALSE);

protected:
    // Keeps a monochrome mask (1 is transparent) as the hit mask, in place of the one from before. FALSE, and there is none, when
    // it cannot be read. It must not be selected into a context.
    BOOL CreateHitInfo(HDC dc, HBITMAP mask);

private:
    void NeedHitInfo() const;
    bool TakeIcon(const ICONINFO& icon);
    BOOL Take(HBITMAP bitmap, HBITMAP mask);
    HBITMAP MaskByColor(COLORREF transparent) const;
    HBITMAP MaskByHits() const;
    HBITMAP MaskFor(HDC dc, COLORREF transparent) const;

    // One bit a pixel, 1 is transparent; rows from the top, each of a multiple of 32 bits.
    std::vector<BYTE> m_HitMask;
    HGDIOBJ m_MaskOf = nullptr;  // the bitmap that the mask was made of
    bool m_HasOwnMask = false;   // of an icon
};

// Shows its bitmap over the background that its parent gives it (WM_CTLCOLORSTATIC), in grey when it is disabled. Attach it to a
// static control of any kind with SubclassDlgItem, or make it with Create.
class KADATA_API CTransparentBitmapStatic : public CStatic {
    DECLARE_DYNAMIC(CTransparentBitmapStatic)

public:
    CTransparentBitmapStatic() = default;

    // Invalidate the control after a change.
    CTransparentBitmap& GetTransparentBitmap() { return m_Bitmap; }

    void DrawItem(LPDRAWITEMSTRUCT item) override;

protected:
    // Makes the control an owner-drawn one.
    void PreSubclassWindow() override;

private:
    CTransparentBitmap m_Bitmap;
};
