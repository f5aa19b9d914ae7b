#pragma once

// The description of a skin: which bitmaps the skinned windows are drawn from, and the measures and texts that go with them.
//
// Plain values. Bitmaps and texts are named by the numbers of resources of the host (RT_BITMAP, string table), 1 to 65535; all
// lengths are pixels. A host that serves several screen densities fills another description for each.

#include <kadata/export.h>
#include <windows.h>

// No colour of a glyph bitmap is transparent.
inline constexpr COLORREF SKIN_NO_COLOR_KEY = 0xFFFFFFFF;
// The colour of the bitmap's top left pixel is transparent.
inline constexpr COLORREF SKIN_CORNER_COLOR_KEY = 0xFFFFFFFE;

// A bitmap of cells that are stacked from top to bottom, one for each state. Each cell is cut into nine pieces: four corners,
// which keep their size, and edges and a centre, which are stretched.
struct SkinBitmapInfo {
    UINT nBitmapID = 0;  // 0: there is no bitmap
    UINT nCellWidth = 0;
    UINT nCellHeight = 0;
    UINT nCorner = 0;       // side of a corner; of a window frame: of its outer part
    UINT nInnerCorner = 0;  // window frames only: side of a corner of its inner part
    UINT nPadding = 0;      // window frames only: margin around the picture in each cell, on all four sides
};

// A bitmap of glyphs that are stacked in the same way, to be drawn upon a button.
struct SkinCaptionBitmapInfo {
    UINT nBitmapID = 0;  // 0: no glyph is drawn
    UINT nGlyphWidth = 0;
    UINT nGlyphHeight = 0;
    BOOL bStretch = FALSE;  // stretched over the button, or in its middle at its own size
    // Pixels of exactly this colour are transparent: a colour (0x00BBGGRR) or one of the two values above.
    COLORREF crTransparent = SKIN_CORNER_COLOR_KEY;
};

// The skin of an application. The order of the members is part of the interface.
struct KADATA_API SkinInfo {
    SkinBitmapInfo button;

    // Optional.
    SkinCaptionBitmapInfo buttonGlyph;
    SkinCaptionBitmapInfo closeGlyph;     // of the close box
    SkinCaptionBitmapInfo minimizeGlyph;  // of the minimise box

    SkinBitmapInfo windowBackground;  // one cell, without corners
    SkinBitmapInfo captionButton;     // of the boxes in a window's caption
    SkinBitmapInfo windowFrame;
    SkinBitmapInfo toolBar;
    SkinBitmapInfo toolBarButton;
    SkinBitmapInfo statusBar;
    SkinBitmapInfo statusBarPane;

    UINT nFrameWidth = 0;  // left, right and below
    UINT nCaptionHeight = 0;
    UINT nSmallCaptionHeight = 0;  // of tool windows
    UINT nCaptionButtonWidth = 0;
    UINT nCaptionButtonHeight = 0;
    UINT nCaptionButtonGap = 0;
    UINT nToolBarHeight = 0;
    UINT nStatusBarHeight = 0;
    UINT nButtonHeight = 0;
    UINT nButtonGap = 0;
    UINT nContentMargin = 0;  // between a window's frame and what it shows

    // Captions of the message box.
    UINT nOKTextID = 0;
    UINT nCancelTextID = 0;
    UINT nAbortTextID = 0;
    UINT nRetryTextID = 0;
    UINT nIgnoreTextID = 0;
    UINT nIgnoreAllTextID = 0;
    UINT nYesTextID = 0;
    UINT nYesToAllTextID = 0;
    UINT nNoTextID = 0;
    UINT nNoToAllTextID = 0;
    UINT nContinueTextID = 0;  // Deliberate: behind the others, though its caption number is 6
    UINT nSaveTextID = 0;      // of the button with command 16
    UINT nDiscardTextID = 0;   // of the button with command 17
    UINT nHelpTextID = 0;
    UINT nDoNotShowAgainTextID = 0;
    UINT nRememberAnswerTextID = 0;

    // Whether all is there: of everything but the three glyphs, each bitmap number, each measure and each text number is other
    // than 0.
    BOOL IsComplete() const;
};
