#include "code_pages.h"

#include <unicode/ustring.h>

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstdlib>
#include <optional>
#include <string>

#include "../base/error_map.h"
#include "../process/native_environment.h"
#include "code_page_tables.h"
#include "no_throw.h"

namespace {

using kawin::CodePage;
using kawin::Fail;
using kawin::kReplacementUnit;

constexpr UINT kWesternEuropean = 1252;
constexpr UINT kUnitedStatesOem = 437;

UINT ChooseAnsiCodePage() {
    const std::optional<std::string> chosen = kawin::NativeVariable("KADATA_ACP");
    const auto number = static_cast<UINT>(std::strtoul(chosen.value_or("").c_str(), nullptr, 10));
    return number == CP_UTF8 || (number > CP_THREAD_ACP && kawin::FindCodePage(number) != nullptr) ? number : kWesternEuropean;
}

UINT AnsiCodePage() {
    static const UINT number = ChooseAnsiCodePage();
    return number;
}

UINT OemCodePage() {
    struct Row {
        UINT ansi;
        UINT oem;
    };
    constexpr Row kRows[] = {{1250, 852}, {1251, 866}, {1252, 850}, {1253, 737},  {1254, 857},   {1255, 862},
                             {1256, 720}, {1257, 775}, {874, 874},  {932, 932},   {936, 936},    {949, 949},
                             {950, 950},  {437, 437},  {850, 850},  {1258, 1258}, {65001, 65001}};
    const auto row =
        std::find_if(std::begin(kRows), std::end(kRows), [ansi = AnsiCodePage()](const Row& r) { return r.ansi == ansi; });
    return row == std::end(kRows) ? kUnitedStatesOem : row->oem;
}

UINT RealNumber(UINT code_page) {
    switch (code_page) {
        case CP_ACP:
        case CP_THREAD_ACP:
            return AnsiCodePage();
        case CP_OEMCP:
            return OemCodePage();
        default:
            return code_page;
    }
}

// A code page as an argument names it: UTF-8, a table, or not valid.
struct Named {
    explicit Named(UINT code_page) {
        const UINT number = RealNumber(code_page);
        utf8 = number == CP_UTF8;
        table = utf8 ? nullptr : kawin::FindCodePage(number);
    }
    bool IsValid() const { return utf8 || table != nullptr; }

    bool utf8;
    const CodePage* table;
};

// Counts what is put and writes what fits; a character of several units is written whole or not at all.
template <class Unit>
class Target {
public:
    Target(Unit* units, int capacity) : units_(units), capacity_(static_cast<std::size_t>(capacity)) {}

    void Put(Unit unit) {
        if (count_ < capacity_) {
            units_[count_] = unit;
        }
        ++count_;
    }
    void Put(Unit first, Unit second) {
        if (count_ + 1 == capacity_) {
            capacity_ = count_;
            cut_ = true;
        }
        Put(first);
        Put(second);
    }

    // The number that the conversion returns, after a failure's last error is set.
    int Finish(bool counting) const {
        if (count_ > INT_MAX) {
            return Fail(ERROR_INVALID_PARAMETER);
        }
        return counting || (count_ <= capacity_ && !cut_) ? static_cast<int>(count_) : Fail(ERROR_INSUFFICIENT_BUFFER);
    }

private:
    Unit* units_;
    std::size_t capacity_;
    std::size_t count_ = 0;
    bool cut_ = false;
};

template <class Unit>
std::basic_string_view<Unit> Input(const Unit* text, int length) {
    return length < 0 ? std::basic_string_view<Unit>(text, std::char_traits<Unit>::length(text) + 1)
                      : std::basic_string_view<Unit>(text, static_cast<std::size_t>(length));
}

bool AreArgumentsGood(const void* text, int length, const void* target, int capacity) {
    return text != nullptr && length != 0 && capacity >= 0 && (capacity == 0 || target != nullptr) && text != target;
}

// A single byte that has only a private unit is as good as without a character; a pair may be a user's own character.
bool HasCharacter(char16_t unit, bool is_pair) {
    constexpr char16_t kFirstPrivate = 0xE000;
    constexpr char16_t kLastPrivate = 0xF8FF;
    return unit != kReplacementUnit && (is_pair || unit < kFirstPrivate || unit > kLastPrivate);
}

// Hands to `sink` each unit, and whether it is a character of the code page.
template <class Sink>
void Decode(const CodePage& page, std::string_view text, Sink&& sink) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool is_pair = page.lead[byte] && i + 1 < text.size() && text[i + 1] != 0;
        const char16_t unit =
            is_pair ? page.pairs[std::size_t{byte} * 256 + static_cast<unsigned char>(text[++i])] : page.single[byte];
        sink(unit == kReplacementUnit ? page.unreadable : unit, HasCharacter(unit, is_pair));
    }
}

int DecodePage(const CodePage& page, DWORD flags, std::string_view text, LPWSTR target, int capacity) {
    if ((flags & ~(MB_PRECOMPOSED | MB_ERR_INVALID_CHARS)) != 0) {
        return Fail(ERROR_INVALID_FLAGS);
    }
    if ((flags & MB_ERR_INVALID_CHARS) != 0) {
        bool ill_formed = false;
        Decode(page, text, [&ill_formed](char16_t, bool is_character) { ill_formed |= !is_character; });
        if (ill_formed) {
            return Fail(ERROR_NO_UNICODE_TRANSLATION);
        }
    }
    Target<WCHAR> out(target, capacity);
    Decode(page, text, [&out](char16_t unit, bool) { out.Put(unit); });
    return out.Finish(capacity == 0);
}

// The result of one of ICU's two UTF-8 conversions.
int FinishUtf8(UErrorCode status, int count, int substitutions, bool refuse, bool counting) {
    if (refuse && substitutions != 0) {
        return Fail(ERROR_NO_UNICODE_TRANSLATION);
    }
    if (status == U_BUFFER_OVERFLOW_ERROR && !counting) {
        return Fail(ERROR_INSUFFICIENT_BUFFER);
    }
    return U_FAILURE(status) && status != U_BUFFER_OVERFLOW_ERROR ? Fail(ERROR_INVALID_PARAMETER) : count;
}

int DecodeUtf8(DWORD flags, std::string_view text, LPWSTR target, int capacity) {
    if ((flags & ~MB_ERR_INVALID_CHARS) != 0) {
        return Fail(ERROR_INVALID_FLAGS);
    }
    UErrorCode status = U_ZERO_ERROR;
    int count = 0;
    int substitutions = 0;
    u_strFromUTF8WithSub(target, capacity, &count, text.data(), static_cast<int>(text.size()), kReplacementUnit, &substitutions,
                         &status);
    return FinishUtf8(status, count, substitutions, (flags & MB_ERR_INVALID_CHARS) != 0, capacity == 0);
}

int EncodeUtf8(DWORD flags, std::u16string_view text, LPSTR target, int capacity) {
    if ((flags & ~WC_ERR_INVALID_CHARS) != 0) {
        return Fail(ERROR_INVALID_FLAGS);
    }
    UErrorCode status = U_ZERO_ERROR;
    int count = 0;
    int substitutions = 0;
    u_strToUTF8WithSub(target, capacity, &count, text.data(), static_cast<int>(text.size()), kReplacementUnit, &substitutions,
                       &status);
    return FinishUtf8(status, count, substitutions, (flags & WC_ERR_INVALID_CHARS) != 0, capacity == 0);
}

std::uint16_t DefaultCode(const CodePage& page, LPCSTR chosen) {
    if (chosen == nullptr) {
        return page.encode[u'?'];
    }
    const auto first = static_cast<unsigned char>(chosen[0]);
    return page.lead[first] && chosen[1] != 0 ? static_cast<std::uint16_t>((first << 8) | static_cast<unsigned char>(chosen[1]))
                                              : first;
}

int EncodePage(const CodePage& page, DWORD flags, std::u16string_view text, Target<char> out, bool counting, LPCSTR default_char,
               LPBOOL used_default) {
    if ((flags & ~WC_NO_BEST_FIT_CHARS) != 0) {
        return Fail(ERROR_INVALID_FLAGS);
    }
    bool used = false;
    for (char16_t unit : text) {
        std::uint16_t code = page.encode[unit];
        if (!page.Has(unit)) {
            const char16_t fit = (flags & WC_NO_BEST_FIT_CHARS) != 0 ? u'\0' : kawin::BestFit(page, unit);
            used |= fit == 0;
            code = fit == 0 ? DefaultCode(page, default_char) : page.encode[fit];
        }
        if (code > 0xFF) {
            out.Put(static_cast<char>(code >> 8), static_cast<char>(code & 0xFF));
        } else {
            out.Put(static_cast<char>(code));
        }
    }
    if (used_default != nullptr) {
        *used_default = used;
    }
    return out.Finish(counting);
}

void FillInfo(const CodePage& page, CPINFO& info) {
    info = {page.IsDoubleByte() ? 2U : 1U, {static_cast<BYTE>(page.encode[u'?']), 0}, {}};
    std::size_t range = 0;
    for (std::size_t byte = 1; byte < 256 && range < MAX_LEADBYTES; ++byte) {
        if (page.lead[byte] != page.lead[byte - 1]) {
            info.LeadByte[range++] = static_cast<BYTE>(page.lead[byte] ? byte : byte - 1);
        }
    }
}

}  // namespace

int MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR text, int length, LPWSTR target, int capacity) noexcept {
    return kawin::NoThrow([&]() -> int {
        const Named page(codePage);
        if (!AreArgumentsGood(text, length, target, capacity) || !page.IsValid()) {
            return Fail(ERROR_INVALID_PARAMETER);
        }
        const std::string_view input = Input(text, length);
        return page.utf8 ? DecodeUtf8(flags, input, target, capacity) : DecodePage(*page.table, flags, input, target, capacity);
    });
}

int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR text, int length, LPSTR target, int capacity, LPCSTR defaultChar,
                        LPBOOL usedDefault) noexcept {
    return kawin::NoThrow([&]() -> int {
        const Named page(codePage);
        const bool wants_default = defaultChar != nullptr || usedDefault != nullptr;
        if (!AreArgumentsGood(text, length, target, capacity) || !page.IsValid() || (page.utf8 && wants_default)) {
            return Fail(ERROR_INVALID_PARAMETER);
        }
        const std::u16string_view input = Input(text, length);
        return page.utf8 ? EncodeUtf8(flags, input, target, capacity)
                         : EncodePage(*page.table, flags, input, Target<char>(target, capacity), capacity == 0, defaultChar,
                                      usedDefault);
    });
}

UINT GetACP() noexcept {
    return kawin::NoThrow(AnsiCodePage);
}

UINT GetOEMCP() noexcept {
    return kawin::NoThrow(OemCodePage);
}

BOOL IsValidCodePage(UINT codePage) noexcept {
    return kawin::NoThrow([&]() -> BOOL { return codePage > CP_THREAD_ACP && Named(codePage).IsValid(); });
}

BOOL GetCPInfo(UINT codePage, LPCPINFO info) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        const Named page(codePage);
        if (info == nullptr || !page.IsValid()) {
            return Fail(ERROR_INVALID_PARAMETER);
        }
        if (page.utf8) {
            constexpr UINT kMostUtf8Bytes = 4;
            *info = {kMostUtf8Bytes, {'?', 0}, {}};
        } else {
            FillInfo(*page.table, *info);
        }
        return TRUE;
    });
}

BOOL IsDBCSLeadByteEx(UINT codePage, BYTE byte) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        const Named page(codePage);
        return page.IsValid() ? !page.utf8 && page.table->lead[byte] : Fail(ERROR_INVALID_PARAMETER);
    });
}
