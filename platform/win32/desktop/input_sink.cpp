#include "input_sink.h"

#include <algorithm>

#include "../text/no_throw.h"
#include "../time/times.h"
#include "pointer_target.h"
#include "window_tree.h"

namespace kawin {
namespace {

constexpr BYTE kDown = 0x80;
constexpr BYTE kToggled = 0x01;
constexpr BYTE kPressedSince = 0x02;
constexpr BYTE kTold = kDown | kToggled;

using Kind = InputEvent::Kind;

// With the lock held. Without memory the event is lost.
void Push(const DesktopLock& desktop, ThreadQueue* queue, InputEvent event, UINT kinds) {
    if (queue == nullptr || queue->ended) {
        return;
    }
    std::transform(desktop->keys_now.begin(), desktop->keys_now.end(), event.keys.begin(),
                   [](BYTE key) { return static_cast<BYTE>(key & kTold); });
    event.number = ++queue->last_input;
    const bool again = event.kind == Kind::Move && !queue->input.empty() && queue->input.back().kind == Kind::Move;
    if (again) {
        queue->input.back() = std::move(event);
    } else {
        queue->input.push_back(std::move(event));
    }
    Signal(*queue, kinds);
}

bool IsAnyButtonDown(const DesktopLock& desktop) noexcept {
    constexpr int kButtons[] = {VK_LBUTTON, VK_RBUTTON, VK_MBUTTON, VK_XBUTTON1, VK_XBUTTON2};
    return std::ranges::any_of(kButtons,
                               [&](int key) { return (desktop->keys_now[static_cast<std::size_t>(key)] & kDown) != 0; });
}

// Who gets what the pointer does: the thread that has captured it, else that of the window below it. While a button is down, the
// one that it went down in: it may be about to capture the pointer.
ThreadQueue* PointerQueue(const DesktopLock& desktop) {
    if (desktop->foreground != nullptr && desktop->foreground->capture != nullptr) {
        return desktop->foreground.get();
    }
    if (desktop->pressed_in != nullptr) {
        return desktop->pressed_in.get();
    }
    const Window* const top = TopLevelAt(desktop, desktop->pointer);
    return top != nullptr ? top->queue.get() : nullptr;
}

void SetKey(const DesktopLock& desktop, int key, bool down) noexcept {
    BYTE& state = desktop->keys_now[static_cast<std::size_t>(key) & 0xFF];
    if (!down) {
        state &= static_cast<BYTE>(~kDown);
        return;
    }
    const BYTE toggled = (state & kDown) == 0 ? kToggled : 0;
    state = static_cast<BYTE>((state | kDown | kPressedSince) ^ toggled);
}

bool IsDown(const DesktopLock& desktop, int key) noexcept {
    return (desktop->keys_now[static_cast<std::size_t>(key) & 0xFF] & kDown) != 0;
}

int ButtonKey(PointerButtonId button) noexcept {
    constexpr int kKeys[] = {VK_LBUTTON, VK_RBUTTON, VK_MBUTTON, VK_XBUTTON1, VK_XBUTTON2};
    return kKeys[static_cast<int>(button)];
}

// The key that messages name, and its two sides.
struct Sides {
    int key;
    int left;
    int right;
};
constexpr Sides kSides[] = {
    {VK_SHIFT, VK_LSHIFT, VK_RSHIFT}, {VK_CONTROL, VK_LCONTROL, VK_RCONTROL}, {VK_MENU, VK_LMENU, VK_RMENU}};

// The key as messages name it, after the state of all its sides is noted.
int NoteKey(const DesktopLock& desktop, int key, bool extended, bool down) noexcept {
    for (const Sides& each : kSides) {
        if (key == each.key) {
            key = extended ? each.right : each.left;
        }
        if (key == each.left || key == each.right) {
            SetKey(desktop, key, down);
            SetKey(desktop, each.key, IsDown(desktop, each.left) || IsDown(desktop, each.right));
            return each.key;
        }
    }
    SetKey(desktop, key, down);
    return key;
}

ThreadQueue* KeyQueue(const DesktopLock& desktop) noexcept {
    return desktop->foreground.get();
}

template <class Work>
void Guarded(Work work) noexcept {
    NoThrow([&] {
        work();
        return 0;
    });
}

}  // namespace

void PointerMoved(POINT screen, DWORD time) {
    Guarded([&] {
        const DesktopLock desktop;
        desktop->pointer = screen;
        ThreadQueue* const target = PointerQueue(desktop);
        InputEvent event;
        event.position = screen;
        event.time = time;
        Push(desktop, target, event, QS_MOUSEMOVE);
        // Whoever waits for the pointer to leave a window is told too.
        for (const auto& [thread, queue] : desktop->queues) {
            if (queue.get() != target && queue->tracking.window != nullptr) {
                Push(desktop, queue.get(), event, QS_MOUSEMOVE);
            }
        }
    });
}

void PointerButton(PointerButtonId button, bool down, DWORD time) {
    Guarded([&] {
        const DesktopLock desktop;
        SetKey(desktop, ButtonKey(button), down);
        ThreadQueue* const target = PointerQueue(desktop);
        if (!IsAnyButtonDown(desktop)) {
            desktop->pressed_in = nullptr;
        } else if (const Window* const top = TopLevelAt(desktop, desktop->pointer); top != nullptr && !desktop->pressed_in) {
            desktop->pressed_in = top->queue;
        }
        InputEvent event;
        event.kind = Kind::Button;
        event.position = desktop->pointer;
        event.time = time;
        event.button = button;
        event.down = down;
        Push(desktop, target, std::move(event), QS_MOUSEBUTTON);
    });
}

void PointerWheel(WheelAxis axis, int delta, DWORD time) {
    Guarded([&] {
        const DesktopLock desktop;
        InputEvent event;
        event.kind = Kind::Wheel;
        event.position = desktop->pointer;
        event.time = time;
        event.axis = axis;
        event.amount = delta;
        ThreadQueue* const keyboard = KeyQueue(desktop);
        Push(desktop, keyboard != nullptr ? keyboard : PointerQueue(desktop), std::move(event), QS_MOUSEBUTTON);
    });
}

void Key(int key, int scan, bool down, DWORD time, std::u16string_view text) {
    Guarded([&] {
        const DesktopLock desktop;
        InputEvent event;
        event.was_down = IsDown(desktop, key);
        event.amount = NoteKey(desktop, key, (scan & 0x100) != 0, down);
        desktop->alt_alone = down ? event.amount == VK_MENU : desktop->alt_alone;
        event.alone = desktop->alt_alone;
        event.kind = Kind::Key;
        event.position = desktop->pointer;
        event.time = time;
        event.down = down;
        event.scan = scan;
        event.text = text;
        Push(desktop, KeyQueue(desktop), std::move(event), QS_KEY);
    });
}

void Text(std::u16string_view text, DWORD time) {
    Guarded([&] {
        const DesktopLock desktop;
        for (const char16_t each : text) {
            InputEvent event;
            event.kind = Kind::Character;
            event.position = desktop->pointer;
            event.time = time;
            event.amount = each;
            Push(desktop, KeyQueue(desktop), std::move(event), QS_KEY);
        }
    });
}

void Activated(HWND window) {
    Guarded([&] {
        const DesktopLock desktop;
        const Window* const found = desktop.Look(window);
        InputEvent event;
        event.kind = Kind::Activate;
        event.window = window;
        event.time = GetTickCount();
        Push(desktop, found != nullptr ? found->queue.get() : desktop->foreground.get(), std::move(event), QS_KEY);
    });
}

void CloseRequested(HWND window) {
    PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
}

void Moved(HWND window, const RECT& rect) {
    Guarded([&] {
        const DesktopLock desktop;
        const Window* const found = desktop.Look(window);
        InputEvent event;
        event.kind = Kind::Place;
        event.window = window;
        event.rect = rect;
        event.time = GetTickCount();
        Push(desktop, found != nullptr ? found->queue.get() : nullptr, std::move(event), QS_MOUSEMOVE);
    });
}

void Minimised(HWND window, bool minimised) {
    PostMessageW(window, WM_SYSCOMMAND, minimised ? SC_MINIMIZE : SC_RESTORE, 0);
}

}  // namespace kawin

BOOL GetCursorPos(LPPOINT position) noexcept {
    if (position == nullptr) {
        return FALSE;
    }
    const kawin::DesktopLock desktop;
    *position = desktop->pointer;
    return TRUE;
}
