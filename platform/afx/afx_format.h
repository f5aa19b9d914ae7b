#pragma once

// Type-safe printf-like formatting: the ground under CString::Format, the log and every other function that takes a format.
//
// A format means what it means to the wide C run-time of the home platform:
//   %d %i %u %x %X %o  with h hh l ll z t j I I32 I64 (l is 32 bits wide, as there);  %c %s wide;  %C %S %hc %hs narrow;
//   %lc %ls %ws wide;  %e %E %f %F %g %G, always with a decimal point;  %p, 16 upper-case digits;  %%;
//   flags - + blank # 0, width and precision as numbers or as *. The 0 flag pads text with zeros too, as it does there.
// Narrow text is converted from the ANSI code page; a precision counts its bytes. A null text prints "(null)".
// Differences, all towards safety:
//   - Arguments know their type. A literal format that does not fit them does not compile.
//   - In a run-time format a missing argument, or one of the wrong kind, prints "(?)"; an unknown conversion prints as it
//     stands; spare arguments are ignored; an integer is cut, or extended, to the width that its conversion names.
//   - Widths, and precisions of integers, are cut to kMaxFieldWidth, precisions of reals to kMaxRealPrecision.
//   - There is no %n.
//
// A function of one's own that takes a format has two overloads, and literals choose the first:
//   template <class... Args>
//   void Write(afx::FormatString<std::type_identity_t<Args>...> format, const Args&... args)
//       { const auto list = afx::MakeFormatArgs(args...); WriteList(format.Text(), list.data(), list.size()); }
//   template <afx::RunTimeFormat Text, class... Args>
//   void Write(const Text& format, const Args&... args)
//       { const auto list = afx::MakeFormatArgs(args...); WriteList(format, list.data(), list.size()); }

#include <array>
#include <string>

#include "afx_format_check.h"

namespace afx {

constexpr int kMaxRealPrecision = 1100;  // no double has a digit other than 0 further behind its point

// One argument, its type erased. Text is kept as a pointer: use it while the argument that it was built from lives.
class FormatArg {
public:
    template <class T>
    requires(!std::is_same_v<T, FormatArg>) FormatArg(const T& value)
    noexcept : shape_(ShapeOf<T>()) {
        static_assert(KindOf<T>() != ArgKind::Unsupported, "a value of this type cannot be formatted");
        if constexpr (KindOf<T>() == ArgKind::Real)
            value_.real = static_cast<double>(value);
        else if constexpr (IsIntegerKind(KindOf<T>()))
            value_.bits = static_cast<std::uint64_t>(value);
        else if constexpr (WideTextObject<T>)
            value_.pointer = static_cast<LPCTSTR>(value);
        else if constexpr (HasCStr<T, LPCTSTR> || HasCStr<T, const char*>)
            value_.pointer = value.c_str();
        else
            value_.pointer = AddressIn(value);
    }

    ArgKind Kind() const noexcept { return shape_.kind; }
    std::size_t Size() const noexcept { return shape_.size; }

    // Which of these may be asked follows from Kind(). Bits are an integer's value, extended by its own sign.
    std::uint64_t Bits() const noexcept { return value_.bits; }
    double Real() const noexcept { return value_.real; }
    const void* Pointer() const noexcept { return value_.pointer; }
    LPCTSTR WideText() const noexcept { return static_cast<LPCTSTR>(value_.pointer); }
    const char* NarrowText() const noexcept { return static_cast<const char*>(value_.pointer); }

private:
    template <class T>
    static const void* AddressIn(const T& value) noexcept {
        using Value = std::decay_t<T>;
        if constexpr (std::is_null_pointer_v<Value>)
            return nullptr;
        else if constexpr (std::is_function_v<std::remove_pointer_t<Value>>)
            return reinterpret_cast<const void*>(static_cast<Value>(value));
        else
            return const_cast<const void*>(static_cast<const volatile void*>(value));
    }

    union {
        std::uint64_t bits;
        double real;
        const void* pointer;
    } value_;
    ArgShape shape_;
};

template <class... Args>
std::array<FormatArg, sizeof...(Args)> MakeFormatArgs(const Args&... args) noexcept {
    return {FormatArg(args)...};
}

// A literal that was compared with the types of its arguments while it was compiled.
template <class... Args>
class FormatString {
public:
    template <std::size_t N>
    consteval FormatString(const TCHAR (&literal)[N]) : text_(literal) {
        CheckFormat<Args...>(literal);
    }

    constexpr LPCTSTR Text() const noexcept { return text_; }

private:
    LPCTSTR text_;
};

// What may be a format that is only known at run time: an LPCTSTR or a CString, never an array. (A TCHAR buffer that holds
// a format is passed as static_cast<LPCTSTR>(buffer).)
template <class T>
concept RunTimeFormat = !std::is_array_v<T> && std::is_convertible_v<const T&, LPCTSTR>;

// Writes at most capacity - 1 units and a zero behind them, and returns how many units that were, without the zero. What
// does not fit is cut off silently, never inside a surrogate pair. With capacity 0 nothing is written. Does not allocate,
// but for narrow text of more than 256 bytes that is not plain ASCII. A null format is an empty one. Never throws
// anything but std::bad_alloc.
KADATA_API std::size_t FormatInto(TCHAR* buffer, std::size_t capacity, LPCTSTR format, const FormatArg* args, std::size_t count);

// Appends all of it. No argument may point into the target itself.
KADATA_API void AppendFormat(std::basic_string<TCHAR>& target, LPCTSTR format, const FormatArg* args, std::size_t count);

}  // namespace afx
