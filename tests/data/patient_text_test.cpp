#include <gtest/gtest.h>
#include <kadata/patient.h>

#include <random>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace {

std::string Text(const CString& text) {
    return test::Narrow({text.GetString(), static_cast<std::size_t>(text.GetLength())});
}

CPatient Make(const CString& name, const CString& firstName, DWORD birthDay, const CString& extID) {
    CPatient patient(firstName, name, {}, extID);
    patient.SetBirthDay(birthDay);
    return patient;
}

TEST(PatientName, HasItsForms) {
    const struct {
        LPCTSTR name, firstName, extID;
        DWORD birthDay;
        const char* forms[7];  // 0 to 6; null: as the one before
    } rows[] = {
        {_T(" Miller\t"), _T("\u00A0Anna "), _T(" A "), 0, {"Miller, Anna", 0, "Miller, Anna (A)", 0, 0, 0, "Miller, Anna"}},
        {_T("Miller"), _T(""), _T("A"), 0, {"Miller", 0, "Miller,  (A)", "Miller (A)", "Miller,  (A)", "Miller (A)", "Miller"}},
        {_T("Miller"), _T(" "), _T(""), 19800131, {"Miller,", "Miller", "Miller,  ()", "Miller", "Miller,  ()", "Miller", 0}},
        {_T(""), _T("Anna"), _T("A"), 0, {", Anna", 0, ", Anna (A)", 0, 0, 0, ", Anna"}},
        {_T(" "), _T(""), _T(" A "), 0, {"", 0, ",  (A)", "(A)", "A", 0, 0}},
        {_T(""), _T(""), _T(""), 0, {"", 0, ",  ()", "", 0, 0, 0}},
    };
    for (const auto& row : rows) {
        const CPatient patient = Make(row.name, row.firstName, row.birthDay, row.extID);
        const char* expected = nullptr;
        for (int form = 0; form < 7; ++form) {
            expected = row.forms[form] != nullptr ? row.forms[form] : expected;
            EXPECT_EQ(Text(patient.GetFullName(form)), expected) << "row " << &row - rows << ", form " << form;
        }
        for (const int form : {7, -1, -2147483647 - 1})
            EXPECT_EQ(Text(patient.GetFullName(form)), row.forms[0]) << form;
        EXPECT_EQ(patient.GetName(), CString(row.name));
    }
}

TEST(PatientName, IsTrimmedAndFilledForTheDatabase) {
    CPatient patient = Make(_T(" \tMiller "), _T("\r\n"), 0, _T(" A "));
    patient.TrimName();
    EXPECT_EQ(Text(patient.GetName() + _T("|") + patient.GetFirstName() + _T("|") + patient.GetExtID()), "Miller|| A ");
    patient.CheckNameForDB();
    EXPECT_EQ(Text(patient.GetName() + _T("|") + patient.GetFirstName()), "Miller| ");
}

TEST(PatientLine, HoldsNamesBirthdayAndExternalId) {
    const struct {
        LPCTSTR name, firstName;
        DWORD birthDay;
        LPCTSTR extID;
        const char* expected;
    } rows[] = {{_T("Miller"), _T("Anna"), 19800131, _T("A-17"), "Miller, Anna,19800131#A-17"},
                {_T(""), _T(""), 0, _T(" A 17 "), "# A 17"},
                {_T("  Miller "), _T(" "), 0, _T(""), "  Miller "},  // a name for the database: as it stands
                {_T("  Miller "), _T("  "), 0, _T(""), "Miller"},
                {_T("  Miller "), _T(" "), 0, _T("A"), "Miller#A"},
                {_T("  Miller "), _T(" "), 19800131, _T(""), "Miller,,19800131"}};
    for (const auto& row : rows)
        EXPECT_EQ(Text(Make(row.name, row.firstName, row.birthDay, row.extID).GetDirectoryName()), row.expected) << &row - rows;
}

TEST(PatientLine, IsPartedAtItsFirstSeparators) {
    const struct {
        LPCTSTR line;
        const char* parts;
        DWORD birthDay;
    } rows[] = {{_T("Miller, Anna,19800131#A-17"), "Miller|Anna|A-17", 19800131},
                {_T("A#B#C, D "), "A||B#C, D ", 0},
                {_T(","), "||", 0},
                {_T("\t Miller ,\u3000Anna , +19800131 or so,1"), "Miller|Anna|", 19800131},
                {_T("M,A,-19800131"), "M|A|", 0},
                {_T("M,A,19801332"), "M|A|", 0},
                {_T("M,A,99999999999999999999"), "M|A|", 0},
                // Names that hold separators do not come back: the line cannot tell.
                {_T("Miller, jun., Anna,19800131"), "Miller|jun.|", 0},
                {_T("Mill#er, Anna,19800131"), "Mill||er, Anna,19800131", 0}};
    for (const auto& row : rows) {
        CPatient patient;
        patient.SetPatientID(5);
        patient.SetExtID(_T("before"));
        patient.SetFullName(row.line);
        EXPECT_EQ(Text(patient.GetName() + _T("|") + patient.GetFirstName() + _T("|") + patient.GetExtID()), row.parts);
        EXPECT_EQ(patient.GetBirthDayVal(), row.birthDay) << &row - rows;
        EXPECT_EQ(patient.GetPatientID(), -1);
    }
}

// Patients put together of pieces, the same ones in every run.
class Generator {
public:
    CPatient Patient(const std::vector<LPCTSTR>& inNames, const std::vector<LPCTSTR>& inIDs) {
        const auto day = static_cast<DWORD>(10000 * (1880 + Below(200)) + 100 * (1 + Below(12)) + 1 + Below(31));
        return Make(Word(inNames), Word(inNames), Below(3) == 0 ? 0 : day, Word(inIDs).TrimRight());
    }

private:
    CString Word(const std::vector<LPCTSTR>& pieces) {
        CString word;
        for (std::size_t left = Below(5); left != 0; --left)
            word += pieces[Below(pieces.size())];
        return word;
    }
    std::size_t Below(std::size_t limit) { return random_() % limit; }

    std::mt19937 random_{20240229};
};

TEST(PatientLine, ComesBackAsItWentAndWithSeparatorsInNamesAfterOneReading) {
    const std::vector<LPCTSTR> inNames = {_T("M\u00FCller"), _T("-"), _T("von der"), _T("O'"), _T("1980"), _T("\U0001F600")};
    const std::vector<LPCTSTR> pieces = {_T("M\u00FCller"), _T(","), _T(", "), _T("#"), _T(" "), _T("19800131"), _T("\u00A0")};
    Generator generator;
    for (int i = 0; i < 3000; ++i) {
        const CPatient patient = generator.Patient(inNames, {_T("\u00C4"), _T("17"), _T("#"), _T(","), _T(" ")});
        EXPECT_TRUE(CPatient(patient.GetDirectoryName()) == patient) << Text(patient.GetDirectoryName());
        CString line = generator.Patient(pieces, pieces).GetDirectoryName();
        const CPatient read(line.TrimRight());
        EXPECT_TRUE(CPatient(read.GetDirectoryName()) == read) << Text(line);
    }
}

TEST(PatientBirthday, IsShownWithAYearOfFourDigits) {
    const CString shown = Make(_T("M"), _T("A"), 18800203, _T("")).GetBirthDayString();
    EXPECT_GE(shown.Find(_T("1880")), 0) << Text(shown);
    for (const DWORD none : {0u, 19800231u})
        EXPECT_EQ(Text(Make(_T("M"), _T("A"), none, _T("")).GetBirthDayString()), "") << none;
}

TEST(PatientThumbnail, LiesBelowTheBaseFolder) {
    const std::pair<LPCTSTR, std::string> rows[] = {{_T(" C:\\Images "), "C:\\Images\\__Patient__"},
                                                    {_T("C:\\100%s\\"), "C:\\100%s\\__Patient__"},
                                                    {_T("C:/"), "C:/\\__Patient__"},
                                                    {_T(" "), "__Patient__"}};
    CString dir, path = _T("before"), fileName;
    EXPECT_FALSE(CPatient().GetThumbnailFileInfo(_T("C:\\"), dir, path, fileName));
    EXPECT_EQ(Text(dir + path + fileName), "before");
    for (const auto& [base, expected] : rows) {
        EXPECT_TRUE(CPatient(CString(_T("Miller"))).GetThumbnailFileInfo(base, dir, path, fileName));
        EXPECT_EQ(Text(dir), expected);
        EXPECT_EQ(Text(path), expected + "\\Patient.jpg");
        EXPECT_EQ(Text(fileName), "Patient.jpg");
    }
}

}  // namespace
