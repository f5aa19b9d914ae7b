// Buttons without their captions.

#include <kadata/skin.h>

#include "nine_slice.h"
#include "skin_modes.h"

Gdiplus::Status CSkin::DrawButtonBitmap(Gdiplus::Graphics* graphics, ESkinBitmapType type, CRect rect, CRect& inner) {
    if (graphics == nullptr || m_ButtonBitmap == nullptr || rect.left == rect.right || rect.top == rect.bottom) {
        return Gdiplus::InvalidParameter;
    }
    kadata::NineSlice cell;
    cell.top = LONGLONG{type} * m_ButtonBitmapInfo.nCellHeight;
    cell.width = m_ButtonBitmapInfo.nCellWidth;
    cell.height = m_ButtonBitmapInfo.nCellHeight;
    cell.corner = m_ButtonBitmapInfo.nCorner;

    const kadata::SkinModes modes = kadata::SkinModes::OfButtons(*graphics);
    DrawNineSlice(graphics, m_ButtonBitmap.get(), cell, rect);
    inner = kadata::CutNineSlice(cell, rect)[kadata::CENTRE].target;
    return Gdiplus::Ok;
}

Gdiplus::Status CSkin::DrawButtonBitmap(Gdiplus::Graphics* graphics, ESkinBitmapType type, CRect rect) {
    CRect inner;
    return DrawButtonBitmap(graphics, type, rect, inner);
}

BOOL CSkin::DrawButtonBitmap(CDC& dc, ESkinBitmapType type, const CRect& drawRect, const CRect& targetRect) {
    const auto draw = [&](HDC target, Gdiplus::Status& drawn) {
        CRect inner;
        Gdiplus::Graphics graphics(target);
        if (graphics.GetLastStatus() != Gdiplus::Ok) {
            return FALSE;
        }
        drawn = DrawButtonBitmap(&graphics, type, drawRect, inner);
        return TRUE;
    };
    Gdiplus::Status drawn = Gdiplus::InvalidParameter;
    if (targetRect.IsRectEmpty()) {
        return draw(dc.GetSafeHdc(), drawn);
    }
    CDC memory;
    CBitmap picture;
    if (!memory.CreateCompatibleDC(&dc) || !picture.CreateCompatibleBitmap(&dc, drawRect.Width(), drawRect.Height())) {
        return FALSE;
    }
    CBitmap* const before = memory.SelectObject(&picture);
    const BOOL done = draw(memory.GetSafeHdc(), drawn);
    if (drawn == Gdiplus::Ok) {  // else there is nothing in the picture
        dc.BitBlt(targetRect.left, targetRect.top, targetRect.Width(), targetRect.Height(), &memory, 0, 0, SRCCOPY);
    }
    memory.SelectObject(before);
    return done;
}
