#include "afx_controls.h"

#include <tchar.h>

IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CButton, CWnd)

BOOL CStatic::Create(LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(_T("Static"), text, style, rect, parent, id);
}

void CStatic::DrawItem(LPDRAWITEMSTRUCT /*item*/) {}

BOOL CStatic::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message != WM_DRAWITEM) {
        return CWnd::OnChildNotify(message, wParam, lParam, result);
    }
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}

BOOL CButton::Create(LPCTSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CWnd::Create(_T("Button"), caption, style, rect, parent, id);
}

void CButton::DrawItem(LPDRAWITEMSTRUCT /*item*/) {}

BOOL CButton::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message != WM_DRAWITEM) {
        return CWnd::OnChildNotify(message, wParam, lParam, result);
    }
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}
