#include "mouse_tracking.h"

#include <cstdlib>

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "../time/times.h"
#include "input.h"
#include "input_retrieval.h"
#include "pointer_messages.h"
#include "window_tree.h"

namespace kawin {
namespace {

constexpr DWORD kHoverTime = 400;  // milliseconds, HOVER_DEFAULT
constexpr int kHoverWay = 4;       // pixels, across the rectangle that counts as rest

bool IsWithin(const ThreadQueue::Tracking& tracking, const PointerTarget& target) noexcept {
    const bool client = target.hit == HTCLIENT;
    return tracking.window == target.window && client == ((tracking.flags & TME_NONCLIENT) == 0);
}

void BeginRest(ThreadQueue::Tracking& tracking, POINT screen) {
    tracking.rest = screen;
    tracking.hover_due = TimerNow() + std::chrono::milliseconds(tracking.hover_time);
}

// With the lock held.
void PostLeave(const DesktopLock& desktop, ThreadQueue& queue) {
    const ThreadQueue::Tracking old = std::exchange(queue.tracking, {});
    if ((old.flags & TME_LEAVE) != 0) {
        const UINT message = (old.flags & TME_NONCLIENT) != 0 ? WM_NCMOUSELEAVE : WM_MOUSELEAVE;
        queue.posted.push_back({old.window, message, 0, 0, GetTickCount(), desktop->pointer});
        Signal(queue, QS_POSTMESSAGE | QS_ALLPOSTMESSAGE);
    }
}

BOOL Query(TRACKMOUSEEVENT& track) {
    const ThreadQueue* const queue = ThisQueueIfAny();
    const DesktopLock desktop;
    const ThreadQueue::Tracking now = queue != nullptr ? queue->tracking : ThreadQueue::Tracking{};
    track = {sizeof track, now.flags, now.window, now.hover_time};
    return TRUE;
}

void Cancel(ThreadQueue& queue, const TRACKMOUSEEVENT& track) noexcept {
    if (queue.tracking.window != track.hwndTrack) {
        return;
    }
    queue.tracking.flags &= ~(track.dwFlags & (TME_HOVER | TME_LEAVE));
    if ((queue.tracking.flags & (TME_HOVER | TME_LEAVE)) == 0) {
        queue.tracking = {};
    }
}

BOOL Track(const TRACKMOUSEEVENT& track) {
    ThreadQueue& queue = *ThisQueue();
    POINT pointer = {};
    {
        const DesktopLock desktop;
        if (desktop.Find(track.hwndTrack) == nullptr) {
            return FALSE;
        }
        if ((track.dwFlags & TME_CANCEL) != 0) {
            Cancel(queue, track);
            return TRUE;
        }
        pointer = desktop->pointer;
    }
    const PointerTarget target = TargetAt(pointer);
    const DesktopLock desktop;
    const bool same = queue.tracking.window == track.hwndTrack;
    const DWORD kept = same ? queue.tracking.flags : 0;
    queue.tracking = {track.hwndTrack, kept | track.dwFlags, kHoverTime, pointer, {}};
    if (track.dwHoverTime != 0 && track.dwHoverTime != HOVER_DEFAULT) {
        queue.tracking.hover_time = track.dwHoverTime;
    }
    BeginRest(queue.tracking, pointer);
    if (!IsWithin(queue.tracking, target)) {
        PostLeave(desktop, queue);
    }
    return TRUE;
}

}  // namespace

void NoteMove(ThreadQueue& queue, const PointerTarget& target, POINT screen) {
    const DesktopLock desktop;
    queue.moved_over = target.window;
    ThreadQueue::Tracking& tracking = queue.tracking;
    if (tracking.window == nullptr) {
        return;
    }
    if (!IsWithin(tracking, target)) {
        PostLeave(desktop, queue);
    } else if (std::abs(screen.x - tracking.rest.x) > kHoverWay / 2 || std::abs(screen.y - tracking.rest.y) > kHoverWay / 2) {
        BeginRest(tracking, screen);
    }
}

Deadline HoverDue(const ThreadQueue& queue) noexcept {
    const bool hovering = queue.tracking.window != nullptr && (queue.tracking.flags & TME_HOVER) != 0;
    return hovering ? queue.tracking.hover_due : Deadline::max();
}

bool TakeHover(ThreadQueue& queue, const MessageFilter& filter, bool remove, MSG& message) {
    POINT point = {};
    HWND window = nullptr;
    {
        const DesktopLock desktop;
        if (TimerNow() < HoverDue(queue) || !filter.Takes(desktop, queue.tracking.window, WM_MOUSEHOVER)) {
            return false;
        }
        window = queue.tracking.window;
        point = desktop->pointer;
        const bool client = (queue.tracking.flags & TME_NONCLIENT) == 0;
        message = {window, client ? WM_MOUSEHOVER : WM_NCMOUSEHOVER, 0, 0, GetTickCount(), point};
        if (remove) {
            queue.tracking.flags &= ~TME_HOVER;
        }
    }
    if (message.message == WM_MOUSEHOVER) {
        ScreenToClient(window, &point);
    }
    message.lParam = MAKELPARAM(static_cast<WORD>(point.x), static_cast<WORD>(point.y));
    return true;
}

}  // namespace kawin

BOOL TrackMouseEvent(LPTRACKMOUSEEVENT track) noexcept {
    if (track == nullptr || track->cbSize != sizeof(TRACKMOUSEEVENT)) {
        return kawin::Fail(ERROR_INVALID_PARAMETER);
    }
    return kawin::NoThrow([&] { return (track->dwFlags & TME_QUERY) != 0 ? kawin::Query(*track) : kawin::Track(*track); });
}
