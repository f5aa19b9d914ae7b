#include <gtest/gtest.h>
#include <kadata/archive.h>

#include <string>

#include "archive_stream_support.h"
#include "support/allocation_watch.h"
#include "support/archive_bytes.h"

namespace {

TEST(LinuxArchiveFile, AFullDiskIsTold) {
    KaCArchiveFileWriter writer(_T("C:\\dev\\full"));
    const std::string bytes(10000, 'x');
    const auto* const data = reinterpret_cast<const unsigned char*>(bytes.data());
    CString path(_T("none"));
    for (const unsigned int size : {1U, 4096U, 10000U})
        EXPECT_EQ(test::FileCause([&] { KaCArchive(&writer).Write(data, size); }, &path), CFileException::diskFull) << size;
    EXPECT_EQ(path, _T(""));
}

TEST(LinuxArchiveFile, AClaimedLengthCostsNoMemory) {
    for (const char* prefix : {"\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F", "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xF0"}) {
        test::Source source(prefix + std::string(20000, 'x'), 4096);
        KaCArchive archive(&source);
        CString text;
        const test::AllocationWatch watch;
        EXPECT_EQ(test::ArchiveCause([&] { archive >> text; }), CArchiveException::endOfFile);
        EXPECT_LT(watch.Largest(), 100000U);
    }
}

}  // namespace
