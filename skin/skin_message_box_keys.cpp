// The controls of the message box, and what happens with keys, clicks and the countdown.

#include <kadata/skin_message_box.h>

#include "clipboard_text.h"
#include "message_text.h"

namespace {

constexpr UINT SECOND = 1000;       // milliseconds
constexpr WPARAM CONTROL_C = 0x03;  // the character that Ctrl+C types

}  // namespace

HWND CSkinMessageBox::CreateControl(LPCTSTR className, const CString& text, DWORD style, int id) {
    const HWND control = ::CreateWindowExW(0, className, text, style | WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, m_hWnd,
                                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), AfxGetInstanceHandle(), nullptr);
    if (control == nullptr) {
        AfxThrowResourceException();
    }
    ::SendMessageW(control, WM_SETFONT, static_cast<WPARAM>(SendMessage(WM_GETFONT)), FALSE);
    SkinButton(control);
    return control;
}

void CSkinMessageBox::CreateControls() {
    if (m_shownIcon != nullptr) {
        const HWND icon = CreateControl(_T("Static"), CString(), SS_ICON, ControlIcon);
        ::SendMessageW(icon, STM_SETICON, reinterpret_cast<WPARAM>(m_shownIcon), 0);
    }
    const bool right = (m_style & MB_RIGHT) != 0;
    const HWND message = CreateControl(_T("Static"), m_message, (right ? SS_RIGHT : SS_LEFT) | SS_NOPREFIX, ControlMessage);
    m_messageText = std::make_unique<kadata::MessageText>(m_shownMessage, right ? DT_RIGHT : DT_LEFT);
    m_messageText->SubclassWindow(message);
    if (HasCheckBox()) {
        CreateControl(_T("Button"), CheckBoxCaption(), BS_AUTOCHECKBOX | WS_TABSTOP, ControlCheckBox);
    }
    for (const tagMSGBOXBTN& button : m_buttons) {
        const DWORD type = button.nCommand == m_defaultCommand ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
        CreateControl(_T("Button"), CaptionOf(button), type | WS_TABSTOP, button.nCommand);
    }
    SetDefID(static_cast<UINT>(m_defaultCommand));
}

CString CSkinMessageBox::CheckBoxCaption() const {
    return m_strings[(m_style & MB_DONOTSHOWAGAIN) != 0 ? StringDoNotShowAgain : StringRememberAnswer];
}

void CSkinMessageBox::EnableControls(BOOL enable) {
    for (const tagMSGBOXBTN& button : m_buttons) {
        GetDlgItem(button.nCommand)->EnableWindow(enable);
    }
    if (HasCheckBox()) {
        GetDlgItem(ControlCheckBox)->EnableWindow(enable);
    }
}

// While nothing can be pressed the box itself has the keyboard.
void CSkinMessageBox::FocusDefaultButton() {
    if (IsBlocked()) {
        SetFocus();
    } else {
        // Not by SetFocus: that activates the box, which makes its first button look like the default one.
        GotoDlgCtrl(GetDlgItem(m_defaultCommand));
    }
}

BOOL CSkinMessageBox::PreTranslateMessage(MSG* message) {
    if (message->message == WM_KEYDOWN && (IsBlocked() || OnKey(static_cast<UINT>(message->wParam)))) {
        return TRUE;
    }
    if (message->message == WM_CHAR && message->wParam == CONTROL_C) {
        SendMessage(WM_COPY);
        return TRUE;
    }
    return CSkinDialog::PreTranslateMessage(message);
}

BOOL CSkinMessageBox::OnKey(UINT key) {
    switch (key) {
        case VK_RETURN:
            PressEnter();
            return TRUE;
        case VK_ESCAPE:
        case VK_CANCEL:
            PressEscape();
            return TRUE;
        case VK_F1:
            OnHelp();
            return TRUE;
        default:
            return FALSE;
    }
}

void CSkinMessageBox::PressEnter() {
    const HWND focus = ::GetFocus();
    const int command = focus != nullptr && ::GetParent(focus) == m_hWnd ? ::GetDlgCtrlID(focus) : 0;
    if (HasButton(command)) {
        m_defaultCommand = command;
    }
    EndDialog(m_defaultCommand);
}

void CSkinMessageBox::PressEscape() {
    if (m_escapeCommand != 0) {
        EndDialog(m_escapeCommand);
    }
}

void CSkinMessageBox::OnClose() {
    if (!IsBlocked()) {
        PressEscape();
    }
}

// Only a button of the box ends it: other commands come from somebody who mistakes it for another dialog.
BOOL CSkinMessageBox::OnCommand(WPARAM wParam, LPARAM) {
    const int command = LOWORD(wParam);
    if (HIWORD(wParam) == BN_CLICKED && HasButton(command) && !IsBlocked()) {
        command == IDHELP ? OnHelp() : EndDialog(command);
    }
    return TRUE;
}

void CSkinMessageBox::OnHelp() {
    if (const HWND owner = ::GetWindow(m_hWnd, GW_OWNER)) {
        HELPINFO info = {};
        info.cbSize = sizeof(info);
        info.iContextType = HELPINFO_WINDOW;
        info.hItemHandle = m_hWnd;
        info.dwContextId = m_helpContext;
        ::GetCursorPos(&info.MousePos);
        ::SendMessageW(owner, WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
    }
}

BOOL CSkinMessageBox::OnHelpInfo(HELPINFO*) {
    OnHelp();
    return TRUE;
}

void CSkinMessageBox::StartCountdown() {
    if (m_seconds == 0) {
        return;
    }
    if (m_secondsDisabled) {
        EnableControls(FALSE);
    }
    SetTimer(TIMER_COUNTDOWN, SECOND);
}

void CSkinMessageBox::OnTimer(UINT_PTR id) {
    if (id != TIMER_COUNTDOWN) {
        CSkinDialog::OnTimer(id);
        return;
    }
    if (m_seconds == 0) {
        return;
    }
    if (--m_seconds == 0) {
        KillTimer(TIMER_COUNTDOWN);
        if (m_secondsDisabled) {
            EnableControls(TRUE);
            if (::GetActiveWindow() == m_hWnd) {
                FocusDefaultButton();
            }
        } else {
            EndDialog(m_defaultCommand);
        }
    }
    ShowCountdown();
}

void CSkinMessageBox::ShowCountdown() {
    for (const tagMSGBOXBTN& button : m_buttons) {
        if (button.nCommand == m_defaultCommand) {
            SetDlgItemText(button.nCommand, CaptionOf(button));
        }
    }
}

LRESULT CSkinMessageBox::OnCopy(WPARAM, LPARAM) {
    kadata::CopyTextToClipboard(m_hWnd, TextForClipboard());
    return 0;
}

// As the system's box has it: title, message and captions between lines, the captions without "&" and with blanks behind them.
CString CSkinMessageBox::TextForClipboard() const {
    static constexpr LPCTSTR LINE = _T("---------------------------\r\n");
    CString buttons;
    for (const tagMSGBOXBTN& button : m_buttons) {
        buttons += kadata::WithoutMnemonic(CaptionOf(button)) + _T("   ");
    }
    return LINE + m_title + _T("\r\n") + LINE + kadata::WithReturns(m_message) + _T("\r\n") + LINE + buttons + _T("\r\n") + LINE;
}
