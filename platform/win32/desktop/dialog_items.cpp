// The controls of a dialog: by number, and in the order in which keys go through them.

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "controls.h"
#include "dialog_data.h"
#include "message_queue.h"
#include "window_tree.h"

namespace kawin {
namespace {

bool IsReachable(HWND window) noexcept {
    const DWORD style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
    return (style & WS_VISIBLE) != 0 && (style & WS_DISABLED) == 0;
}

bool HasStyle(HWND window, DWORD style) noexcept {
    return (static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)) & style) != 0;
}

bool IsContainer(HWND window) noexcept {
    return (static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE)) & WS_EX_CONTROLPARENT) != 0;
}

std::vector<HWND> Children(HWND parent) {
    std::vector<HWND> children;
    for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        children.push_back(child);
    }
    return children;
}

void AddControls(HWND parent, HWND keep, std::vector<HWND>& controls) {
    for (const HWND child : Children(parent)) {
        if (!IsReachable(child) && child != keep) {
            continue;
        }
        if (IsContainer(child)) {
            AddControls(child, keep, controls);
        } else {
            controls.push_back(child);
        }
    }
}

// The next one of `list` behind `from` (before it), in circles, that is wanted; null when none is. `from` itself comes last.
template <class Wanted>
HWND NextInCircle(const std::vector<HWND>& list, HWND from, bool previous, Wanted wanted) {
    const std::size_t count = list.size();
    const auto found = std::find(list.begin(), list.end(), from);
    std::size_t at = found != list.end() ? static_cast<std::size_t>(found - list.begin()) : (previous ? 0 : count - 1);
    for (std::size_t i = 0; i < count; ++i) {
        at = (at + (previous ? count - 1 : 1)) % count;
        if (wanted(list[at])) {
            return list[at];
        }
    }
    return nullptr;
}

HWND NextTabItem(HWND dialog, HWND control, bool previous) {
    std::vector<HWND> controls;
    AddControls(dialog, control, controls);
    HWND from = control;  // a window inside of a control stands for that
    while (from != nullptr && from != dialog && std::find(controls.begin(), controls.end(), from) == controls.end()) {
        from = GetParent(from);
    }
    const HWND next =
        NextInCircle(controls, from, previous, [](HWND each) { return HasStyle(each, WS_TABSTOP) && IsReachable(each); });
    return next != nullptr ? next : control;
}

HWND NextGroupItem(HWND dialog, HWND control, bool previous) {
    HWND from = control;
    if (from == nullptr) {
        const std::vector<HWND> all = Children(dialog);
        from = all.empty() ? nullptr : previous ? all.front() : all.back();
    }
    const HWND next = from != nullptr ? NextInCircle(GroupOf(from), from, previous, IsReachable) : nullptr;
    return next != nullptr ? next : control;
}

HWND Item(HWND dialog, int id) noexcept {
    if (!IsWindow(dialog)) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (static_cast<int>(GetWindowLongPtrW(child, GWLP_ID)) == id) {
            return child;
        }
    }
    SetLastError(ERROR_CONTROL_ID_NOT_FOUND);
    return nullptr;
}

// What `control` has in front of its first character that is no digit: blanks and a sign count, anything behind does not.
UINT NumberOf(std::u16string text, bool is_signed, bool& translated) {
    while (!text.empty() && (text.front() == u' ' || text.front() == u'\t')) {
        text.erase(text.begin());
    }
    std::string digits;
    for (const char16_t unit : text) {
        const bool sign = digits.empty() && unit == u'-';
        if (!sign && (unit < u'0' || unit > u'9')) {
            break;
        }
        digits.push_back(static_cast<char>(unit));
    }
    LONGLONG value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    const LONGLONG least = is_signed ? std::numeric_limits<int>::min() : 0;
    const LONGLONG most = is_signed ? std::numeric_limits<int>::max() : std::numeric_limits<UINT>::max();
    translated = error == std::errc() && value >= least && value <= most;
    return translated ? static_cast<UINT>(value) : 0;
}

}  // namespace

std::vector<HWND> ReachableControls(HWND dialog) {
    std::vector<HWND> controls;
    AddControls(dialog, nullptr, controls);
    return controls;
}

std::vector<HWND> GroupOf(HWND control) {
    std::vector<HWND> members = Children(GetParent(control));
    const auto begins = [](HWND each) { return HasStyle(each, WS_GROUP); };
    const auto own = std::find(members.begin(), members.end(), control);
    if (own == members.end()) {
        return {};
    }
    std::rotate(members.begin(), own, members.end());
    const auto first = std::find_if(members.rbegin(), members.rend(), begins);
    if (first != members.rend()) {
        std::rotate(members.begin(), begins(control) ? members.begin() : first.base() - 1, members.end());
        members.erase(std::find_if(members.begin() + 1, members.end(), begins), members.end());
    }
    return members;
}

LRESULT DialogCodeOf(HWND control) noexcept {
    return control != nullptr ? SendMessageW(control, WM_GETDLGCODE, 0, 0) : 0;
}

}  // namespace kawin

HWND GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous) noexcept {
    if (!IsWindow(dialog) || (control != nullptr && !IsChild(dialog, control))) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    return kawin::NoThrow([&] { return kawin::NextTabItem(dialog, control, previous != FALSE); });
}

HWND GetNextDlgGroupItem(HWND dialog, HWND control, BOOL previous) noexcept {
    if (!IsWindow(dialog) || (control != nullptr && !IsChild(dialog, control))) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    return kawin::NoThrow([&] { return kawin::NextGroupItem(dialog, control, previous != FALSE); });
}

HWND GetDlgItem(HWND dialog, int id) noexcept {
    return kawin::Item(dialog, id);
}

BOOL SetDlgItemTextW(HWND dialog, int id, LPCWSTR text) noexcept {
    const HWND item = kawin::Item(dialog, id);
    return item != nullptr && SetWindowTextW(item, text);
}

UINT GetDlgItemTextW(HWND dialog, int id, LPWSTR text, int capacity) noexcept {
    const HWND item = kawin::Item(dialog, id);
    if (item == nullptr && text != nullptr && capacity > 0) {
        *text = 0;
    }
    return item != nullptr ? static_cast<UINT>(GetWindowTextW(item, text, capacity)) : 0;
}

LRESULT SendDlgItemMessageW(HWND dialog, int id, UINT message, WPARAM wparam, LPARAM lparam) noexcept {
    const HWND item = kawin::Item(dialog, id);
    return item != nullptr ? SendMessageW(item, message, wparam, lparam) : 0;
}

BOOL SetDlgItemInt(HWND dialog, int id, UINT value, BOOL is_signed) noexcept {
    char digits[16];
    const auto end = is_signed ? std::to_chars(std::begin(digits), std::end(digits), static_cast<int>(value)).ptr
                               : std::to_chars(std::begin(digits), std::end(digits), value).ptr;
    WCHAR text[16] = {};
    std::copy(std::begin(digits), end, std::begin(text));
    return SetDlgItemTextW(dialog, id, text);
}

UINT GetDlgItemInt(HWND dialog, int id, BOOL* translated, BOOL is_signed) noexcept {
    WCHAR text[64] = {};
    bool valid = false;
    UINT value = 0;
    if (GetDlgItemTextW(dialog, id, text, static_cast<int>(std::size(text))) != 0) {
        value = kawin::NoThrow([&] { return kawin::NumberOf(text, is_signed != FALSE, valid); });
    }
    if (translated != nullptr) {
        *translated = valid;
    }
    return value;
}

BOOL CheckDlgButton(HWND dialog, int id, UINT check) noexcept {
    const HWND item = kawin::Item(dialog, id);
    if (item != nullptr) {
        SendMessageW(item, BM_SETCHECK, check, 0);
    }
    return item != nullptr;
}

UINT IsDlgButtonChecked(HWND dialog, int id) noexcept {
    return static_cast<UINT>(SendDlgItemMessageW(dialog, id, BM_GETCHECK, 0, 0));
}

BOOL CheckRadioButton(HWND dialog, int first, int last, int checked) noexcept {
    if (!IsWindow(dialog)) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        const int id = static_cast<int>(GetWindowLongPtrW(child, GWLP_ID));
        if (id >= std::min(first, last) && id <= std::max(first, last)) {
            SendMessageW(child, BM_SETCHECK, id == checked ? BST_CHECKED : BST_UNCHECKED, 0);
        }
    }
    return TRUE;
}
