#include <new>
#include <utility>

#include "afx_app.h"
#include "afx_message_map.h"
#include "afx_wnd.h"

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
ON_WM_CTLCOLOR()
ON_WM_DRAWITEM()
ON_WM_NCDESTROY()
END_MESSAGE_MAP()

namespace {

constexpr UINT kFirstRegistered = 0xC000;
constexpr UINT kMenuItem = 1;  // ODT_MENU: its handle is no window's. Not every system header names it

bool AsksForColor(UINT message) {
    return message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC;
}

bool Leads(const AFX_MSGMAP_ENTRY& entry, UINT message) {
    if (message >= kFirstRegistered) {
        return entry.registered != nullptr && *entry.registered == message;
    }
    return entry.nMessage != 0 && (entry.nMessage == message || (entry.nMessage == afx::kCtlColor && AsksForColor(message)));
}

// Null when no map has one.
const AFX_MSGMAP_ENTRY* EntryOf(const AFX_MSGMAP* map, UINT message) {
    for (; map != nullptr; map = AfxBaseOf(map)) {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->pfn != nullptr; ++entry) {
            if (Leads(*entry, message)) {
                return entry;
            }
        }
    }
    return nullptr;
}

// Sets the thread's last message for a scope.
class LastMessage {
public:
    explicit LastMessage(const MSG& message) : m_before(AfxGetThreadState()->m_lastSentMsg) {
        AfxGetThreadState()->m_lastSentMsg = message;
    }
    LastMessage(const LastMessage&) = delete;
    LastMessage& operator=(const LastMessage&) = delete;
    ~LastMessage() { AfxGetThreadState()->m_lastSentMsg = m_before; }

private:
    const MSG m_before;
};

LRESULT Report(CException* exception, const MSG& message) {
    CWinThread* const thread = AfxGetThread();
    const LRESULT result = thread != nullptr ? thread->ProcessWndProcException(exception, &message)
                                             : CWinThread::AnswerFailedMessage(exception, &message);
    exception->Delete();
    return result;
}

CException* OutOfMemory() {
    try {
        AfxThrowMemoryException();
    } catch (CMemoryException* exception) {
        return exception;
    }
}

}  // namespace

// AfxCallWndProc's way to the object.
struct AfxWindowCall {
    static LRESULT Call(CWnd& object, const MSG& message) {
        return object.WindowProc(message.message, message.wParam, message.lParam);
    }
};

LRESULT AfxCallWndProc(CWnd* object, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const MSG handled = {window, message, wParam, lParam, 0, {}};
    const LastMessage last(handled);
    try {
        return AfxWindowCall::Call(*object, handled);
    } catch (CException* exception) {
        return Report(exception, handled);
    } catch (const std::bad_alloc&) {
        return Report(OutOfMemory(), handled);
    }
}

LRESULT CALLBACK AfxWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    CWnd* object = CWnd::FromHandlePermanent(window);
    if (object == nullptr) {
        object = std::exchange(AfxGetThreadState()->m_pWndInit, nullptr);
        if (object == nullptr) {
            return ::DefWindowProcW(window, message, wParam, lParam);
        }
        object->Attach(window);
        object->PreSubclassWindow();
    }
    const LRESULT result = AfxCallWndProc(object, window, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        // A handler that did not pass the message on has left its object with a handle that is none.
        if (CWnd* const left = CWnd::FromHandlePermanent(window)) {
            left->Detach();
        }
    }
    return result;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    return OnWndMsg(message, wParam, lParam, &result) ? result : DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return m_pfnSuper != nullptr ? ::CallWindowProcW(m_pfnSuper, m_hWnd, message, wParam, lParam)
                                 : ::DefWindowProcW(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default() {
    const MSG& last = AfxGetThreadState()->m_lastSentMsg;
    return DefWindowProc(last.message, last.wParam, last.lParam);
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message == WM_COMMAND) {
        *result = OnCommand(wParam, lParam);
        return *result != 0;
    }
    if (message == WM_NOTIFY) {
        return lParam != 0 && OnNotify(wParam, lParam, result);
    }
    const AFX_MSGMAP_ENTRY* const entry = EntryOf(GetMessageMap(), message);
    if (entry == nullptr) {
        return FALSE;
    }
    const LRESULT answer = entry->pfn(*this, {message, wParam, lParam});
    *result = answer;
    return TRUE;
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    const UINT id = LOWORD(wParam);
    const auto control = reinterpret_cast<HWND>(lParam);
    if (control == nullptr) {
        return id != 0 && OnCmdMsg(id, CN_COMMAND, nullptr, nullptr);
    }
    LRESULT unused = 0;
    return ReflectLastMessage(control, &unused) || (id != 0 && OnCmdMsg(id, HIWORD(wParam), nullptr, nullptr));
}

BOOL CWnd::OnNotify(WPARAM /*wParam*/, LPARAM lParam, LRESULT* result) {
    auto* const header = reinterpret_cast<NMHDR*>(lParam);
    if (ReflectLastMessage(header->hwndFrom, result)) {
        return TRUE;
    }
    AFX_NOTIFY notification = {result, header};
    const auto id = static_cast<UINT>(::GetDlgCtrlID(header->hwndFrom));
    return OnCmdMsg(id, static_cast<int>(MAKELONG(LOWORD(header->code), WM_NOTIFY)), &notification, nullptr);
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message == WM_COMMAND) {
        return OnCmdMsg(0, static_cast<int>(MAKELONG(HIWORD(wParam), WM_REFLECT_BASE + WM_COMMAND)), nullptr, nullptr);
    }
    if (message == WM_NOTIFY) {
        AFX_NOTIFY notification = {result, reinterpret_cast<NMHDR*>(lParam)};
        const WORD code = LOWORD(notification.pNMHDR->code);
        return OnCmdMsg(0, static_cast<int>(MAKELONG(code, WM_REFLECT_BASE + WM_NOTIFY)), &notification, nullptr);
    }
    if (!AsksForColor(message)) {
        return FALSE;
    }
    const AFX_MSGMAP_ENTRY* const entry = EntryOf(GetMessageMap(), WM_REFLECT_BASE + afx::kCtlColor);
    if (entry != nullptr) {
        *result = entry->pfn(*this, {message, wParam, lParam, message - WM_CTLCOLORMSGBOX});
    }
    return entry != nullptr && *result != 0;
}

// The thread's last message, given to the object of the control that sent it. FALSE when it has none or it does not take it.
BOOL CWnd::ReflectLastMessage(HWND control, LRESULT* result) {
    CWnd* const object = FromHandlePermanent(control);
    const MSG last = AfxGetThreadState()->m_lastSentMsg;
    return object != nullptr && object->OnChildNotify(last.message, last.wParam, last.lParam, result);
}

LRESULT CWnd::ReflectOrDefault(HWND control) {
    LRESULT result = 0;
    return ReflectLastMessage(control, &result) ? result : Default();
}

HBRUSH CWnd::OnCtlColor(CDC* /*dc*/, CWnd* control, UINT /*kind*/) {
    return reinterpret_cast<HBRUSH>(ReflectOrDefault(HandleOf(control)));
}

void CWnd::OnDrawItem(int /*control*/, LPDRAWITEMSTRUCT item) {
    ReflectOrDefault(item->CtlType != kMenuItem ? item->hwndItem : nullptr);
}

// The end of a main window is that of its thread's messages.
void CWnd::LeaveThread() {
    CWinThread* const thread = AfxGetThread();
    if (thread != nullptr && thread->m_pMainWnd == this) {
        thread->m_pMainWnd = nullptr;
        ::PostQuitMessage(0);
    }
}

// The window's last message.
void CWnd::OnNcDestroy() {
    LeaveThread();
    LoseModalLoop();
    Default();
    if (m_pfnSuper != nullptr && reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(m_hWnd, GWLP_WNDPROC)) == &AfxWndProc) {
        ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
    }
    m_pfnSuper = nullptr;
    Detach();
    PostNcDestroy();
}

BOOL CWnd::PreTranslateMessage(MSG* /*message*/) {
    return FALSE;
}

BOOL CWnd::WalkPreTranslateTree(HWND stop, MSG* message) {
    for (HWND window = message->hwnd; window != nullptr; window = ::GetParent(window)) {
        CWnd* const object = FromHandlePermanent(window);
        if (object != nullptr && object->PreTranslateMessage(message)) {
            return TRUE;
        }
        if (window == stop) {
            break;
        }
    }
    return FALSE;
}
