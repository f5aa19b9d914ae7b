// The background of a skinned window, and of the static controls on it.

#include <kadata/skin_window.h>

#include "bitmap_context.h"
#include "skin_call.h"

namespace {

// By how much the pattern of static controls is turned against the background; see AlignPattern.
CSize PatternShift() {
    return {GetSystemMetrics(SM_CXDLGFRAME) - 1, GetSystemMetrics(SM_CYDLGFRAME) - 1};
}

int Wrapped(int value, int length) {
    return (value % length + length) % length;
}

}  // namespace

BOOL CSkinStubWnd::CreateBackground() {
    const CSize size = CSkinClientRect(GetHookedHwnd()).Size();
    if (GetBackgroundBitmap() != nullptr && size == m_BackgroundSize) {
        return TRUE;
    }
    DestroyBackground();
    const kadata::ClientContext client(GetHookedHwnd());
    if (size.cx <= 0 || size.cy <= 0 || !m_Background.Attach(CreateCompatibleBitmap(client, size.cx, size.cy))) {
        return FALSE;
    }
    m_BackgroundSize = size;
    if (!DrawBackground(client) || !MakePattern(client)) {
        DestroyBackground();
        return FALSE;
    }
    return TRUE;
}

void CSkinStubWnd::DestroyBackground() {
    m_Background.DeleteObject();
    m_Pattern.DeleteObject();
    m_BackgroundSize = CSize();
}

// The system's colour below: the bitmap may be missing, or transparent at its rim.
BOOL CSkinStubWnd::DrawBackground(HDC like) {
    const kadata::BitmapContext memory(like, m_Background);
    if (!memory) {
        return FALSE;
    }
    const CRect whole(CPoint(), m_BackgroundSize);
    FillRect(memory, &whole, GetSysColorBrush(COLOR_3DFACE));
    Gdiplus::Graphics graphics(memory);
    m_SkinBackground.DrawWindowBackgroundBitmap(&graphics, whole);
    return TRUE;
}

// The background, turned round by PatternShift: four pieces of it.
BOOL CSkinStubWnd::MakePattern(HDC like) {
    const CSize size = m_BackgroundSize;
    CBitmap turned;
    if (!turned.Attach(CreateCompatibleBitmap(like, size.cx, size.cy))) {
        return FALSE;
    }
    {
        const kadata::BitmapContext from(like, m_Background);
        const kadata::BitmapContext to(like, turned);
        if (!from || !to) {
            return FALSE;
        }
        const int x = Wrapped(PatternShift().cx, size.cx);
        const int y = Wrapped(PatternShift().cy, size.cy);
        for (const CPoint at : {CPoint(x, y), CPoint(x - size.cx, y), CPoint(x, y - size.cy), CPoint(x - size.cx, y - size.cy)}) {
            BitBlt(to, at.x, at.y, size.cx, size.cy, from, 0, 0, SRCCOPY);
        }
    }
    return m_Pattern.CreatePatternBrush(&turned);
}

BOOL CSkinStubWnd::OnEraseBackground(HDC dc) {
    return OnEraseBackgroundSkin(dc);
}

BOOL CSkinStubWnd::OnEraseBackgroundSkin(HDC dc) {
    if (CreateBackground()) {
        const kadata::BitmapContext memory(dc, m_Background);
        BitBlt(dc, 0, 0, m_BackgroundSize.cx, m_BackgroundSize.cy, memory, 0, 0, SRCCOPY);
    }
    return TRUE;
}

LRESULT CSkinStubWnd::HandleBackground(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND:
            return OnEraseBackground(reinterpret_cast<HDC>(wParam)) != FALSE;
        case WM_SIZE:
            BackgroundResized();
            break;
        case WM_PAINT:
            if (m_PaintsBackground) {  // BeginPaint asks for it then
                m_PaintsBackground = false;
                InvalidateRect(GetHookedHwnd(), nullptr, TRUE);
            }
            break;
        case WM_CTLCOLORSTATIC: {
            const auto dc = reinterpret_cast<HDC>(wParam);
            SetBkMode(dc, TRANSPARENT);
            const kadata::HandlerWatch watch(*this);
            const LRESULT result = CSkinSubclassWnd::WindowProc(message, wParam, lParam);
            if (!watch.Stays() || GetBackgroundBitmap() == nullptr || !CreateBackground()) {
                return result;
            }
            AlignPattern(dc, reinterpret_cast<HWND>(lParam));
            return reinterpret_cast<LRESULT>(m_Pattern.GetSafeHandle());
        }
        default:
            break;
    }
    return CSkinSubclassWnd::WindowProc(message, wParam, lParam);
}

// Controls, too: the part of the background that they show is another one now.
void CSkinStubWnd::BackgroundResized() {
    m_PaintsBackground = true;
    RedrawWindow(GetHookedHwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

// Deliberate: the origin is not the control's place, but what handlers of such controls have always been given; they may rely on
// it for brushes of their own. The pattern is turned by as much, so that it lies where the background does.
void CSkinStubWnd::AlignPattern(HDC dc, HWND control) {
    const CSkinClientRect inside(control);
    CPoint place;  // of the control, inside of its border if it has one
    MapWindowPoints(control, GetHookedHwnd(), &place, 1);
    const CSize shift = PatternShift();
    CPoint origin;  // of the control: elsewhere than at 0, 0 when it is drawn into somebody else's picture
    LPtoDP(dc, &origin, 1);
    UnrealizeObject(m_Pattern.GetSafeHandle());
    SetBrushOrgEx(dc, origin.x + (-place.x - shift.cx) % m_BackgroundSize.cx,
                  origin.y + (-place.y - shift.cy) % m_BackgroundSize.cy, nullptr);

    CRgn whole;
    whole.CreateRectRgn(origin.x, origin.y, origin.x + inside.right, origin.y + inside.bottom);
    ExtSelectClipRgn(dc, whole, RGN_OR);
}
