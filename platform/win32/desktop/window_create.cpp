// CreateWindowExW.

#include <algorithm>

#include "../base/error_map.h"
#include "../base/text_length.h"
#include "../text/no_throw.h"
#include "frame.h"
#include "hooks.h"
#include "tree_walk.h"
#include "window_destroy.h"
#include "window_position.h"
#include "window_show.h"
#include "z_order.h"

namespace kawin {
namespace {

bool IsChildStyle(LONG style) noexcept {
    return (static_cast<DWORD>(style) & (WS_CHILD | WS_POPUP)) == WS_CHILD;
}

bool IsOverlapped(LONG style) noexcept {
    return (static_cast<DWORD>(style) & (WS_CHILD | WS_POPUP)) == 0;
}

// Where the window goes in the tree.
struct Relations {
    Window* parent = nullptr;
    HWND owner = nullptr;
};

// Nothing with the last error set. With the lock held.
std::optional<Relations> RelationsOf(const DesktopLock& desktop, const CREATESTRUCTW& wanted) noexcept {
    if (wanted.hwndParent == HWND_MESSAGE) {
        return Relations{desktop->message_root, nullptr};
    }
    const bool child = IsChildStyle(wanted.style);
    if (wanted.hwndParent == nullptr) {
        if (child) {
            SetLastError(ERROR_TLW_WITH_WSCHILD);
            return {};
        }
        return Relations{desktop->root, nullptr};
    }
    Window* const given = desktop.Find(wanted.hwndParent);
    if (given == nullptr || given->being_destroyed) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return {};
    }
    if (child) {
        return Relations{given, nullptr};
    }
    Window& top = TopLevelOf(*given);
    const bool on_desktop = top.parent == desktop->root;
    return Relations{desktop->root, on_desktop ? top.handle : nullptr};
}

// Overlapped windows that leave it to the system step down the screen one after another.
POINT NextDefaultPlace() {
    constexpr int kStep = 26;
    constexpr int kSteps = 8;
    static std::atomic<int> next{0};
    const int at = kStep * (1 + next++ % kSteps);
    return {at, at};
}

// What the system is to choose. The show command that comes with an x of CW_USEDEFAULT.
int ChoosePlace(CREATESTRUCTW& wanted) {
    int show = SW_SHOW;
    const bool overlapped = IsOverlapped(wanted.style);
    const RECT work = WorkArea();
    if (wanted.x == CW_USEDEFAULT) {
        show = wanted.y != CW_USEDEFAULT && overlapped ? wanted.y : SW_SHOW;
        const POINT place = overlapped ? NextDefaultPlace() : POINT{};
        wanted.x = place.x;
        wanted.y = place.y;
    }
    if (wanted.cx == CW_USEDEFAULT) {
        wanted.cx = overlapped ? (work.right - work.left) * 3 / 4 : 0;
        wanted.cy = overlapped ? (work.bottom - work.top) * 3 / 4 : 0;
    }
    return show == SW_SHOWDEFAULT || show == 0 ? SW_SHOW : show;
}

// Styles that go with others.
DWORD CompleteStyle(LONG style) noexcept {
    const auto given = static_cast<DWORD>(style);
    DWORD complete = given;
    if (IsOverlapped(style)) {
        complete |= WS_CAPTION | WS_CLIPSIBLINGS;
    } else if ((given & WS_POPUP) != 0) {
        complete |= WS_CLIPSIBLINGS;
    }
    return complete & ~WS_VISIBLE;
}

DWORD CompleteExtendedStyle(DWORD extended, DWORD style) noexcept {
    const bool edge = (extended & WS_EX_DLGMODALFRAME) != 0 ||
                      ((extended & WS_EX_STATICEDGE) == 0 && (style & (WS_DLGFRAME | WS_THICKFRAME)) != 0);
    return edge ? extended | WS_EX_WINDOWEDGE : extended & ~WS_EX_WINDOWEDGE;
}

// The record, in the table and the tree. Null with the last error set.
HWND Enter(const CREATESTRUCTW& wanted, const ClassRef& window_class) {
    const std::shared_ptr<ThreadQueue> queue = ThisQueue();
    auto made = std::make_shared<Window>();
    made->window_class = window_class;
    made->thread = queue->thread;
    made->queue = queue;
    made->style = CompleteStyle(wanted.style);
    made->extended_style = CompleteExtendedStyle(wanted.dwExStyle, made->style);
    made->procedure = window_class->procedure;
    made->instance = wanted.hInstance;
    made->extra.resize(static_cast<std::size_t>(window_class->window_extra));
    made->rect = made->normal = {wanted.x, wanted.y, wanted.x + std::max(wanted.cx, 0), wanted.y + std::max(wanted.cy, 0)};
    made->client = made->rect;
    made->needs_size = IsOverlapped(wanted.style);
    if (IsChildStyle(wanted.style)) {
        made->id = reinterpret_cast<LONG_PTR>(wanted.hMenu);
    }
    const DesktopLock desktop;
    const std::optional<Relations> relations = RelationsOf(desktop, wanted);
    if (!relations) {
        return nullptr;
    }
    made->owner = relations->owner;
    if (const Window* const owner = desktop.Look(made->owner); owner != nullptr && (owner->extended_style & WS_EX_TOPMOST) != 0) {
        made->extended_style |= WS_EX_TOPMOST;
    }
    Window& window = *made;
    const HWND handle = AddWindow(*desktop, std::move(made));
    LinkNew(window, *relations->parent);
    ++window_class->windows;
    return handle;
}

// A hook may change place and size.
bool AskHooks(HWND window, CREATESTRUCTW& wanted) {
    CBT_CREATEWNDW create = {&wanted, HWND_TOP};
    return CallHooks(WH_CBT, HCBT_CREATEWND, reinterpret_cast<WPARAM>(window), reinterpret_cast<LPARAM>(&create)) == 0;
}

void SetRect(HWND handle, const CREATESTRUCTW& wanted) {
    const DesktopLock desktop;
    if (Window* const window = desktop.Look(handle)) {
        window->rect = {wanted.x, wanted.y, wanted.x + std::max(wanted.cx, 0), wanted.y + std::max(wanted.cy, 0)};
        window->client = window->normal = window->rect;
    }
}

void LimitSize(HWND handle, CREATESTRUCTW& wanted) {
    const bool sizing = (static_cast<DWORD>(wanted.style) & WS_THICKFRAME) != 0 || IsOverlapped(wanted.style);
    if (!sizing || IsChildStyle(wanted.style)) {
        return;
    }
    const MINMAXINFO limits = AskMinMax(handle);
    const POINT least = limits.ptMinTrackSize;
    const POINT most = limits.ptMaxTrackSize;
    wanted.cx = std::max<int>(std::min<int>(wanted.cx, most.x), least.x);
    wanted.cy = std::max<int>(std::min<int>(wanted.cy, most.y), least.y);
    SetRect(handle, wanted);
}

void AskClientArea(HWND handle) {
    RECT rect = {};
    {
        const DesktopLock desktop;
        const Window* const window = desktop.Look(handle);
        if (window == nullptr) {
            return;
        }
        rect = window->rect;
    }
    SendMessageW(handle, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect));
    const DesktopLock desktop;
    if (Window* const window = desktop.Look(handle)) {
        window->client = rect;
    }
}

// False when the window refused or is gone; then it is destroyed.
bool TellCreation(HWND handle, CREATESTRUCTW& wanted) {
    if (SendMessageW(handle, WM_NCCREATE, 0, reinterpret_cast<LPARAM>(&wanted)) == FALSE) {
        DropWindow(handle);
        return false;
    }
    AskClientArea(handle);
    if (SendMessageW(handle, WM_CREATE, 0, reinterpret_cast<LPARAM>(&wanted)) == -1) {
        DropWindow(handle);
        return false;
    }
    const DesktopLock desktop;
    Window* const window = desktop.Look(handle);
    if (window != nullptr) {
        window->created = true;
    }
    return window != nullptr;
}

struct Born {
    bool top_level = false;
    bool overlapped = false;
    bool tells_parent = false;
    bool minimised = false;
    bool maximised = false;
    HWND parent = nullptr;
    LONG_PTR id = 0;
};

Born LookAt(HWND handle) {
    const DesktopLock desktop;
    const Window* const window = desktop.Look(handle);
    if (window == nullptr) {
        return {};
    }
    Born born;
    born.overlapped = window->needs_size;
    born.minimised = (window->style & WS_MINIMIZE) != 0;
    born.maximised = (window->style & WS_MAXIMIZE) != 0;
    born.tells_parent = window->IsChild() && (window->extended_style & WS_EX_NOPARENTNOTIFY) == 0;
    born.parent = window->parent != nullptr ? window->parent->handle : nullptr;
    born.id = window->id;
    return born;
}

void Present(HWND handle, const CREATESTRUCTW& wanted, int show) {
    const Born born = LookAt(handle);
    if (!born.overlapped) {
        SendSizeAndMove(handle);
    }
    if (born.minimised || born.maximised) {
        PlaceAtBirth(handle, born.minimised ? SW_MINIMIZE : SW_MAXIMIZE);
    }
    if (born.tells_parent) {
        SendMessageW(born.parent, WM_PARENTNOTIFY, MAKEWPARAM(WM_CREATE, static_cast<WORD>(born.id)),
                     reinterpret_cast<LPARAM>(handle));
    }
    if ((static_cast<DWORD>(wanted.style) & WS_VISIBLE) != 0) {
        const int state = born.minimised ? SW_SHOWMINIMIZED : born.maximised ? SW_SHOWMAXIMIZED : show;
        ShowWindow(handle, state);
    }
}

HWND Create(CREATESTRUCTW wanted) {
    const ClassRef window_class = FindClass(wanted.lpszClass, wanted.hInstance);
    if (window_class == nullptr) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    const int show = ChoosePlace(wanted);
    const HWND handle = Enter(wanted, window_class);
    if (handle == nullptr) {
        return nullptr;
    }
    const int x = wanted.x;
    const int y = wanted.y;
    const int cx = wanted.cx;
    const int cy = wanted.cy;
    if (!AskHooks(handle, wanted)) {
        EraseWindow(handle);
        return nullptr;
    }
    if (x != wanted.x || y != wanted.y || cx != wanted.cx || cy != wanted.cy) {
        SetRect(handle, wanted);
    }
    LimitSize(handle, wanted);
    if (!TellCreation(handle, wanted)) {
        return nullptr;
    }
    Present(handle, wanted, show);
    return IsWindow(handle) != FALSE ? handle : nullptr;
}

}  // namespace

MINMAXINFO AskMinMax(HWND handle) {
    MINMAXINFO info = DefaultMinMax(handle);
    SendMessageW(handle, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    return info;
}

}  // namespace kawin

HWND CreateWindowExW(DWORD extended_style, LPCWSTR class_name, LPCWSTR title, DWORD style, int x, int y, int width, int height,
                     HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter) noexcept {
    return kawin::NoThrow([&] {
        return kawin::Create({parameter, instance, menu, parent, height, width, y, x, static_cast<LONG>(style), title, class_name,
                              extended_style});
    });
}
