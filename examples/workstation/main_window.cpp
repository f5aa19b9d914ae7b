#include "main_window.h"

#include <kadata/directory.h>
#include <kadata/tarvo_exception.h>

#include <algorithm>

#include "patient_card.h"
#include "picture_file.h"
#include "pictures.h"
#include "save_patient.h"
#include "skin/skin_ids.h"

namespace {

constexpr int WIDTH = 760;
constexpr int HEIGHT = 500;
constexpr int LEAST_WIDTH = 480;
constexpr int LEAST_HEIGHT = 320;

std::vector<SPatientRow> RowsOf(const std::vector<SImported>& patients) {
    std::vector<SPatientRow> rows;
    for (const SImported& imported : patients) {
        const CPatient& patient = imported.patient;
        rows.push_back({patient.GetName(), patient.GetFirstName(), patient.GetBirthDayString(), patient.GetExtID()});
    }
    return rows;
}

}  // namespace

BEGIN_MESSAGE_MAP(CMainWindow, CWnd)
ON_WM_PAINT()
ON_MESSAGE(WM_PRINTCLIENT, OnPrintClient)
ON_WM_GETMINMAXINFO()
ON_WM_SIZE()
ON_WM_MOUSEMOVE()
ON_WM_MOUSELEAVE()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_LBUTTONDBLCLK()
ON_WM_MOUSEWHEEL()
ON_WM_KEYDOWN()
END_MESSAGE_MAP()

CMainWindow::CMainWindow(const SkinInfo& skin, int percent, LANGID language, const std::vector<SImported>& patients,
                         const CString& data)
    : m_data(data),
      m_percent(percent),
      m_language(language),
      m_view(skin, percent, language, RowsOf(patients)),
      m_skin(CSkinStubWnd::SkinFrame | CSkinStubWnd::SkinBackground) {
    for (const SImported& imported : patients) {
        m_patients.push_back(imported.patient);
    }
    m_state.status = m_view.Text(IDS_READY);
}

BOOL CMainWindow::Create() {
    const CRect rect(CPoint(), CSize(m_view.Pixels(WIDTH), m_view.Pixels(HEIGHT)));
    const LPCTSTR look = AfxRegisterWndClass(CS_DBLCLKS, LoadCursorW(nullptr, IDC_ARROW));
    m_skin.SetSkinInfo(m_view.Skin());
    m_skin.SetCaptionLook(&m_view.BoldFont(), TEXT_COLOR, QUIET_TEXT_COLOR);
    if (!m_view.Load() || !CreateEx(0, look, m_view.Text(IDS_TITLE), WS_OVERLAPPEDWINDOW, rect, nullptr, 0) ||
        !m_skin.Apply(this)) {
        return FALSE;
    }
    m_view.SetSize(CSkinClientRect(this).Size());  // an overlapped window hears of its size when it is shown
    return TRUE;
}

void CMainWindow::OnPaint() {
    CPaintDC dc(this);
    DrawOn(dc);
}

LRESULT CMainWindow::OnPrintClient(WPARAM dc, LPARAM) {
    DrawOn(*CDC::FromHandle(reinterpret_cast<HDC>(dc)));
    return 0;
}

// Off screen, upon the skin's background, and copied at once.
void CMainWindow::DrawOn(CDC& dc) {
    const CSize size = m_view.Layout().content.Size();
    if (size.cx <= 0 || size.cy <= 0) {
        return;
    }
    CPicture picture(&dc, size.cx, size.cy);
    SendMessage(WM_ERASEBKGND, reinterpret_cast<WPARAM>(picture.Context().GetSafeHdc()));
    m_view.Draw(picture.Context(), picture.Graphics(), m_state);
    dc.BitBlt(0, 0, size.cx, size.cy, &picture.Context(), 0, 0, SRCCOPY);
}

void CMainWindow::OnGetMinMaxInfo(MINMAXINFO* info) {
    info->ptMinTrackSize = CPoint(m_view.Pixels(LEAST_WIDTH), m_view.Pixels(LEAST_HEIGHT));
}

void CMainWindow::OnSize(UINT type, int width, int height) {
    if (type == SIZE_MINIMIZED) {
        return;
    }
    m_view.SetSize(CSize(width, height));
    Select(m_state.selected);
}

void CMainWindow::OnMouseMove(UINT, CPoint point) {
    TRACKMOUSEEVENT track = {sizeof(track), TME_LEAVE, *this, 0};
    TrackMouseEvent(&track);
    SetHot(m_view.Layout().ItemAt(point));
}

void CMainWindow::OnMouseLeave() {
    SetHot(ITEM_NONE);
}

void CMainWindow::SetHot(EItem item) {
    if (m_state.hot != item) {
        m_state.hot = item;
        Invalidate(FALSE);
    }
}

void CMainWindow::OnLButtonDown(UINT, CPoint point) {
    const EItem item = m_view.Layout().ItemAt(point);
    const int row = m_view.Layout().RowAt(point);
    if (item != ITEM_NONE && m_view.IsEnabled(item, m_state)) {
        m_state.pressed = item;
        SetCapture();
    } else if (row >= 0 && m_state.first + row < m_view.Rows()) {
        Select(m_state.first + row);
    }
    Invalidate(FALSE);
}

void CMainWindow::OnLButtonUp(UINT, CPoint point) {
    const EItem pressed = m_state.pressed;
    if (pressed == ITEM_NONE) {
        return;
    }
    m_state.pressed = ITEM_NONE;
    ReleaseCapture();
    Invalidate(FALSE);
    if (m_view.Layout().ItemAt(point) == pressed) {
        Act(pressed);
    }
}

void CMainWindow::OnLButtonDblClk(UINT keys, CPoint point) {
    if (m_view.Layout().RowAt(point) < 0) {
        OnLButtonDown(keys, point);
    } else {
        ShowCard();
    }
}

BOOL CMainWindow::OnMouseWheel(UINT, short delta, CPoint) {
    Select(m_state.selected + (delta > 0 ? -1 : 1));
    return TRUE;
}

void CMainWindow::OnKeyDown(UINT key, UINT, UINT) {
    const struct {
        UINT key;
        EItem item;
    } keys[] = {
        {VK_HOME, ITEM_FIRST}, {VK_UP, ITEM_PREVIOUS}, {VK_DOWN, ITEM_NEXT}, {VK_END, ITEM_LAST}, {VK_RETURN, ITEM_PICTURES}};
    if (key == VK_SPACE) {
        ShowCard();
    } else if (key == 'S' && GetKeyState(VK_CONTROL) < 0 && m_view.IsEnabled(ITEM_SAVE, m_state)) {
        Save();
    }
    for (const auto& row : keys) {
        if (row.key == key && m_view.IsEnabled(row.item, m_state)) {
            Act(row.item);
        }
    }
}

// The nearest row there is, and scrolls to it.
void CMainWindow::Select(int row) {
    const int shown = std::max(m_view.Layout().RowsShown(), 1);
    m_state.selected = std::max(std::min(row, m_view.Rows() - 1), 0);
    m_state.first = std::clamp(m_state.first, std::max(m_state.selected - shown + 1, 0), m_state.selected);
    Invalidate(FALSE);
}

void CMainWindow::Act(EItem item) {
    switch (item) {
        case ITEM_CLOSE:
            PostMessage(WM_CLOSE);
            break;
        case ITEM_SAVE:
            Save();
            break;
        case ITEM_PICTURES:
            ShowPictureCount();
            break;
        default:
            Select(item == ITEM_FIRST      ? 0
                   : item == ITEM_PREVIOUS ? m_state.selected - 1
                   : item == ITEM_NEXT     ? m_state.selected + 1
                                           : m_view.Rows() - 1);
    }
}

void CMainWindow::ShowPictureCount() {
    const CPatient& patient = m_patients[static_cast<std::size_t>(m_state.selected)];
    CImageInfoArray pictures;
    FindPictures(m_data, patient, pictures);
    m_state.status.Format(m_view.Text(IDS_PICTURES_FOUND), static_cast<LPCTSTR>(patient.GetName()),
                          static_cast<int>(pictures.GetSize()));
    Invalidate(FALSE);
}

// What is wrong is in the log by then; the user is asked whether to be told more.
void CMainWindow::Save() {
    const CPatient& patient = m_patients[static_cast<std::size_t>(m_state.selected)];
    try {
        SavePatient(patient, CDirectory::Concat(CDirectory::GetExePath(), _T("CASES")));
        m_state.status.Format(m_view.Text(IDS_PATIENT_SAVED), static_cast<LPCTSTR>(patient.GetName()));
        Invalidate(FALSE);
    } catch (CTarvoException* error) {
        error->Display();
        error->Delete();
    }
}

void CMainWindow::ShowCard() {
    if (m_view.Rows() > 0) {
        CPatientCard(m_view.Skin(), m_percent, m_language, m_patients[static_cast<std::size_t>(m_state.selected)]).DoModal();
    }
}
