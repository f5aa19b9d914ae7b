#pragma once

// Check boxes and radio buttons, at any size.

#include "../gdi/gdi_types.h"

namespace kawin {

enum class MarkShape { Check, Radio };
enum class MarkFill { Empty, Checked, Mixed };
struct Mark {
    MarkShape shape = MarkShape::Check;
    MarkFill fill = MarkFill::Empty;
    bool enabled = true;
    bool pressed = false;
    bool hot = false;
};

// In the largest square in the middle of `rect`; what is around it stays.
void DrawMark(HDC context, const RECT& rect, const Mark& mark) noexcept;

}  // namespace kawin
