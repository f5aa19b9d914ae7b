#include "dialog_surfaces.h"

#include "memory_picture.h"

namespace kadata {

std::unique_ptr<DialogSurfaces> DialogSurfaces::Load(const SkinInfo& info) {
    std::unique_ptr<DialogSurfaces> surfaces(new DialogSurfaces(info));
    return info.IsComplete() && surfaces->LoadBitmaps() ? std::move(surfaces) : nullptr;
}

bool DialogSurfaces::LoadBitmaps() {
    SkinCaptionBitmapInfo none;
    if (info_.buttonGlyph.nBitmapID != 0) {
        SkinBitmapInfo box = info_.button;
        box.nCorner /= 2;  // the box is as high as a line of text: two corners of a button have no room in it
        checkBox_.SetButtonBitmapInfo(box, info_.buttonGlyph);
    }
    // Only the button bitmap counts: without its glyph a close box still closes.
    closeBox_.SetButtonBitmapInfo(info_.captionButton, info_.closeGlyph);
    return window_.SetWindowBitmapInfo(info_.windowFrame) && window_.SetWindowBackgroundBitmapInfo(info_.windowBackground) &&
           button_.SetButtonBitmapInfo(info_.button, none) && closeBox_.HasButtonBitmap();
}

CBrush* DialogSurfaces::Background(CSize client) {
    if (background_.GetSafeHandle() != nullptr && client == backgroundSize_) {
        return &background_;
    }
    background_.DeleteObject();
    CDC screen;
    if (client.cx <= 0 || client.cy <= 0 || !screen.CreateDC(_T("DISPLAY"), nullptr, nullptr, nullptr)) {
        return nullptr;
    }
    MemoryPicture picture(screen, client);
    if (!picture.IsValid()) {
        return nullptr;
    }
    window_.DrawWindowBackgroundBitmap(picture.Graphics(), picture.Rect());
    picture.Graphics()->Flush(Gdiplus::FlushIntentionSync);
    backgroundSize_ = client;
    return background_.CreatePatternBrush(&picture.Bitmap()) ? &background_ : nullptr;
}

void DialogSurfaces::FillBackground(CDC& dc, const CRect& rect, CSize client, CPoint corner) {
    CBrush* const brush = Background(client);
    if (brush == nullptr) {
        dc.FillSolidRect(rect, GetSysColor(COLOR_3DFACE));
        return;
    }
    const CPoint before = dc.SetBrushOrg(-corner.x, -corner.y);
    dc.FillRect(rect, brush);
    dc.SetBrushOrg(before);
}

}  // namespace kadata
