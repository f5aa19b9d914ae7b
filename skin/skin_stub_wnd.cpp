#include <kadata/log.h>
#include <kadata/skin_manager.h>
#include <kadata/skin_window.h>

#include <utility>

#include "skin_frame.h"

IMPLEMENT_DYNAMIC(CSkinStubWnd, CSkinSubclassWnd)

namespace {

void LogMissing(LPCTSTR what, const SkinBitmapInfo& info) {
    CLog::Print(CLogWarning(), _T("skin: the bitmap %u of the %s cannot be loaded"), info.nBitmapID, what);
}

}  // namespace

CSkinStubWnd::CSkinStubWnd(EFlags flags) : m_Flags(flags), m_Frame(std::make_unique<kadata::SkinFrame>(*this)) {}

CSkinStubWnd::~CSkinStubWnd() = default;

BOOL CSkinStubWnd::Apply(CWnd* wnd) {
    if (wnd == nullptr) {
        const HWND window = GetHookedHwnd();
        HookWindow(nullptr);
        DestroyBackground();
        if (window != nullptr && IsFlagSet(SkinFrame)) {
            kadata::SkinFrame::Detached(window);
        }
        kadata::RedrawAll(window);
        return TRUE;
    }
    if (IsHooked(nullptr) || IsNoFlagSet() || !OnInitSkinBitmapInfos()) {
        return FALSE;
    }
    LoadSkin();
    if (!HookWindow(wnd)) {
        return FALSE;
    }
    FlagsChanged(NoFlags);
    return TRUE;
}

BOOL CSkinStubWnd::SetFlags(EFlags flags, BOOL force) {
    const bool attached = IsHooked(nullptr) != FALSE;
    if (!attached && !force) {
        return FALSE;
    }
    const EFlags before = std::exchange(m_Flags, flags);
    if (attached) {
        LoadSkin();
        FlagsChanged(before);
    }
    return TRUE;
}

// While a window is attached.
void CSkinStubWnd::FlagsChanged(EFlags before) {
    if (IsFlagSet(SkinFrame)) {
        m_Frame->Attached();
    } else if ((before & SkinFrame) != 0) {
        kadata::SkinFrame::Detached(GetHookedHwnd());
    }
    Redraw();
}

BOOL CSkinStubWnd::SetSkinInfo(const SkinInfo& info) {
    if (!info.IsComplete()) {
        return FALSE;
    }
    m_SkinInfo = info;
    m_InitBackground = info.windowBackground;
    return TRUE;
}

BOOL CSkinStubWnd::OnInitSkinBitmapInfos() {
    if (m_SkinInfo.IsComplete()) {
        return TRUE;
    }
    m_SkinInfo = CSkinManager::GetInstance()->GetSkinInfo();
    if (!m_SkinInfo.IsComplete()) {
        return FALSE;
    }
    m_InitBackground = m_SkinInfo.windowBackground;
    return m_InitBackground.nBitmapID != 0;
}

// What the flags ask for. A bitmap that cannot be loaded leaves the one from before in place, if there was one.
void CSkinStubWnd::LoadSkin() {
    if (IsFlagSet(SkinBackground) && !m_SkinBackground.SetWindowBackgroundBitmapInfo(m_InitBackground)) {
        LogMissing(_T("background"), m_InitBackground);
    }
    if (IsFlagSet(SkinFrame) && !m_Frame->Load(m_SkinInfo)) {
        LogMissing(_T("frame"), m_SkinInfo.windowFrame);
    }
}

void CSkinStubWnd::SetCaptionLook(CFont* font, COLORREF active, COLORREF inactive) {
    m_Frame->SetCaptionLook(font, active, inactive);
    Redraw();
}

void CSkinStubWnd::Refresh() {
    DestroyBackground();
    Redraw();
}

void CSkinStubWnd::Redraw() {
    kadata::RedrawAll(GetHookedHwnd());
}

LRESULT CSkinStubWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) {
        OnDestroySkin();
    } else if (IsFlagSet(SkinFrame) && m_Frame->Serves(message)) {
        return m_Frame->Handle(message, wParam, lParam);
    } else if (IsFlagSet(SkinBackground)) {
        return HandleBackground(message, wParam, lParam);
    }
    return CSkinSubclassWnd::WindowProc(message, wParam, lParam);
}

void CSkinStubWnd::OnDestroySkin() {
    DestroyBackground();
}

void CSkinStubWnd::OnWindowEnded() {
    OnDestroySkin();
}

LRESULT CSkinStubWnd::DefaultRgn(HRGN updateRgn) {
    constexpr ULONG_PTR WHOLE_WINDOW = 1;
    const CSkinWindowRect window(GetHookedHwnd());
    CRgn covered;
    covered.Attach(CSkinWndInfo(GetHookedWnd()).GetClipRGN(TRUE));
    CRgn rest;
    rest.CreateRectRgnIndirect(window);
    HRGN of = rest;
    if (reinterpret_cast<ULONG_PTR>(updateRgn) > WHOLE_WINDOW) {
        of = updateRgn;
    }
    CombineRgn(rest, of, covered, RGN_DIFF);

    MSG& message = AfxGetThreadState()->m_lastSentMsg;
    const WPARAM before = message.wParam;
    message.wParam = reinterpret_cast<WPARAM>(HRGN{rest});
    const LRESULT result = Default();
    message.wParam = before;
    return result;
}
