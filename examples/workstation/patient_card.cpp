#include "patient_card.h"

#include "skin/skin_ids.h"

namespace {

// Of the 100 % skin.
constexpr int WIDTH = 420;
constexpr int HEIGHT = 196;
constexpr int MARGIN = 16;
constexpr int LINE = 26;
constexpr int LABEL_WIDTH = 100;
constexpr int VALUE_WIDTH = 120;
constexpr int TEXT_SIZE = 13;

}  // namespace

BEGIN_MESSAGE_MAP(CTeethStatic, CTransparentBitmapStatic)
ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

int CTeethStatic::ToothAt(CPoint point) {
    CTransparentBitmap& picture = GetTransparentBitmap();
    return picture.HitTest(point) ? point.x * TEETH / picture.Width() + 1 : 0;
}

void CTeethStatic::OnLButtonDown(UINT, CPoint point) {
    ::SendMessageW(GetParent()->GetSafeHwnd(), WM_TOOTH, static_cast<WPARAM>(ToothAt(point)), 0);
}

BEGIN_MESSAGE_MAP(CPatientCard, CDialog)
ON_MESSAGE(CTeethStatic::WM_TOOTH, OnTooth)
END_MESSAGE_MAP()

CPatientCard::CPatientCard(const SkinInfo& skin, int percent, LANGID language, const CPatient& patient)
    : CDialog(IDD),
      m_info(skin),
      m_percent(percent),
      m_language(language),
      m_patient(patient),
      m_skin(CSkinStubWnd::SkinFrame | CSkinStubWnd::SkinBackground) {
    MakeFont(m_font, TEXT_SIZE * percent / 100);
    MakeFont(m_boldFont, TEXT_SIZE * percent / 100, FW_BOLD);
}

CRect CPatientCard::Scaled(int x, int y, int width, int height) const {
    return {x * m_percent / 100, y * m_percent / 100, (x + width) * m_percent / 100, (y + height) * m_percent / 100};
}

void CPatientCard::MakeText(CStatic& control, const CString& text, CFont& font, const CRect& rect) {
    control.Create(text, WS_CHILD | WS_VISIBLE | SS_LEFT | SS_NOPREFIX, rect, this);
    control.SetFont(&font, FALSE);
}

BOOL CPatientCard::OnInitDialog() {
    CRect size = Scaled(0, 0, WIDTH, HEIGHT);
    CalcWindowRect(&size);
    SetWindowPos(nullptr, 0, 0, size.Width(), size.Height(), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowText(Text(IDS_CARD));
    const CString values[] = {m_patient.GetName(), m_patient.GetFirstName(), m_patient.GetBirthDayString(), m_patient.GetExtID()};
    constexpr UINT LABELS[] = {IDS_NAME, IDS_FIRST_NAME, IDS_BORN, IDS_NUMBER};
    for (std::size_t i = 0; i < m_labels.size(); ++i) {
        const int y = MARGIN + static_cast<int>(i) * LINE;
        MakeText(m_labels[i], Text(LABELS[i]), m_font, Scaled(MARGIN, y, LABEL_WIDTH, LINE - 6));
        MakeText(m_values[i], values[i], m_boldFont, Scaled(MARGIN + LABEL_WIDTH, y, VALUE_WIDTH, LINE - 6));
    }
    constexpr int PICTURE_LEFT = MARGIN + LABEL_WIDTH + VALUE_WIDTH + 8;
    m_teeth.Create(nullptr, WS_CHILD | WS_VISIBLE | SS_NOTIFY, Scaled(PICTURE_LEFT, MARGIN, 160, 56), this);
    m_teeth.GetTransparentBitmap().LoadBitmapScaled(m_percent == 200 ? IDB_TEETH + IDB_LARGE : IDB_TEETH, nullptr);
    MakeText(m_hint, Text(IDS_CLICK_TOOTH), m_font, Scaled(PICTURE_LEFT, MARGIN + 64, 160, LINE));

    m_skin.SetSkinInfo(m_info);
    m_skin.SetCaptionLook(&m_boldFont, TEXT_COLOR, QUIET_TEXT_COLOR);
    m_skin.Apply(this);
    CenterWindow();
    return TRUE;
}

LRESULT CPatientCard::OnTooth(WPARAM tooth, LPARAM) {
    CString text = Text(IDS_NO_TOOTH);
    if (tooth != 0) {
        text.Format(Text(IDS_TOOTH), static_cast<int>(tooth));
    }
    m_hint.SetWindowText(text);
    return 0;
}

CString CPatientCard::Hint() const {
    CString text;
    m_hint.GetWindowText(text);
    return text;
}
