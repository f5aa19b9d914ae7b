#include "afx_frame_wnd.h"

IMPLEMENT_DYNCREATE(CFrameWnd, CWnd)

BOOL CFrameWnd::Create(LPCTSTR className, LPCTSTR title, DWORD style, const RECT& rect, CWnd* parent, LPCTSTR menuName,
                       DWORD exStyle, LPVOID parameter) {
    if (menuName != nullptr) {
        PostNcDestroy();
        return FALSE;
    }
    return CreateEx(exStyle, className, title, style, rect, parent, 0, parameter);
}

BOOL CFrameWnd::PreCreateWindow(CREATESTRUCT& description) {
    if (description.lpszClass == nullptr) {
        const auto background = reinterpret_cast<HBRUSH>(static_cast<UINT_PTR>(COLOR_WINDOW + 1));
        description.lpszClass =
            AfxRegisterWndClass(CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, ::LoadCursorW(nullptr, IDC_ARROW), background);
    }
    return CWnd::PreCreateWindow(description);
}
