#include "afx_dc.h"

#include "afx_exception.h"
#include "afx_handle_map.h"

IMPLEMENT_DYNCREATE(CDC, CObject)

namespace {

using ContextMap = afx::HandleMap<CDC, &CDC::m_hDC>;

HRGN HandleOf(const CRgn* region) {
    return region != nullptr ? HRGN(*region) : nullptr;
}

HBRUSH HandleOf(const CBrush* brush) {
    return brush != nullptr ? HBRUSH(*brush) : nullptr;
}

}  // namespace

CDC::~CDC() {
    CDC::DeleteDC();
}

CDC* CDC::FromHandle(HDC dc) {
    if (CDC* const permanent = ContextMap::FindPermanent(dc)) {
        return permanent;
    }
    CDC* const temporary = ContextMap::FromHandle(dc);
    if (temporary != nullptr) {
        temporary->m_hAttribDC = dc;
    }
    return temporary;
}

void CDC::DeleteTempMap() {
    ContextMap::DeleteTemporaries();
}

BOOL CDC::Attach(HDC dc) {
    if (!ContextMap::Attach(*this, dc)) {
        return FALSE;
    }
    m_hAttribDC = dc;
    return TRUE;
}

HDC CDC::Detach() {
    m_hAttribDC = nullptr;
    return ContextMap::Detach(*this);
}

BOOL CDC::Own(HDC made) {
    if (Attach(made)) {
        return TRUE;
    }
    if (made != nullptr) {
        ::DeleteDC(made);
    }
    return FALSE;
}

BOOL CDC::CreateDC(LPCTSTR driver, LPCTSTR device, LPCTSTR output, const void* initData) {
    return initData == nullptr && Own(::CreateDCW(driver, device, output, nullptr));
}

BOOL CDC::CreateCompatibleDC(CDC* dc) {
    return Own(::CreateCompatibleDC(HandleOf(dc)));
}

BOOL CDC::DeleteDC() {
    const HDC dc = Detach();
    return dc != nullptr && ::DeleteDC(dc);
}

HGDIOBJ CDC::SelectHandle(HGDIOBJ object) {
    const HGDIOBJ before = m_hDC != nullptr ? ::SelectObject(m_hDC, object) : nullptr;
    if (m_hAttribDC != m_hDC && m_hAttribDC != nullptr) {
        ::SelectObject(m_hAttribDC, object);
    }
    return before != HGDI_ERROR ? before : nullptr;
}

CGdiObject* CDC::SelectStockObject(int index) {
    return CGdiObject::FromHandle(SelectHandle(::GetStockObject(index)));
}

CPoint CDC::GetBrushOrg() const {
    CPoint origin;
    ::GetBrushOrgEx(m_hAttribDC, &origin);
    return origin;
}

CPoint CDC::SetBrushOrg(int x, int y) {
    CPoint before;
    ::SetBrushOrgEx(m_hDC, x, y, &before);
    return before;
}

CPoint CDC::GetViewportOrg() const {
    CPoint origin;
    ::GetViewportOrgEx(m_hAttribDC, &origin);
    return origin;
}

CPoint CDC::SetViewportOrg(int x, int y) {
    CPoint before;
    ::SetViewportOrgEx(m_hDC, x, y, &before);
    return before;
}

CPoint CDC::OffsetViewportOrg(int x, int y) {
    CPoint before;
    ::OffsetViewportOrgEx(m_hDC, x, y, &before);
    return before;
}

CPoint CDC::GetWindowOrg() const {
    CPoint origin;
    ::GetWindowOrgEx(m_hAttribDC, &origin);
    return origin;
}

CPoint CDC::SetWindowOrg(int x, int y) {
    CPoint before;
    ::SetWindowOrgEx(m_hDC, x, y, &before);
    return before;
}

CPoint CDC::OffsetWindowOrg(int x, int y) {
    CPoint before;
    ::OffsetWindowOrgEx(m_hDC, x, y, &before);
    return before;
}

int CDC::SelectClipRgn(const CRgn* region) {
    return ::SelectClipRgn(m_hDC, ::HandleOf(region));
}

int CDC::SelectClipRgn(const CRgn* region, int mode) {
    return ::ExtSelectClipRgn(m_hDC, ::HandleOf(region), mode);
}

CPoint CDC::GetCurrentPosition() const {
    CPoint position;
    ::GetCurrentPositionEx(m_hAttribDC, &position);
    return position;
}

CPoint CDC::MoveTo(int x, int y) {
    CPoint before;
    ::MoveToEx(m_hDC, x, y, &before);
    return before;
}

void CDC::FillRect(LPCRECT rect, CBrush* brush) {
    ::FillRect(m_hDC, rect, ::HandleOf(brush));
}

void CDC::FrameRect(LPCRECT rect, CBrush* brush) {
    ::FrameRect(m_hDC, rect, ::HandleOf(brush));
}

BOOL CDC::FillRgn(CRgn* region, CBrush* brush) {
    return ::FillRgn(m_hDC, ::HandleOf(region), ::HandleOf(brush));
}

BOOL CDC::FrameRgn(CRgn* region, CBrush* brush, int width, int height) {
    return ::FrameRgn(m_hDC, ::HandleOf(region), ::HandleOf(brush), width, height);
}

BOOL CDC::PaintRgn(CRgn* region) {
    return ::PaintRgn(m_hDC, ::HandleOf(region));
}

void CDC::FillSolidRect(LPCRECT rect, COLORREF color) {
    const COLORREF before = SetBkColor(color);
    ::ExtTextOutW(m_hDC, 0, 0, ETO_OPAQUE, rect, nullptr, 0, nullptr);
    SetBkColor(before);
}

void CDC::Draw3dRect(LPCRECT rect, COLORREF topLeft, COLORREF bottomRight) {
    const CRect frame(rect);
    FillSolidRect(CRect(frame.left, frame.top, frame.right - 1, frame.top + 1), topLeft);
    FillSolidRect(CRect(frame.left, frame.top, frame.left + 1, frame.bottom - 1), topLeft);
    FillSolidRect(CRect(frame.right - 1, frame.top, frame.right, frame.bottom), bottomRight);
    FillSolidRect(CRect(frame.left, frame.bottom - 1, frame.right, frame.bottom), bottomRight);
}

int CDC::DrawText(LPCTSTR text, int length, LPRECT rect, UINT format) {
    return ::DrawTextW(m_hDC, text, length, rect, format & ~static_cast<UINT>(DT_MODIFYSTRING));
}

CSize CDC::GetTextExtent(LPCTSTR text, int length) const {
    CSize size;
    return ::GetTextExtentPoint32W(m_hAttribDC, text, length, &size) ? size : CSize();
}

CSize CDC::GetOutputTextExtent(const CString& text) const {
    CSize size;
    return ::GetTextExtentPoint32W(m_hDC, text, text.GetLength(), &size) ? size : CSize();
}
