// Which keys are down.

#include <algorithm>

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "desktop_state.h"
#include "input.h"

namespace kawin {
namespace {

constexpr BYTE kDown = 0x80;
constexpr BYTE kToggled = 0x01;
constexpr BYTE kPressedSince = 0x02;

bool IsKey(int key) noexcept {
    return key >= 0 && key < 256;
}

// A press of -32768 and a toggle of 1, as the functions tell them.
SHORT Told(bool down, bool bit) noexcept {
    return static_cast<SHORT>((down ? 0x8000 : 0) | (bit ? 1 : 0));
}

}  // namespace
}  // namespace kawin

SHORT GetKeyState(int key) noexcept {
    const kawin::ThreadQueue* const queue = kawin::ThisQueueIfAny();
    if (!kawin::IsKey(key)) {
        return 0;
    }
    const kawin::DesktopLock desktop;
    const BYTE state =
        queue != nullptr ? queue->keys[static_cast<std::size_t>(key)] : desktop->keys_now[static_cast<std::size_t>(key)];
    return kawin::Told((state & kawin::kDown) != 0, (state & kawin::kToggled) != 0);
}

SHORT GetAsyncKeyState(int key) noexcept {
    if (!kawin::IsKey(key)) {
        return 0;
    }
    const kawin::DesktopLock desktop;
    BYTE& state = desktop->keys_now[static_cast<std::size_t>(key)];
    const SHORT told = kawin::Told((state & kawin::kDown) != 0, (state & kawin::kPressedSince) != 0);
    state &= static_cast<BYTE>(~kawin::kPressedSince);
    return told;
}

BOOL GetKeyboardState(BYTE* state) noexcept {
    if (state == nullptr) {
        return kawin::Fail(ERROR_NOACCESS);
    }
    return kawin::NoThrow([&]() -> BOOL {
        const kawin::ThreadQueue& queue = *kawin::ThisQueue();
        const kawin::DesktopLock desktop;
        std::copy(queue.keys.begin(), queue.keys.end(), state);
        return TRUE;
    });
}

BOOL SetKeyboardState(BYTE* state) noexcept {
    if (state == nullptr) {
        return kawin::Fail(ERROR_NOACCESS);
    }
    return kawin::NoThrow([&]() -> BOOL {
        kawin::ThreadQueue& queue = *kawin::ThisQueue();
        const kawin::DesktopLock desktop;
        std::copy_n(state, queue.keys.size(), queue.keys.begin());
        return TRUE;
    });
}
