#include <afx_string.h>
#include <gtest/gtest.h>

#include <vector>

#include "afx/expect.h"

namespace {

using test::IsInvalid;
using test::Joined;
using Numbers = std::vector<int>;

const LPCTSTR kNone = nullptr;
const CString kWord(_T("abcabc"));

TEST(String, IsBuiltFromEveryKindOfText) {
    EXPECT_EQ(Joined({kNone, CString(_T("abc"), 2), CString(kNone, 0), CString(_T('x'), 3), CString(_T('x'), -1)}), "|ab||xxx|");
    EXPECT_EQ(Joined({CString("M\xFCller \x80"), CString(static_cast<const char*>(nullptr))}), "Müller €|");
    EXPECT_TRUE(IsInvalid([] { CString(_T("abc"), -1); }));
    EXPECT_TRUE(IsInvalid([] { CString(kNone, 1); }));
}

TEST(String, KeepsZerosInsideTheText) {
    CString text(_T("a\0b"), 3);
    text += CString(_T("\0c"), 2);
    EXPECT_NE(text, _T("a"));
    EXPECT_EQ((Numbers{text.GetLength(), text.Mid(2, 2).GetAt(1), text.Find(_T("c")), text.Remove(0)}), (Numbers{5, 0, 4, 2}));
    EXPECT_EQ(text, _T("abc"));
}

TEST(String, JoinsInEveryMixture) {
    const CString a(_T("a"));
    const LPCTSTR b = _T("b");
    EXPECT_EQ(Joined({a + a, a + b, b + a, a + _T('c'), _T('c') + a, a + b + _T('c') + a, a + kNone}), "aa|ab|ba|ac|ca|abca|a");
    CString self(_T("xy"));
    self += self;
    self.Append(_T("zz"), 1);
    self = self.GetString() + 1;
    EXPECT_EQ(self, _T("yxyz"));
}

TEST(String, ComparesByUnitInEveryMixture) {
    const CString a(_T("a")), b(_T("b")), umlaut(_T("\u00E4"));
    EXPECT_TRUE(a == a && a == _T("a") && _T("a") == a && a == _T('a') && a != b && a != _T("b") && _T("b") != a);
    EXPECT_TRUE(a < b && a < _T("b") && _T("a") < b && b > a && b >= _T("a") && _T("b") >= a && a <= a);
    EXPECT_TRUE(CString() == kNone && a != kNone);
    EXPECT_EQ((Numbers{a.Compare(b), b.Compare(a), a.Compare(_T("A")), a.Compare(nullptr)}), (Numbers{-1, 1, 1, 1}));
    EXPECT_EQ((Numbers{CString(_T("\u00E4Z")).CompareNoCase(_T("\u00C4z")), CString(_T("\u00DF")).CompareNoCase(_T("ss")),
                       CString(_T("_")).CompareNoCase(_T("a")), CString().CompareNoCase(nullptr)}),
              (Numbers{0, 1, 1, 0}));
    EXPECT_EQ((Numbers{a.Collate(_T("B")), umlaut.Collate(_T("b")), umlaut.CollateNoCase(_T("\u00C4")), a.Collate(nullptr)}),
              (Numbers{-1, -1, 0, 1}));
}

TEST(String, CutsPartsToTheText) {
    const CString word(_T("abcdef"));
    EXPECT_EQ(Joined({word.Left(2), word.Left(0), word.Left(-1), word.Left(99)}), "ab|||abcdef");
    EXPECT_EQ(Joined({word.Right(2), word.Right(-1), word.Right(99)}), "ef||abcdef");
    EXPECT_EQ(Joined({word.Mid(2), word.Mid(2, 2), word.Mid(-2, 2), word.Mid(4, 99), word.Mid(2, INT_MAX)}),
              "cdef|cd|ab|ef|cdef");
    EXPECT_EQ(Joined({word.Mid(6), word.Mid(99, 1), word.Mid(1, -1)}), "||");
    EXPECT_EQ(Joined({word.SpanIncluding(_T("cba")), word.SpanIncluding(_T("x"))}), "abc|");
    EXPECT_EQ(Joined({word.SpanExcluding(_T("ed")), word.SpanExcluding(_T("x"))}), "abc|abcdef");
}

TEST(String, Finds) {
    EXPECT_EQ((Numbers{kWord.Find(_T('b')), kWord.Find(_T('b'), 2), kWord.Find(_T('x')), kWord.Find(_T('a'), -1),
                       kWord.Find(_T('a'), 6), kWord.ReverseFind(_T('a')), kWord.ReverseFind(_T('x'))}),
              (Numbers{1, 4, -1, -1, -1, 3, -1}));
    EXPECT_EQ((Numbers{kWord.Find(_T("ca")), kWord.Find(_T("bc"), 2), kWord.Find(_T("")), kWord.Find(_T(""), 6),
                       kWord.Find(_T(""), 7), kWord.Find(_T("abcabca")), kWord.Find(kNone)}),
              (Numbers{2, 4, 0, 6, -1, -1, -1}));
    EXPECT_EQ((Numbers{kWord.FindOneOf(_T("cb")), kWord.FindOneOf(_T(""))}), (Numbers{1, -1}));
}

TEST(String, Tokenizes) {
    const auto tokens = [](const CString& text, LPCTSTR separators) {
        CString joined;
        int start = 0;
        for (CString token = text.Tokenize(separators, start); start != -1; token = text.Tokenize(separators, start))
            joined += token + _T('.');
        return joined;
    };
    EXPECT_EQ(Joined({tokens(_T("a,b;;c"), _T(",;")), tokens(_T(";a;"), _T(";")), tokens(_T(";;"), _T(";")),
                      tokens(_T(""), _T(";")), tokens(_T("a b"), nullptr)}),
              "a.b.c.|a.|||a b.");
    int start = -1;
    EXPECT_TRUE(IsInvalid([&] { kWord.Tokenize(_T(","), start); }));
}

TEST(String, ReplacesInsertsAndDeletes) {
    CString text(_T("a.b.c"));
    EXPECT_EQ((Numbers{text.Replace(_T("."), _T("...")), text.Replace(_T("..."), nullptr), text.Replace(_T(""), _T("x")),
                       text.Replace(_T("x"), _T("y")), text.Replace(_T('b'), _T('B'))}),
              (Numbers{2, 2, 0, 0, 1}));
    EXPECT_EQ(text, _T("aBc"));
    EXPECT_EQ((Numbers{text.Insert(1, _T('-')), text.Insert(-1, _T("<")), text.Insert(99, _T(">>")), text.Insert(0, kNone)}),
              (Numbers{4, 5, 7, 7}));
    EXPECT_EQ(text, _T("<a-Bc>>"));
    EXPECT_EQ((Numbers{text.Delete(2), text.Delete(4, 99), text.Delete(-1), text.Delete(0, -1), text.Delete(9)}),
              (Numbers{6, 4, 3, 3, 3}));
    EXPECT_EQ((Numbers{text.Remove(_T('x')), text.Remove(_T('a'))}), (Numbers{0, 1}));
    EXPECT_EQ(text, _T("Bc"));
}

TEST(String, TrimsWhiteSpaceUnitsAndSets) {
    const CString spaced(_T(" \t\r\n\v\f\u0085\u00A0\u1680\u2003\u2028\u202F\u205F\u3000x y\u2000 ")), path(_T("\\/x/"));
    EXPECT_EQ(Joined({CString(spaced).Trim(), CString(_T(" x ")).TrimLeft(), CString(_T(" x ")).TrimRight(),
                      CString(_T(" \t ")).Trim(), CString(_T("\u200Bx\uFEFF")).Trim()}),
              "x y|x | x||\u200Bx\uFEFF");
    EXPECT_EQ(Joined({CString(_T("--x-y--")).Trim(_T('-')), CString(path).TrimRight(_T("/\\")), CString(path).Trim(_T("/\\")),
                      CString(_T("x")).Trim(kNone)}),
              "x-y|\\/x|x|x");
}

TEST(String, ChangesCaseAndDirectionUnitForUnit) {
    EXPECT_EQ(Joined({CString(_T("a\u00E4\u00DF\u03C9z1")).MakeUpper(), CString(_T("A\u00C4\u03A9Z1")).MakeLower(),
                      CString(_T("ab\U0001F9B7c")).MakeReverse(), CString().MakeUpper().MakeReverse()}),
              "A\u00C4\u00DF\u03A9Z1|a\u00E4\u03C9z1|c\U0001F9B7ba|");
}

TEST(String, RefusesPositionsOutsideTheText) {
    CString text(_T("ab"));
    text.SetAt(1, _T('c'));
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
    text.Truncate(9);
    EXPECT_EQ(text, _T("Jo"));
    text.Truncate(1);
    EXPECT_EQ(text, _T("J"));
}

TEST(String, KeepsItsTextWhenAResourceStringIsMissing) {
    constexpr UINT kNoSuchString = 0xFFF1;
    CString text(_T("kept"));
    EXPECT_FALSE(text.LoadString(kNoSuchString));
    EXPECT_TRUE(IsInvalid([&] { text.Format(kNoSuchString, 1); }));
    EXPECT_EQ(text, _T("kept"));
}

}  // namespace
