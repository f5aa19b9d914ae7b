#include <afx.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace {

std::string Stored(void (*write)(CArchive&)) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    write(archive);
    archive.Close();
    return {reinterpret_cast<const char*>(file.GetBytes()), static_cast<std::size_t>(file.GetLength())};
}

template <class T>
int CauseOfReading(const std::string& bytes, T& value) {
    CMemFile file(reinterpret_cast<const BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    try {
        archive >> value;
        return CArchiveException::none;
    } catch (CArchiveException* e) {
        const int cause = e->m_cause;
        e->Delete();
        return cause;
    }
}

TEST(Archive, StoresValuesLittleEndian) {
    const std::string bytes = Stored([](CArchive& archive) {
        archive << BYTE{0x01} << WORD{0x0302} << DWORD{0x07060504} << LONGLONG{0x0F0E0D0C0B0A0908} << LONG{-2} << short{-3} << true
                << 'A' << _T('\x20AC') << 1.0 << 0.5F;
    });
    EXPECT_EQ(bytes, std::string("\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F"
                                 "\xFE\xFF\xFF\xFF\xFD\xFF\x01"
                                 "A\xAC\x20\0\0\0\0\0\0\xF0\x3F\0\0\0\x3F",
                                 37));
}

TEST(Archive, ReadsBackAcrossEveryBufferBorder) {
    for (const int size : {1, 128, 129, 4096}) {
        SCOPED_TRACE(size);
        CMemFile file;
        CArchive store(&file, CArchive::store, size);
        for (int i = 0; i < 500; ++i) {
            store << BYTE{1} << i << CString(_T('x'), i);
        }
        store.Close();
        file.SeekToBegin();
        std::vector<BYTE> own(static_cast<std::size_t>(size));
        CArchive load(&file, CArchive::load, size, own.data());
        for (int i = 0; i < 500; ++i) {
            BYTE one = 0;
            int number = -1;
            CString text;
            load >> one >> number >> text;
            ASSERT_EQ(number, i);
            ASSERT_EQ(text, CString(_T('x'), i));
        }
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
        SCOPED_TRACE(row.length);
        const CString text(_T('\x00FC'), row.length);
        CMemFile file;
        CArchive archive(&file, CArchive::store);
        archive << text;
        archive.Close();
        const std::string bytes(reinterpret_cast<const char*>(file.GetBytes()), static_cast<std::size_t>(file.GetLength()));
        EXPECT_EQ(bytes.substr(0, row.prefix.size()), row.prefix);
        EXPECT_EQ(bytes.size(), row.prefix.size() + 2 * static_cast<std::size_t>(row.length));
        CString back;
        EXPECT_EQ(CauseOfReading(bytes, back), CArchiveException::none);
        EXPECT_EQ(back, text);
    }
}

TEST(Archive, WritesTheLongestLengthsToo) {
    EXPECT_EQ(Stored([](CArchive& archive) {
                  AfxWriteStringLength(archive, 0xFFFFFFFE, FALSE);
                  AfxWriteStringLength(archive, 0xFFFFFFFF, FALSE);
              }),
              std::string("\xFF\xFF\xFF\xFE\xFF\xFF\xFF"
                          "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\0\0\0\0",
                          22));
}

TEST(Archive, EndsWithEndOfFileWhereverItIsCutAndKeepsTheTarget) {
    for (const int length : {3, 254, 300}) {
        CMemFile file;
        CArchive archive(&file, CArchive::store);
        archive << CString(_T('x'), length);
        archive.Close();
        const std::string bytes(reinterpret_cast<const char*>(file.GetBytes()), static_cast<std::size_t>(file.GetLength()));
        for (std::size_t cut = 0; cut < bytes.size(); ++cut) {
            CString text(_T("kept"));
            ASSERT_EQ(CauseOfReading(bytes.substr(0, cut), text), CArchiveException::endOfFile) << cut;
            ASSERT_EQ(text, _T("kept"));
        }
    }
    int number = 7;
    EXPECT_EQ(CauseOfReading(std::string("\1\2\3"), number), CArchiveException::endOfFile);
    EXPECT_EQ(number, 7);
}

TEST(Archive, BelievesNoLengthThatTheDataCannotHold) {
    const std::string lies[] = {"\xFF\xFE\xFF\xFF\xFF\xFF\xFE\xFF\xFF\xFFxx", "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7Fxx",
                                "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFFxx"};
    for (const std::string& lie : lies) {
        CString text(_T("kept"));
        EXPECT_EQ(CauseOfReading(lie, text), CArchiveException::endOfFile);
        EXPECT_EQ(text, _T("kept"));
    }
}

TEST(Archive, RefusesToBeUsedTheWrongWay) {
    const test::TempFolder folder;
    const test::Text path = folder.Write(_T("file"), "abcd");
    CFile file(path.c_str(), CFile::modeReadWrite);
    int value = 5;
    try {
        CArchive load(&file, CArchive::load);
        load << value;
        FAIL();
    } catch (CArchiveException* e) {
        EXPECT_EQ(e->m_cause, CArchiveException::readOnly);
        EXPECT_EQ(e->m_strFileName, path.c_str());
        e->Delete();
    }
    try {
        CArchive store(&file, CArchive::store);
        store >> value;
        FAIL();
    } catch (CArchiveException* e) {
        EXPECT_EQ(e->m_cause, CArchiveException::writeOnly);
        e->Delete();
    }
    EXPECT_EQ(value, 5);
}

TEST(Archive, GivesBackWhatItReadAhead) {
    CMemFile file(reinterpret_cast<const BYTE*>("abcdef"), 6);
    CArchive archive(&file, CArchive::load);
    BYTE first = 0;
    archive >> first;
    archive.Close();
    EXPECT_EQ(file.GetPosition(), 1U);
}

TEST(Archive, WritesNothingWhenItIsAborted) {
    CMemFile file;
    CArchive archive(&file, CArchive::store | CArchive::bNoFlushOnDelete);
    archive << 1;
    archive.Abort();
    EXPECT_EQ(file.GetLength(), 0U);
}

}  // namespace
