#pragma once

// Sizes of the desktop and of what stands on it, in pixels; the rules of its mouse and keyboard, in milliseconds.
//
// With the environment variable KADATA_SCREEN="1280x1024" the desktop is off screen and of that size (each side 1 to 32767; with
// anything else in it, 1920x1080), at the moment of the call. Without it the desktop is the display's, when there is one; else
// off screen, 1920x1080. What stands on it has the sizes of Windows 10 at 96 dots per inch.

#include "../base/types.h"

constexpr int SM_CXSCREEN = 0;  // the primary screen
constexpr int SM_CYSCREEN = 1;
constexpr int SM_CXVSCROLL = 2;
constexpr int SM_CYHSCROLL = 3;
constexpr int SM_CYCAPTION = 4;  // with the line below it
constexpr int SM_CXBORDER = 5;
constexpr int SM_CYBORDER = 6;
constexpr int SM_CXDLGFRAME = 7;
constexpr int SM_CYDLGFRAME = 8;
constexpr int SM_CXFIXEDFRAME = SM_CXDLGFRAME;
constexpr int SM_CYFIXEDFRAME = SM_CYDLGFRAME;
constexpr int SM_CYVTHUMB = 9;
constexpr int SM_CXHTHUMB = 10;
constexpr int SM_CXICON = 11;
constexpr int SM_CYICON = 12;
constexpr int SM_CXCURSOR = 13;
constexpr int SM_CYCURSOR = 14;
constexpr int SM_CYMENU = 15;
constexpr int SM_CXFULLSCREEN = 16;  // the client area of a maximised window with a caption
constexpr int SM_CYFULLSCREEN = 17;
constexpr int SM_MOUSEPRESENT = 19;
constexpr int SM_CYVSCROLL = 20;
constexpr int SM_CXHSCROLL = 21;
constexpr int SM_DEBUG = 22;
constexpr int SM_SWAPBUTTON = 23;
constexpr int SM_CXMIN = 28;
constexpr int SM_CYMIN = 29;
constexpr int SM_CXSIZE = 30;  // a box in a caption
constexpr int SM_CYSIZE = 31;
constexpr int SM_CXFRAME = 32;
constexpr int SM_CYFRAME = 33;
constexpr int SM_CXSIZEFRAME = SM_CXFRAME;
constexpr int SM_CYSIZEFRAME = SM_CYFRAME;
constexpr int SM_CXMINTRACK = 34;  // the least a user can make of a window
constexpr int SM_CYMINTRACK = 35;
constexpr int SM_CXDOUBLECLK = 36;
constexpr int SM_CYDOUBLECLK = 37;
constexpr int SM_CXICONSPACING = 38;
constexpr int SM_CYICONSPACING = 39;
constexpr int SM_MENUDROPALIGNMENT = 40;
constexpr int SM_CMOUSEBUTTONS = 43;
constexpr int SM_SECURE = 44;
constexpr int SM_CXEDGE = 45;
constexpr int SM_CYEDGE = 46;
constexpr int SM_CXMINSPACING = 47;
constexpr int SM_CYMINSPACING = 48;
constexpr int SM_CXSMICON = 49;
constexpr int SM_CYSMICON = 50;
constexpr int SM_CYSMCAPTION = 51;  // with the line below it
constexpr int SM_CXSMSIZE = 52;
constexpr int SM_CYSMSIZE = 53;
constexpr int SM_CXMENUSIZE = 54;
constexpr int SM_CYMENUSIZE = 55;
constexpr int SM_ARRANGE = 56;
constexpr int SM_CXMINIMIZED = 57;
constexpr int SM_CYMINIMIZED = 58;
constexpr int SM_CXMAXTRACK = 59;
constexpr int SM_CYMAXTRACK = 60;
constexpr int SM_CXMAXIMIZED = 61;
constexpr int SM_CYMAXIMIZED = 62;
constexpr int SM_NETWORK = 63;
constexpr int SM_CLEANBOOT = 67;
constexpr int SM_CXDRAG = 68;
constexpr int SM_CYDRAG = 69;
constexpr int SM_SHOWSOUNDS = 70;
constexpr int SM_CXMENUCHECK = 71;
constexpr int SM_CYMENUCHECK = 72;
constexpr int SM_SLOWMACHINE = 73;
constexpr int SM_MIDEASTENABLED = 74;
constexpr int SM_MOUSEWHEELPRESENT = 75;
constexpr int SM_XVIRTUALSCREEN = 76;  // the box around all screens
constexpr int SM_YVIRTUALSCREEN = 77;
constexpr int SM_CXVIRTUALSCREEN = 78;
constexpr int SM_CYVIRTUALSCREEN = 79;
constexpr int SM_CMONITORS = 80;
constexpr int SM_SAMEDISPLAYFORMAT = 81;
constexpr int SM_CXFOCUSBORDER = 83;
constexpr int SM_CYFOCUSBORDER = 84;
constexpr int SM_TABLETPC = 86;
constexpr int SM_MOUSEHORIZONTALWHEELPRESENT = 91;
constexpr int SM_CXPADDEDBORDER = 92;  // added to a frame that can be dragged
constexpr int SM_REMOTESESSION = 0x1000;
constexpr int SM_SHUTTINGDOWN = 0x2000;

// One of the numbers above; 0, the last error as before, for any other index.
KADATA_API int GetSystemMetrics(int index) noexcept;

// 96.
KADATA_API UINT GetDpiForSystem() noexcept;

// 500: the longest time between the presses of a double click.
KADATA_API UINT GetDoubleClickTime() noexcept;

// 530.
KADATA_API UINT GetCaretBlinkTime() noexcept;
