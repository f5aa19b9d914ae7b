// What a skinned frame does with messages.

#include "skin_frame.h"

#include "skin_call.h"

namespace kadata {
namespace {

bool IsBox(WPARAM hit) {
    return hit == HTCLOSE || hit == HTMAXBUTTON || hit == HTMINBUTTON;
}

CPoint PointOf(LPARAM lParam) {
    return {static_cast<short>(LOWORD(static_cast<ULONG_PTR>(lParam))),
            static_cast<short>(HIWORD(static_cast<ULONG_PTR>(lParam)))};
}

UINT CommandOf(int box, HWND window) {
    return static_cast<UINT>(box == HTCLOSE       ? SC_CLOSE
                             : box == HTMINBUTTON ? SC_MINIMIZE
                             : IsZoomed(window)   ? SC_RESTORE
                                                  : SC_MAXIMIZE);
}

// The compositor of later Windows draws frames itself, over whatever the window draws, unless it is told not to.
void LetSystemDraw(HWND window, bool draws) {
    constexpr DWORD RENDERING_POLICY = 2;  // DWMWA_NCRENDERING_POLICY
    const DWORD policy = draws ? 0 : 1;    // DWMNCRP_USEWINDOWSTYLE, DWMNCRP_DISABLED
    using SetAttribute = HRESULT WINAPI(HWND, DWORD, LPCVOID, DWORD);
    const HMODULE library = LoadLibraryW(_T("dwmapi.dll"));
    if (library == nullptr) {
        return;
    }
    const FARPROC found = GetProcAddress(library, "DwmSetWindowAttribute");
    if (found != nullptr) {
        reinterpret_cast<SetAttribute*>(reinterpret_cast<void*>(found))(window, RENDERING_POLICY, &policy, sizeof(policy));
    }
    FreeLibrary(library);
}

}  // namespace

void RedrawAll(HWND window) {
    if (window != nullptr) {
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
    }
}

bool SkinFrame::Serves(UINT message) const {
    switch (message) {
        case WM_NCPAINT:
        case WM_NCACTIVATE:
        case WM_NCHITTEST:
        case WM_NCMOUSEMOVE:
        case WM_NCMOUSELEAVE:
        case WM_NCLBUTTONDOWN:
        case WM_NCLBUTTONDBLCLK:
        case WM_SETTEXT:
        case WM_SETICON:
        case WM_PRINT:
            return m_loaded && !IsIconic(Window());
        case WM_MOUSEMOVE:
        case WM_LBUTTONUP:
        case WM_CAPTURECHANGED:
            return m_pressed != HTNOWHERE;
        default:
            return false;
    }
}

LRESULT SkinFrame::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NCACTIVATE:
            return Activate(wParam);
        case WM_NCPAINT:
        case WM_SETTEXT:
        case WM_SETICON:
            return Paint(message, wParam, lParam);
        case WM_PRINT:
            return Print(reinterpret_cast<HDC>(wParam), lParam);
        case WM_NCHITTEST:
            return HitTest(wParam, lParam);
        case WM_NCLBUTTONDOWN:
        case WM_NCLBUTTONDBLCLK:
            return IsBox(wParam) ? Press(static_cast<int>(wParam)) : PassOn(message, wParam, lParam);
        case WM_NCMOUSEMOVE:
            SetPointer(IsBox(wParam) ? static_cast<int>(wParam) : HTNOWHERE, m_pressed);
            return IsBox(wParam) ? 0 : PassOn(message, wParam, lParam);  // the system would draw its own box
        case WM_NCMOUSELEAVE:
            SetPointer(HTNOWHERE, m_pressed);
            return PassOn(message, wParam, lParam);
        case WM_CAPTURECHANGED:
            SetPointer(HTNOWHERE, HTNOWHERE);
            return PassOn(message, wParam, lParam);
        default: {  // of a mouse that was pressed on a box
            CPoint screen = PointOf(lParam);
            ClientToScreen(Window(), &screen);
            message == WM_LBUTTONUP ? Release(screen) : SetPointer(BoxAt(screen), m_pressed);
            return 0;
        }
    }
}

// The system draws its part first. WM_SETTEXT and WM_SETICON make it draw the whole caption.
LRESULT SkinFrame::Paint(UINT message, WPARAM wParam, LPARAM lParam) {
    const HandlerWatch watch(m_owner);
    const LRESULT result =
        message == WM_NCPAINT ? m_owner.DefaultRgn(reinterpret_cast<HRGN>(wParam)) : PassOn(message, wParam, lParam);
    if (watch.Stays()) {
        DrawOnWindow();
    }
    return result;
}

// -1 tells the system not to draw.
LRESULT SkinFrame::Activate(WPARAM active) {
    constexpr LPARAM WITHOUT_DRAWING = -1;
    m_active = active != FALSE;
    const HandlerWatch watch(m_owner);
    const LRESULT result = PassOn(WM_NCACTIVATE, active, WITHOUT_DRAWING);
    if (watch.Stays()) {
        DrawOnWindow();
    }
    return result;
}

// The edges stay the system's, as far as they reach. Where it has a box or its menu, and the skin has none, there is caption.
LRESULT SkinFrame::HitTest(WPARAM wParam, LPARAM lParam) {
    const HandlerWatch watch(m_owner);
    const LRESULT hit = PassOn(WM_NCHITTEST, wParam, lParam);
    if (!watch.Stays() || (hit >= HTSIZEFIRST && hit <= HTSIZELAST)) {
        return hit;
    }
    const int box = BoxAt(PointOf(lParam));
    if (box != HTNOWHERE) {
        return box;
    }
    return IsBox(static_cast<WPARAM>(hit)) || hit == HTSYSMENU ? HTCAPTION : hit;
}

LRESULT SkinFrame::Print(HDC dc, LPARAM parts) {
    const bool shown = (parts & PRF_CHECKVISIBLE) == 0 || IsWindowVisible(Window());
    const HandlerWatch watch(m_owner);
    const LRESULT result = PassOn(WM_PRINT, reinterpret_cast<WPARAM>(dc), parts);
    if (watch.Stays() && shown && (parts & PRF_NONCLIENT) != 0) {
        Draw(dc);
    }
    return result;
}

LRESULT SkinFrame::Press(int box) {
    SetPointer(box, box);
    SetCapture(Window());
    return 0;
}

void SkinFrame::Release(CPoint screen) {
    const int pressed = m_pressed;
    const bool chosen = BoxAt(screen) == pressed;
    const HWND window = Window();
    SetPointer(chosen ? pressed : HTNOWHERE, HTNOWHERE);
    ReleaseCapture();
    if (chosen) {
        PostMessageW(window, WM_SYSCOMMAND, CommandOf(pressed, window), MAKELPARAM(screen.x, screen.y));
    }
}

void SkinFrame::SetPointer(int hot, int pressed) {
    if (hot != m_hot || pressed != m_pressed) {
        m_hot = hot;
        m_pressed = pressed;
        DrawOnWindow();
    }
    if (hot != HTNOWHERE && pressed == HTNOWHERE) {
        TRACKMOUSEEVENT track = {sizeof(track), TME_LEAVE | TME_NONCLIENT, Window(), 0};
        TrackMouseEvent(&track);
    }
}

void SkinFrame::Attached() {
    LetSystemDraw(Window(), !m_loaded);
    m_hot = HTNOWHERE;
    m_pressed = HTNOWHERE;
    m_active = GetActiveWindow() == Window();
}

void SkinFrame::Detached(HWND window) {
    LetSystemDraw(window, true);
}

}  // namespace kadata
