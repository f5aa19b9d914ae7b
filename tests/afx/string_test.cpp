#include <afx_string.h>
#include <gtest/gtest.h>

#include <vector>

#include "afx/expect.h"

namespace {

using test::ExpectRows;
using test::IsInvalid;

struct NumberRow {
    int actual;
    int expected;
};

void ExpectNumbers(const std::vector<NumberRow>& rows) {
    for (const NumberRow& row : rows)
        EXPECT_EQ(row.actual, row.expected) << "row " << &row - rows.data() + 1;
}

const CString kWord(_T("abcabc"));

CString Changed(LPCTSTR text, void (*change)(CString&)) {
    CString changed(text);
    change(changed);
    return changed;
}

}  // namespace

TEST(String, IsBuiltFromEveryKindOfText) {
    const LPCTSTR none = nullptr;
    ExpectRows({{CString(), _T("")},
                {none, _T("")},
                {nullptr, _T("")},
                {CString(_T("abc"), 2), _T("ab")},
                {CString(none, 0), _T("")},
                {CString(_T('x'), 3), _T("xxx")},
                {CString(_T('x'), -1), _T("")},
                {CString("M\xFCller \x80"), _T("M\u00FCller \u20AC")},
                {CString(static_cast<const char*>(nullptr)), _T("")}});
    EXPECT_TRUE(IsInvalid([] { CString(_T("abc"), -1); }));
    EXPECT_TRUE(IsInvalid([none] { CString(none, 1); }));
    CString moved(kWord);
    const CString target(std::move(moved));
    EXPECT_EQ(target, kWord);
}

TEST(String, KeepsZerosInsideTheText) {
    CString text(_T("a\0b"), 3);
    text += CString(_T("\0c"), 2);
    EXPECT_EQ(text.GetLength(), 5);
    EXPECT_EQ(text.Mid(2, 2).GetAt(1), 0);
    EXPECT_EQ(text.ReverseFind(_T('c')), 4);
    EXPECT_EQ(text.Find(_T("c")), 4);
    EXPECT_NE(text, _T("a"));
    EXPECT_EQ(text.Remove(0), 2);
    EXPECT_EQ(text, _T("abc"));
}

TEST(String, JoinsInEveryMixture) {
    const CString a(_T("a"));
    const LPCTSTR b = _T("b");
    ExpectRows({{a + a, _T("aa")},
                {a + b, _T("ab")},
                {b + a, _T("ba")},
                {a + _T('c'), _T("ac")},
                {_T('c') + a, _T("ca")},
                {a + b + _T('c') + a, _T("abca")},
                {a + static_cast<LPCTSTR>(nullptr), _T("a")},
                {Changed(_T("x"), [](CString& s) { s += s; }), _T("xx")},
                {Changed(_T("x"), [](CString& s) { s.Append(_T("yz"), 1); }), _T("xy")},
                {Changed(_T("abc"), [](CString& s) { s = s.GetString() + 1; }), _T("bc")}});
}

TEST(String, ComparesByUnitInEveryMixture) {
    const CString a(_T("a")), b(_T("b"));
    EXPECT_TRUE(a == a && a == _T("a") && _T("a") == a && a == _T('a') && a != b && a != _T("b") && _T("b") != a);
    EXPECT_TRUE(a < b && a < _T("b") && _T("a") < b && b > a && b >= _T("a") && _T("b") >= a && a <= a);
    EXPECT_TRUE(CString() == static_cast<LPCTSTR>(nullptr) && a != static_cast<LPCTSTR>(nullptr));
    ExpectNumbers({{a.Compare(b), -1},
                   {b.Compare(a), 1},
                   {a.Compare(_T("A")), 1},
                   {a.Compare(nullptr), 1},
                   {a.CompareNoCase(_T("A")), 0},
                   {CString(_T("\u00E4Z")).CompareNoCase(_T("\u00C4z")), 0},
                   {CString(_T("\u00DF")).CompareNoCase(_T("ss")), 1},
                   {CString(_T("_")).CompareNoCase(_T("a")), 1},
                   {CString().CompareNoCase(nullptr), 0},
                   {CString(_T("a")).Collate(_T("B")), -1},
                   {CString(_T("\u00E4")).Collate(_T("b")), -1},
                   {CString(_T("\u00E4")).CollateNoCase(_T("\u00C4")), 0},
                   {CString(_T("x")).Collate(nullptr), 1}});
}

TEST(String, CutsPartsToTheText) {
    const CString word(_T("abcdef"));
    ExpectRows({{word.Left(2), _T("ab")},
                {word.Left(0), _T("")},
                {word.Left(-1), _T("")},
                {word.Left(99), _T("abcdef")},
                {word.Right(2), _T("ef")},
                {word.Right(-1), _T("")},
                {word.Right(99), _T("abcdef")},
                {word.Mid(2), _T("cdef")},
                {word.Mid(2, 2), _T("cd")},
                {word.Mid(-2, 2), _T("ab")},
                {word.Mid(4, 99), _T("ef")},
                {word.Mid(6), _T("")},
                {word.Mid(99, 1), _T("")},
                {word.Mid(1, -1), _T("")},
                {word.Mid(2, INT_MAX), _T("cdef")},
                {word.SpanIncluding(_T("cba")), _T("abc")},
                {word.SpanIncluding(_T("x")), _T("")},
                {word.SpanExcluding(_T("ed")), _T("abc")},
                {word.SpanExcluding(_T("x")), _T("abcdef")}});
}

TEST(String, Finds) {
    ExpectNumbers({{kWord.Find(_T('b')), 1},
                   {kWord.Find(_T('b'), 2), 4},
                   {kWord.Find(_T('x')), -1},
                   {kWord.Find(_T('a'), -1), -1},
                   {kWord.Find(_T('a'), 6), -1},
                   {kWord.Find(_T("ca")), 2},
                   {kWord.Find(_T("bc"), 2), 4},
                   {kWord.Find(_T("")), 0},
                   {kWord.Find(_T(""), 6), 6},
                   {kWord.Find(_T(""), 7), -1},
                   {kWord.Find(_T("abcabca")), -1},
                   {kWord.Find(static_cast<LPCTSTR>(nullptr)), -1},
                   {kWord.FindOneOf(_T("cb")), 1},
                   {kWord.FindOneOf(_T("")), -1},
                   {kWord.ReverseFind(_T('a')), 3},
                   {kWord.ReverseFind(_T('x')), -1}});
}

TEST(String, Tokenizes) {
    const auto tokens = [](LPCTSTR text, LPCTSTR separators) {
        CString joined;
        int start = 0;
        for (CString token = CString(text).Tokenize(separators, start); start != -1;
             token = CString(text).Tokenize(separators, start))
            joined += token + _T('|');
        return joined;
    };
    ExpectRows({{tokens(_T("a,b;;c"), _T(",;")), _T("a|b|c|")},
                {tokens(_T(";a;"), _T(";")), _T("a|")},
                {tokens(_T(";;"), _T(";")), _T("")},
                {tokens(_T(""), _T(";")), _T("")},
                {tokens(_T("a b"), nullptr), _T("a b|")}});
    EXPECT_TRUE(IsInvalid([] {
        int start = -1;
        kWord.Tokenize(_T(","), start);
    }));
}

TEST(String, ReplacesInsertsAndDeletes) {
    CString text(_T("a.b.c"));
    ExpectNumbers({
        {text.Replace(_T("."), _T("...")), 2},  // a...b...c
        {text.Replace(_T("..."), nullptr), 2},  // abc
        {text.Replace(_T(""), _T("x")), 0},
        {text.Replace(_T("x"), _T("y")), 0},
        {text.Replace(_T('b'), _T('B')), 1},  // aBc
        {text.Insert(1, _T('-')), 4},         // a-Bc
        {text.Insert(-1, _T("<")), 5},        // <a-Bc
        {text.Insert(99, _T(">>")), 7},       // <a-Bc>>
        {text.Insert(0, static_cast<LPCTSTR>(nullptr)), 7},
        {text.Delete(2), 6},      // <aBc>>
        {text.Delete(4, 99), 4},  // <aBc
        {text.Delete(-1), 3},     // aBc
        {text.Delete(0, -1), 3},
        {text.Delete(9), 3},
        {text.Remove(_T('x')), 0},
        {text.Remove(_T('a')), 1},  // Bc
    });
    EXPECT_EQ(text, _T("Bc"));
}

TEST(String, TrimsWhiteSpaceUnitsAndSets) {
    const LPCTSTR spaced = _T(" \t\r\n\v\f\u0085\u00A0\u1680\u2003\u2028\u202F\u205F\u3000x y\u2000 ");
    ExpectRows({
        {Changed(spaced, [](CString& s) { s.Trim(); }), _T("x y")},
        {Changed(_T(" x "), [](CString& s) { s.TrimLeft(); }), _T("x ")},
        {Changed(_T(" x "), [](CString& s) { s.TrimRight(); }), _T(" x")},
        {Changed(_T(" \t "), [](CString& s) { s.Trim(); }), _T("")},
        {Changed(_T("\u200Bx\uFEFF"), [](CString& s) { s.Trim(); }), _T("\u200Bx\uFEFF")},
        {Changed(_T("--x-y--"), [](CString& s) { s.Trim(_T('-')); }), _T("x-y")},
        {Changed(_T("\\/x/"), [](CString& s) { s.TrimRight(_T("/\\")); }), _T("\\/x")},
        {Changed(_T("\\/x/"), [](CString& s) { s.Trim(_T("/\\")); }), _T("x")},
        {Changed(_T("x"), [](CString& s) { s.Trim(static_cast<LPCTSTR>(nullptr)); }), _T("x")},
    });
}

TEST(String, ChangesCaseAndDirectionUnitForUnit) {
    ExpectRows({
        {Changed(_T("a\u00E4\u00DF\u03C9z1"), [](CString& s) { s.MakeUpper(); }), _T("A\u00C4\u00DF\u03A9Z1")},
        {Changed(_T("A\u00C4\u03A9Z1"), [](CString& s) { s.MakeLower(); }), _T("a\u00E4\u03C9z1")},
        {Changed(_T("ab\U0001F9B7c"), [](CString& s) { s.MakeReverse(); }), _T("c\U0001F9B7ba")},
        {Changed(_T(""), [](CString& s) { s.MakeUpper().MakeReverse(); }), _T("")},
    });
}

TEST(String, RefusesPositionsOutsideTheText) {
    CString text(_T("ab"));
    text.SetAt(1, _T('c'));
    EXPECT_EQ(text[1], _T('c'));
    EXPECT_EQ(text[2], 0);
    EXPECT_TRUE(IsInvalid([&] { text.GetAt(3); }));
    EXPECT_TRUE(IsInvalid([&] { static_cast<void>(text[-1]); }));
    EXPECT_TRUE(IsInvalid([&] { text.SetAt(2, _T('x')); }));
    EXPECT_TRUE(IsInvalid([&] { text.Truncate(-1); }));
    EXPECT_TRUE(IsInvalid([&] { text.GetBuffer(-1); }));
    EXPECT_TRUE(IsInvalid([&] { text.ReleaseBuffer(3); }));
    EXPECT_EQ(text, _T("ac"));
}

TEST(String, LendsItsBuffer) {
    CString text(_T("abc"));
    lstrcpynW(text.GetBuffer(100), _T("hello world"), 100);
    text.ReleaseBuffer();
    EXPECT_EQ(text, _T("hello world"));
    text.GetBuffer()[0] = _T('J');
    text.ReleaseBuffer(5);
    EXPECT_EQ(text, _T("Jello"));
    text.GetBufferSetLength(2)[1] = _T('o');
    EXPECT_EQ(text, _T("Jo"));
    text.Truncate(9);
    text.Truncate(1);
    EXPECT_EQ(text, _T("J"));
}

TEST(String, KeepsItsTextWhenAResourceStringIsMissing) {
    constexpr UINT kNoSuchString = 0xFFF1;
    CString text(_T("kept"));
    EXPECT_FALSE(text.LoadString(kNoSuchString));
    EXPECT_EQ(text, _T("kept"));
    EXPECT_TRUE(IsInvalid([&] { text.Format(kNoSuchString, 1); }));
}
