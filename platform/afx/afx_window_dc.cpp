#include "afx_window_dc.h"

#include "afx_exception.h"
#include "afx_wnd.h"

IMPLEMENT_DYNAMIC(CClientDC, CDC)
IMPLEMENT_DYNAMIC(CWindowDC, CDC)
IMPLEMENT_DYNAMIC(CPaintDC, CDC)

namespace {

HWND HandleOf(const CWnd* window) {
    return window != nullptr ? window->m_hWnd : nullptr;
}

void AttachOrThrow(CDC& target, HDC dc) {
    if (!target.Attach(dc)) {
        AfxThrowResourceException();
    }
}

}  // namespace

CClientDC::CClientDC(CWnd* window) : m_hWnd(::HandleOf(window)) {
    AttachOrThrow(*this, ::GetDC(m_hWnd));
}

CClientDC::~CClientDC() {
    ::ReleaseDC(m_hWnd, Detach());
}

CWindowDC::CWindowDC(CWnd* window) : m_hWnd(::HandleOf(window)) {
    AttachOrThrow(*this, ::GetWindowDC(m_hWnd));
}

CWindowDC::~CWindowDC() {
    ::ReleaseDC(m_hWnd, Detach());
}

CPaintDC::CPaintDC(CWnd* window) : m_hWnd(::HandleOf(window)) {
    AttachOrThrow(*this, ::BeginPaint(m_hWnd, &m_ps));
}

CPaintDC::~CPaintDC() {
    Detach();
    ::EndPaint(m_hWnd, &m_ps);
}
