#include "button.h"

#include <utility>

#include "../text/no_throw.h"
#include "control_state.h"
#include "dialog_data.h"
#include "input.h"
#include "rectangles.h"

namespace kawin {
namespace {

void Redraw(HWND button, UINT action) noexcept {
    if (ButtonType(StyleOfControl(button)) == BS_OWNERDRAW && action != ODA_DRAWENTIRE && IsWindowVisible(button)) {
        const HDC context = GetDC(button);  // owners hear of what changed, not of all
        DrawButton(button, *ControlState<ButtonState>(button), context, action);
        ReleaseDC(button, context);
    } else {
        InvalidateRect(button, nullptr, TRUE);
    }
}

bool IsOver(HWND button, LPARAM place) noexcept {
    RECT client = {};
    GetClientRect(button, &client);
    return PtInRect(&client, {GET_X_LPARAM(place), GET_Y_LPARAM(place)}) != FALSE;
}

void Push(HWND button, bool pushed) noexcept {
    ButtonState& state = *ControlState<ButtonState>(button);
    const UINT before = state.state;
    state.state = pushed ? before | BST_PUSHED : before & ~BST_PUSHED;
    if (state.state != before) {
        Redraw(button, ODA_SELECT);
    }
}

void Check(HWND button, UINT check) noexcept {
    ButtonState& state = *ControlState<ButtonState>(button);
    const DWORD style = StyleOfControl(button);
    const DWORD type = ButtonType(style);
    const bool three = type == BS_3STATE || type == BS_AUTO3STATE;
    if (type < BS_CHECKBOX || type == BS_GROUPBOX || type == BS_OWNERDRAW) {
        return;
    }
    check = check > (three ? BST_INDETERMINATE : BST_CHECKED) ? (three ? BST_INDETERMINATE : BST_CHECKED) : check;
    if (type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON) {  // Tab goes to the one of the group that is checked
        const DWORD wanted = check != BST_UNCHECKED ? style | WS_TABSTOP : style & ~WS_TABSTOP;
        if (wanted != style) {
            SetWindowLongW(button, GWL_STYLE, static_cast<LONG>(wanted));
        }
    }
    constexpr UINT kChecks = BST_CHECKED | BST_INDETERMINATE;
    if ((state.state & kChecks) != check) {
        state.state = (state.state & ~kChecks) | check;
        Redraw(button, ODA_DRAWENTIRE);
    }
}

// Of the automatic radio buttons of a group one is checked. By what they say of themselves: a number is no style of a button for
// other controls.
void CheckAloneInGroup(HWND button) {
    for (const HWND other : GroupOf(button)) {
        const bool is_radio = (DialogCodeOf(other) & DLGC_RADIOBUTTON) != 0;
        if (other != button && is_radio && ButtonType(StyleOfControl(other)) == BS_AUTORADIOBUTTON) {
            SendMessageW(other, BM_SETCHECK, BST_UNCHECKED, 0);
        }
    }
    SendMessageW(button, BM_SETCHECK, BST_CHECKED, 0);
}

void Click(HWND button) {
    const UINT check = ControlState<ButtonState>(button)->state & (BST_CHECKED | BST_INDETERMINATE);
    switch (ButtonType(StyleOfControl(button))) {
        case BS_AUTOCHECKBOX:
            SendMessageW(button, BM_SETCHECK, check == BST_UNCHECKED ? BST_CHECKED : BST_UNCHECKED, 0);
            break;
        case BS_AUTO3STATE:
            SendMessageW(button, BM_SETCHECK, (check + 1) % 3, 0);
            break;
        case BS_AUTORADIOBUTTON:
            CheckAloneInGroup(button);
            break;
        default:
            break;
    }
    if (IsWindow(button)) {
        TellParent(button, BN_CLICKED);
    }
}

void Begin(HWND button) noexcept {
    ControlState<ButtonState>(button)->tracking = true;
    SetCapture(button);
    Push(button, true);
}

// The press is over: it counts when the button is still down.
void End(HWND button) {
    ButtonState& state = *ControlState<ButtonState>(button);
    if (!state.tracking) {
        return;
    }
    const bool counts = (state.state & BST_PUSHED) != 0;
    state.tracking = false;
    Push(button, false);
    if (!IsWindow(button)) {
        return;
    }
    if (!state.silent || GetCapture() == button) {
        ReleaseCapture();
    }
    if (counts && IsWindow(button)) {
        Click(button);
    }
}

void GiveUp(HWND button) noexcept {
    ButtonState& state = *ControlState<ButtonState>(button);
    if (state.tracking) {
        state.tracking = false;
        Push(button, false);
    }
}

void ClickByMessage(HWND button) noexcept {
    if (!IsWindowEnabled(button) || ControlState<ButtonState>(button)->silent) {
        return;
    }
    ControlState<ButtonState>(button)->silent = true;
    SendMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, 0);
    if (IsWindow(button)) {
        SendMessageW(button, WM_LBUTTONUP, 0, 0);
    }
    if (IsWindow(button)) {
        ControlState<ButtonState>(button)->silent = false;
    }
}

void ChangeFocus(HWND button, bool has) noexcept {
    ButtonState& state = *ControlState<ButtonState>(button);
    if (has) {
        state.state |= BST_FOCUS;
    } else {
        if (state.tracking && GetCapture() == button) {
            ReleaseCapture();
        }
        state.state &= ~BST_FOCUS;
    }
    Redraw(button, ODA_FOCUS);
    if ((StyleOfControl(button) & BS_NOTIFY) != 0) {
        TellParent(button, has ? BN_SETFOCUS : BN_KILLFOCUS);
    }
}

void Restyle(HWND button, WORD style, bool redraw) noexcept {
    SetWindowLongW(button, GWL_STYLE, static_cast<LONG>((StyleOfControl(button) & 0xFFFF0000) | style));
    if (redraw) {
        Redraw(button, ODA_DRAWENTIRE);
    }
}

LRESULT Code(HWND button) noexcept {
    switch (ButtonType(StyleOfControl(button))) {
        case BS_PUSHBUTTON:
            return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
        case BS_DEFPUSHBUTTON:
            return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
        case BS_RADIOBUTTON:
        case BS_AUTORADIOBUTTON:
            return DLGC_BUTTON | DLGC_RADIOBUTTON;
        case BS_GROUPBOX:
            return DLGC_STATIC;
        default:
            return DLGC_BUTTON;
    }
}

LRESULT Pointer(HWND button, UINT message, WPARAM wparam, LPARAM lparam) {
    const DWORD style = StyleOfControl(button);
    const DWORD type = ButtonType(style);
    ButtonState& state = *ControlState<ButtonState>(button);
    switch (message) {
        case WM_LBUTTONDBLCLK:
            if ((style & BS_NOTIFY) != 0 || type == BS_RADIOBUTTON || (style & BS_TYPEMASK) == BS_USERBUTTON ||
                type == BS_OWNERDRAW) {
                TellParent(button, BN_DOUBLECLICKED);
                return 0;
            }
            [[fallthrough]];
        case WM_LBUTTONDOWN:
            if (type != BS_GROUPBOX) {
                SetFocus(button);
                if (IsWindow(button)) {
                    Begin(button);
                }
            }
            return 0;
        case WM_LBUTTONUP:
            End(button);
            return 0;
        case WM_MOUSEMOVE:
            if (state.tracking && (wparam & MK_LBUTTON) != 0) {
                Push(button, IsOver(button, lparam));
            }
            return 0;
        default:
            return DefWindowProcW(button, message, wparam, lparam);
    }
}

LRESULT ButtonMessage(HWND button, UINT message, WPARAM wparam, LPARAM lparam) {
    ButtonState& state = *ControlState<ButtonState>(button);
    switch (message) {
        case BM_GETCHECK:
            return state.state & (BST_CHECKED | BST_INDETERMINATE);
        case BM_SETCHECK:
            Check(button, static_cast<UINT>(wparam));
            return 0;
        case BM_GETSTATE:
            return state.state;
        case BM_SETSTATE:
            Push(button, wparam != 0);
            return 0;
        case BM_SETSTYLE:
            Restyle(button, LOWORD(wparam), LOWORD(static_cast<ULONG_PTR>(lparam)) != 0);
            return 0;
        case BM_CLICK:
            ClickByMessage(button);
            return 0;
        case BM_GETIMAGE:
            return reinterpret_cast<LRESULT>(state.image);
        case BM_SETIMAGE: {
            const HANDLE before = std::exchange(state.image, reinterpret_cast<HANDLE>(lparam));
            Redraw(button, ODA_DRAWENTIRE);
            return reinterpret_cast<LRESULT>(before);
        }
        default:
            return DefWindowProcW(button, message, wparam, lparam);
    }
}

LRESULT WindowMessage(HWND button, UINT message, WPARAM wparam, LPARAM lparam) {
    ButtonState& state = *ControlState<ButtonState>(button);
    switch (message) {
        case WM_GETDLGCODE:
            return Code(button);
        case WM_NCHITTEST:
            return ButtonType(StyleOfControl(button)) == BS_GROUPBOX ? HTTRANSPARENT
                                                                     : DefWindowProcW(button, message, wparam, lparam);
        case WM_KEYDOWN:
            if (wparam == VK_SPACE && !state.tracking) {
                Begin(button);
                return 0;
            }
            break;
        case WM_KEYUP:
            if (wparam == VK_SPACE) {
                End(button);
                return 0;
            }
            break;
        case WM_CAPTURECHANGED:
        case WM_CANCELMODE:
            GiveUp(button);
            break;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            ChangeFocus(button, message == WM_SETFOCUS);
            return 0;
        case WM_ENABLE:
            Redraw(button, ODA_DRAWENTIRE);
            return 0;
        case WM_SETTEXT: {
            const LRESULT result = DefWindowProcW(button, message, wparam, lparam);
            Redraw(button, ODA_DRAWENTIRE);
            return result;
        }
        case WM_SETFONT:
            state.font = reinterpret_cast<HFONT>(wparam);
            if (LOWORD(static_cast<ULONG_PTR>(lparam)) != 0) {
                Redraw(button, ODA_DRAWENTIRE);
            }
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(state.font);
        case WM_ERASEBKGND:
            return 1;  // everything is drawn at once
        case WM_PAINT:
        case WM_PRINTCLIENT:
            PaintControl(button, wparam, [&](HDC context) { DrawButton(button, state, context, ODA_DRAWENTIRE); });
            return 0;
        default:
            break;
    }
    return DefWindowProcW(button, message, wparam, lparam);
}

}  // namespace

DWORD ButtonType(DWORD style) noexcept {
    const DWORD type = style & BS_TYPEMASK;
    return type == BS_USERBUTTON || type == 0x000A || type > BS_OWNERDRAW ? BS_PUSHBUTTON : type;
}

bool IsPushType(DWORD type) noexcept {
    return type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON;
}

LRESULT CALLBACK ButtonProcedure(HWND button, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_NCCREATE && !MakeControlState<ButtonState>(button)) {
        return FALSE;
    }
    if (message == WM_NCDESTROY) {
        EndControlState<ButtonState>(button);
    }
    if (ControlState<ButtonState>(button) == nullptr) {
        return DefWindowProcW(button, message, wparam, lparam);
    }
    return NoThrow([&] {
        if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) {
            return Pointer(button, message, wparam, lparam);
        }
        return message >= BM_GETCHECK && message <= BM_SETIMAGE ? ButtonMessage(button, message, wparam, lparam)
                                                                : WindowMessage(button, message, wparam, lparam);
    });
}

}  // namespace kawin
