#include <afx_format.h>
#include <afx_string.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "support/temp_folder.h"

namespace {

using test::Narrow;
using Text = std::basic_string<TCHAR>;

template <class... Args>
std::string Printed(LPCTSTR format, const Args&... args) {
    const auto list = afx::MakeFormatArgs(args...);
    Text text;
    afx::AppendFormat(text, format, list.data(), list.size());
    return Narrow(text);
}

template <class... Args>
std::string Into(std::size_t capacity, LPCTSTR format, const Args&... args) {
    const auto list = afx::MakeFormatArgs(args...);
    std::vector<TCHAR> buffer(capacity + 1, _T('#'));
    const std::size_t units = afx::FormatInto(buffer.data(), capacity, format, list.data(), list.size());
    EXPECT_EQ(buffer[capacity], _T('#')) << "written behind the buffer";
    EXPECT_EQ(buffer[units], capacity == 0 ? _T('#') : 0);
    return Narrow(Text(buffer.data(), units));
}

enum class Colour : unsigned char { Green = 200 };

// A literal as a template argument, so that "does not compile" can be asked for.
template <std::size_t N>
struct Literal {
    TCHAR text[N];
    consteval Literal(const TCHAR (&literal)[N]) { std::copy_n(literal, N, text); }
};

template <Literal Format, class... Args>
concept Fits = requires {
    typename std::bool_constant<(afx::CheckFormat<Args...>(Format.text), true)>;
};

static_assert(Fits<_T("100%%")> && Fits<_T("%d%s%S"), int, CString, const char*> && Fits<_T("%0*d%.*f"), int, int, LONG, double>);
static_assert(Fits<_T("%I64d %zu %p"), LONGLONG, std::size_t, HANDLE> && Fits<_T("%c%C%hc"), TCHAR, char, int>);
static_assert(!Fits<_T("%d")> && !Fits<_T("%d"), int, int> && !Fits<_T("%*d"), int> && !Fits<_T("%*d"), double, int>);
static_assert(!Fits<_T("%d"), LPCTSTR> && !Fits<_T("%d"), double> && !Fits<_T("%f"), int> && !Fits<_T("%s"), int>);
static_assert(!Fits<_T("%s"), const char*> && !Fits<_T("%S"), CString> && !Fits<_T("%C"), TCHAR> && !Fits<_T("%p"), int>);
static_assert(!Fits<_T("%d"), LONGLONG> && !Fits<_T("%I64d"), int> && !Fits<_T("%c"), LONGLONG>);
static_assert(!Fits<_T("%n"), int*> && !Fits<_T("100%")> && !Fits<_T("%y"), int>);

TEST(Format, PrintsIntegersOfEveryWidth) {
    const ULONGLONG large = 0xFEDCBA9876543210u;
    EXPECT_EQ(Printed(_T("%d %i %u %lld %zu"), std::numeric_limits<int>::min(), 0, 42u, -1, std::size_t{99}),
              "-2147483648 0 42 -1 99");
    EXPECT_EQ(Printed(_T("%I64d"), std::numeric_limits<LONGLONG>::min()), "-9223372036854775808");
    EXPECT_EQ(Printed(_T("%I64u %llu %Iu"), large, large, 7u), "18364758544493064720 18364758544493064720 7");
    EXPECT_EQ(Printed(_T("%I64x %I64X %llo"), large, large, large), "fedcba9876543210 FEDCBA9876543210 1773345651416625031020");
    EXPECT_EQ(Printed(_T("%x %X %u"), -1, -1, -1), "ffffffff FFFFFFFF 4294967295");
    EXPECT_EQ(Printed(_T("%d %x %ld %lu %I32d"), large, large, large, large, large),
              "1985229328 76543210 1985229328 1985229328 1985229328");
    EXPECT_EQ(Printed(_T("%hd %hu %hhd %hhu"), 0x18001, 0x18001, 0x181, 0x181), "-32767 32769 -127 129");
    EXPECT_EQ(Printed(_T("%d %d %d %d"), true, Colour::Green, static_cast<BYTE>(255), static_cast<char>(-1)), "1 200 255 -1");
}

TEST(Format, ObeysFlagsWidthAndPrecisionOfIntegers) {
    EXPECT_EQ(Printed(_T("[%5d][%-5d][%05d][%+d][% d][%+u]"), 42, 42, -42, 42, 42, 1u), "[   42][42   ][-0042][+42][ 42][1]");
    EXPECT_EQ(Printed(_T("[%.6i][%8.3d][%08.3d][%.0d][%.d]"), 42, -7, 7, 0, 0), "[000042][    -007][     007][][]");
    EXPECT_EQ(Printed(_T("[%#x][%#X][%#o][%#x][%#o][%#.0o]"), 255, 255, 8, 0, 0, 0), "[0xff][0XFF][010][0][0][0]");
    EXPECT_EQ(Printed(_T("[%#08x][%-05d][%02X][%016I64X]"), 255, 42, 0x1234, 0xABCull),
              "[0x0000ff][42   ][1234][0000000000000ABC]");
    EXPECT_EQ(Printed(_T("[%0*d][%*d][%.*d][%.*d]"), 4, 7, -4, 7, 2, 7, -1, 0), "[0007][7   ][07][0]");
    EXPECT_EQ(Printed(_T("[%p][%18p]"), reinterpret_cast<void*>(std::uintptr_t{0xBEEF}), nullptr),
              "[000000000000BEEF][  0000000000000000]");
}

TEST(Format, PrintsTextAndCharactersOfBothWidths) {
    const TCHAR open[] = {'a', 'b', 'c'};  // not terminated
    const char bytes[] = "M\xFCller";      // code page 1252
    const TCHAR* const none = nullptr;
    EXPECT_EQ(Printed(_T("%s|%ls|%ws|%S|%hs"), _T("a"), CString(_T("b")), Text(_T("c")), "d", std::string("e")), "a|b|c|d|e");
    EXPECT_EQ(Printed(_T("[%5s][%-5s][%05s][%5.1s]"), _T("abc"), _T("abc"), _T("abc"), _T("abc")),
              "[  abc][abc  ][00abc][    a]");
    EXPECT_EQ(Printed(_T("%.3s|%.*s"), static_cast<LPCTSTR>(open), 2, static_cast<LPCTSTR>(open)), "abc|ab");
    EXPECT_EQ(Printed(_T("%8S|%.2hs"), bytes, bytes), "  Müller|Mü");
    EXPECT_EQ(Printed(_T("%S"), std::string(1000, '\xE4')).size(), 2000U);
    EXPECT_EQ(Printed(_T("%s %S %.3s"), none, static_cast<const char*>(nullptr), none), "(null) (null) (nu");
    EXPECT_EQ(Printed(_T("%c%c%C%hc%lc%C"), _T('ä'), 65, 'b', static_cast<int>('c'), _T('d'), '\x80'), "äAbcd€");
    EXPECT_EQ(Printed(_T("[%3c][%-3c]%c%%%s"), _T('x'), _T('y'), U'\U0001F9B7', _T("%d")), "[  x][y  ]🦷%%d");
}

TEST(Format, PrintsRealsWithADecimalPointInEveryLocale) {
    const double infinity = std::numeric_limits<double>::infinity(), pi = 3.14159;
    EXPECT_EQ(Printed(_T("%f %f %.2f %.0f %.*f"), 1.0, -0.5f, 2.675, 2.5, 3, 1.0 / 3), "1.000000 -0.500000 2.67 2 0.333");
    EXPECT_EQ(Printed(_T("%e %.3E %.0e"), 12345.678, 0.00012345, 5e10), "1.234568e+04 1.234E-04 5e+10");
    EXPECT_EQ(Printed(_T("%g %g %g %G %.3g"), 0.0001, 1e-5, 1e6, 1e-7, 1234.5), "0.0001 1e-05 1e+06 1E-07 1.23e+03");
    EXPECT_EQ(Printed(_T("%#.0f %#.0e %#g %#.3g"), 1.0, 1.0, 1e-9, 100.0), "1. 1.e+00 1.00000e-09 100.");
    EXPECT_EQ(Printed(_T("[%8.2f][%-8.2f][%08.2f][%+.1f][% .1f]"), pi, pi, -pi, pi, pi),
              "[    3.14][3.14    ][-0003.14][+3.1][ 3.1]");
    EXPECT_EQ(Printed(_T("[%05f][%F][%f][%g]"), infinity, -infinity, std::fabs(std::nan("")), -0.0), "[  inf][-INF][nan][-0]");
    EXPECT_EQ(Printed(_T("%f"), 1e308).size(), 309u + 7u);
    EXPECT_EQ(Printed(_T("%.5000f"), 1.0).size(), 2u + static_cast<unsigned>(afx::kMaxRealPrecision));
}

TEST(Format, SurvivesRunTimeFormatsThatDoNotFit) {
    EXPECT_EQ(Printed(_T("%s|%S|%d|%f|%p|%d"), 1, _T("x"), _T("x"), 1, 1.0), "(?)|(?)|(?)|(?)|(?)|(?)");
    EXPECT_EQ(Printed(_T("%*d|%d"), _T("x"), 5, 6, 7), "(?)|6");
    EXPECT_EQ(Printed(_T("50% y|%q|%n|%5"), 1), "50% y|%q|%n|%5");
    EXPECT_EQ(Printed(_T("%")) + Printed(nullptr), "%");
    EXPECT_EQ(Printed(_T("%99999999999d"), 1).size(), static_cast<std::size_t>(afx::kMaxFieldWidth));
    EXPECT_EQ(Printed(_T("%*d"), std::numeric_limits<int>::min(), 1).size(), static_cast<std::size_t>(afx::kMaxFieldWidth));
}

TEST(Format, CutsAtTheCapacityButNeverInsideASurrogatePair) {
    EXPECT_EQ(Into(0, _T("abc")) + Into(1, _T("abc")), "");
    EXPECT_EQ(Into(4, _T("%s"), _T("abc")), "abc");
    EXPECT_EQ(Into(4, _T("%d"), 123456), "123");
    EXPECT_EQ(Into(4, _T("%9d"), 1), "   ");
    EXPECT_EQ(Into(4, _T("ab%s"), _T("\U0001F9B7")), "ab");
    EXPECT_EQ(Into(5, _T("ab%s"), _T("\U0001F9B7")), "ab🦷");
    const TCHAR lone[] = {'a', 0xD83E, 0};  // was so before, and nothing is cut
    EXPECT_EQ(Into(3, _T("%s"), lone), Narrow(lone));
}

// Whatever the format is, a short buffer holds the beginning of what a long one gets.
TEST(Format, NeverCrashesOnGarbage) {
    constexpr std::basic_string_view<TCHAR> kAlphabet = _T("%%%%%%diuxXoscSCpeEfgGhlIwzLjt0123456789.*-+ #ayn\u00e4\U0001F9B7");
    std::mt19937 random(20250107);
    for (int round = 0; round < 3000; ++round) {
        Text format;
        for (auto length = random() % 20; length > 0; --length)
            format += kAlphabet[random() % kAlphabet.size()];
        SCOPED_TRACE(Narrow(format));
        const auto args = afx::MakeFormatArgs(static_cast<int>(random() % 100) - 50, _T("w\U0001F9B7"), "n\xE4", 1e300 / 7,
                                              _T('c'), nullptr, 0x123456789ALL);
        const std::size_t count = random() % (args.size() + 1);
        Text whole;
        afx::AppendFormat(whole, format.c_str(), args.data(), count);
        TCHAR buffer[64];
        const std::size_t capacity = 1 + random() % std::size(buffer);
        const Text part(buffer, afx::FormatInto(buffer, capacity, format.c_str(), args.data(), count));
        EXPECT_GE(part.size() + 1, std::min(whole.size(), capacity - 1));
        EXPECT_EQ(part, whole.substr(0, part.size()));
    }
}

TEST(Format, LetsTheTargetBeAnArgument) {
    CString text(_T("a"));
    text.Format(_T("%s-%s"), text, text);
    text.AppendFormat(_T("+%s"), text.GetString());
    EXPECT_EQ(text, _T("a-a+a-a"));
    const CString format(_T("<%s>"));
    text.Format(format, _T("x"));
    EXPECT_EQ(text, _T("<x>"));
}

}  // namespace
