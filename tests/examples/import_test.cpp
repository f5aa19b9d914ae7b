#include <gtest/gtest.h>

#include <string>

#include "gdt.h"
#include "import.h"
#include "store.h"
#include "support/temp_folder.h"

namespace {

std::string Line(const std::string& field, const std::string& content) {
    std::string length = std::to_string(content.size() + 9);
    return std::string(3 - length.size(), '0') + length + field + content + "\r\n";
}

std::string Begin() {
    return Line("8000", "6301");
}

std::string Patient(const std::string& number, const std::string& surname) {
    return Begin() + Line("3000", number) + Line("3101", surname);
}

TEST(Gdt, ReadsEachCharacterSet) {
    const struct {
        std::string set;
        std::string bytes;
        const TCHAR* text;
        std::size_t problems;
    } rows[] = {
        {Line("9206", "1"), "Mueller", _T("Mueller"), 0},
        {Line("9206", "1"), "M\x81ller", _T("M\xFFFDller"), 1},
        {Line("9206", "2"), "M\x81ller-\xE1", _T("M\x00FCller-\x00DF"), 0},
        {Line("9206", "3"), "M\xFCller-\x80", _T("M\x00FCller-\x20AC"), 0},
        {"", "M\x81ller", _T("M\x00FCller"), 0},
        {Line("9206", "7"), "M\x81ller", _T("M\x00FCller"), 1},
    };
    for (const auto& row : rows) {
        const SGdtFile file = ReadGdt(Begin() + Line("3101", row.bytes) + row.set);  // the set may come last
        ASSERT_EQ(file.patients.size(), 1U);
        EXPECT_EQ(test::Narrow(file.patients[0].surname.GetString()), test::Narrow(row.text));
        EXPECT_EQ(file.problems.size(), row.problems);
    }
}

TEST(Gdt, LosesOnlyTheRecordOfADamagedLine) {
    const std::string damaged[] = {
        "01231O1abc\r\n", "0993101abc\r\n", "0123101abc\n", "0123101ab", "-123101abc\r\n", "\r\n", std::string("\0\xFF\0\r\n", 5),
    };
    for (const std::string& line : damaged) {
        SCOPED_TRACE(line);
        const bool cut = !line.ends_with('\n');
        const std::string rest = cut ? "" : Line("3102", "Anna") + Patient("3", "C");
        const SGdtFile file = ReadGdt(Patient("1", "A") + Begin() + Line("3000", "2") + line + rest);
        ASSERT_EQ(file.patients.size(), cut ? 1U : 2U);
        EXPECT_EQ(file.patients[0].number, _T("1"));
        EXPECT_EQ(file.patients.back().number, cut ? _T("1") : _T("3"));
        EXPECT_EQ(file.damaged, 1);
        ASSERT_EQ(file.problems.size(), 1U);
        EXPECT_EQ(file.problems[0].line, 6);
    }
}

TEST(Gdt, FindsNothingInWhatIsNoPatientFile) {
    EXPECT_TRUE(ReadGdt("").problems.empty());
    EXPECT_TRUE(ReadGdt("Dear Sir or Madam,\r\n").patients.empty());
    EXPECT_EQ(ReadGdt(Line("3101", "Nobody")).problems.size(), 1U);
    const SGdtFile crossed = ReadGdt(Patient("1", "A") + "no line\r\n" + Patient("2", "B"));
    EXPECT_EQ(crossed.damaged, 1);
    EXPECT_EQ(crossed.patients.size(), 1U);
}

TEST(Import, JudgesBirthdaysByTheCalendar) {
    const struct {
        const TCHAR* text;
        DWORD value;
    } rows[] = {
        {_T("31011980"), 19800131}, {_T("29022000"), 20000229}, {_T("29021900"), 0}, {_T("31042001"), 0},  {_T("01131985"), 0},
        {_T("00001970"), 0},        {_T("01011880"), 18800101}, {_T("31121879"), 0}, {_T("1011980"), 0},   {_T(""), 0},
        {_T("01.01.80"), 0},        {_T("99999999"), 0},        {_T("12a41977"), 0}, {_T("010119800"), 0},
    };
    for (const auto& row : rows) {
        const SImported imported = ImportPatient({1, _T("7"), _T("Miller"), _T("Anna"), row.text});
        EXPECT_EQ(imported.patient.GetBirthDayVal(), row.value) << test::Narrow(row.text);
        EXPECT_EQ(imported.remarks.empty(), row.value != 0);
    }
}

TEST(Import, TellsWhatTheExchangeRecordCannotHold) {
    const CString fits(_T('x'), 32);
    EXPECT_TRUE(ImportPatient({1, fits, fits, fits, _T("31011980")}).remarks.empty());
    const SImported cut = ImportPatient({1, fits + _T("y"), fits + _T("y"), fits, _T("31011980")});
    EXPECT_EQ(cut.remarks.size(), 2U);
    EXPECT_EQ(cut.patient.GetName(), fits + _T("y")) << "the archive keeps all of it";
    const SImported empty = ImportPatient({1, _T("7"), _T(""), _T("  "), _T("31011980")});
    EXPECT_EQ(empty.patient.GetName(), _T(" "));
    EXPECT_EQ(empty.remarks.size(), 2U);
}

TEST(Import, StoresAndReadsBackAFolder) {
    const test::TempFolder folder;
    folder.Write(_T("b.gdt"), Patient("2", "B"));
    folder.Write(_T("a.GDT"), Patient("1", "A"));
    folder.Write(_T("c.txt"), Patient("3", "C"));
    const SImport import = ImportFolder(folder.Path().c_str());
    ASSERT_EQ(import.patients.size(), 2U);
    EXPECT_EQ(import.patients[0].file, _T("a.GDT"));
    const CString archive = folder.Path(_T("p.kda")).c_str();
    const CString records = folder.Path(_T("p.tpat")).c_str();
    WriteArchive(archive, import.patients);
    WriteRecords(records, import.patients);
    EXPECT_EQ(CompareStored(import.patients, ReadArchive(archive), ReadRecords(records)), 0);
    std::string bytes = folder.Read(_T("p.tpat"));
    bytes[144] = 'X';
    folder.Write(_T("p.tpat"), bytes);
    EXPECT_EQ(CompareStored(import.patients, ReadArchive(archive), ReadRecords(records)), 1);
}

}  // namespace
