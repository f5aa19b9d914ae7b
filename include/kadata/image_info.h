#pragma once

// The record of one image of a patient, and the reader that fills it from the tags of a picture file.

#include <afx.h>
#include <kadata/export.h>

#include <memory>

// To which database image and patient it belongs, where its file lies, what it shows, its kind, and when it was taken. A value:
// objects are independent of each other, and one object may be used by several threads for reading only. Throws nothing of its
// own.
class KADATA_API CImageInfo {
public:
    // Single bits.
    enum EImageType : LONG {
        VideoCapture = 1,  // take type "VC"
        Video = 2,         // "VI"
        XRay = 4,
        StoredVideo = 8,  // "VI" too, but no take-type code leads here
        Unknown = 16,
    };
    static constexpr LONG NO_IMAGE_ID = -1;

    // Of unknown type and present; without image number (-1), patient number (0), texts and take time.
    CImageInfo();
    // The type as SetImageTypeByTakeType has it.
    CImageInfo(LONG patientId, LONG imageId, const CString& imageName, const CString& filePath, const char* takeType);
    CImageInfo(const CImageInfo& other);
    virtual ~CImageInfo();

    CImageInfo& operator=(const CImageInfo& other);

    // The tooth or region to show: the tooth, or two blanks when there is none.
    virtual CString GetRegion() const;
    // "TARVO\P_000123\name.ext", relative to the imaging software's data: the patient number in at least six digits, and
    // GetFileName.
    virtual CString GetImagePath() const;

    LONG GetImageID() const { return m_ImageID; }
    void SetImageID(LONG imageId) { m_ImageID = imageId; }
    LONG GetPatientID() const { return m_PatientID; }
    void SetPatientID(LONG patientId) { m_PatientID = patientId; }
    const CString& GetFilePath() const { return m_FilePath; }
    void SetFilePath(const CString& path) { m_FilePath = path; }
    // Name and extension of the file path.
    CString GetFileName() const;
    const CString& GetImageName() const { return m_ImageName; }
    void SetImageName(const CString& name) { m_ImageName = name; }
    const CString& GetTooth() const { return m_Tooth; }
    void SetTooth(const CString& tooth) { m_Tooth = tooth; }
    void SetTooth(unsigned int number);

    // With " *" behind it when `markAbsent` is true and the image is not present.
    CString GetDirectory(BOOL markAbsent) const;
    // Deliberate: the image name becomes `directory` too.
    void SetDirectory(const CString& directory);
    // Whether the image's file is there, as far as the user of the record has said.
    BOOL IsPresent() const { return m_Present; }
    void SetPresent(BOOL present) { m_Present = present; }

    EImageType GetImageType() const { return m_ImageType; }
    void SetImageType(EImageType type) { m_ImageType = type; }
    // "VC" and "VI" as above, "??" for any other type.
    CString GetTakeType() const;
    // Of a code of four characters or more the first two do not count. The rest "VC" is VideoCapture, any other with a V at its
    // start Video, with an X XRay, and all else Unknown. Case counts. Null is the empty code.
    void SetImageTypeByTakeType(const char* code);
    // The type's display name from the host's resources; empty without one.
    CString GetImageTypeString() const;
    // The numbers of the host's string resources that hold the display names, in the order of EImageType; 0 for none. Of the
    // whole process: to be set once, before other threads use the names.
    static void SetImageTypeNames(UINT videoCapture, UINT video, UINT xRay, UINT storedVideo, UINT unknown);

    // A time that is not after 1970-01-01 00:00 UTC is none.
    void SetTakeDateTime(CTime time);
    CTime GetTakeDateTime() const;  // 1970-01-01 00:00 UTC for none
    // The day, in local time and as CPatient::GetBirthDayString shows it. "?" for none, and where it cannot be shown.
    CString GetTakeDateTimeString() const;

    // Becomes what CQuintarTIFF::ReadImageInfoFromFile makes of the file. Where that throws, whatever it is, only file path,
    // image name (the file's, as CDirectory::CreateFileNameForDisplay shows it, without extension) and image type (Video) are
    // set.
    void ReadFromFile(const CString& path);

    // Deliberate: two records that have a take time are never equal, even a copy and its original; a record equals itself. All
    // other members have to be the same, case included.
    bool operator==(const CImageInfo& other) const;

protected:
    static constexpr int IMAGE_TYPE_NAMES = Unknown + 1;
    static UINT m_uiImageTypeNames[IMAGE_TYPE_NAMES];  // string resources by image type, 0 for none

private:
    EImageType m_ImageType = Unknown;
    CString m_FilePath;
    LONG m_ImageID = NO_IMAGE_ID;
    LONG m_PatientID = 0;
    CString m_ImageName;
    std::unique_ptr<CTime> m_TakeTime;  // null when it is not known
    CString m_Directory;
    CString m_Tooth;
    BOOL m_Present = TRUE;
};

// Reads what a picture file tells of itself. Static functions only; any thread may call any of them.
class KADATA_API CQuintarTIFF {
public:
    // Makes the record of the file `path`, or throws anything. It may be called by several threads at once.
    using ImageInfoReader = CImageInfo (*)(const CString& path);

    // By the reader that was set last, ReadStandardTags when none was.
    static CImageInfo ReadImageInfoFromFile(const CString& path);
    // For hosts that know more of their files than the standard tags. Null is ReadStandardTags again. Returns the one before.
    static ImageInfoReader SetImageInfoReader(ImageInfoReader reader);

    // The first picture of a TIFF file (TIFF 6.0 and BigTIFF). Of its texts the first line counts, trimmed; they are UTF-8 where
    // that is possible, else in the ANSI code page. What its tags do not tell stays as in a new record.
    //   file path   `path`
    //   image name  ImageDescription (270); without it that of CImageInfo::ReadFromFile
    //   take time   DateTime (306), "YYYY:MM:DD HH:MM:SS" in local time; none where it is no such time
    //   tooth       PageName (285)
    //   image type  DocumentName (269) where that is a take-type code of at most four characters that leads to a known type;
    //               else Video, as of every picture that does not tell
    // Throws a CFileException (by pointer; the catcher deletes it): what CFile throws when the file cannot be opened or read, and
    // the cause genericException, without an error number, when it is no TIFF file, damaged, or wants more than 4 MiB for one
    // tag. The file is opened for reading, and others may read and write it meanwhile.
    static CImageInfo ReadStandardTags(const CString& path);
};
