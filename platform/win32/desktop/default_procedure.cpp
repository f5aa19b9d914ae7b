#include "default_procedure.h"

#include <algorithm>
#include <string_view>

#include "../base/error_map.h"
#include "../base/text_length.h"
#include "../gdi/brushes.h"
#include "../gdi/contexts.h"
#include "../gdi/regions.h"
#include "../gdi/shapes.h"
#include "../text/no_throw.h"
#include "colors.h"
#include "default_steps.h"
#include "frame.h"
#include "input.h"
#include "painting.h"
#include "tree_walk.h"
#include "window_position.h"

namespace kawin {
namespace {

void SetText(HWND handle, LPCWSTR text) {
    std::u16string kept = text != nullptr ? std::u16string(text, TextLength(text)) : std::u16string();
    const DesktopLock desktop;
    if (Window* const window = desktop.Look(handle)) {
        window->text = std::move(kept);
    }
}

LRESULT GetText(HWND handle, WPARAM capacity, LPWSTR target) {
    if (capacity == 0 || target == nullptr) {
        return 0;
    }
    const DesktopLock desktop;
    const Window* const window = desktop.Look(handle);
    const std::u16string_view text = window != nullptr ? std::u16string_view(window->text) : std::u16string_view();
    const std::size_t count = std::min<std::size_t>(text.size(), capacity - 1);
    std::copy_n(text.data(), count, target);
    target[count] = 0;
    return static_cast<LRESULT>(count);
}

LRESULT TextLengthOf(HWND handle) {
    const DesktopLock desktop;
    const Window* const window = desktop.Look(handle);
    return window != nullptr ? static_cast<LRESULT>(window->text.size()) : 0;
}

// The first text of a dialog's control may be a number: "#" is not for the default procedure, which takes what is text.
LRESULT Created(HWND window, const CREATESTRUCTW& create) {
    if (create.lpszName != nullptr && !IS_INTRESOURCE(create.lpszName)) {
        SetText(window, create.lpszName);
    }
    return TRUE;
}

LPARAM Packed(LONG x, LONG y) noexcept {
    return MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y));
}

void PositionChanged(HWND handle, const WINDOWPOS& position) {
    RECT client = {};
    WPARAM how = SIZE_RESTORED;
    {
        const DesktopLock desktop;
        const Window* const window = desktop.Look(handle);
        if (window == nullptr) {
            return;
        }
        client = window->client;
        how = (window->style & WS_MINIMIZE) != 0   ? SIZE_MINIMIZED
              : (window->style & WS_MAXIMIZE) != 0 ? SIZE_MAXIMIZED
                                                   : SIZE_RESTORED;
    }
    if ((position.flags & kNoClientMove) == 0) {
        SendMessageW(handle, WM_MOVE, 0, Packed(client.left, client.top));
    }
    if ((position.flags & kNoClientSize) == 0 || (position.flags & kStateChanged) != 0) {
        SendMessageW(handle, WM_SIZE, how, Packed(client.right - client.left, client.bottom - client.top));
    }
}

HBRUSH BackgroundOf(HWND handle) {
    HBRUSH brush = nullptr;
    {
        const DesktopLock desktop;
        const Window* const window = desktop.Look(handle);
        brush = window != nullptr ? window->window_class->background.load() : nullptr;
    }
    const ULONG_PTR number = reinterpret_cast<ULONG_PTR>(brush);
    constexpr ULONG_PTR kMostColors = 64;
    return number != 0 && number <= kMostColors ? GetSysColorBrush(static_cast<int>(number) - 1) : brush;
}

LRESULT EraseBackground(HWND window, HDC context) {
    const HBRUSH brush = BackgroundOf(window);
    if (brush == nullptr) {
        return 0;
    }
    RECT rect = {};
    GetClipBox(context, &rect);
    FillRect(context, &rect, brush);
    return 1;
}

LRESULT ControlColor(UINT message, HDC context) {
    if (message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX) {
        SetBkColor(context, GetSysColor(COLOR_WINDOW));
        SetTextColor(context, GetSysColor(COLOR_WINDOWTEXT));
        return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    }
    SetBkColor(context, GetSysColor(COLOR_3DFACE));
    SetTextColor(context, GetSysColor(COLOR_WINDOWTEXT));
    return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_3DFACE));
}

// Windows does it by WS_VISIBLE, and hosts know that: who sends TRUE shows a hidden window.
LRESULT SetRedraw(HWND handle, bool redraw) {
    const DesktopLock desktop;
    if (Window* const window = desktop.Look(handle)) {
        window->frozen = !redraw && (window->frozen || window->IsVisible());
        window->style = redraw ? window->style | WS_VISIBLE : window->style & ~WS_VISIBLE;
    }
    return 0;
}

void PaintNothing(HWND window) {
    PAINTSTRUCT paint;
    if (BeginPaint(window, &paint) != nullptr) {
        EndPaint(window, &paint);
    }
}

bool IsChildWindow(HWND window) noexcept {
    return (GetWindowLongW(window, GWL_STYLE) & static_cast<LONG>(WS_CHILD)) != 0;
}

LRESULT AskParent(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    const HWND parent = IsChildWindow(window) ? GetParent(window) : nullptr;
    return parent != nullptr ? SendMessageW(parent, message, wparam, lparam) : 0;
}

// In its parent's eyes first, then by its class's cursor.
LRESULT SetCursorShape(HWND window, WPARAM wparam, LPARAM lparam) {
    if (IsChildWindow(window) && AskParent(window, WM_SETCURSOR, wparam, lparam) != 0) {
        return TRUE;
    }
    return ShowCursorOf(window, static_cast<SHORT>(LOWORD(static_cast<ULONG_PTR>(lparam))));
}

LRESULT MouseActivate(HWND window, WPARAM wparam, LPARAM lparam) {
    const LRESULT asked = AskParent(window, WM_MOUSEACTIVATE, wparam, lparam);
    if (asked != 0) {
        return asked;
    }
    const bool caption_pressed = LOWORD(static_cast<ULONG_PTR>(lparam)) == HTCAPTION;
    return HIWORD(static_cast<ULONG_PTR>(lparam)) == WM_LBUTTONDOWN && caption_pressed ? MA_NOACTIVATE : MA_ACTIVATE;
}

LRESULT SetIcon(HWND handle, WPARAM which, HICON icon) {
    const DesktopLock desktop;
    Window* const window = desktop.Look(handle);
    if (window == nullptr) {
        return 0;
    }
    return reinterpret_cast<LRESULT>(std::exchange(which == ICON_BIG ? window->icon : window->small_icon, icon));
}

LRESULT GetIcon(HWND handle, WPARAM which) {
    const DesktopLock desktop;
    const Window* const window = desktop.Look(handle);
    return window == nullptr ? 0 : reinterpret_cast<LRESULT>(which == ICON_BIG ? window->icon : window->small_icon);
}

bool Text(HWND window, UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
    switch (message) {
        case WM_NCCREATE:
            result = lparam != 0 ? Created(window, *reinterpret_cast<const CREATESTRUCTW*>(lparam)) : FALSE;
            return true;
        case WM_SETTEXT:
            SetText(window, reinterpret_cast<LPCWSTR>(lparam));
            DefaultFrame(window, message, wparam, lparam, &result);
            result = TRUE;
            return true;
        case WM_GETTEXT:
            result = GetText(window, wparam, reinterpret_cast<LPWSTR>(lparam));
            return true;
        case WM_GETTEXTLENGTH:
            result = TextLengthOf(window);
            return true;
        case WM_SETICON:
            result = SetIcon(window, wparam, reinterpret_cast<HICON>(lparam));
            DefaultFrame(window, message, wparam, lparam, &result);
            return true;
        case WM_GETICON:
            result = GetIcon(window, wparam);
            return true;
        default:
            return false;
    }
}

bool Painting(HWND window, UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
    switch (message) {
        case WM_PAINT:
            PaintNothing(window);
            return true;
        case WM_ERASEBKGND:
            result = EraseBackground(window, reinterpret_cast<HDC>(wparam));
            return true;
        case WM_SETREDRAW:
            result = SetRedraw(window, wparam != FALSE);
            return true;
        case WM_CTLCOLORMSGBOX:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSCROLLBAR:
        case WM_CTLCOLORSTATIC:
            result = ControlColor(message, reinterpret_cast<HDC>(wparam));
            return true;
        case WM_PRINT:
            PrintTree(window, reinterpret_cast<HDC>(wparam), lparam);
            return true;
        default:
            return false;
    }
}

bool State(HWND window, UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
    switch (message) {
        case WM_CLOSE:
            DestroyWindow(window);
            return true;
        case WM_WINDOWPOSCHANGING:
            LimitPosition(window, *reinterpret_cast<WINDOWPOS*>(lparam));
            return true;
        case WM_WINDOWPOSCHANGED:
            PositionChanged(window, *reinterpret_cast<const WINDOWPOS*>(lparam));
            return true;
        case WM_ACTIVATE:
            if (LOWORD(wparam) != WA_INACTIVE && HIWORD(wparam) == 0) {
                SetFocus(window);
            }
            return true;
        case WM_MOUSEACTIVATE:
            result = MouseActivate(window, wparam, lparam);
            return true;
        case WM_QUERYOPEN:
        case WM_QUERYENDSESSION:
            result = TRUE;
            return true;
        case WM_CANCELMODE:
            if (GetCapture() == window) {
                ReleaseCapture();
            }
            return true;
        default:
            return false;
    }
}

bool Input(HWND window, UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
    switch (message) {
        case WM_SETCURSOR:
            result = SetCursorShape(window, wparam, lparam);
            return true;
        case WM_MOUSEWHEEL:
        case WM_MOUSEHWHEEL:
        case WM_CONTEXTMENU:
            result = AskParent(window, message, wparam, lparam);
            return true;
        case WM_HELP: {
            const HWND parent = GetParent(window);
            result = parent != nullptr ? SendMessageW(parent, message, wparam, lparam) : TRUE;
            return true;
        }
        case WM_RBUTTONUP: {
            POINT at = {GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
            ClientToScreen(window, &at);
            SendMessageW(window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window), Packed(at.x, at.y));
            return true;
        }
        case WM_SYSKEYDOWN:
        case WM_SYSKEYUP:
        case WM_SYSCHAR:
        case WM_KEYUP:
            return SystemKey(window, message, wparam, lparam, result);
        default:
            return false;
    }
}

LRESULT Default(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    LRESULT result = 0;
    if (Text(window, message, wparam, lparam, result) || Painting(window, message, wparam, lparam, result) ||
        State(window, message, wparam, lparam, result) || Input(window, message, wparam, lparam, result)) {
        return result;
    }
    DefaultFrame(window, message, wparam, lparam, &result);
    return result;
}

}  // namespace
}  // namespace kawin

LRESULT DefWindowProcW(HWND window, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
    if (IsWindow(window) == FALSE) {
        return kawin::Fail(ERROR_INVALID_WINDOW_HANDLE);
    }
    return kawin::NoThrow([&] { return kawin::Default(window, message, wparam, lparam); });
}
