#include "skin_setup.h"

#include "skin/skin_ids.h"

namespace {

// Fills a description: numbers of the large skin's bitmaps lie IDB_LARGE further, and all measures are twice as long.
class CMaker {
public:
    explicit CMaker(int percent) : m_large(percent == 200) {}

    UINT Pixels(UINT normal) const { return m_large ? 2 * normal : normal; }
    SkinBitmapInfo Bitmap(UINT id, UINT width, UINT height, UINT corner, UINT innerCorner = 0, UINT padding = 0) const {
        return {Number(id), Pixels(width), Pixels(height), Pixels(corner), Pixels(innerCorner), Pixels(padding)};
    }
    SkinCaptionBitmapInfo Glyph(UINT id, UINT side) const {
        return {Number(id), Pixels(side), Pixels(side), FALSE, SKIN_CORNER_COLOR_KEY};
    }

private:
    UINT Number(UINT id) const { return m_large ? id + IDB_LARGE : id; }

    bool m_large;
};

void SetBitmaps(SkinInfo& info, const CMaker& make) {
    info.button = make.Bitmap(IDB_BUTTON, 96, 48, 12);
    info.buttonGlyph = make.Glyph(IDB_BUTTON_CHECK, 16);
    info.closeGlyph = make.Glyph(IDB_CAPTION_CLOSE, 10);
    info.minimizeGlyph = make.Glyph(IDB_CAPTION_MINIMIZE, 10);
    info.windowBackground = {IDB_WINDOW_BACKGROUND, 640, 400, 0, 0, 0};
    info.captionButton = make.Bitmap(IDB_CAPTION_BUTTON, 44, 28, 6);
    info.windowFrame = make.Bitmap(IDB_WINDOW_FRAME, 100, 100, 32, 4, 2);
    info.toolBar = make.Bitmap(IDB_TOOL_BAR, 32, 40, 8);
    info.toolBarButton = make.Bitmap(IDB_TOOL_BAR_BUTTON, 40, 32, 8);
    info.statusBar = make.Bitmap(IDB_STATUS_BAR, 32, 26, 4);
    info.statusBarPane = make.Bitmap(IDB_STATUS_BAR_PANE, 40, 26, 4);
}

void SetMeasures(SkinInfo& info, const CMaker& make) {
    info.nFrameWidth = make.Pixels(4);
    info.nCaptionHeight = make.Pixels(32);
    info.nSmallCaptionHeight = make.Pixels(24);
    info.nCaptionButtonWidth = make.Pixels(40);
    info.nCaptionButtonHeight = make.Pixels(24);
    info.nCaptionButtonGap = make.Pixels(2);
    info.nToolBarHeight = make.Pixels(40);
    info.nStatusBarHeight = make.Pixels(26);
    info.nButtonHeight = make.Pixels(30);
    info.nButtonGap = make.Pixels(8);
    info.nContentMargin = make.Pixels(12);
}

void SetTexts(SkinInfo& info) {
    info.nOKTextID = IDS_OK;
    info.nCancelTextID = IDS_CANCEL;
    info.nAbortTextID = IDS_ABORT;
    info.nRetryTextID = IDS_RETRY;
    info.nIgnoreTextID = IDS_IGNORE;
    info.nIgnoreAllTextID = IDS_IGNORE_ALL;
    info.nYesTextID = IDS_YES;
    info.nYesToAllTextID = IDS_YES_TO_ALL;
    info.nNoTextID = IDS_NO;
    info.nNoToAllTextID = IDS_NO_TO_ALL;
    info.nContinueTextID = IDS_CONTINUE;
    info.nSaveTextID = IDS_SAVE;
    info.nDiscardTextID = IDS_DISCARD;
    info.nHelpTextID = IDS_HELP;
    info.nDoNotShowAgainTextID = IDS_DO_NOT_SHOW_AGAIN;
    info.nRememberAnswerTextID = IDS_REMEMBER_ANSWER;
}

}  // namespace

SkinInfo MakeSkinInfo(int percent) {
    SkinInfo info;
    const CMaker make(percent);
    SetBitmaps(info, make);
    SetMeasures(info, make);
    SetTexts(info);
    return info;
}

BOOL SSurfaces::Load(const SkinInfo& info) {
    SkinInfo skin = info;
    SkinCaptionBitmapInfo none;
    SkinCaptionBitmapInfo maximize = skin.closeGlyph;  // of the same size
    SkinCaptionBitmapInfo restore = skin.closeGlyph;
    maximize.nBitmapID += IDB_CAPTION_MAXIMIZE - IDB_CAPTION_CLOSE;
    restore.nBitmapID += IDB_CAPTION_RESTORE - IDB_CAPTION_CLOSE;
    const struct {
        CSkin& surface;
        SkinBitmapInfo& bitmap;
        SkinCaptionBitmapInfo& glyph;
    } buttons[] = {{button, skin.button, none},
                   {checkButton, skin.button, skin.buttonGlyph},
                   {closeBox, skin.captionButton, skin.closeGlyph},
                   {minimizeBox, skin.captionButton, skin.minimizeGlyph},
                   {maximizeBox, skin.captionButton, maximize},
                   {restoreBox, skin.captionButton, restore},
                   {toolBar, skin.toolBar, none},
                   {toolBarButton, skin.toolBarButton, none},
                   {statusBar, skin.statusBar, none},
                   {statusBarPane, skin.statusBarPane, none}};
    BOOL loaded = window.SetWindowBitmapInfo(skin.windowFrame) && window.SetWindowBackgroundBitmapInfo(skin.windowBackground);
    for (const auto& row : buttons) {
        loaded = loaded && row.surface.SetButtonBitmapInfo(row.bitmap, row.glyph);
        row.surface.SetCaptionTextColors(TEXT_COLOR, DISABLED_TEXT_COLOR, DISABLED_TEXT_COLOR, HIGHLIGHT_COLOR);
    }
    window.SetCaptionTextColors(TEXT_COLOR, QUIET_TEXT_COLOR, QUIET_TEXT_COLOR, HIGHLIGHT_COLOR);
    return loaded;
}

void MakeFont(CFont& font, int pixels, LONG weight) {
    LOGFONT description = {};
    description.lfHeight = -pixels;
    description.lfWeight = weight;
    description.lfCharSet = DEFAULT_CHARSET;
    description.lfQuality = ANTIALIASED_QUALITY;
    lstrcpynW(description.lfFaceName, _T("Segoe UI"), LF_FACESIZE);
    if (!font.CreateFontIndirect(&description)) {
        throw new CResourceException;
    }
}
