#pragma once

// The message box: the system's message box in the skin, with more buttons, a remembered answer and a countdown.
//
//     if (AfxSkinMessageBox(_T("Delete the picture?"), MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES) ...
//
//     CSkinMessageBox box(this, _T("The machine starts."), _T("Milling"), MB_OKCANCEL);
//     box.SetTimeout(10, FALSE);             // answers itself after ten seconds
//     if (box.DoModal() == IDOK) ...
//
// One thread, that of the user interface. The box opens from the dialog template "CD_SKINMESSAGEBOX" of the host, an empty dialog
// with the font of the host's dialogs; where the host has none, from a plain one of the library, so that an error can be shown in
// any case. Captions of buttons are the caller's (SetString), else the skin's texts (SkinInfo), else plain English.
//
// Buttons
//   The lowest four bits of the style tell the buttons. "*" is the default button, "x" the one that Escape and the close box
//   press; without one Escape does nothing and the close box is greyed.
//     MB_OK, 10 to 15        OK *x
//     MB_OKCANCEL            OK * | Cancel x
//     MB_ABORTRETRYIGNORE    Abort * | Retry | Ignore
//     MB_YESNOCANCEL         Yes * | [command 14] | No | [command 15] | Cancel x
//     MB_YESNO               Yes * | [command 14] | No | [command 15]
//     MB_RETRYCANCEL         Retry * | Cancel x
//     MB_CANCELTRYCONTINUE   Try again | Continue | Cancel *x        Deliberate: Cancel is the last and the default
//     MB_CONTINUEABORT       Continue * | Abort
//     MB_SAVEDISCARDCANCEL   command 16 * | command 17 | Cancel x
//     MB_IGNOREALLCANCEL     Ignore * | command 18 | Cancel x
//   MB_HELP adds Help at the end. MB_DEFBUTTON2 to 6 make another button the default, where there are as many. All buttons have
//   one size, that of the longest caption.
//
// Keys
//   Enter presses the button with the focus, else the default one; Escape and Ctrl+Break the escape button; F1 and a click on
//   Help ask for help. Ctrl+C (and WM_COPY) copies title, message and captions to the clipboard, as the system's box does.
//
// Long texts
//   A message wraps at half the width of the screen and 100 pixels. The box never leaves the work area of the screen: of a
//   message that is too high the beginning is shown, ended by dots; a word that is too wide is broken; buttons and check box are
//   cut. Ctrl+C copies the whole message in any case.
//
// The box understands MB_RIGHT (the message is aligned to the right), MB_SYSTEMMODAL, MB_SETFOREGROUND and MB_TOPMOST, too.

#include <kadata/skin_dialog.h>

#include <array>
#include <memory>
#include <vector>

namespace kadata {
class MessageText;
}

// Further types of buttons.
constexpr UINT MB_CONTINUEABORT = 0x7;
constexpr UINT MB_SAVEDISCARDCANCEL = 0x8;
constexpr UINT MB_IGNOREALLCANCEL = 0x9;

constexpr UINT MB_DEFBUTTON5 = 0x400;
constexpr UINT MB_DEFBUTTON6 = 0x500;

// A check box with which the user asks not to see the box again; the answer is remembered in the application profile, section
// "SkinMessageBoxes", and from then on returned without a box. With the first bit the check box has the caption 14, with the
// second alone 15.
constexpr UINT MB_DONOTSHOWAGAIN = 0x01000000;
constexpr UINT MB_REMEMBERANSWER = 0x02000000;
constexpr UINT MB_YESTOALL = 0x04000000;  // MB_YESNO and MB_YESNOCANCEL: a button with command 14 behind Yes
constexpr UINT MB_NOTOALL = 0x08000000;   // the same: a button with command 15 behind No
constexpr UINT MB_BUTTONSRIGHT = 0x10000000;

// The commands of the box's own buttons.
constexpr int IDYESTOALL = 14;
constexpr int IDNOTOALL = 15;
constexpr int IDSAVE = 16;
constexpr int IDDISCARD = 17;
constexpr int IDIGNOREALL = 18;

class KADATA_API CSkinMessageBox : public CSkinDialog {
    DECLARE_DYNAMIC(CSkinMessageBox)

public:
    // Captions.
    enum EString {
        StringOK = 0,
        StringCancel = 1,
        StringAbort = 2,
        StringRetry = 3,  // Try again, too
        StringIgnore = 4,
        StringIgnoreAll = 5,
        StringContinue = 6,
        StringYes = 7,
        StringYesToAll = 8,
        StringNo = 9,
        StringNoToAll = 10,
        StringSave = 11,
        StringDiscard = 12,
        StringHelp = 13,
        StringDoNotShowAgain = 14,  // of the check box
        StringRememberAnswer = 15,  // of the check box
        STRINGS = 16,
    };

    // Controls of the open box that are no buttons. Buttons have their command as number.
    enum EControl {
        ControlCheckBox = 19,
        ControlIcon = 20,
        ControlMessage = 0xFFFF,
    };

    struct tagMSGBOXBTN {
        int nCommand;
        EString nCaption;
    };

    // The timer of the countdown, which ticks once a second.
    static constexpr UINT_PTR TIMER_COUNTDOWN = 2201;

    // Without a parent, the application's main window is the owner. The help context goes to the owner in HELPINFO.
    explicit CSkinMessageBox(CWnd* parent, CString text = CString(), CString title = CString(), UINT style = MB_OK,
                             UINT helpContext = 0);
    // Texts from the host's resources; empty where there are none.
    CSkinMessageBox(CWnd* parent, UINT textID, UINT titleID, UINT style = MB_OK, UINT helpContext = 0);
    ~CSkinMessageBox() override;

    // All setters are for before DoModal. The forms with a resource return FALSE, with nothing changed, where it is missing.
    void SetMessage(const CString& text) { m_message = text; }
    BOOL SetMessage(UINT resourceID) { return Load(m_message, resourceID); }
    const CString& GetMessage() const { return m_message; }
    void SetTitle(const CString& title) { m_title = title; }
    BOOL SetTitle(UINT resourceID) { return Load(m_title, resourceID); }
    const CString& GetTitle() const { return m_title; }
    void SetStyle(UINT style) { m_style = style; }
    // Deliberate: hides CWnd's, which tells the style of the window.
    UINT GetStyle() const { return m_style; }
    void SetHelpContext(UINT helpContext) { m_helpContext = helpContext; }
    UINT GetHelpContext() const { return m_helpContext; }

    // Wins over the icon of the style. The icon stays the caller's; null is that of the style again.
    void SetMessageIcon(HICON icon) { m_icon = icon; }
    BOOL SetMessageIcon(UINT resourceID);

    // "&" marks the key. An empty text is the default again.
    void SetString(EString which, const CString& text);
    BOOL SetString(EString which, UINT resourceID);
    // Empty for a default that has not been needed yet.
    CString GetString(EString which) const;

    // After so many seconds the box ends with the command of its default button, whose caption tells how many are left; 0 is no
    // countdown. With `disabled` it does not end: instead nothing can be pressed before, neither button, key nor close box.
    void SetTimeout(UINT seconds, BOOL disabled);
    // What is left while the box is open, and afterwards.
    UINT GetTimeoutSeconds() const { return m_seconds; }
    BOOL GetTimeoutDisabled() const { return m_secondsDisabled; }

    // Under what the answer is remembered: the name, else the number unless it is 0, else a number made of the message, so that
    // boxes with the same message share one answer.
    void SetRegistryKey(const CString& name) { m_keyName = name; }
    void SetRegistryKey(UINT number) { m_keyNumber = number; }
    // Forgets all remembered answers of the application; those under a registry key of the application (SetRegistryKey) only.
    static void ResetMessageBoxes();

    // The command that ended the box, or the remembered answer: any number but -1. -1 when there was no box to be had.
    INT_PTR DoModal() override;
    // Remembers the result where the check box says so.
    void EndDialog(int result) override;
    BOOL OnInitDialog() override;
    BOOL PreTranslateMessage(MSG* message) override;

protected:
    // The name of the dialog template.
    virtual LPCTSTR GetIDD() const;
    // Help was asked for. The default sends WM_HELP to the owner as the system's box does: HELPINFO_WINDOW, the box's window,
    // control 0, the help context.
    virtual void OnHelp();

    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;

    afx_msg void OnTimer(UINT_PTR id);
    afx_msg void OnClose();
    afx_msg void OnDestroy();
    afx_msg BOOL OnHelpInfo(HELPINFO* info);
    LRESULT OnCopy(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    static BOOL Load(CString& text, UINT resourceID);
    LPCDLGTEMPLATE FindTemplate() const;

    // Texts and buttons of the style.
    void CreateStrings();
    void ParseStyle();
    CString CaptionOf(const tagMSGBOXBTN& button) const;
    CString CheckBoxCaption() const;
    bool HasButton(int command) const;
    bool HasCheckBox() const { return (m_style & (MB_DONOTSHOWAGAIN | MB_REMEMBERANSWER)) != 0; }

    // Sizes and places, in pixels.
    int XDialogUnitToPixel(int units);
    int YDialogUnitToPixel(int units);
    void MeasureDialogUnits();
    void Measure();
    void MeasureIcon();
    void MeasureCheckBox(CDC& dc);
    void MeasureButtons(CDC& dc);
    void MeasureMessage(CDC& dc);
    CSize RoomForMessage();
    CPoint MessagePlace();
    int ButtonRowWidth();
    void DefineLayout();
    void PlaceButtons(CSize client);
    CSize LargestClient();

    // Controls.
    void CreateControls();
    HWND CreateControl(LPCTSTR className, const CString& text, DWORD style, int id);
    void ApplyWindowStyle();
    void EnableControls(BOOL enable);
    void FocusDefaultButton();

    // Keys, countdown, answers.
    bool IsBlocked() const { return m_secondsDisabled && m_seconds > 0; }
    BOOL OnKey(UINT key);
    void PressEnter();
    void PressEscape();
    CString TextForClipboard() const;
    void StartCountdown();
    void ShowCountdown();
    CString AnswerKey() const;

    CWnd* m_parent;
    CString m_message;
    CString m_title;
    UINT m_style;
    UINT m_helpContext;
    HICON m_icon = nullptr;
    std::array<CString, STRINGS> m_strings;
    UINT m_seconds = 0;
    BOOL m_secondsDisabled = FALSE;
    CString m_keyName;
    UINT m_keyNumber = 0;

    // Of the open box.
    std::vector<tagMSGBOXBTN> m_buttons;  // from left to right
    int m_defaultCommand = 0;
    int m_escapeCommand = 0;  // 0: none
    HICON m_shownIcon = nullptr;
    CString m_shownMessage;  // the message as far as the screen has room
    CSize m_iconSize;
    CSize m_messageSize;
    CSize m_checkBoxSize;
    CSize m_buttonSize;
    CSize m_thousandUnits;  // in pixels; 0 until they are measured
    std::unique_ptr<kadata::MessageText> m_messageText;
};

// Show a box and return its result, as DoModal does. The title of the first two is the application's name, and so is a title
// that is null. Null texts are empty.
KADATA_API int AfxSkinMessageBox(LPCTSTR text, UINT style = MB_OK, UINT helpID = 0);
KADATA_API int AfxSkinMessageBox(UINT textResourceID, UINT style = MB_OK, UINT helpID = 0);
KADATA_API int AfxSkinMessageBox(HWND owner, LPCTSTR text, LPCTSTR title, UINT style = MB_OK);
