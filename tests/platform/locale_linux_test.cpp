// The user's locale, which on this platform the environment names.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>

#include "support/environment.h"

namespace {

// All three at once; null removes.
struct Variables {
    Variables(const TCHAR* lc_all, const TCHAR* lc_time, const TCHAR* lang)
        : all(_T("LC_ALL"), lc_all), time(_T("LC_TIME"), lc_time), language(_T("LANG"), lang) {}
    test::InEnvironment all, time, language;
};

TEST(UserLocale, IsTheFirstVariableThatNamesOne) {
    const struct {
        const TCHAR *lc_all, *lc_time, *lang;
        LCID locale;
        const TCHAR* short_date;
    } rows[] = {{_T("de_DE.UTF-8"), _T("en_GB"), _T("ja_JP"), 0x0407, _T("dd.MM.yyyy")},
                {nullptr, _T("en_GB.UTF-8"), _T("ja_JP"), 0x0809, _T("dd/MM/yyyy")},
                {_T(""), nullptr, _T("sv_SE@euro"), 0x041D, _T("yyyy-MM-dd")},
                {nullptr, nullptr, nullptr, 0x0409, _T("M/d/yyyy")},
                {_T("C"), nullptr, _T("de_DE"), 0x0409, _T("M/d/yyyy")},
                {_T("POSIX"), nullptr, nullptr, 0x0409, _T("M/d/yyyy")},
                {_T("de"), nullptr, nullptr, 0x0407, _T("dd.MM.yyyy")}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        const Variables set(row.lc_all, row.lc_time, row.lang);
        TCHAR pattern[80];
        ASSERT_GT(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, pattern, 80), 0);
        EXPECT_EQ(std::u16string(pattern), row.short_date);
        EXPECT_EQ(GetUserDefaultLCID(), row.locale);
        EXPECT_EQ(GetUserDefaultLangID(), static_cast<LANGID>(row.locale));
    }
}

TEST(UserLocale, HasPlainSpacesGregorianYearsAndAsciiDigits) {
    const SYSTEMTIME date = {2008, 3, 0, 5, 15, 4, 9, 0};
    for (const TCHAR* const locale : {_T("en_US"), _T("fr_FR"), _T("th_TH"), _T("ar_EG"), _T("fa_IR")}) {
        const Variables set(locale, nullptr, nullptr);
        TCHAR texts[3][120] = {};
        ASSERT_GT(GetDateFormatW(LOCALE_USER_DEFAULT, 0, &date, nullptr, texts[0], 120), 0);
        ASSERT_GT(GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &date, nullptr, texts[1], 120), 0);
        ASSERT_GT(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STHOUSAND, texts[2], 120), 0);
        EXPECT_NE(std::u16string(texts[0]).find(u"2008"), std::u16string::npos);
        EXPECT_NE(std::u16string(texts[1]).find(u":04:09"), std::u16string::npos);
        for (const TCHAR* const text : texts)
            EXPECT_EQ(std::u16string(text).find_first_of(u"\u00A0\u202F"), std::u16string::npos);
    }
}

TEST(UserLocale, DecidesTheOrderOfTexts) {
    {
        const Variables set(_T("de_DE"), nullptr, nullptr);
        EXPECT_LT(lstrcmpW(u"\u00E4", u"z"), 0);
    }
    const Variables set(_T("sv_SE"), nullptr, nullptr);
    EXPECT_GT(lstrcmpW(u"\u00E4", u"z"), 0);
}

}  // namespace
