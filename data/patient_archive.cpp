#include <kadata/patient.h>

#include <utility>

namespace {

constexpr DWORD PATIENT_VERSION = 1;

}  // namespace

CArchive& operator<<(CArchive& archive, const CPatient& patient) {
    archive << PATIENT_VERSION << patient.m_PatientID;
    CKalidoObject::WriteString(archive, patient.m_Name);
    CKalidoObject::WriteString(archive, patient.m_FirstName);
    archive.Write(&patient.m_BirthDay, sizeof(patient.m_BirthDay));
    archive << patient.m_RecordFlag;
    CKalidoObject::WriteString(archive, patient.m_ExtID);
    return archive;
}

CArchive& operator>>(CArchive& archive, CPatient& patient) {
    DWORD version = 0;
    archive >> version;
    if (version != PATIENT_VERSION) {
        AfxThrowArchiveException(CArchiveException::badIndex, archive.m_strFileName);
    }
    CPatient read;
    archive >> read.m_PatientID;
    CKalidoObject::ReadString(archive, read.m_Name);
    CKalidoObject::ReadString(archive, read.m_FirstName);
    if (archive.Read(&read.m_BirthDay, sizeof(read.m_BirthDay)) != sizeof(read.m_BirthDay)) {
        AfxThrowArchiveException(CArchiveException::endOfFile, archive.m_strFileName);
    }
    archive >> read.m_RecordFlag;
    CKalidoObject::ReadString(archive, read.m_ExtID);

    patient.m_PatientID = read.m_PatientID;
    patient.m_Name = std::move(read.m_Name);
    patient.m_FirstName = std::move(read.m_FirstName);
    patient.m_BirthDay = read.m_BirthDay;
    patient.m_RecordFlag = read.m_RecordFlag;
    patient.m_ExtID = std::move(read.m_ExtID);
    return archive;
}
