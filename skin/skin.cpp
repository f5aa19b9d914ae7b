#include <kadata/skin.h>

#include <utility>

#include "nine_slice.h"
#include "skin_bitmap_loader.h"

namespace {

constexpr DWORD SYSTEM_COLOR = 0xFFFFFFFF;

DWORD ColorOr(DWORD color, int systemColor) {
    return color == SYSTEM_COLOR ? GetSysColor(systemColor) : color;
}

BOOL LoadInto(std::unique_ptr<Gdiplus::Bitmap>& slot, SkinBitmapInfo& slotInfo, const SkinBitmapInfo& info) {
    std::unique_ptr<Gdiplus::Bitmap> bitmap = kadata::LoadSkinBitmap(info.nBitmapID);
    if (bitmap == nullptr) {
        return FALSE;
    }
    slot = std::move(bitmap);
    slotInfo = info;
    return TRUE;
}

}  // namespace

IMPLEMENT_DYNAMIC(CSkin, CObject)

CSkin::CSkin() {
    CSkin::SetCaptionTextColors(SYSTEM_COLOR, SYSTEM_COLOR, SYSTEM_COLOR, SYSTEM_COLOR);
}

CSkin::~CSkin() {
    CSkin::Release();
}

void CSkin::Release() {
    m_ButtonBitmap.reset();
    m_ButtonCaptionBitmap.reset();
    m_WindowBitmap.reset();
    m_WindowBackgroundBitmap.reset();
    m_ButtonBitmapInfo = {};
    m_ButtonCaptionBitmapInfo = {};
    m_WindowBitmapInfo = {};
    m_WindowBackgroundBitmapInfo = {};
}

const SkinBitmapInfo& CSkin::GetButtonBitmapInfo() const {
    return m_ButtonBitmapInfo;
}

BOOL CSkin::SetButtonBitmapInfo(SkinBitmapInfo& bitmapInfo, SkinCaptionBitmapInfo& captionInfo) {
    return LoadInto(m_ButtonBitmap, m_ButtonBitmapInfo, bitmapInfo) && SetButtonCaptionBitmapInfo(captionInfo);
}

const SkinCaptionBitmapInfo& CSkin::GetButtonCaptionBitmapInfo() const {
    return m_ButtonCaptionBitmapInfo;
}

BOOL CSkin::SetButtonCaptionBitmapInfo(SkinCaptionBitmapInfo& captionInfo) {
    if (captionInfo.nBitmapID != 0) {
        std::unique_ptr<Gdiplus::Bitmap> bitmap = kadata::LoadSkinBitmap(captionInfo.nBitmapID);
        if (bitmap == nullptr) {
            return FALSE;
        }
        m_ButtonCaptionBitmap = kadata::WithColorKey(std::move(bitmap), captionInfo.crTransparent);
    }
    m_ButtonCaptionBitmapInfo = captionInfo;
    return TRUE;
}

const SkinBitmapInfo& CSkin::GetWindowBitmapInfo() const {
    return m_WindowBitmapInfo;
}

BOOL CSkin::SetWindowBitmapInfo(SkinBitmapInfo& bitmapInfo) {
    return LoadInto(m_WindowBitmap, m_WindowBitmapInfo, bitmapInfo);
}

const SkinBitmapInfo& CSkin::GetWindowBackgroundBitmapInfo() const {
    return m_WindowBackgroundBitmapInfo;
}

BOOL CSkin::SetWindowBackgroundBitmapInfo(SkinBitmapInfo& bitmapInfo) {
    return LoadInto(m_WindowBackgroundBitmap, m_WindowBackgroundBitmapInfo, bitmapInfo);
}

BOOL CSkin::HasButtonBitmap() {
    return m_ButtonBitmap != nullptr;
}

BOOL CSkin::HasButtonCaptionBitmap() {
    return m_ButtonCaptionBitmap != nullptr;
}

BOOL CSkin::HasWindowBitmap() {
    return m_WindowBitmap != nullptr;
}

BOOL CSkin::HasWindowBackgroundBitmap() {
    return m_WindowBackgroundBitmap != nullptr;
}

void CSkin::SetCaptionTextColors(DWORD text, DWORD disabledText, DWORD third, DWORD disabledHighlight) {
    m_CaptionTextColor = ColorOr(text, COLOR_BTNTEXT);
    m_DisabledTextColor = ColorOr(disabledText, COLOR_BTNSHADOW);
    m_ThirdTextColor = ColorOr(third, COLOR_BTNSHADOW);
    m_DisabledHighlightColor = ColorOr(disabledHighlight, COLOR_BTNHIGHLIGHT);
}

void CSkin::GetCaptionTextColors(DWORD& text, DWORD& disabledText, DWORD& third, DWORD& disabledHighlight) {
    text = m_CaptionTextColor;
    disabledText = m_DisabledTextColor;
    third = m_ThirdTextColor;
    disabledHighlight = m_DisabledHighlightColor;
}

Gdiplus::Status CSkin::DrawBitmapPart(Gdiplus::Graphics* graphics, Gdiplus::Bitmap* bitmap, CRect source, CRect target) {
    using Gdiplus::REAL;
    const auto extent = [](LONG begin, LONG end) { return static_cast<REAL>(LONGLONG{end} - begin); };
    const Gdiplus::RectF to(static_cast<REAL>(target.left), static_cast<REAL>(target.top), extent(target.left, target.right),
                            extent(target.top, target.bottom));
    if (graphics == nullptr || bitmap == nullptr || target.left == target.right || target.top == target.bottom) {
        return Gdiplus::InvalidParameter;
    }
    if (to.Width < 0 || to.Height < 0) {  // would be drawn mirrored
        return Gdiplus::Ok;
    }
    return graphics->DrawImage(bitmap, to, static_cast<REAL>(source.left), static_cast<REAL>(source.top),
                               extent(source.left, source.right), extent(source.top, source.bottom), Gdiplus::UnitPixel);
}

void CSkin::DrawNineSlice(Gdiplus::Graphics* graphics, Gdiplus::Bitmap* bitmap, const kadata::NineSlice& source,
                          const CRect& target) {
    for (const kadata::SlicePiece& piece : kadata::CutNineSlice(source, target)) {
        DrawBitmapPart(graphics, bitmap, piece.source, piece.target);
    }
}
