#include "unpack.h"

#include <kadata/directory.h>
#include <kadata/log.h>
#include <kadata/zip.h>

#include <memory>

namespace {

bool IsFolder(const CString& name) {
    return name.Right(1) == _T("\\");
}

// Each part of the path is a name, and none leads upwards: an archive is somebody else's work.
bool StaysInside(const CString& path) {
    for (CString rest = path; !rest.IsEmpty();) {
        const int end = rest.Find(_T('\\'));
        const CString part = end < 0 ? rest : rest.Left(end);
        if (part.SpanIncluding(_T(". ")) == part || !CDirectory::IsValidFileName(part, _T(""))) {
            return false;
        }
        rest = end < 0 ? CString() : rest.Mid(end + 1);
    }
    return !path.IsEmpty();
}

void WriteFile(const CString& path, const unsigned char* data, DWORD size) {
    const CString folder = CDirectory::SplitPathFromFileNameWithPath(path).TrimRight(_T('\\'));
    if (CDirectory::Exist(folder) == 0) {
        CDirectory::Make(folder);
    }
    CFile file(path, CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive);
    file.Write(data, size);
    file.Close();
}

}  // namespace

SUnpacked UnpackArchive(const CString& path, const CString& folder) {
    CZLibWrapper zip;
    if (zip.OpenZipFile(path) == 0) {
        AfxThrowFileException(CFileException::invalidFile, -1, path);
    }
    if (CDirectory::Exist(folder) != 0) {
        CDirectory::Remove(folder);
    }
    CDirectory::Make(folder);
    SUnpacked unpacked;
    int first = 1;
    for (int left = zip.GetArchiveFileCount(); left > 0; --left, first = 0) {
        CString name;
        unsigned char* data = nullptr;
        DWORD size = 0;
        zip.GetNextFile(name, &data, &size, first);
        const std::unique_ptr<unsigned char[]> owner(data);
        name.Replace(_T('/'), _T('\\'));
        if (IsFolder(name)) {
            continue;
        }
        if (!StaysInside(name)) {
            CLog::Print(CLogWarning(), _T("%s: \"%s\" is no name for a file"), path, name);
            ++unpacked.refused;
            continue;
        }
        WriteFile(CDirectory::Concat(folder, name), data, size);
        ++unpacked.files;
    }
    return unpacked;
}
