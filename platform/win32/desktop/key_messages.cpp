#include "key_messages.h"

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "../time/times.h"
#include "key_text.h"

namespace kawin {
namespace {

constexpr int kExtended = 0x100;

bool IsDown(const std::array<BYTE, 256>& keys, int key) noexcept {
    return (keys[static_cast<std::size_t>(key)] & 0x80) != 0;
}

// Alt and a key, Alt when no other key has been pressed with it, F10, and all keys when no window has the focus.
bool IsSystemKey(const ThreadQueue& queue, const InputEvent& event) noexcept {
    const bool alt = IsDown(event.keys, VK_MENU) && !IsDown(event.keys, VK_CONTROL);
    const bool lone_alt = event.amount == VK_MENU && event.alone;
    return alt || lone_alt || event.amount == VK_F10 || queue.focus == nullptr;
}

// Bits of the lparam: 0 to 15 count, 16 to 23 scan code, 24 extended, 29 Alt, 30 was down, 31 goes up.
LPARAM Packed(const InputEvent& event) noexcept {
    DWORD bits = 1;
    bits |= (static_cast<DWORD>(event.scan) & 0xFF) << 16;
    bits |= (event.scan & kExtended) != 0 ? DWORD{KF_EXTENDED} << 16 : 0;
    bits |= IsDown(event.keys, VK_MENU) ? DWORD{KF_ALTDOWN} << 16 : 0;
    bits |= event.was_down ? DWORD{KF_REPEAT} << 16 : 0;
    bits |= !event.down ? DWORD{KF_UP} << 16 : 0;
    return static_cast<LPARAM>(bits);
}

bool IsPress(UINT message) noexcept {
    return message == WM_KEYDOWN || message == WM_SYSKEYDOWN;
}

// What the key types: as the keyboard said when it was this one, else as a plain keyboard has it.
std::u16string TextOf(ThreadQueue& queue, const MSG& message) {
    const DesktopLock desktop;
    if (!queue.key_text.empty() && queue.message_time == message.time) {
        return std::exchange(queue.key_text, {});
    }
    return TextOfKey(static_cast<int>(message.wParam & 0xFF), queue.keys);
}

BOOL Translate(const MSG& message) {
    if (message.message < WM_KEYDOWN || message.message > WM_SYSKEYUP || message.message == WM_CHAR ||
        message.message == WM_DEADCHAR) {
        return FALSE;
    }
    if (IsPress(message.message)) {
        const UINT character = message.message == WM_KEYDOWN ? WM_CHAR : WM_SYSCHAR;
        for (const char16_t each : TextOf(*ThisQueue(), message)) {
            PostMessageW(message.hwnd, character, each, message.lParam);
        }
    }
    return TRUE;
}

}  // namespace

MSG KeyMessage(const ThreadQueue& queue, const InputEvent& event) {
    const HWND window = queue.focus != nullptr ? queue.focus : queue.active;
    MSG message = {window, WM_CHAR, static_cast<WPARAM>(event.amount), 1, event.time, event.position};
    if (event.kind == InputEvent::Kind::Character) {
        return message;
    }
    const bool system = IsSystemKey(queue, event);
    message.message = event.down ? (system ? WM_SYSKEYDOWN : WM_KEYDOWN) : (system ? WM_SYSKEYUP : WM_KEYUP);
    message.lParam = Packed(event);
    return message;
}

}  // namespace kawin

BOOL TranslateMessage(const MSG* message) noexcept {
    if (message == nullptr) {
        return kawin::Fail(ERROR_NOACCESS);
    }
    return kawin::NoThrow([&] { return kawin::Translate(*message); });
}
