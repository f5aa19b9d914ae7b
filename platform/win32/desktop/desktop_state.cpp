#include "desktop_state.h"

#include <algorithm>

#include "../base/error_map.h"
#include "metrics.h"

namespace kawin {
namespace {

// A handle is a slot (low 16 bits) and the slot's generation, below 2^31 as on Windows: some hosts keep handles in 32 bits.
constexpr std::size_t kMostWindows = 0xFFF0;
constexpr unsigned kLastGeneration = 0x7FFE;
constexpr std::size_t kFirstNumber = 8;  // small numbers are HWND_BOTTOM and the like

HWND HandleOf(std::size_t slot, WORD generation) noexcept {
    return reinterpret_cast<HWND>((ULONG_PTR{generation} << 16) | (slot + kFirstNumber));
}

std::size_t EmptySlot(Desktop& desktop) {
    // Handles that were just given back wait until many others were.
    constexpr std::size_t kEnough = 1024;
    const bool full = desktop.slots.size() + kFirstNumber >= kMostWindows;
    if (desktop.empty.size() > kEnough || (full && !desktop.empty.empty())) {
        const std::size_t slot = desktop.empty.front();
        desktop.empty.pop_front();
        return slot;
    }
    if (full) {
        throw std::bad_alloc();
    }
    desktop.slots.emplace_back();
    return desktop.slots.size() - 1;
}

Window* AddRoot(Desktop& desktop, LPCWSTR class_name) {
    auto window = std::make_shared<Window>();
    window->style = WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    window->window_class = std::make_shared<WindowClass>();
    window->window_class->name = class_name;
    Window* const root = window.get();
    AddWindow(desktop, std::move(window));
    return root;
}

}  // namespace

Desktop::Desktop() {
    root = AddRoot(*this, u"#32769");
    message_root = AddRoot(*this, u"Message");
    message_root->style &= ~WS_VISIBLE;
}

// Never destroyed: threads may still use it while the process ends.
Desktop& TheDesktop() {
    static Desktop* const desktop = new Desktop;
    return *desktop;
}

Window* DesktopLock::Look(HWND window) const noexcept {
    const ULONG_PTR value = reinterpret_cast<ULONG_PTR>(window);
    const std::size_t number = value & 0xFFFF;
    if (number < kFirstNumber || number - kFirstNumber >= desktop_.slots.size()) {
        return nullptr;
    }
    const Desktop::Slot& slot = desktop_.slots[number - kFirstNumber];
    return value >> 16 == slot.generation ? slot.window.get() : nullptr;
}

Window* DesktopLock::Find(HWND window) const noexcept {
    Window* const found = Look(window);
    if (found == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    }
    return found;
}

Window* DesktopLock::FindOwn(HWND window) const noexcept {
    Window* const found = Find(window);
    if (found != nullptr && found->parent == nullptr) {
        SetLastError(ERROR_ACCESS_DENIED);
        return nullptr;
    }
    return found;
}

HWND AddWindow(Desktop& desktop, std::shared_ptr<Window> window) {
    const std::size_t number = EmptySlot(desktop);
    Desktop::Slot& slot = desktop.slots[number];
    window->handle = HandleOf(number, slot.generation);
    slot.window = std::move(window);
    return slot.window->handle;
}

std::shared_ptr<Window> RemoveWindow(Desktop& desktop, Window& window) noexcept {
    UnlinkWindow(window);
    const std::size_t number = (reinterpret_cast<ULONG_PTR>(window.handle) & 0xFFFF) - kFirstNumber;
    Desktop::Slot& slot = desktop.slots[number];
    std::shared_ptr<Window> removed = std::move(slot.window);
    slot.generation = static_cast<WORD>(slot.generation % kLastGeneration + 1);
    desktop.empty.push_back(number);
    return removed;
}

void LinkWindow(Window& window, Window& parent, std::size_t place) {
    parent.children.insert(parent.children.begin() + static_cast<std::ptrdiff_t>(std::min(place, parent.children.size())),
                           &window);
    window.parent = &parent;
}

void UnlinkWindow(Window& window) noexcept {
    if (window.parent != nullptr) {
        std::erase(window.parent->children, &window);
        window.parent = nullptr;
    }
}

std::size_t CountWindows() {
    const DesktopLock desktop;
    const auto used =
        std::count_if(desktop->slots.begin(), desktop->slots.end(), [](const auto& slot) { return slot.window != nullptr; });
    return static_cast<std::size_t>(used) - 2;
}

}  // namespace kawin
