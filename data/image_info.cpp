#include <kadata/directory.h>
#include <kadata/image_info.h>

#include <string_view>

#include "image_name.h"
#include "short_date.h"

namespace {

constexpr LPCTSTR NO_REGION = _T("  ");
constexpr LPCTSTR ABSENT_MARK = _T(" *");
constexpr LPCTSTR NO_TAKE_TIME = _T("?");
constexpr std::size_t TAKE_TYPE_PREFIX = 2;
constexpr std::size_t PREFIXED_TAKE_TYPE = 4;  // from this length on

std::unique_ptr<CTime> CopyOf(const std::unique_ptr<CTime>& time) {
    return time == nullptr ? nullptr : std::make_unique<CTime>(*time);
}

}  // namespace

UINT CImageInfo::m_uiImageTypeNames[IMAGE_TYPE_NAMES];

CImageInfo::CImageInfo() = default;

CImageInfo::CImageInfo(LONG patientId, LONG imageId, const CString& imageName, const CString& filePath, const char* takeType)
    : m_FilePath(filePath), m_ImageID(imageId), m_PatientID(patientId), m_ImageName(imageName) {
    SetImageTypeByTakeType(takeType);
}

CImageInfo::CImageInfo(const CImageInfo& other) {
    *this = other;
}

CImageInfo::~CImageInfo() = default;

CImageInfo& CImageInfo::operator=(const CImageInfo& other) {
    m_ImageType = other.m_ImageType;
    m_FilePath = other.m_FilePath;
    m_ImageID = other.m_ImageID;
    m_PatientID = other.m_PatientID;
    m_ImageName = other.m_ImageName;
    m_TakeTime = CopyOf(other.m_TakeTime);
    m_Directory = other.m_Directory;
    m_Tooth = other.m_Tooth;
    m_Present = other.m_Present;
    return *this;
}

CString CImageInfo::GetRegion() const {
    return m_Tooth.IsEmpty() ? CString(NO_REGION) : m_Tooth;
}

CString CImageInfo::GetImagePath() const {
    CString folder;
    folder.Format(_T("TARVO\\P_%.6i\\"), m_PatientID);
    return CDirectory::Concat(folder, GetFileName());
}

CString CImageInfo::GetFileName() const {
    return CDirectory::SplitFileNameAndExtensionFromPath(m_FilePath);
}

void CImageInfo::SetTooth(unsigned int number) {
    m_Tooth.Format(_T("%u"), number);
}

CString CImageInfo::GetDirectory(BOOL markAbsent) const {
    return markAbsent && !m_Present ? m_Directory + ABSENT_MARK : m_Directory;
}

void CImageInfo::SetDirectory(const CString& directory) {
    m_Directory = directory;
    m_ImageName = directory;
}

CString CImageInfo::GetTakeType() const {
    switch (m_ImageType) {
        case VideoCapture:
            return _T("VC");
        case Video:
        case StoredVideo:
            return _T("VI");
        default:
            return _T("??");
    }
}

void CImageInfo::SetImageTypeByTakeType(const char* code) {
    std::string_view kind = code == nullptr ? "" : code;
    if (kind.size() >= PREFIXED_TAKE_TYPE) {
        kind.remove_prefix(TAKE_TYPE_PREFIX);
    }
    if (kind == "VC") {
        m_ImageType = VideoCapture;
    } else if (kind.starts_with('X')) {
        m_ImageType = XRay;
    } else if (kind.starts_with('V')) {
        m_ImageType = Video;
    } else {
        m_ImageType = Unknown;
    }
}

CString CImageInfo::GetImageTypeString() const {
    const bool inTable = m_ImageType >= 0 && m_ImageType < IMAGE_TYPE_NAMES;  // hosts may cast any number
    const UINT id = inTable ? m_uiImageTypeNames[m_ImageType] : 0;
    CString name;
    if (id != 0) {
        name.LoadString(id);
    }
    return name;
}

void CImageInfo::SetImageTypeNames(UINT videoCapture, UINT video, UINT xRay, UINT storedVideo, UINT unknown) {
    m_uiImageTypeNames[VideoCapture] = videoCapture;
    m_uiImageTypeNames[Video] = video;
    m_uiImageTypeNames[XRay] = xRay;
    m_uiImageTypeNames[StoredVideo] = storedVideo;
    m_uiImageTypeNames[Unknown] = unknown;
}

void CImageInfo::SetTakeDateTime(CTime time) {
    if (time <= CTime()) {
        m_TakeTime.reset();
    } else if (m_TakeTime == nullptr) {
        m_TakeTime = std::make_unique<CTime>(time);
    } else {
        *m_TakeTime = time;
    }
}

CTime CImageInfo::GetTakeDateTime() const {
    return m_TakeTime == nullptr ? CTime() : *m_TakeTime;
}

CString CImageInfo::GetTakeDateTimeString() const {
    SYSTEMTIME local = {};
    const CString day = m_TakeTime != nullptr && m_TakeTime->GetAsSystemTime(local) ? kadata::ShortDate(local) : CString();
    return day.IsEmpty() ? CString(NO_TAKE_TIME) : day;
}

void CImageInfo::ReadFromFile(const CString& path) {
    const CString file = path;  // may be this record's own
    try {
        *this = CQuintarTIFF::ReadImageInfoFromFile(file);
        return;
    } catch (CException* e) {
        e->Delete();
    } catch (...) {
        // Whatever it was: the picture is shown under the name of its file.
    }
    m_FilePath = file;
    m_ImageName = kadata::ImageNameOf(file);
    m_ImageType = Video;
}

bool CImageInfo::operator==(const CImageInfo& other) const {
    return m_FilePath == other.m_FilePath && m_ImageID == other.m_ImageID && m_PatientID == other.m_PatientID &&
           m_ImageName == other.m_ImageName && m_Directory == other.m_Directory && m_Tooth == other.m_Tooth &&
           m_ImageType == other.m_ImageType && m_TakeTime == other.m_TakeTime && m_Present == other.m_Present;
}
