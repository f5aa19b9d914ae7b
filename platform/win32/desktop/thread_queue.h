#pragma once

// A thread's queue, and what else the thread has of the desktop: focus, timers, keys.

#include <array>
#include <chrono>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "../base/handle_table.h"
#include "../process/thread_id.h"
#include "input_sink.h"
#include "message_queue.h"
#include "timers.h"

namespace kawin {

struct ThreadQueue;

// A message on its way to another thread.
struct SentMessage {
    HWND window = nullptr;
    UINT message = 0;
    WPARAM wparam = 0;
    LPARAM lparam = 0;
    std::shared_ptr<ThreadQueue> sender;  // null: nobody waits for the result
    LRESULT result = 0;
    enum class State { Waiting, Running, Done, Lost } state = State::Waiting;
};

// What the user did, before it is known which message it makes; or what a display wants done in the window's thread.
struct InputEvent {
    enum class Kind { Move, Button, Wheel, Key, Character, Activate, Place } kind = Kind::Move;
    POINT position = {};
    DWORD time = 0;
    PointerButtonId button = PointerButtonId::Left;
    WheelAxis axis = WheelAxis::Vertical;
    bool down = false;
    bool was_down = false;  // a key that repeats
    bool alone = false;     // Alt, without another key since it went down
    int amount = 0;         // of a wheel; a key's VK_*, a character
    int scan = 0;
    std::u16string text;              // what a key types
    HWND window = nullptr;            // to be activated or placed
    RECT rect = {};                   // its place
    std::array<BYTE, 256> keys = {};  // afterwards
    ULONGLONG number = 0;             // of the event, in its queue
};

struct Timer {
    HWND window = nullptr;
    UINT_PTR id = 0;
    std::chrono::milliseconds period{0};
    Deadline due;
    TIMERPROC procedure = nullptr;
};

struct Hook {
    int kind = 0;
    HOOKPROC procedure = nullptr;
    ULONG_PTR id = 0;
};

// Guarded by the room's lock (desktop_state.h) unless said otherwise.
struct ThreadQueue {
    explicit ThreadQueue(DWORD id);
    ThreadQueue(const ThreadQueue&) = delete;
    ThreadQueue& operator=(const ThreadQueue&) = delete;
    ~ThreadQueue();

    const DWORD thread;
    const HANDLE signal;  // an auto-reset event: something is new; safe from every thread

    std::deque<std::shared_ptr<SentMessage>> sent;
    std::vector<std::shared_ptr<SentMessage>> running;  // being handled by this thread, the innermost last
    std::deque<MSG> posted;
    std::deque<InputEvent> input;
    std::vector<Timer> timers;
    bool quit = false;
    int exit_code = 0;
    UINT fresh = 0;          // QS_*: came since the last look
    bool may_paint = false;  // false: none of its windows needs WM_PAINT
    bool ended = false;

    HWND focus = nullptr;
    HWND active = nullptr;
    HWND capture = nullptr;
    HWND moved_over = nullptr;  // where the last WM_MOUSEMOVE went

    std::array<BYTE, 256> keys = {};  // as of the message last retrieved: 0x80 down, 0x01 toggled
    std::u16string key_text;          // what the key last retrieved types
    ULONGLONG last_input = 0;         // InputEvent::number

    struct Tracking {
        HWND window = nullptr;  // null: none
        DWORD flags = 0;
        DWORD hover_time = 0;
        POINT rest = {};  // where the pointer was when the time began
        Deadline hover_due;
    } tracking;

    struct Click {  // the last button message: for double clicks
        HWND window = nullptr;
        UINT message = 0;
        POINT position = {};
        DWORD time = 0;
    } click;

    // Of the message last retrieved.
    DWORD message_time = 0;
    POINT message_position = {};

    std::vector<Hook> hooks;  // the newest last
    ULONG_PTR last_timer = 0;
};

// The calling thread's queue, made when it has none. When the thread ends its windows are destroyed. Without the lock held.
const std::shared_ptr<ThreadQueue>& ThisQueue();

// Tells the thread that something of `kinds` (QS_*) has come. With the lock held.
void Signal(ThreadQueue& queue, UINT kinds) noexcept;

// Sleeps until something new comes to the calling thread's queue, or the deadline; may return early. While the thread serves a
// display it does so meanwhile. Without the lock held.
void WaitForWork(ThreadQueue& queue, Deadline deadline);

// The same for a thread that has a queue already, else null: what has no queue has neither focus nor timers.
ThreadQueue* ThisQueueIfAny() noexcept;

// Runs all messages that other threads have sent to this one. Without the lock held. Whether there was one.
bool ServeSentMessages(ThreadQueue& queue);

// 0 for a deadline in the past, INFINITE for Deadline::max().
DWORD MillisecondsUntil(Deadline deadline) noexcept;

// The time as timers see it. Tests move it on.
Deadline TimerNow() noexcept;
KADATA_API void AdvanceTimerClock(std::chrono::milliseconds way) noexcept;

}  // namespace kawin
