#include "message_log.h"

#include <algorithm>
#include <utility>

namespace desktop_test {
namespace {

struct Name {
    UINT message;
    const char* name;
};

constexpr Name kNames[] = {
    {WM_CREATE, "CREATE"},
    {WM_DESTROY, "DESTROY"},
    {WM_MOVE, "MOVE"},
    {WM_SIZE, "SIZE"},
    {WM_ENABLE, "ENABLE"},
    {WM_CANCELMODE, "CANCELMODE"},
    {WM_SHOWWINDOW, "SHOWWINDOW"},
    {WM_GETMINMAXINFO, "GETMINMAXINFO"},
    {WM_NCCREATE, "NCCREATE"},
    {WM_NCDESTROY, "NCDESTROY"},
    {WM_NCCALCSIZE, "NCCALCSIZE"},
    {WM_PARENTNOTIFY, "PARENTNOTIFY"},
    {WM_CLOSE, "CLOSE"},
    {WM_STYLECHANGING, "STYLECHANGING"},
    {WM_STYLECHANGED, "STYLECHANGED"},
    {WM_WINDOWPOSCHANGING, "POSCHANGING"},
    {WM_WINDOWPOSCHANGED, "POSCHANGED"},
    {WM_CHILDACTIVATE, "CHILDACTIVATE"},
};

constexpr Name kFocus[] = {
    {WM_ACTIVATE, "ACTIVATE"}, {WM_NCACTIVATE, "NCACTIVATE"}, {WM_SETFOCUS, "SETFOCUS"}, {WM_KILLFOCUS, "KILLFOCUS"}};

MessageLog* the_log = nullptr;

}  // namespace

std::string Joined(const Names& names) {
    std::string text;
    for (const std::string& each : names) {
        text += (text.empty() ? "" : " ") + each;
    }
    return text;
}

MessageLog::MessageLog() {
    the_log = this;
    WNDCLASSEXW description = {};
    description.cbSize = sizeof description;
    description.lpfnWndProc = Procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = kClass;
    RegisterClassExW(&description);
}

MessageLog::~MessageLog() {
    on_message = nullptr;
    for (const Tagged& each : std::exchange(windows_, {})) {
        DestroyWindow(each.window);
    }
    UnregisterClassW(kClass, GetModuleHandleW(nullptr));
    the_log = nullptr;
}

HWND MessageLog::Create(DWORD style, DWORD extended_style, RECT rect, HWND parent, const char* tag) {
    next_tag_ = tag;
    return CreateWindowExW(extended_style, kClass, _T("title"), style, rect.left, rect.top, rect.right - rect.left,
                           rect.bottom - rect.top, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
}

Names MessageLog::Take() {
    return std::exchange(noted_, {});
}

const std::string& MessageLog::TagOf(HWND window) {
    for (const Tagged& each : windows_) {
        if (each.window == window) {
            return each.tag;
        }
    }
    return windows_.emplace_back(Tagged{window, next_tag_}).tag;
}

Names MessageLog::TakeFocus() {
    return std::exchange(focus_, {});
}

void MessageLog::Note(HWND window, UINT message, WPARAM wparam) {
    const std::string& tag = TagOf(window);
    const auto focus =
        std::find_if(std::begin(kFocus), std::end(kFocus), [&](const Name& each) { return each.message == message; });
    if (notes_focus_ && focus != std::end(kFocus)) {
        const bool told = message == WM_ACTIVATE || message == WM_NCACTIVATE;
        focus_.push_back(tag + "." + focus->name + (told ? std::to_string(LOWORD(wparam)) : ""));
    }
    const auto name =
        std::find_if(std::begin(kNames), std::end(kNames), [&](const Name& each) { return each.message == message; });
    if (name != std::end(kNames)) {
        noted_.push_back(tag.empty() ? name->name : tag + "." + name->name);
    }
}

LRESULT CALLBACK MessageLog::Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    MessageLog* const log = the_log;
    if (log == nullptr) {
        return DefWindowProcW(window, message, wparam, lparam);
    }
    log->Note(window, message, wparam);
    LRESULT result = 0;
    if (log->on_message && log->on_message(window, message, wparam, lparam, result)) {
        return result;
    }
    return DefWindowProcW(window, message, wparam, lparam);
}

}  // namespace desktop_test
