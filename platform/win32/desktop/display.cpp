#include "display.h"

#include <algorithm>
#include <new>

#include "../process/thread_id.h"
#include "display_probe.h"
#include "display_sdl.h"

namespace kawin {
namespace {

// The display of the process. Never destroyed: threads may wake it while the process ends.
struct Opening {
    std::mutex mutex;               // held while SDL starts and stops
    SdlDisplay* display = nullptr;  // guarded by mutex; made once
    bool failed = false;            // guarded by mutex: not tried again
    std::vector<Monitor> monitors;  // guarded by mutex: as they were when nothing was shown yet
    bool probed = false;            // guarded by mutex
};

constinit std::atomic<SdlDisplay*> open_display = nullptr;

Opening& TheOpening() {
    static Opening* const opening = new Opening;
    return *opening;
}

// Ends with the thread that serves the display.
struct Serving {
    bool serves = false;
    ~Serving() {
        if (serves) {
            Opening& opening = TheOpening();
            const std::lock_guard lock(opening.mutex);
            open_display = nullptr;
            opening.display->Close();
        }
    }
};

thread_local Serving serving;

bool HasWindowToShow() {
    const DWORD thread = CurrentThreadId();
    const std::vector<TopLevel> tops = SnapshotTopLevels();
    return std::ranges::any_of(tops, [thread](const TopLevel& top) { return top.visible && top.thread == thread; });
}

// With the mutex held. Null when SDL is not there.
SdlDisplay* Made(Opening& opening) {
    if (opening.display == nullptr && !opening.failed) {
        const Sdl* const sdl = TheSdl();
        opening.failed = sdl == nullptr;
        opening.display = sdl != nullptr ? new SdlDisplay(*sdl) : nullptr;
    }
    return opening.display;
}

void OpenForThisThread() {
    Opening& opening = TheOpening();
    const std::lock_guard lock(opening.mutex);
    SdlDisplay* const display = opening.failed || open_display != nullptr ? nullptr : Made(opening);
    if (display == nullptr) {
        return;
    }
    if (!display->Open()) {
        opening.failed = true;
        return;
    }
    serving.serves = true;
    open_display = display;
}

}  // namespace

Display* TheDisplay() noexcept {
    return open_display.load();
}

Display* ServedDisplay() noexcept try {
    if (open_display.load() == nullptr && WantsDisplay() && HasWindowToShow()) {
        OpenForThisThread();
    }
    return open_display.load();
} catch (const std::bad_alloc&) {  // at the next wait, perhaps
    return nullptr;
}

std::vector<Monitor> DisplayMonitors() {
    Opening& opening = TheOpening();
    const std::lock_guard lock(opening.mutex);
    if (const SdlDisplay* const display = open_display.load()) {
        return display->Monitors();
    }
    if (!opening.probed) {
        opening.probed = true;
        SdlDisplay* const display = opening.failed ? nullptr : Made(opening);
        if (display != nullptr && display->Open()) {
            opening.monitors = display->Monitors();
            display->Close();
        } else {
            opening.failed = true;
        }
    }
    return opening.monitors;
}

}  // namespace kawin
