#pragma once

// Numbers of the messages that windows get, and of what their parameters hold. Each message is described where it is sent:
// painting.h, input.h, window_tree.h, ...
//
// A message's parameters are named in the comments as (wparam; lparam). The result is 0 unless a comment says otherwise.

#include "../gdi/gdi_types.h"
#include "virtual_keys.h"

// A window's life.
constexpr UINT WM_NULL = 0x0000;
constexpr UINT WM_CREATE = 0x0001;
constexpr UINT WM_DESTROY = 0x0002;
constexpr UINT WM_MOVE = 0x0003;
constexpr UINT WM_SIZE = 0x0005;
constexpr UINT WM_ACTIVATE = 0x0006;
constexpr UINT WM_SETFOCUS = 0x0007;
constexpr UINT WM_KILLFOCUS = 0x0008;
constexpr UINT WM_ENABLE = 0x000A;
constexpr UINT WM_SETREDRAW = 0x000B;
constexpr UINT WM_SETTEXT = 0x000C;
constexpr UINT WM_GETTEXT = 0x000D;
constexpr UINT WM_GETTEXTLENGTH = 0x000E;
constexpr UINT WM_PAINT = 0x000F;
constexpr UINT WM_CLOSE = 0x0010;
constexpr UINT WM_QUERYENDSESSION = 0x0011;
constexpr UINT WM_QUIT = 0x0012;
constexpr UINT WM_QUERYOPEN = 0x0013;
constexpr UINT WM_ERASEBKGND = 0x0014;
constexpr UINT WM_SYSCOLORCHANGE = 0x0015;
constexpr UINT WM_ENDSESSION = 0x0016;
constexpr UINT WM_SHOWWINDOW = 0x0018;
constexpr UINT WM_SETTINGCHANGE = 0x001A;
constexpr UINT WM_ACTIVATEAPP = 0x001C;
constexpr UINT WM_FONTCHANGE = 0x001D;
constexpr UINT WM_TIMECHANGE = 0x001E;
constexpr UINT WM_CANCELMODE = 0x001F;
constexpr UINT WM_SETCURSOR = 0x0020;
constexpr UINT WM_MOUSEACTIVATE = 0x0021;
constexpr UINT WM_CHILDACTIVATE = 0x0022;
constexpr UINT WM_GETMINMAXINFO = 0x0024;
constexpr UINT WM_NEXTDLGCTL = 0x0028;
constexpr UINT WM_DRAWITEM = 0x002B;
constexpr UINT WM_MEASUREITEM = 0x002C;
constexpr UINT WM_DELETEITEM = 0x002D;
constexpr UINT WM_SETFONT = 0x0030;
constexpr UINT WM_GETFONT = 0x0031;
constexpr UINT WM_QUERYDRAGICON = 0x0037;
constexpr UINT WM_COMPAREITEM = 0x0039;
constexpr UINT WM_WINDOWPOSCHANGING = 0x0046;
constexpr UINT WM_WINDOWPOSCHANGED = 0x0047;
constexpr UINT WM_COPYDATA = 0x004A;
constexpr UINT WM_NOTIFY = 0x004E;
constexpr UINT WM_HELP = 0x0053;
constexpr UINT WM_NOTIFYFORMAT = 0x0055;
constexpr UINT WM_CONTEXTMENU = 0x007B;
constexpr UINT WM_STYLECHANGING = 0x007C;
constexpr UINT WM_STYLECHANGED = 0x007D;
constexpr UINT WM_DISPLAYCHANGE = 0x007E;
constexpr UINT WM_GETICON = 0x007F;
constexpr UINT WM_SETICON = 0x0080;

// The frame: the non-client area.
constexpr UINT WM_NCCREATE = 0x0081;
constexpr UINT WM_NCDESTROY = 0x0082;
constexpr UINT WM_NCCALCSIZE = 0x0083;
constexpr UINT WM_NCHITTEST = 0x0084;
constexpr UINT WM_NCPAINT = 0x0085;
constexpr UINT WM_NCACTIVATE = 0x0086;
constexpr UINT WM_GETDLGCODE = 0x0087;
constexpr UINT WM_NCMOUSEMOVE = 0x00A0;
constexpr UINT WM_NCLBUTTONDOWN = 0x00A1;
constexpr UINT WM_NCLBUTTONUP = 0x00A2;
constexpr UINT WM_NCLBUTTONDBLCLK = 0x00A3;
constexpr UINT WM_NCRBUTTONDOWN = 0x00A4;
constexpr UINT WM_NCRBUTTONUP = 0x00A5;
constexpr UINT WM_NCRBUTTONDBLCLK = 0x00A6;
constexpr UINT WM_NCMBUTTONDOWN = 0x00A7;
constexpr UINT WM_NCMBUTTONUP = 0x00A8;
constexpr UINT WM_NCMBUTTONDBLCLK = 0x00A9;
constexpr UINT WM_NCXBUTTONDOWN = 0x00AB;
constexpr UINT WM_NCXBUTTONUP = 0x00AC;
constexpr UINT WM_NCXBUTTONDBLCLK = 0x00AD;

// Keyboard.
constexpr UINT WM_KEYFIRST = 0x0100;
constexpr UINT WM_KEYDOWN = 0x0100;
constexpr UINT WM_KEYUP = 0x0101;
constexpr UINT WM_CHAR = 0x0102;
constexpr UINT WM_DEADCHAR = 0x0103;
constexpr UINT WM_SYSKEYDOWN = 0x0104;
constexpr UINT WM_SYSKEYUP = 0x0105;
constexpr UINT WM_SYSCHAR = 0x0106;
constexpr UINT WM_SYSDEADCHAR = 0x0107;
constexpr UINT WM_UNICHAR = 0x0109;
constexpr UINT WM_KEYLAST = 0x0109;

// Dialogs, commands, timers, menus and controls.
constexpr UINT WM_INITDIALOG = 0x0110;
constexpr UINT WM_COMMAND = 0x0111;
constexpr UINT WM_SYSCOMMAND = 0x0112;
constexpr UINT WM_TIMER = 0x0113;
constexpr UINT WM_HSCROLL = 0x0114;
constexpr UINT WM_VSCROLL = 0x0115;
constexpr UINT WM_INITMENU = 0x0116;
constexpr UINT WM_INITMENUPOPUP = 0x0117;
constexpr UINT WM_MENUSELECT = 0x011F;
constexpr UINT WM_MENUCHAR = 0x0120;
constexpr UINT WM_ENTERIDLE = 0x0121;
constexpr UINT WM_CHANGEUISTATE = 0x0127;
constexpr UINT WM_UPDATEUISTATE = 0x0128;
constexpr UINT WM_QUERYUISTATE = 0x0129;
constexpr UINT WM_CTLCOLORMSGBOX = 0x0132;
constexpr UINT WM_CTLCOLOREDIT = 0x0133;
constexpr UINT WM_CTLCOLORLISTBOX = 0x0134;
constexpr UINT WM_CTLCOLORBTN = 0x0135;
constexpr UINT WM_CTLCOLORDLG = 0x0136;
constexpr UINT WM_CTLCOLORSCROLLBAR = 0x0137;
constexpr UINT WM_CTLCOLORSTATIC = 0x0138;
constexpr UINT CTLCOLOR_MSGBOX = 0;  // the kinds as OnCtlColor names them
constexpr UINT CTLCOLOR_EDIT = 1;
constexpr UINT CTLCOLOR_LISTBOX = 2;
constexpr UINT CTLCOLOR_BTN = 3;
constexpr UINT CTLCOLOR_DLG = 4;
constexpr UINT CTLCOLOR_SCROLLBAR = 5;
constexpr UINT CTLCOLOR_STATIC = 6;

// Mouse.
constexpr UINT WM_MOUSEFIRST = 0x0200;
constexpr UINT WM_MOUSEMOVE = 0x0200;
constexpr UINT WM_LBUTTONDOWN = 0x0201;
constexpr UINT WM_LBUTTONUP = 0x0202;
constexpr UINT WM_LBUTTONDBLCLK = 0x0203;
constexpr UINT WM_RBUTTONDOWN = 0x0204;
constexpr UINT WM_RBUTTONUP = 0x0205;
constexpr UINT WM_RBUTTONDBLCLK = 0x0206;
constexpr UINT WM_MBUTTONDOWN = 0x0207;
constexpr UINT WM_MBUTTONUP = 0x0208;
constexpr UINT WM_MBUTTONDBLCLK = 0x0209;
constexpr UINT WM_MOUSEWHEEL = 0x020A;
constexpr UINT WM_XBUTTONDOWN = 0x020B;
constexpr UINT WM_XBUTTONUP = 0x020C;
constexpr UINT WM_XBUTTONDBLCLK = 0x020D;
constexpr UINT WM_MOUSEHWHEEL = 0x020E;
constexpr UINT WM_MOUSELAST = 0x020E;
constexpr UINT WM_PARENTNOTIFY = 0x0210;
constexpr UINT WM_ENTERMENULOOP = 0x0211;
constexpr UINT WM_EXITMENULOOP = 0x0212;
constexpr UINT WM_SIZING = 0x0214;
constexpr UINT WM_CAPTURECHANGED = 0x0215;
constexpr UINT WM_MOVING = 0x0216;
constexpr UINT WM_POWERBROADCAST = 0x0218;
constexpr UINT WM_DEVICECHANGE = 0x0219;
constexpr UINT WM_ENTERSIZEMOVE = 0x0231;
constexpr UINT WM_EXITSIZEMOVE = 0x0232;
constexpr UINT WM_DROPFILES = 0x0233;
constexpr UINT WM_NCMOUSEHOVER = 0x02A0;
constexpr UINT WM_MOUSEHOVER = 0x02A1;
constexpr UINT WM_NCMOUSELEAVE = 0x02A2;
constexpr UINT WM_MOUSELEAVE = 0x02A3;

// The rest. WM_USER to 0x7FFF belong to the window's class, WM_APP to 0xBFFF to the program; above are RegisterWindowMessageW's.
constexpr UINT WM_DPICHANGED = 0x02E0;
constexpr UINT WM_CUT = 0x0300;
constexpr UINT WM_COPY = 0x0301;
constexpr UINT WM_PASTE = 0x0302;
constexpr UINT WM_CLEAR = 0x0303;
constexpr UINT WM_UNDO = 0x0304;
constexpr UINT WM_DESTROYCLIPBOARD = 0x0307;
constexpr UINT WM_HOTKEY = 0x0312;
constexpr UINT WM_PRINT = 0x0317;
constexpr UINT WM_PRINTCLIENT = 0x0318;
constexpr UINT WM_APPCOMMAND = 0x0319;
constexpr UINT WM_THEMECHANGED = 0x031A;
constexpr UINT WM_APP = 0x8000;
constexpr UINT WM_USER = 0x0400;

// Parts of a window: WM_NCHITTEST's result.
constexpr int HTERROR = -2;
constexpr int HTTRANSPARENT = -1;
constexpr int HTNOWHERE = 0;
constexpr int HTCLIENT = 1;
constexpr int HTCAPTION = 2;
constexpr int HTSYSMENU = 3;
constexpr int HTGROWBOX = 4;
constexpr int HTSIZE = 4;
constexpr int HTMENU = 5;
constexpr int HTHSCROLL = 6;
constexpr int HTVSCROLL = 7;
constexpr int HTMINBUTTON = 8;
constexpr int HTREDUCE = 8;
constexpr int HTMAXBUTTON = 9;
constexpr int HTZOOM = 9;
constexpr int HTLEFT = 10;
constexpr int HTRIGHT = 11;
constexpr int HTTOP = 12;
constexpr int HTTOPLEFT = 13;
constexpr int HTTOPRIGHT = 14;
constexpr int HTBOTTOM = 15;
constexpr int HTBOTTOMLEFT = 16;
constexpr int HTBOTTOMRIGHT = 17;
constexpr int HTSIZEFIRST = 10;
constexpr int HTSIZELAST = 17;
constexpr int HTBORDER = 18;
constexpr int HTOBJECT = 19;
constexpr int HTCLOSE = 20;
constexpr int HTHELP = 21;

// WM_SYSCOMMAND's wparam; its four lowest bits are not part of the command.
constexpr UINT SC_SIZE = 0xF000;
constexpr UINT SC_MOVE = 0xF010;
constexpr UINT SC_MINIMIZE = 0xF020;
constexpr UINT SC_MAXIMIZE = 0xF030;
constexpr UINT SC_NEXTWINDOW = 0xF040;
constexpr UINT SC_PREVWINDOW = 0xF050;
constexpr UINT SC_CLOSE = 0xF060;
constexpr UINT SC_VSCROLL = 0xF070;
constexpr UINT SC_HSCROLL = 0xF080;
constexpr UINT SC_MOUSEMENU = 0xF090;
constexpr UINT SC_KEYMENU = 0xF100;
constexpr UINT SC_RESTORE = 0xF120;
constexpr UINT SC_TASKLIST = 0xF130;
constexpr UINT SC_SCREENSAVE = 0xF140;
constexpr UINT SC_HOTKEY = 0xF150;
constexpr UINT SC_DEFAULT = 0xF160;
constexpr UINT SC_MONITORPOWER = 0xF170;
constexpr UINT SC_CONTEXTHELP = 0xF180;

// WM_SIZE's wparam; its lparam is the client area's width and height.
constexpr WPARAM SIZE_RESTORED = 0;
constexpr WPARAM SIZE_MINIMIZED = 1;
constexpr WPARAM SIZE_MAXIMIZED = 2;
constexpr WPARAM SIZE_MAXSHOW = 3;
constexpr WPARAM SIZE_MAXHIDE = 4;

// The edge or corner that WM_SIZING's wparam tells.
constexpr WPARAM WMSZ_LEFT = 1;
constexpr WPARAM WMSZ_RIGHT = 2;
constexpr WPARAM WMSZ_TOP = 3;
constexpr WPARAM WMSZ_TOPLEFT = 4;
constexpr WPARAM WMSZ_TOPRIGHT = 5;
constexpr WPARAM WMSZ_BOTTOM = 6;
constexpr WPARAM WMSZ_BOTTOMLEFT = 7;
constexpr WPARAM WMSZ_BOTTOMRIGHT = 8;

// WM_ACTIVATE's low half of wparam (high half: minimised), and WM_MOUSEACTIVATE's result.
constexpr WORD WA_INACTIVE = 0;
constexpr WORD WA_ACTIVE = 1;
constexpr WORD WA_CLICKACTIVE = 2;
constexpr int MA_ACTIVATE = 1;
constexpr int MA_ACTIVATEANDEAT = 2;
constexpr int MA_NOACTIVATE = 3;
constexpr int MA_NOACTIVATEANDEAT = 4;

// Buttons and keys that are down, in the wparam of mouse messages.
constexpr WORD MK_LBUTTON = 0x0001;
constexpr WORD MK_RBUTTON = 0x0002;
constexpr WORD MK_SHIFT = 0x0004;
constexpr WORD MK_CONTROL = 0x0008;
constexpr WORD MK_MBUTTON = 0x0010;
constexpr WORD MK_XBUTTON1 = 0x0020;
constexpr WORD MK_XBUTTON2 = 0x0040;
constexpr WORD XBUTTON1 = 1;
constexpr WORD XBUTTON2 = 2;
constexpr int WHEEL_DELTA = 120;
constexpr UINT WHEEL_PAGESCROLL = 0xFFFFFFFF;

// WM_SHOWWINDOW's lparam when not ShowWindow is the cause.
constexpr LPARAM SW_PARENTCLOSING = 1;
constexpr LPARAM SW_OTHERZOOM = 2;
constexpr LPARAM SW_PARENTOPENING = 3;
constexpr LPARAM SW_OTHERUNZOOM = 4;

// WM_NCCALCSIZE's result for wparam TRUE.
constexpr LRESULT WVR_ALIGNTOP = 0x0010;
constexpr LRESULT WVR_ALIGNLEFT = 0x0020;
constexpr LRESULT WVR_ALIGNBOTTOM = 0x0040;
constexpr LRESULT WVR_ALIGNRIGHT = 0x0080;
constexpr LRESULT WVR_HREDRAW = 0x0100;
constexpr LRESULT WVR_VREDRAW = 0x0200;
constexpr LRESULT WVR_REDRAW = 0x0300;
constexpr LRESULT WVR_VALIDRECTS = 0x0400;

// WM_PRINT's and WM_PRINTCLIENT's lparam (wparam: the device context).
constexpr LPARAM PRF_CHECKVISIBLE = 0x0001;
constexpr LPARAM PRF_NONCLIENT = 0x0002;
constexpr LPARAM PRF_CLIENT = 0x0004;
constexpr LPARAM PRF_ERASEBKGND = 0x0008;
constexpr LPARAM PRF_CHILDREN = 0x0010;
constexpr LPARAM PRF_OWNED = 0x0020;

// WM_ENTERIDLE's wparam, which icon WM_SETICON and WM_GETICON mean, and the high half of a key message's lparam.
constexpr int MSGF_DIALOGBOX = 0;
constexpr int MSGF_MENU = 2;
constexpr WPARAM ICON_SMALL = 0;
constexpr WPARAM ICON_BIG = 1;
constexpr WPARAM ICON_SMALL2 = 2;
constexpr WORD KF_EXTENDED = 0x0100;
constexpr WORD KF_ALTDOWN = 0x2000;
constexpr WORD KF_REPEAT = 0x4000;
constexpr WORD KF_UP = 0x8000;

// Whether focus rectangles and mnemonics are drawn: WM_CHANGEUISTATE and its kin.
constexpr WORD UIS_SET = 1;
constexpr WORD UIS_CLEAR = 2;
constexpr WORD UIS_INITIALIZE = 3;
constexpr WORD UISF_HIDEFOCUS = 0x0001;
constexpr WORD UISF_HIDEACCEL = 0x0002;
constexpr WORD UISF_ACTIVE = 0x0004;

// What WM_CREATE and WM_NCCREATE show (lparam); 0 and FALSE, in that order, end the creation with a result of -1 and FALSE.
struct CREATESTRUCTW {
    LPVOID lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    LONG style;
    LPCWSTR lpszName;
    LPCWSTR lpszClass;  // or an atom in its low half
    DWORD dwExStyle;
};
using CREATESTRUCT = CREATESTRUCTW;
using LPCREATESTRUCTW = CREATESTRUCTW*;
using LPCREATESTRUCT = CREATESTRUCTW*;

// WM_WINDOWPOSCHANGING (which may change it) and WM_WINDOWPOSCHANGED (lparam). In the parent's client coordinates.
struct WINDOWPOS {
    HWND hwnd;
    HWND hwndInsertAfter;
    int x;
    int y;
    int cx;
    int cy;
    UINT flags;  // SWP_*
};
using LPWINDOWPOS = WINDOWPOS*;
using PWINDOWPOS = WINDOWPOS*;

// WM_NCCALCSIZE (lparam) for wparam TRUE: in: the new window rectangle, the old one, the old client area; out: the new client
// area, and for WVR_VALIDRECTS what stays valid, new and old. All in the parent's client coordinates.
struct NCCALCSIZE_PARAMS {
    RECT rgrc[3];
    WINDOWPOS* lppos;
};
using LPNCCALCSIZE_PARAMS = NCCALCSIZE_PARAMS*;

// WM_GETMINMAXINFO (lparam).
struct MINMAXINFO {
    POINT ptReserved;
    POINT ptMaxSize;
    POINT ptMaxPosition;
    POINT ptMinTrackSize;
    POINT ptMaxTrackSize;
};
using LPMINMAXINFO = MINMAXINFO*;
using PMINMAXINFO = MINMAXINFO*;

// WM_STYLECHANGING (which may change styleNew) and WM_STYLECHANGED (GWL_STYLE or GWL_EXSTYLE; lparam).
struct STYLESTRUCT {
    DWORD styleOld;
    DWORD styleNew;
};
using LPSTYLESTRUCT = STYLESTRUCT*;

// WM_COPYDATA (the sender's window; lparam): bytes that are the receiver's to read while it handles the message.
struct COPYDATASTRUCT {
    ULONG_PTR dwData;
    DWORD cbData;
    PVOID lpData;
};
using PCOPYDATASTRUCT = COPYDATASTRUCT*;

// What every WM_NOTIFY begins with (the control's number; lparam).
struct NMHDR {
    HWND hwndFrom;
    UINT_PTR idFrom;
    UINT code;
};
using LPNMHDR = NMHDR*;

// WM_HELP (0; lparam).
struct HELPINFO {
    UINT cbSize;
    int iContextType;
    int iCtrlId;
    HANDLE hItemHandle;
    DWORD_PTR dwContextId;
    POINT MousePos;
};
using LPHELPINFO = HELPINFO*;
constexpr int HELPINFO_WINDOW = 1;
constexpr int HELPINFO_MENUITEM = 2;

// The parts of a message's parameters. A position on a further monitor may be negative: never LOWORD and HIWORD for one.
constexpr int GET_X_LPARAM(LPARAM lparam) {
    return static_cast<SHORT>(static_cast<WORD>(lparam & 0xFFFF));
}
constexpr int GET_Y_LPARAM(LPARAM lparam) {
    return static_cast<SHORT>(static_cast<WORD>((lparam >> 16) & 0xFFFF));
}
constexpr LPARAM MAKELPARAM(ULONG_PTR low, ULONG_PTR high) {
    return static_cast<LPARAM>(static_cast<DWORD>(MAKELONG(low, high)));
}
constexpr WPARAM MAKEWPARAM(ULONG_PTR low, ULONG_PTR high) {
    return static_cast<DWORD>(MAKELONG(low, high));
}
constexpr LRESULT MAKELRESULT(ULONG_PTR low, ULONG_PTR high) {
    return static_cast<LRESULT>(static_cast<DWORD>(MAKELONG(low, high)));
}
constexpr SHORT GET_WHEEL_DELTA_WPARAM(WPARAM wparam) {
    return static_cast<SHORT>(HIWORD(wparam));
}
constexpr WORD GET_KEYSTATE_WPARAM(WPARAM wparam) {
    return LOWORD(wparam);
}
constexpr WORD GET_XBUTTON_WPARAM(WPARAM wparam) {
    return HIWORD(wparam);
}
