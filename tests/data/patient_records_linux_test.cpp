// Texts of the exchange records in several ANSI code pages. A process has one, so each page has a process of its own.

#include <gtest/gtest.h>
#include <kadata/patient.h>

#include <cstdio>
#include <string>

#include "support/child_process.h"
#include "support/temp_folder.h"

using namespace std::string_literals;

namespace {

using test::ChildArgs;
using test::ChildProcess;

// What does not fit whole with the terminator is left off; what is behind the terminator stays as it was.
bool IsCutBetweenCharacters(UINT page) {
    const struct {
        UINT page;
        LPCTSTR source;
        int size;
        std::string expected;
    } rows[] = {
        {1252, _T("M\u00FCller"), 4, "M\xFCl\0"s},
        {1252, _T("\u20AC\u00DF\u5C71z"), 4, "\x80\xDF?\0"s},
        {932, _T("\u5C71\u7530"), 5, "\x8E\x52\x93\x63\0"s},
        {932, _T("\u5C71\u7530"), 4, "\x8E\x52\0"s},
        {932, _T("\u5C71\u7530"), 2, "\0"s},
        {932, _T("\uFF71\u5C71"), 3, "\xB1\0"s},  // half-width: one byte
        {65001, _T("M\u00FCller"), 4, "M\xC3\xBC\0"s},
        {65001, _T("M\u00FCller"), 3, "M\0"s},
        {65001, _T("a\U0001F600b"), 6, "a\xF0\x9F\x98\x80\0"s},
        {65001, _T("a\U0001F600b"), 5, "a\0"s},
    };
    bool good = true;
    for (const auto& row : rows) {
        std::string target(16, 'x');
        CPatient::CopyAsciiString(target.data(), row.source, row.size);
        if (row.page == page && target != row.expected + std::string(16 - row.expected.size(), 'x')) {
            std::printf("code page %u, row %d\n", page, static_cast<int>(&row - rows));
            good = false;
        }
    }
    return good;
}

// The fields of both records end in their bounds, and what is read back is the start of what was written.
bool SurvivesTheRecords(const CString& name) {
    tagTPATIENT database;
    tagPATIENT imaging;
    const CPatient patient(name, name, {}, name);
    patient.ConvertToTPatient(&database);
    patient.ConvertToPatient(&imaging, CTime());
    const CPatient read(database);
    const CString again = read.GetName();
    return again.GetLength() >= 10 && name.Left(again.GetLength()) == again && read.GetExtID() == again &&
           std::string(imaging.name) == database.name && imaging.extID[20] == '\0' && database.extID[32] == '\0';
}

int CheckCodePage(const ChildArgs& args) {
    const UINT page = static_cast<UINT>(_wtoi(args[0].c_str()));
    const TCHAR letter = page == 932 ? 0x5C71 : 0x00FC;
    const bool good = GetACP() == page && IsCutBetweenCharacters(page) && SurvivesTheRecords(CString(letter, 40)) &&
                      SurvivesTheRecords(_T("a") + CString(letter, 40));
    return good ? 0 : 1;
}
REGISTER_CHILD(CheckCodePage)

TEST(Records, AreCutBetweenCharactersInEveryCodePage) {
    for (LPCTSTR page : {_T("1252"), _T("932"), _T("65001")}) {
        SetEnvironmentVariableW(_T("KADATA_ACP"), page);
        EXPECT_EQ(ChildProcess({_T("CheckCodePage"), page}).Wait(30000), 0u) << test::Narrow(page);
    }
    SetEnvironmentVariableW(_T("KADATA_ACP"), nullptr);
}

}  // namespace
