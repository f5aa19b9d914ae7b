#include "metrics.h"

#include <algorithm>
#include <new>

#include "screen.h"

namespace kawin {
namespace {

struct Metric {
    int index;
    int value;
};

// Windows 10, 96 dots per inch; those that are not 0. In order of the index.
constexpr Metric kFixed[] = {
    {SM_CXVSCROLL, 17},
    {SM_CYHSCROLL, 17},
    {SM_CYCAPTION, 23},
    {SM_CXBORDER, 1},
    {SM_CYBORDER, 1},
    {SM_CXDLGFRAME, 3},
    {SM_CYDLGFRAME, 3},
    {SM_CYVTHUMB, 17},
    {SM_CXHTHUMB, 17},
    {SM_CXICON, 32},
    {SM_CYICON, 32},
    {SM_CXCURSOR, 32},
    {SM_CYCURSOR, 32},
    {SM_CYMENU, 20},
    {SM_MOUSEPRESENT, 1},
    {SM_CYVSCROLL, 17},
    {SM_CXHSCROLL, 17},
    {SM_CXMIN, 136},
    {SM_CYMIN, 39},
    {SM_CXSIZE, 36},
    {SM_CYSIZE, 22},
    {SM_CXFRAME, 4},
    {SM_CYFRAME, 4},
    {SM_CXMINTRACK, 136},
    {SM_CYMINTRACK, 39},
    {SM_CXDOUBLECLK, 4},
    {SM_CYDOUBLECLK, 4},
    {SM_CXICONSPACING, 75},
    {SM_CYICONSPACING, 75},
    {SM_CMOUSEBUTTONS, 3},
    {SM_CXEDGE, 2},
    {SM_CYEDGE, 2},
    {SM_CXMINSPACING, 160},
    {SM_CYMINSPACING, 28},
    {SM_CXSMICON, 16},
    {SM_CYSMICON, 16},
    {SM_CYSMCAPTION, 23},
    {SM_CXSMSIZE, 22},
    {SM_CYSMSIZE, 22},
    {SM_CXMENUSIZE, 19},
    {SM_CYMENUSIZE, 19},
    {SM_ARRANGE, 8},
    {SM_CXMINIMIZED, 160},
    {SM_CYMINIMIZED, 28},
    {SM_NETWORK, 3},
    {SM_CXDRAG, 4},
    {SM_CYDRAG, 4},
    {SM_CXMENUCHECK, 15},
    {SM_CYMENUCHECK, 15},
    {SM_MOUSEWHEELPRESENT, 1},
    {SM_SAMEDISPLAYFORMAT, 1},
    {SM_CXFOCUSBORDER, 1},
    {SM_CYFOCUSBORDER, 1},
    {SM_MOUSEHORIZONTALWHEELPRESENT, 1},
    {SM_CXPADDEDBORDER, 4},
};
static_assert(std::ranges::is_sorted(kFixed, {}, &Metric::index));

int FixedMetric(int index) noexcept {
    const Metric* const found = std::ranges::lower_bound(kFixed, index, {}, &Metric::index);
    return found != std::end(kFixed) && found->index == index ? found->value : 0;
}

constexpr int kDraggedFrame = 4 + 4;  // SM_CXFRAME and SM_CXPADDEDBORDER

SIZE SizeOf(const RECT& rect) noexcept {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

RECT Around(const std::vector<Monitor>& monitors) noexcept {
    RECT all = monitors.front().bounds;
    for (const auto& [bounds, work] : monitors) {
        all = {std::min(all.left, bounds.left), std::min(all.top, bounds.top), std::max(all.right, bounds.right),
               std::max(all.bottom, bounds.bottom)};
    }
    return all;
}

// Of those that the screen decides; 0 for others.
int ScreenMetric(int index) {
    const std::vector<Monitor> monitors = CurrentMonitors();
    const RECT all = Around(monitors);
    const SIZE work = SizeOf(monitors.front().work);
    switch (index) {
        case SM_CXSCREEN:
            return SizeOf(monitors.front().bounds).cx;
        case SM_CYSCREEN:
            return SizeOf(monitors.front().bounds).cy;
        case SM_CXFULLSCREEN:
            return work.cx;
        case SM_CYFULLSCREEN:
            return work.cy - FixedMetric(SM_CYCAPTION);
        case SM_CXMAXIMIZED:
            return work.cx + 2 * kDraggedFrame;
        case SM_CYMAXIMIZED:
            return work.cy + 2 * kDraggedFrame;
        case SM_CXMAXTRACK:
            return SizeOf(all).cx + 2 * (kDraggedFrame + FixedMetric(SM_CXEDGE));
        case SM_CYMAXTRACK:
            return SizeOf(all).cy + 2 * (kDraggedFrame + FixedMetric(SM_CYEDGE));
        case SM_XVIRTUALSCREEN:
            return all.left;
        case SM_YVIRTUALSCREEN:
            return all.top;
        case SM_CXVIRTUALSCREEN:
            return SizeOf(all).cx;
        case SM_CYVIRTUALSCREEN:
            return SizeOf(all).cy;
        case SM_CMONITORS:
            return static_cast<int>(monitors.size());
        default:
            return 0;
    }
}

bool IsOfScreen(int index) noexcept {
    constexpr int kOfScreen[] = {SM_CXSCREEN,        SM_CYSCREEN,        SM_CXFULLSCREEN, SM_CYFULLSCREEN,   SM_CXMAXTRACK,
                                 SM_CYMAXTRACK,      SM_CXMAXIMIZED,     SM_CYMAXIMIZED,  SM_XVIRTUALSCREEN, SM_YVIRTUALSCREEN,
                                 SM_CXVIRTUALSCREEN, SM_CYVIRTUALSCREEN, SM_CMONITORS};
    return std::ranges::find(kOfScreen, index) != std::end(kOfScreen);
}

}  // namespace
}  // namespace kawin

int GetSystemMetrics(int index) noexcept try {
    return kawin::IsOfScreen(index) ? kawin::ScreenMetric(index) : kawin::FixedMetric(index);
} catch (const std::bad_alloc&) {  // 0 is what the function has for a failure
    return 0;
}

UINT GetDpiForSystem() noexcept {
    return 96;
}

UINT GetDoubleClickTime() noexcept {
    return 500;
}

UINT GetCaretBlinkTime() noexcept {
    return 530;
}
