// The values that a window was made with, and its extra bytes.

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "extra_bytes.h"
#include "tree_walk.h"
#include "window_tree.h"

namespace kawin {
namespace {

// Reads one of GWL_*, GWLP_* or extra bytes; where `replacement` is not null it is changed. With the lock held.
LONG_PTR WindowValue(Window& window, int index, std::size_t width, const LONG_PTR* replacement) noexcept {
    const auto exchange = [&](auto& value) {
        using Value = std::remove_reference_t<decltype(value)>;
        const auto old = (LONG_PTR)value;
        if (replacement != nullptr) {
            value = (Value)*replacement;
        }
        return old;
    };
    switch (index) {
        case GWL_STYLE:
            return static_cast<LONG>(window.style);
        case GWL_EXSTYLE:
            return static_cast<LONG>(window.extended_style);
        case GWLP_USERDATA:
            return exchange(window.user_data);
        case GWLP_ID:
            return exchange(window.id);
        case GWLP_HINSTANCE:
            return exchange(window.instance);
        case GWLP_WNDPROC:
            return exchange(window.procedure);
        case GWLP_HWNDPARENT:
            if (window.IsTopLevel()) {
                return exchange(window.owner);
            }
            return reinterpret_cast<LONG_PTR>(window.parent != nullptr ? window.parent->handle : nullptr);
        default:
            return static_cast<LONG_PTR>(ExtraValue(window.extra, index, width, replacement));
    }
}

bool IsPointer(int index) noexcept {
    return index == GWLP_WNDPROC || index == GWLP_HINSTANCE || index == GWLP_HWNDPARENT;
}

// The style as the system keeps it, whatever was asked for.
DWORD Settled(int index, DWORD before, DWORD wanted, const Window& window) noexcept {
    if (index == GWL_EXSTYLE) {
        return (wanted & ~WS_EX_TOPMOST) | (before & WS_EX_TOPMOST);
    }
    // WS_VISIBLE is let through, as on Windows; nothing is drawn by it.
    return window.IsTopLevel() && (wanted & WS_CHILD) == 0 ? wanted | WS_CLIPSIBLINGS : wanted;
}

LONG_PTR SetStyle(HWND handle, int index, DWORD wanted) {
    STYLESTRUCT styles = {};
    {
        const DesktopLock desktop;
        const Window* const window = desktop.FindOwn(handle);
        if (window == nullptr) {
            return 0;
        }
        styles.styleOld = index == GWL_STYLE ? window->style : window->extended_style;
        styles.styleNew = Settled(index, styles.styleOld, wanted, *window);
    }
    const auto which = static_cast<WPARAM>(static_cast<LONG_PTR>(index));
    SendMessageW(handle, WM_STYLECHANGING, which, reinterpret_cast<LPARAM>(&styles));
    {
        const DesktopLock desktop;
        Window* const window = desktop.Look(handle);
        if (window == nullptr) {
            return static_cast<LONG>(styles.styleOld);
        }
        (index == GWL_STYLE ? window->style : window->extended_style) = styles.styleNew;
    }
    SendMessageW(handle, WM_STYLECHANGED, which, reinterpret_cast<LPARAM>(&styles));
    return static_cast<LONG>(styles.styleOld);
}

LONG_PTR Get(HWND handle, int index, std::size_t width) noexcept {
    const DesktopLock desktop;
    Window* const window = desktop.Find(handle);
    if (window == nullptr) {
        return 0;
    }
    if (width < sizeof(LONG_PTR) && IsPointer(index)) {
        return Fail(ERROR_INVALID_INDEX);
    }
    return WindowValue(*window, index, width, nullptr);
}

LONG_PTR Set(HWND handle, int index, LONG_PTR value, std::size_t width) {
    if (index == GWL_STYLE || index == GWL_EXSTYLE) {
        return SetStyle(handle, index, static_cast<DWORD>(value));
    }
    const DesktopLock desktop;
    Window* const window = desktop.FindOwn(handle);
    if (window == nullptr) {
        return 0;
    }
    if (width < sizeof(LONG_PTR) && IsPointer(index)) {
        return Fail(ERROR_INVALID_INDEX);
    }
    return WindowValue(*window, index, width, &value);
}

}  // namespace
}  // namespace kawin

LONG_PTR GetWindowLongPtrW(HWND window, int index) noexcept {
    return kawin::Get(window, index, sizeof(LONG_PTR));
}

LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value) noexcept {
    if (index == GWLP_HWNDPARENT && (GetWindowLongW(window, GWL_STYLE) & static_cast<LONG>(WS_CHILD)) != 0) {
        return reinterpret_cast<LONG_PTR>(SetParent(window, reinterpret_cast<HWND>(value)));
    }
    return kawin::NoThrow([&] { return kawin::Set(window, index, value, sizeof(LONG_PTR)); });
}

LONG GetWindowLongW(HWND window, int index) noexcept {
    return static_cast<LONG>(kawin::Get(window, index, sizeof(LONG)));
}

LONG SetWindowLongW(HWND window, int index, LONG value) noexcept {
    return static_cast<LONG>(kawin::NoThrow([&] { return kawin::Set(window, index, value, sizeof(LONG)); }));
}
