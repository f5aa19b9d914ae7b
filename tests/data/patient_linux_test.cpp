// Patients under the ANSI code page and the locale that variables name. A process has one code page, so each has a process.

#include <gtest/gtest.h>
#include <kadata/patient.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "support/child_process.h"
#include "support/environment.h"
#include "support/temp_folder.h"

using namespace std::string_literals;

namespace {

// What does not fit whole with the terminator is left off; what is behind the terminator stays as it was.
bool IsCutBetweenCharacters(UINT page) {
    const struct {
        UINT page;
        LPCTSTR source;
        int size;
        std::string expected;
    } rows[] = {{1252, _T("\u20AC\u00DF\u5C71z"), 4, "\x80\xDF?\0"s},
                {932, _T("\u5C71\u7530"), 5, "\x8E\x52\x93\x63\0"s},
                {932, _T("\u5C71\u7530"), 4, "\x8E\x52\0"s},
                {932, _T("\u5C71\u7530"), 2, "\0"s},
                {932, _T("\uFF71\u5C71"), 3, "\xB1\0"s},  // half-width: one byte
                {65001, _T("M\u00FCller"), 3, "M\0"s},
                {65001, _T("a\U0001F600b"), 6, "a\xF0\x9F\x98\x80\0"s},
                {65001, _T("a\U0001F600b"), 5, "a\0"s}};
    return std::all_of(std::begin(rows), std::end(rows), [page](const auto& row) {
        std::string target(16, 'x');
        CPatient::CopyAsciiString(target.data(), row.source, row.size);
        return row.page != page || target == row.expected + std::string(16 - row.expected.size(), 'x');
    });
}

// What is read back from the database's record is the start of what was written.
bool SurvivesTheRecord(const CString& name) {
    tagTPATIENT record;
    CPatient(name, name, {}, name).ConvertToTPatient(&record);
    const CPatient read(record);
    const int length = read.GetName().GetLength();
    return length >= 10 && read.GetName() == name.Left(length) && read.GetExtID() == name.Left(length) && record.extID[32] == 0;
}

int CheckCodePage(const test::ChildArgs& args) {
    const UINT page = static_cast<UINT>(_wtoi(args[0].c_str()));
    const TCHAR letter = page == 932 ? 0x5C71 : 0x00FC;
    return !(GetACP() == page && IsCutBetweenCharacters(page) && SurvivesTheRecord(CString(letter, 40)) &&
             SurvivesTheRecord(_T("a") + CString(letter, 40)));
}
REGISTER_CHILD(CheckCodePage)

TEST(LinuxEnvironment, ChoosesTheCodePageInWhichRecordsAreCutBetweenCharacters) {
    for (LPCTSTR page : {_T("1252"), _T("932"), _T("65001")}) {
        const test::InEnvironment chosen(_T("KADATA_ACP"), page);
        EXPECT_EQ(test::ChildProcess({_T("CheckCodePage"), page}).Wait(30000), 0u) << test::Narrow(page);
    }
}

TEST(LinuxEnvironment, ChoosesTheLocaleInWhichABirthdayIsShown) {
    const std::pair<LPCTSTR, LPCTSTR> rows[] = {{_T("en_US.UTF-8"), _T("1/31/1980")}, {_T("ja_JP.UTF-8"), _T("1980/01/31")}};
    for (const auto& [locale, expected] : rows) {
        const test::InEnvironment chosen(_T("LC_ALL"), locale);
        EXPECT_EQ(CPatient(_T("Miller, Anna,19800131")).GetBirthDayString(), CString(expected));
    }
}

}  // namespace
