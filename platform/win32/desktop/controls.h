#pragma once

// The controls that the system has: "Button" and "Static". There is no other; a program brings its own.
//
// A control tells its parent what the user does: WM_COMMAND (MAKEWPARAM(its number, BN_* or STN_*); its window). It asks the
// parent for colours before it draws: WM_CTLCOLORBTN or WM_CTLCOLORSTATIC (the device context; its window) with a brush as the
// result. Its font is WM_SETFONT's (font; whether to draw anew), which it does not own; null is SYSTEM_FONT.

#include "../gdi/gdi_types.h"

// Kinds of buttons, in the style's lowest four bits.
constexpr DWORD BS_PUSHBUTTON = 0x0000;
constexpr DWORD BS_DEFPUSHBUTTON = 0x0001;  // what Enter presses
constexpr DWORD BS_CHECKBOX = 0x0002;
constexpr DWORD BS_AUTOCHECKBOX = 0x0003;  // changes its state itself when it is clicked
constexpr DWORD BS_RADIOBUTTON = 0x0004;
constexpr DWORD BS_3STATE = 0x0005;
constexpr DWORD BS_AUTO3STATE = 0x0006;
constexpr DWORD BS_GROUPBOX = 0x0007;
constexpr DWORD BS_USERBUTTON = 0x0008;  // as BS_PUSHBUTTON
constexpr DWORD BS_AUTORADIOBUTTON = 0x0009;
constexpr DWORD BS_OWNERDRAW = 0x000B;  // the parent draws it: WM_DRAWITEM
constexpr DWORD BS_TYPEMASK = 0x000F;

constexpr DWORD BS_LEFTTEXT = 0x0020;  // the text is to the left of the box
constexpr DWORD BS_RIGHTBUTTON = BS_LEFTTEXT;
constexpr DWORD BS_TEXT = 0x0000;
constexpr DWORD BS_ICON = 0x0040;    // an icon (BM_SETIMAGE) in place of the text
constexpr DWORD BS_BITMAP = 0x0080;  // a bitmap
constexpr DWORD BS_LEFT = 0x0100;    // push buttons are BS_CENTER without any of the three, others BS_LEFT
constexpr DWORD BS_RIGHT = 0x0200;
constexpr DWORD BS_CENTER = 0x0300;
constexpr DWORD BS_TOP = 0x0400;
constexpr DWORD BS_BOTTOM = 0x0800;
constexpr DWORD BS_VCENTER = 0x0C00;  // the default
constexpr DWORD BS_PUSHLIKE = 0x1000;
constexpr DWORD BS_MULTILINE = 0x2000;
constexpr DWORD BS_NOTIFY = 0x4000;  // tells of focus and double clicks, too
constexpr DWORD BS_FLAT = 0x8000;

// What a button tells. BN_DOUBLECLICKED comes without BS_NOTIFY from BS_RADIOBUTTON and BS_OWNERDRAW, too.
constexpr WORD BN_CLICKED = 0;
constexpr WORD BN_PAINT = 1;
constexpr WORD BN_HILITE = 2;
constexpr WORD BN_PUSHED = BN_HILITE;
constexpr WORD BN_UNHILITE = 3;
constexpr WORD BN_UNPUSHED = BN_UNHILITE;
constexpr WORD BN_DISABLE = 4;
constexpr WORD BN_DOUBLECLICKED = 5;
constexpr WORD BN_DBLCLK = BN_DOUBLECLICKED;
constexpr WORD BN_SETFOCUS = 6;
constexpr WORD BN_KILLFOCUS = 7;

// BM_GETCHECK gives and BM_SETCHECK takes BST_UNCHECKED, BST_CHECKED, BST_INDETERMINATE; push buttons and groups are never
// checked. BM_GETSTATE gives that, BST_PUSHED and BST_FOCUS together. BM_SETSTATE presses it for the eye only. BM_SETSTYLE (the
// style's low word; whether to draw anew). BM_CLICK clicks. BM_SETIMAGE, BM_GETIMAGE (IMAGE_BITMAP or IMAGE_ICON; the handle, not
// owned) give the image before.
constexpr UINT BM_GETCHECK = 0x00F0;
constexpr UINT BM_SETCHECK = 0x00F1;
constexpr UINT BM_GETSTATE = 0x00F2;
constexpr UINT BM_SETSTATE = 0x00F3;
constexpr UINT BM_SETSTYLE = 0x00F4;
constexpr UINT BM_CLICK = 0x00F5;
constexpr UINT BM_GETIMAGE = 0x00F6;
constexpr UINT BM_SETIMAGE = 0x00F7;

constexpr UINT BST_UNCHECKED = 0x0000;
constexpr UINT BST_CHECKED = 0x0001;
constexpr UINT BST_INDETERMINATE = 0x0002;
constexpr UINT BST_PUSHED = 0x0004;
constexpr UINT BST_FOCUS = 0x0008;

// Kinds of static controls, in the style's lowest five bits.
constexpr DWORD SS_LEFT = 0x0000;  // these three break lines
constexpr DWORD SS_CENTER = 0x0001;
constexpr DWORD SS_RIGHT = 0x0002;
constexpr DWORD SS_ICON = 0x0003;  // its text names a resource of its instance; it takes the icon's size
constexpr DWORD SS_BLACKRECT = 0x0004;
constexpr DWORD SS_GRAYRECT = 0x0005;
constexpr DWORD SS_WHITERECT = 0x0006;
constexpr DWORD SS_BLACKFRAME = 0x0007;
constexpr DWORD SS_GRAYFRAME = 0x0008;
constexpr DWORD SS_WHITEFRAME = 0x0009;
constexpr DWORD SS_SIMPLE = 0x000B;  // one line, drawn as it is
constexpr DWORD SS_LEFTNOWORDWRAP = 0x000C;
constexpr DWORD SS_OWNERDRAW = 0x000D;
constexpr DWORD SS_BITMAP = 0x000E;  // as SS_ICON, of a bitmap
constexpr DWORD SS_ETCHEDHORZ = 0x0010;
constexpr DWORD SS_ETCHEDVERT = 0x0011;
constexpr DWORD SS_ETCHEDFRAME = 0x0012;
constexpr DWORD SS_TYPEMASK = 0x001F;

constexpr DWORD SS_REALSIZECONTROL = 0x0040;  // the image is scaled to the control, which keeps its size
constexpr DWORD SS_NOPREFIX = 0x0080;         // "&" is drawn
constexpr DWORD SS_NOTIFY = 0x0100;           // tells of clicks; else they go to the parent
constexpr DWORD SS_CENTERIMAGE = 0x0200;      // an image in the middle, without changing the control's size; text on one line
constexpr DWORD SS_RIGHTJUST = 0x0400;        // the control grows from its lower right corner
constexpr DWORD SS_REALSIZEIMAGE = 0x0800;    // an icon in its own size, not the system's
constexpr DWORD SS_SUNKEN = 0x1000;
constexpr DWORD SS_EDITCONTROL = 0x2000;  // breaks lines as edit controls do
constexpr DWORD SS_ENDELLIPSIS = 0x4000;
constexpr DWORD SS_PATHELLIPSIS = 0x8000;
constexpr DWORD SS_WORDELLIPSIS = 0xC000;
constexpr DWORD SS_ELLIPSISMASK = 0xC000;

// The icon or bitmap (IMAGE_*; the handle, not owned) of an SS_ICON or SS_BITMAP. Setting gives the one before. An image that the
// control has loaded itself is destroyed with it.
constexpr UINT STM_SETICON = 0x0170;
constexpr UINT STM_GETICON = 0x0171;
constexpr UINT STM_SETIMAGE = 0x0172;
constexpr UINT STM_GETIMAGE = 0x0173;

constexpr WORD STN_CLICKED = 0;
constexpr WORD STN_DBLCLK = 1;
constexpr WORD STN_ENABLE = 2;
constexpr WORD STN_DISABLE = 3;

// WM_DRAWITEM (the control's number; lparam): the parent draws the control, and leaves the context as it was.
struct DRAWITEMSTRUCT {
    UINT CtlType;     // ODT_*
    UINT CtlID;       // the control's number
    UINT itemID;      // 0 here
    UINT itemAction;  // ODA_*
    UINT itemState;   // ODS_*
    HWND hwndItem;
    HDC hDC;
    RECT rcItem;
    ULONG_PTR itemData;  // 0 here
};
using LPDRAWITEMSTRUCT = DRAWITEMSTRUCT*;
using PDRAWITEMSTRUCT = DRAWITEMSTRUCT*;

constexpr UINT ODT_MENU = 1;  // in hosts that Windows runs: its hwndItem is no window
constexpr UINT ODT_BUTTON = 4;
constexpr UINT ODT_STATIC = 5;

constexpr UINT ODA_DRAWENTIRE = 0x0001;
constexpr UINT ODA_SELECT = 0x0002;  // only whether it is pressed has changed
constexpr UINT ODA_FOCUS = 0x0004;

constexpr UINT ODS_SELECTED = 0x0001;
constexpr UINT ODS_GRAYED = 0x0002;
constexpr UINT ODS_DISABLED = 0x0004;
constexpr UINT ODS_CHECKED = 0x0008;
constexpr UINT ODS_FOCUS = 0x0010;
constexpr UINT ODS_DEFAULT = 0x0020;
constexpr UINT ODS_HOTLIGHT = 0x0040;
constexpr UINT ODS_INACTIVE = 0x0080;
constexpr UINT ODS_NOACCEL = 0x0100;
constexpr UINT ODS_NOFOCUSRECT = 0x0200;
