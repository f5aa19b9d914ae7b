#include "pictures.h"

#include <kadata/directory.h>

#include <algorithm>
#include <memory>
#include <vector>

void NamePictureTypes() {
    constexpr UINT FIRST_NAME = 30001;  // workstation.rc
    CImageInfo::SetImageTypeNames(FIRST_NAME, FIRST_NAME + 1, FIRST_NAME + 2, FIRST_NAME + 3, FIRST_NAME + 4);
}

void FindPictures(const CString& dataFolder, const CPatient& patient, CImageInfoArray& pictures) {
    const CString number = CDirectory::CreateFileNameForDisk(patient.GetExtID());
    if (number.IsEmpty()) {
        return;
    }
    const CString folder = CDirectory::Concat(CDirectory::Concat(dataFolder, _T("pictures")), number);
    CStringArray names;
    CDirectory::ListFiles(folder, names, _T("*"), static_cast<DWORD>(~FILE_ATTRIBUTE_DIRECTORY));
    std::vector<CString> sorted;
    for (INT_PTR i = 0; i < names.GetSize(); ++i) {
        sorted.push_back(names[i]);
    }
    std::sort(sorted.begin(), sorted.end(), [](const CString& a, const CString& b) { return a.Compare(b) < 0; });
    for (const CString& name : sorted) {
        auto picture = std::make_unique<CImageInfo>();
        picture->ReadFromFile(CDirectory::Concat(folder, name));
        picture->SetFilePath(CDirectory::Concat(folder, name));
        pictures.Add(picture.get());
        static_cast<void>(picture.release());  // the array's now
    }
}
