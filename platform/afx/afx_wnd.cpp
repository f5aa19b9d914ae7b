#include "afx_wnd.h"

#include <tchar.h>

#include <algorithm>
#include <utility>

#include "afx_app.h"
#include "afx_handle_map.h"
#include "afx_resource.h"

IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

namespace {

using WindowMap = afx::HandleMap<CWnd, &CWnd::m_hWnd>;

// Whether the windows of that class come to AfxWndProc by themselves.
bool IsOwnClass(LPCTSTR className, HINSTANCE instance) {
    WNDCLASSEXW description = {};
    description.cbSize = sizeof(description);
    return ::GetClassInfoExW(instance, className, &description) && description.lpfnWndProc == &AfxWndProc;
}

bool IsChildStyle(DWORD style) {
    return (style & (WS_CHILD | WS_POPUP)) == WS_CHILD;
}

// Moves the rectangle by as little as puts it into `area`; its left and top edges are inside in any case.
void MoveInto(CRect& rect, const CRect& area) {
    rect.OffsetRect(CSize(std::min<LONG>(area.right - rect.right, 0), std::min<LONG>(area.bottom - rect.bottom, 0)));
    rect.OffsetRect(CSize(std::max<LONG>(area.left - rect.left, 0), std::max<LONG>(area.top - rect.top, 0)));
}

CRect WorkAreaOf(HWND window) {
    MONITORINFO info = {};
    info.cbSize = sizeof(info);
    ::GetMonitorInfoW(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
    return info.rcWork;
}

CString TextOf(HWND window) {
    CString text;
    const int length = ::GetWindowTextLengthW(window);
    ::GetWindowTextW(window, text.GetBufferSetLength(length), length + 1);
    text.ReleaseBuffer();
    return text;
}

}  // namespace

CWnd::~CWnd() {
    LoseModalLoop();
    CWnd::DestroyWindow();
    if (m_hWnd != nullptr) {  // it was being destroyed already: its last messages go on without the object
        LeaveThread();
        if (UnsubclassWindow() == nullptr) {
            Detach();
        }
    }
}

CWnd* CWnd::FromHandle(HWND window) {
    return WindowMap::FromHandle(window);
}

CWnd* CWnd::FromHandlePermanent(HWND window) {
    return window != nullptr ? WindowMap::FindPermanent(window) : nullptr;
}

void CWnd::DeleteTempMap() {
    WindowMap::DeleteTemporaries();
}

BOOL CWnd::Attach(HWND window) {
    if (FromHandlePermanent(window) != nullptr || !WindowMap::Attach(*this, window)) {
        return FALSE;
    }
    m_pfnSuper = nullptr;
    return TRUE;
}

HWND CWnd::Detach() {
    return WindowMap::Detach(*this);
}

BOOL CWnd::SubclassWindow(HWND window) {
    if (!Attach(window)) {
        return FALSE;
    }
    PreSubclassWindow();
    const auto before =
        reinterpret_cast<WNDPROC>(::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc)));
    if (before == nullptr) {
        Detach();
        return FALSE;
    }
    m_pfnSuper = before != &AfxWndProc ? before : nullptr;
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT id, CWnd* parent) {
    return SubclassWindow(::GetDlgItem(HandleOf(parent), static_cast<int>(id)));
}

HWND CWnd::UnsubclassWindow() {
    if (m_pfnSuper != nullptr) {
        if (reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(m_hWnd, GWLP_WNDPROC)) != &AfxWndProc) {
            return nullptr;
        }
        ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
        m_pfnSuper = nullptr;
    }
    return Detach();
}

BOOL CWnd::Create(LPCTSTR className, LPCTSTR title, DWORD style, const RECT& rect, CWnd* parent, UINT id, LPVOID parameter) {
    return CreateEx(0, className, title, style | WS_CHILD, rect, parent, id, parameter);
}

BOOL CWnd::CreateEx(DWORD exStyle, LPCTSTR className, LPCTSTR title, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                    LPVOID parameter) {
    // Unsigned: CW_USEDEFAULT as an edge leaves the range, and gives CW_USEDEFAULT as a width.
    const auto width = static_cast<int>(static_cast<UINT>(rect.right) - static_cast<UINT>(rect.left));
    const auto height = static_cast<int>(static_cast<UINT>(rect.bottom) - static_cast<UINT>(rect.top));
    return CreateEx(exStyle, className, title, style, rect.left, rect.top, width, height, HandleOf(parent),
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), parameter);
}

BOOL CWnd::CreateEx(DWORD exStyle, LPCTSTR className, LPCTSTR title, DWORD style, int x, int y, int width, int height,
                    HWND parent, HMENU menuOrId, LPVOID parameter) {
    CREATESTRUCT description = {};
    description.dwExStyle = exStyle;
    description.lpszClass = className;
    description.lpszName = title;
    description.style = static_cast<LONG>(style);
    description.x = x;
    description.y = y;
    description.cx = width;
    description.cy = height;
    description.hwndParent = parent;
    description.hMenu = menuOrId;
    description.hInstance = AfxGetInstanceHandle();
    description.lpCreateParams = parameter;
    if (m_hWnd != nullptr) {
        return FALSE;
    }
    if (!PreCreateWindow(description) || description.lpszClass == nullptr) {
        PostNcDestroy();
        return FALSE;
    }
    return CreateAs(description);
}

// Once the window has had the object, WM_NCDESTROY has told it of a failure, and it may not exist any more.
BOOL CWnd::CreateAs(const CREATESTRUCT& description) {
    _AFX_THREAD_STATE& state = *AfxGetThreadState();
    const bool own = IsOwnClass(description.lpszClass, description.hInstance);
    CWnd* const before = std::exchange(state.m_pWndInit, own ? this : nullptr);
    const HWND window =
        ::CreateWindowExW(description.dwExStyle, description.lpszClass, description.lpszName,
                          static_cast<DWORD>(description.style), description.x, description.y, description.cx, description.cy,
                          description.hwndParent, description.hMenu, description.hInstance, description.lpCreateParams);
    const bool attached = own && state.m_pWndInit == nullptr;
    state.m_pWndInit = before;
    if (!attached && !SubclassWindow(window)) {
        PostNcDestroy();
        return FALSE;
    }
    return window != nullptr;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& description) {
    if (description.lpszClass == nullptr) {
        description.lpszClass = AfxRegisterWndClass(CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, ::LoadCursorW(nullptr, IDC_ARROW));
    }
    return TRUE;
}

BOOL CWnd::DestroyWindow() {
    const HWND window = m_hWnd;
    return window != nullptr && ::DestroyWindow(window);
}

void CWnd::SendMessageToDescendants(UINT message, WPARAM wParam, LPARAM lParam) {
    const MSG sent = {m_hWnd, message, wParam, lParam, 0, {}};
    ::EnumChildWindows(
        m_hWnd,
        [](HWND child, LPARAM parameter) -> BOOL {
            const MSG& m = *reinterpret_cast<const MSG*>(parameter);
            ::SendMessageW(child, m.message, m.wParam, m.lParam);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&sent));
}

BOOL CWnd::ChangeStyle(int index, DWORD remove, DWORD add, UINT flags) {
    const auto before = static_cast<DWORD>(::GetWindowLongW(m_hWnd, index));
    const DWORD after = (before & ~remove) | add;
    if (after == before) {
        return FALSE;
    }
    ::SetWindowLongW(m_hWnd, index, static_cast<LONG>(after));
    if (flags != 0) {
        ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0, flags | SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    return TRUE;
}

void CWnd::GetWindowText(CString& text) const {
    text = TextOf(m_hWnd);
}

int CWnd::GetDlgItemText(int id, CString& text) const {
    const HWND control = ::GetDlgItem(m_hWnd, id);
    text = control != nullptr ? TextOf(control) : CString();
    return text.GetLength();
}

void CWnd::SetFont(CFont* font, BOOL redraw) {
    const HFONT handle = font != nullptr ? HFONT(*font) : nullptr;
    SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(handle), redraw != 0);
}

BOOL CWnd::GetWindowPlacement(WINDOWPLACEMENT* placement) const {
    placement->length = sizeof(WINDOWPLACEMENT);
    return ::GetWindowPlacement(m_hWnd, placement);
}

void CWnd::Print(CDC* dc, DWORD flags) const {
    SendMessage(WM_PRINT, reinterpret_cast<WPARAM>(dc->m_hDC), static_cast<LPARAM>(flags));
}

void CWnd::PrintClient(CDC* dc, DWORD flags) const {
    SendMessage(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc->m_hDC), static_cast<LPARAM>(flags));
}

void CWnd::CalcWindowRect(LPRECT rect, UINT adjust) {
    const DWORD inside = adjust == adjustBorder ? static_cast<DWORD>(WS_EX_CLIENTEDGE) : 0;
    ::AdjustWindowRectEx(rect, GetStyle(), FALSE, GetExStyle() & ~inside);
}

void CWnd::CenterWindow(CWnd* other) {
    const bool child = IsChildStyle(GetStyle());
    HWND center = HandleOf(other);
    if (center == nullptr) {
        center = child ? ::GetParent(m_hWnd) : ::GetWindow(m_hWnd, GW_OWNER);
    }
    const bool onWindow = center != nullptr && ::IsWindowVisible(center) && !::IsIconic(center);
    CRect around = WorkAreaOf(center != nullptr ? center : m_hWnd);
    if (child) {
        ::GetClientRect(::GetParent(m_hWnd), &around);
    } else if (onWindow) {
        ::GetWindowRect(center, &around);
    }
    CRect rect;
    GetWindowRect(&rect);
    rect.MoveToXY(around.left + (around.Width() - rect.Width()) / 2, around.top + (around.Height() - rect.Height()) / 2);
    if (!child) {
        MoveInto(rect, WorkAreaOf(center != nullptr ? center : m_hWnd));
    }
    ::SetWindowPos(m_hWnd, nullptr, rect.left, rect.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
