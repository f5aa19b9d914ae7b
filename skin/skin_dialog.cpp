#include <kadata/skin_dialog.h>
#include <kadata/skin_manager.h>

#include "dialog_surfaces.h"
#include "skin_push_button.h"
#include "skinned_frame.h"

IMPLEMENT_DYNAMIC(CSkinDialog, CDialog)

BEGIN_MESSAGE_MAP(CSkinDialog, CDialog)
ON_WM_ERASEBKGND()
ON_WM_CTLCOLOR()
ON_WM_SIZE()
ON_WM_DESTROY()
END_MESSAGE_MAP()

CSkinDialog::CSkinDialog() = default;

CSkinDialog::CSkinDialog(LPCTSTR templateName, CWnd* parent) : CDialog(templateName, parent) {}

CSkinDialog::CSkinDialog(UINT templateId, CWnd* parent) : CDialog(templateId, parent) {}

// The window goes first: its last messages still need what is drawn with.
CSkinDialog::~CSkinDialog() {
    DestroyWindow();
}

const SkinInfo& CSkinDialog::GetSkinInfo() const {
    return CSkinManager::GetInstance()->GetSkinInfo();
}

BOOL CSkinDialog::OnInitDialog() {
    m_surfaces = kadata::DialogSurfaces::Load(GetSkinInfo());
    if (m_surfaces != nullptr) {
        m_buttons = std::make_unique<kadata::SkinnedButtons>();
        PutFrameOn();
        SkinChildren();
    }
    return CDialog::OnInitDialog();
}

void CSkinDialog::PutFrameOn() {
    if ((GetStyle() & (WS_CAPTION | WS_CHILD)) != WS_CAPTION) {
        return;
    }
    CRect rect;
    GetClientRect(rect);
    // A window with a frame of its own gets one from the desktop or its window manager, whatever is drawn here.
    ModifyStyle(WS_CAPTION | WS_THICKFRAME, WS_POPUP);
    ModifyStyleEx(WS_EX_DLGMODALFRAME | WS_EX_WINDOWEDGE, 0);
    m_frame = std::make_unique<kadata::SkinnedFrame>(*this, *m_surfaces);
    CalcWindowRect(rect);
    SetWindowPos(nullptr, 0, 0, rect.Width(), rect.Height(), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    if (CheckAutoCenter()) {  // the base sees that the window has changed, and would leave it alone
        CenterWindow();
    }
}

void CSkinDialog::SkinChildren() {
    for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        SkinButton(child);
    }
}

void CSkinDialog::SkinButton(HWND button) {
    if (m_buttons != nullptr) {
        m_buttons->Add(button, *m_surfaces);
    }
}

void CSkinDialog::CalcWindowRect(LPRECT rect, UINT adjust) {
    if (m_frame != nullptr) {
        m_frame->AddTo(*rect);
    } else {
        CDialog::CalcWindowRect(rect, adjust);
    }
}

LRESULT CSkinDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = m_hWnd;
    LRESULT result = 0;
    if (m_frame != nullptr && m_frame->Handle(message, wParam, lParam, result)) {
        return result;
    }
    result = CDialog::WindowProc(message, wParam, lParam);
    // The object may be gone with its window.
    if (kadata::SkinnedFrame::IsSpoiledBy(message) && FromHandlePermanent(window) == this && m_frame != nullptr) {
        m_frame->Draw();
    }
    return result;
}

BOOL CSkinDialog::OnEraseBkgnd(CDC* dc) {
    if (m_surfaces == nullptr) {
        return CDialog::OnEraseBkgnd(dc);
    }
    CRect client;
    GetClientRect(client);
    m_surfaces->FillBackground(*dc, client, client.Size(), CPoint());
    return TRUE;
}

// What a control has behind it is the dialog's background, at the control's place.
HBRUSH CSkinDialog::OnCtlColor(CDC* dc, CWnd* control, UINT kind) {
    const HBRUSH plain = CDialog::OnCtlColor(dc, control, kind);
    CRect client;
    GetClientRect(client);
    const bool transparent = kind == CTLCOLOR_STATIC || kind == CTLCOLOR_BTN;
    CBrush* const brush = m_surfaces != nullptr && transparent ? m_surfaces->Background(client.Size()) : nullptr;
    if (brush == nullptr) {
        return plain;
    }
    CPoint corner;
    control->MapWindowPoints(this, &corner, 1);
    dc->SetBrushOrg(-corner.x, -corner.y);
    dc->SetBkMode(TRANSPARENT);
    return *brush;
}

// The background is stretched over all of the client area.
void CSkinDialog::OnSize(UINT type, int width, int height) {
    CDialog::OnSize(type, width, height);
    if (m_surfaces != nullptr) {
        RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
    }
}

void CSkinDialog::OnDestroy() {
    CDialog::OnDestroy();
    m_buttons.reset();
    m_frame.reset();
    m_surfaces.reset();
}
