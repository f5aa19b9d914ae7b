// Moving and sizing windows by the pointer or the arrow keys.

#include <algorithm>

#include "frame_tracking.h"
#include "input.h"
#include "message_queue.h"
#include "rectangles.h"
#include "window_position.h"

namespace kawin {
namespace {

constexpr int kArrowStep = 8;  // pixels; 1 with Control

struct Sides {
    bool left;
    bool top;
    bool right;
    bool bottom;
};

Sides SidesOf(WPARAM part) noexcept {
    return {part == WMSZ_LEFT || part == WMSZ_TOPLEFT || part == WMSZ_BOTTOMLEFT,
            part == WMSZ_TOP || part == WMSZ_TOPLEFT || part == WMSZ_TOPRIGHT,
            part == WMSZ_RIGHT || part == WMSZ_TOPRIGHT || part == WMSZ_BOTTOMRIGHT,
            part == WMSZ_BOTTOM || part == WMSZ_BOTTOMLEFT || part == WMSZ_BOTTOMRIGHT};
}

// The edge that the first arrow key takes hold of.
WPARAM PartOfKey(WPARAM key) noexcept {
    return key == VK_LEFT ? WMSZ_LEFT : key == VK_RIGHT ? WMSZ_RIGHT : key == VK_UP ? WMSZ_TOP : WMSZ_BOTTOM;
}

POINT StepOfKey(WPARAM key) noexcept {
    const int step = (GetKeyState(VK_CONTROL) & 0x8000) != 0 ? 1 : kArrowStep;
    switch (key) {
        case VK_LEFT:
            return {-step, 0};
        case VK_RIGHT:
            return {step, 0};
        case VK_UP:
            return {0, -step};
        case VK_DOWN:
            return {0, step};
        default:
            return {};
    }
}

class Drag {
public:
    Drag(HWND window, UINT command, WPARAM part, bool by_pointer)
        : window_(window), moves_(command == SC_MOVE), part_(part), by_pointer_(by_pointer) {
        GetWindowRect(window, &first_);
        // Where the button went down: the pointer may be elsewhere by now.
        const DWORD at = GetMessagePos();
        start_ = {GET_X_LPARAM(static_cast<LPARAM>(at)), GET_Y_LPARAM(static_cast<LPARAM>(at))};
        rect_ = first_;
        limits_ = AskMinMax(window);
    }

    void Run() {
        SendMessageW(window_, WM_ENTERSIZEMOVE, 0, 0);
        SetCapture(window_);
        MSG message;
        while (GetCapture() == window_) {
            if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
                PostQuitMessage(static_cast<int>(message.wParam));
                break;
            }
            if (!Take(message)) {
                break;
            }
        }
        if (GetCapture() == window_) {
            ReleaseCapture();
        }
        SendMessageW(window_, WM_EXITSIZEMOVE, 0, 0);
    }

private:
    // False when that was the end.
    bool Take(const MSG& message) {
        switch (message.message) {
            case WM_MOUSEMOVE:
                if (by_pointer_) {
                    Follow({message.pt.x - start_.x, message.pt.y - start_.y});
                }
                return true;
            case WM_LBUTTONUP:
                return false;
            case WM_KEYDOWN:
            case WM_SYSKEYDOWN:
                return TakeKey(message.wParam);
            case WM_KEYUP:
            case WM_SYSKEYUP:
            case WM_LBUTTONDOWN:
            case WM_RBUTTONDOWN:
            case WM_RBUTTONUP:
                return true;
            default:
                DispatchMessageW(&message);
                return true;
        }
    }

    bool TakeKey(WPARAM key) {
        if (key == VK_ESCAPE) {
            Place(first_);
            return false;
        }
        if (key == VK_RETURN) {
            return false;
        }
        const POINT step = StepOfKey(key);
        if (step.x == 0 && step.y == 0) {
            return true;
        }
        if (!moves_ && part_ == 0) {
            part_ = PartOfKey(key);
            return true;
        }
        by_keys_.x += step.x;
        by_keys_.y += step.y;
        Follow(by_keys_);
        return true;
    }

    // Moves what is held by `way` from where it was at first.
    void Follow(POINT way) {
        RECT wanted = first_;
        if (moves_) {
            OffsetRect(&wanted, way.x, way.y);
        } else {
            Stretch(wanted, way);
        }
        SendMessageW(window_, moves_ ? WM_MOVING : WM_SIZING, moves_ ? 0 : part_, reinterpret_cast<LPARAM>(&wanted));
        if (!EqualRect(&wanted, &rect_)) {
            Place(wanted);
        }
    }

    void Stretch(RECT& rect, POINT way) const noexcept {
        const Sides sides = SidesOf(part_);
        const POINT& least = limits_.ptMinTrackSize;
        const POINT& most = limits_.ptMaxTrackSize;
        const auto width = std::clamp(rect.right - rect.left +
                                          (sides.right  ? way.x
                                           : sides.left ? -way.x
                                                        : 0),
                                      least.x, std::max(least.x, most.x));
        const auto height = std::clamp(rect.bottom - rect.top +
                                           (sides.bottom ? way.y
                                            : sides.top  ? -way.y
                                                         : 0),
                                       least.y, std::max(least.y, most.y));
        if (sides.left) {
            rect.left = rect.right - width;
        } else if (sides.right) {
            rect.right = rect.left + width;
        }
        if (sides.top) {
            rect.top = rect.bottom - height;
        } else if (sides.bottom) {
            rect.bottom = rect.top + height;
        }
    }

    void Place(const RECT& rect) {
        rect_ = rect;
        RECT place = rect;
        if ((static_cast<DWORD>(GetWindowLongW(window_, GWL_STYLE)) & WS_CHILD) != 0) {
            MapWindowPoints(nullptr, GetParent(window_), reinterpret_cast<POINT*>(&place), 2);
        }
        SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                     SWP_NOZORDER | SWP_NOACTIVATE | (moves_ ? SWP_NOSIZE : 0));
    }

    HWND window_;
    bool moves_;
    WPARAM part_;
    bool by_pointer_;
    MINMAXINFO limits_;
    RECT first_ = {};  // on the screen
    RECT rect_ = {};   // now
    POINT start_ = {};
    POINT by_keys_ = {};
};

}  // namespace

void MoveOrSize(HWND window, UINT command, WPARAM part, bool by_pointer) {
    const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
    // By the pointer every window moves whose procedure calls the place a caption.
    const bool can = command == SC_MOVE ? by_pointer || (style & WS_CAPTION) == WS_CAPTION : (style & WS_THICKFRAME) != 0;
    if (can && (style & (WS_MAXIMIZE | WS_MINIMIZE)) == 0) {
        Drag(window, command, part, by_pointer).Run();
    }
}

}  // namespace kawin
