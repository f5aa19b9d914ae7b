#include <afx.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "support/archive_bytes.h"
#include "support/temp_folder.h"

namespace {

using test::ArchiveCause;
using test::StoredBytes;

// What the archive asks of a file that holds these bytes.
class CWatchedFile : public CMemFile {
public:
    explicit CWatchedFile(std::string& bytes)
        : CMemFile(reinterpret_cast<BYTE*>(bytes.data()), static_cast<UINT>(bytes.size())) {}
    UINT Read(void* buffer, UINT count) override {
        m_largest = std::max(m_largest, count);
        return CMemFile::Read(buffer, count);
    }
    UINT m_largest = 0;
};

template <class T>
int CauseOfReading(std::string bytes, T& value) {
    CWatchedFile file(bytes);
    CArchive archive(&file, CArchive::load);
    const int cause = ArchiveCause([&] { archive >> value; });
    EXPECT_LE(file.m_largest, std::max<std::size_t>(2 * bytes.size(), CArchive::DEFAULT_BUFFER))
        << "more than the data could hold";
    return cause;
}

class CFullDisk : public CMemFile {
public:
    void Write(const void*, UINT) override {
        ++m_writes;
        AfxThrowFileException(CFileException::diskFull, ERROR_DISK_FULL, _T("full"));
    }
    int m_writes = 0;
};

TEST(Archive, StoresValuesLittleEndian) {
    const std::string bytes = StoredBytes([](CArchive& archive) {
        archive << BYTE{0x01} << WORD{0x0302} << DWORD{0x07060504} << LONGLONG{0x0F0E0D0C0B0A0908} << LONG{-2} << short{-3}
                << true << 'A' << _T('\x20AC') << 1.0 << 0.5F << ULONGLONG{0x8000000000000001};
    });
    EXPECT_EQ(bytes, std::string("\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F"
                                 "\xFE\xFF\xFF\xFF\xFD\xFF\x01"
                                 "A\xAC\x20\0\0\0\0\0\0\xF0\x3F\0\0\0\x3F"
                                 "\x01\0\0\0\0\0\0\x80",
                                 45));
}

TEST(Archive, ReadsBackAcrossEveryBufferBorder) {
    for (const int size : {1, 128, 129, 4096}) {
        SCOPED_TRACE(size);
        std::vector<BYTE> own(static_cast<std::size_t>(size));
        CMemFile file;
        CArchive store(&file, CArchive::store, size, own.data());
        for (int i = 0; i < 500; ++i) {
            store << (i % 2 == 0) << i << CString(_T('x'), i) << -0.25 * i;
            store.Write(own.data(), static_cast<UINT>(size) - 1);
        }
        store.Close();
        file.SeekToBegin();
        CArchive load(&file, CArchive::load, size);
        for (int i = 0; i < 500; ++i) {
            bool even = false;
            int number = -1;
            CString text;
            double quarter = 0;
            load >> even >> number >> text >> quarter;
            load.EnsureRead(own.data(), static_cast<UINT>(size) - 1);
            ASSERT_EQ(even, i % 2 == 0);
            ASSERT_EQ(number, i);
            ASSERT_EQ(text, CString(_T('x'), i));
            ASSERT_EQ(quarter, -0.25 * i);
        }
        EXPECT_EQ(load.Read(own.data(), static_cast<UINT>(size)), 0U);
    }
}

TEST(Archive, PutsTheFormsOfLengthInFrontOfStrings) {
    const struct {
        int length;
        std::string prefix;
    } rows[] = {
        {0, std::string("\xFF\xFE\xFF\x00", 4)},
        {254, "\xFF\xFE\xFF\xFE"},
        {255, std::string("\xFF\xFE\xFF\xFF\xFF\x00", 6)},
        {0xFFFD, "\xFF\xFE\xFF\xFF\xFD\xFF"},
        {0xFFFE, std::string("\xFF\xFE\xFF\xFF\xFF\xFF\xFE\xFF\x00\x00", 10)},
        {70000, std::string("\xFF\xFE\xFF\xFF\xFF\xFF\x70\x11\x01\x00", 10)},
    };
    for (const auto& row : rows) {
        for (const int offset : {0, 1}) {  // units at odd addresses too
            SCOPED_TRACE(row.length);
            const CString text(_T('\x20AC'), row.length);
            std::string expected = row.prefix;
            for (int i = 0; i < row.length; ++i) {
                expected += "\xAC\x20";
            }
            const std::string bytes = StoredBytes([&](CArchive& archive) {
                archive.Write("?", static_cast<UINT>(offset));
                archive << text;
            });
            ASSERT_EQ(bytes.substr(static_cast<std::size_t>(offset)), expected);
            CString back(_T("old"));
            EXPECT_EQ(CauseOfReading(expected, back), CArchiveException::none);
            EXPECT_EQ(back, text);
        }
    }
    EXPECT_EQ(StoredBytes([](CArchive& archive) {
                  AfxWriteStringLength(archive, 0xFFFFFFFE, FALSE);
                  AfxWriteStringLength(archive, 0xFFFFFFFF, FALSE);
              }),
              std::string("\xFF\xFF\xFF\xFE\xFF\xFF\xFF"
                          "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\0\0\0\0",
                          22));
}

TEST(Archive, ReadsTextOfTheAnsiCodePage) {
    const std::pair<std::string, CString> rows[] = {
        {std::string("\0", 1), CString()},
        {"\x04Gr\xFC\x80", CString(_T("Gr\x00FC\x20AC"))},
        {std::string("\xFF\x2C\x01", 3) + std::string(300, '\xDF'), CString(_T('\x00DF'), 300)},
    };
    for (const auto& [bytes, expected] : rows) {
        CString text(_T("old"));
        EXPECT_EQ(CauseOfReading(bytes, text), CArchiveException::none);
        EXPECT_EQ(text, expected);
    }
}

TEST(Archive, EndsWithEndOfFileWhereverItIsCutAndKeepsTheTarget) {
    for (const int length : {3, 254, 300, 3000, 0xFFFE}) {
        const std::string bytes = StoredBytes([&](CArchive& archive) { archive << CString(_T('x'), length); });
        const std::size_t step = length > 300 ? 997 : 1;
        for (std::size_t cut = 0; cut < bytes.size(); cut += cut < 12 ? 1 : step) {
            CString text(_T("kept"));
            ASSERT_EQ(CauseOfReading(bytes.substr(0, cut), text), CArchiveException::endOfFile) << cut;
            ASSERT_EQ(text, _T("kept"));
        }
    }
    int number = 7;
    EXPECT_EQ(CauseOfReading("\1\2\3", number), CArchiveException::endOfFile);
    EXPECT_EQ(number, 7);
}

TEST(Archive, BelievesNoLengthThatTheDataCannotHold) {
    const std::string wide = "\xFF\xFE\xFF";
    const std::string data(10000, 'x');
    for (const std::string& lie : {wide + "\xFF\xFF\xFF\xFF\xFF\xFF\x7F" + data, wide + "\xFF\xFF\xFF\xFE\xFF\xFF\xFF" + data,
                                   wide + "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F" + data,
                                   "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF" + data}) {
        CString text(_T("kept"));
        EXPECT_EQ(CauseOfReading(lie, text), CArchiveException::endOfFile);
        EXPECT_EQ(text, _T("kept"));
    }
}

TEST(Archive, RefusesToBeUsedTheWrongWay) {
    const test::TempFolder folder;
    const CString path = folder.Write(_T("file"), "abcd").c_str();
    CFile file(path, CFile::modeReadWrite);
    CArchive load(&file, CArchive::load);
    CArchive store(&file, CArchive::store);
    CArchive closed(&file, CArchive::store);
    closed.Close();
    CArchive aborted(&file, CArchive::load);
    aborted.Abort();
    int value = 5;
    CString text(_T("kept"));
    int size = 0;
    const struct {
        std::function<void()> action;
        int cause;
    } rows[] = {
        {[&] { load << value; }, CArchiveException::readOnly},
        {[&] { load << text; }, CArchiveException::readOnly},
        {[&] { load.Write(&value, 1); }, CArchiveException::readOnly},
        {[&] { store >> value; }, CArchiveException::writeOnly},
        {[&] { store >> text; }, CArchiveException::writeOnly},
        {[&] { store.Read(&value, 1); }, CArchiveException::writeOnly},
        {[&] { AfxReadStringLength(store, size); }, CArchiveException::writeOnly},
        {[&] { closed << value; }, CArchiveException::genericException},
        {[&] { closed << text; }, CArchiveException::genericException},
        {[&] { aborted >> value; }, CArchiveException::genericException},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        try {
            row.action();
            ADD_FAILURE();
        } catch (CArchiveException* e) {
            EXPECT_EQ(e->m_cause, row.cause);
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
    std::string bytes = "abcdef";
    CWatchedFile file(bytes);
    CArchive archive(&file, CArchive::load);
    BYTE first = 0;
    archive >> first;
    archive.Close();
    EXPECT_EQ(file.GetPosition(), 1U);
}

TEST(Archive, WritesNothingMoreOnceItIsAborted) {
    CMemFile file;
    {
        CArchive archive(&file, CArchive::store | CArchive::bNoFlushOnDelete);
        archive << 1;
    }
    EXPECT_EQ(file.GetLength(), 0U);

    CFullDisk disk;
    {
        CArchive archive(&disk, CArchive::store);
        archive << 1;
        try {
            archive.Flush();
            FAIL();
        } catch (CFileException* e) {
            EXPECT_EQ(e->m_cause, CFileException::diskFull);
            e->Delete();
        }
        EXPECT_EQ(ArchiveCause([&] { archive << 2; }), CArchiveException::genericException);
    }
    EXPECT_EQ(disk.m_writes, 1);
    {
        CArchive archive(&disk, CArchive::store);
        archive << 1;  // the destructor has nobody to tell
    }
    EXPECT_EQ(disk.m_writes, 2);
}

}  // namespace
