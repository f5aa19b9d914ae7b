#include "profile.h"

#include <algorithm>
#include <limits>

#include "../base/error_map.h"
#include "../text/case_fold.h"
#include "../text/no_throw.h"
#include "profile_file.h"
#include "profile_text.h"

namespace kawin {
namespace {

std::u16string_view View(LPCWSTR text) {
    return text != nullptr ? std::u16string_view(text) : std::u16string_view();
}

// Reading tells by the last error alone whether there was something.
void Report(bool found) {
    SetLastError(found ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND);
}

// An empty one when the file cannot be read.
ProfileText ReadText(LPCWSTR name) {
    const std::optional<ProfileFile> file = ProfileFile::Open(name, ProfileFile::Use::read);
    return ProfileText((file ? file->Read() : std::nullopt).value_or(std::string()));
}

DWORD CopyText(std::u16string_view text, LPWSTR buffer, DWORD size) {
    if (buffer == nullptr || size == 0) {
        return 0;
    }
    const std::size_t count = text.copy(buffer, size - 1);
    buffer[count] = u'\0';
    return static_cast<DWORD>(count);
}

// A list whose texts have their terminators already.
DWORD CopyList(const std::u16string& list, LPWSTR buffer, DWORD size) {
    if (buffer == nullptr || size < 2) {
        return CopyText({}, buffer, size);
    }
    const bool fits = list.size() < size;
    const std::size_t count = list.copy(buffer, fits ? size : size - 2);
    buffer[count] = u'\0';
    buffer[std::min<std::size_t>(count + 1, size - 1)] = u'\0';
    return static_cast<DWORD>(count);
}

DWORD CopySectionNames(LPWSTR buffer, DWORD size, LPCWSTR file) {
    std::u16string list;
    const ProfileText text = ReadText(file);
    for (const std::u16string_view name : text.SectionNames()) {
        list.append(name).append(1, u'\0');
    }
    Report(!list.empty());
    return CopyList(list, buffer, size);
}

DWORD CopyLines(std::u16string_view section, LPWSTR buffer, DWORD size, LPCWSTR file) {
    std::u16string list;
    const ProfileText text = ReadText(file);
    const std::optional<std::vector<ProfileText::Entry>> entries = text.Entries(section);
    for (const ProfileText::Entry& entry : entries.value_or(std::vector<ProfileText::Entry>())) {
        list.append(entry.key).append(entry.has_value, u'=').append(entry.whole).append(1, u'\0');
    }
    Report(entries.has_value());
    return CopyList(list, buffer, size);
}

std::optional<std::u16string> FindValue(std::u16string_view section, std::u16string_view key, LPCWSTR file) {
    const ProfileText text = ReadText(file);
    const std::optional<std::u16string_view> value = text.Value(section, key);
    return value ? std::optional(std::u16string(*value)) : std::nullopt;
}

std::u16string_view WithoutBlanksAtEnd(std::u16string_view text) {
    return text.substr(0, text.find_last_not_of(u' ') + 1);
}

DWORD CopyKeys(LPCWSTR section, LPCWSTR defaultText, LPWSTR buffer, DWORD size, LPCWSTR file) {
    std::u16string list;
    const ProfileText text = ReadText(file);
    const std::optional<std::vector<ProfileText::Entry>> entries = text.Entries(section);
    for (const ProfileText::Entry& entry : entries.value_or(std::vector<ProfileText::Entry>())) {
        if (entry.has_value) {
            list.append(entry.key).append(1, u'\0');
        }
    }
    Report(entries.has_value());
    return entries ? CopyList(list, buffer, size) : CopyText(WithoutBlanksAtEnd(View(defaultText)), buffer, size);
}

DWORD CopyValue(LPCWSTR section, LPCWSTR key, LPCWSTR defaultText, LPWSTR buffer, DWORD size, LPCWSTR file) {
    const std::optional<std::u16string> value = FindValue(section, key, file);
    const DWORD copied = CopyText(value ? *value : WithoutBlanksAtEnd(View(defaultText)), buffer, size);
    Report(value.has_value());
    return copied;
}

// Takes the mark of a base off ("0x").
unsigned TakeBase(std::u16string_view& text) {
    constexpr struct {
        std::u16string_view mark;
        unsigned base;
    } kBases[] = {{u"0x", 16}, {u"0o", 8}, {u"0b", 2}};
    for (const auto& known : kBases) {
        if (text.starts_with(known.mark)) {
            text.remove_prefix(known.mark.size());
            return known.base;
        }
    }
    return 10;
}

unsigned DigitOf(char16_t c) {
    const char16_t lower = FoldSimple(c);
    if (lower >= u'a' && lower <= u'z') {
        return lower - u'a' + 10u;
    }
    return lower >= u'0' && lower <= u'9' ? lower - u'0' + 0u : std::numeric_limits<unsigned>::max();
}

// Wraps around beyond 32 bits.
UINT NumberAtStart(std::u16string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(u" \t"), text.size()));
    const bool negative = text.starts_with(u'-');
    text.remove_prefix(negative || text.starts_with(u'+'));
    const unsigned base = TakeBase(text);
    UINT number = 0;
    for (const char16_t c : text) {
        const unsigned digit = DigitOf(c);
        if (digit >= base) {
            break;
        }
        number = number * base + digit;
    }
    return negative ? 0 - number : number;
}

BOOL Change(LPCWSTR section, LPCWSTR key, LPCWSTR value, LPCWSTR name) {
    if (section == nullptr) {
        return Fail(ERROR_FILE_NOT_FOUND);
    }
    const std::optional<ProfileFile> file = ProfileFile::Open(name, ProfileFile::Use::change);
    const std::optional<std::string> before = file ? file->Read() : std::nullopt;
    if (!before) {
        return FALSE;
    }
    ProfileText text(*before);
    if (key == nullptr) {
        text.Remove(section);
    } else if (value == nullptr) {
        text.Remove(section, key);
    } else {
        text.Set(section, key, value);
    }
    const std::string after = text.Bytes();
    return after == *before || file->Replace(after);
}

}  // namespace
}  // namespace kawin

DWORD GetPrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR defaultText, LPWSTR buffer, DWORD size,
                               LPCWSTR file) noexcept {
    return kawin::NoThrow([&] {
        if (section == nullptr) {
            return kawin::CopySectionNames(buffer, size, file);
        }
        return key == nullptr ? kawin::CopyKeys(section, defaultText, buffer, size, file)
                              : kawin::CopyValue(section, key, defaultText, buffer, size, file);
    });
}

UINT GetPrivateProfileIntW(LPCWSTR section, LPCWSTR key, INT defaultValue, LPCWSTR file) noexcept {
    return kawin::NoThrow([&]() -> UINT {
        const auto value = kawin::FindValue(kawin::View(section), kawin::View(key), file);
        kawin::Report(value.has_value());
        return value && !value->empty() ? kawin::NumberAtStart(*value) : static_cast<UINT>(defaultValue);
    });
}

DWORD GetPrivateProfileSectionW(LPCWSTR section, LPWSTR buffer, DWORD size, LPCWSTR file) noexcept {
    return kawin::NoThrow([&] { return kawin::CopyLines(kawin::View(section), buffer, size, file); });
}

DWORD GetPrivateProfileSectionNamesW(LPWSTR buffer, DWORD size, LPCWSTR file) noexcept {
    return kawin::NoThrow([&] { return kawin::CopySectionNames(buffer, size, file); });
}

BOOL WritePrivateProfileStringW(LPCWSTR section, LPCWSTR key, LPCWSTR text, LPCWSTR file) noexcept {
    if (section == nullptr && key == nullptr && text == nullptr) {
        return FALSE;  // asks to write what is cached: nothing
    }
    return kawin::NoThrow([&] { return kawin::Change(section, key, text, file); });
}
