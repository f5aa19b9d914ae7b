// How keys move in a dialog.

#include <algorithm>
#include <string>

#include "../text/compare.h"
#include "../text/no_throw.h"
#include "controls.h"
#include "dialog_data.h"
#include "input.h"
#include "message_queue.h"
#include "window_tree.h"

namespace kawin {
namespace {

constexpr LRESULT kPushButton = DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON;

void Command(HWND dialog, int id, HWND control) {
    if (control == nullptr || IsWindowEnabled(control)) {
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(control));
    }
}

void Enter(HWND dialog) {
    const HWND focus = GetFocus();
    if (focus != nullptr && IsChild(dialog, focus) && (DialogCodeOf(focus) & DLGC_DEFPUSHBUTTON) != 0) {
        Command(dialog, GetDlgCtrlID(focus), focus);
        return;
    }
    const auto id = static_cast<ULONG_PTR>(SendMessageW(dialog, DM_GETDEFID, 0, 0));
    const int number = HIWORD(id) == DC_HASDEFID ? LOWORD(id) : IDOK;
    Command(dialog, number, GetDlgItem(dialog, number));
}

void MoveInGroup(HWND dialog, bool previous) {
    const HWND next = GetNextDlgGroupItem(dialog, GetFocus(), previous);
    if (next == nullptr) {
        return;
    }
    FocusControl(dialog, next);
    ShowDefaultButton(dialog, next);
    const bool automatic = (static_cast<DWORD>(GetWindowLongW(next, GWL_STYLE)) & BS_TYPEMASK) == BS_AUTORADIOBUTTON;
    if ((DialogCodeOf(next) & DLGC_RADIOBUTTON) != 0 && automatic && SendMessageW(next, BM_GETCHECK, 0, 0) != BST_CHECKED) {
        SendMessageW(next, BM_CLICK, 0, 0);
    }
}

bool KeyDown(HWND dialog, const MSG& message) {
    const LRESULT code = SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message));
    if ((code & DLGC_WANTMESSAGE) != 0) {
        return false;
    }
    switch (message.wParam) {
        case VK_TAB:
            if ((code & DLGC_WANTTAB) != 0) {
                return false;
            }
            SendMessageW(dialog, WM_NEXTDLGCTL, GetKeyState(VK_SHIFT) < 0, 0);
            return true;
        case VK_LEFT:
        case VK_UP:
        case VK_RIGHT:
        case VK_DOWN:
            if ((code & DLGC_WANTARROWS) != 0) {
                return false;
            }
            MoveInGroup(dialog, message.wParam == VK_LEFT || message.wParam == VK_UP);
            return true;
        case VK_ESCAPE:
        case VK_CANCEL:
            Command(dialog, IDCANCEL, GetDlgItem(dialog, IDCANCEL));
            return true;
        case VK_EXECUTE:
        case VK_RETURN:
            Enter(dialog);
            return true;
        default:
            return false;
    }
}

char16_t Folded(char16_t unit) noexcept {
    WCHAR text[2] = {unit, 0};
    CharUpperW(text);
    return text[0];
}

// Whether '&' stands before that letter; two of them are one.
bool HasMnemonic(HWND control, char16_t letter) {
    WCHAR text[256] = {};
    GetWindowTextW(control, text, static_cast<int>(std::size(text)));
    const std::u16string_view view = text;
    for (std::size_t at = view.find(u'&'); at != view.npos && at + 1 < view.size(); at = view.find(u'&', at + 2)) {
        if (view[at + 1] != u'&') {
            return Folded(view[at + 1]) == letter;
        }
    }
    return false;
}

bool TakesMnemonic(HWND control) {
    const LRESULT code = DialogCodeOf(control);
    const DWORD style = static_cast<DWORD>(GetWindowLongW(control, GWL_STYLE));
    return (code & DLGC_WANTCHARS) == 0 && ((code & DLGC_STATIC) == 0 || (style & SS_NOPREFIX) == 0 || (code & DLGC_BUTTON) != 0);
}

// A button is clicked when no other has the letter, else the focus goes from one to the next. A static leads to the control
// behind it.
bool Mnemonic(HWND dialog, WPARAM key) {
    const char16_t letter = Folded(static_cast<char16_t>(key));
    std::vector<HWND> controls = ReachableControls(dialog);
    const auto focus = std::find(controls.begin(), controls.end(), GetFocus());
    if (focus != controls.end()) {
        std::rotate(controls.begin(), focus + 1, controls.end());
    }
    std::erase_if(controls, [&](HWND control) { return !TakesMnemonic(control) || !HasMnemonic(control, letter); });
    if (controls.empty()) {
        return false;
    }
    const HWND control = controls.front();
    if ((DialogCodeOf(control) & DLGC_BUTTON) == 0) {
        if (const HWND next = GetNextDlgTabItem(dialog, control, FALSE)) {
            SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
        }
        return true;
    }
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
    if (controls.size() == 1 && IsWindow(control)) {
        SendMessageW(control, BM_CLICK, 0, 0);
    }
    return true;
}

bool Character(HWND dialog, const MSG& message) {
    const LRESULT code = SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message));
    if ((code & (DLGC_WANTCHARS | DLGC_WANTMESSAGE)) != 0) {
        return false;
    }
    return message.wParam > u' ' && Mnemonic(dialog, message.wParam);
}

BOOL Handle(HWND dialog, MSG& message) {
    if (message.hwnd != dialog && !IsChild(dialog, message.hwnd)) {
        return FALSE;
    }
    if (CallMsgFilterW(&message, MSGF_DIALOGBOX)) {
        return TRUE;
    }
    if ((message.message == WM_KEYDOWN && KeyDown(dialog, message)) ||
        (message.message == WM_CHAR && Character(dialog, message)) ||
        (message.message == WM_SYSCHAR && Mnemonic(dialog, message.wParam))) {
        return TRUE;
    }
    const HWND before = GetFocus();
    TranslateMessage(&message);
    DispatchMessageW(&message);
    const HWND after = GetFocus();
    if (after != before && after != nullptr && IsWindow(dialog) && IsChild(dialog, after)) {
        ShowDefaultButton(dialog, after);  // a click on a button makes it the one that Enter presses
    }
    return TRUE;
}

}  // namespace
}  // namespace kawin

BOOL IsDialogMessageW(HWND dialog, LPMSG message) noexcept {
    if (!IsWindow(dialog) || message == nullptr || dialog == GetDesktopWindow()) {
        return FALSE;
    }
    return kawin::NoThrow([&] { return kawin::Handle(dialog, *message); });
}
