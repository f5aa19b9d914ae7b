#include <kadata/skin_window.h>

IMPLEMENT_DYNAMIC(CSkinSubclassWnd, CObject)

CSkinSubclassWnd::~CSkinSubclassWnd() {
    if (m_Window != nullptr) {  // else the map may be gone already, when the process ends
        CSkinSubclassWndMap::GetHookMap().Remove(this);
    }
    CSkinSubclassWndMap::Forget(*this);
}

LRESULT CSkinSubclassWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return CSkinSubclassWndMap::PassOn(*this, {m_Window, message, wParam, lParam, 0, {}});
}

BOOL CSkinSubclassWnd::HookWindow(CWnd* wnd) {
    CSkinSubclassWndMap& map = CSkinSubclassWndMap::GetHookMap();
    if (wnd == nullptr) {
        map.Remove(this);
        return TRUE;
    }
    return map.Add(wnd->GetSafeHwnd(), this);
}

BOOL CSkinSubclassWnd::IsHooked(CWnd* wnd) const {
    return m_Window != nullptr && (wnd == nullptr || wnd->GetSafeHwnd() == m_Window);
}

LRESULT CSkinSubclassWnd::Default() {
    const MSG& handled = AfxGetThreadState()->m_lastSentMsg;
    return CSkinSubclassWnd::WindowProc(handled.message, handled.wParam, handled.lParam);
}
