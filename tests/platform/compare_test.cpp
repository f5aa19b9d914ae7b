#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <cerrno>
#include <climits>

#include "support/last_error.h"
#include "support/temp_folder.h"
#include "support/wine.h"

namespace {

using test::ErrorOf;
using test::Text;

constexpr LCID kGerman = MAKELCID(MAKELANGID(LANG_GERMAN, SUBLANG_DEFAULT), SORT_DEFAULT);
constexpr LCID kSwedish = 0x041D;

TEST(Texts, HaveALengthAndCopiesThatAreAlwaysEnded) {
    EXPECT_EQ(lstrlenW(nullptr), 0);
    TCHAR target[4] = {_T('x'), _T('x'), _T('x'), _T('x')};
    EXPECT_EQ(lstrcpynW(target, _T("abcdef"), 3), target);
    EXPECT_EQ(Text(target, 4), Text(_T("ab\0x"), 4));
    EXPECT_EQ(Text(lstrcpynW(target, _T("a"), 4)), _T("a"));
}

TEST(Comparisons, FollowTheLocale) {
    const struct {
        LCID locale;
        DWORD flags;
        const TCHAR *a, *b;
        int result;
    } rows[] = {{kGerman, 0, _T("Apfel"), _T("\u00C4pfel"), CSTR_LESS_THAN},
                {kGerman, 0, _T("\u00C4pfel"), _T("Birne"), CSTR_LESS_THAN},
                {kSwedish, 0, _T("\u00E4"), _T("z"), CSTR_GREATER_THAN},
                {kGerman, 0, _T("b"), _T("A"), CSTR_GREATER_THAN},
                {kGerman, NORM_IGNORECASE, _T("m\u00FCller"), _T("M\u00DCLLER"), CSTR_EQUAL},
                {kGerman, NORM_IGNORENONSPACE, _T("a"), _T("\u00E4"), CSTR_EQUAL},
                {kGerman, NORM_IGNORENONSPACE, _T("a"), _T("\u00C4"), CSTR_LESS_THAN},
                {kGerman, NORM_IGNORECASE | NORM_IGNORENONSPACE, _T("a"), _T("\u00C4"), CSTR_EQUAL}};
    for (const auto& row : rows) {
        EXPECT_EQ(CompareStringW(row.locale, row.flags, row.a, -1, row.b, -1), row.result) << &row - rows;
        EXPECT_EQ(CompareStringW(row.locale, row.flags, row.b, -1, row.a, -1), 4 - row.result) << &row - rows;
    }
    EXPECT_EQ(CompareStringW(kGerman, 0, _T("abX"), 2, _T("abY"), 2), CSTR_EQUAL);
    EXPECT_EQ(ErrorOf(CompareStringW(kGerman, 0, nullptr, -1, _T("a"), -1)), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ErrorOf(CompareStringW(kGerman, 0x00800000, _T("a"), -1, _T("a"), -1)), ERROR_INVALID_FLAGS);
    EXPECT_EQ(ErrorOf(CompareStringOrdinal(nullptr, -1, _T("a"), -1, FALSE)), ERROR_INVALID_PARAMETER);
}

TEST(Comparisons, OfTheUserPutNullFirst) {
    EXPECT_LT(lstrcmpW(_T("a"), _T("A")), 0);
    EXPECT_EQ(lstrcmpiW(_T("Zahn"), _T("zAHN")), 0);
    EXPECT_LT(lstrcmpW(nullptr, _T("")), 0);
    EXPECT_GT(lstrcmpiW(_T(""), nullptr), 0);
    EXPECT_EQ(lstrcmpW(nullptr, nullptr), 0);
}

TEST(Comparisons, ByUnitMapToUpperCase) {
    EXPECT_EQ(CompareStringOrdinal(_T("B"), -1, _T("a"), -1, FALSE), CSTR_LESS_THAN);
    EXPECT_EQ(CompareStringOrdinal(_T("_"), -1, _T("a"), -1, TRUE), CSTR_GREATER_THAN);
    EXPECT_EQ(CompareStringOrdinal(_T("\u00C4b"), -1, _T("\u00E4BC"), 2, TRUE), CSTR_EQUAL);
    EXPECT_LT(_wcsicmp(_T("_"), _T("A")), 0);  // these map to lower case
    EXPECT_EQ(_wcsnicmp(_T("abX"), _T("ABy"), 2), 0);
}

TEST(Case, IsMappedUnitByUnitAndNeverIntoAscii) {
    TCHAR text[] = _T("Stra\u00DFe \u00E4\u00FF \u0131\u017F\u00B5");
    EXPECT_EQ(Text(CharUpperW(text)), _T("STRA\u00DFE \u00C4\u0178 \u0131\u017F\u00B5"));
    TCHAR upper[] = _T("ABC\u00C4\u0130");
    EXPECT_EQ(CharLowerBuffW(upper + 1, 4), 4u);
    EXPECT_EQ(Text(upper), _T("Abc\u00E4\u0130"));
    EXPECT_EQ(CharUpperW(MAKEINTRESOURCEW(0xE4)), MAKEINTRESOURCEW(0xC4));
}

TEST(Types, ToldForEachUnit) {
    WORD types[6];
    ASSERT_TRUE(GetStringTypeW(CT_CTYPE1, _T("7 \u00E4F\t!"), 6, types));
    const int expected[] = {C1_DIGIT | C1_XDIGIT,
                            C1_SPACE | C1_BLANK,
                            C1_ALPHA | C1_LOWER,
                            C1_ALPHA | C1_UPPER | C1_XDIGIT,
                            C1_SPACE | C1_CNTRL | C1_BLANK,
                            C1_PUNCT};
    constexpr int kAll = C1_DIGIT | C1_XDIGIT | C1_ALPHA | C1_LOWER | C1_UPPER | C1_SPACE | C1_BLANK | C1_CNTRL | C1_PUNCT;
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(types[i] & kAll, expected[i]) << i;
    EXPECT_EQ(ErrorOf(GetStringTypeW(CT_CTYPE1, nullptr, 1, types)), ERROR_INVALID_PARAMETER);
}

TEST(Numbers, StopAtTheirBorders) {
    const struct {
        const TCHAR* text;
        int number, error;
    } rows[] = {{_T(" \t\r\n-17x"), -17, 0},
                {_T("+8"), 8, 0},
                {_T(""), 0, 0},
                {_T("x1"), 0, 0},
                {_T("+-1"), 0, 0},
                {_T("0019800101"), 19800101, 0},
                {_T("2147483647"), INT_MAX, 0},
                {_T("-2147483648"), INT_MIN, 0},
                {_T("2147483648"), INT_MAX, ERANGE},
                {_T("-99999999999999999999"), INT_MIN, ERANGE}};
    for (const auto& row : rows) {
        errno = 0;
        EXPECT_EQ(_wtoi(row.text), row.number) << &row - rows;
        EXPECT_EQ(errno, row.error) << &row - rows;
    }
    EXPECT_EQ(_wtoi64(_T("-9223372036854775808")), LLONG_MIN);
    EXPECT_EQ(_wtoi64(_T("9223372036854775808")), test::UnlessWine(LLONG_MAX, LLONG_MIN));
}

TEST(Paths, SplitIntoTheirParts) {
    const struct {
        const TCHAR* path;
        const TCHAR *drive, *folder, *name, *extension;
    } rows[] = {{_T("C:\\data\\scan.tar.gz"), _T("C:"), _T("\\data\\"), _T("scan.tar"), _T(".gz")},
                {_T("a/b\\c"), _T(""), _T("a/b\\"), _T("c"), _T("")},
                {_T("D:x.y"), _T("D:"), _T(""), _T("x"), _T(".y")},
                {_T("C:\\v1.2\\readme"), _T("C:"), _T("\\v1.2\\"), _T("readme"), _T("")},
                {_T(".hidden"), _T(""), _T(""), _T(""), _T(".hidden")},
                {_T("\\\\server\\share\\"), _T(""), _T("\\\\server\\share\\"), _T(""), _T("")}};
    TCHAR drive[_MAX_DRIVE], folder[_MAX_DIR], name[_MAX_FNAME], extension[_MAX_EXT];
    for (const auto& row : rows) {
        ASSERT_EQ(_wsplitpath_s(row.path, drive, _MAX_DRIVE, folder, _MAX_DIR, name, _MAX_FNAME, extension, _MAX_EXT), 0);
        EXPECT_EQ(Text(drive), row.drive);
        EXPECT_EQ(Text(folder), row.folder);
        EXPECT_EQ(Text(name), row.name);
        EXPECT_EQ(Text(extension), row.extension);
    }
    EXPECT_EQ(_wsplitpath_s(_T("C:\\long.txt"), nullptr, 0, nullptr, 0, name, 4, extension, 8), ERANGE);
    EXPECT_TRUE(name[0] == 0 && extension[0] == 0);  // parts that do not fit are left empty
    EXPECT_EQ(_wsplitpath_s(_T("C:\\abc.txt"), nullptr, 0, nullptr, 0, name, 4, nullptr, 0), 0);
    EXPECT_EQ(Text(name), _T("abc"));
}

}  // namespace
