#include "display_sdl.h"

#include <algorithm>

#include "../base/utf.h"
#include "../process/thread_id.h"
#include "../time/times.h"
#include "icon_image.h"
#include "input.h"
#include "rectangles.h"

namespace kawin {
namespace {

RECT RectOf(const SDL_Rect& rect) noexcept {
    return {rect.x, rect.y, rect.x + rect.w, rect.y + rect.h};
}

int Width(const RECT& rect) noexcept {
    return rect.right - rect.left;
}

int Height(const RECT& rect) noexcept {
    return rect.bottom - rect.top;
}

}  // namespace

SdlDisplay::SdlDisplay(const Sdl& sdl) : sdl_(sdl) {}

bool SdlDisplay::Open() {
    // The host's business stays the host's: its signals, its screen saver.
    sdl_.SetMainReady();
    sdl_.SetHint(SDL_HINT_VIDEODRIVER,
                 "x11,wayland");  // and none that nobody sees; SDL_VIDEODRIVER in the environment still rules
    sdl_.SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    sdl_.SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    sdl_.SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
    sdl_.SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
    // Before SDL's own handler, which hands on to this one, and is taken back while the connection is still being closed.
    x_errors_.emplace();
    if (sdl_.InitSubSystem(SDL_INIT_VIDEO) != 0) {
        x_errors_.reset();
        return false;
    }
    asks_pointer_ = std::string_view(sdl_.GetCurrentVideoDriver()) == "x11";
    if (asks_pointer_) {
        sdl_.SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");  // pixels are pushed as they are: no need to load OpenGL
    }
    if (wake_event_ == 0) {
        wake_event_ = sdl_.RegisterEvents(1);
    }
    sdl_.StartTextInput();
    RefreshMonitors();
    thread_ = CurrentThreadId();
    return true;
}

void SdlDisplay::Close() noexcept {
    for (auto& [window, shown] : shown_) {
        Destroy(shown);
    }
    for (auto& [handle, cursor] : cursors_) {
        sdl_.FreeCursor(cursor);
    }
    shown_.clear();
    order_.clear();
    cursors_.clear();
    cursor_known_ = false;
    focus_ = nullptr;
    pending_key_.reset();
    captured_ = false;
    pressed_ = 0;
    thread_ = 0;
    sdl_.QuitSubSystem(SDL_INIT_VIDEO);
    x_errors_.reset();
}

bool SdlDisplay::IsMine() const noexcept {
    return thread_ == CurrentThreadId();
}

std::vector<Monitor> SdlDisplay::Monitors() const {
    const std::lock_guard lock(mutex_);
    return monitors_;
}

void SdlDisplay::RefreshMonitors() {
    std::vector<Monitor> monitors;
    for (int index = 0; index < sdl_.GetNumVideoDisplays(); ++index) {
        SDL_Rect bounds = {};
        SDL_Rect usable = {};
        if (sdl_.GetDisplayBounds(index, &bounds) == 0) {
            const bool known = sdl_.GetDisplayUsableBounds(index, &usable) == 0;
            monitors.push_back({RectOf(bounds), RectOf(known ? usable : bounds)});
        }
    }
    const std::lock_guard lock(mutex_);
    monitors_ = std::move(monitors);
}

void SdlDisplay::Wake() noexcept {
    if (woken_.exchange(true)) {
        return;
    }
    SDL_Event event = {};
    event.type = wake_event_;
    sdl_.PushEvent(&event);
    const std::lock_guard lock(sleep_mutex_);
    sleep_.notify_all();
}

void SdlDisplay::Wait(Deadline deadline) {
    const Deadline now = Deadline::clock::now();
    const bool waits = deadline > now && !woken_.exchange(false);
    SDL_Event event;
    if (waits && shown_.empty()) {
        std::unique_lock lock(sleep_mutex_);
        const auto is_woken = [this] { return woken_.exchange(false); };
        if (deadline == Deadline::max()) {
            sleep_.wait(lock, is_woken);
        } else {
            sleep_.wait_until(lock, deadline, is_woken);
        }
    } else if (waits) {
        using Milliseconds = std::chrono::milliseconds;
        constexpr Milliseconds longest{60'000};    // waiting ends early now and then
        constexpr Milliseconds while_pressed{20};  // FollowPointer
        const auto left = std::min(pressed_ != 0 ? while_pressed : longest, std::chrono::ceil<Milliseconds>(deadline - now));
        if (sdl_.WaitEventTimeout(&event, static_cast<int>(left.count())) != 0) {
            Take(event);
        }
    }
    woken_ = false;
    while (sdl_.PollEvent(&event) != 0) {
        Take(event);
    }
    FinishKey({});
    FollowPointer();
}

void SdlDisplay::Capture(HWND window) {
    captured_ = window != nullptr;
    moved_ = false;
}

void SdlDisplay::Warp(POINT position) {
    sdl_.WarpMouseGlobal(position.x, position.y);
}

std::optional<std::string> SdlDisplay::ClipboardText() {
    char* const text = sdl_.GetClipboardText();
    std::optional<std::string> result;
    if (text != nullptr) {
        result = text;
    }
    sdl_.free(text);
    return result;
}

void SdlDisplay::SetClipboardText(const std::string& text) {
    sdl_.SetClipboardText(text.c_str());
}

void SdlDisplay::HandOver() {
    const DWORD thread = CurrentThreadId();
    bool any = false;
    for (const TopLevel& top : SnapshotTopLevels()) {
        const RECT touched = top.thread == thread && top.surface != nullptr ? top.surface->TakeTouched() : RECT{};
        if (touched.left >= touched.right) {
            continue;
        }
        any = true;
        const std::lock_guard lock(mutex_);
        Picture& picture = pictures_[top.window];
        Surface& source = *top.surface;
        RECT copied = touched;
        if (picture.pixels == nullptr || picture.pixels->Width() != source.Width() ||
            picture.pixels->Height() != source.Height()) {
            picture.pixels = Surface::Make(source.Width(), source.Height());
            copied = source.Bounds();
        }
        if (picture.pixels == nullptr) {
            continue;
        }
        for (int y = copied.top; y < copied.bottom; ++y) {
            std::copy_n(source.Row(y) + copied.left, Width(copied), picture.pixels->Row(y) + copied.left);
        }
        UnionRect(&picture.fresh, &picture.fresh, &copied);
    }
    if (any) {
        Wake();
    }
}

void SdlDisplay::Synchronise() {
    const std::vector<TopLevel> tops = SnapshotTopLevels();
    std::erase_if(shown_, [&](const auto& each) {
        const auto same = [&](const TopLevel& top) { return top.window == each.first && top.visible; };
        const bool gone = std::ranges::none_of(tops, same);
        if (gone) {
            Destroy(each.second);
        }
        return gone;
    });
    {
        const std::lock_guard lock(mutex_);
        std::erase_if(pictures_, [&](const auto& each) {
            return std::ranges::none_of(tops, [&](const TopLevel& top) { return top.window == each.first; });
        });
    }
    for (auto top = tops.rbegin(); top != tops.rend(); ++top) {  // owners before what they own
        if (top->visible && Width(top->rect) > 0 && Height(top->rect) > 0) {
            Follow(*top, shown_[top->window]);
        }
    }
    FollowOrder(tops);
    FollowFocus();
    FollowCursor();
}

void SdlDisplay::Create(const TopLevel& top, Shown& shown) {
    Uint32 flags = SDL_WINDOW_BORDERLESS | SDL_WINDOW_HIDDEN;
    flags |= top.tool || top.owner != nullptr ? static_cast<Uint32>(SDL_WINDOW_SKIP_TASKBAR) : 0;
    flags |= top.topmost ? static_cast<Uint32>(SDL_WINDOW_ALWAYS_ON_TOP) : 0;
    shown.title = top.title;
    shown.window =
        sdl_.CreateWindow(ToUtf8(top.title).c_str(), top.rect.left, top.rect.top, Width(top.rect), Height(top.rect), flags);
    if (shown.window == nullptr) {
        return;
    }
    shown.id = sdl_.GetWindowID(shown.window);
    shown.rect = top.rect;
    shown.topmost = top.topmost;
    shown.asked.push_back({top.rect.left, top.rect.top});
    const auto owner = shown_.find(top.owner);
    if (owner != shown_.end() && owner->second.window != nullptr) {
        sdl_.SetWindowModalFor(shown.window, owner->second.window);
    }
}

void SdlDisplay::Destroy(const Shown& shown) noexcept {
    if (shown.window != nullptr) {
        sdl_.DestroyWindow(shown.window);
    }
}

void SdlDisplay::Follow(const TopLevel& top, Shown& shown) {
    if (shown.window == nullptr) {
        Create(top, shown);
    }
    if (shown.window == nullptr) {
        return;
    }
    FollowPlace(top, shown);
    FollowState(top, shown);
    Present(top, shown);
}

void SdlDisplay::FollowPlace(const TopLevel& top, Shown& shown) {
    if (top.iconic) {
        return;
    }
    if (top.rect.left != shown.rect.left || top.rect.top != shown.rect.top) {
        shown.asked.push_back({top.rect.left, top.rect.top});
        sdl_.SetWindowPosition(shown.window, top.rect.left, top.rect.top);
        moved_ = true;
    }
    if (Width(top.rect) != Width(shown.rect) || Height(top.rect) != Height(shown.rect)) {
        sdl_.SetWindowSize(shown.window, Width(top.rect), Height(top.rect));
        shown.complete = false;
    }
    shown.rect = top.rect;
}

void SdlDisplay::FollowState(const TopLevel& top, Shown& shown) {
    if (top.title != shown.title) {
        shown.title = top.title;
        sdl_.SetWindowTitle(shown.window, ToUtf8(top.title).c_str());
    }
    if (top.topmost != shown.topmost) {
        shown.topmost = top.topmost;
        sdl_.SetWindowAlwaysOnTop(shown.window, top.topmost ? SDL_TRUE : SDL_FALSE);
    }
    if (!shown.visible) {
        shown.visible = true;
        sdl_.ShowWindow(shown.window);
        sdl_.SetWindowPosition(shown.window, top.rect.left, top.rect.top);  // some window managers place a new window themselves
    }
    if (top.iconic != shown.iconic) {
        shown.iconic = top.iconic;
        top.iconic ? sdl_.MinimizeWindow(shown.window) : sdl_.RestoreWindow(shown.window);
        shown.complete = false;
    }
}

void SdlDisplay::FollowOrder(const std::vector<TopLevel>& tops) {
    std::vector<HWND> order;
    for (const TopLevel& top : tops) {
        if (shown_.contains(top.window)) {
            order.push_back(top.window);
        }
    }
    std::erase_if(order_, [this](HWND each) { return !shown_.contains(each); });
    if (order == order_) {
        return;
    }
    // What lies below the lowest difference is right already.
    auto below = order.rbegin();
    for (auto before = order_.rbegin(); below != order.rend() && before != order_.rend() && *below == *before; ++before) {
        ++below;
    }
    for (; below != order.rend(); ++below) {
        if (SDL_Window* const window = shown_[*below].window) {
            sdl_.RaiseWindow(window);
        }
    }
    order_ = std::move(order);
}

void SdlDisplay::FollowFocus() {
    const HWND active = GetForegroundWindow();
    if (active == focus_) {
        return;
    }
    const auto found = shown_.find(active);
    if (found == shown_.end() || found->second.window == nullptr) {
        focus_ = active == nullptr ? nullptr : focus_;
        return;
    }
    focus_ = active;
    sdl_.SetWindowInputFocus(found->second.window);
}

void SdlDisplay::Present(const TopLevel& top, Shown& shown) {
    if (top.iconic) {
        return;
    }
    if (top.thread == thread_) {
        if (top.surface == nullptr) {
            return;
        }
        const RECT touched = top.surface->TakeTouched();
        PresentPart(shown, *top.surface, shown.complete ? touched : top.surface->Bounds());
        return;
    }
    const std::lock_guard lock(mutex_);
    const auto found = pictures_.find(top.window);
    if (found != pictures_.end() && found->second.pixels != nullptr) {
        const RECT fresh = std::exchange(found->second.fresh, RECT{});
        Surface& pixels = *found->second.pixels;
        PresentPart(shown, pixels, shown.complete ? fresh : pixels.Bounds());
    }
}

void SdlDisplay::PresentPart(Shown& shown, Surface& surface, const RECT& part) {
    if (part.left >= part.right || part.top >= part.bottom) {
        return;
    }
    SDL_Surface* const target = sdl_.GetWindowSurface(shown.window);
    SDL_Surface* const source =
        sdl_.CreateRGBSurfaceWithFormatFrom(surface.Row(0), surface.Width(), surface.Height(), 32,
                                            surface.Width() * static_cast<int>(sizeof(Pixel)), SDL_PIXELFORMAT_RGB888);
    if (target != nullptr && source != nullptr) {
        const SDL_Rect from = {part.left, part.top, Width(part), Height(part)};
        SDL_Rect to = from;
        if (sdl_.UpperBlit(source, &from, target, &to) == 0 && to.w > 0 && to.h > 0) {
            shown.complete = sdl_.UpdateWindowSurfaceRects(shown.window, &to, 1) == 0;
        }
    }
    sdl_.FreeSurface(source);
}

}  // namespace kawin
