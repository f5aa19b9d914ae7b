#include "short_date.h"

namespace kadata {
namespace {

constexpr int PATTERN_CAPACITY = 80;
constexpr int TEXT_CAPACITY = 30;

// The user's short date pattern with a year of four digits; empty when there is none.
CString ShortDatePattern() {
    TCHAR buffer[PATTERN_CAPACITY] = {};
    if (GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, buffer, PATTERN_CAPACITY) == 0) {
        return CString();
    }
    CString pattern(buffer);
    const int year = pattern.Find(_T("yy"));
    if (year >= 0 && pattern.Find(_T("yyyy")) < 0) {
        pattern.Insert(year, _T("yy"));
    }
    return pattern;
}

}  // namespace

CString ShortDate(const SYSTEMTIME& day) {
    const CString pattern = ShortDatePattern();
    TCHAR text[TEXT_CAPACITY] = {};
    if (pattern.IsEmpty() || GetDateFormatW(LOCALE_USER_DEFAULT, 0, &day, pattern, text, TEXT_CAPACITY) == 0) {
        return CString();
    }
    return CString(text);
}

}  // namespace kadata
