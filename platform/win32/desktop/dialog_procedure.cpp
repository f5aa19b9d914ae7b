// What a dialog does with its messages.

#include "../gdi/contexts.h"
#include "../gdi/shapes.h"
#include "../process/process.h"
#include "../text/no_throw.h"
#include "controls.h"
#include "default_procedure.h"
#include "dialog_data.h"
#include "input.h"
#include "message_queue.h"
#include "metrics.h"
#include "monitors.h"
#include "painting.h"
#include "window_tree.h"

namespace kawin {
namespace {

bool IsPushButton(HWND control) noexcept {
    return (DialogCodeOf(control) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

void SetButtonType(HWND button, DWORD type) noexcept {
    const DWORD style = static_cast<DWORD>(GetWindowLongW(button, GWL_STYLE));
    SendMessageW(button, BM_SETSTYLE, (style & 0xFFFF & ~BS_TYPEMASK) | type, TRUE);
}

// The one that looks so; null when there is none.
HWND DefaultButton(HWND dialog) {
    for (const HWND control : ReachableControls(dialog)) {
        if ((DialogCodeOf(control) & DLGC_DEFPUSHBUTTON) != 0) {
            return control;
        }
    }
    return nullptr;
}

LRESULT GetDefaultId(HWND dialog, const DialogData& data) {
    if (data.default_id != 0) {
        return MAKELONG(data.default_id, DC_HASDEFID);
    }
    const HWND button = DefaultButton(dialog);
    return button != nullptr ? MAKELONG(static_cast<ULONG_PTR>(GetDlgCtrlID(button)), DC_HASDEFID) : 0;
}

void SetDefaultId(HWND dialog, DialogData& data, UINT id) {
    const HWND before = DefaultButton(dialog);
    const HWND after = GetDlgItem(dialog, static_cast<int>(id));
    data.default_id = id;
    if (before != nullptr && before != after) {
        SetButtonType(before, BS_PUSHBUTTON);
    }
    if ((DialogCodeOf(after) & DLGC_UNDEFPUSHBUTTON) != 0) {
        SetButtonType(after, BS_DEFPUSHBUTTON);
    }
}

void NextControl(HWND dialog, WPARAM wparam, bool is_handle) {
    const HWND focus = IsChild(dialog, GetFocus()) ? GetFocus() : nullptr;
    const HWND target = is_handle ? reinterpret_cast<HWND>(wparam) : GetNextDlgTabItem(dialog, focus, wparam != 0);
    if (target != nullptr) {
        FocusControl(dialog, target);
        ShowDefaultButton(dialog, target);
    }
}

void KeepFocus(HWND dialog, DialogData& data) {
    const HWND focus = GetFocus();
    if (focus != nullptr && IsChild(dialog, focus)) {
        data.focus = focus;
        ShowDefaultButton(dialog, nullptr);
    }
}

// The control that had it, else the first that may.
void BringFocusBack(HWND dialog, DialogData& data) {
    if (IsIconic(dialog)) {
        return;
    }
    HWND focus = std::exchange(data.focus, nullptr);
    if (focus == nullptr || !IsWindow(focus) || !IsChild(dialog, focus)) {
        focus = GetNextDlgTabItem(dialog, nullptr, FALSE);
    }
    if (focus != nullptr) {
        SetFocus(focus);
        ShowDefaultButton(dialog, focus);
    }
}

LRESULT Erase(HWND dialog, HDC context) {
    auto brush = reinterpret_cast<HBRUSH>(
        SendMessageW(dialog, WM_CTLCOLORDLG, reinterpret_cast<WPARAM>(context), reinterpret_cast<LPARAM>(dialog)));
    if (brush == nullptr) {
        brush = reinterpret_cast<HBRUSH>(
            DefWindowProcW(dialog, WM_CTLCOLORDLG, reinterpret_cast<WPARAM>(context), reinterpret_cast<LPARAM>(dialog)));
    }
    RECT client = {};
    GetClientRect(dialog, &client);
    FillRect(context, &client, brush);
    return 1;
}

void AskToCancel(HWND dialog) {
    const HWND cancel = GetDlgItem(dialog, IDCANCEL);
    if (cancel == nullptr || IsWindowEnabled(cancel)) {
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, reinterpret_cast<LPARAM>(cancel));
    }
}

LRESULT Default(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    const DialogDataRef data = DialogDataOf(dialog);
    if (!data) {
        return DefWindowProcW(dialog, message, wparam, lparam);
    }
    switch (message) {
        case WM_ERASEBKGND:
            return Erase(dialog, reinterpret_cast<HDC>(wparam));
        case WM_SHOWWINDOW:
            if (wparam == FALSE) {
                KeepFocus(dialog, *data);
            }
            break;
        case WM_ACTIVATE:
            LOWORD(wparam) != WA_INACTIVE ? BringFocusBack(dialog, *data) : KeepFocus(dialog, *data);
            return 0;
        case WM_SETFOCUS:
            BringFocusBack(dialog, *data);
            return 0;
        case WM_CLOSE:
            AskToCancel(dialog);
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(data->font);
        case DM_GETDEFID:
            return GetDefaultId(dialog, *data);
        case DM_SETDEFID:
            SetDefaultId(dialog, *data, static_cast<UINT>(wparam));
            return TRUE;
        case DM_REPOSITION:
            MoveOntoScreen(dialog);
            return 0;
        case WM_NEXTDLGCTL:
            NextControl(dialog, wparam, LOWORD(static_cast<ULONG_PTR>(lparam)) != 0);
            return 0;
        default:
            break;
    }
    return DefWindowProcW(dialog, message, wparam, lparam);
}

// Those for which a dialog procedure's own result is returned.
bool ReturnsItself(UINT message) noexcept {
    return (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) || message == WM_INITDIALOG ||
           message == WM_COMPAREITEM || message == WM_QUERYDRAGICON;
}

// Whatever its procedure says to WM_NCDESTROY.
void Forget(HWND dialog) {
    if (const DialogDataRef data = FindDialogData(dialog)) {
        FreeOwner(*data);
        if (data->modal) {
            PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);  // its loop may wait for a message
        }
    }
    ForgetDialogData(dialog);
}

LRESULT Procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    SetWindowLongPtrW(dialog, DWLP_MSGRESULT, 0);
    const auto procedure = reinterpret_cast<DLGPROC>(GetWindowLongPtrW(dialog, DWLP_DLGPROC));
    const INT_PTR result = procedure != nullptr ? procedure(dialog, message, wparam, lparam) : FALSE;
    if (message == WM_NCDESTROY) {
        Forget(dialog);
        return DefWindowProcW(dialog, message, wparam, lparam);
    }
    if (result == FALSE && IsWindow(dialog)) {
        return Default(dialog, message, wparam, lparam);
    }
    return ReturnsItself(message) ? result : GetWindowLongPtrW(dialog, DWLP_MSGRESULT);
}

}  // namespace

void FocusControl(HWND dialog, HWND control) noexcept {
    if ((DialogCodeOf(control) & DLGC_HASSETSEL) != 0) {
        SendMessageW(control, EM_SETSEL, 0, -1);
    }
    if (IsWindow(dialog)) {
        SetFocus(control);
    }
}

void ShowDefaultButton(HWND dialog, HWND focused) noexcept {
    NoThrow([&]() -> BOOL {
        HWND wanted = IsPushButton(focused) ? focused : nullptr;
        if (wanted == nullptr) {
            const LRESULT id = SendMessageW(dialog, DM_GETDEFID, 0, 0);
            wanted = HIWORD(static_cast<ULONG_PTR>(id)) == DC_HASDEFID ? GetDlgItem(dialog, LOWORD(static_cast<ULONG_PTR>(id)))
                                                                       : nullptr;
        }
        for (const HWND control : ReachableControls(dialog)) {
            if (control != wanted && (DialogCodeOf(control) & DLGC_DEFPUSHBUTTON) != 0) {
                SetButtonType(control, BS_PUSHBUTTON);
            }
        }
        if ((DialogCodeOf(wanted) & DLGC_UNDEFPUSHBUTTON) != 0) {
            SetButtonType(wanted, BS_DEFPUSHBUTTON);
        }
        return TRUE;
    });
}

void MoveOntoScreen(HWND dialog) noexcept {
    if ((static_cast<DWORD>(GetWindowLongW(dialog, GWL_STYLE)) & WS_CHILD) != 0) {
        return;
    }
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof(monitor);
    RECT rect = {};
    if (!GetMonitorInfoW(MonitorFromWindow(dialog, MONITOR_DEFAULTTOPRIMARY), &monitor) || !GetWindowRect(dialog, &rect)) {
        return;
    }
    const auto inside = [](LONG at, LONG size, LONG first, LONG last) {
        return at + size > last ? last - size : at < first ? first : at;
    };
    const LONG x =
        std::max(inside(rect.left, rect.right - rect.left, monitor.rcWork.left, monitor.rcWork.right), monitor.rcWork.left);
    const LONG y =
        std::max(inside(rect.top, rect.bottom - rect.top, monitor.rcWork.top, monitor.rcWork.bottom), monitor.rcWork.top);
    if (x != rect.left || y != rect.top) {
        SetWindowPos(dialog, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

}  // namespace kawin

LRESULT DefDlgProcW(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
    return kawin::NoThrow([&] { return kawin::Procedure(dialog, message, wparam, lparam); });
}
