#pragma once

// The words of formulas: numbers and functions. Internal to the library.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <optional>

#include "formula.h"

namespace kadata::formula {

// Powers of ten that a double holds exactly, and the largest number up to which it holds every one: a product or quotient of two
// such is rounded once, and so correctly.
inline constexpr double EXACT_POWERS[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                          1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
inline constexpr std::uint64_t LARGEST_EXACT = std::uint64_t{1} << std::numeric_limits<double>::digits;

inline bool IsDigit(TCHAR c) {
    return c >= _T('0') && c <= _T('9');
}

inline bool IsPoint(TCHAR c) {
    return c == _T('.') || c == _T(',');
}

// The digits that stand there, behind those of `value`. Too many of them are too much for it.
inline std::uint64_t ReadDigits(const TCHAR*& at, std::uint64_t value) {
    constexpr std::uint64_t kBase = 10;
    for (; IsDigit(*at); ++at) {
        value = value * kBase + static_cast<std::uint64_t>(*at - _T('0'));
    }
    return value;
}

// At an E: the digits behind it; 0, and `at` stays, without any. It stops growing at a value that no text has the digits for.
std::ptrdiff_t ReadExponent(const TCHAR*& at);

// A number of any length; `exponent` is the one that it ends with.
double RoundedNumber(TextView text, std::ptrdiff_t exponent);

// Digits, point or comma, digits, and E with digits: never a sign. `at` moves behind it, and stays where there is no number,
// which is 0. Something else than a digit has to stand behind the text. Correctly rounded; beyond the range it is infinity or 0.
inline double ReadNumber(const TCHAR*& at) {
    const TCHAR* const start = at;
    std::uint64_t value = ReadDigits(at, 0);
    std::ptrdiff_t digits = at - start;
    std::ptrdiff_t behind_point = 0;
    if (IsPoint(*at)) {
        const TCHAR* const fraction = ++at;
        value = ReadDigits(at, value);
        behind_point = at - fraction;
        digits += behind_point;
    }
    if (digits == 0) {
        at = start;
        return 0;
    }
    const std::ptrdiff_t exponent = *at == _T('e') || *at == _T('E') ? ReadExponent(at) : 0;
    const std::ptrdiff_t power = exponent - behind_point;
    if (digits > std::numeric_limits<std::uint64_t>::digits10 || value > LARGEST_EXACT ||
        std::abs(power) >= static_cast<std::ptrdiff_t>(std::size(EXACT_POWERS))) {
        return RoundedNumber(TextView(start, static_cast<std::size_t>(at - start)), exponent);
    }
    const auto exact = static_cast<double>(value);
    return power < 0 ? exact / EXACT_POWERS[-power] : exact * EXACT_POWERS[power];
}

// Nothing for an unknown one.
std::optional<double> CallFunction(TextView name, double argument);

}  // namespace kadata::formula
