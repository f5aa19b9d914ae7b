// What a display tells, handed on as input.

#include <algorithm>

#include "../base/utf.h"
#include "../time/times.h"
#include "display_keys.h"
#include "display_sdl.h"
#include "input_sink.h"
#include "virtual_keys.h"

namespace kawin {
namespace {

// SDL's clock began with SDL; the input's is GetTickCount's. Events are taken as they come, so now is near enough.
DWORD Now() noexcept {
    return GetTickCount();
}

std::optional<PointerButtonId> ButtonOf(Uint8 button) noexcept {
    switch (button) {
        case SDL_BUTTON_LEFT:
            return PointerButtonId::Left;
        case SDL_BUTTON_RIGHT:
            return PointerButtonId::Right;
        case SDL_BUTTON_MIDDLE:
            return PointerButtonId::Middle;
        case SDL_BUTTON_X1:
            return PointerButtonId::X1;
        case SDL_BUTTON_X2:
            return PointerButtonId::X2;
        default:
            return std::nullopt;
    }
}

}  // namespace

SdlDisplay::Shown* SdlDisplay::Find(Uint32 id, HWND* window) noexcept {
    for (auto& [handle, shown] : shown_) {
        if (shown.id == id && shown.window != nullptr) {
            if (window != nullptr) {
                *window = handle;
            }
            return &shown;
        }
    }
    return nullptr;
}

// SDL tells the place in the window, as that lay when the display saw it. A window that is dragged lies elsewhere by now: then
// FollowPointer asks.
void SdlDisplay::MovePointer(Uint32 id, int x, int y) {
    const Shown* const shown = Find(id);
    if (shown != nullptr && !(captured_ && moved_ && asks_pointer_)) {
        PointerMoved({shown->rect.left + x, shown->rect.top + y}, Now());
    }
}

void SdlDisplay::TellButton(int button, bool down) {
    const Uint32 mask = SDL_BUTTON(static_cast<Uint32>(button));
    const std::optional<PointerButtonId> id = ButtonOf(static_cast<Uint8>(button));
    if (!id || ((pressed_ & mask) != 0) == down) {
        return;
    }
    pressed_ ^= mask;
    PointerButton(*id, down, Now());
}

void SdlDisplay::TakeButton(const SDL_MouseButtonEvent& event) {
    MovePointer(event.windowID, event.x, event.y);
    if (captured_) {
        FollowPointer();
    }
    TellButton(event.button, event.state == SDL_PRESSED);
}

// While a button is down and the pointer outside of the window it went down in, SDL loses sight of both at times: it lets go of
// the pointer when that comes back. So the display itself is asked.
void SdlDisplay::FollowPointer() {
    if (!asks_pointer_ || pressed_ == 0) {
        return;
    }
    POINT at = {};
    const Uint32 down = sdl_.GetGlobalMouseState(&at.x, &at.y);
    if (captured_ && (at.x != pointer_.x || at.y != pointer_.y)) {
        pointer_ = at;
        PointerMoved(at, Now());
    }
    for (int button = SDL_BUTTON_LEFT; button <= SDL_BUTTON_RIGHT; ++button) {
        if ((down & SDL_BUTTON(static_cast<Uint32>(button))) == 0) {
            TellButton(button, false);
        }
    }
}

void SdlDisplay::Take(const SDL_Event& event) {
    if (event.type == SDL_TEXTINPUT) {
        const std::u16string text = FromUtf8(event.text.text);
        pending_key_ ? FinishKey(text) : Text(text, Now());
        return;
    }
    FinishKey({});
    switch (event.type) {
        case SDL_MOUSEMOTION:
            return MovePointer(event.motion.windowID, event.motion.x, event.motion.y);
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            return TakeButton(event.button);
        case SDL_MOUSEWHEEL:
            return TakeWheel(event.wheel);
        case SDL_KEYDOWN:
        case SDL_KEYUP:
            return TakeKey(event.key);
        case SDL_WINDOWEVENT:
            return TakeWindowEvent(event.window);
        case SDL_DISPLAYEVENT:
            return RefreshMonitors();
        default:
            return;
    }
}

void SdlDisplay::TakeWheel(const SDL_MouseWheelEvent& wheel) {
    const int sign = wheel.direction == SDL_MOUSEWHEEL_FLIPPED ? -1 : 1;
    if (wheel.y != 0) {
        PointerWheel(WheelAxis::Vertical, sign * wheel.y * WHEEL_DELTA, Now());
    }
    if (wheel.x != 0) {
        PointerWheel(WheelAxis::Horizontal, sign * wheel.x * WHEEL_DELTA, Now());
    }
}

// What a key types comes as the next event: it is kept until then.
void SdlDisplay::TakeKey(const SDL_KeyboardEvent& event) {
    const DesktopKey key = KeyOf(event.keysym);
    if (key.key == 0) {
        return;
    }
    if (event.state == SDL_RELEASED) {
        Key(key.key, key.scan, false, Now(), {});
        return;
    }
    const bool commands = (event.keysym.mod & (KMOD_CTRL | KMOD_ALT)) != 0;
    pending_key_ = PendingKey{key.key, key.scan, !commands && IsPrinting(key.key)};
}

// A key that should print and did not waits for another one, as accents do: that is an input method's business.
void SdlDisplay::FinishKey(std::u16string_view text) {
    if (const std::optional<PendingKey> key = std::exchange(pending_key_, std::nullopt)) {
        Key(key->prints && text.empty() ? VK_PROCESSKEY : key->key, key->scan, true, Now(), text);
    }
}

void SdlDisplay::TakeWindowEvent(const SDL_WindowEvent& event) {
    HWND window = nullptr;
    Shown* const shown = Find(event.windowID, &window);
    if (shown == nullptr) {
        return;
    }
    switch (event.event) {
        case SDL_WINDOWEVENT_EXPOSED:
            shown->complete = false;
            return;
        case SDL_WINDOWEVENT_MOVED:
        case SDL_WINDOWEVENT_RESIZED:
            return TakePlace(window, *shown, event);
        case SDL_WINDOWEVENT_MINIMIZED:
            if (!std::exchange(shown->iconic, true)) {
                Minimised(window, true);
            }
            return;
        case SDL_WINDOWEVENT_RESTORED:
            if (std::exchange(shown->iconic, false)) {
                Minimised(window, false);
            }
            return;
        case SDL_WINDOWEVENT_FOCUS_GAINED:
            focus_ = window;
            Activated(window);
            return;
        case SDL_WINDOWEVENT_FOCUS_LOST:
            // Between two windows of this program the other one's gain tells it all.
            if (std::ranges::none_of(shown_, [this](const auto& each) { return HasFocus(each.second); })) {
                focus_ = nullptr;
                Activated(nullptr);
            }
            return;
        case SDL_WINDOWEVENT_LEAVE: {
            POINT at = {};
            sdl_.GetGlobalMouseState(&at.x, &at.y);
            PointerMoved(at, Now());
            return;
        }
        case SDL_WINDOWEVENT_CLOSE:
            CloseRequested(window);
            return;
        default:
            return;
    }
}

bool SdlDisplay::HasFocus(const Shown& shown) const noexcept {
    return shown.window != nullptr && (sdl_.GetWindowFlags(shown.window) & SDL_WINDOW_INPUT_FOCUS) != 0;
}

// The display's answer to an own wish is no news, and may come when the next wish is out already.
void SdlDisplay::TakePlace(HWND window, Shown& shown, const SDL_WindowEvent& event) {
    RECT rect = shown.rect;
    if (event.event == SDL_WINDOWEVENT_MOVED) {
        const auto wish =
            std::ranges::find_if(shown.asked, [&](const POINT& each) { return each.x == event.data1 && each.y == event.data2; });
        if (wish != shown.asked.end()) {
            shown.asked.erase(shown.asked.begin(), wish + 1);
            return;
        }
        rect = {event.data1, event.data2, event.data1 + rect.right - rect.left, event.data2 + rect.bottom - rect.top};
    } else {
        rect.right = rect.left + event.data1;
        rect.bottom = rect.top + event.data2;
    }
    if (rect.left != shown.rect.left || rect.top != shown.rect.top || rect.right != shown.rect.right ||
        rect.bottom != shown.rect.bottom) {
        shown.rect = rect;
        Moved(window, rect);
    }
}

}  // namespace kawin
