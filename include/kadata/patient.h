#pragma once

// The record of one patient, and the two byte-packed records in which patients travel to other software.

#include <afx.h>
#include <kadata/export.h>
#include <kadata/kalido_object.h>
#include <sqltypes.h>

#include <bit>

// The layouts below are fixed byte by byte (docs/formats.md). Texts are in the ANSI code page and end with a zero, or with their
// field; numbers are little-endian, as they lie in memory.
static_assert(std::endian::native == std::endian::little);
#pragma pack(push, 1)

struct tagKADATE {
    WORD year;
    BYTE month;  // 1 to 12
    BYTE day;    // 1 to 31
};

// The patient of the database library.
struct tagTPATIENT {
    LONG patientID;  // 0: none
    LONG recordFlag;
    char extID[33];
    BYTE reserved1[65];
    char klidaID[38];
    char name[33];
    char firstName[33];
    BYTE birthDay[sizeof(TIMESTAMP_STRUCT)];  // bytes, because the record has no alignment: to be copied with memcpy
    BYTE reserved2[71];
};

// The patient of the imaging software.
struct tagPATIENT {
    char name[33];
    char firstName[33];
    tagKADATE birthDay;
    tagKADATE recordDay;  // on which the record was made
    char text[13];        // "-"
    WORD patientID;       // the low 16 bits; 0: none
    char extID[21];
    WORD reserved;
};

#pragma pack(pop)

static_assert(sizeof(tagKADATE) == 4 && sizeof(tagTPATIENT) == 297 && sizeof(tagPATIENT) == 112 &&
              sizeof(TIMESTAMP_STRUCT) == 16);

// Surname, first name, birthday, the imaging database's patient number and the identifier of a practice system. A value:
// objects are independent of each other, and one object may be used by several threads for reading only. Throws nothing of its
// own but where an archive is read or written; a conversion that is given null does nothing.
class KADATA_API CPatient : public CKalidoObject {
public:
    static constexpr LONG NO_PATIENT_ID = -1;
    static constexpr LONG DEFAULT_RECORD_FLAG = 1;

    CPatient();
    CPatient(const CPatient& other);
    // Deliberate: the first name comes before the surname. The birthday is taken as it stands.
    CPatient(const CString& firstName, const CString& name, const TIMESTAMP_STRUCT& birthDay, const CString& extID);
    // The birthday is taken as it stands.
    CPatient(const tagTPATIENT& record);
    // The one-line text form, see SetFullName.
    CPatient(const CString& text);
    ~CPatient() override;

    CPatient& operator=(const CPatient& other);
    // All but the spare text, which the record does not have. The birthday is taken as it stands.
    CPatient& operator=(const tagTPATIENT& record);

    // No birthday, number, names and external id, and the record flag at 1. HasKlidaID and the spare text stay.
    void Invalidate();

    const CString& GetName() const { return m_Name; }
    void SetName(const CString& name) { m_Name = name; }
    void SetName(CString name, CString firstName);
    const CString& GetFirstName() const { return m_FirstName; }
    void SetFirstName(const CString& firstName) { m_FirstName = firstName; }
    const CString& GetExtID() const { return m_ExtID; }
    void SetExtID(const CString& extID) { m_ExtID = extID; }
    BOOL HasExternalID() const { return !m_ExtID.IsEmpty(); }
    // The number in the imaging database; 0 and less stand for none.
    LONG GetPatientID() const { return m_PatientID; }
    void SetPatientID(LONG patientID) { m_PatientID = patientID; }
    void InvalidateQuintarID() { m_PatientID = NO_PATIENT_ID; }
    BOOL HasQuintarID() const { return m_PatientID > 0; }
    // Whether the database record that the patient came from had a KLIDA identifier.
    BOOL HasKlidaID() const { return m_HasKlidaID; }
    // A number of the database, carried along and not interpreted.
    LONG GetRecordFlag() const { return m_RecordFlag; }
    void SetRecordFlag(LONG recordFlag) { m_RecordFlag = recordFlag; }
    // A text for the host's use: copied with the patient, never converted or archived.
    const CString& GetSpareText() const { return m_SpareText; }
    void SetSpareText(const CString& text) { m_SpareText = text; }

    // All zero for no birthday; invalid where the source of the patient was.
    const TIMESTAMP_STRUCT& GetBirthDay() const { return m_BirthDay; }
    // An invalid birthday becomes all zero.
    void SetBirthDay(const TIMESTAMP_STRUCT& birthDay);
    // Year * 10000 + month * 100 + day, for example 19800131. The time of day stays; an invalid day makes all of it zero.
    void SetBirthDay(DWORD value);
    DWORD GetBirthDayVal() const;
    // Year 1880 or later, month 1 to 12, day 1 to 31. Deliberate: the 31st of February is valid, as it is in the database.
    BOOL IsBirthDayValid() const;
    // In the user's short date form, the year always with four digits. Empty for an invalid day, and for one that no month has.
    CString GetBirthDayString() const;

    // With an external id, or with both names and a valid birthday.
    BOOL IsValid() const;

    void TrimName();
    // Makes each empty name a blank: the database does not accept empty names.
    void CheckNameForDB();

    // The patient in one of these forms; names and external id are trimmed for it, and so is the result.
    //   1  "Surname, First"          without what is empty
    //   2  "Surname, First (ext)"    always with comma and brackets
    //   3  "Surname, First (ext)"    without what is empty
    //   4  as 2, 5 as 3, 6 as 1      but the external id alone when both names are empty
    //   0 and any other: as 1, but with the comma also when there is a birthday and no first name
    CString GetFullName(int format) const;

    // The patient in one line, which serves as the name of a folder: "Miller, Anna,19800131#A-17". Without a birthday and
    // an external id those parts are missing.
    CString GetDirectoryName() const;
    // Reads that line back; every other member becomes as Invalidate leaves it. What stands behind the first # is the external
    // id, unchanged; the rest is parted at its first two commas. A birthday that is no valid date becomes none.
    void SetFullName(CString text);

    static CString GetThumbnailDirectory();
    static CString GetThumbnailFileName();
    // Where the patient's small picture lies under `baseDir`: its folder, its path, its file name. FALSE, and the results
    // unchanged, for a patient whose GetDirectoryName is empty.
    BOOL GetThumbnailFileInfo(CString baseDir, CString& dir, CString& path, CString& fileName) const;

    // A patient that has a number is equal to one with the same number, names and birthday; the external id does not count. One
    // without is equal to one without a number that has the same names, external id and birthday, any two invalid birthdays
    // counting as the same.
    // Deliberate: the left side decides, by whether it has a number.
    bool operator==(const CPatient& other) const;

    // Fills the whole record. Texts are cut so that no character is halved. Deliberate: the record flag is always written as 1,
    // and no valid birthday as 1900-01-01.
    void ConvertToTPatient(tagTPATIENT* record) const;
    // The same for the short record, made today; the birthday is written as it stands.
    void ConvertToPatient(tagPATIENT* record) const;
    void ConvertToPatient(tagPATIENT* record, const CTime& now) const;

    // Writes `source` up to its first zero in the ANSI code page, with a terminator and at most `size` bytes; what does not fit
    // is left off at a character boundary. Nothing is written for null or a size below 1.
    static void CopyAsciiString(char* target, const CString& source, int size);
    // 1880-01-01 for a time that has no local form, and for one before 1880.
    static tagKADATE CTime2KaDate(const CTime& time);
    // Unchecked; each part is cut to the width of its field.
    static tagKADATE Timestamp2KaDate(const TIMESTAMP_STRUCT& time);

protected:
    // Empty.
    virtual CString GetArchiveName() const;

private:
    friend KADATA_API CArchive& operator<<(CArchive& archive, const CPatient& patient);
    friend KADATA_API CArchive& operator>>(CArchive& archive, CPatient& patient);

    TIMESTAMP_STRUCT m_BirthDay{};
    CString m_Name;
    CString m_FirstName;
    LONG m_PatientID = NO_PATIENT_ID;
    CString m_ExtID;
    LONG m_RecordFlag = DEFAULT_RECORD_FLAG;
    BOOL m_HasKlidaID = FALSE;
    CString m_SpareText;
};

// HasKlidaID and the spare text are not archived. Both throw a CArchiveException: an archive of the other direction as CArchive
// says (readOnly, writeOnly), one that ends too early endOfFile, and one that does not hold a patient of version 1 badIndex. A
// failed read leaves the patient as it was.
KADATA_API CArchive& operator<<(CArchive& archive, const CPatient& patient);
KADATA_API CArchive& operator>>(CArchive& archive, CPatient& patient);
