#include "messages.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "../base/error_map.h"
#include "error_texts.h"
#include "locale.h"
#include "message_text.h"
#include "no_throw.h"

namespace {

using kawin::Fail;

constexpr DWORD kSources = FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_FROM_SYSTEM;
constexpr DWORD kKnownFlags = kSources | FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_IGNORE_INSERTS |
                              FORMAT_MESSAGE_ARGUMENT_ARRAY | FORMAT_MESSAGE_MAX_WIDTH_MASK;

DWORD FailMessage(DWORD error) {
    SetLastError(error);
    return 0;
}

bool AreFlags(DWORD flags) {
    const DWORD width = flags & FORMAT_MESSAGE_MAX_WIDTH_MASK;
    const DWORD source = flags & kSources;
    return (flags & ~kKnownFlags) == 0 && (width == 0 || width == FORMAT_MESSAGE_MAX_WIDTH_MASK) && source != 0 &&
           source != kSources;
}

DWORD ErrorOfResult(DWORD id) {
    constexpr DWORD kFromWin32 = 0x80070000;
    return (id & 0xFFFF0000) == kFromWin32 ? id & 0xFFFF : id;
}

// The text of the system's message with its line break; nothing with the last error set.
std::optional<std::u16string> SystemText(DWORD id, DWORD language) {
    const std::u16string_view text = kawin::ErrorText(ErrorOfResult(id));
    if (text.empty()) {
        SetLastError(ERROR_MR_MID_NOT_FOUND);
        return std::nullopt;
    }
    if (language != 0 && PRIMARYLANGID(static_cast<LANGID>(language)) != LANG_ENGLISH) {
        SetLastError(ERROR_RESOURCE_LANG_NOT_FOUND);
        return std::nullopt;
    }
    return std::u16string(text) + u"\r\n";
}

DWORD Allocate(std::u16string_view text, LPWSTR* target, DWORD least) {
    const std::size_t size = std::max<std::size_t>(text.size() + 1, least);
    *target = static_cast<LPWSTR>(LocalAlloc(LMEM_FIXED, size * sizeof(WCHAR)));
    if (*target == nullptr) {
        return 0;
    }
    (*target)[text.copy(*target, text.size())] = 0;
    return static_cast<DWORD>(text.size());
}

DWORD Copy(std::u16string_view text, LPWSTR target, DWORD capacity) {
    if (text.size() >= capacity) {
        return FailMessage(ERROR_INSUFFICIENT_BUFFER);
    }
    target[text.copy(target, text.size())] = 0;
    return static_cast<DWORD>(text.size());
}

}  // namespace

HLOCAL LocalAlloc(UINT flags, SIZE_T bytes) noexcept {
    const std::size_t size = std::max<SIZE_T>(bytes, 1);
    void* const block = (flags & LMEM_ZEROINIT) != 0 ? std::calloc(size, 1) : std::malloc(size);
    if (block == nullptr) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    }
    return block;
}

HLOCAL LocalFree(HLOCAL block) noexcept {
    std::free(block);
    return nullptr;
}

DWORD FormatMessageW(DWORD flags, LPCVOID source, DWORD id, DWORD language, LPWSTR target, DWORD capacity,
                     va_list* arguments) noexcept {
    return kawin::NoThrow([&]() -> DWORD {
        const bool from_string = (flags & FORMAT_MESSAGE_FROM_STRING) != 0;
        if (!AreFlags(flags) || target == nullptr || (from_string && source == nullptr)) {
            return FailMessage(ERROR_INVALID_PARAMETER);
        }
        const std::optional<std::u16string> text =
            from_string ? std::u16string(static_cast<LPCWSTR>(source)) : SystemText(id, language);
        if (!text) {
            return 0;
        }
        kawin::MessageArguments values(arguments, (flags & FORMAT_MESSAGE_ARGUMENT_ARRAY) != 0);
        const std::optional<std::u16string> message = kawin::ExpandMessage(
            *text, values, (flags & FORMAT_MESSAGE_IGNORE_INSERTS) != 0 ? kawin::Inserts::Keep : kawin::Inserts::Replace,
            (flags & FORMAT_MESSAGE_MAX_WIDTH_MASK) != 0 ? kawin::LineBreaks::Blank : kawin::LineBreaks::Keep);
        if (!message) {
            return FailMessage(ERROR_INVALID_PARAMETER);
        }
        return (flags & FORMAT_MESSAGE_ALLOCATE_BUFFER) != 0 ? Allocate(*message, reinterpret_cast<LPWSTR*>(target), capacity)
                                                             : Copy(*message, target, capacity);
    });
}
