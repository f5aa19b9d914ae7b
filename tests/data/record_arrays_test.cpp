#include <gtest/gtest.h>
#include <kadata/record_arrays.h>

#include <string>

#include "support/temp_folder.h"

namespace {

constexpr TIMESTAMP_STRUCT BORN = {1980, 1, 31, 0, 0, 0, 0};
constexpr TIMESTAMP_STRUCT BORN_LATER = {1980, 1, 31, 0, 0, 0, 1};

void Add(CPatientArray& patients, LPCTSTR firstName, LPCTSTR name, const TIMESTAMP_STRUCT& birthDay, LPCTSTR extID) {
    CPatient patient(firstName, name, birthDay, extID);
    patient.SetPatientID(static_cast<LONG>(patients.GetSize()) + 1);
    patients.Add(patient);
}

TEST(PatientArray, FindsTheFirstWithAnExternalId) {
    CPatientArray patients;
    CPatient found(CString(_T("Before")));
    EXPECT_FALSE(patients.FindPatientByExtID(CString(), found));
    for (LPCTSTR extID : {_T("A-17"), _T("A-18"), _T("A-17"), _T("B-18"), _T(""), _T("a-18"), _T("XY-1234"), _T("b")})
        Add(patients, _T(""), _T(""), {}, extID);
    patients.Add(CPatient(CString(), CString(), {}, CString(_T("A\0B"), 3)));
    for (LPCTSTR none : {_T("A-"), _T("A-177"), _T("a-17"), _T("b-18"), _T("A"), _T("B"), _T("XZ-1234")})
        EXPECT_FALSE(patients.FindPatientByExtID(none, found)) << test::Narrow(none);
    EXPECT_FALSE(patients.FindPatientByExtID(CString(_T("A\0C"), 3), found));
    EXPECT_EQ(found.GetName(), CString(_T("Before")));
    const std::pair<LPCTSTR, LONG> rows[] = {{_T("A-17"), 1}, {_T("A-18"), 2}, {_T("B-18"), 4}, {_T(""), 5}, {_T("XY-1234"), 7}};
    for (const auto& [extID, number] : rows) {
        EXPECT_TRUE(patients.FindPatientByExtID(extID, found));
        EXPECT_TRUE(patients.FindPatientByExtID(found.GetExtID(), found));  // by a text that the result takes the place of
        EXPECT_EQ(found.GetPatientID(), number);
    }
}

TEST(PatientArray, FindsTheFirstWithNamesAndBirthday) {
    CPatientArray patients;
    Add(patients, _T("Anna"), _T("Miller"), BORN_LATER, _T(""));
    Add(patients, _T("Anna"), _T("Miller"), BORN, _T(""));
    Add(patients, _T("anna"), _T("miller"), BORN, _T(""));
    const struct {
        LPCTSTR firstName, name;
        TIMESTAMP_STRUCT birthDay;
        LONG number;  // 0: none
    } rows[] = {{_T("ANNA"), _T("MILLER"), BORN, 2}, {_T("ANNA"), _T("MILLER"), BORN_LATER, 1},
                {_T("Miller"), _T("Anna"), BORN, 0}, {_T("Anna "), _T("Miller"), BORN, 0},
                {_T("Anna"), _T(""), BORN, 0},       {_T("Anna"), _T("Miller"), {}, 0}};
    for (const auto& row : rows) {
        CPatient found;
        found.SetPatientID(0);
        EXPECT_EQ(patients.FindPatientByNameAndBirth(row.firstName, row.name, row.birthDay, found) != FALSE, row.number != 0);
        EXPECT_EQ(found.GetPatientID(), row.number) << &row - rows;
    }
}

TEST(PatientArray, ComparesNamesByUnicodesSimpleFolding) {
    const struct {
        LPCTSTR a, b;
        bool same;
    } rows[] = {
        {_T("M\u00DCLLER"), _T("m\u00FCller"), true},
        {_T("Mu\u0308ller"), _T("M\u00FCller"), false},
        {_T("Stra\u00DFe"), _T("STRA\u1E9EE"), true},
        {_T("Stra\u00DFe"), _T("STRASSE"), false},
        {_T("\u039F\u0394\u03A5\u03A3\u03A3\u0395\u03A5\u03A3"), _T("\u03BF\u03B4\u03C5\u03C3\u03C3\u03B5\u03C5\u03C2"), true},
        {_T("DI\u015E"), _T("di\u015F"), true},
        {_T("\u0130zmir"), _T("izmir"), false},
        {_T("I\u015F\u0131k"), _T("\u0131\u015F\u0131k"), false},
        {_T("\u212Aelvin"), _T("kelvin"), true},
        {_T("\u00B5"), _T("\u03BC"), true},
        {_T("\u01C4"), _T("\u01C5"), true},              // three cases
        {_T("\u13A0"), _T("\uAB70"), true},              // folds to the capital
        {_T("a\U00010400b"), _T("A\U00010428B"), true},  // beyond the first plane
        {_T("a\U00010400"), _T("a\U00010401"), false},
        {_T("\xDC00"), _T("\xDC28"), false},  // halves of pairs
        {_T("\xD801\xDC00\xDC00"), _T("\xD801\xD801\xDC00"), false},
        {_T("@[`{"), _T("`{@["), false},
    };
    for (const auto& row : rows) {
        for (const auto& [stored, wanted] : {std::pair(row.a, row.b), {row.b, row.a}}) {
            CPatientArray patients;
            Add(patients, stored, stored, BORN, _T(""));
            CPatient found;
            EXPECT_EQ(patients.FindPatientByNameAndBirth(wanted, wanted, BORN, found) != FALSE, row.same) << &row - rows;
        }
    }
}

class CountedImage : public CImageInfo {
public:
    explicit CountedImage(int& count) : m_count(count) {}
    ~CountedImage() override { ++m_count; }

private:
    int& m_count;
};

TEST(ImageInfoArray, DeletesWhatItHoldsAtItsEnd) {
    int deleted = 0;
    const CountedImage kept(deleted);
    {
        CImageInfoArray images;
        for (int i = 0; i < 5; ++i)
            images.Add(new CountedImage(deleted));
        images.Add(nullptr);
        std::unique_ptr<CImageInfo> taken[] = {std::unique_ptr<CImageInfo>(images[0]), std::unique_ptr<CImageInfo>(images[4])};
        images.SetAt(4, nullptr);
        images.RemoveAt(0);
        EXPECT_EQ(deleted, 0);
        try {
            images[5] = nullptr;
            ADD_FAILURE() << "there is no image 5";
        } catch (CInvalidArgException* e) {
            e->Delete();
        }
        taken[0].reset();
        EXPECT_EQ(deleted, 1);
    }
    EXPECT_EQ(deleted, 5);
}

}  // namespace
