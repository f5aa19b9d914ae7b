#pragma once

// The colours of the desktop: those of Windows 10. They do not change.

#include "../gdi/gdi_types.h"

constexpr int COLOR_SCROLLBAR = 0;
constexpr int COLOR_BACKGROUND = 1;
constexpr int COLOR_DESKTOP = COLOR_BACKGROUND;
constexpr int COLOR_ACTIVECAPTION = 2;
constexpr int COLOR_INACTIVECAPTION = 3;
constexpr int COLOR_MENU = 4;
constexpr int COLOR_WINDOW = 5;
constexpr int COLOR_WINDOWFRAME = 6;
constexpr int COLOR_MENUTEXT = 7;
constexpr int COLOR_WINDOWTEXT = 8;
constexpr int COLOR_CAPTIONTEXT = 9;
constexpr int COLOR_ACTIVEBORDER = 10;
constexpr int COLOR_INACTIVEBORDER = 11;
constexpr int COLOR_APPWORKSPACE = 12;
constexpr int COLOR_HIGHLIGHT = 13;
constexpr int COLOR_HIGHLIGHTTEXT = 14;
constexpr int COLOR_BTNFACE = 15;
constexpr int COLOR_3DFACE = COLOR_BTNFACE;
constexpr int COLOR_BTNSHADOW = 16;
constexpr int COLOR_3DSHADOW = COLOR_BTNSHADOW;
constexpr int COLOR_GRAYTEXT = 17;
constexpr int COLOR_BTNTEXT = 18;
constexpr int COLOR_INACTIVECAPTIONTEXT = 19;
constexpr int COLOR_BTNHIGHLIGHT = 20;
constexpr int COLOR_BTNHILIGHT = COLOR_BTNHIGHLIGHT;
constexpr int COLOR_3DHIGHLIGHT = COLOR_BTNHIGHLIGHT;
constexpr int COLOR_3DHILIGHT = COLOR_BTNHIGHLIGHT;
constexpr int COLOR_3DDKSHADOW = 21;
constexpr int COLOR_3DLIGHT = 22;
constexpr int COLOR_INFOTEXT = 23;
constexpr int COLOR_INFOBK = 24;
constexpr int COLOR_HOTLIGHT = 26;
constexpr int COLOR_GRADIENTACTIVECAPTION = 27;
constexpr int COLOR_GRADIENTINACTIVECAPTION = 28;
constexpr int COLOR_MENUHILIGHT = 29;
constexpr int COLOR_MENUBAR = 30;

// Black for any other number; the last error stays.
KADATA_API DWORD GetSysColor(int index) noexcept;

// A solid brush of the colour, the same one at each call; it belongs to the system, and deleting it changes nothing. Null for any
// other number.
KADATA_API HBRUSH GetSysColorBrush(int index) noexcept;
