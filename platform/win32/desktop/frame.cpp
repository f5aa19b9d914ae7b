#include "frame.h"

#include "desktop_state.h"
#include "frame_layout.h"
#include "frame_paint.h"
#include "frame_tracking.h"
#include "input.h"
#include "menu_table.h"
#include "message_queue.h"
#include "window_tree.h"

namespace kawin {
namespace {

constexpr WPARAM kCommandBits = 0xFFF0;

DWORD StyleOf(HWND window) noexcept {
    return static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
}

POINT PointOf(LPARAM lparam) noexcept {
    return {GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
}

LRESULT CalculateSize(HWND window, bool with_parameters, LPARAM lparam) {
    RECT& rect = with_parameters ? reinterpret_cast<NCCALCSIZE_PARAMS*>(lparam)->rgrc[0] : *reinterpret_cast<RECT*>(lparam);
    rect = ClientInside(window, rect);
    if (!with_parameters) {
        return 0;
    }
    const DWORD style = GetClassLongW(window, GCL_STYLE);
    return ((style & CS_HREDRAW) != 0 ? WVR_HREDRAW : 0) | ((style & CS_VREDRAW) != 0 ? WVR_VREDRAW : 0);
}

// `lparam` -1: the window draws its frame itself.
LRESULT Activate(HWND handle, bool active, LPARAM lparam) {
    {
        const DesktopLock desktop;
        if (Window* const window = desktop.Look(handle)) {
            window->frame.active = active;
        }
    }
    if (lparam != -1) {
        PaintFrame(handle);
    }
    return TRUE;
}

void SendCommand(HWND window, UINT command, LPARAM lparam) {
    SendMessageW(window, WM_SYSCOMMAND, command, lparam);
}

void PressBox(HWND window, int box, LPARAM lparam) {
    const DWORD style = StyleOf(window);
    const bool enabled = box == HTCLOSE       ? CanClose(window)
                         : box == HTMAXBUTTON ? (style & WS_MAXIMIZEBOX) != 0
                                              : (style & WS_MINIMIZEBOX) != 0;
    if (!enabled || !TrackBox(window, box)) {
        return;
    }
    switch (box) {
        case HTCLOSE:
            return SendCommand(window, SC_CLOSE, lparam);
        case HTMAXBUTTON:
            return SendCommand(window, IsZoomed(window) ? SC_RESTORE : SC_MAXIMIZE, lparam);
        default:
            return SendCommand(window, SC_MINIMIZE, lparam);
    }
}

void Press(HWND window, int hit, LPARAM lparam) {
    switch (hit) {
        case HTCAPTION: {
            const HWND top = GetAncestor(window, GA_ROOT);
            if (GetActiveWindow() != top) {
                SetActiveWindow(top);
            }
            return SendCommand(window, SC_MOVE + HTCAPTION, lparam);
        }
        case HTSYSMENU:
            return SendCommand(window, SC_MOUSEMENU + HTSYSMENU, lparam);
        case HTCLOSE:
        case HTMAXBUTTON:
        case HTMINBUTTON:
            return PressBox(window, hit, lparam);
        default:
            if (hit >= HTSIZEFIRST && hit <= HTSIZELAST) {
                SendCommand(window, SC_SIZE + static_cast<UINT>(hit - HTSIZEFIRST) + static_cast<UINT>(WMSZ_LEFT), lparam);
            }
    }
}

void PressTwice(HWND window, int hit, LPARAM lparam) {
    if (hit == HTCAPTION) {
        const bool special = IsIconic(window) || IsZoomed(window);
        if (special || (StyleOf(window) & WS_MAXIMIZEBOX) != 0) {
            SendCommand(window, special ? SC_RESTORE : SC_MAXIMIZE, lparam);
        }
    } else if (hit == HTSYSMENU) {
        SendCommand(window, SC_CLOSE, lparam);
    } else {
        Press(window, hit, lparam);
    }
}

// What the user may not choose in the system menu does not happen.
bool IsGreyed(HWND window, UINT command) {
    const HMENU menu = command == SC_CLOSE ? OwnSystemMenu(window) : nullptr;
    const UINT state = menu != nullptr ? GetMenuState(menu, command, MF_BYCOMMAND) : 0;
    return state != static_cast<UINT>(-1) && (state & (MF_GRAYED | MF_DISABLED)) != 0;
}

void Command(HWND window, WPARAM wparam) {
    const auto command = static_cast<UINT>(wparam & kCommandBits);
    const WPARAM part = wparam & ~kCommandBits & 0xF;
    if (IsGreyed(window, command)) {
        return;
    }
    switch (command) {
        case SC_MOVE:
            return MoveOrSize(window, SC_MOVE, 0, part == HTCAPTION);
        case SC_SIZE:
            return MoveOrSize(window, SC_SIZE, part, part != 0);
        case SC_MINIMIZE:
            ShowWindow(window, SW_MINIMIZE);
            return;
        case SC_MAXIMIZE:
            ShowWindow(window, SW_MAXIMIZE);
            return;
        case SC_RESTORE:
            ShowWindow(window, SW_RESTORE);
            return;
        case SC_CLOSE:
            SendMessageW(window, WM_CLOSE, 0, 0);
            return;
        default:  // menus that pop up, and what a shell does, do not exist
            return;
    }
}

// The messages about the look of the frame.
bool Look(HWND window, UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
    switch (message) {
        case WM_NCCALCSIZE:
            result = CalculateSize(window, wparam != FALSE, lparam);
            return true;
        case WM_NCHITTEST:
            result = HitTest(window, PointOf(lparam));
            return true;
        case WM_NCPAINT:
            PaintFrame(window, reinterpret_cast<HRGN>(wparam));
            return true;
        case WM_SETTEXT:
        case WM_SETICON:
            PaintFrame(window);
            return true;
        case WM_NCACTIVATE:
            result = Activate(window, wparam != FALSE, lparam);
            return true;
        case WM_NCMOUSEMOVE:
            SetHotBox(window, static_cast<int>(wparam));
            return true;
        case WM_NCMOUSELEAVE:
            SetHotBox(window, HTNOWHERE);
            return true;
        default:
            return false;
    }
}

}  // namespace

bool DefaultFrame(HWND window, UINT message, WPARAM wparam, LPARAM lparam, LRESULT* result) {
    LRESULT ignored = 0;
    const bool keeps_result = message == WM_SETTEXT || message == WM_SETICON;
    LRESULT& target = keeps_result ? ignored : *result;
    if (Look(window, message, wparam, lparam, target)) {
        return true;
    }
    switch (message) {
        case WM_NCLBUTTONDOWN:
            Press(window, static_cast<int>(wparam), lparam);
            return true;
        case WM_NCLBUTTONDBLCLK:
            PressTwice(window, static_cast<int>(wparam), lparam);
            return true;
        case WM_SYSCOMMAND:
            Command(window, wparam);
            return true;
        case WM_GETMINMAXINFO:
            return true;
        case WM_NCDESTROY:
            ForgetSystemMenu(window);
            return true;
        default:
            return false;
    }
}

}  // namespace kawin
