// ShowWindow: hidden, shown, minimised, maximised, restored.

#include "window_show.h"

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "activation.h"
#include "frame.h"
#include "input.h"
#include "tree_walk.h"
#include "update_regions.h"
#include "window_position.h"

namespace kawin {
namespace {

constexpr int kLeastWidth = 136;               // a caption with its boxes and a few letters
constexpr POINT kParkedAt = {-32000, -32000};  // where minimised top-level windows are, as on Windows

struct State {
    DWORD style = 0;
    bool child = false;
    bool needs_size = false;
    bool restores_to_maximised = false;
    RECT rect = {};
    RECT normal = {};
    bool exists = false;
};

State StateOf(HWND handle) {
    const DesktopLock desktop;
    const Window* const window = desktop.Look(handle);
    if (window == nullptr) {
        return {};
    }
    return {window->style, window->IsChild(), window->needs_size, window->restores_to_maximised, window->rect, window->normal,
            true};
}

LPARAM Packed(int x, int y) noexcept {
    return MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y));
}

// Changes the styles to the state and tells where the window goes.
RECT EnterState(HWND handle, int command) {
    const MINMAXINFO info = command == SW_MAXIMIZE ? AskMinMax(handle) : MINMAXINFO{};
    const DesktopLock desktop;
    Window* const window = desktop.Look(handle);
    if (window == nullptr) {
        return {};
    }
    const DWORD before = window->style;
    if (command == SW_MINIMIZE) {
        window->restores_to_maximised = (before & WS_MAXIMIZE) != 0;
        window->style = (before & ~WS_MAXIMIZE) | WS_MINIMIZE;
        const FrameWidths frame = FrameOf(window->style, window->extended_style);
        constexpr int kWidth = 160;
        const POINT at = window->IsChild() ? POINT{0, 0} : kParkedAt;
        return {at.x, at.y, at.x + kWidth, at.y + frame.top + frame.bottom};
    }
    window->style = before & ~(WS_MINIMIZE | WS_MAXIMIZE);
    if (command == SW_MAXIMIZE) {
        window->style |= WS_MAXIMIZE;
        const POINT at = info.ptMaxPosition;
        return {at.x, at.y, at.x + info.ptMaxSize.x, at.y + info.ptMaxSize.y};
    }
    return window->normal;
}

// SWP_* flags for showing in a way.
UINT ActivationFlags(const State& state, int command) noexcept {
    const bool quiet = command == SW_SHOWNOACTIVATE || command == SW_SHOWMINNOACTIVE || command == SW_SHOWNA ||
                       command == SW_MINIMIZE || command == SW_FORCEMINIMIZE;
    return quiet || state.child ? SWP_NOACTIVATE | SWP_NOZORDER : 0;
}

// The state that a command asks for: SW_MINIMIZE, SW_MAXIMIZE, SW_RESTORE, or 0 for none.
int StateWanted(const State& state, int command) noexcept {
    switch (command) {
        case SW_MINIMIZE:
        case SW_SHOWMINIMIZED:
        case SW_SHOWMINNOACTIVE:
        case SW_FORCEMINIMIZE:
            return (state.style & WS_MINIMIZE) != 0 ? 0 : SW_MINIMIZE;
        case SW_SHOWMAXIMIZED:
            return (state.style & WS_MAXIMIZE) != 0 ? 0 : SW_MAXIMIZE;
        case SW_RESTORE:
        case SW_SHOWNORMAL:
        case SW_SHOWNOACTIVATE:
        case SW_SHOWDEFAULT:
            if ((state.style & (WS_MINIMIZE | WS_MAXIMIZE)) == 0) {
                return 0;
            }
            return (state.style & WS_MINIMIZE) != 0 && state.restores_to_maximised && command == SW_RESTORE ? SW_MAXIMIZE
                                                                                                            : SW_RESTORE;
        default:
            return 0;
    }
}

void DeactivateMinimised(HWND window) {
    if (GetActiveWindow() == window) {
        LeaveHidden(window);
    }
}

void Hide(HWND window, const State& state) {
    SendMessageW(window, WM_SHOWWINDOW, FALSE, 0);
    const UINT quiet = state.child ? SWP_NOACTIVATE | SWP_NOZORDER : 0;
    SetPosition({window, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_HIDEWINDOW | SWP_NOACTIVATE | quiet});
    LeaveHidden(window);
}

void ShowIn(HWND window, const State& state, int command, bool was_visible) {
    UINT flags = SWP_SHOWWINDOW | ActivationFlags(state, command);
    const int wanted = StateWanted(state, command);
    RECT target = {};
    if (wanted != 0) {
        target = EnterState(window, wanted);
        flags |= SWP_FRAMECHANGED | kStateChanged;
    } else {
        flags |= SWP_NOMOVE | SWP_NOSIZE;
    }
    if (!was_visible) {
        SendMessageW(window, WM_SHOWWINDOW, TRUE, 0);
    }
    SetPosition({window, HWND_TOP, target.left, target.top, target.right - target.left, target.bottom - target.top, flags});
    if (wanted == SW_MINIMIZE) {
        DeactivateMinimised(window);
    }
}

BOOL Show(HWND window, int command) {
    {
        const DesktopLock desktop;
        if (desktop.FindOwn(window) == nullptr) {
            return FALSE;
        }
    }
    const State state = StateOf(window);
    const bool was_visible = (state.style & WS_VISIBLE) != 0;
    if (command == SW_HIDE) {
        if (was_visible) {
            Hide(window, state);
        }
        return was_visible;
    }
    if (was_visible && StateWanted(state, command) == 0 && (command == SW_SHOWNA || command == SW_SHOWNOACTIVATE)) {
        return TRUE;
    }
    ShowIn(window, state, command, was_visible);
    if (StateOf(window).needs_size) {
        SendSizeAndMove(window);
    }
    return was_visible;
}

}  // namespace

void SendSizeAndMove(HWND handle) {
    RECT client = {};
    WPARAM how = SIZE_RESTORED;
    {
        const DesktopLock desktop;
        Window* const window = desktop.Look(handle);
        if (window == nullptr) {
            return;
        }
        window->needs_size = false;
        client = window->client;
        how = (window->style & WS_MAXIMIZE) != 0   ? SIZE_MAXIMIZED
              : (window->style & WS_MINIMIZE) != 0 ? SIZE_MINIMIZED
                                                   : SIZE_RESTORED;
    }
    SendMessageW(handle, WM_SIZE, how, Packed(client.right - client.left, client.bottom - client.top));
    SendMessageW(handle, WM_MOVE, 0, Packed(client.left, client.top));
}

void PlaceAtBirth(HWND window, int command) {
    const RECT target = EnterState(window, command);
    SetPosition({window, nullptr, target.left, target.top, target.right - target.left, target.bottom - target.top,
                 SWP_FRAMECHANGED | SWP_NOZORDER | SWP_NOACTIVATE | kStateChanged});
}

MINMAXINFO DefaultMinMax(HWND handle) {
    const DesktopLock desktop;
    const Window* const window = desktop.Look(handle);
    const RECT screen = ScreenRect();
    MINMAXINFO info = {};
    FrameWidths frame;
    RECT area = WorkArea();
    if (window != nullptr) {
        frame = FrameOf(window->style, window->extended_style);
        if (window->IsChild()) {
            area = {0, 0, window->parent->client.right - window->parent->client.left,
                    window->parent->client.bottom - window->parent->client.top};
        }
    }
    // A maximised window's sizing border lies outside; a window that fills the screen has all of it.
    const bool bordered = window != nullptr && (window->style & WS_THICKFRAME) != 0;
    const int border = bordered ? frame.bottom : 0;
    info.ptMaxPosition = {area.left - border, area.top - border};
    info.ptMaxSize = {area.right - area.left + 2 * border, area.bottom - area.top + 2 * border};
    info.ptMinTrackSize = {kLeastWidth, frame.top + frame.bottom};
    info.ptMaxTrackSize = {screen.right + 2 * border + 4, screen.bottom + 2 * border + 4};
    return info;
}

}  // namespace kawin

BOOL ShowWindow(HWND window, int command) noexcept {
    return kawin::NoThrow([&] { return kawin::Show(window, command); });
}

BOOL ShowWindowAsync(HWND window, int command) noexcept {
    return ShowWindow(window, command);
}

BOOL ShowOwnedPopups(HWND owner, BOOL show) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        std::vector<HWND> owned;
        {
            const kawin::DesktopLock desktop;
            if (desktop.Find(owner) == nullptr) {
                return FALSE;
            }
            for (const kawin::Window* const each : desktop->root->children) {
                if (each->owner == owner) {
                    owned.push_back(each->handle);
                }
            }
        }
        for (const HWND each : owned) {
            SendMessageW(each, WM_SHOWWINDOW, show != FALSE, show != FALSE ? SW_PARENTOPENING : SW_PARENTCLOSING);
        }
        return TRUE;
    });
}

BOOL CloseWindow(HWND window) noexcept {
    return IsWindow(window) != FALSE ? (ShowWindow(window, SW_MINIMIZE), TRUE) : kawin::Fail(ERROR_INVALID_WINDOW_HANDLE);
}

BOOL OpenIcon(HWND window) noexcept {
    return IsWindow(window) != FALSE ? (ShowWindow(window, SW_RESTORE), TRUE) : kawin::Fail(ERROR_INVALID_WINDOW_HANDLE);
}
