#pragma once

// The boxes of a caption.

#include "../gdi/gdi_types.h"

namespace kawin {

enum class CaptionBox { Close, Minimise, Maximise, Restore, Help };
enum class BoxState { Normal, Hot, Pressed, Disabled };

// Fills `box`; `back` is what it stands on.
void DrawCaptionBox(HDC context, const RECT& box, CaptionBox kind, BoxState state, COLORREF back) noexcept;

}  // namespace kawin
