#include "memory_picture.h"
#include "skinned_frame.h"

namespace kadata {

void SkinnedFrame::Draw() {
    if (window_.IsWindowVisible() && !window_.IsIconic()) {
        CWindowDC dc(&window_);
        Draw(dc);
    }
}

void SkinnedFrame::Draw(CDC& dc) {
    const CRect outer = Outer();
    CRect client = outer;
    TakeFrom(client);
    CRect inner = client;
    inner.InflateRect(surfaces_.Line(), surfaces_.Line());
    MemoryPicture picture(dc, outer.Size());
    if (!picture.IsValid() || outer.IsRectEmpty()) {
        return;
    }
    surfaces_.Window().DrawWindowBitmap(picture.Graphics(), active_ ? CSkin::SkinActive : CSkin::SkinInactive, outer, inner,
                                        client);
    DrawCaption(picture.Context(), picture.Graphics());
    DrawCloseBox(picture.Graphics());
    const int depth = dc.SaveDC();
    dc.ExcludeClipRect(client);
    picture.CopyTo(dc);
    dc.RestoreDC(depth);
}

// In the dialog's font, but bold, in the middle of the window.
void SkinnedFrame::DrawCaption(CDC& dc, Gdiplus::Graphics* graphics) {
    CFont* const dialogFont = window_.GetFont();
    LOGFONT description = {};
    CFont font;
    if (dialogFont == nullptr || dialogFont->GetLogFont(&description) == 0) {
        return;
    }
    description.lfWeight = FW_BOLD;
    font.CreateFontIndirect(&description);
    CString title;
    window_.GetWindowText(title);
    const CRect outer = Outer();
    const CRect closeBox = CloseBox();
    const int side = static_cast<int>(surfaces_.Info().nFrameWidth) + 2 * surfaces_.Line();
    const int margin = closeBox.IsRectEmpty() ? side : outer.right - closeBox.left + surfaces_.Line();
    CSkin& surface = surfaces_.Window();
    const DWORD color = GetSysColor(active_ ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
    surface.SetCaptionTextColors(color, color, color, color);
    surface.DrawWindowCaption(graphics, CSkin::SkinNormal,
                              CRect(margin, 2 * surfaces_.Line(), outer.right - margin, CaptionHeight()), title, &font, &dc);
}

void SkinnedFrame::DrawCloseBox(Gdiplus::Graphics* graphics) {
    const CRect rect = CloseBox();
    const CSkin::ESkinBitmapType type = !CanClose()        ? CSkin::SkinDisabled
                                        : pressed_ && hot_ ? CSkin::SkinPressed
                                        : hot_ || pressed_ ? CSkin::SkinHot
                                                           : CSkin::SkinNormal;
    CFont* const unused = CFont::FromHandle(static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)));
    surfaces_.CloseBox().DrawButtonBitmap(graphics, type, rect);
    surfaces_.CloseBox().DrawButtonCaption(graphics, type, rect, CString(), unused, nullptr);  // the glyph alone
}

}  // namespace kadata
