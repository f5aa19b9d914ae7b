#include "clipboard.h"

#include <cstring>
#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "../base/error_map.h"
#include "../base/utf.h"
#include "../process/thread_id.h"
#include "../text/no_throw.h"
#include "display.h"
#include "message_queue.h"
#include "window_messages.h"
#include "window_tree.h"

namespace kawin {
namespace {

struct Clipboard {
    std::mutex mutex;

    // All below is guarded by it.
    DWORD thread = 0;  // that has it open; 0: none
    HWND window = nullptr;
    HWND owner = nullptr;
    std::map<UINT, HGLOBAL> data;
    bool changed = false;  // since it was opened
    std::string shared;    // the text that the display has from here, or the other way round
};

// Never destroyed: the display may ask while the process ends.
Clipboard& TheClipboard() {
    static Clipboard& clipboard = *new Clipboard;
    return clipboard;
}

Display* OwnDisplay() noexcept {
    Display* const display = TheDisplay();
    return display != nullptr && display->IsMine() ? display : nullptr;
}

std::string WithoutReturns(std::string text) {
    std::erase(text, '\r');
    return text;
}

std::u16string WithReturns(std::u16string_view text) {
    std::u16string result;
    for (const char16_t unit : text) {
        if (unit == u'\n') {
            result += u'\r';
        }
        result += unit;
    }
    return result;
}

void FreeAll(Clipboard& clipboard) noexcept {
    for (const auto& [format, block] : clipboard.data) {
        GlobalFree(block);
    }
    clipboard.data.clear();
}

// Up to the terminator, or to the block's end where it has none.
std::u16string TextOf(HGLOBAL block) {
    const std::size_t units = GlobalSize(block) / sizeof(char16_t);
    const auto* const text = static_cast<const char16_t*>(GlobalLock(block));
    if (text == nullptr) {
        return {};
    }
    const std::u16string_view all(text, units);
    std::u16string result(all.substr(0, all.find(u'\0')));
    GlobalUnlock(block);
    return result;
}

// What another program has copied since replaces what is here.
void TakeForeignText(Clipboard& clipboard, Display& display) {
    const std::optional<std::string> text = display.ClipboardText();
    if (!text.has_value() || text->empty() || *text == clipboard.shared) {
        return;
    }
    const std::u16string wide = WithReturns(FromUtf8(WithoutReturns(*text)));
    const std::size_t size = (wide.size() + 1) * sizeof(char16_t);
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
    if (block == nullptr) {
        return;
    }
    std::memcpy(GlobalLock(block), wide.c_str(), size);
    GlobalUnlock(block);
    FreeAll(clipboard);
    clipboard.owner = nullptr;
    clipboard.data.emplace(CF_UNICODETEXT, block);
    clipboard.shared = *text;
}

void GiveText(Clipboard& clipboard, Display& display) {
    const auto text = clipboard.data.find(CF_UNICODETEXT);
    clipboard.shared = text != clipboard.data.end() ? WithoutReturns(ToUtf8(TextOf(text->second))) : std::string();
    display.SetClipboardText(clipboard.shared);
}

BOOL Open(HWND window) {
    if (window != nullptr && !IsWindow(window)) {
        return Fail(ERROR_INVALID_WINDOW_HANDLE);
    }
    Clipboard& clipboard = TheClipboard();
    Display* const display = OwnDisplay();
    const std::lock_guard lock(clipboard.mutex);
    const DWORD thread = CurrentThreadId();
    if (clipboard.thread != 0 && (clipboard.thread != thread || clipboard.window != window)) {
        return Fail(ERROR_ACCESS_DENIED);
    }
    if (display != nullptr && clipboard.thread == 0) {
        TakeForeignText(clipboard, *display);
    }
    clipboard.thread = thread;
    clipboard.window = window;
    return TRUE;
}

bool IsOpenHere(const Clipboard& clipboard) noexcept {
    return clipboard.thread == CurrentThreadId() || Fail(ERROR_CLIPBOARD_NOT_OPEN) != FALSE;
}

BOOL Close() {
    Clipboard& clipboard = TheClipboard();
    Display* const display = OwnDisplay();
    const std::lock_guard lock(clipboard.mutex);
    if (!IsOpenHere(clipboard)) {
        return FALSE;
    }
    clipboard.thread = 0;
    clipboard.window = nullptr;
    if (clipboard.changed && display != nullptr) {
        GiveText(clipboard, *display);
    }
    clipboard.changed = false;
    return TRUE;
}

BOOL Empty() {
    Clipboard& clipboard = TheClipboard();
    HWND before = nullptr;
    {
        const std::lock_guard lock(clipboard.mutex);
        if (!IsOpenHere(clipboard)) {
            return FALSE;
        }
        before = clipboard.owner;
    }
    if (before != nullptr && IsWindow(before)) {
        SendMessageW(before, WM_DESTROYCLIPBOARD, 0, 0);  // without the lock: it may ask
    }
    const std::lock_guard lock(clipboard.mutex);
    FreeAll(clipboard);
    clipboard.owner = clipboard.window;
    clipboard.changed = true;
    return TRUE;
}

HANDLE Set(UINT format, HANDLE data) {
    Clipboard& clipboard = TheClipboard();
    const std::lock_guard lock(clipboard.mutex);
    if (!IsOpenHere(clipboard)) {
        return nullptr;
    }
    if (data == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    HGLOBAL& place = clipboard.data[format];
    if (place != nullptr && place != data) {
        GlobalFree(place);
    }
    place = data;
    clipboard.changed = true;
    return data;
}

HANDLE Get(UINT format) {
    Clipboard& clipboard = TheClipboard();
    const std::lock_guard lock(clipboard.mutex);
    if (!IsOpenHere(clipboard)) {
        return nullptr;
    }
    const auto found = clipboard.data.find(format);
    return found != clipboard.data.end() ? found->second : nullptr;
}

BOOL IsAvailable(UINT format) {
    Clipboard& clipboard = TheClipboard();
    Display* const display = OwnDisplay();
    const std::lock_guard lock(clipboard.mutex);
    if (display != nullptr && clipboard.thread == 0) {
        TakeForeignText(clipboard, *display);
    }
    return clipboard.data.contains(format);
}

}  // namespace
}  // namespace kawin

BOOL OpenClipboard(HWND window) noexcept {
    return kawin::NoThrow([&] { return kawin::Open(window); });
}

BOOL CloseClipboard() noexcept {
    return kawin::NoThrow([] { return kawin::Close(); });
}

BOOL EmptyClipboard() noexcept {
    return kawin::NoThrow([] { return kawin::Empty(); });
}

HANDLE SetClipboardData(UINT format, HANDLE data) noexcept {
    return kawin::NoThrow([&] { return kawin::Set(format, data); });
}

HANDLE GetClipboardData(UINT format) noexcept {
    return kawin::Get(format);
}

BOOL IsClipboardFormatAvailable(UINT format) noexcept {
    return kawin::NoThrow([&] { return kawin::IsAvailable(format); });
}

HWND GetClipboardOwner() noexcept {
    kawin::Clipboard& clipboard = kawin::TheClipboard();
    const std::lock_guard lock(clipboard.mutex);
    return clipboard.owner != nullptr && IsWindow(clipboard.owner) ? clipboard.owner : nullptr;
}
