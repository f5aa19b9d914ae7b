// Window classes: registering, asking, changing.

#include "window_classes.h"

#include <algorithm>
#include <cstring>

#include "../base/error_map.h"
#include "../base/text_length.h"
#include "../gdi/contexts.h"
#include "../text/no_throw.h"
#include "class_registry.h"
#include "desktop_state.h"
#include "extra_bytes.h"

namespace kawin {
namespace {

constexpr std::size_t kLongestName = 255;
constexpr UINT kKnownStyles = CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS | CS_OWNDC | CS_CLASSDC | CS_PARENTDC | CS_NOCLOSE |
                              CS_SAVEBITS | CS_BYTEALIGNCLIENT | CS_BYTEALIGNWINDOW | CS_GLOBALCLASS | CS_DROPSHADOW |
                              0x10000;  // CS_IME
constexpr int kMostExtra = 40960;

bool IsNameGood(LPCWSTR name) noexcept {
    if (name == nullptr) {
        return false;
    }
    if (IS_INTRESOURCE(name)) {
        return true;
    }
    const std::size_t length = TextLength(name);
    return length >= 1 && length <= kLongestName;
}

bool IsDescriptionGood(const WNDCLASSEXW& description) noexcept {
    const auto extra_good = [](int extra) { return extra >= 0 && extra <= kMostExtra; };
    return description.cbSize == sizeof(WNDCLASSEXW) && (description.style & ~kKnownStyles) == 0 &&
           description.lpfnWndProc != nullptr && extra_good(description.cbClsExtra) && extra_good(description.cbWndExtra) &&
           IsNameGood(description.lpszClassName);
}

ATOM Register(WNDCLASSEXW description) {
    if (!IsDescriptionGood(description)) {
        return static_cast<ATOM>(Fail(ERROR_INVALID_PARAMETER));
    }
    RegisterSystemClassesOnce();
    ClassRef made = MakeClass(description);
    if (made->atom == 0) {
        return static_cast<ATOM>(Fail(ERROR_NOT_ENOUGH_MEMORY));
    }
    ClassRegistry& classes = TheClasses();
    const std::lock_guard lock(classes.mutex);
    const bool exists = std::any_of(classes.classes.begin(), classes.classes.end(), [&](const ClassRef& each) {
        const bool both_global = ((each->style & description.style) & CS_GLOBALCLASS) != 0;
        return each->atom == made->atom && !each->system && (each->instance == made->instance || both_global);
    });
    if (exists) {
        return static_cast<ATOM>(Fail(ERROR_CLASS_ALREADY_EXISTS));
    }
    classes.classes.push_back(made);
    return made->atom;
}

BOOL Unregister(LPCWSTR name, HINSTANCE instance) {
    RegisterSystemClassesOnce();
    const ATOM atom = name != nullptr ? AtomOfName(name) : ATOM{0};
    ClassRef found;
    {
        ClassRegistry& classes = TheClasses();
        const std::lock_guard lock(classes.mutex);
        found = classes.Find(atom, instance);
        if (found == nullptr || found->system) {
            return Fail(ERROR_CLASS_DOES_NOT_EXIST);
        }
        if (found->windows != 0) {
            return Fail(ERROR_CLASS_HAS_WINDOWS);
        }
        std::erase(classes.classes, found);
    }
    if (reinterpret_cast<ULONG_PTR>(found->background.load()) > 0xFFFF) {
        DeleteObject(found->background.load());
    }
    return TRUE;
}

void Describe(const WindowClass& from, LPCWSTR name, WNDCLASSEXW& info) noexcept {
    info = {.cbSize = sizeof(WNDCLASSEXW),
            .style = from.style,
            .lpfnWndProc = from.procedure,
            .cbClsExtra = from.class_extra,
            .cbWndExtra = from.window_extra,
            .hInstance = from.system ? nullptr : from.instance,
            .hIcon = from.icon,
            .hCursor = from.cursor,
            .hbrBackground = from.background,
            .lpszMenuName = nullptr,
            .lpszClassName = name,
            .hIconSm = from.small_icon};
}

ATOM Info(HINSTANCE instance, LPCWSTR name, WNDCLASSEXW& info) {
    const ClassRef found = FindClass(name, instance);
    if (found == nullptr) {
        return static_cast<ATOM>(Fail(ERROR_CLASS_DOES_NOT_EXIST));
    }
    Describe(*found, name, info);
    return found->atom;
}

ClassRef ClassOf(HWND window) {
    const DesktopLock desktop;
    const Window* const found = desktop.Find(window);
    return found != nullptr ? found->window_class : nullptr;
}

template <class T>
ULONG_PTR Exchange(std::atomic<T>& value, const LONG_PTR* replacement) noexcept {
    if constexpr (std::is_pointer_v<T>) {
        return reinterpret_cast<ULONG_PTR>(replacement != nullptr ? value.exchange(reinterpret_cast<T>(*replacement))
                                                                  : value.load());
    } else {
        return replacement != nullptr ? value.exchange(static_cast<T>(*replacement)) : value.load();
    }
}

// Reads a value and, where `replacement` is not null, changes it.
ULONG_PTR ClassValue(WindowClass& of, int index, const LONG_PTR* replacement, std::size_t width) {
    switch (index) {
        case GCL_STYLE:
            return Exchange(of.style, replacement);
        case GCLP_WNDPROC:
            return Exchange(of.procedure, replacement);
        case GCLP_HICON:
            return Exchange(of.icon, replacement);
        case GCLP_HICONSM:
            return Exchange(of.small_icon, replacement);
        case GCLP_HCURSOR:
            return Exchange(of.cursor, replacement);
        case GCLP_HBRBACKGROUND:
            return Exchange(of.background, replacement);
        case GCW_ATOM:
            return of.atom;
        case GCL_CBWNDEXTRA:
            return static_cast<ULONG_PTR>(of.window_extra);
        case GCL_CBCLSEXTRA:
            return static_cast<ULONG_PTR>(of.class_extra);
        case GCLP_HMODULE:
            return reinterpret_cast<ULONG_PTR>(of.instance);
        case GCLP_MENUNAME:
            return 0;
        default:
            break;
    }
    const std::lock_guard lock(TheClasses().mutex);
    return ExtraValue(of.extra, index, width, replacement);
}

ULONG_PTR ClassValue(HWND window, int index, const LONG_PTR* replacement, std::size_t width) noexcept {
    return NoThrow([&]() -> ULONG_PTR {
        const ClassRef found = ClassOf(window);
        return found != nullptr ? ClassValue(*found, index, replacement, width) : 0;
    });
}

}  // namespace
}  // namespace kawin

ATOM RegisterClassExW(const WNDCLASSEXW* description) noexcept {
    if (description == nullptr) {
        return static_cast<ATOM>(kawin::Fail(ERROR_NOACCESS));
    }
    return kawin::NoThrow([&] { return kawin::Register(*description); });
}

ATOM RegisterClassW(const WNDCLASSW* description) noexcept {
    if (description == nullptr) {
        return static_cast<ATOM>(kawin::Fail(ERROR_NOACCESS));
    }
    const WNDCLASSW& d = *description;
    const WNDCLASSEXW extended = {sizeof(WNDCLASSEXW), d.style,        d.lpfnWndProc,   d.cbClsExtra,
                                  d.cbWndExtra,        d.hInstance,    d.hIcon,         d.hCursor,
                                  d.hbrBackground,     d.lpszMenuName, d.lpszClassName, nullptr};
    return kawin::NoThrow([&] { return kawin::Register(extended); });
}

BOOL UnregisterClassW(LPCWSTR name, HINSTANCE instance) noexcept {
    return kawin::NoThrow([&] { return kawin::Unregister(name, instance); });
}

BOOL GetClassInfoExW(HINSTANCE instance, LPCWSTR name, LPWNDCLASSEXW info) noexcept {
    if (info == nullptr) {
        return kawin::Fail(ERROR_NOACCESS);
    }
    return kawin::NoThrow([&]() -> BOOL { return kawin::Info(instance, name, *info); });
}

BOOL GetClassInfoW(HINSTANCE instance, LPCWSTR name, LPWNDCLASSW info) noexcept {
    if (info == nullptr) {
        return kawin::Fail(ERROR_NOACCESS);
    }
    return kawin::NoThrow([&]() -> BOOL {
        WNDCLASSEXW full = {};
        const ATOM atom = kawin::Info(instance, name, full);
        if (atom != 0) {
            *info = {full.style, full.lpfnWndProc, full.cbClsExtra,    full.cbWndExtra,   full.hInstance,
                     full.hIcon, full.hCursor,     full.hbrBackground, full.lpszMenuName, full.lpszClassName};
        }
        return atom;
    });
}

int GetClassNameW(HWND window, LPWSTR name, int capacity) noexcept {
    if (capacity < 1 || name == nullptr) {
        return kawin::Fail(ERROR_INSUFFICIENT_BUFFER);
    }
    return kawin::NoThrow([&]() -> int {
        const kawin::ClassRef found = kawin::ClassOf(window);
        if (found == nullptr) {
            return 0;
        }
        const std::size_t count = std::min(found->name.size(), static_cast<std::size_t>(capacity) - 1);
        std::copy_n(found->name.data(), count, name);
        name[count] = 0;
        return static_cast<int>(count);
    });
}

ULONG_PTR GetClassLongPtrW(HWND window, int index) noexcept {
    return kawin::ClassValue(window, index, nullptr, sizeof(LONG_PTR));
}

ULONG_PTR SetClassLongPtrW(HWND window, int index, LONG_PTR value) noexcept {
    return kawin::ClassValue(window, index, &value, sizeof(LONG_PTR));
}

DWORD GetClassLongW(HWND window, int index) noexcept {
    return static_cast<DWORD>(kawin::ClassValue(window, index, nullptr, sizeof(LONG)));
}

DWORD SetClassLongW(HWND window, int index, LONG value) noexcept {
    const LONG_PTR wide = value;
    return static_cast<DWORD>(kawin::ClassValue(window, index, &wide, sizeof(LONG)));
}

WORD GetClassWord(HWND window, int index) noexcept {
    return static_cast<WORD>(kawin::ClassValue(window, index, nullptr, sizeof(WORD)));
}
