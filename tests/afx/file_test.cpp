#include <afx.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <utility>
#include <vector>

#include "expect.h"
#include "support/handles.h"
#include "support/temp_folder.h"
#include "support/unprivileged.h"

namespace {

using test::TempFolder;
using test::Text;

TEST(File, ReadsWritesAndSeeks) {
    const TempFolder folder;
    CFile file(folder.Path(_T("f.bin")).c_str(), CFile::modeCreate | CFile::modeReadWrite);
    file.Write("0123456789", 10);
    EXPECT_EQ(file.Seek(-3, CFile::end), 7U);
    char bytes[8] = {};
    EXPECT_EQ(file.Read(bytes, 8), 3U);
    EXPECT_STREQ(bytes, "789");
    file.Seek(2, CFile::begin);
    file.Write("ab", 2);
    EXPECT_EQ(file.GetPosition(), 4U);
    file.SetLength(6);
    EXPECT_EQ(file.GetLength(), 6U);
    EXPECT_TRUE(file.GetFileName() == _T("f.bin") && file.GetFileTitle() == _T("f"));
    file.Close();
    EXPECT_EQ(folder.Read(_T("f.bin")), "01ab45");
}

TEST(File, SaysWhyItCannotBeOpened) {
    const TempFolder folder;
    folder.MakeFolder(_T("folder"));
    CFile held(folder.Write(_T("held"), "x").c_str(), CFile::modeRead | CFile::shareExclusive);
    const Text locked = folder.Write(_T("locked"), "x");
    SetFileAttributesW(locked.c_str(), FILE_ATTRIBUTE_READONLY);
    const struct {
        const TCHAR* name;
        UINT flags;
        int cause;
        LONG error;
    } rows[] = {
        {_T("missing"), CFile::modeRead, CFileException::fileNotFound, ERROR_FILE_NOT_FOUND},
        {_T("missing\\file"), CFile::modeRead, CFileException::badPath, ERROR_PATH_NOT_FOUND},
        {_T("folder"), CFile::modeRead, CFileException::accessDenied, ERROR_ACCESS_DENIED},
        {_T("held"), CFile::modeRead | CFile::shareDenyNone, CFileException::sharingViolation, ERROR_SHARING_VIOLATION},
        {_T("locked"), CFile::modeReadWrite, CFileException::accessDenied, ERROR_ACCESS_DENIED},
    };
    const test::UnprivilegedScope scope;
    for (const auto& row : rows) {
        SCOPED_TRACE(test::Narrow(row.name));
        if (row.name == Text(_T("locked")) && !scope.Active())
            continue;
        CFileException error;
        EXPECT_FALSE(CFile().Open(folder.Path(row.name).c_str(), row.flags, &error));
        EXPECT_EQ(error.m_cause, row.cause);
        EXPECT_EQ(error.m_lOsError, row.error);
        EXPECT_EQ(error.m_strFileName, folder.Path(row.name).c_str());
    }
    EXPECT_TRUE(CFile().Open(locked.c_str(), CFile::modeRead));
    SetFileAttributesW(locked.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST(File, CreatesEmptiesOrKeeps) {
    const TempFolder folder;
    const Text path = folder.Write(_T("file"), "old");
    CFile file;
    ASSERT_TRUE(file.Open(path.c_str(), CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite));
    EXPECT_EQ(file.GetLength(), 3U);
    ASSERT_TRUE(file.Open(path.c_str(), CFile::modeCreate | CFile::modeWrite | CFile::osWriteThrough));  // closes it first
    EXPECT_EQ(file.GetLength(), 0U);
    file.Abort();
    EXPECT_TRUE(file.m_hFile == CFile::hFileNull && file.GetFilePath().IsEmpty());
}

TEST(File, LeavesAHandleThatItWasGivenToItsOwner) {
    const TempFolder folder;
    const test::Handle handle(CreateFileW(folder.Path(_T("file")).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    CFile(handle).Write("ab", 2);
    CFile(handle).Write("c", 1);
    EXPECT_EQ(CFile(handle).GetLength(), 3U);
}

TEST(File, ThrowsByPointerWithCauseAndPath) {
    const TempFolder folder;
    const Text path = folder.Path(_T("missing"));
    CFile file;
    char byte = 0;
    const std::pair<std::function<void()>, int> rows[] = {
        {[&] { CFile opened(path.c_str(), CFile::modeRead); }, CFileException::fileNotFound},
        {[&] { CFile::Remove(path.c_str()); }, CFileException::fileNotFound},
        {[&] { CFile::Rename(path.c_str(), folder.Path(_T("other")).c_str()); }, CFileException::fileNotFound},
        {[&] { file.Open(path.c_str(), CFile::modeCreate | CFile::modeWrite), file.Seek(-1, CFile::begin); },
         CFileException::badSeek},
        {[&] { file.Read(&byte, 1); }, CFileException::accessDenied}};
    for (const auto& [action, cause] : rows) {
        CString named;
        EXPECT_EQ(test::FileCause(action, &named), cause);
        EXPECT_EQ(named, path.c_str());
    }
}

TEST(File, KnowsItsStatus) {
    const TempFolder folder;
    const Text path = folder.Write(_T("f.txt"), "12345");
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus(path.c_str(), status));
    EXPECT_LE(CTime::GetCurrentTime().GetTime() - status.m_mtime.GetTime(), 60);
    EXPECT_FALSE(CFile::GetStatus(folder.Path(_T("missing")).c_str(), status) || status.m_size != 5);
    const FILETIME before1970 = {0, 0x01000000};
    CFile file(path.c_str(), CFile::modeReadWrite);
    file.SetLength(9);
    ASSERT_TRUE(SetFileTime(file.m_hFile, nullptr, nullptr, &before1970));
    ASSERT_TRUE(file.GetStatus(status));
    EXPECT_TRUE(status.m_size == 9 && status.m_mtime == CTime() && status.m_szFullName == path.c_str());
    EXPECT_FALSE(CMemFile().GetStatus(status));
}

std::string BytesOf(const CMemFile& file) {
    return {reinterpret_cast<const char*>(file.GetBytes()), static_cast<std::size_t>(file.GetLength())};
}

TEST(MemFile, GrowsAndFillsGapsWithZeros) {
    CMemFile file(4);
    file.Write("0123456789", 10);
    file.SetLength(2);
    EXPECT_EQ(file.GetPosition(), 2U);
    file.Seek(5, CFile::begin);
    file.Write("x", 1);
    EXPECT_EQ(BytesOf(file), std::string("01\0\0\0x", 6));
    file.SetLength(8);
    EXPECT_EQ(BytesOf(file), std::string("01\0\0\0x\0\0", 8));
    char byte = 0;
    EXPECT_EQ(file.Seek(100, CFile::end), 108U);
    EXPECT_EQ(file.Read(&byte, 1), 0U);
    for (const LONGLONG offset : {-109LL, 0x7FFFFFFFFFFFFFFFLL})
        EXPECT_EQ(test::FileCause([&] { file.Seek(offset, CFile::current); }), CFileException::badSeek);
    EXPECT_EQ(file.GetPosition(), 108U);
}

TEST(MemFile, WorksInMemoryOfItsCaller) {
    BYTE fixed[4] = {'a', 'b', 'c', 'd'};
    CMemFile file(fixed, 4);
    EXPECT_EQ(BytesOf(file), "abcd");
    file.Seek(2, CFile::begin);
    file.Write("XY", 2);
    EXPECT_EQ(fixed[2], 'X');
    EXPECT_THROW(file.Write("Z", 1), CMemoryException*);
    EXPECT_EQ(file.Detach(), fixed);
    file.Attach(static_cast<BYTE*>(std::malloc(2)), 2, 16);
    EXPECT_EQ(file.GetLength(), 0U);
    file.Write("12345", 5);
    EXPECT_EQ(BytesOf(file), "12345");
    std::free(file.Detach());
}

TEST(StdioFile, TranslatesLinesInTextMode) {
    const TempFolder folder;
    const Text path = folder.Path(_T("lines.txt"));
    CStdioFile out(path.c_str(), CFile::modeCreate | CFile::modeWrite);
    out.WriteString(_T("Gr\x00FC\x00DF\n\n\x20AClast"));
    EXPECT_EQ(out.GetPosition(), 13U);
    EXPECT_EQ(out.GetLength(), 13U);
    out.Close();
    EXPECT_EQ(folder.Read(_T("lines.txt")), "Gr\xFC\xDF\r\n\r\n\x80last");

    CStdioFile in(path.c_str(), CFile::modeRead);
    CString line;
    EXPECT_TRUE(in.ReadString(line) && line == _T("Gr\x00FC\x00DF"));
    EXPECT_EQ(in.GetPosition(), 6U);
    EXPECT_TRUE(in.ReadString(line) && line.IsEmpty());
    EXPECT_TRUE(in.ReadString(line) && line == _T("\x20AClast"));
    EXPECT_FALSE(in.ReadString(line) || !line.IsEmpty());
    in.SeekToBegin();
    char bytes[32] = {};
    EXPECT_EQ(in.Read(bytes, 32), 11U);
    EXPECT_STREQ(bytes, "Gr\xFC\xDF\n\n\x80last");
}

TEST(StdioFile, HandsOutAsMuchOfALineAsThereIsRoomFor) {
    const TempFolder folder;
    CStdioFile file(folder.Write(_T("f"), "ab\r\nc\xFC\r\r\nd\x1Anever").c_str(), CFile::modeRead);
    TCHAR part[4];
    for (const TCHAR* expected : {_T("ab\n"), _T("c\x00FC\r"), _T("\n"), _T("d")}) {
        ASSERT_EQ(file.ReadString(part, 4), part);
        EXPECT_EQ(CString(part), expected);
    }
    EXPECT_TRUE(file.ReadString(part, 4) == nullptr && file.GetPosition() == 10);  // Ctrl+Z ends a text
    file.SeekToBegin();
    EXPECT_TRUE(file.ReadString(part, 1) == nullptr && file.GetPosition() == 0);
}

TEST(StdioFile, FindsLineEndsAtTheBordersOfItsBlocks) {
    const TempFolder folder;
    for (const std::size_t length : {4094, 4095, 4096, 4097, 10000}) {
        SCOPED_TRACE(length);
        const std::string text(length, 'x');
        CStdioFile file(folder.Write(_T("f"), text + "\r\nnext").c_str(), CFile::modeRead);
        CString line;
        EXPECT_TRUE(file.ReadString(line));
        EXPECT_EQ(test::Narrow(line.View()), text);
        EXPECT_EQ(file.GetPosition(), length + 2);
        file.SeekToBegin();
        std::vector<TCHAR> room(length + 2);
        EXPECT_NE(file.ReadString(room.data(), static_cast<UINT>(length + 2)), nullptr);
        EXPECT_EQ(room[length], _T('\n'));
    }
}

TEST(StdioFile, KeepsItsPlaceBetweenReadingAndWriting) {
    const TempFolder folder;
    CStdioFile file(folder.Write(_T("f"), "one\r\ntwo\r\n").c_str(), CFile::modeReadWrite | CFile::typeBinary);
    CString line;
    EXPECT_TRUE(file.ReadString(line) && line == _T("one\r"));
    file.Write("TWO", 3);
    EXPECT_TRUE(file.ReadString(line) && line == _T("\r"));
    file.SetLength(8);
    file.Write("\n", 1);
    file.Close();
    EXPECT_EQ(folder.Read(_T("f")), "one\r\nTWO\n");
}

}  // namespace
