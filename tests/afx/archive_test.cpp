#include <afx.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "expect.h"
#include "support/archive_bytes.h"
#include "support/temp_folder.h"

namespace {

using test::ArchiveCause;
using test::StoredBytes;

class CFullDisk : public CMemFile {
public:
    void Write(const void*, UINT) override {
        ++m_writes;
        AfxThrowFileException(CFileException::diskFull, ERROR_DISK_FULL, _T("full"));
    }
    int m_writes = 0;
};

// CKalidoObject's tests have the other forms of text; the longest lengths are what no text reaches.
TEST(Archive, StoresValuesAndTheLongestLengthsLittleEndian) {
    const std::string bytes = StoredBytes([](CArchive& archive) {
        archive << BYTE{0x01} << WORD{0x0302} << DWORD{0x07060504} << LONGLONG{0x0F0E0D0C0B0A0908} << LONG{-2} << short{-3}
                << true << 'A' << _T('\x20AC') << 1.0 << 0.5F << ULONGLONG{0x8000000000000001};
        AfxWriteStringLength(archive, 0xFFFFFFFE, FALSE);
        AfxWriteStringLength(archive, 0xFFFFFFFF, FALSE);
    });
    EXPECT_EQ(bytes, std::string("\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\xFE\xFF\xFF\xFF\xFD\xFF\x01"
                                 "A\xAC\x20\0\0\0\0\0\0\xF0\x3F\0\0\0\x3F\x01\0\0\0\0\0\0\x80\xFF\xFF\xFF\xFE\xFF\xFF\xFF"
                                 "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\0\0\0\0",
                                 67));
}

TEST(Archive, ReadsBackAcrossEveryBufferBorder) {
    for (const int size : {1, 128, 129, 4096}) {
        SCOPED_TRACE(size);
        std::vector<BYTE> own(static_cast<std::size_t>(size));
        CMemFile file;
        CArchive store(&file, CArchive::store, size, own.data());
        for (int i = 0; i < 500; ++i) {
            store << (i % 2 == 0) << CString(_T('x'), i) << -0.25 * i;
            store.Write(own.data(), static_cast<UINT>(size) - 1);
        }
        store.Close();
        file.SeekToBegin();
        CArchive load(&file, CArchive::load, size);
        for (int i = 0; i < 500; ++i) {
            bool even = false;
            CString text;
            double quarter = 0;
            load >> even >> text >> quarter;
            load.EnsureRead(own.data(), static_cast<UINT>(size) - 1);
            ASSERT_TRUE(even == (i % 2 == 0) && text == CString(_T('x'), i) && quarter == -0.25 * i) << i;
        }
        EXPECT_EQ(load.Read(own.data(), static_cast<UINT>(size)), 0U);
    }
}

TEST(Archive, EndsWithEndOfFileWhereverItIsCutAndKeepsTheTarget) {
    const std::string bytes = StoredBytes([](CArchive& archive) { archive << 1 << 2.0 << CString(_T('x'), 200); });
    for (std::size_t cut = 0; cut < bytes.size(); ++cut) {
        test::LoadingArchive archive(bytes.substr(0, cut));
        int number = 7;
        double real = 7;
        CString text(_T("kept"));
        ASSERT_EQ(ArchiveCause([&] { *archive >> number >> real >> text; }), CArchiveException::endOfFile) << cut;
        ASSERT_TRUE(number == (cut < 4 ? 7 : 1) && real == (cut < 12 ? 7 : 2) && text == _T("kept")) << cut;
    }
}

TEST(Archive, RefusesToBeUsedTheWrongWay) {
    const test::TempFolder folder;
    const CString path = folder.Write(_T("file"), "abcd").c_str();
    CFile file(path, CFile::modeReadWrite);
    CArchive load(&file, CArchive::load), store(&file, CArchive::store);
    CArchive closed(&file, CArchive::store), aborted(&file, CArchive::load);
    closed.Close();
    aborted.Abort();
    int value = 5, unitSize = 0;
    CString text(_T("kept"));
    const std::pair<std::function<void()>, int> rows[] = {
        {[&] { load << value; }, CArchiveException::readOnly},
        {[&] { load.Write(&value, 1); }, CArchiveException::readOnly},
        {[&] { store >> text; }, CArchiveException::writeOnly},
        {[&] { store.Read(&value, 1); }, CArchiveException::writeOnly},
        {[&] { AfxReadStringLength(store, unitSize); }, CArchiveException::writeOnly},
        {[&] { closed << text; }, CArchiveException::genericException},
        {[&] { aborted >> value; }, CArchiveException::genericException},
    };
    for (const auto& [action, cause] : rows) {
        try {
            action();
            ADD_FAILURE();
        } catch (CArchiveException* e) {
            EXPECT_EQ(e->m_cause, cause);
            EXPECT_EQ(e->m_strFileName, path);
            e->Delete();
        }
    }
    EXPECT_EQ(value, 5);
    EXPECT_EQ(text, _T("kept"));
    store.Close();
    EXPECT_EQ(file.GetLength(), 4U);
}

TEST(Archive, GivesBackWhatItReadAhead) {
    BYTE bytes[6] = {'a', 'b'};
    CMemFile file(bytes, 6);
    CArchive archive(&file, CArchive::load);
    archive >> bytes[5];
    archive.Close();
    EXPECT_EQ(file.GetPosition(), 1U);
}

TEST(Archive, WritesNothingMoreOnceItIsAborted) {
    CFullDisk disk;
    CArchive(&disk, CArchive::store | CArchive::bNoFlushOnDelete) << 1;
    EXPECT_EQ(disk.m_writes, 0);
    {
        CArchive archive(&disk, CArchive::store);
        archive << 1;
        EXPECT_EQ(test::FileCause([&] { archive.Flush(); }), CFileException::diskFull);
        EXPECT_EQ(ArchiveCause([&] { archive << 2; }), CArchiveException::genericException);
    }
    EXPECT_EQ(disk.m_writes, 1);
    CArchive(&disk, CArchive::store) << 1;  // the destructor has nobody to tell
    EXPECT_EQ(disk.m_writes, 2);
}

}  // namespace
