#pragma once

// What a skinned dialog is drawn with: the surfaces of its frame, its background and its buttons.

#include <kadata/skin.h>

#include <memory>

namespace kadata {

class DialogSurfaces {
public:
    // Null when the skin is not complete or one of the bitmaps cannot be loaded; a missing glyph is no failure.
    static std::unique_ptr<DialogSurfaces> Load(const SkinInfo& info);

    const SkinInfo& Info() const { return info_; }
    CSkin& Window() { return window_; }
    CSkin& Button() { return button_; }
    CSkin& CloseBox() { return closeBox_; }
    // Null where the skin has no glyph for it.
    CSkin* CheckBox() { return checkBox_.HasButtonCaptionBitmap() ? &checkBox_ : nullptr; }

    // The dialog's background as a brush, for a client area of that size: a control fills itself with it when the brush's origin
    // is the corner of the dialog. Valid until the size changes. Null when there is no memory.
    CBrush* Background(CSize client);
    // Fills `rect`, whose device context has its origin `corner` pixels inside of the dialog's client area.
    void FillBackground(CDC& dc, const CRect& rect, CSize client, CPoint corner);

    // The width of the line that the inner frame draws around the client area.
    int Line() const { return info_.nFrameWidth > 4 ? static_cast<int>(info_.nFrameWidth / 4) : 1; }

private:
    explicit DialogSurfaces(const SkinInfo& info) : info_(info) {}
    bool LoadBitmaps();

    SkinInfo info_;
    CSkin window_;
    CSkin button_;
    CSkin checkBox_;
    CSkin closeBox_;
    CBrush background_;
    CSize backgroundSize_;
};

}  // namespace kadata
