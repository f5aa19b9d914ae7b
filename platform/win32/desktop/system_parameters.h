#pragma once

// What the user has set for the desktop. Nothing can be set here: everything is as Windows 10 has it at first, at 96 dots per
// inch.

#include "../gdi/gdi_types.h"

constexpr UINT SPI_GETBEEP = 0x0001;               // BOOL
constexpr UINT SPI_GETBORDER = 0x0005;             // int: 1
constexpr UINT SPI_GETKEYBOARDSPEED = 0x000A;      // DWORD: 31, the fastest
constexpr UINT SPI_GETKEYBOARDDELAY = 0x0016;      // int: 1, half a second
constexpr UINT SPI_GETICONTITLEWRAP = 0x0019;      // BOOL
constexpr UINT SPI_GETMENUDROPALIGNMENT = 0x001B;  // BOOL: menus are aligned at their left
constexpr UINT SPI_GETICONTITLELOGFONT = 0x001F;   // LOGFONTW
constexpr UINT SPI_GETDRAGFULLWINDOWS = 0x0026;    // BOOL
constexpr UINT SPI_GETNONCLIENTMETRICS = 0x0029;   // NONCLIENTMETRICSW
constexpr UINT SPI_GETICONMETRICS = 0x002D;        // ICONMETRICSW
constexpr UINT SPI_GETWORKAREA = 0x0030;           // RECT: the primary monitor's
constexpr UINT SPI_GETKEYBOARDPREF = 0x0044;       // BOOL
constexpr UINT SPI_GETSCREENREADER = 0x0046;       // BOOL
constexpr UINT SPI_GETFONTSMOOTHING = 0x004A;      // BOOL
constexpr UINT SPI_GETSNAPTODEFBUTTON = 0x005F;    // BOOL
constexpr UINT SPI_GETMOUSEHOVERWIDTH = 0x0062;    // UINT, pixels
constexpr UINT SPI_GETMOUSEHOVERHEIGHT = 0x0064;   // UINT, pixels
constexpr UINT SPI_GETMOUSEHOVERTIME = 0x0066;     // UINT, milliseconds
constexpr UINT SPI_GETWHEELSCROLLLINES = 0x0068;   // UINT
constexpr UINT SPI_GETMENUSHOWDELAY = 0x006A;      // DWORD, milliseconds
constexpr UINT SPI_GETWHEELSCROLLCHARS = 0x006C;   // UINT
constexpr UINT SPI_GETMENUANIMATION = 0x1002;      // BOOL
constexpr UINT SPI_GETKEYBOARDCUES = 0x100A;       // BOOL: whether mnemonics are always underlined
constexpr UINT SPI_GETMENUUNDERLINES = SPI_GETKEYBOARDCUES;
constexpr UINT SPI_GETFLATMENU = 0x1022;             // BOOL
constexpr UINT SPI_GETDROPSHADOW = 0x1024;           // BOOL
constexpr UINT SPI_GETUIEFFECTS = 0x103E;            // BOOL
constexpr UINT SPI_GETCLIENTAREAANIMATION = 0x1042;  // BOOL
constexpr UINT SPI_GETCARETWIDTH = 0x2006;           // DWORD, pixels
constexpr UINT SPI_GETFONTSMOOTHINGTYPE = 0x200A;    // UINT: FE_FONTSMOOTHINGSTANDARD
constexpr UINT SPI_GETFOCUSBORDERWIDTH = 0x200E;     // UINT, pixels
constexpr UINT SPI_GETFOCUSBORDERHEIGHT = 0x2010;    // UINT, pixels

constexpr UINT FE_FONTSMOOTHINGSTANDARD = 1;

struct NONCLIENTMETRICSW {
    UINT cbSize;  // of the structure, or of it without its last member
    int iBorderWidth;
    int iScrollWidth;
    int iScrollHeight;
    int iCaptionWidth;  // of a box
    int iCaptionHeight;
    LOGFONTW lfCaptionFont;
    int iSmCaptionWidth;
    int iSmCaptionHeight;
    LOGFONTW lfSmCaptionFont;
    int iMenuWidth;
    int iMenuHeight;
    LOGFONTW lfMenuFont;
    LOGFONTW lfStatusFont;
    LOGFONTW lfMessageFont;
    int iPaddedBorderWidth;
};
using NONCLIENTMETRICS = NONCLIENTMETRICSW;
using LPNONCLIENTMETRICSW = NONCLIENTMETRICSW*;

struct ICONMETRICSW {
    UINT cbSize;
    int iHorzSpacing;
    int iVertSpacing;
    int iTitleWrap;
    LOGFONTW lfFont;
};
using ICONMETRICS = ICONMETRICSW;

// Writes what `action` asks for, of the type that stands beside it. `size` counts for LOGFONTW only; structures have theirs in
// cbSize. `changes` is not looked at. FALSE with ERROR_INVALID_SPI_VALUE for any other action, ERROR_INVALID_PARAMETER for a
// wrong size, ERROR_NOACCESS for a null target.
KADATA_API BOOL SystemParametersInfoW(UINT action, UINT size, LPVOID target, UINT changes) noexcept;
