// Handlers of windows: the chain of each window, and the procedure that leads its messages to them.

#include <kadata/skin_window.h>

#include <new>
#include <utility>

#include "last_message.h"
#include "skin_call.h"

namespace {

// Asks whether our procedure is called for a window, by a message that changes nothing and that everybody passes on. Its number
// counts only while it is asked: others may send what they like.
class Probe {
public:
    static bool Reaches(HWND window) {
        Probe probe;
        Probe* const before = std::exchange(m_asking, &probe);
        SendMessageW(window, WM_NULL, reinterpret_cast<WPARAM>(&probe), 0);
        m_asking = before;
        return probe.m_seen;
    }
    // Whether this is the question; it is answered then.
    static bool Answer(UINT message, WPARAM wParam) {
        const bool isAsked = message == WM_NULL && m_asking != nullptr && wParam == reinterpret_cast<WPARAM>(m_asking);
        if (isAsked) {
            m_asking->m_seen = true;
        }
        return isAsked;
    }

private:
    static inline Probe* m_asking = nullptr;

    bool m_seen = false;
};

WNDPROC ProcedureOf(HWND window) {
    return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
}

LRESULT CallProcedure(WNDPROC procedure, const MSG& message) {
    if (!IsWindow(message.hwnd)) {  // its procedure may have given up what it needs
        return 0;
    }
    return procedure != nullptr ? CallWindowProcW(procedure, message.hwnd, message.message, message.wParam, message.lParam)
                                : DefWindowProcW(message.hwnd, message.message, message.wParam, message.lParam);
}

LRESULT Report(CException* exception, const MSG& message) {
    CWinThread* const thread = AfxGetThread();
    const LRESULT result = thread != nullptr ? thread->ProcessWndProcException(exception, &message)
                                             : CWinThread::AnswerFailedMessage(exception, &message);
    exception->Delete();
    return result;
}

// Puts a call into the list as long as it lives.
class Entered {
public:
    Entered(kadata::SkinCall*& innermost, kadata::SkinCall& call) : m_innermost(innermost) {
        call.outer = innermost;
        innermost = &call;
    }
    Entered(const Entered&) = delete;
    Entered& operator=(const Entered&) = delete;
    ~Entered() { m_innermost = m_innermost->outer; }

private:
    kadata::SkinCall*& m_innermost;
};

}  // namespace

kadata::SkinCall* CSkinSubclassWndMap::m_Innermost = nullptr;

CSkinSubclassWndMap& CSkinSubclassWndMap::GetHookMap() {
    static CSkinSubclassWndMap map;
    return map;
}

CSkinSubclassWndMap::~CSkinSubclassWndMap() {
    while (const POSITION at = GetStartPosition()) {
        POSITION next = at;
        void* window = nullptr;
        void* handler = nullptr;
        GetNextAssoc(next, window, handler);
        RemoveAll(static_cast<HWND>(window));
    }
}

CSkinSubclassWnd* CSkinSubclassWndMap::Lookup(HWND window) const {
    void* first = nullptr;
    CMapPtrToPtr::Lookup(window, first);
    return static_cast<CSkinSubclassWnd*>(first);
}

BOOL CSkinSubclassWndMap::Add(HWND window, CSkinSubclassWnd* handler) {
    if (handler == nullptr || handler->m_Window != nullptr || window == nullptr) {
        return FALSE;
    }
    CSkinSubclassWnd* const first = Lookup(window);
    SetAt(window, handler);  // before the hook: it may throw
    const WNDPROC procedure = first != nullptr ? Rehook(window, *first) : Hook(window);
    if (procedure == nullptr) {
        RemoveKey(window);
        return FALSE;
    }
    handler->m_Window = window;
    handler->m_Next = first;
    handler->m_Procedure = procedure;
    return TRUE;
}

BOOL CSkinSubclassWndMap::Remove(CSkinSubclassWnd* handler) {
    if (handler == nullptr || handler->m_Window == nullptr) {
        return FALSE;
    }
    for (kadata::SkinCall* call = m_Innermost; call != nullptr; call = call->outer) {
        if (call->next == handler) {
            call->next = handler->m_Next;
        }
    }
    Unlink(*handler);
    handler->m_Window = nullptr;
    handler->m_Next = nullptr;
    handler->m_Procedure = nullptr;
    return TRUE;
}

void CSkinSubclassWndMap::Unlink(CSkinSubclassWnd& handler) {
    CSkinSubclassWnd* before = Lookup(handler.m_Window);
    if (before == &handler) {
        if (handler.m_Next != nullptr) {
            SetAt(handler.m_Window, handler.m_Next);
        } else {
            RemoveKey(handler.m_Window);
            Unhook(handler.m_Window, handler.m_Procedure);
        }
        return;
    }
    while (before != nullptr && before->m_Next != &handler) {
        before = before->m_Next;
    }
    if (before != nullptr) {
        before->m_Next = handler.m_Next;
    }
}

void CSkinSubclassWndMap::RemoveAll(HWND window) {
    while (CSkinSubclassWnd* const first = Lookup(window)) {
        Remove(first);
    }
}

// Kept here, not as a property of the window: others might put an address of theirs there.
WNDPROC CSkinSubclassWndMap::LeftIn(HWND window) const {
    void* procedure = nullptr;
    m_Left.Lookup(window, procedure);
    return reinterpret_cast<WNDPROC>(procedure);
}

// The procedure behind ours; null when it cannot be had.
WNDPROC CSkinSubclassWndMap::Hook(HWND window) {
    if (const WNDPROC left = LeftIn(window)) {
        if (Probe::Reaches(window)) {  // by whoever has replaced it. A second one above him would lead round in a circle
            return left;
        }
        m_Left.RemoveKey(window);
    }
    return reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&HookProcedure)));
}

// The same for a window with handlers. Whoever lay below our procedure and has put back what he had found, has cut them off.
WNDPROC CSkinSubclassWndMap::Rehook(HWND window, CSkinSubclassWnd& first) {
    if (ProcedureOf(window) != &HookProcedure && !Probe::Reaches(window)) {
        const WNDPROC procedure = Hook(window);
        for (CSkinSubclassWnd* handler = &first; handler != nullptr; handler = handler->m_Next) {
            handler->m_Procedure = procedure;
        }
    }
    return first.m_Procedure;
}

void CSkinSubclassWndMap::Unhook(HWND window, WNDPROC procedure) {
    if (ProcedureOf(window) == &HookProcedure) {
        m_Left.RemoveKey(window);
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
    } else if (IsWindow(window)) {
        m_Left.SetAt(window, reinterpret_cast<void*>(procedure));
    }
}

LRESULT CALLBACK CSkinSubclassWndMap::HookProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (Probe::Answer(message, wParam)) {
        return 0;
    }
    const MSG handled = {window, message, wParam, lParam, 0, {}};
    const kadata::LastMessage last(handled);
    try {
        try {
            return GetHookMap().Dispatch(handled);
        } catch (const std::bad_alloc&) {
            AfxThrowMemoryException();
        }
    } catch (CException* exception) {
        return Report(exception, handled);
    }
}

LRESULT CSkinSubclassWndMap::Dispatch(const MSG& message) {
    if (message.message == WM_DESTROY || message.message == WM_NCDESTROY) {
        return EndWindow(message);
    }
    CSkinSubclassWnd* const first = Lookup(message.hwnd);
    return Call(message.hwnd, first, first != nullptr ? first->m_Procedure : LeftIn(message.hwnd), message);
}

LRESULT CSkinSubclassWndMap::EndWindow(const MSG& message) {
    const CSkinSubclassWnd* const first = Lookup(message.hwnd);
    const WNDPROC procedure = first != nullptr ? first->m_Procedure : LeftIn(message.hwnd);
    DetachEnded(message.hwnd);
    const bool last = message.message == WM_NCDESTROY;
    if (last) {
        m_Left.RemoveKey(message.hwnd);
    }
    const LRESULT result = CallProcedure(procedure, message);
    if (last) {  // who has been attached meanwhile would never be told
        RemoveAll(message.hwnd);
        m_Left.RemoveKey(message.hwnd);
    }
    return result;
}

// Each handler is told, and may detach and delete others. One that is attached again by that stays until the next message.
void CSkinSubclassWndMap::DetachEnded(HWND window) {
    kadata::SkinCall walk = {window, nullptr, Lookup(window), nullptr, nullptr};
    const Entered entered(m_Innermost, walk);
    while (CSkinSubclassWnd* const handler = walk.next) {
        Remove(handler);
        handler->OnWindowEnded();
    }
}

LRESULT CSkinSubclassWndMap::Call(HWND window, CSkinSubclassWnd* handler, WNDPROC procedure, const MSG& message) {
    if (handler == nullptr) {
        return CallProcedure(procedure, {window, message.message, message.wParam, message.lParam, 0, {}});
    }
    kadata::SkinCall call = {window, handler, handler->m_Next, procedure, nullptr};
    const Entered entered(m_Innermost, call);
    return handler->WindowProc(message.message, message.wParam, message.lParam);
}

// Outside of any message a handler may be called by its owner, too; then the way leads along the chain as it is now.
kadata::SkinCall CSkinSubclassWndMap::WayFrom(CSkinSubclassWnd& handler) {
    for (const kadata::SkinCall* call = m_Innermost; call != nullptr; call = call->outer) {
        if (call->handler == &handler) {
            return *call;
        }
    }
    return {handler.m_Window, &handler, handler.m_Next, handler.m_Procedure, nullptr};
}

LRESULT CSkinSubclassWndMap::PassOn(CSkinSubclassWnd& handler, const MSG& message) {
    const kadata::SkinCall call = WayFrom(handler);
    return call.window != nullptr ? Call(call.window, call.next, call.procedure, message) : 0;
}

void CSkinSubclassWndMap::Forget(const CSkinSubclassWnd& handler) {
    for (kadata::SkinCall* call = m_Innermost; call != nullptr; call = call->outer) {
        if (call->handler == &handler) {
            call->handler = nullptr;
        }
    }
}

// The same way once more: who passes on below finds it instead of the first.
kadata::HandlerWatch::HandlerWatch(CSkinSubclassWnd& handler) : m_call(CSkinSubclassWndMap::WayFrom(handler)) {
    m_call.outer = CSkinSubclassWndMap::m_Innermost;
    CSkinSubclassWndMap::m_Innermost = &m_call;
}

kadata::HandlerWatch::~HandlerWatch() {
    CSkinSubclassWndMap::m_Innermost = m_call.outer;
}

bool kadata::HandlerWatch::Stays() const {
    return m_call.window != nullptr && m_call.handler != nullptr && m_call.handler->GetHookedHwnd() == m_call.window;
}
