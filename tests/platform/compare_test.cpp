#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <cerrno>
#include <climits>
#include <string>

#include "support/temp_folder.h"

namespace {

using test::Text;

constexpr LCID kGerman = MAKELCID(MAKELANGID(LANG_GERMAN, SUBLANG_DEFAULT), SORT_DEFAULT);
constexpr LCID kSwedish = 0x041D;

int Sign(int value) {
    return (value > 0) - (value < 0);
}

TEST(Lengths, CountNullAsEmpty) {
    EXPECT_EQ(lstrlenW(nullptr), 0);
    EXPECT_EQ(lstrlenW(_T("\u00E4b")), 2);
}

TEST(Copies, AreAlwaysEnded) {
    TCHAR target[4] = {_T('x'), _T('x'), _T('x'), _T('x')};
    EXPECT_EQ(lstrcpynW(target, _T("abcdef"), 3), target);
    EXPECT_EQ(Text(target), _T("ab"));
    EXPECT_EQ(target[3], _T('x'));
    lstrcpynW(target, _T("a"), 4);
    EXPECT_EQ(Text(target), _T("a"));
}

TEST(Comparisons, FollowTheLocale) {
    const struct {
        LCID locale;
        DWORD flags;
        const TCHAR* a;
        const TCHAR* b;
        int result;
    } rows[] = {
        {kGerman, 0, _T("Apfel"), _T("\u00C4pfel"), CSTR_LESS_THAN},
        {kGerman, 0, _T("\u00C4pfel"), _T("Birne"), CSTR_LESS_THAN},
        {kSwedish, 0, _T("\u00E4"), _T("z"), CSTR_GREATER_THAN},
        {kGerman, 0, _T("\u00E4"), _T("z"), CSTR_LESS_THAN},
        {kGerman, 0, _T("abc"), _T("ABC"), CSTR_LESS_THAN},
        {kGerman, 0, _T("b"), _T("A"), CSTR_GREATER_THAN},
        {kGerman, NORM_IGNORECASE, _T("m\u00FCller"), _T("M\u00DCLLER"), CSTR_EQUAL},
        {kGerman, NORM_IGNORECASE, _T("a"), _T("\u00E4"), CSTR_LESS_THAN},
        {kGerman, NORM_IGNORENONSPACE, _T("a"), _T("\u00E4"), CSTR_EQUAL},
        {kGerman, NORM_IGNORENONSPACE, _T("a"), _T("\u00C4"), CSTR_LESS_THAN},
        {kGerman, NORM_IGNORECASE | NORM_IGNORENONSPACE, _T("a"), _T("\u00C4"), CSTR_EQUAL},
        {LOCALE_INVARIANT, 0, _T(""), _T("a"), CSTR_LESS_THAN},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        EXPECT_EQ(CompareStringW(row.locale, row.flags, row.a, -1, row.b, -1), row.result);
        EXPECT_EQ(CompareStringW(row.locale, row.flags, row.b, -1, row.a, -1), 4 - row.result);
    }
    EXPECT_EQ(CompareStringW(kGerman, 0, _T("abX"), 2, _T("abY"), 2), CSTR_EQUAL);
}

TEST(Comparisons, RefuseWhatTheyDoNotKnow) {
    EXPECT_EQ(CompareStringW(kGerman, 0, nullptr, -1, _T("a"), -1), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(CompareStringW(kGerman, 0x00800000, _T("a"), -1, _T("a"), -1), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_FLAGS));
    EXPECT_EQ(CompareStringOrdinal(_T("a"), -2, _T("a"), -1, FALSE), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

TEST(Comparisons, OfTheUserPutNullFirst) {
    EXPECT_EQ(Sign(lstrcmpW(_T("a"), _T("A"))), -1);
    EXPECT_EQ(Sign(lstrcmpW(_T("b"), _T("A"))), 1);
    EXPECT_EQ(lstrcmpiW(_T("Zahn"), _T("zAHN")), 0);
    EXPECT_EQ(Sign(lstrcmpiW(_T("Zahn"), _T("Zahnarzt"))), -1);
    EXPECT_EQ(Sign(lstrcmpW(nullptr, _T(""))), -1);
    EXPECT_EQ(Sign(lstrcmpiW(_T(""), nullptr)), 1);
    EXPECT_EQ(lstrcmpW(nullptr, nullptr), 0);
}

TEST(Comparisons, ByUnitMapToUpperCase) {
    EXPECT_EQ(CompareStringOrdinal(_T("B"), -1, _T("a"), -1, FALSE), CSTR_LESS_THAN);
    EXPECT_EQ(CompareStringOrdinal(_T("B"), -1, _T("a"), -1, TRUE), CSTR_GREATER_THAN);
    EXPECT_EQ(CompareStringOrdinal(_T("_"), -1, _T("a"), -1, TRUE), CSTR_GREATER_THAN);
    EXPECT_EQ(CompareStringOrdinal(_T("\u00C4b"), -1, _T("\u00E4BC"), 2, TRUE), CSTR_EQUAL);
    EXPECT_EQ(CompareStringOrdinal(_T("a"), -1, _T("ab"), -1, TRUE), CSTR_LESS_THAN);
    EXPECT_EQ(Sign(_wcsicmp(_T("_"), _T("A"))), -1);  // these map to lower case
    EXPECT_EQ(_wcsicmp(_T("ABC"), _T("abc")), 0);
    EXPECT_EQ(_wcsnicmp(_T("abX"), _T("ABy"), 2), 0);
    EXPECT_EQ(Sign(_wcsnicmp(_T("ab"), _T("a"), 3)), 1);
}

TEST(Case, IsMappedUnitByUnitAndNeverIntoAscii) {
    TCHAR text[] = _T("Stra\u00DFe \u00E4\u00FF \u0131\u017F\u00B5");
    EXPECT_EQ(CharUpperW(text), text);
    EXPECT_EQ(Text(text), _T("STRA\u00DFE \u00C4\u0178 \u0131\u017F\u00B5"));
    TCHAR upper[] = _T("ABC\u00C4\u0130");
    EXPECT_EQ(CharLowerBuffW(upper + 1, 4), 4u);
    EXPECT_EQ(Text(upper), _T("Abc\u00E4\u0130"));
    EXPECT_EQ(CharUpperW(MAKEINTRESOURCEW(0xE4)), MAKEINTRESOURCEW(0xC4));
    EXPECT_EQ(CharLowerW(MAKEINTRESOURCEW('Q')), MAKEINTRESOURCEW('q'));
}

TEST(Types, ToldForEachUnit) {
    WORD types[6];
    ASSERT_TRUE(GetStringTypeW(CT_CTYPE1, _T("7 \u00E4F\t!"), 6, types));
    EXPECT_EQ(types[0] & (C1_DIGIT | C1_XDIGIT | C1_ALPHA), C1_DIGIT | C1_XDIGIT);
    EXPECT_EQ(types[1] & (C1_SPACE | C1_BLANK | C1_DIGIT), C1_SPACE | C1_BLANK);
    EXPECT_EQ(types[2] & (C1_ALPHA | C1_LOWER | C1_UPPER), C1_ALPHA | C1_LOWER);
    EXPECT_EQ(types[3] & (C1_ALPHA | C1_UPPER | C1_XDIGIT), C1_ALPHA | C1_UPPER | C1_XDIGIT);
    EXPECT_EQ(types[4] & (C1_SPACE | C1_CNTRL), C1_SPACE | C1_CNTRL);
    EXPECT_EQ(types[5] & (C1_PUNCT | C1_SPACE), C1_PUNCT);
    EXPECT_FALSE(GetStringTypeW(CT_CTYPE1, _T("7"), 0, types));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

TEST(Numbers, StopAtTheirBorders) {
    const struct {
        const TCHAR* text;
        int number;
        int error;
    } rows[] = {
        {_T("42"), 42, 0},
        {_T(" \t\r\n-17x"), -17, 0},
        {_T("+8"), 8, 0},
        {_T(""), 0, 0},
        {_T("x1"), 0, 0},
        {_T("+-1"), 0, 0},
        {_T("- 1"), 0, 0},
        {_T("0019800101"), 19800101, 0},
        {_T("2147483647"), INT_MAX, 0},
        {_T("-2147483648"), INT_MIN, 0},
        {_T("2147483648"), INT_MAX, ERANGE},
        {_T("-99999999999999999999"), INT_MIN, ERANGE},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        errno = 0;
        EXPECT_EQ(_wtoi(row.text), row.number);
        EXPECT_EQ(errno, row.error);
    }
    EXPECT_EQ(_wtoi64(_T("-9223372036854775808")), LLONG_MIN);
    EXPECT_EQ(_wtoi64(_T("9223372036854775808")), LLONG_MAX);
}

TEST(Paths, SplitIntoTheirParts) {
    const struct {
        const TCHAR* path;
        const TCHAR *drive, *folder, *name, *extension;
    } rows[] = {
        {_T("C:\\data\\scan.tar.gz"), _T("C:"), _T("\\data\\"), _T("scan.tar"), _T(".gz")},
        {_T("a/b\\c"), _T(""), _T("a/b\\"), _T("c"), _T("")},
        {_T("D:x.y"), _T("D:"), _T(""), _T("x"), _T(".y")},
        {_T("C:\\v1.2\\readme"), _T("C:"), _T("\\v1.2\\"), _T("readme"), _T("")},
        {_T(".hidden"), _T(""), _T(""), _T(""), _T(".hidden")},
        {_T("\\\\server\\share\\"), _T(""), _T("\\\\server\\share\\"), _T(""), _T("")},
        {_T(""), _T(""), _T(""), _T(""), _T("")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        TCHAR drive[_MAX_DRIVE], folder[_MAX_DIR], name[_MAX_FNAME], extension[_MAX_EXT];
        ASSERT_EQ(_wsplitpath_s(row.path, drive, _MAX_DRIVE, folder, _MAX_DIR, name, _MAX_FNAME, extension, _MAX_EXT), 0);
        EXPECT_EQ(Text(drive), row.drive);
        EXPECT_EQ(Text(folder), row.folder);
        EXPECT_EQ(Text(name), row.name);
        EXPECT_EQ(Text(extension), row.extension);
    }
}

TEST(Paths, ThatDoNotFitLeaveEmptyParts) {
    TCHAR name[4] = _T("old");
    TCHAR extension[8] = _T("old");
    EXPECT_EQ(_wsplitpath_s(_T("C:\\long.txt"), nullptr, 0, nullptr, 0, name, 4, extension, 8), ERANGE);
    EXPECT_EQ(Text(name), _T(""));
    EXPECT_EQ(Text(extension), _T(""));
    EXPECT_EQ(_wsplitpath_s(_T("C:\\abc.txt"), nullptr, 0, nullptr, 0, name, 4, nullptr, 0), 0);
    EXPECT_EQ(Text(name), _T("abc"));
}

}  // namespace
