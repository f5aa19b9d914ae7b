#include "afx_dialog.h"

#include "afx_app.h"
#include "afx_message_map.h"
#include "afx_modal_loop.h"
#include "afx_resource.h"

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
ON_MESSAGE(WM_INITDIALOG, OnInitDialogMessage)
ON_COMMAND(IDOK, OnIdOk)
ON_COMMAND(IDCANCEL, OnIdCancel)
END_MESSAGE_MAP()

namespace {

constexpr WORD kExtendedSignature = 0xFFFF;  // behind version 1, in place of a style

constexpr DWORD kSmallestTemplate = 24;  // a header, and no menu, class and title

// What both kinds of template say of the dialog's place.
struct Placement {
    DWORD style;
    WORD x;
    WORD y;
};

Placement PlacementOf(LPCDLGTEMPLATE dialogTemplate) {
    const auto* const bytes = reinterpret_cast<const BYTE*>(dialogTemplate);
    const auto wordAt = [bytes](std::size_t offset) { return static_cast<WORD>(bytes[offset] | bytes[offset + 1] << 8); };
    const auto longAt = [&](std::size_t offset) { return wordAt(offset) | static_cast<DWORD>(wordAt(offset + 2)) << 16; };
    if (wordAt(0) == 1 && wordAt(2) == kExtendedSignature) {  // version, signature, help, extended style, style, count, place
        return {longAt(12), wordAt(18), wordAt(20)};
    }
    return {longAt(0), wordAt(10), wordAt(12)};  // style, extended style, count, place
}

bool IsInputMessage(UINT message) {
    return (message >= WM_KEYFIRST && message <= WM_KEYLAST) || (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST);
}

// Disables the owner of a modal dialog, and puts it back as it was: the system enables it in any case when the dialog ends.
class DisabledOwner {
public:
    explicit DisabledOwner(HWND owner) : m_owner(owner), m_enabled(owner != nullptr && ::IsWindowEnabled(owner)) {
        Enable(false);
    }
    DisabledOwner(const DisabledOwner&) = delete;
    DisabledOwner& operator=(const DisabledOwner&) = delete;
    ~DisabledOwner() { PutBack(); }
    // Before the dialog's window goes: else the system activates somebody else's.
    void PutBack() { Enable(m_enabled); }

private:
    void Enable(bool enable) const {
        if (m_owner != nullptr && enable != (::IsWindowEnabled(m_owner) != 0)) {
            ::EnableWindow(m_owner, enable);
        }
    }

    const HWND m_owner;
    const bool m_enabled;
};

}  // namespace

CDialog::CDialog(LPCTSTR templateName, CWnd* parent) : m_lpszTemplateName(templateName), m_pParentWnd(parent) {}

CDialog::CDialog(UINT templateId, CWnd* parent) : CDialog(MAKEINTRESOURCEW(static_cast<WORD>(templateId)), parent) {}

BOOL CDialog::InitModalIndirect(LPCDLGTEMPLATE dialogTemplate, CWnd* parent) {
    if (m_lpszTemplateName != nullptr || m_dialogTemplate != nullptr) {
        return FALSE;
    }
    m_dialogTemplate = dialogTemplate;
    m_pParentWnd = parent;
    return dialogTemplate != nullptr;
}

LPCDLGTEMPLATE CDialog::FindTemplate(LPCTSTR name) const {
    const HINSTANCE module = AfxFindResourceHandle(name, RT_DIALOG);
    const HRSRC resource = ::FindResourceW(module, name, RT_DIALOG);
    const bool whole = resource != nullptr && ::SizeofResource(module, resource) >= kSmallestTemplate;
    const HGLOBAL data = whole ? ::LoadResource(module, resource) : nullptr;
    return data != nullptr ? static_cast<LPCDLGTEMPLATE>(::LockResource(data)) : nullptr;
}

BOOL CDialog::Create(LPCTSTR templateName, CWnd* parent) {
    return CreateIndirect(FindTemplate(templateName), parent);
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE dialogTemplate, CWnd* parent) {
    if (m_hWnd != nullptr || dialogTemplate == nullptr) {
        return FALSE;
    }
    return CreateFrom(dialogTemplate, HandleOf(parent != nullptr ? parent : AfxGetMainWnd()));
}

// The object may be gone afterwards when the result is FALSE.
BOOL CDialog::CreateFrom(LPCDLGTEMPLATE dialogTemplate, HWND parent) {
    const Placement place = PlacementOf(dialogTemplate);
    m_autoCenter = (place.style & (DS_CENTER | DS_CENTERMOUSE | DS_ABSALIGN | WS_CHILD)) == 0 && place.x == 0 && place.y == 0;
    const HWND dialog = ::CreateDialogIndirectParamW(AfxGetInstanceHandle(), dialogTemplate, parent, &CDialog::DialogProc,
                                                     reinterpret_cast<LPARAM>(this));
    return dialog != nullptr && ::IsWindow(dialog);
}

INT_PTR CALLBACK CDialog::DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message != WM_INITDIALOG || CWnd::FromHandlePermanent(dialog) != nullptr) {
        return FALSE;
    }
    auto* const object = reinterpret_cast<CDialog*>(lParam);
    object->SubclassWindow(dialog);
    return AfxCallWndProc(object, dialog, message, wParam, lParam);
}

LRESULT CDialog::OnInitDialogMessage(WPARAM /*wParam*/, LPARAM /*lParam*/) {
    const HWND dialog = m_hWnd;
    CRect before;
    CRect after;
    ::GetWindowRect(dialog, &before);
    BOOL focus = FALSE;
    try {
        focus = OnInitDialog();
    } catch (...) {
        EndDialog(-1);
        throw;
    }
    ::GetWindowRect(dialog, &after);
    if (FromHandlePermanent(dialog) == this && after == before && !::IsWindowVisible(dialog) && CheckAutoCenter()) {
        CenterWindow();
    }
    return focus;
}

// The top-level window that the dialog of `parent` belongs to: one above it, and of those the last that is a window to itself.
HWND CDialog::OwnerFor(CWnd* parent) {
    const HWND window = HandleOf(parent != nullptr ? parent : AfxGetMainWnd());
    const HWND top = window != nullptr ? ::GetAncestor(window, GA_ROOT) : nullptr;
    return top != nullptr && parent == nullptr ? ::GetLastActivePopup(top) : top;
}

INT_PTR CDialog::DoModal() {
    const LPCDLGTEMPLATE dialogTemplate = m_dialogTemplate != nullptr ? m_dialogTemplate : FindTemplate(m_lpszTemplateName);
    if (dialogTemplate == nullptr || m_hWnd != nullptr) {
        return -1;
    }
    return RunModal(dialogTemplate, OwnerFor(m_pParentWnd));
}

// Nothing of the object is used after the loop was lost: it may have ended with its window.
INT_PTR CDialog::RunModal(LPCDLGTEMPLATE dialogTemplate, HWND owner) {
    DisabledOwner disabled(owner);
    AfxModalLoop loop;
    m_modalLoop = &loop;
    const bool made = CreateFrom(dialogTemplate, owner);
    if (loop.lost) {
        return loop.result;
    }
    if (made && !loop.ended) {
        const bool silent = (GetStyle() & DS_NOIDLEMSG) != 0;
        RunModalLoop(MLF_SHOWONIDLE | (silent ? MLF_NOIDLEMSG : 0));
    }
    if (loop.lost) {
        return loop.result;
    }
    m_modalLoop = nullptr;
    if (m_hWnd != nullptr) {
        SetWindowPos(nullptr, 0, 0, 0, 0, SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
    }
    const bool active = owner != nullptr && m_hWnd != nullptr && ::GetActiveWindow() == m_hWnd;
    disabled.PutBack();
    if (active) {
        ::SetActiveWindow(owner);
    }
    const int result = loop.ended ? loop.result : -1;
    DestroyWindow();
    return result;
}

void CDialog::EndDialog(int result) {
    EndModalLoop(result);
    ::EndDialog(m_hWnd, result);
}

BOOL CDialog::PreTranslateMessage(MSG* message) {
    return m_hWnd != nullptr && IsInputMessage(message->message) && ::IsDialogMessageW(m_hWnd, message);
}
