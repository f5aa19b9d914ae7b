// The user's locale, which on this platform the environment names.

#include <gtest/gtest.h>
#include <windows.h>

#include <map>
#include <string>
#include <vector>

namespace {

constexpr const TCHAR* kVariables[] = {_T("LC_ALL"), _T("LC_TIME"), _T("LANG")};

class UserLocale : public testing::Test {
protected:
    UserLocale() {
        for (const TCHAR* const name : kVariables) {
            TCHAR value[200];
            if (GetEnvironmentVariableW(name, value, 200) > 0) {
                before_[name] = value;
            }
        }
    }
    ~UserLocale() override {
        for (const TCHAR* const name : kVariables) {
            SetEnvironmentVariableW(name, before_.contains(name) ? before_[name].c_str() : nullptr);
        }
    }

    // All three at once; null removes.
    static void Set(const TCHAR* lc_all, const TCHAR* lc_time, const TCHAR* lang) {
        SetEnvironmentVariableW(_T("LC_ALL"), lc_all);
        SetEnvironmentVariableW(_T("LC_TIME"), lc_time);
        SetEnvironmentVariableW(_T("LANG"), lang);
    }

private:
    std::map<std::u16string, std::u16string> before_;
};

TEST_F(UserLocale, IsTheFirstVariableThatNamesOne) {
    const struct {
        const TCHAR *lc_all, *lc_time, *lang;
        LCID locale;
        const TCHAR* short_date;
    } rows[] = {
        {_T("de_DE.UTF-8"), _T("en_GB"), _T("ja_JP"), 0x0407, _T("dd.MM.yyyy")},
        {nullptr, _T("en_GB.UTF-8"), _T("ja_JP"), 0x0809, _T("dd/MM/yyyy")},
        {_T(""), nullptr, _T("sv_SE@euro"), 0x041D, _T("yyyy-MM-dd")},
        {nullptr, nullptr, nullptr, 0x0409, _T("M/d/yyyy")},
        {_T("C"), nullptr, _T("de_DE"), 0x0409, _T("M/d/yyyy")},
        {_T("C.UTF-8"), nullptr, nullptr, 0x0409, _T("M/d/yyyy")},
        {_T("POSIX"), nullptr, nullptr, 0x0409, _T("M/d/yyyy")},
        {_T("xx_YY"), nullptr, nullptr, 0x0409, _T("M/d/yyyy")},
        {_T("de"), nullptr, nullptr, 0x0407, _T("dd.MM.yyyy")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        Set(row.lc_all, row.lc_time, row.lang);
        TCHAR pattern[80];
        ASSERT_GT(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, pattern, 80), 0);
        EXPECT_EQ(std::u16string(pattern), row.short_date);
        EXPECT_EQ(GetUserDefaultLCID(), row.locale);
        EXPECT_EQ(GetUserDefaultLangID(), static_cast<LANGID>(row.locale));
    }
}

TEST_F(UserLocale, HasPlainSpacesGregorianYearsAndAsciiDigits) {
    const SYSTEMTIME date = {2008, 3, 0, 5, 15, 4, 9, 0};
    for (const TCHAR* const locale : {_T("en_US"), _T("fr_FR"), _T("th_TH"), _T("ar_EG"), _T("fa_IR")}) {
        Set(locale, nullptr, nullptr);
        TCHAR texts[3][120] = {};
        ASSERT_GT(GetDateFormatW(LOCALE_USER_DEFAULT, 0, &date, nullptr, texts[0], 120), 0);
        ASSERT_GT(GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &date, nullptr, texts[1], 120), 0);
        ASSERT_GT(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STHOUSAND, texts[2], 120), 0);
        EXPECT_NE(std::u16string(texts[0]).find(u"2008"), std::u16string::npos);
        EXPECT_NE(std::u16string(texts[1]).find(u":04:09"), std::u16string::npos);
        for (const TCHAR* const text : texts) {
            EXPECT_EQ(std::u16string(text).find_first_of(u"\u00A0\u202F"), std::u16string::npos);
        }
    }
}

TEST_F(UserLocale, DecidesTheOrderOfTexts) {
    Set(_T("de_DE"), nullptr, nullptr);
    EXPECT_LT(lstrcmpW(u"\u00E4", u"z"), 0);
    Set(_T("sv_SE"), nullptr, nullptr);
    EXPECT_GT(lstrcmpW(u"\u00E4", u"z"), 0);
}

}  // namespace
