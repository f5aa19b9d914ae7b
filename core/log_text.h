#pragma once

// Search in messages. It stands on the hot path of the log, and the C run-time's byte search is the fastest there is.

#include <windows.h>

#include <cstring>
#include <string_view>

namespace log_text {

// Index of the first `unit`, an ASCII character, at `from` or behind it, or npos.
inline std::size_t FindUnit(std::basic_string_view<TCHAR> text, TCHAR unit, std::size_t from) {
    while (from < text.size()) {
        const char* const bytes = reinterpret_cast<const char*>(text.data() + from);
        const void* const found = std::memchr(bytes, static_cast<char>(unit), (text.size() - from) * sizeof(TCHAR));
        if (found == nullptr) {
            break;
        }
        from += static_cast<std::size_t>(static_cast<const char*>(found) - bytes) / sizeof(TCHAR);
        if (text[from] == unit) {
            return from;
        }
        ++from;  // half of another character
    }
    return text.npos;
}

inline std::size_t FindLineFeed(std::basic_string_view<TCHAR> text, std::size_t from) {
    return FindUnit(text, _T('\n'), from);
}

}  // namespace log_text
