#include "pointer_messages.h"

#include <cstdlib>

#include "activation.h"
#include "input.h"
#include "metrics.h"
#include "mouse_tracking.h"
#include "tree_walk.h"
#include "window_tree.h"

namespace kawin {
namespace {

using Kind = InputEvent::Kind;

bool IsDown(const InputEvent& event, int key) noexcept {
    return (event.keys[static_cast<std::size_t>(key)] & 0x80) != 0;
}

WORD ButtonsAndKeys(const InputEvent& event) noexcept {
    struct Flag {
        int key;
        WORD flag;
    };
    constexpr Flag kFlags[] = {{VK_LBUTTON, MK_LBUTTON},  {VK_RBUTTON, MK_RBUTTON}, {VK_MBUTTON, MK_MBUTTON},
                               {VK_SHIFT, MK_SHIFT},      {VK_CONTROL, MK_CONTROL}, {VK_XBUTTON1, MK_XBUTTON1},
                               {VK_XBUTTON2, MK_XBUTTON2}};
    WORD flags = 0;
    for (const Flag& each : kFlags) {
        flags = static_cast<WORD>(flags | (IsDown(event, each.key) ? each.flag : 0));
    }
    return flags;
}

LPARAM Packed(POINT point) noexcept {
    return MAKELPARAM(static_cast<WORD>(point.x), static_cast<WORD>(point.y));
}

UINT DownMessage(PointerButtonId button) noexcept {
    constexpr UINT kMessages[] = {WM_LBUTTONDOWN, WM_RBUTTONDOWN, WM_MBUTTONDOWN, WM_XBUTTONDOWN, WM_XBUTTONDOWN};
    return kMessages[static_cast<int>(button)];
}

WORD ExtraButton(PointerButtonId button) noexcept {
    return button == PointerButtonId::X1 ? XBUTTON1 : button == PointerButtonId::X2 ? XBUTTON2 : WORD{0};
}

constexpr UINT kUp = 1;                                         // from a button's down message to its up message
constexpr UINT kDouble = 2;                                     // ... to its double click
constexpr UINT kNonClient = WM_NCLBUTTONDOWN - WM_LBUTTONDOWN;  // WM_NCMOUSEMOVE alike

bool TakesDoubleClicks(HWND window) noexcept {
    return (GetClassLongPtrW(window, GCL_STYLE) & CS_DBLCLKS) != 0;
}

// Whether a press is the second of a double click.
bool IsSecondClick(const ThreadQueue& queue, const InputEvent& event, const PointerTarget& target, UINT message) {
    const DesktopLock desktop;
    const ThreadQueue::Click& first = queue.click;
    return first.window == target.window && first.message == message && event.time - first.time <= GetDoubleClickTime() &&
           std::abs(event.position.x - first.position.x) <= GetSystemMetrics(SM_CXDOUBLECLK) / 2 &&
           std::abs(event.position.y - first.position.y) <= GetSystemMetrics(SM_CYDOUBLECLK) / 2;
}

UINT ButtonNumber(const ThreadQueue& queue, const InputEvent& event, const PointerTarget& target) {
    const UINT down = DownMessage(event.button);
    const bool client = target.hit == HTCLIENT;
    if (!event.down) {
        return down + kUp + (client ? 0 : kNonClient);
    }
    const bool second = (!client || TakesDoubleClicks(target.window)) && IsSecondClick(queue, event, target, down);
    return down + (second ? kDouble : 0) + (client ? 0 : kNonClient);
}

void RememberClick(ThreadQueue& queue, const InputEvent& event, const PointerTarget& target, UINT message) {
    const UINT down = DownMessage(event.button);
    const bool second = message == down + kDouble || message == down + kDouble + kNonClient;
    const DesktopLock desktop;
    queue.click = second ? ThreadQueue::Click{} : ThreadQueue::Click{target.window, down, event.position, event.time};
}

// A press in a child is told to its parents.
void TellParents(HWND window, UINT message, POINT screen) {
    for (HWND at = window;;) {
        const auto style = static_cast<DWORD>(GetWindowLongW(at, GWL_STYLE));
        const auto extended = static_cast<DWORD>(GetWindowLongW(at, GWL_EXSTYLE));
        if ((style & WS_CHILD) == 0 || (extended & WS_EX_NOPARENTNOTIFY) != 0) {
            return;
        }
        at = GetParent(at);
        if (at == nullptr || at == GetDesktopWindow()) {
            return;
        }
        POINT point = screen;
        ScreenToClient(at, &point);
        SendMessageW(at, WM_PARENTNOTIFY, message, Packed(point));
    }
}

// A click on a disabled window brings up the window that keeps it so.
void PressDisabled(HWND window) {
    const HWND popup = GetLastActivePopup(window);
    if (popup != window && IsWindowEnabled(popup) != FALSE && IsWindowVisible(popup) != FALSE) {
        SetForegroundWindow(popup);
    }
}

// Whether the window gets the press.
bool Activate(const PointerTarget& target, UINT message) {
    const HWND top = GetAncestor(target.window, GA_ROOT);
    if (target.window == GetActiveWindow() && GetForegroundWindow() == target.window) {
        return true;
    }
    const LRESULT answer = SendMessageW(target.window, WM_MOUSEACTIVATE, reinterpret_cast<WPARAM>(top),
                                        MAKELPARAM(static_cast<WORD>(target.hit), message));
    if (answer == MA_ACTIVATE || answer == MA_ACTIVATEANDEAT) {
        ActivateWindow(top, WA_CLICKACTIVE);
    }
    return answer != MA_ACTIVATEANDEAT && answer != MA_NOACTIVATEANDEAT;
}

bool HasCapture(const ThreadQueue& queue) {
    const DesktopLock desktop;
    return queue.capture != nullptr;
}

}  // namespace

PointerTarget TargetOf(ThreadQueue& queue, const InputEvent& event) {
    {
        const DesktopLock desktop;
        if (event.kind == Kind::Wheel && queue.focus != nullptr) {
            return {queue.focus, HTCLIENT};
        }
        if (queue.capture != nullptr && event.kind != Kind::Wheel) {
            return {queue.capture, HTCLIENT};
        }
    }
    const PointerTarget target = TargetAt(event.position);
    // It may have come to another thread's window meanwhile.
    const bool mine = GetWindowThreadProcessId(target.window, nullptr) == queue.thread;
    return mine ? target : PointerTarget{};
}

MSG PointerMessage(ThreadQueue& queue, const InputEvent& event, const PointerTarget& target) {
    const bool client = target.hit == HTCLIENT;
    MSG message = {target.window, WM_MOUSEMOVE, 0, Packed(event.position), event.time, event.position};
    if (event.kind == Kind::Wheel) {
        message.message = event.axis == WheelAxis::Vertical ? WM_MOUSEWHEEL : WM_MOUSEHWHEEL;
        message.wParam = MAKEWPARAM(ButtonsAndKeys(event), static_cast<WORD>(event.amount));
        return message;
    }
    const bool button = event.kind == Kind::Button;
    message.message = button ? ButtonNumber(queue, event, target) : client ? WM_MOUSEMOVE : WM_NCMOUSEMOVE;
    const WORD low = client ? ButtonsAndKeys(event) : static_cast<WORD>(target.hit);
    message.wParam = MAKEWPARAM(low, button ? ExtraButton(event.button) : WORD{0});
    if (client) {
        POINT point = event.position;
        ScreenToClient(target.window, &point);
        message.lParam = Packed(point);
    }
    return message;
}

bool Accompany(ThreadQueue& queue, const InputEvent& event, const PointerTarget& target, const MSG& message) {
    if (event.kind == Kind::Wheel) {
        return true;
    }
    const bool press = event.kind == Kind::Button && event.down;
    const bool captured = HasCapture(queue);
    if (event.kind == Kind::Move) {
        NoteMove(queue, target, event.position);
    }
    const UINT plain = press ? DownMessage(event.button) + (target.hit == HTCLIENT ? 0 : kNonClient) : message.message;
    if (!captured && target.hit == HTERROR) {
        if (press) {
            PressDisabled(target.window);
        }
        SendMessageW(target.window, WM_SETCURSOR, reinterpret_cast<WPARAM>(target.window),
                     MAKELPARAM(static_cast<WORD>(target.hit), plain));
        return false;
    }
    bool gets = true;
    if (press && !captured) {
        RememberClick(queue, event, target, message.message);
        TellParents(target.window, plain, event.position);
        gets = Activate(target, plain);
    }
    if (!captured) {
        SendMessageW(target.window, WM_SETCURSOR, reinterpret_cast<WPARAM>(target.window),
                     MAKELPARAM(static_cast<WORD>(target.hit), plain));
    }
    return gets;
}

}  // namespace kawin
