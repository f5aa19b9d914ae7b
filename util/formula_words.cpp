#include "formula_words.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace kadata::formula {
namespace {

// Of at most four characters; 0 for all else, which is no function's.
constexpr std::uint32_t KeyOf(TextView name) {
    constexpr TCHAR kToSmall = _T('a') - _T('A');
    std::uint32_t key = 0;
    for (const TCHAR c : name.size() <= sizeof(key) ? name : TextView()) {
        const TCHAR small = c >= _T('A') && c <= _T('Z') ? static_cast<TCHAR>(c + kToSmall) : c;
        if (small < _T('a') || small > _T('z')) {
            return 0;
        }
        key = key << 8 | small;
    }
    return key;
}

}  // namespace

std::ptrdiff_t ReadExponent(const TCHAR*& at) {
    constexpr std::ptrdiff_t kBase = 10;
    constexpr std::ptrdiff_t kEndless = 1'000'000'000'000;
    std::ptrdiff_t exponent = 0;
    if (IsDigit(at[1])) {
        for (++at; IsDigit(*at); ++at) {
            exponent = std::min(exponent * kBase + (*at - _T('0')), kEndless);
        }
    }
    return exponent;
}

double RoundedNumber(TextView text, std::ptrdiff_t exponent) {
    std::string narrow(text.size(), '\0');
    std::transform(text.begin(), text.end(), narrow.begin(), [](TCHAR c) { return IsPoint(c) ? '.' : static_cast<char>(c); });
    double value = 0;
    const auto [end, error] = std::from_chars(narrow.data(), narrow.data() + narrow.size(), value);
    if (error != std::errc::result_out_of_range) {
        return value;
    }
    const std::size_t point = std::min(narrow.find_first_of(".eE"), narrow.size());
    const std::size_t first = std::min(narrow.find_first_not_of("0."), narrow.size());
    const bool above_one = static_cast<std::ptrdiff_t>(point) - static_cast<std::ptrdiff_t>(first) + exponent > 0;
    return above_one ? std::numeric_limits<double>::infinity() : 0.0;
}

std::optional<double> CallFunction(TextView name, double argument) {
    switch (KeyOf(name)) {
        case KeyOf(_T("sin")):
            return std::sin(argument);
        case KeyOf(_T("cos")):
            return std::cos(argument);
        case KeyOf(_T("tan")):
            return std::tan(argument);
        case KeyOf(_T("asin")):
            return std::asin(argument);
        case KeyOf(_T("acos")):
            return std::acos(argument);
        case KeyOf(_T("atan")):
            return std::atan(argument);
        case KeyOf(_T("sinh")):
            return std::sinh(argument);
        case KeyOf(_T("cosh")):
            return std::cosh(argument);
        case KeyOf(_T("tanh")):
            return std::tanh(argument);
        case KeyOf(_T("exp")):
            return std::exp(argument);
        case KeyOf(_T("lg")):
            return std::log10(argument);
        case KeyOf(_T("ln")):
            return std::log(argument);
        case KeyOf(_T("sqr")):
            return std::sqrt(argument);
        default:
            return {};
    }
}

}  // namespace kadata::formula
