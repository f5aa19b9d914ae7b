// What stands upon buttons and in captions: glyphs and texts.

#include <kadata/skin.h>

#include "nine_slice.h"
#include "skin_modes.h"

namespace {

constexpr int PRESSED_OFFSET = 1;  // pixels, right and down; also of the highlight below disabled text
constexpr UINT CENTRED = DT_CENTER | DT_VCENTER | DT_SINGLELINE;

bool IsPressed(CSkin::ESkinBitmapType type) {
    return type == CSkin::SkinPressed || type == CSkin::SkinDefaultPressed;
}

bool IsDisabled(CSkin::ESkinBitmapType type) {
    return type == CSkin::SkinDisabled || type == CSkin::SkinDefaultDisabled;
}

CRect Offset(const CRect& rect) {
    return kadata::LimitedRect(LONGLONG{rect.left} + PRESSED_OFFSET, LONGLONG{rect.top} + PRESSED_OFFSET,
                               LONGLONG{rect.right} + PRESSED_OFFSET, LONGLONG{rect.bottom} + PRESSED_OFFSET);
}

// Where a thing of the size begins between the edges; halves are rounded away from zero.
LONGLONG Centred(LONG begin, LONG end, LONGLONG size) {
    const LONGLONG free = LONGLONG{end} - begin - size;
    return begin + (free + (free < 0 ? -1 : 1)) / 2;
}

bool IsFont(CFont* font, LOGFONT& description) {
    return font != nullptr && font->GetLogFont(&description) != 0;
}

// What text needs, selected into a device context for as long as this lives.
class TextContext {
public:
    TextContext(CDC& dc, const LOGFONT& font) : dc_(dc) {
        if (font_.CreateFontIndirect(&font)) {
            fontBefore_ = dc_.SelectObject(&font_);
        }
        modeBefore_ = dc_.SetBkMode(TRANSPARENT);
        colorBefore_ = dc_.GetTextColor();
    }
    TextContext(const TextContext&) = delete;
    TextContext& operator=(const TextContext&) = delete;
    ~TextContext() {
        dc_.SetTextColor(colorBefore_);
        dc_.SetBkMode(modeBefore_);
        if (fontBefore_ != nullptr) {
            dc_.SelectObject(fontBefore_);
        }
    }

private:
    CDC& dc_;
    CFont font_;
    CFont* fontBefore_ = nullptr;
    int modeBefore_;
    COLORREF colorBefore_;
};

}  // namespace

Gdiplus::Status CSkin::DrawButtonCaption(Gdiplus::Graphics* graphics, ESkinBitmapType type, CRect rect, CString text, CFont* font,
                                         CDC* dc) {
    LOGFONT description;
    if (graphics == nullptr || m_ButtonBitmap == nullptr || rect.IsRectEmpty() || !IsFont(font, description) ||
        (dc == nullptr && !text.IsEmpty())) {
        return Gdiplus::InvalidParameter;
    }
    DrawGlyph(graphics, type, rect);
    if (!text.IsEmpty()) {
        graphics->Flush(Gdiplus::FlushIntentionSync);  // the text comes upon what is drawn, whoever draws first
        DrawStateText(*dc, type, rect, text, description, CENTRED);
    }
    return Gdiplus::Ok;
}

Gdiplus::Status CSkin::DrawWindowCaption(Gdiplus::Graphics* graphics, ESkinBitmapType type, CRect rect, CString text, CFont* font,
                                         CDC* dc) {
    LOGFONT description;
    if (graphics == nullptr || m_WindowBitmap == nullptr || rect.IsRectEmpty() || !IsFont(font, description) ||
        (dc == nullptr && !text.IsEmpty())) {
        return Gdiplus::InvalidParameter;
    }
    if (!text.IsEmpty()) {
        graphics->Flush(Gdiplus::FlushIntentionSync);
        DrawStateText(*dc, type, rect, text, description, CENTRED | DT_NOPREFIX | DT_END_ELLIPSIS);
    }
    return Gdiplus::Ok;
}

void CSkin::DrawGlyph(Gdiplus::Graphics* graphics, ESkinBitmapType type, const CRect& rect) {
    const SkinCaptionBitmapInfo& info = m_ButtonCaptionBitmapInfo;
    if (m_ButtonCaptionBitmap == nullptr || info.nBitmapID == 0) {
        return;
    }
    const LONGLONG width = info.nGlyphWidth;
    const LONGLONG height = info.nGlyphHeight;
    CRect target = rect;
    if (!info.bStretch) {
        const LONGLONG left = Centred(rect.left, rect.right, width);
        const LONGLONG top = Centred(rect.top, rect.bottom, height);
        target = kadata::LimitedRect(left, top, left + width, top + height);
        if (IsPressed(type)) {
            target.IntersectRect(Offset(target), rect);
        }
    }
    const kadata::SkinModes modes = kadata::SkinModes::OfButtons(*graphics);
    DrawBitmapPart(graphics, m_ButtonCaptionBitmap.get(), kadata::LimitedRect(0, type * height, width, (type + 1) * height),
                   target);
}

void CSkin::DrawStateText(CDC& dc, ESkinBitmapType type, CRect rect, const CString& text, const LOGFONT& font, UINT format) {
    DWORD color = 0;
    DWORD disabled = 0;
    DWORD third = 0;
    DWORD highlight = 0;
    GetCaptionTextColors(color, disabled, third, highlight);
    const TextContext context(dc, font);
    const auto draw = [&](DWORD textColor, CRect where) {
        dc.SetTextColor(textColor);
        dc.DrawText(text, where, format);
    };
    if (IsDisabled(type)) {
        draw(highlight, Offset(rect));
        draw(disabled, rect);
    } else {
        draw(color, IsPressed(type) ? Offset(rect) : rect);
    }
}
