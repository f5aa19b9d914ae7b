#include <utility>

#include "settings_fixture.h"

namespace {

using test::Narrow;
using test::SettingsTest;

std::string Shown(const CPatient& patient) {
    return Narrow(patient.GetName() + _T("|") + patient.GetFirstName() + _T("|")) + std::to_string(patient.GetBirthDayVal()) +
           "|" + std::to_string(patient.GetPatientID()) + "|" + Narrow(patient.GetExtID());
}

TEST_F(SettingsTest, ReadTheLastPatientThatWasWritten) {
    const struct {
        LPCTSTR name, firstName;
        DWORD birthDay;
        LONG number;
        LPCTSTR extID, line;
        const char* read = nullptr;  // null: as written
    } rows[] = {
        {_T("Miller"), _T("Anna"), 19800131, 17, _T("A-1"), _T("Miller, Anna@19800131@17"), "Miller|Anna|19800131|17|"},
        {_T("Miller"), _T("Anna"), 19800131, 0, _T("A-1"), _T("Miller, Anna@19800131#A-1"), "Miller|Anna|19800131|-1|A-1"},
        {_T("Miller"), _T("Anna"), 0, -1, _T(""), _T("Miller, Anna@")},
        {_T("Miller"), _T("Anna"), 0, 2147483647, _T(""), _T("Miller, Anna@@2147483647")},
        {_T("Miller"), _T(""), 19800131, -1, _T(""), _T("Miller,@19800131")},
        {_T("Miller"), _T(""), 0, -1, _T("x"), _T("Miller@#x")},
        {_T(""), _T("Anna"), 0, -1, _T(""), _T(", Anna@")},
        {_T(""), _T(""), 0, -1, _T("#1"), _T("@##1")},
        {_T("M\u00FCller,jr"), _T("A, B"), 327671231, -1, _T("x@5#y@5 "), _T("M\u00FCller,jr, A, B@327671231#x@5#y@5 ")},
        {_T("a@b"), _T("@7#c#"), 19800131, 8, _T(""), _T("a@b, @7#c#@19800131@8")},
        {_T("a@19800131"), _T("b@5"), 0, 6, _T(""), _T("a@19800131, b@5@@6")},
        // What the line cannot tell apart.
        {_T("van, Berg"), _T("Jan"), 0, -1, _T(""), _T("van, Berg, Jan@"), "van|Berg, Jan|0|-1|"},
        {_T("A@#"), _T("B"), 19800131, -1, _T(""), _T("A@#, B@19800131"), "A||0|-1|, B@19800131"},
        {_T("A"), _T("B@"), 19800131, -1, _T(""), _T("A, B@@19800131"), "A|B|0|19800131|"},
    };
    for (const auto& row : rows) {
        CPatient patient(row.firstName, row.name, {}, row.extID);
        patient.SetBirthDay(row.birthDay);
        patient.SetPatientID(row.number);
        EXPECT_TRUE(settings_.WriteLastPatient(patient));
        EXPECT_EQ(StoredText(_T("LastPatient")), Narrow(row.line));
        EXPECT_EQ(Shown(settings_.GetLastPatient()), row.read != nullptr ? row.read : Shown(patient)) << Narrow(row.line);
    }
}

TEST_F(SettingsTest, ReadNamesFromALineOfAnotherForm) {
    const std::pair<LPCTSTR, const char*> rows[] = {
        {_T("Miller, Anna"), "Miller|Anna|0|-1|"},
        {_T("Miller, Anna@19801341"), "Miller|Anna|0|-1|"},
        {_T("Miller, Anna@19800131@"), "Miller|Anna@19800131|0|-1|"},  // so named
        {_T("Miller, Anna@19800131@2147483648"), "Miller|Anna|0|-1|"},
        {_T("Miller, Anna@019800131@007"), "Miller|Anna|0|-1|"},
        {_T("Miller, Anna@4314767427"), "Miller|Anna|0|-1|"},  // 19800131 in 32 bits
    };
    EXPECT_EQ(Shown(settings_.GetLastPatient()), "||0|-1|");
    for (const auto& [line, shown] : rows) {
        SetText(HKEY_CURRENT_USER, section_, _T("LastPatient"), line);
        EXPECT_EQ(Shown(settings_.GetLastPatient()), shown) << Narrow(line);
    }
}

}  // namespace
