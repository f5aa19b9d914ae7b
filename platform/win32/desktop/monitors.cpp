#include "monitors.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "desktop_state.h"
#include "screen.h"
#include "window_tree.h"

namespace kawin {
namespace {

// A monitor's handle is its place in the list, told apart from small numbers that somebody took for a handle.
constexpr ULONG_PTR kFirstHandle = 0x10001;

HMONITOR HandleOf(std::size_t index) noexcept {
    return reinterpret_cast<HMONITOR>(kFirstHandle + 2 * index);
}

std::int64_t CommonArea(const RECT& a, const RECT& b) noexcept {
    const std::int64_t width = std::int64_t{std::min(a.right, b.right)} - std::max(a.left, b.left);
    const std::int64_t height = std::int64_t{std::min(a.bottom, b.bottom)} - std::max(a.top, b.top);
    return width > 0 && height > 0 ? width * height : 0;
}

std::int64_t Gap(LONG low, LONG high, LONG other_low, LONG other_high) noexcept {
    return std::max<std::int64_t>({0, std::int64_t{other_low} - high, std::int64_t{low} - other_high});
}

// The gaps are below 2^32, and every screen below 2^16: no overflow that matters.
double Distance(const RECT& a, const RECT& b) noexcept {
    const auto x = static_cast<double>(Gap(a.left, a.right, b.left, b.right));
    const auto y = static_cast<double>(Gap(a.top, a.bottom, b.top, b.bottom));
    return x * x + y * y;
}

HMONITOR Nearest(const std::vector<Monitor>& monitors, const RECT& area) noexcept {
    const auto nearest =
        std::ranges::min_element(monitors, {}, [&](const Monitor& monitor) { return Distance(monitor.bounds, area); });
    return HandleOf(static_cast<std::size_t>(nearest - monitors.begin()));
}

HMONITOR Find(const RECT& area, DWORD otherwise) {
    const std::vector<Monitor> monitors = CurrentMonitors();
    const auto largest =
        std::ranges::max_element(monitors, {}, [&](const Monitor& monitor) { return CommonArea(monitor.bounds, area); });
    if (CommonArea(largest->bounds, area) > 0) {
        return HandleOf(static_cast<std::size_t>(largest - monitors.begin()));
    }
    if (otherwise == MONITOR_DEFAULTTONEAREST) {
        return Nearest(monitors, area);
    }
    return otherwise == MONITOR_DEFAULTTOPRIMARY ? HandleOf(0) : nullptr;
}

// Where a minimised top-level window will be; false for any other window.
bool RestoredRect(HWND handle, RECT& rect) {
    const DesktopLock desktop;
    const Window* const window = desktop.Look(handle);
    if (window == nullptr || (window->style & WS_MINIMIZE) == 0 || !window->IsTopLevel()) {
        return false;
    }
    rect = window->normal;
    return true;
}

}  // namespace
}  // namespace kawin

HMONITOR MonitorFromRect(LPCRECT area, DWORD otherwise) noexcept {
    return kawin::NoThrow([&]() -> HMONITOR {
        // A rectangle without pixels is the pixel at its corner.
        constexpr LONG last = std::numeric_limits<LONG>::max() - 1;
        const bool is_empty = area->left >= area->right || area->top >= area->bottom;
        const POINT corner = {std::min(area->left, last), std::min(area->top, last)};
        return kawin::Find(is_empty ? RECT{corner.x, corner.y, corner.x + 1, corner.y + 1} : *area, otherwise);
    });
}

HMONITOR MonitorFromPoint(POINT point, DWORD otherwise) noexcept {
    const RECT pixel = {point.x, point.y, point.x, point.y};
    return MonitorFromRect(&pixel, otherwise);
}

HMONITOR MonitorFromWindow(HWND window, DWORD otherwise) noexcept {
    RECT rect = {};
    if (!kawin::RestoredRect(window, rect) && !GetWindowRect(window, &rect)) {
        return otherwise == MONITOR_DEFAULTTONULL ? nullptr : kawin::HandleOf(0);
    }
    return MonitorFromRect(&rect, otherwise);
}

BOOL GetMonitorInfoW(HMONITOR monitor, LPMONITORINFO info) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        if (info == nullptr || info->cbSize != sizeof(MONITORINFO)) {
            return kawin::Fail(ERROR_INVALID_PARAMETER);
        }
        const std::vector<kawin::Monitor> monitors = kawin::CurrentMonitors();
        for (std::size_t index = 0; index < monitors.size(); ++index) {
            if (kawin::HandleOf(index) == monitor) {
                info->rcMonitor = monitors[index].bounds;
                info->rcWork = monitors[index].work;
                info->dwFlags = index == 0 ? MONITORINFOF_PRIMARY : 0;
                return TRUE;
            }
        }
        return kawin::Fail(ERROR_INVALID_MONITOR_HANDLE);
    });
}
