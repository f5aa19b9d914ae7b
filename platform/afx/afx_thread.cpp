#include <cstdio>

#include "afx_app.h"

IMPLEMENT_DYNCREATE(CWinThread, CCmdTarget)

namespace {

constexpr UINT kSystemTimer = 0x0118;  // the blinking caret's

void DeleteTemporaries() {
    CWnd::DeleteTempMap();
    CMenu::DeleteTempMap();
    CDC::DeleteTempMap();
    CGdiObject::DeleteTempMap();
}

BOOL Retrieve(MSG& message) {
    return ::GetMessageW(&message, nullptr, 0, 0) > 0;
}

void Dispatch(const MSG& message) {
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
}

void WriteError(const CException& exception) {
    constexpr int kCapacity = 512;
    TCHAR text[kCapacity] = {};
    char line[3 * kCapacity] = {};  // a unit has up to three bytes in UTF-8
    exception.GetErrorMessage(text, kCapacity);
    ::WideCharToMultiByte(CP_UTF8, 0, text, -1, line, static_cast<int>(sizeof(line)), nullptr, nullptr);
    std::fprintf(stderr, "%s in a message handler: %s\n", exception.GetRuntimeClass()->m_lpszClassName, line);
}

}  // namespace

CWinThread::CWinThread() : m_nThreadID(::GetCurrentThreadId()) {
    AfxGetThreadState()->m_pCurrentWinThread = this;
}

CWinThread::~CWinThread() {
    _AFX_THREAD_STATE& state = *AfxGetThreadState();
    if (state.m_pCurrentWinThread == this) {
        state.m_pCurrentWinThread = nullptr;
    }
}

int CWinThread::Run() {
    bool idle = true;
    LONG count = 0;
    for (;;) {
        while (idle && !::PeekMessageW(&m_msgCur, nullptr, 0, 0, PM_NOREMOVE)) {
            idle = OnIdle(count++) != 0;
        }
        do {
            if (!PumpMessage()) {
                return ExitInstance();
            }
            if (IsIdleMessage(&m_msgCur)) {
                idle = true;
                count = 0;
            }
        } while (::PeekMessageW(&m_msgCur, nullptr, 0, 0, PM_NOREMOVE));
    }
}

BOOL CWinThread::PumpMessage() {
    if (!Retrieve(m_msgCur)) {
        return FALSE;
    }
    MSG message = m_msgCur;  // a loop inside of the handler retrieves its own
    if (!PreTranslateMessage(&message)) {
        Dispatch(message);
    }
    return TRUE;
}

BOOL CWinThread::PreTranslateMessage(MSG* message) {
    CWnd* const main = m_pMainWnd;
    if (CWnd::WalkPreTranslateTree(main != nullptr ? main->m_hWnd : nullptr, message)) {
        return TRUE;
    }
    if (main == nullptr || main != m_pMainWnd || message->hwnd == nullptr) {
        return FALSE;
    }
    CWnd* const window = CWnd::FromHandle(message->hwnd);
    return window->GetTopLevelParent() != main && main->PreTranslateMessage(message);
}

BOOL CWinThread::OnIdle(LONG count) {
    if (count == 0) {
        return TRUE;
    }
    DeleteTemporaries();
    return FALSE;
}

BOOL CWinThread::IsIdleMessage(MSG* message) {
    if (message->message == WM_MOUSEMOVE || message->message == WM_NCMOUSEMOVE) {
        _AFX_THREAD_STATE& state = *AfxGetThreadState();
        if (CPoint(state.m_ptCursorLast) == CPoint(message->pt) && state.m_nMsgLast == message->message) {
            return FALSE;
        }
        state.m_ptCursorLast = message->pt;
        state.m_nMsgLast = message->message;
        return TRUE;
    }
    return message->message != WM_PAINT && message->message != kSystemTimer;
}

LRESULT CWinThread::ProcessWndProcException(CException* exception, const MSG* message) {
    if (!exception->IsKindOf(RUNTIME_CLASS(CUserException))) {
        WriteError(*exception);
    }
    return AnswerFailedMessage(exception, message);
}

LRESULT CWinThread::AnswerFailedMessage(CException* /*exception*/, const MSG* message) {
    if (message->message == WM_PAINT) {
        ::ValidateRect(message->hwnd, nullptr);
    }
    return message->message == WM_CREATE ? -1 : 0;
}

BOOL AfxPumpMessage() {
    if (CWinThread* const thread = AfxGetThread()) {
        return thread->PumpMessage();
    }
    MSG message;
    if (!Retrieve(message)) {
        return FALSE;
    }
    if (!CWnd::WalkPreTranslateTree(nullptr, &message)) {
        Dispatch(message);
    }
    return TRUE;
}

void AfxPostQuitMessage(int exitCode) {
    ::PostQuitMessage(exitCode);
}
