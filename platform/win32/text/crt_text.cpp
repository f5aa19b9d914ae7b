#include "crt_text.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <iterator>
#include <limits>
#include <string_view>

#include "case_map.h"

namespace {

using View = std::basic_string_view<WCHAR>;

// Accumulates below zero, where there is room for one more value than above.
template <class Integer>
Integer ParseDecimal(LPCWSTR text) noexcept {
    using Limits = std::numeric_limits<Integer>;
    constexpr Integer kBase = 10;
    if (text == nullptr) {
        errno = EINVAL;
        return 0;
    }
    while (u_isUWhiteSpace(*text)) {
        ++text;
    }
    const bool negative = *text == u'-';
    text += negative || *text == u'+' ? 1 : 0;
    const Integer least = negative ? Limits::min() : static_cast<Integer>(-Limits::max());
    Integer value = 0;
    for (; *text >= u'0' && *text <= u'9'; ++text) {
        const auto digit = static_cast<Integer>(*text - u'0');
        if (value < (least + digit) / kBase) {
            errno = ERANGE;
            return negative ? Limits::min() : Limits::max();
        }
        value = static_cast<Integer>(value * kBase - digit);
    }
    return negative ? value : static_cast<Integer>(-value);
}

int CompareLower(View a, View b) noexcept {
    const auto equal = [](WCHAR x, WCHAR y) { return kawin::LowerUnit(x) == kawin::LowerUnit(y); };
    const auto [x, y] = std::mismatch(a.begin(), a.end(), b.begin(), b.end(), equal);
    return (x == a.end() ? 0 : kawin::LowerUnit(*x)) - (y == b.end() ? 0 : kawin::LowerUnit(*y));
}

struct Part {
    LPWSTR target;
    std::size_t size;

    bool IsWellFormed() const { return (target == nullptr) == (size == 0); }
    bool Fits(View text) const { return target == nullptr || text.size() < size; }
    void Write(View value) const {
        if (target != nullptr && size != 0) {
            target[value.copy(target, value.size())] = 0;
        }
    }
};

// Drive, folder, name, extension.
std::array<View, 4> Split(View path) noexcept {
    const std::size_t drive_end = path.size() > 1 && path[1] == u':' ? 2 : 0;
    const std::size_t separator = path.find_last_of(u"\\/");
    const std::size_t name_start = separator == View::npos || separator < drive_end ? drive_end : separator + 1;
    const std::size_t dot = path.find_last_of(u'.');
    const std::size_t name_end = dot == View::npos || dot < name_start ? path.size() : dot;
    return {path.substr(0, drive_end), path.substr(drive_end, name_start - drive_end),
            path.substr(name_start, name_end - name_start), path.substr(name_end)};
}

}  // namespace

int _wtoi(LPCWSTR text) noexcept {
    return ParseDecimal<int>(text);
}

LONGLONG _wtoi64(LPCWSTR text) noexcept {
    return ParseDecimal<LONGLONG>(text);
}

int _wcsicmp(LPCWSTR a, LPCWSTR b) noexcept {
    return _wcsnicmp(a, b, SIZE_MAX);
}

int _wcsnicmp(LPCWSTR a, LPCWSTR b, std::size_t count) noexcept {
    if (a == nullptr || b == nullptr) {
        errno = EINVAL;
        return INT_MAX;
    }
    const auto start = [count](LPCWSTR text) {
        std::size_t length = 0;
        while (length < count && text[length] != 0) {
            ++length;
        }
        return View(text, length);
    };
    return CompareLower(start(a), start(b));
}

errno_t _wsplitpath_s(LPCWSTR path, LPWSTR drive, std::size_t driveSize, LPWSTR folder, std::size_t folderSize, LPWSTR name,
                      std::size_t nameSize, LPWSTR extension, std::size_t extensionSize) noexcept {
    const Part parts[] = {{drive, driveSize}, {folder, folderSize}, {name, nameSize}, {extension, extensionSize}};
    const bool well_formed =
        std::all_of(std::begin(parts), std::end(parts), [](const Part& part) { return part.IsWellFormed(); });
    const std::array<View, 4> texts = Split(path == nullptr ? View() : View(path));
    const bool fits = std::equal(std::begin(parts), std::end(parts), texts.begin(),
                                 [](const Part& part, View text) { return part.Fits(text); });
    const errno_t error = path == nullptr || !well_formed ? EINVAL : fits ? 0 : ERANGE;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        parts[i].Write(error == 0 ? texts[i] : View());
    }
    errno = error == 0 ? errno : error;
    return error;
}
