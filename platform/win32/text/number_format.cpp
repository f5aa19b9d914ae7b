#include "number_format.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "../base/error_map.h"
#include "locale.h"
#include "locale_data.h"
#include "no_throw.h"
#include "text_out.h"

namespace {

using kawin::Fail;
using kawin::LocaleData;
using Text = std::u16string;
using View = std::u16string_view;

constexpr UINT kMostDigits = 9;
constexpr UINT kLastNegativeOrder = 4;
constexpr UINT kBase = 10;
constexpr View kDigits = u"0123456789";

struct Number {
    bool negative = false;
    Text whole;     // without leading zeros
    Text fraction;  // as long as it was written
};

struct Form {
    UINT digits = 2;
    bool leading_zero = true;
    UINT grouping = 0;
    View decimal, thousand;
    UINT negative_order = 1;
};

// "3;0" is 3: the last group repeats. "3" is 30: it does not.
UINT GroupingOf(View setting) {
    UINT grouping = 0;
    for (const char16_t unit : setting) {
        grouping = unit == u';' ? grouping : grouping * kBase + (unit - u'0');
    }
    return setting.ends_with(u";0") ? grouping / kBase : grouping * kBase;
}

Form FormOf(const LocaleData& locale) {
    Form form;
    form.grouping = GroupingOf(locale.grouping);
    form.decimal = locale.decimal;
    form.thousand = locale.thousand;
    return form;
}

// Nothing when it is no format.
std::optional<Form> FormOf(const NUMBERFMTW& format) {
    if (format.NumDigits > kMostDigits || format.LeadingZero > 1 || format.NegativeOrder > kLastNegativeOrder ||
        format.lpDecimalSep == nullptr || format.lpThousandSep == nullptr) {
        return {};
    }
    return Form{format.NumDigits,    format.LeadingZero == 1, format.Grouping,
                format.lpDecimalSep, format.lpThousandSep,    format.NegativeOrder};
}

// Nothing when it is no number.
std::optional<Number> Read(View value) {
    Number number;
    number.negative = value.starts_with(u'-');
    value.remove_prefix(number.negative ? 1 : 0);
    const std::size_t point = std::min(value.find(u'.'), value.size());
    const View whole = value.substr(0, point);
    const View fraction = value.substr(std::min(point + 1, value.size()));
    const bool is_digits = whole.find_first_not_of(kDigits) == View::npos && fraction.find_first_not_of(kDigits) == View::npos;
    if (!is_digits || whole.size() + fraction.size() == 0) {
        return {};
    }
    number.whole = whole.substr(std::min(whole.find_first_not_of(u'0'), whole.size()));
    number.fraction = fraction;
    return number;
}

// Adds one in the last place.
void Increment(Text& digits) {
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
        if (*digit != u'9') {
            ++*digit;
            return;
        }
        *digit = u'0';
    }
    digits.insert(digits.begin(), u'1');
}

void Round(Number& number, UINT places) {
    const bool up = number.fraction.size() > places && number.fraction[places] >= u'5';
    number.fraction.resize(places, u'0');
    if (up) {
        Text all = number.whole + number.fraction;
        Increment(all);
        number.whole = all.substr(0, all.size() - places);
        number.fraction = all.substr(all.size() - places);
    }
    const bool is_zero = number.whole.empty() && number.fraction.find_first_not_of(u'0') == Text::npos;
    number.negative = number.negative && !is_zero;
}

// From the decimal separator on: the first size is the grouping's first digit, and the last repeats unless it is 0.
Text Grouped(const Text& whole, UINT grouping, View separator) {
    const std::string sizes = std::to_string(grouping);
    Text grouped = whole;
    std::size_t place = whole.size();
    for (std::size_t i = 0;; i = std::min(i + 1, sizes.size() - 1)) {
        const auto size = static_cast<std::size_t>(sizes[i] - '0');
        if (size == 0 || place <= size) {
            return grouped;
        }
        place -= size;
        grouped.insert(place, separator);
    }
}

Text WithSign(const Text& text, UINT order) {
    switch (order) {
        case 0:
            return u"(" + text + u")";
        case 2:
            return u"- " + text;
        case 3:
            return text + u"-";
        case 4:
            return text + u" -";
        default:
            return u"-" + text;
    }
}

Text Write(Number number, const Form& form) {
    Round(number, form.digits);
    if (number.whole.empty() && (form.leading_zero || form.digits == 0)) {
        number.whole = u"0";
    }
    Text text = Grouped(number.whole, form.grouping, form.thousand);
    if (form.digits != 0) {
        text += form.decimal;
        text += number.fraction;
    }
    return number.negative ? WithSign(text, form.negative_order) : text;
}

}  // namespace

int GetNumberFormatW(LCID locale, DWORD flags, LPCWSTR value, const NUMBERFMTW* format, LPWSTR target, int capacity) noexcept {
    return kawin::NoThrow([&]() -> int {
        if ((flags & ~LOCALE_NOUSEROVERRIDE) != 0 || (flags != 0 && format != nullptr)) {
            return Fail(ERROR_INVALID_FLAGS);
        }
        const LocaleData* const data = kawin::FindLocale(locale);
        if (data == nullptr || value == nullptr || !kawin::IsTarget(target, capacity)) {
            return Fail(ERROR_INVALID_PARAMETER);
        }
        const std::optional<Form> form = format != nullptr ? FormOf(*format) : FormOf(*data);
        const std::optional<Number> number = Read(value);
        return form && number ? kawin::PutText(Write(*number, *form), target, capacity) : Fail(ERROR_INVALID_PARAMETER);
    });
}
