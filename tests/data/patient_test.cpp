#include <gtest/gtest.h>
#include <kadata/patient.h>

#include <cstring>

namespace {

constexpr TIMESTAMP_STRUCT NO_DAY = {};
constexpr TIMESTAMP_STRUCT BORN = {1980, 1, 31, 0, 0, 0, 0};
constexpr TIMESTAMP_STRUCT BORN_AT_NINE = {1980, 1, 31, 9, 8, 7, 6};
constexpr TIMESTAMP_STRUCT IMPOSSIBLE = {1980, 13, 1, 0, 0, 0, 0};

struct Members {
    LPCTSTR name;
    LPCTSTR firstName;
    LPCTSTR extID;
    LONG number;
    LONG flag;
    BOOL hasKlidaID;
    LPCTSTR spare;
    TIMESTAMP_STRUCT birthDay;
};

void ExpectMembers(const CPatient& patient, const Members& expected) {
    EXPECT_EQ(patient.GetName(), CString(expected.name));
    EXPECT_EQ(patient.GetFirstName(), CString(expected.firstName));
    EXPECT_EQ(patient.GetExtID(), CString(expected.extID));
    EXPECT_EQ(patient.GetPatientID(), expected.number);
    EXPECT_EQ(patient.GetRecordFlag(), expected.flag);
    EXPECT_EQ(patient.HasKlidaID(), expected.hasKlidaID);
    EXPECT_EQ(patient.GetSpareText(), CString(expected.spare));
    EXPECT_EQ(std::memcmp(&patient.GetBirthDay(), &expected.birthDay, sizeof(expected.birthDay)), 0);
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
    const Members all = {_T("Miller"), _T("Anna"), _T("A-17"), 4711, 9, TRUE, _T("spare"), BORN_AT_NINE};
    ExpectMembers(CPatient(patient), all);
    CPatient assigned;
    ExpectMembers(assigned, {_T(""), _T(""), _T(""), -1, 1, FALSE, _T(""), NO_DAY});
    assigned = patient;
    ExpectMembers(assigned, all);
    patient.Invalidate();  // but for the last two
    ExpectMembers(patient, {_T(""), _T(""), _T(""), -1, 1, TRUE, _T("spare"), NO_DAY});
    ExpectMembers(CPatient(_T("Anna"), _T("Miller"), IMPOSSIBLE, _T("A-17")),
                  {_T("Miller"), _T("Anna"), _T("A-17"), -1, 1, FALSE, _T(""), IMPOSSIBLE});
}

TEST(Patient, TakesABirthdayOnlyWhenItIsValid) {
    const struct {
        DWORD value;
        bool valid;
    } rows[] = {
        {19800131, true},    {19801332, false}, {19801232, false},  {19800001, false},
        {19800100, false},   {19801231, true},  {19800231, true},   {18800101, true},
        {18791231, false},   {327671231, true}, {327680101, false}, {674160101, false},  // 67,416 is 1,880 in 16 bits
        {4294967295, false}, {0, false},
    };
    for (const auto& row : rows) {
        CPatient patient;
        patient.SetBirthDay(row.value);
        EXPECT_EQ(patient.GetBirthDayVal(), row.valid ? row.value : 0);
        EXPECT_EQ(patient.IsBirthDayValid(), row.valid) << row.value;
    }
    CPatient patient(CString(), CString(), BORN_AT_NINE, CString());
    patient.SetBirthDay(20010203);
    const TIMESTAMP_STRUCT later = {2001, 2, 3, 9, 8, 7, 6};  // the time of day stays
    EXPECT_EQ(std::memcmp(&patient.GetBirthDay(), &later, sizeof(later)), 0);
    patient.SetBirthDay(IMPOSSIBLE);
    EXPECT_EQ(std::memcmp(&patient.GetBirthDay(), &NO_DAY, sizeof(NO_DAY)), 0);
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
    const struct {
        Person person;
        bool expected;
    } rows[] = {
        {{.extID = _T("")}, true},
        {{.name = _T(""), .firstName = _T(""), .birthDay = NO_DAY}, true},
        {{.name = _T(""), .extID = _T("")}, false},
        {{.firstName = _T(""), .extID = _T("")}, false},
        {{.birthDay = IMPOSSIBLE, .extID = _T("")}, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.person.Make().IsValid(), row.expected) << &row - rows;
    }
}

TEST(Patient, IsComparedByNumberElseByExternalId) {
    const struct {
        Person left;
        Person right;
        bool expected;
    } rows[] = {
        // With a number: the external id does not count.
        {{.number = 5}, {.extID = _T("B"), .number = 5}, true},
        {{.number = 5}, {.number = 6}, false},
        {{.number = 5}, {.name = _T("MILLER"), .number = 5}, false},
        {{.number = 5}, {.firstName = _T("anna"), .number = 5}, false},
        {{.number = 5}, {.birthDay = BORN_AT_NINE, .number = 5}, false},
        {{.birthDay = IMPOSSIBLE, .number = 5}, {.birthDay = NO_DAY, .number = 5}, false},
        // One with a number.
        {{.number = 5}, {}, false},
        {{}, {.number = 5}, false},
        // Without; 0 and below are the same.
        {{.number = 0}, {.number = -7}, true},
        {{}, {.extID = _T("a-17")}, false},
        {{}, {.name = _T("miller")}, false},
        {{}, {.firstName = _T("Anne")}, false},
        {{}, {.birthDay = BORN_AT_NINE}, false},
        {{}, {.birthDay = IMPOSSIBLE}, false},
        {{.birthDay = IMPOSSIBLE}, {}, false},
        {{.birthDay = IMPOSSIBLE}, {.birthDay = NO_DAY}, true},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.left.Make() == row.right.Make(), row.expected) << &row - rows;
        EXPECT_EQ(row.left.Make() != row.right.Make(), !row.expected) << &row - rows;
    }
}

}  // namespace
