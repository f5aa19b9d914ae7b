#pragma once

// The state that all threads share: the windows and the threads' queues, under one lock. The lock is never held while a window
// procedure, a hook or a display runs.

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "thread_queue.h"
#include "window_record.h"

namespace kawin {

struct Desktop {
    Desktop();

    std::mutex mutex;

    // All below is guarded by it.
    struct Slot {
        std::shared_ptr<Window> window;
        WORD generation = 1;
    };
    std::vector<Slot> slots;
    std::deque<std::size_t> empty;   // the one that has been empty for longest first, so that handles come back late
    Window* root = nullptr;          // the desktop window
    Window* message_root = nullptr;  // parent of the message-only windows
    std::map<DWORD, std::shared_ptr<ThreadQueue>> queues;
    std::shared_ptr<ThreadQueue> foreground;               // null: no window of this process is active
    std::shared_ptr<ThreadQueue> pressed_in;               // of the window in which the buttons went down; null: none is down
    std::map<ULONG_PTR, std::vector<WINDOWPOS>> deferred;  // by the number that a HDWP is
    ULONG_PTR last_deferred = 0;
    bool alt_alone = false;  // Alt was the last key to go down
    POINT pointer = {};
    std::array<BYTE, 256> keys_now = {};  // GetAsyncKeyState: 0x80 down, 0x01 toggled, 0x02 pressed since it was asked
};

Desktop& TheDesktop();

// Held while it lives.
class DesktopLock {
public:
    DesktopLock() : desktop_(TheDesktop()), lock_(desktop_.mutex) {}

    Desktop* operator->() const noexcept { return &desktop_; }
    Desktop& operator*() const noexcept { return desktop_; }

    // The window behind a handle; null when there is none, Find with ERROR_INVALID_WINDOW_HANDLE.
    Window* Look(HWND window) const noexcept;
    Window* Find(HWND window) const noexcept;

    // The same, but not the desktop window: ERROR_ACCESS_DENIED.
    Window* FindOwn(HWND window) const noexcept;

private:
    Desktop& desktop_;
    std::unique_lock<std::mutex> lock_;
};

// A handle for a new window without a place in the tree. With the lock held. Throws std::bad_alloc.
HWND AddWindow(Desktop& desktop, std::shared_ptr<Window> window);

// Takes it out of the table and the tree. With the lock held. What it held is destroyed with the result.
std::shared_ptr<Window> RemoveWindow(Desktop& desktop, Window& window) noexcept;

// Makes `window` a child of `parent` at a place in its list, or takes it out of its parent's list. With the lock held.
void LinkWindow(Window& window, Window& parent, std::size_t place);
void UnlinkWindow(Window& window) noexcept;

// How many windows there are, the two roots left out: for tests that look for leaks.
KADATA_API std::size_t CountWindows();

}  // namespace kawin
