// Titles, properties, and being enabled.

#include <algorithm>

#include "../base/error_map.h"
#include "../base/text_length.h"
#include "../text/no_throw.h"
#include "activation.h"
#include "input.h"
#include "tree_walk.h"
#include "window_tree.h"

namespace kawin {
namespace {

auto FindProperty(Window& window, ATOM name) noexcept {
    return std::find_if(window.properties.begin(), window.properties.end(), [&](const auto& each) { return each.first == name; });
}

BOOL SetProperty(HWND handle, LPCWSTR name, HANDLE value) {
    const ATOM atom = IS_INTRESOURCE(name) ? AtomOfName(name) : AtomOf(name);
    if (atom == 0) {
        return Fail(ERROR_INVALID_PARAMETER);
    }
    const DesktopLock desktop;
    Window* const window = desktop.Find(handle);
    if (window == nullptr) {
        return FALSE;
    }
    const auto found = FindProperty(*window, atom);
    if (found != window->properties.end()) {
        found->second = value;
    } else {
        window->properties.emplace_back(atom, value);
    }
    return TRUE;
}

HANDLE Property(HWND handle, LPCWSTR name, bool remove) {
    const ATOM atom = AtomOfName(name);
    const DesktopLock desktop;
    Window* const window = desktop.Find(handle);
    if (window == nullptr) {
        return nullptr;
    }
    const auto found = FindProperty(*window, atom);
    if (found == window->properties.end()) {
        return nullptr;
    }
    const HANDLE value = found->second;
    if (remove) {
        window->properties.erase(found);
    }
    return value;
}

// The style before; nothing when the window does not exist or is in that state.
std::optional<bool> ChangeEnabled(HWND handle, bool enable, bool change) {
    const DesktopLock desktop;
    Window* const window = desktop.FindOwn(handle);
    if (window == nullptr) {
        return {};
    }
    const bool disabled = (window->style & WS_DISABLED) != 0;
    if (change) {
        window->style = enable ? window->style & ~WS_DISABLED : window->style | WS_DISABLED;
    }
    return disabled;
}

bool HasFocusIn(HWND window) noexcept {
    const HWND focus = GetFocus();
    return focus != nullptr && (focus == window || IsChild(window, focus) != FALSE);
}

BOOL Enable(HWND window, bool enable) {
    const std::optional<bool> disabled = ChangeEnabled(window, enable, false);
    if (!disabled) {
        return FALSE;
    }
    if (!enable) {
        SendMessageW(window, WM_CANCELMODE, 0, 0);
    }
    if (enable == *disabled) {
        ChangeEnabled(window, enable, true);
        if (!enable && HasFocusIn(window)) {
            MoveFocus(nullptr);
        }
        SendMessageW(window, WM_ENABLE, enable, 0);
    }
    return *disabled;
}

}  // namespace
}  // namespace kawin

BOOL SetPropW(HWND window, LPCWSTR name, HANDLE value) noexcept {
    return kawin::NoThrow(
        [&] { return name != nullptr ? kawin::SetProperty(window, name, value) : kawin::Fail(ERROR_INVALID_PARAMETER); });
}

HANDLE GetPropW(HWND window, LPCWSTR name) noexcept {
    return kawin::NoThrow([&] { return name != nullptr ? kawin::Property(window, name, false) : nullptr; });
}

HANDLE RemovePropW(HWND window, LPCWSTR name) noexcept {
    return kawin::NoThrow([&] { return name != nullptr ? kawin::Property(window, name, true) : nullptr; });
}

BOOL SetWindowTextW(HWND window, LPCWSTR text) noexcept {
    if (IsWindow(window) == FALSE) {
        return kawin::Fail(ERROR_INVALID_WINDOW_HANDLE);
    }
    return SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) >= 0;
}

int GetWindowTextW(HWND window, LPWSTR text, int capacity) noexcept {
    if (text == nullptr || capacity <= 0) {
        return 0;
    }
    *text = 0;
    return static_cast<int>(SendMessageW(window, WM_GETTEXT, static_cast<WPARAM>(capacity), reinterpret_cast<LPARAM>(text)));
}

int GetWindowTextLengthW(HWND window) noexcept {
    return static_cast<int>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0));
}

BOOL EnableWindow(HWND window, BOOL enable) noexcept {
    return kawin::NoThrow([&] { return kawin::Enable(window, enable != FALSE); });
}

BOOL IsWindowEnabled(HWND window) noexcept {
    const kawin::DesktopLock desktop;
    const kawin::Window* const found = desktop.Find(window);
    return found != nullptr && (found->style & WS_DISABLED) == 0;
}

BOOL IsWindowVisible(HWND window) noexcept {
    const kawin::DesktopLock desktop;
    const kawin::Window* const found = desktop.Find(window);
    return found != nullptr && kawin::IsShown(*found);
}

BOOL IsIconic(HWND window) noexcept {
    const kawin::DesktopLock desktop;
    const kawin::Window* const found = desktop.Find(window);
    return found != nullptr && (found->style & WS_MINIMIZE) != 0;
}

BOOL IsZoomed(HWND window) noexcept {
    const kawin::DesktopLock desktop;
    const kawin::Window* const found = desktop.Find(window);
    return found != nullptr && (found->style & WS_MAXIMIZE) != 0;
}
