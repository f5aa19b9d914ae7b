#pragma once

// The demo's skin, for screens of normal and of double density.

#include <kadata/skin.h>
#include <kadata/skin_info.h>

// `percent` is 100 or 200. Complete.
SkinInfo MakeSkinInfo(int percent);

// All that is drawn of a skin, each surface with its own bitmaps and colours.
struct SSurfaces {
    CSkin window;  // frame, title and background
    CSkin button;
    CSkin checkButton;  // with a glyph
    CSkin closeBox;
    CSkin minimizeBox;
    CSkin maximizeBox;
    CSkin restoreBox;
    CSkin toolBar;  // the bars and panes are drawn as buttons in their normal state
    CSkin toolBarButton;
    CSkin statusBar;
    CSkin statusBarPane;

    // FALSE when something is missing.
    BOOL Load(const SkinInfo& info);
};

// Colours of what the bitmaps do not show.
inline constexpr COLORREF TEXT_COLOR = RGB(0x26, 0x32, 0x38);
inline constexpr COLORREF QUIET_TEXT_COLOR = RGB(0x5F, 0x70, 0x78);
inline constexpr COLORREF DISABLED_TEXT_COLOR = RGB(0x9B, 0xA8, 0xAE);
inline constexpr COLORREF HIGHLIGHT_COLOR = RGB(0xFF, 0xFF, 0xFF);
inline constexpr COLORREF BAND_COLOR = RGB(0xE3, 0xEB, 0xEE);  // of the frame
inline constexpr COLORREF LINE_COLOR = RGB(0xCB, 0xD4, 0xD8);
inline constexpr COLORREF LIST_COLOR = RGB(0xFF, 0xFF, 0xFF);
inline constexpr COLORREF LIST_STRIPE_COLOR = RGB(0xF6, 0xF9, 0xFA);
inline constexpr COLORREF LIST_HEADER_COLOR = RGB(0xEC, 0xF1, 0xF3);
inline constexpr COLORREF SELECTION_COLOR = RGB(0xD3, 0xE9, 0xEE);
inline constexpr COLORREF ACCENT_COLOR = RGB(0x1F, 0x7A, 0x8C);

// `pixels` high letters, in the interface's face. Throws CResourceException*.
void MakeFont(CFont& font, int pixels, LONG weight = FW_NORMAL);
