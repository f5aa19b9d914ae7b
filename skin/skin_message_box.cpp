// The message box: its opening, its end, and the answers it remembers.

#include <kadata/skin_message_box.h>

#include <cstdint>

#include "message_text.h"

namespace {

constexpr TCHAR ANSWERS[] = _T("SkinMessageBoxes");  // section of the application profile
constexpr int NO_ANSWER = -1;
constexpr DWORD SMALLEST_TEMPLATE = 24;  // bytes: a header, and no menu, class and title

// A dialog of 100 x 50 units without controls, in 8 point "MS Shell Dlg".
constexpr DWORD PLAIN_STYLE = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SHELLFONT;
alignas(DWORD) constexpr WORD PLAIN_TEMPLATE[] = {LOWORD(PLAIN_STYLE),
                                                  HIWORD(PLAIN_STYLE),
                                                  0,
                                                  0,
                                                  0,
                                                  0,
                                                  0,
                                                  100,
                                                  50,
                                                  0,
                                                  0,
                                                  0,
                                                  8,
                                                  'M',
                                                  'S',
                                                  ' ',
                                                  'S',
                                                  'h',
                                                  'e',
                                                  'l',
                                                  'l',
                                                  ' ',
                                                  'D',
                                                  'l',
                                                  'g',
                                                  0};

// Sums up code times position, from 0 on.
int HashOf(const CString& text) {
    std::uint32_t sum = 0;
    for (int i = 0; i < text.GetLength(); ++i) {
        sum += static_cast<std::uint32_t>(text[i]) * static_cast<std::uint32_t>(i);
    }
    return static_cast<int>(sum);
}

}  // namespace

IMPLEMENT_DYNAMIC(CSkinMessageBox, CSkinDialog)

BEGIN_MESSAGE_MAP(CSkinMessageBox, CSkinDialog)
ON_WM_TIMER()
ON_WM_CLOSE()
ON_WM_DESTROY()
ON_WM_HELPINFO()
ON_MESSAGE(WM_COPY, OnCopy)
END_MESSAGE_MAP()

CSkinMessageBox::CSkinMessageBox(CWnd* parent, CString text, CString title, UINT style, UINT helpContext)
    : m_parent(parent), m_message(text), m_title(title), m_style(style), m_helpContext(helpContext) {}

CSkinMessageBox::CSkinMessageBox(CWnd* parent, UINT textID, UINT titleID, UINT style, UINT helpContext)
    : m_parent(parent), m_style(style), m_helpContext(helpContext) {
    SetMessage(textID);
    SetTitle(titleID);
}

CSkinMessageBox::~CSkinMessageBox() {
    DestroyWindow();
}

BOOL CSkinMessageBox::Load(CString& text, UINT resourceID) {
    CString loaded;
    const BOOL found = loaded.LoadString(resourceID);
    if (found) {
        text = loaded;
    }
    return found;
}

BOOL CSkinMessageBox::SetMessageIcon(UINT resourceID) {
    const LPCTSTR name = MAKEINTRESOURCEW(static_cast<WORD>(resourceID));
    const HICON icon = ::LoadIconW(AfxFindResourceHandle(name, RT_GROUP_ICON), name);
    if (icon != nullptr) {
        m_icon = icon;
    }
    return icon != nullptr;
}

void CSkinMessageBox::SetTimeout(UINT seconds, BOOL disabled) {
    m_seconds = seconds;
    m_secondsDisabled = disabled;
}

LPCTSTR CSkinMessageBox::GetIDD() const {
    return _T("CD_SKINMESSAGEBOX");
}

LPCDLGTEMPLATE CSkinMessageBox::FindTemplate() const {
    const LPCTSTR name = GetIDD();
    const HINSTANCE module = AfxFindResourceHandle(name, RT_DIALOG);
    const HRSRC resource = ::FindResourceW(module, name, RT_DIALOG);
    if (resource == nullptr || ::SizeofResource(module, resource) < SMALLEST_TEMPLATE) {
        return reinterpret_cast<LPCDLGTEMPLATE>(PLAIN_TEMPLATE);
    }
    return static_cast<LPCDLGTEMPLATE>(::LockResource(::LoadResource(module, resource)));
}

CString CSkinMessageBox::AnswerKey() const {
    if (!m_keyName.IsEmpty()) {
        return m_keyName;
    }
    CString key;
    key.Format(_T("%d"), m_keyNumber != 0 ? static_cast<int>(m_keyNumber) : HashOf(m_message));
    return key;
}

INT_PTR CSkinMessageBox::DoModal() {
    CWinApp* const app = AfxGetApp();
    if (HasCheckBox() && app != nullptr) {
        const auto answer = static_cast<int>(app->GetProfileInt(ANSWERS, AnswerKey(), NO_ANSWER));
        if (answer != NO_ANSWER) {
            return answer;
        }
    }
    InitModalIndirect(FindTemplate(), m_parent);  // the second time it keeps those of the first
    return CSkinDialog::DoModal();
}

void CSkinMessageBox::EndDialog(int result) {
    CWinApp* const app = AfxGetApp();
    if (HasCheckBox() && app != nullptr && SendDlgItemMessage(ControlCheckBox, BM_GETCHECK) == BST_CHECKED) {
        app->WriteProfileInt(ANSWERS, AnswerKey(), result);
    }
    CSkinDialog::EndDialog(result);
}

void CSkinMessageBox::ResetMessageBoxes() {
    const CWinApp* const app = AfxGetApp();
    if (app == nullptr || app->m_pszRegistryKey == nullptr || app->m_pszProfileName == nullptr) {
        return;
    }
    CString key;
    key.Format(_T("Software\\%s\\%s\\%s"), app->m_pszRegistryKey, app->m_pszProfileName, ANSWERS);
    CWinApp::DelRegTree(HKEY_CURRENT_USER, key);
}

BOOL CSkinMessageBox::OnInitDialog() {
    CSkinDialog::OnInitDialog();
    SetWindowText(m_title);
    CreateStrings();
    ParseStyle();
    Measure();
    CreateControls();
    DefineLayout();
    ApplyWindowStyle();
    StartCountdown();
    FocusDefaultButton();
    return FALSE;
}

void CSkinMessageBox::ApplyWindowStyle() {
    if ((m_style & MB_SYSTEMMODAL) != 0) {
        ModifyStyle(0, DS_SYSMODAL);
    }
    if ((m_style & MB_TOPMOST) != 0) {
        // The style follows from the place: the system ignores it where it is set by itself.
        ::SetWindowPos(m_hWnd, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    if (CMenu* const menu = GetSystemMenu(FALSE); menu != nullptr && m_escapeCommand == 0) {
        menu->EnableMenuItem(SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
    }
    if ((m_style & MB_SETFOREGROUND) != 0) {
        SetForegroundWindow();
    }
}

void CSkinMessageBox::OnDestroy() {
    KillTimer(TIMER_COUNTDOWN);
    CSkinDialog::OnDestroy();
    m_messageText.reset();
    m_buttons.clear();
}

int AfxSkinMessageBox(HWND owner, LPCTSTR text, LPCTSTR title, UINT style) {
    CSkinMessageBox box(CWnd::FromHandle(owner), text, title != nullptr ? title : AfxGetAppName(), style);
    return static_cast<int>(box.DoModal());
}

int AfxSkinMessageBox(LPCTSTR text, UINT style, UINT helpID) {
    CSkinMessageBox box(nullptr, text, AfxGetAppName(), style, helpID);
    return static_cast<int>(box.DoModal());
}

int AfxSkinMessageBox(UINT textResourceID, UINT style, UINT helpID) {
    CSkinMessageBox box(nullptr, CString(), AfxGetAppName(), style, helpID);
    box.SetMessage(textResourceID);
    return static_cast<int>(box.DoModal());
}
