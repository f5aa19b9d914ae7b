// What the system keeps in its settings, and this platform in variables: the ANSI code page, the user's locale and language.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>

#include "support/child_process.h"
#include "support/environment.h"

namespace {

// Whether the program, started with KADATA_ACP=args[0], has the ANSI and OEM code pages args[1] and args[2].
int CodePagesOfChild(const test::ChildArgs& args) {
    return GetACP() != static_cast<UINT>(_wtoi(args[1].c_str())) || GetOEMCP() != static_cast<UINT>(_wtoi(args[2].c_str()));
}
REGISTER_CHILD(CodePagesOfChild)

TEST(LinuxEnvironment, NamesAValidAnsiCodePageElseItIsWesternEuropean) {
    const test::ChildArgs rows[] = {
        {_T(""), _T("1252"), _T("850")},        {_T("437"), _T("437"), _T("437")},       {_T("1250"), _T("1250"), _T("852")},
        {_T("932"), _T("932"), _T("932")},      {_T("65001"), _T("65001"), _T("65001")}, {_T("4711"), _T("1252"), _T("850")},
        {_T("rubbish"), _T("1252"), _T("850")},
    };
    for (const test::ChildArgs& row : rows) {
        const test::InEnvironment chosen(_T("KADATA_ACP"), row[0].c_str());
        EXPECT_EQ(test::ChildProcess({_T("CodePagesOfChild"), row[0], row[1], row[2]}).Wait(30000), 0u) << &row - rows;
    }
}

// All three at once; null removes.
struct Variables {
    Variables(const TCHAR* lc_all, const TCHAR* lc_time, const TCHAR* lang)
        : all(_T("LC_ALL"), lc_all), time(_T("LC_TIME"), lc_time), language(_T("LANG"), lang) {}
    test::InEnvironment all, time, language;
};

TEST(LinuxEnvironment, NamesTheUsersLocaleInTheFirstVariableThatThereIs) {
    const struct {
        const TCHAR *lc_all, *lc_time, *lang;
        LCID locale;
        const TCHAR* short_date;
        int order;  // of a-umlaut and z
    } rows[] = {{_T("de_DE.UTF-8"), _T("en_GB"), _T("ja_JP"), 0x0407, _T("dd.MM.yyyy"), -1},
                {nullptr, _T("en_GB.UTF-8"), _T("ja_JP"), 0x0809, _T("dd/MM/yyyy"), -1},
                {_T(""), nullptr, _T("sv_SE@euro"), 0x041D, _T("yyyy-MM-dd"), 1},
                {nullptr, nullptr, nullptr, 0x0409, _T("M/d/yyyy"), -1},
                {_T("C"), nullptr, _T("de_DE"), 0x0409, _T("M/d/yyyy"), -1},
                {_T("POSIX"), nullptr, nullptr, 0x0409, _T("M/d/yyyy"), -1},
                {_T("de"), nullptr, nullptr, 0x0407, _T("dd.MM.yyyy"), -1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        const Variables set(row.lc_all, row.lc_time, row.lang);
        TCHAR pattern[80];
        ASSERT_GT(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, pattern, 80), 0);
        EXPECT_EQ(std::u16string(pattern), row.short_date);
        EXPECT_EQ(GetUserDefaultLCID(), row.locale);
        EXPECT_EQ(GetUserDefaultLangID(), static_cast<LANGID>(row.locale));
        EXPECT_EQ(lstrcmpW(u"\u00E4", u"z"), row.order);
    }
}

TEST(LinuxEnvironment, HasPlainSpacesGregorianYearsAndAsciiDigitsInEveryLocale) {
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

TEST(LinuxEnvironment, ChoosesTheLanguageOfResourcesElseANeighbourElseEnglishElseTheFirst) {
    const struct {
        const TCHAR* locale;
        WORD id;
        std::string data;
    } rows[] = {
        {_T("fr_FR.UTF-8"), 100, "fr-FR"}, {_T("de_CH.UTF-8"), 100, "de-DE"}, {_T("ja_JP"), 100, "en-US"},
        {_T("en_GB"), 100, "en-US"},       {_T("de_DE"), 101, "only fr-FR"},
    };
    for (const auto& row : rows) {
        const test::InEnvironment chosen(_T("LC_ALL"), row.locale);
        const HRSRC resource = FindResourceW(nullptr, MAKEINTRESOURCEW(row.id), RT_RCDATA);
        const auto* const bytes = static_cast<const char*>(LockResource(LoadResource(nullptr, resource)));
        ASSERT_NE(bytes, nullptr);
        EXPECT_EQ(std::string(bytes, SizeofResource(nullptr, resource)), row.data) << &row - rows;
    }
}

}  // namespace
