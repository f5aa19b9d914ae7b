// Window frames and backgrounds.

#include <kadata/skin.h>

#include <algorithm>

#include "nine_slice.h"
#include "skin_modes.h"

namespace {

// The cells of a window bitmap, from top to bottom: outer and inner part of the active frame, then of the inactive one.
constexpr UINT OUTER_CELL = 0;
constexpr UINT INNER_CELL = 1;
constexpr UINT CELLS_PER_STATE = 2;

kadata::NineSlice FrameCell(const SkinBitmapInfo& info, bool inactive, UINT part) {
    const LONGLONG padding = info.nPadding;
    kadata::NineSlice cell;
    cell.left = padding;
    cell.top = LONGLONG{(inactive ? CELLS_PER_STATE : 0) + part} * info.nCellHeight + padding;
    cell.width = info.nCellWidth - 2 * padding;
    cell.height = info.nCellHeight - 2 * padding;
    cell.corner = part == OUTER_CELL ? info.nCorner : info.nInnerCorner;
    return cell;
}

// By how much the client area lies inside of the inner frame, but at least one pixel of the frame is left.
CRect InnerTrim(const CRect& inner, const CRect& client, LONGLONG corner) {
    const auto trim = [&](LONGLONG distance) {
        return static_cast<int>(std::clamp<LONGLONG>(distance, 0, std::max<LONGLONG>(corner - 1, 0)));
    };
    return {trim(LONGLONG{client.left} - inner.left), trim(LONGLONG{client.top} - inner.top),
            trim(LONGLONG{inner.right} - client.right), trim(LONGLONG{inner.bottom} - client.bottom)};
}

kadata::ESlicePiece PieceOf(int part) {
    switch (part) {
        case CSkin::FrameCaption:
        case CSkin::FrameSmallCaption:
            return kadata::TOP_EDGE;
        case CSkin::FrameLeft:
        case CSkin::FrameSmallLeft:
            return kadata::LEFT_EDGE;
        case CSkin::FrameRight:
        case CSkin::FrameSmallRight:
            return kadata::RIGHT_EDGE;
        case CSkin::FrameBottom:
        case CSkin::FrameSmallBottom:
            return kadata::BOTTOM_EDGE;
        default:
            return kadata::SLICE_PIECES;
    }
}

}  // namespace

Gdiplus::Status CSkin::DrawWindowBitmap(Gdiplus::Graphics* graphics, int part, int state, CRect rect) {
    const kadata::ESlicePiece piece = PieceOf(part);
    if (graphics == nullptr || m_WindowBitmap == nullptr || piece == kadata::SLICE_PIECES || rect.IsRectEmpty()) {
        return Gdiplus::InvalidParameter;
    }
    const kadata::NineSlice cell = FrameCell(m_WindowBitmapInfo, state == FrameInactive, OUTER_CELL);
    const kadata::SkinModes modes = kadata::SkinModes::OfFrames(*graphics);
    DrawBitmapPart(graphics, m_WindowBitmap.get(), kadata::CutNineSlice(cell, rect)[piece].source, rect);
    return Gdiplus::Ok;
}

Gdiplus::Status CSkin::DrawWindowBitmap(Gdiplus::Graphics* graphics, ESkinBitmapType type, CRect outer, CRect inner,
                                        CRect client) {
    if (graphics == nullptr || m_WindowBitmap == nullptr) {
        return Gdiplus::InvalidParameter;
    }
    const bool inactive = type != SkinActive;
    const kadata::SkinModes modes = kadata::SkinModes::OfFrames(*graphics);
    if (!outer.IsRectEmpty()) {
        DrawNineSlice(graphics, m_WindowBitmap.get(), FrameCell(m_WindowBitmapInfo, inactive, OUTER_CELL), outer);
    }
    if (!inner.IsRectEmpty()) {
        kadata::NineSlice cell = FrameCell(m_WindowBitmapInfo, inactive, INNER_CELL);
        cell.trim = InnerTrim(inner, client, cell.corner);
        DrawNineSlice(graphics, m_WindowBitmap.get(), cell, inner);
    }
    return Gdiplus::Ok;
}

Gdiplus::Status CSkin::DrawWindowBackgroundBitmap(Gdiplus::Graphics* graphics, CRect rect) {
    if (graphics == nullptr || m_WindowBackgroundBitmap == nullptr || rect.IsRectEmpty()) {
        return Gdiplus::InvalidParameter;
    }
    // Without the last column and row: no filter reads over the end.
    const CRect source = kadata::LimitedRect(0, 0, LONGLONG{m_WindowBackgroundBitmapInfo.nCellWidth} - 1,
                                             LONGLONG{m_WindowBackgroundBitmapInfo.nCellHeight} - 1);
    const kadata::SkinModes modes = kadata::SkinModes::OfBackgrounds(*graphics);
    return DrawBitmapPart(graphics, m_WindowBackgroundBitmap.get(), source, rect);
}
