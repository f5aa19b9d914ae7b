#pragma once

// Dialogs: windows made from a template, with the controls in it, and their keyboard.
//
// A template is a DLGTEMPLATE with DLGITEMTEMPLATEs, or its extended form (version 1, signature 0xFFFF), as the resource compiler
// writes them (RT_DIALOG); the layouts are documented under "Dialog Templates". Its lengths are in dialog units: a quarter of the
// mean character width and an eighth of the height of the dialog's font. A template of a module's resources is read within the
// bytes of that resource; one that is damaged makes no dialog. Text of a template found elsewhere is trusted to end.
//
// Everything is to be called in the dialog's thread, but what only reads or sets a control's text or state. Functions given a
// window that does not exist fail with ERROR_INVALID_WINDOW_HANDLE.

#include "message_queue.h"

// Styles of dialogs.
constexpr DWORD DS_ABSALIGN = 0x0001;  // x and y are of the screen, not of the owner's client area
constexpr DWORD DS_SYSMODAL = 0x0002;  // above all other windows
constexpr DWORD DS_3DLOOK = 0x0004;
constexpr DWORD DS_FIXEDSYS = 0x0008;
constexpr DWORD DS_NOFAILCREATE = 0x0010;  // a control that cannot be made is left out
constexpr DWORD DS_LOCALEDIT = 0x0020;
constexpr DWORD DS_SETFONT = 0x0040;  // the template has a font; else it is SYSTEM_FONT
constexpr DWORD DS_MODALFRAME = 0x0080;
constexpr DWORD DS_NOIDLEMSG = 0x0100;  // the owner gets no WM_ENTERIDLE
constexpr DWORD DS_SETFOREGROUND = 0x0200;
constexpr DWORD DS_CONTROL = 0x0400;  // a part of another dialog: no caption, and its controls join in the other's keyboard
constexpr DWORD DS_CENTER = 0x0800;   // in the work area of the owner's monitor
constexpr DWORD DS_CENTERMOUSE = 0x1000;
constexpr DWORD DS_CONTEXTHELP = 0x2000;
constexpr DWORD DS_SHELLFONT = DS_SETFONT | DS_FIXEDSYS;

// Packed as the documentation has it. Strings and numbers of varying length follow; items begin at multiples of four bytes.
#pragma pack(push, 2)
struct DLGTEMPLATE {
    DWORD style;
    DWORD dwExtendedStyle;
    WORD cdit;  // how many items follow
    SHORT x;
    SHORT y;
    SHORT cx;
    SHORT cy;
};
struct DLGITEMTEMPLATE {
    DWORD style;
    DWORD dwExtendedStyle;
    SHORT x;
    SHORT y;
    SHORT cx;
    SHORT cy;
    WORD id;
};
#pragma pack(pop)
using LPDLGTEMPLATEW = DLGTEMPLATE*;
using LPDLGTEMPLATE = DLGTEMPLATE*;
using LPCDLGTEMPLATEW = const DLGTEMPLATE*;
using LPCDLGTEMPLATE = const DLGTEMPLATE*;
using LPDLGITEMTEMPLATE = DLGITEMTEMPLATE*;

// Commands of the usual buttons.
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDABORT = 3;
constexpr int IDRETRY = 4;
constexpr int IDIGNORE = 5;
constexpr int IDYES = 6;
constexpr int IDNO = 7;
constexpr int IDCLOSE = 8;
constexpr int IDHELP = 9;
constexpr int IDTRYAGAIN = 10;
constexpr int IDCONTINUE = 11;

// The default button: the one that Enter presses. DM_GETDEFID gives MAKELRESULT(its number, DC_HASDEFID), or 0; DM_SETDEFID
// (number; 0) moves it. DM_REPOSITION moves a top-level dialog onto the work area.
constexpr UINT DM_GETDEFID = 0x0400;
constexpr UINT DM_SETDEFID = 0x0401;
constexpr UINT DM_REPOSITION = 0x0402;
constexpr WORD DC_HASDEFID = 0x534B;

// What a control answers to WM_GETDLGCODE (the key or 0; the MSG or null): input that it takes itself, and what it is.
constexpr LRESULT DLGC_WANTARROWS = 0x0001;
constexpr LRESULT DLGC_WANTTAB = 0x0002;
constexpr LRESULT DLGC_WANTALLKEYS = 0x0004;
constexpr LRESULT DLGC_WANTMESSAGE = 0x0004;
constexpr LRESULT DLGC_HASSETSEL = 0x0008;
constexpr LRESULT DLGC_DEFPUSHBUTTON = 0x0010;
constexpr LRESULT DLGC_UNDEFPUSHBUTTON = 0x0020;
constexpr LRESULT DLGC_RADIOBUTTON = 0x0040;
constexpr LRESULT DLGC_WANTCHARS = 0x0080;
constexpr LRESULT DLGC_STATIC = 0x0100;
constexpr LRESULT DLGC_BUTTON = 0x2000;

// Selects text in controls with DLGC_HASSETSEL (from; to).
constexpr UINT EM_SETSEL = 0x00B1;

// Offsets into a dialog's extra bytes: the result of a message its procedure has done with, that procedure, a value of the
// program's. A class of dialogs of one's own has at least DLGWINDOWEXTRA extra bytes and uses DefDlgProcW.
constexpr int DWLP_MSGRESULT = 0;
constexpr int DWLP_DLGPROC = 8;
constexpr int DWLP_USER = 16;
constexpr int DLGWINDOWEXTRA = 30;

// Gets a dialog's messages from WM_SETFONT and WM_INITDIALOG on. FALSE: DefDlgProcW goes on. TRUE: done with, the result is in
// DWLP_MSGRESULT; of WM_CTLCOLOR*, WM_COMPAREITEM, WM_QUERYDRAGICON and WM_INITDIALOG what it returns is the result.
// WM_INITDIALOG (the control that shall get the focus; the caller's parameter): TRUE sets that focus. It must not throw: the
// exception ends the program.
using DLGPROC = INT_PTR(CALLBACK*)(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam);

// A modeless dialog; shown if the template has WS_VISIBLE. The caller destroys it with DestroyWindow and hands its messages to
// IsDialogMessageW. Null, nothing left behind: with the last error as FindResourceW or CreateWindowExW set it (a control's class
// that there is not: ERROR_CANNOT_FIND_WND_CLASS), ERROR_INVALID_PARAMETER for a null template or ERROR_INVALID_DATA for a
// damaged one, ERROR_NOT_ENOUGH_MEMORY; also when WM_INITDIALOG has destroyed it.
KADATA_API HWND CreateDialogIndirectParamW(HINSTANCE instance, LPCDLGTEMPLATE dialog_template, HWND owner, DLGPROC procedure,
                                           LPARAM parameter) noexcept;
KADATA_API HWND CreateDialogParamW(HINSTANCE instance, LPCWSTR name, HWND owner, DLGPROC procedure, LPARAM parameter) noexcept;
inline HWND CreateDialogIndirectW(HINSTANCE instance, LPCDLGTEMPLATE dialog_template, HWND owner, DLGPROC procedure) noexcept {
    return CreateDialogIndirectParamW(instance, dialog_template, owner, procedure, 0);
}
inline HWND CreateDialogW(HINSTANCE instance, LPCWSTR name, HWND owner, DLGPROC procedure) noexcept {
    return CreateDialogParamW(instance, name, owner, procedure, 0);
}

// A modal dialog: its owner (the top-level window of `owner`) is disabled until it ends, messages are served meanwhile; one that
// was disabled before stays so. It is shown when the queue is empty for the first time, WS_VISIBLE or not. What
// EndDialog was given; 0 with ERROR_INVALID_WINDOW_HANDLE for an owner that does not exist, -1 when the dialog cannot be made.
// WM_QUIT ends it, too, and is posted again. The owner gets WM_ENTERIDLE (MSGF_DIALOGBOX; the dialog) when the queue is empty. A
// dialog that is destroyed without EndDialog ends with 0.
KADATA_API INT_PTR DialogBoxIndirectParamW(HINSTANCE instance, LPCDLGTEMPLATE dialog_template, HWND owner, DLGPROC procedure,
                                           LPARAM parameter) noexcept;
KADATA_API INT_PTR DialogBoxParamW(HINSTANCE instance, LPCWSTR name, HWND owner, DLGPROC procedure, LPARAM parameter) noexcept;
inline INT_PTR DialogBoxIndirectW(HINSTANCE instance, LPCDLGTEMPLATE dialog_template, HWND owner, DLGPROC procedure) noexcept {
    return DialogBoxIndirectParamW(instance, dialog_template, owner, procedure, 0);
}
inline INT_PTR DialogBoxW(HINSTANCE instance, LPCWSTR name, HWND owner, DLGPROC procedure) noexcept {
    return DialogBoxParamW(instance, name, owner, procedure, 0);
}

// Hides a modal dialog, enables its owner, and ends its loop when the procedure returns; DialogBox destroys it then. The last
// result counts. A dialog that ends in WM_INITDIALOG is never shown and gets no focus. FALSE for a window that is no dialog.
KADATA_API BOOL EndDialog(HWND dialog, INT_PTR result) noexcept;

// What a dialog does with its messages: asks its DLGPROC, then paints its background (WM_CTLCOLORDLG), keeps the focus while it
// is inactive, serves DM_*, WM_NEXTDLGCTL and WM_GETFONT, and makes WM_CLOSE the command IDCANCEL.
KADATA_API LRESULT DefDlgProcW(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) noexcept;

// Serves a message for the dialog or a control of it, keyboard included: Tab, arrows within a WS_GROUP, Enter, Escape, and the
// characters after "&" in texts. FALSE when it is for none of them; then nothing was done.
KADATA_API BOOL IsDialogMessageW(HWND dialog, LPMSG message) noexcept;

// From dialog units to pixels; FALSE for what is no dialog. GetDialogBaseUnits: MAKELONG(mean width, height) of SYSTEM_FONT.
KADATA_API BOOL MapDialogRect(HWND dialog, LPRECT rect) noexcept;
KADATA_API LONG GetDialogBaseUnits() noexcept;

// The control before or behind `control`: with WS_TABSTOP, or in the group that begins with WS_GROUP. Hidden and disabled ones
// are left out, children of WS_EX_CONTROLPARENT windows count, the last is followed by the first. GetNextDlgTabItem of null: the
// first, or with `previous` the last. `control` itself when there is no other.
KADATA_API HWND GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous) noexcept;
KADATA_API HWND GetNextDlgGroupItem(HWND dialog, HWND control, BOOL previous) noexcept;

// Controls by their numbers. Any window will do as `dialog`. With ERROR_CONTROL_ID_NOT_FOUND (null, FALSE, 0) when there is no
// such child.
KADATA_API HWND GetDlgItem(HWND dialog, int id) noexcept;
KADATA_API LRESULT SendDlgItemMessageW(HWND dialog, int id, UINT message, WPARAM wparam, LPARAM lparam) noexcept;
KADATA_API BOOL SetDlgItemTextW(HWND dialog, int id, LPCWSTR text) noexcept;
KADATA_API UINT GetDlgItemTextW(HWND dialog, int id, LPWSTR text, int capacity) noexcept;  // empty when there is none

// A decimal number as text. GetDlgItemInt skips blanks before and ends at the first character that is no digit; `translated`
// (which may be null) becomes FALSE, the result 0, for no digits, too large a number, and "-" without `is_signed`.
KADATA_API BOOL SetDlgItemInt(HWND dialog, int id, UINT value, BOOL is_signed) noexcept;
KADATA_API UINT GetDlgItemInt(HWND dialog, int id, BOOL* translated, BOOL is_signed) noexcept;

// BST_* of a button. CheckRadioButton checks one and unchecks the others from `first` to `last`.
KADATA_API BOOL CheckDlgButton(HWND dialog, int id, UINT state) noexcept;
KADATA_API UINT IsDlgButtonChecked(HWND dialog, int id) noexcept;
KADATA_API BOOL CheckRadioButton(HWND dialog, int first, int last, int checked) noexcept;
