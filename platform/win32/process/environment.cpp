#include "environment.h"

#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <string_view>

#include "../base/error_map.h"
#include "../base/utf.h"
#include "../text/case_fold.h"
#include "../text/no_throw.h"
#include "native_environment.h"

namespace kawin {
namespace {

constinit std::shared_mutex environment_mutex;  // guards environ and the texts that it leads to
constinit std::atomic<unsigned> changes{0};

struct Variable {
    std::string_view name;
    std::string_view value;
};

Variable Split(const char* entry) {
    const std::string_view text = entry;
    const std::size_t equals = std::min(text.find('=', 1), text.size());  // a name may begin with '='
    return {text.substr(0, equals), text.substr(std::min(equals + 1, text.size()))};
}

template <class Accept>
const char* FindEntry(Accept accept) {
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        if (accept(Split(*entry).name)) {
            return *entry;
        }
    }
    return nullptr;
}

// The entry of that name as written, else without regard to case. The caller holds the mutex.
const char* FindEntry(std::u16string_view name) {
    const std::string exact = ToFileName(name);
    if (const char* const entry = FindEntry([&exact](std::string_view other) { return other == exact; })) {
        return entry;
    }
    return FindEntry([name](std::string_view other) { return CompareFolded(FromFileName(other), name) == 0; });
}

std::optional<std::u16string> ValueOf(std::u16string_view name) {
    const std::shared_lock lock(environment_mutex);
    const char* const entry = name.empty() ? nullptr : FindEntry(name);
    return entry != nullptr ? std::optional(FromFileName(Split(entry).value)) : std::nullopt;
}

BOOL SetValue(const std::string& name, LPCWSTR value) {
    ++changes;
    const int result = value == nullptr ? unsetenv(name.c_str()) : setenv(name.c_str(), ToFileName(value).c_str(), 1);
    return result == 0 || FailFromErrno();
}

BOOL SetVariable(std::u16string_view name, LPCWSTR value) {
    const std::unique_lock lock(environment_mutex);
    const char* const known = FindEntry(name);
    if (known == nullptr && value == nullptr) {
        return Fail(ERROR_ENVVAR_NOT_FOUND);
    }
    return SetValue(known != nullptr ? std::string(Split(known).name) : ToFileName(name), value);
}

// `text` begins with '%'. The value of the variable that is named up to the next '%', and how much of the text that was.
struct Expansion {
    std::u16string value;
    std::size_t length;
};

std::optional<Expansion> ExpandAt(std::u16string_view text) {
    const std::size_t end = text.find(u'%', 1);
    if (end == text.npos) {
        return {};
    }
    std::optional<std::u16string> value = ValueOf(text.substr(1, end - 1));
    return value ? std::optional(Expansion{std::move(*value), end + 1}) : std::nullopt;
}

std::u16string Expand(std::u16string_view text) {
    std::u16string result;
    while (!text.empty()) {
        std::optional<Expansion> found = text.front() == u'%' ? ExpandAt(text) : std::nullopt;
        const Expansion next = found ? std::move(*found) : Expansion{std::u16string(1, text.front()), 1};
        result += next.value;
        text.remove_prefix(next.length);
    }
    return result;
}

void CopyText(const std::u16string& text, LPWSTR target) {
    memcpy(target, text.c_str(), (text.size() + 1) * sizeof(WCHAR));
}

}  // namespace

std::shared_mutex& EnvironmentMutex() noexcept {
    return environment_mutex;
}

unsigned EnvironmentChanges() noexcept {
    return changes.load(std::memory_order_relaxed);
}

std::vector<std::string> CopyEnvironment() {
    const std::shared_lock lock(environment_mutex);
    std::vector<std::string> entries;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        entries.emplace_back(*entry);
    }
    return entries;
}

std::optional<std::string> NativeVariable(const char* name) {
    const std::shared_lock lock(environment_mutex);
    const char* const value = getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

}  // namespace kawin

DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD size) noexcept {
    return kawin::NoThrow([&]() -> DWORD {
        const auto value = name != nullptr ? kawin::ValueOf(name) : std::nullopt;
        if (!value) {
            SetLastError(ERROR_ENVVAR_NOT_FOUND);
            return 0;
        }
        const auto length = static_cast<DWORD>(value->size());
        if (buffer == nullptr || size <= length) {
            return length + 1;
        }
        kawin::CopyText(*value, buffer);
        return length;
    });
}

BOOL SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        const std::u16string_view text = name != nullptr ? name : u"";
        if (text.empty() || text.find(u'=') != text.npos) {
            return kawin::Fail(ERROR_INVALID_PARAMETER);
        }
        return kawin::SetVariable(text, value);
    });
}

DWORD ExpandEnvironmentStringsW(LPCWSTR source, LPWSTR target, DWORD size) noexcept {
    return kawin::NoThrow([&]() -> DWORD {
        if (source == nullptr) {
            SetLastError(ERROR_INVALID_PARAMETER);
            return 0;
        }
        const std::u16string result = kawin::Expand(source);
        const auto needed = static_cast<DWORD>(result.size() + 1);
        if (target != nullptr && needed <= size) {
            kawin::CopyText(result, target);
        }
        return needed;
    });
}

LPWSTR GetEnvironmentStringsW() noexcept {
    return kawin::NoThrow([]() -> LPWSTR {
        std::u16string block;
        for (const std::string& entry : kawin::CopyEnvironment()) {
            block += kawin::FromFileName(entry);
            block += u'\0';
        }
        auto* const copy = new WCHAR[block.size() + 1];
        kawin::CopyText(block, copy);
        return copy;
    });
}

BOOL FreeEnvironmentStringsW(LPWSTR block) noexcept {
    delete[] block;
    return TRUE;
}
