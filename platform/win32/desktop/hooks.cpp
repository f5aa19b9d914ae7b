#include "hooks.h"

#include <algorithm>
#include <atomic>

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "desktop_state.h"

namespace kawin {
namespace {

std::atomic<ULONG_PTR> last_hook{0};

// Calls the newest hook of that kind that is older than `than` (0: any).
LRESULT CallOlder(int kind, ULONG_PTR than, int code, WPARAM wparam, LPARAM lparam) {
    HOOKPROC procedure = nullptr;
    if (ThreadQueue* const queue = ThisQueueIfAny()) {
        const DesktopLock desktop;
        for (const Hook& each : queue->hooks) {
            if (each.kind == kind && (than == 0 || each.id < than)) {
                procedure = each.procedure;
            }
        }
    }
    return procedure != nullptr ? procedure(code, wparam, lparam) : 0;
}

Hook* FindHook(HHOOK hook) noexcept {
    ThreadQueue* const queue = ThisQueueIfAny();
    if (queue == nullptr) {
        return nullptr;
    }
    const auto found = std::find_if(queue->hooks.begin(), queue->hooks.end(),
                                    [&](const Hook& each) { return each.id == reinterpret_cast<ULONG_PTR>(hook); });
    return found != queue->hooks.end() ? &*found : nullptr;
}

}  // namespace

LRESULT CallHooks(int kind, int code, WPARAM wparam, LPARAM lparam) {
    return CallOlder(kind, 0, code, wparam, lparam);
}

}  // namespace kawin

HHOOK SetWindowsHookExW(int kind, HOOKPROC procedure, HINSTANCE /*module*/, DWORD thread) noexcept {
    if (procedure == nullptr || (kind != WH_CBT && kind != WH_GETMESSAGE && kind != WH_MSGFILTER)) {
        kawin::Fail(ERROR_INVALID_HOOK_FILTER);
        return nullptr;
    }
    if (thread != kawin::CurrentThreadId()) {
        kawin::Fail(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return kawin::NoThrow([&]() -> HHOOK {
        kawin::ThreadQueue& queue = *kawin::ThisQueue();
        const kawin::DesktopLock desktop;
        queue.hooks.push_back({kind, procedure, ++kawin::last_hook});
        return reinterpret_cast<HHOOK>(queue.hooks.back().id);
    });
}

BOOL UnhookWindowsHookEx(HHOOK hook) noexcept {
    const kawin::DesktopLock desktop;
    const kawin::Hook* const found = kawin::FindHook(hook);
    if (found == nullptr) {
        return kawin::Fail(ERROR_INVALID_HOOK_HANDLE);
    }
    std::vector<kawin::Hook>& hooks = kawin::ThisQueueIfAny()->hooks;
    hooks.erase(hooks.begin() + (found - hooks.data()));
    return TRUE;
}

LRESULT CallNextHookEx(HHOOK hook, int code, WPARAM wparam, LPARAM lparam) noexcept {
    int kind = 0;
    {
        const kawin::DesktopLock desktop;
        const kawin::Hook* const found = kawin::FindHook(hook);
        if (found == nullptr) {
            return 0;
        }
        kind = found->kind;
    }
    return kawin::CallOlder(kind, reinterpret_cast<ULONG_PTR>(hook), code, wparam, lparam);
}

BOOL CallMsgFilterW(LPMSG message, int code) noexcept {
    return kawin::CallHooks(WH_MSGFILTER, code, 0, reinterpret_cast<LPARAM>(message)) != 0;
}
