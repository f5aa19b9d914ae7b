#pragma once

// Dialogs made from templates.

#include "afx_wnd.h"

// A dialog's object has its window from WM_INITDIALOG on; that of a control that was subclassed in OnInitDialog from then on.
// Nothing is owned but the window.
class KADATA_API CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)

public:
    // For Create and InitModalIndirect.
    CDialog() = default;
    // For DoModal: the template of that name or number, in the module that AfxFindResourceHandle tells. Without a parent, the
    // application's main window is the owner. A text must live as long as the dialog.
    explicit CDialog(LPCTSTR templateName, CWnd* parent = nullptr);
    explicit CDialog(UINT templateId, CWnd* parent = nullptr);

    // Shows the dialog until EndDialog, whose result it returns; -1 when it could not be made, or ended otherwise. Its owner is
    // disabled meanwhile. The dialog's window is gone afterwards; the object may be used again.
    virtual INT_PTR DoModal();
    // A template in memory for DoModal, which must stay there until then. FALSE when the object has another one.
    BOOL InitModalIndirect(LPCDLGTEMPLATE dialogTemplate, CWnd* parent = nullptr);

    // A modeless dialog; it must not be ended by EndDialog. FALSE when it could not be made; PostNcDestroy is called only if the
    // object has had the window.
    BOOL Create(LPCTSTR templateName, CWnd* parent = nullptr);
    BOOL Create(UINT templateId, CWnd* parent = nullptr) {
        return Create(MAKEINTRESOURCEW(static_cast<WORD>(templateId)), parent);
    }
    BOOL CreateIndirect(LPCDLGTEMPLATE dialogTemplate, CWnd* parent = nullptr);

    // Ends a modal dialog when its message has been handled. The window is hidden at once.
    virtual void EndDialog(int result);
    // FALSE: the focus was set here; TRUE: it goes to the first control that takes it.
    virtual BOOL OnInitDialog() { return TRUE; }
    // The commands IDOK and IDCANCEL, Enter and Escape among them.
    virtual void OnOK() { EndDialog(IDOK); }
    virtual void OnCancel() { EndDialog(IDCANCEL); }

    void SetDefID(UINT id) { SendMessage(DM_SETDEFID, id); }
    // The number in the lower half, DC_HASDEFID in the upper; 0 without one.
    DWORD GetDefID() const { return static_cast<DWORD>(SendMessage(DM_GETDEFID)); }
    void NextDlgCtrl() const { SendMessage(WM_NEXTDLGCTL); }
    void PrevDlgCtrl() const { SendMessage(WM_NEXTDLGCTL, 1); }
    void GotoDlgCtrl(CWnd* control) { SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control->m_hWnd), TRUE); }
    // Dialog units to pixels.
    void MapDialogRect(LPRECT rect) const { ::MapDialogRect(m_hWnd, rect); }

    // Gives keys and mouse messages to IsDialogMessage.
    BOOL PreTranslateMessage(MSG* message) override;

protected:
    using CWnd::Create;
    // Whether the dialog is to be centred after OnInitDialog: its template tells no position.
    virtual BOOL CheckAutoCenter() { return m_autoCenter; }

    DECLARE_MESSAGE_MAP()

private:
    static INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    static HWND OwnerFor(CWnd* parent);
    LPCDLGTEMPLATE FindTemplate(LPCTSTR name) const;
    BOOL CreateFrom(LPCDLGTEMPLATE dialogTemplate, HWND parent);
    INT_PTR RunModal(LPCDLGTEMPLATE dialogTemplate, HWND owner);
    LRESULT OnInitDialogMessage(WPARAM wParam, LPARAM lParam);
    void OnIdOk() { OnOK(); }
    void OnIdCancel() { OnCancel(); }

    LPCTSTR m_lpszTemplateName = nullptr;       // DoModal's, a number or a text
    LPCDLGTEMPLATE m_dialogTemplate = nullptr;  // the same, in memory
    CWnd* m_pParentWnd = nullptr;
    bool m_autoCenter = false;
};
