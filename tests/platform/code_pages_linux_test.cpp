// What belongs to this platform alone: the choice of the ANSI code page, and the one character for everything unreadable.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include "support/child_process.h"
#include "support/environment.h"

namespace {

// Whether the program, started with KADATA_ACP=args[0], has the ANSI and OEM code pages args[1] and args[2].
int CodePagesOfChild(const test::ChildArgs& args) {
    return GetACP() != static_cast<UINT>(_wtoi(args[1].c_str())) || GetOEMCP() != static_cast<UINT>(_wtoi(args[2].c_str()));
}
REGISTER_CHILD(CodePagesOfChild)

TEST(AnsiCodePage, IsWesternEuropeanUnlessTheEnvironmentNamesAValidOne) {
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

TEST(CodePages, HaveOneCharacterForEverythingUnreadable) {
    const struct {
        UINT code_page;
        std::string bytes;
        std::u16string text;
    } rows[] = {{932, std::string("a\x85\x40") + "b", u"a\uFFFDb"},
                {932, "a\x81", u"a\uFFFD"},
                {1253, "\xD2", u"\uFFFD"},
                {CP_UTF8, "\xF0\x9F\xA6-\xC0\xAF", u"\uFFFD-\uFFFD\uFFFD"}};
    for (const auto& row : rows) {
        char16_t target[16];
        ASSERT_GT(MultiByteToWideChar(row.code_page, 0, row.bytes.c_str(), -1, target, 16), 0);
        EXPECT_EQ(std::u16string(target), row.text) << row.code_page;
    }
}

}  // namespace
