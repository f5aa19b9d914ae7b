#pragma once

// The grammar of printf-like formats: what a conversion is, and which kinds of argument it takes. Read in two places: while
// a literal format is compiled (CheckFormat), and when a format is carried out (afx_format.cpp). afx_format.h has the rules.

#include <kadata_export.h>
#include <tchar.h>
#include <windows.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace afx {

enum class ArgKind : std::uint8_t { Signed, Unsigned, WideChar, NarrowChar, Real, WideText, NarrowText, Pointer, Unsupported };

struct ArgShape {
    ArgKind kind;
    std::uint8_t size;  // in bytes
};

template <class T>
concept WideTextObject = std::is_class_v<T> && std::is_convertible_v<const T&, LPCTSTR>;

template <class T, class Pointer>
concept HasCStr = std::is_class_v<T> && !WideTextObject<T> && requires(const T& value) {
    { value.c_str() } -> std::convertible_to<Pointer>;
};

template <class T>
constexpr ArgKind KindOf() noexcept {
    using Value = std::decay_t<T>;
    using Target = std::remove_cv_t<std::remove_pointer_t<Value>>;
    if constexpr (WideTextObject<Value> || HasCStr<Value, LPCTSTR>)
        return ArgKind::WideText;
    else if constexpr (HasCStr<Value, const char*>)
        return ArgKind::NarrowText;
    else if constexpr (std::is_same_v<Value, char>)
        return ArgKind::NarrowChar;
    else if constexpr (std::is_same_v<Value, wchar_t> || std::is_same_v<Value, char16_t> || std::is_same_v<Value, char32_t>)
        return ArgKind::WideChar;
    else if constexpr (std::is_enum_v<Value>)
        return std::is_signed_v<std::underlying_type_t<Value>> ? ArgKind::Signed : ArgKind::Unsigned;
    else if constexpr (std::is_integral_v<Value>)
        return std::is_signed_v<Value> ? ArgKind::Signed : ArgKind::Unsigned;
    else if constexpr (std::is_floating_point_v<Value>)
        return ArgKind::Real;
    else if constexpr (std::is_pointer_v<Value> && std::is_same_v<Target, TCHAR>)
        return ArgKind::WideText;
    else if constexpr (std::is_pointer_v<Value> && std::is_same_v<Target, char>)
        return ArgKind::NarrowText;
    else if constexpr (std::is_pointer_v<Value> || std::is_null_pointer_v<Value>)
        return ArgKind::Pointer;
    else
        return ArgKind::Unsupported;
}

template <class T>
constexpr ArgShape ShapeOf() noexcept {
    return {KindOf<T>(), static_cast<std::uint8_t>(sizeof(std::decay_t<T>) > 255 ? 255 : sizeof(std::decay_t<T>))};
}

// How many bits of an integer a conversion shows, or for text and characters which width is meant.
enum class SizePrefix : std::uint8_t { None, Byte, Short, Long, Wide, Bits32, Bits64, LongDouble };

struct Conversion {
    bool left = false;       // -
    bool plus = false;       // +
    bool blank = false;      // space
    bool alternate = false;  // #
    bool zero = false;       // 0
    bool widthFromArgument = false;
    bool precisionFromArgument = false;
    SizePrefix prefix = SizePrefix::None;
    TCHAR letter = 0;  // 0 when the text is no conversion
    int width = 0;
    int precision = -1;  // -1: none given
};

// Widths, and precisions of integers, above this count as this: a hostile format must not fill the memory with blanks.
constexpr int kMaxFieldWidth = 65535;

namespace detail {

// The value saturates well below the range's end, so that a thousand digits are no overflow.
constexpr int ReadNumber(const TCHAR*& at) noexcept {
    constexpr int kEnough = 100'000'000;
    int value = 0;
    for (; *at >= '0' && *at <= '9'; ++at)
        value = value >= kEnough ? value : value * 10 + (*at - '0');
    return value;
}

constexpr bool SetFlag(Conversion& conversion, TCHAR c) noexcept {
    switch (c) {
        case '-':
            return conversion.left = true;
        case '+':
            return conversion.plus = true;
        case ' ':
            return conversion.blank = true;
        case '#':
            return conversion.alternate = true;
        case '0':
            return conversion.zero = true;
        default:
            return false;
    }
}

constexpr SizePrefix ReadIntegerSize(const TCHAR*& at) noexcept {  // behind "I"
    if (at[0] == '6' && at[1] == '4') {
        at += 2;
        return SizePrefix::Bits64;
    }
    if (at[0] == '3' && at[1] == '2') {
        at += 2;
        return SizePrefix::Bits32;
    }
    return SizePrefix::Bits64;  // the size of a pointer
}

constexpr SizePrefix ReadDoubled(const TCHAR*& at, TCHAR letter, SizePrefix one, SizePrefix two) noexcept {
    if (*at != letter)
        return one;
    ++at;
    return two;
}

constexpr SizePrefix ReadPrefix(const TCHAR*& at) noexcept {
    switch (*at) {
        case 'h':
            return ReadDoubled(++at, 'h', SizePrefix::Short, SizePrefix::Byte);
        case 'l':
            return ReadDoubled(++at, 'l', SizePrefix::Long, SizePrefix::Bits64);
        case 'I':
            return ReadIntegerSize(++at);
        case 'w':
            ++at;
            return SizePrefix::Wide;
        case 'L':
            ++at;
            return SizePrefix::LongDouble;
        case 'z':
        case 't':
        case 'j':
            ++at;
            return SizePrefix::Bits64;
        default:
            return SizePrefix::None;
    }
}

constexpr bool IsInteger(TCHAR letter) noexcept {
    return letter == 'd' || letter == 'u' || letter == 'x' || letter == 'i' || letter == 'X' || letter == 'o';
}
constexpr bool IsReal(TCHAR letter) noexcept {
    return letter == 'f' || letter == 'g' || letter == 'e' || letter == 'F' || letter == 'G' || letter == 'E';
}
constexpr bool IsText(TCHAR letter) noexcept {
    return letter == 's' || letter == 'S';
}
constexpr bool IsCharacter(TCHAR letter) noexcept {
    return letter == 'c' || letter == 'C';
}

}  // namespace detail

// Reads what stands behind a '%' and leaves `at` behind it. The letter stays 0, and `at` where it came to, when this is no
// conversion; never reads past the terminating zero. "%%" has the letter '%'.
constexpr Conversion ReadConversion(const TCHAR*& at) noexcept {
    Conversion conversion;
    while (detail::SetFlag(conversion, *at))
        ++at;
    if (*at == '*') {
        conversion.widthFromArgument = true;
        ++at;
    } else {
        conversion.width = detail::ReadNumber(at);
    }
    if (*at == '.') {
        ++at;
        if (*at == '*') {
            conversion.precisionFromArgument = true;
            ++at;
        } else {
            conversion.precision = detail::ReadNumber(at);
        }
    }
    conversion.prefix = detail::ReadPrefix(at);
    if (detail::IsInteger(*at) || detail::IsText(*at) || detail::IsCharacter(*at) || detail::IsReal(*at) || *at == 'p' ||
        *at == '%')
        conversion.letter = *at++;
    return conversion;
}

// These are wide functions: %s and %c are wide, %S and %C narrow, and a prefix has the last word.
constexpr bool IsNarrow(const Conversion& conversion) noexcept {
    if (conversion.prefix == SizePrefix::Short)
        return true;
    if (conversion.prefix == SizePrefix::Long || conversion.prefix == SizePrefix::Wide)
        return false;
    return conversion.letter == 'S' || conversion.letter == 'C';
}

constexpr bool IsIntegerKind(ArgKind kind) noexcept {
    return kind == ArgKind::Signed || kind == ArgKind::Unsigned || kind == ArgKind::WideChar || kind == ArgKind::NarrowChar;
}

constexpr bool AcceptsKind(const Conversion& conversion, ArgKind kind) noexcept {
    if (detail::IsInteger(conversion.letter))
        return IsIntegerKind(kind);
    if (detail::IsText(conversion.letter))
        return kind == (IsNarrow(conversion) ? ArgKind::NarrowText : ArgKind::WideText);
    if (detail::IsCharacter(conversion.letter))
        return IsIntegerKind(kind) && !(IsNarrow(conversion) && kind == ArgKind::WideChar);
    if (detail::IsReal(conversion.letter))
        return kind == ArgKind::Real;
    return conversion.letter == 'p' && (kind == ArgKind::Pointer || kind == ArgKind::WideText || kind == ArgKind::NarrowText);
}

// An integer of 8 bytes wants a prefix that says so, and such a prefix wants an integer of 8 bytes.
constexpr bool AcceptsSize(const Conversion& conversion, ArgShape shape) noexcept {
    if (!detail::IsInteger(conversion.letter) && !detail::IsCharacter(conversion.letter))
        return true;
    return (shape.size == 8) == (conversion.prefix == SizePrefix::Bits64);
}

// What the compiler names when a literal format is wrong: none of these is defined, so that calling one cannot be constant.
namespace format_error {
void UnknownConversion();
void ArgumentIsMissing();
void ArgumentIsNotUsed();
void ArgumentIsOfTheWrongKind();
void IntegerArgumentIsOfTheWrongSize();
void WidthOrPrecisionArgumentIsNoInt();
}  // namespace format_error

namespace detail {

class FormatChecker {
public:
    constexpr FormatChecker(const ArgShape* shapes, std::size_t count) noexcept : shapes_(shapes), count_(count) {}

    constexpr void Check(const TCHAR* at) {
        while (*at != 0) {
            if (*at++ == '%')
                CheckConversion(ReadConversion(at));
        }
        if (next_ != count_)
            format_error::ArgumentIsNotUsed();
    }

private:
    constexpr void CheckConversion(const Conversion& conversion) {
        if (conversion.letter == 0)
            format_error::UnknownConversion();
        if (conversion.letter == '%')
            return;
        if (conversion.widthFromArgument)
            CheckStar(Next());
        if (conversion.precisionFromArgument)
            CheckStar(Next());
        const ArgShape shape = Next();
        if (!AcceptsKind(conversion, shape.kind))
            format_error::ArgumentIsOfTheWrongKind();
        if (!AcceptsSize(conversion, shape))
            format_error::IntegerArgumentIsOfTheWrongSize();
    }

    static constexpr void CheckStar(ArgShape shape) {
        if (!IsIntegerKind(shape.kind) || shape.size > 4)
            format_error::WidthOrPrecisionArgumentIsNoInt();
    }

    constexpr ArgShape Next() {
        if (next_ == count_)
            format_error::ArgumentIsMissing();
        return shapes_[next_++];
    }

    const ArgShape* shapes_;
    std::size_t count_;
    std::size_t next_ = 0;
};

}  // namespace detail

// Is constant exactly when the format fits arguments of these types.
template <class... Args>
constexpr void CheckFormat(const TCHAR* format) {
    const ArgShape shapes[sizeof...(Args) + 1] = {ShapeOf<Args>()...};
    detail::FormatChecker(shapes, sizeof...(Args)).Check(format);
}

}  // namespace afx
