#pragma once

// Lists of patients and of images.
//
// Both are CArrays: an index outside throws CInvalidArgException, and one object is used by one thread at a time, by several only
// for reading. They are not archived as a whole (CObject::Serialize does nothing); patients go through archives one by one.

#include <afxtempl.h>
#include <kadata/export.h>
#include <kadata/image_info.h>
#include <kadata/patient.h>

// Patients by value.
class KADATA_API CPatientArray : public CArray<CPatient, CPatient> {
public:
    CPatientArray();
    ~CPatientArray() override;

    // The first patient with that external id, case included, into `found`. FALSE, and `found` unchanged, when there is none. An
    // empty id finds the first patient without one.
    BOOL FindPatientByExtID(const CString& extId, CPatient& found) const;
    // The same for the first patient of those names, untrimmed and without regard to case (Unicode's simple case folding:
    // umlauts fold, the sharp s is not "ss"), and that birthday, all fields of it.
    // Deliberate: the first name comes before the surname.
    BOOL FindPatientByNameAndBirth(const CString& firstName, const CString& name, const TIMESTAMP_STRUCT& birthday,
                                   CPatient& found) const;
};

// Owns the records that it holds when it is destroyed, and deletes them then; null is allowed. What is removed or overwritten
// before (RemoveAt, RemoveAll, SetAt, a smaller SetSize) belongs to whoever does so. A record must not be held twice: Append,
// Copy and InsertAt of another array copy pointers, and one of the two has to give them up.
class KADATA_API CImageInfoArray : public CArray<CImageInfo*, CImageInfo*> {
public:
    CImageInfoArray();
    ~CImageInfoArray() override;
};
