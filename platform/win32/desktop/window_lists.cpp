// Windows enumerated and found.

#include <algorithm>

#include "../base/error_map.h"
#include "../base/text_length.h"
#include "../text/compare.h"
#include "../text/no_throw.h"
#include "tree_walk.h"
#include "window_tree.h"

namespace kawin {
namespace {

std::vector<HWND> TopLevels() {
    const DesktopLock desktop;
    std::vector<HWND> list;
    std::transform(desktop->root->children.begin(), desktop->root->children.end(), std::back_inserter(list),
                   [](const Window* each) { return each->handle; });
    return list;
}

std::vector<HWND> Descendants(HWND handle) {
    const DesktopLock desktop;
    std::vector<HWND> list;
    if (Window* const window = desktop.Find(handle)) {
        WalkAll(*window, [&](const Window& each) {
            list.push_back(each.handle);
            return true;
        });
    }
    return list;
}

std::vector<HWND> OfThread(DWORD thread) {
    std::vector<HWND> list = TopLevels();
    std::erase_if(list, [&](HWND each) { return GetWindowThreadProcessId(each, nullptr) != thread; });
    return list;
}

BOOL CallEach(const std::vector<HWND>& list, WNDENUMPROC each, LPARAM parameter) {
    return std::all_of(list.begin(), list.end(),
                       [&](HWND window) { return IsWindow(window) == FALSE || each(window, parameter) != FALSE; });
}

bool SameText(const std::u16string& text, LPCWSTR wanted) {
    return wanted == nullptr || CompareStringOrdinal(text.c_str(), static_cast<int>(text.size()), wanted, -1, TRUE) == CSTR_EQUAL;
}

HWND Find(HWND parent, HWND after, LPCWSTR class_name, LPCWSTR title) {
    const ATOM atom = class_name != nullptr ? AtomOfName(class_name) : ATOM{0};
    if (class_name != nullptr && atom == 0) {
        return nullptr;
    }
    const DesktopLock desktop;
    const Window* const from = parent == HWND_MESSAGE ? desktop->message_root
                               : parent == nullptr    ? desktop->root
                                                      : desktop.Find(parent);
    if (from == nullptr) {
        return nullptr;
    }
    auto at = from->children.begin();
    if (after != nullptr) {
        at = std::find(from->children.begin(), from->children.end(), desktop.Find(after));
        if (at == from->children.end()) {
            return nullptr;
        }
        ++at;
    }
    const auto found = std::find_if(at, from->children.end(), [&](const Window* each) {
        return (atom == 0 || each->window_class->atom == atom) && SameText(each->text, title);
    });
    return found != from->children.end() ? (*found)->handle : nullptr;
}

}  // namespace
}  // namespace kawin

BOOL EnumChildWindows(HWND parent, WNDENUMPROC each, LPARAM parameter) noexcept {
    return kawin::NoThrow(
        [&] { return kawin::CallEach(parent != nullptr ? kawin::Descendants(parent) : kawin::TopLevels(), each, parameter); });
}

BOOL EnumWindows(WNDENUMPROC each, LPARAM parameter) noexcept {
    return kawin::NoThrow([&] { return kawin::CallEach(kawin::TopLevels(), each, parameter); });
}

BOOL EnumThreadWindows(DWORD thread, WNDENUMPROC each, LPARAM parameter) noexcept {
    return kawin::NoThrow([&] { return kawin::CallEach(kawin::OfThread(thread), each, parameter); });
}

HWND FindWindowW(LPCWSTR class_name, LPCWSTR title) noexcept {
    return FindWindowExW(nullptr, nullptr, class_name, title);
}

HWND FindWindowExW(HWND parent, HWND after, LPCWSTR class_name, LPCWSTR title) noexcept {
    return kawin::NoThrow([&] { return kawin::Find(parent, after, class_name, title); });
}
