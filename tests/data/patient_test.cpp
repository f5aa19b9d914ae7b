#include <gtest/gtest.h>
#include <kadata/patient.h>

#include <cstring>
#include <string>

#include "support/temp_folder.h"

namespace {

constexpr TIMESTAMP_STRUCT NO_DAY = {};
constexpr TIMESTAMP_STRUCT BORN = {1980, 1, 31, 0, 0, 0, 0};
constexpr TIMESTAMP_STRUCT BORN_AT_NINE = {1980, 1, 31, 9, 8, 7, 6};
constexpr TIMESTAMP_STRUCT IMPOSSIBLE = {1980, 13, 1, 0, 0, 0, 0};

// All members but the birthday in one line.
std::string Members(const CPatient& patient) {
    CString text;
    text.Format(_T("%s|%s|%s|%d|%d|%d|%s"), patient.GetName(), patient.GetFirstName(), patient.GetExtID(), patient.GetPatientID(),
                patient.GetRecordFlag(), patient.HasKlidaID(), patient.GetSpareText());
    return test::Narrow(text.GetString());
}

bool IsBorn(const CPatient& patient, const TIMESTAMP_STRUCT& day) {
    return std::memcmp(&patient.GetBirthDay(), &day, sizeof(day)) == 0;
}

TEST(Patient, KeepsCopiesAndForgetsItsMembers) {
    tagTPATIENT record = {};
    record.klidaID[0] = 'K';
    CPatient patient(record);
    patient.SetName(_T("Anna"), _T("Miller"));
    patient.SetName(patient.GetFirstName(), patient.GetName());
    patient.SetExtID(_T("A-17"));
    patient.SetPatientID(4711);
    patient.SetRecordFlag(9);
    patient.SetSpareText(_T("spare"));
    patient.SetBirthDay(BORN_AT_NINE);
    CPatient assigned;
    EXPECT_TRUE(Members(assigned) == "|||-1|1|0|" && IsBorn(assigned, NO_DAY));
    assigned = patient;
    for (const CPatient& copy : {assigned, CPatient(patient)})
        EXPECT_TRUE(Members(copy) == "Miller|Anna|A-17|4711|9|1|spare" && IsBorn(copy, BORN_AT_NINE)) << Members(copy);
    patient.Invalidate();  // but for the last two
    EXPECT_TRUE(Members(patient) == "|||-1|1|1|spare" && IsBorn(patient, NO_DAY)) << Members(patient);
    const CPatient made(_T("Anna"), _T("Miller"), IMPOSSIBLE, _T("A-17"));
    EXPECT_TRUE(Members(made) == "Miller|Anna|A-17|-1|1|0|" && IsBorn(made, IMPOSSIBLE)) << Members(made);
}

TEST(Patient, TakesABirthdayOnlyWhenItIsValid) {
    const std::pair<DWORD, bool> rows[] = {
        {19800131, true}, {19801332, false}, {19801232, false},  {19800001, false}, {19800100, false},
        {19800231, true}, {18800101, true},  {18791231, false},  {327671231, true}, {327680101, false},
        {19801231, true}, {0, false},        {674160101, false},  // 67,416 is 1,880 in 16 bits
    };
    for (const auto& [value, valid] : rows) {
        CPatient patient;
        patient.SetBirthDay(value);
        EXPECT_EQ(patient.GetBirthDayVal(), valid ? value : 0);
        EXPECT_EQ(patient.IsBirthDayValid(), valid) << value;
    }
    CPatient patient(CString(), CString(), BORN_AT_NINE, CString());
    patient.SetBirthDay(20010203);
    EXPECT_TRUE(IsBorn(patient, {2001, 2, 3, 9, 8, 7, 6}));  // the time of day stays
    patient.SetBirthDay(IMPOSSIBLE);
    EXPECT_TRUE(IsBorn(patient, NO_DAY));
}

struct Person {
    LPCTSTR name = _T("Miller");
    LPCTSTR firstName = _T("Anna");
    TIMESTAMP_STRUCT birthDay = BORN;
    LPCTSTR extID = _T("A-17");
    LONG number = -1;

    CPatient Make() const {
        CPatient patient(firstName, name, birthDay, extID);
        patient.SetPatientID(number);
        return patient;
    }
};

TEST(Patient, IsValidWithAnExternalIdOrNamesAndBirthday) {
    const std::pair<Person, bool> rows[] = {{{.extID = _T("")}, true},
                                            {{.name = _T(""), .firstName = _T(""), .birthDay = NO_DAY}, true},
                                            {{.name = _T(""), .extID = _T("")}, false},
                                            {{.firstName = _T(""), .extID = _T("")}, false},
                                            {{.birthDay = IMPOSSIBLE, .extID = _T("")}, false}};
    for (const auto& [person, expected] : rows)
        EXPECT_EQ(person.Make().IsValid(), expected);
}

TEST(Patient, IsComparedByNumberElseByExternalId) {
    const struct {
        Person left, right;
        bool expected;
    } rows[] = {// With a number: the external id does not count.
                {{.number = 5}, {.extID = _T("B"), .number = 5}, true},
                {{.number = 5}, {.number = 6}, false},
                {{.number = 5}, {.name = _T("MILLER"), .number = 5}, false},
                {{.number = 5}, {.birthDay = BORN_AT_NINE, .number = 5}, false},
                {{.birthDay = IMPOSSIBLE, .number = 5}, {.birthDay = NO_DAY, .number = 5}, false},
                // One with a number.
                {{.number = 5}, {}, false},
                // Without; 0 and below are the same.
                {{.number = 0}, {.number = -7}, true},
                {{}, {.extID = _T("a-17")}, false},
                {{}, {.firstName = _T("Anne")}, false},
                {{}, {.birthDay = IMPOSSIBLE}, false},
                {{.birthDay = IMPOSSIBLE}, {.birthDay = NO_DAY}, true}};
    for (const auto& row : rows) {
        EXPECT_EQ(row.left.Make() == row.right.Make(), row.expected) << &row - rows;
        EXPECT_EQ(row.right.Make() != row.left.Make(), !row.expected) << &row - rows;
    }
}

}  // namespace
