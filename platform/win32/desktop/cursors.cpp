// The pointer's picture.

#include "cursors.h"

#include <atomic>

#include "display.h"

namespace kawin {
namespace {

constinit std::atomic<HCURSOR> the_cursor = nullptr;
constinit std::atomic<int> show_count = 0;

void TellDisplay() noexcept {
    if (Display* const display = TheDisplay()) {
        display->Wake();
    }
}

}  // namespace

HCURSOR ShownCursor() noexcept {
    return show_count.load() >= 0 ? the_cursor.load() : nullptr;
}

}  // namespace kawin

HCURSOR SetCursor(HCURSOR cursor) noexcept {
    const HCURSOR before = kawin::the_cursor.exchange(cursor);
    if (before != cursor) {
        kawin::TellDisplay();
    }
    return before;
}

HCURSOR GetCursor() noexcept {
    return kawin::the_cursor.load();
}

int ShowCursor(BOOL show) noexcept {
    const int change = show != FALSE ? 1 : -1;
    const int count = kawin::show_count.fetch_add(change) + change;
    kawin::TellDisplay();
    return count;
}
