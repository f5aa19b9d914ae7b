#include <algorithm>

#include "default_steps.h"
#include "window_position.h"

namespace kawin {

void LimitPosition(HWND window, WINDOWPOS& position) {
    const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
    const bool sizes = (style & WS_THICKFRAME) != 0 || (style & (WS_POPUP | WS_CHILD)) == 0;
    if ((position.flags & SWP_NOSIZE) != 0 || !sizes || (style & WS_MINIMIZE) != 0) {
        return;
    }
    const MINMAXINFO limits = AskMinMax(window);
    position.cx = std::min<int>(position.cx, limits.ptMaxTrackSize.x);
    position.cy = std::min<int>(position.cy, limits.ptMaxTrackSize.y);
    position.cx = std::max<int>(position.cx, limits.ptMinTrackSize.x);
    position.cy = std::max<int>(position.cy, limits.ptMinTrackSize.y);
}

}  // namespace kawin
