#include "frame_drawing.h"

#include <algorithm>

#include "../base/error_map.h"
#include "../gdi/brushes.h"
#include "../gdi/contexts.h"
#include "../gdi/drawing_context.h"
#include "../gdi/shapes.h"
#include "caption_boxes.h"
#include "colors.h"
#include "control_marks.h"
#include "rectangles.h"

namespace kawin {
namespace {

constexpr int kNoColor = -1;

// The colours of one ring of an edge: the left and upper sides, the right and lower ones.
struct Ring {
    int light = kNoColor;
    int dark = kNoColor;
};

Ring OuterRing(UINT edge, UINT flags) noexcept {
    const bool raised = (edge & BDR_RAISEDOUTER) != 0;
    if ((edge & BDR_OUTER) == 0) {
        return {};
    }
    if ((flags & BF_MONO) != 0) {
        return {COLOR_WINDOWFRAME, COLOR_WINDOWFRAME};
    }
    if ((flags & BF_FLAT) != 0) {
        return {COLOR_BTNSHADOW, COLOR_BTNSHADOW};
    }
    if ((flags & BF_SOFT) != 0) {
        return raised ? Ring{COLOR_BTNHIGHLIGHT, COLOR_3DDKSHADOW} : Ring{COLOR_3DDKSHADOW, COLOR_BTNHIGHLIGHT};
    }
    return raised ? Ring{COLOR_3DLIGHT, COLOR_3DDKSHADOW} : Ring{COLOR_BTNSHADOW, COLOR_BTNHIGHLIGHT};
}

Ring InnerRing(UINT edge, UINT flags) noexcept {
    const bool raised = (edge & BDR_RAISEDINNER) != 0;
    if ((edge & BDR_INNER) == 0) {
        return {};
    }
    if ((flags & BF_MONO) != 0) {
        return {COLOR_WINDOW, COLOR_WINDOW};
    }
    if ((flags & BF_FLAT) != 0) {
        return {COLOR_BTNFACE, COLOR_BTNFACE};
    }
    if ((flags & BF_SOFT) != 0) {
        return raised ? Ring{COLOR_3DLIGHT, COLOR_BTNSHADOW} : Ring{COLOR_BTNSHADOW, COLOR_3DLIGHT};
    }
    return raised ? Ring{COLOR_BTNHIGHLIGHT, COLOR_BTNSHADOW} : Ring{COLOR_3DDKSHADOW, COLOR_3DLIGHT};
}

void Fill(HDC context, const RECT& rect, int color) noexcept {
    FillRect(context, &rect, GetSysColorBrush(color));
}

// Draws the sides that are wanted, the right and lower ones over the others, and takes them off the rectangle.
void DrawRing(HDC context, RECT& rect, const Ring& ring, UINT sides) noexcept {
    if (ring.light == kNoColor) {
        return;
    }
    const RECT all = rect;
    if ((sides & BF_LEFT) != 0) {
        Fill(context, {all.left, all.top, all.left + 1, all.bottom}, ring.light);
        ++rect.left;
    }
    if ((sides & BF_TOP) != 0) {
        Fill(context, {all.left, all.top, all.right, all.top + 1}, ring.light);
        ++rect.top;
    }
    if ((sides & BF_RIGHT) != 0) {
        Fill(context, {all.right - 1, all.top, all.right, all.bottom}, ring.dark);
        --rect.right;
    }
    if ((sides & BF_BOTTOM) != 0) {
        Fill(context, {all.left, all.bottom - 1, all.right, all.bottom}, ring.dark);
        --rect.bottom;
    }
}

// False with the last error set.
bool CanDraw(HDC context, const RECT* rect) noexcept {
    if (rect == nullptr) {
        return Fail(ERROR_INVALID_PARAMETER);
    }
    return FindGdi<DrawingContext>(context) != nullptr || Fail(ERROR_INVALID_HANDLE);
}

CaptionBox CaptionBoxOf(UINT state) noexcept {
    switch (state & 0xFF) {
        case DFCS_CAPTIONMIN:
            return CaptionBox::Minimise;
        case DFCS_CAPTIONMAX:
            return CaptionBox::Maximise;
        case DFCS_CAPTIONRESTORE:
            return CaptionBox::Restore;
        case DFCS_CAPTIONHELP:
            return CaptionBox::Help;
        default:
            return CaptionBox::Close;
    }
}

BOOL DrawCaptionControl(HDC context, const RECT& rect, UINT state) noexcept {
    const BoxState look = (state & DFCS_INACTIVE) != 0 ? BoxState::Disabled
                          : (state & DFCS_PUSHED) != 0 ? BoxState::Pressed
                          : (state & DFCS_HOT) != 0    ? BoxState::Hot
                                                       : BoxState::Normal;
    DrawCaptionBox(context, rect, CaptionBoxOf(state), look, GetSysColor(COLOR_BTNFACE));
    return TRUE;
}

BOOL DrawPushButton(HDC context, RECT& rect, UINT state) noexcept {
    const bool down = (state & (DFCS_PUSHED | DFCS_CHECKED)) != 0;
    UINT flags = BF_RECT | BF_SOFT | (state & (DFCS_FLAT | DFCS_MONO));
    flags |= (state & DFCS_TRANSPARENT) == 0 ? BF_MIDDLE : 0;
    RECT inside = rect;
    const BOOL drawn = DrawEdge(context, &inside, down ? EDGE_SUNKEN : EDGE_RAISED, flags | BF_ADJUST);
    if ((state & DFCS_ADJUSTRECT) != 0) {
        rect = inside;
    }
    return drawn;
}

BOOL DrawButtonControl(HDC context, RECT& rect, UINT state) noexcept {
    if ((state & DFCS_BUTTONPUSH) != 0) {
        return DrawPushButton(context, rect, state);
    }
    const bool radio = (state & DFCS_BUTTONRADIO) != 0;
    const bool checked = (state & DFCS_CHECKED) != 0;
    Mark mark;
    mark.shape = radio ? MarkShape::Radio : MarkShape::Check;
    mark.fill = !checked ? MarkFill::Empty : (state & DFCS_BUTTON3STATE) != 0 ? MarkFill::Mixed : MarkFill::Checked;
    mark.enabled = (state & DFCS_INACTIVE) == 0;
    mark.pressed = (state & DFCS_PUSHED) != 0;
    mark.hot = (state & DFCS_HOT) != 0;
    if ((state & DFCS_TRANSPARENT) == 0) {
        Fill(context, rect, COLOR_BTNFACE);
    }
    DrawMark(context, rect, mark);
    return TRUE;
}

// Every second pixel of a rectangle's rim is inverted, as on a chessboard that begins at the context's corner.
void InvertDots(DrawingContext& context, const RECT& rect) noexcept {
    const POINT corner = context.ToSurface(POINT{rect.left, rect.top});
    const RECT outside = {corner.x, corner.y, corner.x + rect.right - rect.left, corner.y + rect.bottom - rect.top};
    const POINT board = {context.origin.x, context.origin.y};
    const Pixel every_bit = context.surface->IsMono() ? 1 : 0x00FFFFFF;
    const auto invert = [&](const RECT& part) {
        for (int y = part.top; y < part.bottom; ++y) {
            Pixel* const row = context.surface->Row(y);
            for (int x = part.left; x < part.right; ++x) {
                row[x] ^= ((x - board.x + y - board.y) & 1) != 0 ? every_bit : 0;
            }
        }
    };
    const RegionShape drawable = context.Drawable();
    const LONG below_top = std::min(outside.top + 1, outside.bottom);
    const LONG above_bottom = std::max(outside.bottom - 1, below_top);
    const LONG right_of_left = std::min(outside.left + 1, outside.right);
    drawable.ForEachIn({outside.left, outside.top, outside.right, below_top}, invert);
    drawable.ForEachIn({outside.left, above_bottom, outside.right, outside.bottom}, invert);
    drawable.ForEachIn({outside.left, below_top, right_of_left, above_bottom}, invert);
    drawable.ForEachIn({std::max(outside.right - 1, right_of_left), below_top, outside.right, above_bottom}, invert);
    context.surface->Touch(outside);
}

}  // namespace
}  // namespace kawin

BOOL DrawEdge(HDC context, LPRECT rect, UINT edge, UINT flags) noexcept {
    if (!kawin::CanDraw(context, rect)) {
        return FALSE;
    }
    if ((edge & BDR_OUTER) == BDR_OUTER || (edge & BDR_INNER) == BDR_INNER) {
        return FALSE;
    }
    RECT inside = *rect;
    kawin::DrawRing(context, inside, kawin::OuterRing(edge, flags), flags);
    kawin::DrawRing(context, inside, kawin::InnerRing(edge, flags), flags);
    if ((flags & BF_MIDDLE) != 0) {
        kawin::Fill(context, inside, (flags & BF_MONO) != 0 ? COLOR_WINDOW : COLOR_BTNFACE);
    }
    if ((flags & BF_ADJUST) != 0) {
        *rect = inside;
    }
    return TRUE;
}

BOOL DrawFrameControl(HDC context, LPRECT rect, UINT kind, UINT state) noexcept {
    if (!kawin::CanDraw(context, rect)) {
        return FALSE;
    }
    switch (kind) {
        case DFC_CAPTION:
            return kawin::DrawCaptionControl(context, *rect, state);
        case DFC_BUTTON:
            return kawin::DrawButtonControl(context, *rect, state);
        default:
            return kawin::Fail(ERROR_INVALID_PARAMETER);
    }
}

BOOL DrawFocusRect(HDC context, const RECT* rect) noexcept {
    if (!kawin::CanDraw(context, rect)) {
        return FALSE;
    }
    const std::shared_ptr<kawin::DrawingContext> target = kawin::FindGdi<kawin::DrawingContext>(context);
    if (target->surface != nullptr && !IsRectEmpty(rect)) {
        kawin::InvertDots(*target, *rect);
    }
    return TRUE;
}
