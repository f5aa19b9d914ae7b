#pragma once

// The display through SDL: X11 and Wayland. A top-level window is one SDL window without decoration.

#include <atomic>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

#include "display.h"
#include "screen.h"
#include "sdl_library.h"
#include "x_errors.h"

namespace kawin {

class SdlDisplay : public Display {
public:
    explicit SdlDisplay(const Sdl& sdl);

    // Opens the display for the calling thread, which serves it from now on; false when that is not possible. Close gives it up:
    // then another thread may open it.
    bool Open();
    void Close() noexcept;

    void Wait(Deadline deadline) override;
    void Wake() noexcept override;
    void Synchronise() override;
    bool IsMine() const noexcept override;
    void Capture(HWND window) override;
    void Warp(POINT position) override;
    std::optional<std::string> ClipboardText() override;
    void SetClipboardText(const std::string& text) override;
    void HandOver() override;

    // Any thread.
    std::vector<Monitor> Monitors() const;

private:
    // An SDL window and what it shows.
    struct Shown {
        SDL_Window* window = nullptr;
        Uint32 id = 0;
        RECT rect = {};
        std::u16string title;
        bool visible = false;
        bool iconic = false;
        bool topmost = false;
        bool complete = false;    // false: all of it is to be drawn
        std::deque<POINT> asked;  // places that the display was asked for and has not told of yet
    };

    // Pixels of another thread's window, handed over when that thread waited.
    struct Picture {
        std::shared_ptr<Surface> pixels;
        RECT fresh = {};
    };

    Shown* Find(Uint32 id, HWND* window = nullptr) noexcept;
    void Create(const TopLevel& top, Shown& shown);
    void Destroy(const Shown& shown) noexcept;
    void Follow(const TopLevel& top, Shown& shown);
    void FollowPlace(const TopLevel& top, Shown& shown);
    void FollowState(const TopLevel& top, Shown& shown);
    void FollowOrder(const std::vector<TopLevel>& tops);
    void FollowFocus();
    void FollowCursor();
    void Present(const TopLevel& top, Shown& shown);
    void PresentPart(Shown& shown, Surface& surface, const RECT& part);
    void RefreshMonitors();
    SDL_Cursor* CursorFor(HCURSOR cursor);

    bool HasFocus(const Shown& shown) const noexcept;

    void Take(const SDL_Event& event);
    void TakeKey(const SDL_KeyboardEvent& event);
    void TakeWheel(const SDL_MouseWheelEvent& wheel);
    void TakeWindowEvent(const SDL_WindowEvent& event);
    void TakePlace(HWND window, Shown& shown, const SDL_WindowEvent& event);
    void FinishKey(std::u16string_view text);
    void TakeButton(const SDL_MouseButtonEvent& event);
    void TellButton(int button, bool down);
    void MovePointer(Uint32 id, int x, int y);
    void FollowPointer();

    const Sdl& sdl_;
    std::atomic<DWORD> thread_{0};  // that serves it; 0: it is not open
    Uint32 wake_event_ = 0;

    // Of the serving thread:
    std::map<HWND, Shown> shown_;
    std::vector<HWND> order_;  // as the SDL windows lie, the topmost first
    HWND focus_ = nullptr;     // whom the focus was last given to
    HCURSOR cursor_ = nullptr;
    bool cursor_known_ = false;
    bool captured_ = false;      // by a window
    bool moved_ = false;         // a window has been, since then
    bool asks_pointer_ = false;  // the display tells where on it the pointer is
    POINT pointer_ = {};         // as it was last told
    Uint32 pressed_ = 0;         // buttons that went down and not up yet; SDL_BUTTON masks
    std::optional<IgnoredXErrors> x_errors_;
    std::map<HCURSOR, SDL_Cursor*> cursors_;
    struct PendingKey {
        int key;
        int scan;
        bool prints;
    };
    std::optional<PendingKey> pending_key_;  // gone down; what it types comes next

    std::atomic<bool> woken_{false};
    std::mutex sleep_mutex_;
    std::condition_variable sleep_;  // for when there is no window

    mutable std::mutex mutex_;
    std::vector<Monitor> monitors_;     // guarded by mutex_
    std::map<HWND, Picture> pictures_;  // guarded by mutex_
};

}  // namespace kawin
