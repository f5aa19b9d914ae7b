#pragma once

// A dialog in the skin: frame, caption, close box, background, push buttons and check boxes.
//
// The skin is CSkinManager's at the time the dialog opens. Without a complete skin, or where a bitmap of it cannot be loaded, the
// whole dialog has the system's look and works all the same. One thread, that of the user interface.
//
// Frame
//   The client area lies inside of the skin's frame: nFrameWidth on three sides, nCaptionHeight (nSmallCaptionHeight of a
//   tool window) above, and everywhere the line that the inner frame draws, a quarter of nFrameWidth. A dialog with a caption
//   and WS_SYSMENU has a close box, which is greyed with the SC_CLOSE item of the system menu; it has no other boxes, and its
//   size is fixed. The window itself has no WS_CAPTION while the skin is on. Dialogs without WS_CAPTION, and children, have the
//   background only.
//
// Buttons
//   Those of the template are skinned in OnInitDialog, but for the ones that have an object by then: a derived class that wants
//   objects of its own attaches them (SubclassDlgItem) before it calls the base. Push buttons know all eight states of
//   CSkin::ESkinBitmapType, "default" being the one that Enter presses. Check boxes are drawn as a small button, with the
//   skin's button glyph upon it where it is checked; without a glyph they keep the system's look. Other buttons are the system's.

#include <afxwin.h>
#include <kadata/export.h>
#include <kadata/skin_info.h>

#include <memory>

namespace kadata {
class DialogSurfaces;
class SkinnedFrame;
class SkinnedButtons;
}  // namespace kadata

class KADATA_API CSkinDialog : public CDialog {
    DECLARE_DYNAMIC(CSkinDialog)

public:
    // As CDialog's.
    CSkinDialog();
    explicit CSkinDialog(LPCTSTR templateName, CWnd* parent = nullptr);
    explicit CSkinDialog(UINT templateId, CWnd* parent = nullptr);
    ~CSkinDialog() override;

    // Puts the skin on. The client area keeps its size, so the window gets another one.
    BOOL OnInitDialog() override;
    // Counts with the skinned frame where there is one.
    void CalcWindowRect(LPRECT rect, UINT adjust = adjustBorder) override;
    // Whether the open dialog is drawn by the skin.
    BOOL IsSkinned() const { return m_surfaces != nullptr; }

protected:
    // The skin to open with; asked once each time the dialog opens. The default is CSkinManager's.
    virtual const SkinInfo& GetSkinInfo() const;
    // Gives a push button or a check box of this dialog the skin's look for as long as the dialog is open, and nothing where
    // the dialog has none or the button has an object already.
    void SkinButton(HWND button);

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg HBRUSH OnCtlColor(CDC* dc, CWnd* control, UINT kind);
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

private:
    void PutFrameOn();
    void SkinChildren();

    std::unique_ptr<kadata::DialogSurfaces> m_surfaces;  // null without a skin
    std::unique_ptr<kadata::SkinnedFrame> m_frame;       // null without a frame of the skin
    std::unique_ptr<kadata::SkinnedButtons> m_buttons;   // null without a skin
};
