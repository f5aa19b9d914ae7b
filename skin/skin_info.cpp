#include <kadata/skin_info.h>

#include <algorithm>
#include <iterator>

BOOL SkinInfo::IsComplete() const {
    const UINT needed[] = {
        button.nBitmapID,
        windowBackground.nBitmapID,
        captionButton.nBitmapID,
        windowFrame.nBitmapID,
        toolBar.nBitmapID,
        toolBarButton.nBitmapID,
        statusBar.nBitmapID,
        statusBarPane.nBitmapID,
        nFrameWidth,
        nCaptionHeight,
        nSmallCaptionHeight,
        nCaptionButtonWidth,
        nCaptionButtonHeight,
        nCaptionButtonGap,
        nToolBarHeight,
        nStatusBarHeight,
        nButtonHeight,
        nButtonGap,
        nContentMargin,
        nOKTextID,
        nCancelTextID,
        nAbortTextID,
        nRetryTextID,
        nIgnoreTextID,
        nIgnoreAllTextID,
        nYesTextID,
        nYesToAllTextID,
        nNoTextID,
        nNoToAllTextID,
        nContinueTextID,
        nSaveTextID,
        nDiscardTextID,
        nHelpTextID,
        nDoNotShowAgainTextID,
        nRememberAnswerTextID,
    };
    return std::find(std::begin(needed), std::end(needed), 0U) == std::end(needed);
}
