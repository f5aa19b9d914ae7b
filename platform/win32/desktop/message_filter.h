#pragma once

// Which messages GetMessageW and PeekMessageW are asked for.

#include "desktop_state.h"

namespace kawin {

struct MessageFilter {
    HWND window = nullptr;  // null: all; (HWND)-1: those without a window
    UINT first = 0;
    UINT last = 0;  // both 0: all

    bool TakesNumber(UINT message) const noexcept { return (first == 0 && last == 0) || (message >= first && message <= last); }

    // With the lock held.
    bool TakesWindow(const DesktopLock& desktop, HWND of) const noexcept;
    bool Takes(const DesktopLock& desktop, HWND of, UINT message) const noexcept {
        return TakesNumber(message) && TakesWindow(desktop, of);
    }
};

}  // namespace kawin
