// Sizes and places in the message box.

#include <kadata/skin_message_box.h>

#include <algorithm>

#include "message_text.h"

namespace {

constexpr int MARGIN = 8;  // dialog units, as all of these
constexpr int GAP = 4;
constexpr int CHECK = 14;  // a check box without its text
constexpr int BUTTON_WIDTH = 40;
constexpr int BUTTON_HEIGHT = 14;
constexpr int BUTTON_PADDING_X = 4;
constexpr int BUTTON_PADDING_Y = 1;

constexpr int WIDER_THAN_HALF = 100;  // pixels

LPCTSTR SystemIcon(UINT style) {
    switch (style & MB_ICONMASK) {
        case MB_ICONHAND:
            return IDI_HAND;
        case MB_ICONQUESTION:
            return IDI_QUESTION;
        case MB_ICONEXCLAMATION:
            return IDI_EXCLAMATION;
        case MB_ICONASTERISK:
            return IDI_ASTERISK;
        default:
            return nullptr;
    }
}

CSize SizeOf(HICON icon) {
    ICONINFO info = {};
    if (icon == nullptr || !::GetIconInfo(icon, &info)) {
        return {};
    }
    BITMAP mask = {};
    ::GetObjectW(info.hbmMask, sizeof(mask), &mask);
    const CSize size(mask.bmWidth, info.hbmColor != nullptr ? mask.bmHeight : mask.bmHeight / 2);
    ::DeleteObject(info.hbmMask);
    ::DeleteObject(info.hbmColor);
    return size;
}

}  // namespace

void CSkinMessageBox::MeasureDialogUnits() {
    CRect rect(0, 0, 1000, 1000);
    MapDialogRect(rect);
    m_thousandUnits = rect.Size();
}

int CSkinMessageBox::XDialogUnitToPixel(int units) {
    if (m_thousandUnits == CSize()) {
        MeasureDialogUnits();
    }
    return units * m_thousandUnits.cx / 1000;
}

int CSkinMessageBox::YDialogUnitToPixel(int units) {
    if (m_thousandUnits == CSize()) {
        MeasureDialogUnits();
    }
    return units * m_thousandUnits.cy / 1000;
}

// What is left of the work area inside of the frame.
CSize CSkinMessageBox::LargestClient() {
    CWnd* const owner = GetOwner();
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof(monitor);
    ::GetMonitorInfoW(::MonitorFromWindow(owner != nullptr ? owner->m_hWnd : m_hWnd, MONITOR_DEFAULTTONEAREST), &monitor);
    CRect frame;
    CalcWindowRect(frame);
    return CRect(monitor.rcWork).Size() - frame.Size();
}

void CSkinMessageBox::Measure() {
    CDC dc;
    if (!dc.CreateDC(_T("DISPLAY"), nullptr, nullptr, nullptr)) {
        return;
    }
    CFont* const font = GetFont();
    CFont* const before = font != nullptr ? dc.SelectObject(font) : nullptr;
    m_thousandUnits = CSize();
    MeasureIcon();
    MeasureCheckBox(dc);
    MeasureButtons(dc);
    MeasureMessage(dc);
    if (before != nullptr) {
        dc.SelectObject(before);
    }
}

void CSkinMessageBox::MeasureIcon() {
    const LPCTSTR name = SystemIcon(m_style);
    m_shownIcon = m_icon != nullptr ? m_icon : name != nullptr ? ::LoadIconW(nullptr, name) : nullptr;
    m_iconSize = SizeOf(m_shownIcon);
    if (m_iconSize == CSize()) {
        m_shownIcon = nullptr;
    }
}

void CSkinMessageBox::MeasureCheckBox(CDC& dc) {
    m_checkBoxSize = CSize();
    if (HasCheckBox()) {
        m_checkBoxSize = dc.GetTextExtent(CheckBoxCaption());
        const int most = LargestClient().cx - XDialogUnitToPixel(MARGIN) - MessagePlace().x;
        m_checkBoxSize.cx = std::min<int>(m_checkBoxSize.cx + XDialogUnitToPixel(CHECK), std::max(most, 0));
    }
}

// Deliberate: the horizontal units count for the padding above and below, too.
void CSkinMessageBox::MeasureButtons(CDC& dc) {
    m_buttonSize = CSize(XDialogUnitToPixel(BUTTON_WIDTH), YDialogUnitToPixel(BUTTON_HEIGHT));
    for (const tagMSGBOXBTN& button : m_buttons) {
        const CSize text = dc.GetTextExtent(CaptionOf(button));
        m_buttonSize = CSize(std::max(m_buttonSize.cx, text.cx), std::max(m_buttonSize.cy, text.cy));
    }
    m_buttonSize += CSize(2 * XDialogUnitToPixel(BUTTON_PADDING_X), 2 * XDialogUnitToPixel(BUTTON_PADDING_Y));
    const int count = static_cast<int>(m_buttons.size());
    const int room = LargestClient().cx - 2 * XDialogUnitToPixel(MARGIN) - (count - 1) * XDialogUnitToPixel(GAP);
    m_buttonSize.cx = std::min<LONG>(m_buttonSize.cx, std::max(room / count, 1));
}

void CSkinMessageBox::MeasureMessage(CDC& dc) {
    int width = ::GetSystemMetrics(SM_CXSCREEN) / 2 + WIDER_THAN_HALF;
    if (m_shownIcon != nullptr) {
        width -= 2 * XDialogUnitToPixel(MARGIN) + m_iconSize.cx;
    }
    m_shownMessage = kadata::FitMessage(dc, m_message, width, RoomForMessage(), m_messageSize);
}

// The largest message with which the layout stays inside of the work area.
CSize CSkinMessageBox::RoomForMessage() {
    const int x = XDialogUnitToPixel(MARGIN);
    const int y = YDialogUnitToPixel(MARGIN);
    const int gap = YDialogUnitToPixel(GAP);
    const int around = HasCheckBox() ? 3 * y + gap + m_checkBoxSize.cy : 2 * y + gap;
    const CSize client = LargestClient();
    // To the right of the message there are two margins.
    const int width = client.cx - MessagePlace().x - 2 * x;
    const int height = client.cy - around - y - m_buttonSize.cy;
    return {std::max(width, 1), std::max(height, 1)};
}

CPoint CSkinMessageBox::MessagePlace() {
    const int x = XDialogUnitToPixel(MARGIN);
    return {m_shownIcon != nullptr ? 2 * x + m_iconSize.cx : x, YDialogUnitToPixel(MARGIN)};
}

int CSkinMessageBox::ButtonRowWidth() {
    const int count = static_cast<int>(m_buttons.size());
    return count * m_buttonSize.cx + (count - 1) * XDialogUnitToPixel(GAP);
}

void CSkinMessageBox::DefineLayout() {
    const int x = XDialogUnitToPixel(MARGIN);
    const int y = YDialogUnitToPixel(MARGIN);
    const int gap = YDialogUnitToPixel(GAP);
    const CPoint message = MessagePlace();
    int width = 2 * x;
    int height = 2 * y;
    const auto place = [this](int id, CPoint at, CSize size) {
        if (CWnd* const control = GetDlgItem(id)) {
            control->MoveWindow(CRect(at, size));
        }
    };
    if (m_shownIcon != nullptr) {
        place(ControlIcon, CPoint(x, y), m_iconSize);
        width += x + m_iconSize.cx;
        height += y + m_iconSize.cy;
    }
    width += x + m_messageSize.cx;
    height = std::max(height, static_cast<int>(m_messageSize.cy) + gap + 2 * y);
    place(ControlMessage, message, m_messageSize);
    if (HasCheckBox()) {
        const CPoint check(message.x, 2 * y + gap + m_messageSize.cy);
        place(ControlCheckBox, check, m_checkBoxSize);
        width = std::max<int>(width, x + m_checkBoxSize.cx + message.x);
        height = std::max<int>(height, y + m_checkBoxSize.cy + check.y);
    }
    width = std::max(width, ButtonRowWidth() + 2 * x);
    const CSize client(width, height + y + m_buttonSize.cy);
    PlaceButtons(client);
    CRect window(CPoint(), client);
    CalcWindowRect(window);
    SetWindowPos(nullptr, 0, 0, window.Width(), window.Height(), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    CenterWindow();
    RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

void CSkinMessageBox::PlaceButtons(CSize client) {
    const int row = ButtonRowWidth();
    const bool right = (m_style & MB_BUTTONSRIGHT) != 0;
    CPoint at(right ? client.cx - row - XDialogUnitToPixel(MARGIN) : (client.cx - row) / 2,
              client.cy - m_buttonSize.cy - YDialogUnitToPixel(MARGIN));
    for (const tagMSGBOXBTN& button : m_buttons) {
        GetDlgItem(button.nCommand)->MoveWindow(CRect(at, m_buttonSize));
        at.x += m_buttonSize.cx + XDialogUnitToPixel(GAP);
    }
}
