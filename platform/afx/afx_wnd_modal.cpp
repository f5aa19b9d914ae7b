#include <utility>

#include "afx_app.h"
#include "afx_modal_loop.h"
#include "afx_wnd.h"

namespace {

// Makes the loop the window's where it has none yet (a dialog brings one along), and takes it away at the end.
class OwnLoop {
public:
    explicit OwnLoop(AfxModalLoop*& place) : m_place(place != nullptr ? nullptr : &place), m_loop(place) {
        if (m_place != nullptr) {
            m_loop = place = &m_own;
        }
    }
    OwnLoop(const OwnLoop&) = delete;
    OwnLoop& operator=(const OwnLoop&) = delete;
    ~OwnLoop() {
        if (m_place != nullptr && !m_own.lost) {
            *m_place = nullptr;
        }
    }
    AfxModalLoop& Get() const { return *m_loop; }

private:
    AfxModalLoop m_own;
    AfxModalLoop** m_place;
    AfxModalLoop* m_loop;
};

}  // namespace

int CWnd::RunModalLoop(DWORD flags) {
    const OwnLoop own(m_modalLoop);
    AfxModalLoop& loop = own.Get();
    const HWND window = m_hWnd;
    const HWND owner = ::GetParent(window);
    bool show = (flags & MLF_SHOWONIDLE) != 0 && (GetStyle() & WS_VISIBLE) == 0;
    MSG message;
    // The object is asked only as long as the loop is still its own.
    const auto goesOn = [&] { return !loop.lost && ContinueModal(); };
    while (goesOn()) {
        if (!::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE)) {
            if (show) {
                show = false;
                ::ShowWindow(window, SW_SHOWNORMAL);
                ::UpdateWindow(window);
            } else if ((flags & MLF_NOIDLEMSG) == 0 && owner != nullptr) {
                ::SendMessageW(owner, WM_ENTERIDLE, MSGF_DIALOGBOX, reinterpret_cast<LPARAM>(window));
            }
            if (!goesOn()) {
                break;
            }
        }
        if (!AfxPumpMessage()) {
            ::PostQuitMessage(static_cast<int>(AfxGetThread() != nullptr ? AfxGetThread()->m_msgCur.wParam : 0));
            return -1;
        }
    }
    return loop.result;
}

BOOL CWnd::ContinueModal() {
    return m_modalLoop != nullptr && !m_modalLoop->ended;
}

void CWnd::EndModalLoop(int result) {
    if (m_modalLoop != nullptr && !m_modalLoop->ended) {
        m_modalLoop->result = result;
        m_modalLoop->ended = true;
        PostMessage(WM_NULL);  // wakes the loop
    }
}

void CWnd::LoseModalLoop() {
    if (AfxModalLoop* const loop = std::exchange(m_modalLoop, nullptr)) {
        loop->lost = true;
    }
}
