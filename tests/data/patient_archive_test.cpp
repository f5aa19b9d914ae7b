#include <gtest/gtest.h>
#include <kadata/patient.h>

#include <string>

#include "support/archive_bytes.h"
#include "support/temp_folder.h"

using namespace std::string_literals;

namespace {

using test::ArchiveCause;
using test::LoadingArchive;

CPatient Anna() {
    CPatient patient(_T("Anna"), _T("M\u00FCller"), {1980, 13, 31, 2, 3, 4, 5}, _T("A"));
    patient.SetPatientID(0x01020304);
    patient.SetRecordFlag(-2);
    return patient;
}

// Worked out by hand from the layout; the birthday is an impossible one, which travels as it stands.
std::string AnnasBytes() {
    return "\x01\x00\x00\x00\x04\x03\x02\x01"s + "\xFF\xFE\xFF\x06M\0\xFC\0l\0l\0e\0r\0"s + "\xFF\xFE\xFF\x04" + "A\0n\0n\0a\0"s +
           "\xBC\x07\x0D\x00\x1F\x00\x02\x00\x03\x00\x04\x00\x05\x00\x00\x00"s + "\xFE\xFF\xFF\xFF\xFF\xFE\xFF\x01" + "A\0"s;
}

// A target that differs from Anna in every member.
CPatient Before() {
    tagTPATIENT record = {};
    record.klidaID[0] = 'K';
    CPatient patient(record);
    patient.SetFullName(_T("Smith, John,19700101#before"));
    patient.SetPatientID(17);
    patient.SetSpareText(_T("spare"));
    return patient;
}

std::string Stored(const CPatient& patient) {
    return test::StoredBytes([&](CArchive& archive) { archive << patient; });
}

// Judged by all that the patient would write, and by the two members that are never read or written.
void ExpectAfterReading(LoadingArchive& archive, int cause, const std::string& bytes) {
    CPatient patient = Before();
    EXPECT_EQ(ArchiveCause([&] { *archive >> patient; }), cause);
    EXPECT_EQ(Stored(patient), bytes);
    EXPECT_TRUE(patient.HasKlidaID());
    EXPECT_EQ(patient.GetSpareText(), CString(_T("spare")));
}

void ExpectFailure(const std::string& bytes, int cause) {
    LoadingArchive archive(bytes);
    ExpectAfterReading(archive, cause, Stored(Before()));
}

TEST(PatientArchive, HasItsBytesIsReadFromThemAndKeepsItsTargetWhereverItIsCut) {
    const std::string bytes = AnnasBytes();
    EXPECT_EQ(Stored(Anna()), bytes);
    LoadingArchive archive(bytes + bytes);
    for (int i = 0; i < 2; ++i)
        ExpectAfterReading(archive, CArchiveException::none, bytes);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        SCOPED_TRACE(size);
        ExpectFailure(bytes.substr(0, size), CArchiveException::endOfFile);
    }
}

TEST(PatientArchive, IsRefusedAtOnceWhenItsVersionIsAnother) {
    for (const std::string& version : {"\x02\x00\x00\x00"s, "\x00\x00\x00\x00"s, "\x01\x00\x00\x80"s}) {
        ExpectFailure(version + AnnasBytes().substr(4), CArchiveException::badIndex);
        ExpectFailure(version, CArchiveException::badIndex);
    }
    const test::TempFolder folder;
    const CString path(folder.Write(_T("patients.kda"), "\x02\x00\x00\x00"s).c_str());
    CFile file(path, CFile::modeRead);
    CArchive archive(&file, CArchive::load);
    CPatient patient;
    try {
        archive >> patient;
        ADD_FAILURE() << "version 2 was taken";
    } catch (CArchiveException* e) {
        EXPECT_EQ(e->m_strFileName, path);
        e->Delete();
    }
}

}  // namespace
