#include <gtest/gtest.h>
#include <kadata/record_arrays.h>

#include <string>

#include "support/temp_folder.h"

namespace {

constexpr TIMESTAMP_STRUCT BORN = {1980, 1, 31, 0, 0, 0, 0}, BORN_LATER = {1980, 1, 31, 0, 0, 0, 1};

void Add(CPatientArray& patients, const CString& firstName, const CString& name, const TIMESTAMP_STRUCT& birthDay,
         const CString& extID) {
    CPatient patient(firstName, name, birthDay, extID);
    patient.SetPatientID(static_cast<LONG>(patients.GetSize()) + 1);
    patients.Add(patient);
}

TEST(PatientArray, FindsTheFirstWithAnExternalId) {
    CPatientArray patients;
    CPatient found(CString(_T("Before")));
    EXPECT_FALSE(patients.FindPatientByExtID(CString(), found));
    for (const CString& extID :
         {CString(_T("A-17")), CString(_T("A-17")), CString(), CString(_T("a-18")), CString(_T("A\0B"), 3)})
        Add(patients, CString(), CString(), {}, extID);
    for (const CString& none : {CString(_T("A-")), CString(_T("A-177")), CString(_T("A-18")), CString(_T("A\0C"), 3)})
        EXPECT_FALSE(patients.FindPatientByExtID(none, found)) << test::Narrow(none);
    EXPECT_EQ(found.GetName(), CString(_T("Before")));
    const std::pair<LPCTSTR, LONG> rows[] = {{_T("A-17"), 1}, {_T(""), 3}, {_T("a-18"), 4}};
    for (const auto& [extID, number] : rows) {
        EXPECT_TRUE(patients.FindPatientByExtID(extID, found));
        EXPECT_TRUE(patients.FindPatientByExtID(found.GetExtID(), found));  // by a text that the result takes the place of
        EXPECT_EQ(found.GetPatientID(), number);
    }
}

TEST(PatientArray, FindsTheFirstWithNamesAndBirthday) {
    CPatientArray patients;
    for (const TIMESTAMP_STRUCT& birthDay : {BORN_LATER, BORN, BORN})
        Add(patients, _T("Anna"), _T("Miller"), birthDay, _T(""));
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
        {_T("Stra\u00DFe"), _T("STRASSE"), false},
        {_T("\u0130zmir"), _T("izmir"), false},
        {_T("a\U00010400b"), _T("A\U00010428B"), true},  // beyond the first plane
        {_T("\xDC00"), _T("\xDC28"), false},             // halves of pairs
        {_T("\xD801\xDC00\xDC00"), _T("\xD801\xD801\xDC00"), false},
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
    {
        CImageInfoArray images;
        for (int i = 0; i < 4; ++i)
            images.Add(new CountedImage(deleted));
        images.Add(nullptr);
        const std::unique_ptr<CImageInfo> taken[] = {std::unique_ptr<CImageInfo>(images[0]),
                                                     std::unique_ptr<CImageInfo>(images[3])};
        images.SetAt(3, nullptr);
        images.RemoveAt(0);
        EXPECT_EQ(deleted, 0);
        try {
            images[4] = nullptr;
            ADD_FAILURE() << "there is no image 4";
        } catch (CInvalidArgException* e) {
            e->Delete();
        }
    }
    EXPECT_EQ(deleted, 4);
}

}  // namespace
