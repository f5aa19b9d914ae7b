#pragma once

// Numbers that windows and their classes are made with, and that the functions of window_tree.h take.

#include "../gdi/gdi_types.h"

// Styles. WS_CHILD windows lie in their parent's client area; WS_POPUP and WS_OVERLAPPED ones on the desktop.
constexpr DWORD WS_OVERLAPPED = 0x00000000;
constexpr DWORD WS_POPUP = 0x80000000;
constexpr DWORD WS_CHILD = 0x40000000;
constexpr DWORD WS_MINIMIZE = 0x20000000;
constexpr DWORD WS_VISIBLE = 0x10000000;
constexpr DWORD WS_DISABLED = 0x08000000;
constexpr DWORD WS_CLIPSIBLINGS = 0x04000000;
constexpr DWORD WS_CLIPCHILDREN = 0x02000000;
constexpr DWORD WS_MAXIMIZE = 0x01000000;
constexpr DWORD WS_CAPTION = 0x00C00000;
constexpr DWORD WS_BORDER = 0x00800000;
constexpr DWORD WS_DLGFRAME = 0x00400000;
constexpr DWORD WS_VSCROLL = 0x00200000;
constexpr DWORD WS_HSCROLL = 0x00100000;
constexpr DWORD WS_SYSMENU = 0x00080000;
constexpr DWORD WS_THICKFRAME = 0x00040000;
constexpr DWORD WS_GROUP = 0x00020000;
constexpr DWORD WS_TABSTOP = 0x00010000;
constexpr DWORD WS_MINIMIZEBOX = 0x00020000;
constexpr DWORD WS_MAXIMIZEBOX = 0x00010000;
constexpr DWORD WS_TILED = 0x00000000;
constexpr DWORD WS_ICONIC = 0x20000000;
constexpr DWORD WS_SIZEBOX = 0x00040000;
constexpr DWORD WS_OVERLAPPEDWINDOW = 0x00CF0000;
constexpr DWORD WS_TILEDWINDOW = 0x00CF0000;
constexpr DWORD WS_POPUPWINDOW = 0x80880000;
constexpr DWORD WS_CHILDWINDOW = 0x40000000;

// Extended styles.
constexpr DWORD WS_EX_LEFT = 0x00000000;
constexpr DWORD WS_EX_LTRREADING = 0x00000000;
constexpr DWORD WS_EX_RIGHTSCROLLBAR = 0x00000000;
constexpr DWORD WS_EX_DLGMODALFRAME = 0x00000001;
constexpr DWORD WS_EX_NOPARENTNOTIFY = 0x00000004;
constexpr DWORD WS_EX_TOPMOST = 0x00000008;
constexpr DWORD WS_EX_ACCEPTFILES = 0x00000010;
constexpr DWORD WS_EX_TRANSPARENT = 0x00000020;
constexpr DWORD WS_EX_MDICHILD = 0x00000040;
constexpr DWORD WS_EX_TOOLWINDOW = 0x00000080;
constexpr DWORD WS_EX_WINDOWEDGE = 0x00000100;
constexpr DWORD WS_EX_CLIENTEDGE = 0x00000200;
constexpr DWORD WS_EX_CONTEXTHELP = 0x00000400;
constexpr DWORD WS_EX_RIGHT = 0x00001000;
constexpr DWORD WS_EX_RTLREADING = 0x00002000;
constexpr DWORD WS_EX_LEFTSCROLLBAR = 0x00004000;
constexpr DWORD WS_EX_CONTROLPARENT = 0x00010000;
constexpr DWORD WS_EX_STATICEDGE = 0x00020000;
constexpr DWORD WS_EX_APPWINDOW = 0x00040000;
constexpr DWORD WS_EX_OVERLAPPEDWINDOW = 0x00000300;
constexpr DWORD WS_EX_PALETTEWINDOW = 0x00000188;
constexpr DWORD WS_EX_LAYERED = 0x00080000;
constexpr DWORD WS_EX_NOINHERITLAYOUT = 0x00100000;
constexpr DWORD WS_EX_LAYOUTRTL = 0x00400000;
constexpr DWORD WS_EX_COMPOSITED = 0x02000000;
constexpr DWORD WS_EX_NOACTIVATE = 0x08000000;

// Class styles.
constexpr UINT CS_VREDRAW = 0x0001;
constexpr UINT CS_HREDRAW = 0x0002;
constexpr UINT CS_DBLCLKS = 0x0008;
constexpr UINT CS_OWNDC = 0x0020;
constexpr UINT CS_CLASSDC = 0x0040;
constexpr UINT CS_PARENTDC = 0x0080;
constexpr UINT CS_NOCLOSE = 0x0200;
constexpr UINT CS_SAVEBITS = 0x0800;
constexpr UINT CS_BYTEALIGNCLIENT = 0x1000;
constexpr UINT CS_BYTEALIGNWINDOW = 0x2000;
constexpr UINT CS_GLOBALCLASS = 0x4000;
constexpr UINT CS_DROPSHADOW = 0x20000;

// ShowWindow.
constexpr int SW_HIDE = 0;
constexpr int SW_SHOWNORMAL = 1;
constexpr int SW_NORMAL = 1;
constexpr int SW_SHOWMINIMIZED = 2;
constexpr int SW_SHOWMAXIMIZED = 3;
constexpr int SW_MAXIMIZE = 3;
constexpr int SW_SHOWNOACTIVATE = 4;
constexpr int SW_SHOW = 5;
constexpr int SW_MINIMIZE = 6;
constexpr int SW_SHOWMINNOACTIVE = 7;
constexpr int SW_SHOWNA = 8;
constexpr int SW_RESTORE = 9;
constexpr int SW_SHOWDEFAULT = 10;
constexpr int SW_FORCEMINIMIZE = 11;
constexpr int SW_MAX = 11;

// SetWindowPos.
constexpr UINT SWP_NOSIZE = 0x0001;
constexpr UINT SWP_NOMOVE = 0x0002;
constexpr UINT SWP_NOZORDER = 0x0004;
constexpr UINT SWP_NOREDRAW = 0x0008;
constexpr UINT SWP_NOACTIVATE = 0x0010;
constexpr UINT SWP_FRAMECHANGED = 0x0020;
constexpr UINT SWP_DRAWFRAME = 0x0020;
constexpr UINT SWP_SHOWWINDOW = 0x0040;
constexpr UINT SWP_HIDEWINDOW = 0x0080;
constexpr UINT SWP_NOCOPYBITS = 0x0100;
constexpr UINT SWP_NOOWNERZORDER = 0x0200;
constexpr UINT SWP_NOREPOSITION = 0x0200;
constexpr UINT SWP_NOSENDCHANGING = 0x0400;
constexpr UINT SWP_DEFERERASE = 0x2000;
constexpr UINT SWP_ASYNCWINDOWPOS = 0x4000;
inline const HWND HWND_TOP = nullptr;
inline const HWND HWND_BOTTOM = reinterpret_cast<HWND>(LONG_PTR{1});
inline const HWND HWND_TOPMOST = reinterpret_cast<HWND>(LONG_PTR{-1});
inline const HWND HWND_NOTOPMOST = reinterpret_cast<HWND>(LONG_PTR{-2});

inline const HWND HWND_DESKTOP = nullptr;                                     // MapWindowPoints: the screen
inline const HWND HWND_MESSAGE = reinterpret_cast<HWND>(LONG_PTR{-3});        // CreateWindowExW: never shown, messages only
inline const HWND HWND_BROADCAST = reinterpret_cast<HWND>(LONG_PTR{0xFFFF});  // PostMessageW, SendMessageW: all top-level windows

// The window's position is left to the system.
constexpr int CW_USEDEFAULT = static_cast<int>(0x80000000U);

// GetWindowLongPtrW and SetWindowLongPtrW; 0 and above are the extra bytes of the window.
constexpr int GWLP_WNDPROC = -4;
constexpr int GWLP_HINSTANCE = -6;
constexpr int GWLP_HWNDPARENT = -8;
constexpr int GWL_STYLE = -16;
constexpr int GWL_EXSTYLE = -20;
constexpr int GWLP_USERDATA = -21;
constexpr int GWLP_ID = -12;
constexpr int GWL_ID = -12;

// GetClassLongPtrW and SetClassLongPtrW; 0 and above are the extra bytes of the class.
constexpr int GCLP_MENUNAME = -8;
constexpr int GCLP_HBRBACKGROUND = -10;
constexpr int GCLP_HCURSOR = -12;
constexpr int GCLP_HICON = -14;
constexpr int GCLP_HMODULE = -16;
constexpr int GCL_CBWNDEXTRA = -18;
constexpr int GCL_CBCLSEXTRA = -20;
constexpr int GCLP_WNDPROC = -24;
constexpr int GCL_STYLE = -26;
constexpr int GCW_ATOM = -32;
constexpr int GCLP_HICONSM = -34;

// GetWindow, GetAncestor, ChildWindowFromPointEx.
constexpr UINT GW_HWNDFIRST = 0;
constexpr UINT GW_HWNDLAST = 1;
constexpr UINT GW_HWNDNEXT = 2;
constexpr UINT GW_HWNDPREV = 3;
constexpr UINT GW_OWNER = 4;
constexpr UINT GW_CHILD = 5;
constexpr UINT GW_ENABLEDPOPUP = 6;
constexpr UINT GA_PARENT = 1;
constexpr UINT GA_ROOT = 2;
constexpr UINT GA_ROOTOWNER = 3;
constexpr UINT CWP_ALL = 0x0000;
constexpr UINT CWP_SKIPINVISIBLE = 0x0001;
constexpr UINT CWP_SKIPDISABLED = 0x0002;
constexpr UINT CWP_SKIPTRANSPARENT = 0x0004;

// WINDOWPLACEMENT::flags.
constexpr UINT WPF_SETMINPOSITION = 0x0001;
constexpr UINT WPF_RESTORETOMAXIMIZED = 0x0002;
constexpr UINT WPF_ASYNCWINDOWPLACEMENT = 0x0004;
