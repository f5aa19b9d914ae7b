#include "unpack.h"

#include <gtest/gtest.h>
#include <kadata/directory.h>

#include "import.h"
#include "support/temp_folder.h"
#include "support/zip_maker.h"

namespace {

TEST(Unpack, APracticesArchiveIsImportedAndNothingIsWrittenElsewhere) {
    const test::TempFolder folder;
    const std::string patients = "01380006301\r\n011300017\r\n0133101Horn\r\n";
    const CString path = folder
                             .Write(_T("a.zip"), test::MakeZip({{"practice.gdt", patients, true},
                                                                {"pictures/", ""},
                                                                {"pictures/1293/front.tif", "picture"},
                                                                {"pictures\\1293\\back.tif", "too"},
                                                                {"../out.txt", "1"},
                                                                {"/root.txt", "2"},
                                                                {"C:\\drive.txt", "3"},
                                                                {"pictures/../../out.txt", "4"},
                                                                {"", "5"}})
                                                     .bytes)
                             .c_str();
    const CString target = folder.Path(_T("unpacked")).c_str();
    for (int round = 0; round < 2; ++round) {
        folder.Write(_T("other"), "kept");
        const SUnpacked unpacked = UnpackArchive(path, target);
        EXPECT_EQ(unpacked.files, 3);
        EXPECT_EQ(unpacked.refused, 5);
        EXPECT_TRUE(folder.Read(_T("unpacked\\practice.gdt")) == patients);
        EXPECT_EQ(folder.Read(_T("unpacked\\pictures\\1293\\front.tif")) + folder.Read(_T("unpacked\\pictures\\1293\\back.tif")),
                  "picturetoo");
        EXPECT_FALSE(ImportFolder(target).patients.empty());
        CStringArray names;
        EXPECT_EQ(CDirectory::ListFiles(folder.Path().c_str(), names, _T("*"), 0xFFFFFFFF), 3);
        folder.Write(_T("unpacked\\left over.gdt"), patients);
    }
    try {
        UnpackArchive(folder.Write(_T("b.zip"), "no archive").c_str(), target);
        ADD_FAILURE();
    } catch (CFileException* e) {
        EXPECT_EQ(e->m_cause, CFileException::invalidFile);
        e->Delete();
    }
    EXPECT_TRUE(folder.Has(_T("unpacked\\practice.gdt")));
}

}  // namespace
