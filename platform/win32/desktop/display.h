#pragma once

// The display that shows the top-level windows, if there is one. It pulls: the windows are the truth, and the display follows
// them.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "../base/handle_table.h"
#include "../gdi/surface.h"
#include "window_styles.h"

namespace kawin {

// A top-level window as a display sees it.
struct TopLevel {
    HWND window = nullptr;
    HWND owner = nullptr;
    RECT rect = {};  // on the screen, frame included
    bool visible = false;
    bool iconic = false;
    bool zoomed = false;
    bool enabled = true;
    bool topmost = false;
    bool tool = false;  // WS_EX_TOOLWINDOW: not to be listed among the programs
    DWORD thread = 0;
    std::u16string title;
    std::shared_ptr<Surface> surface;  // null before it was first drawn on; of the window's size otherwise
};

class Display {
public:
    Display() = default;
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;
    virtual ~Display() = default;

    // Sleeps until the display has input, Wake is called, or the deadline; hands input on through input_sink.h. May return early.
    // A deadline in the past only hands on what is there. Only in the thread that serves the display, with no lock of this room
    // held.
    virtual void Wait(Deadline deadline) = 0;

    // Ends a Wait, or the next one; any thread.
    virtual void Wake() noexcept = 0;

    // Makes the display show SnapshotTopLevels() and what has been drawn since; called before that thread waits.
    virtual void Synchronise() = 0;

    // Whether the calling thread serves it.
    virtual bool IsMine() const noexcept = 0;

    // The window with the capture (null: none) and the pointer's picture have changed.
    virtual void Capture(HWND window) = 0;

    // Moves the pointer.
    virtual void Warp(POINT position) = 0;

    // The text of the display's clipboard in UTF-8, with LF at the end of lines; nothing when it has none or cannot tell. In the
    // thread that serves the display only.
    virtual std::optional<std::string> ClipboardText() = 0;
    virtual void SetClipboardText(const std::string& text) = 0;

    // Hands over what the calling thread, which is not the display's, has drawn since. Called before it waits.
    virtual void HandOver() = 0;
};

// Null off screen, and while there was nothing to show yet.
Display* TheDisplay() noexcept;

// The same; opens the display for the calling thread when none is open, one is wanted, and the thread has a visible top-level
// window. Tried once. Without the lock held.
Display* ServedDisplay() noexcept;

// All top-level windows, the topmost first. Any thread.
KADATA_API std::vector<TopLevel> SnapshotTopLevels();

}  // namespace kawin
