#include <afx.h>
#include <gtest/gtest.h>

#include "support/temp_folder.h"

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
    EXPECT_EQ(file.Seek(2, CFile::begin), 2U);
    file.Write("ab", 2);
    EXPECT_EQ(file.GetPosition(), 4U);
    file.SetLength(6);
    EXPECT_EQ(file.GetLength(), 6U);
    EXPECT_EQ(file.GetFileName(), _T("f.bin"));
    EXPECT_EQ(file.GetFileTitle(), _T("f"));
    EXPECT_EQ(file.GetFilePath(), folder.Path(_T("f.bin")).c_str());
    file.Close();
    EXPECT_EQ(folder.Read(_T("f.bin")), "01ab45");
}

TEST(File, SaysWhyItCannotBeOpened) {
    const TempFolder folder;
    folder.Write(_T("file"), "x");
    folder.MakeFolder(_T("folder"));
    CFile held(folder.Path(_T("file")).c_str(), CFile::modeRead | CFile::shareExclusive);
    const struct {
        const TCHAR* name;
        UINT flags;
        int cause;
        DWORD error;
    } rows[] = {
        {_T("missing"), CFile::modeRead, CFileException::fileNotFound, ERROR_FILE_NOT_FOUND},
        {_T("missing\\file"), CFile::modeRead, CFileException::badPath, ERROR_PATH_NOT_FOUND},
        {_T("folder"), CFile::modeRead, CFileException::accessDenied, ERROR_ACCESS_DENIED},
        {_T("file"), CFile::modeRead | CFile::shareDenyNone, CFileException::sharingViolation, ERROR_SHARING_VIOLATION},
        {_T("file"), CFile::modeWrite | CFile::shareDenyNone, CFileException::sharingViolation, ERROR_SHARING_VIOLATION},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(test::Narrow(row.name));
        CFileException error;
        CFile file;
        EXPECT_FALSE(file.Open(folder.Path(row.name).c_str(), row.flags, &error));
        EXPECT_EQ(error.m_cause, row.cause);
        EXPECT_EQ(error.m_lOsError, static_cast<LONG>(row.error));
        EXPECT_EQ(error.m_strFileName, folder.Path(row.name).c_str());
    }
}

TEST(File, ThrowsByPointerWithCauseAndPath) {
    const TempFolder folder;
    const Text path = folder.Path(_T("missing"));
    const auto cause = [&path](auto&& action) {
        try {
            action();
            return 0;
        } catch (CFileException* e) {
            EXPECT_EQ(e->m_strFileName, path.c_str());
            const int value = e->m_cause;
            e->Delete();
            return value;
        }
    };
    EXPECT_EQ(cause([&] { CFile file(path.c_str(), CFile::modeRead); }), CFileException::fileNotFound);
    EXPECT_EQ(cause([&] { CFile::Remove(path.c_str()); }), CFileException::fileNotFound);
    EXPECT_EQ(cause([&] { CFile::Rename(path.c_str(), folder.Path(_T("other")).c_str()); }), CFileException::fileNotFound);
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
    EXPECT_EQ(cause([&] { file.Seek(-1, CFile::begin); }), CFileException::badSeek);
    char byte = 0;
    EXPECT_EQ(cause([&] { file.Read(&byte, 1); }), CFileException::accessDenied);
}

TEST(File, KnowsItsStatus) {
    const TempFolder folder;
    const Text path = folder.Write(_T("f.txt"), "12345");
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus(path.c_str(), status));
    EXPECT_EQ(status.m_size, 5U);
    EXPECT_EQ(status.m_szFullName, path.c_str());
    EXPECT_LE(CTime::GetCurrentTime().GetTime() - status.m_mtime.GetTime(), 60);
    EXPECT_FALSE(CFile::GetStatus(folder.Path(_T("missing")).c_str(), status));
    EXPECT_EQ(status.m_size, 5U);
}

TEST(MemFile, GrowsAndFillsGapsWithZeros) {
    CMemFile file(4);
    file.Seek(3, CFile::begin);
    file.Write("x", 1);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(file.GetBytes()), 4), std::string("\0\0\0x", 4));
    char byte = 0;
    file.Seek(100, CFile::begin);
    EXPECT_EQ(file.Read(&byte, 1), 0U);
    file.SetLength(2);
    EXPECT_EQ(file.GetLength(), 2U);
    try {
        file.Seek(-1, CFile::begin);
        FAIL();
    } catch (CFileException* e) {
        EXPECT_EQ(e->m_cause, CFileException::badSeek);
        e->Delete();
    }
}

TEST(StdioFile, TranslatesLinesInTextMode) {
    const TempFolder folder;
    const Text path = folder.Path(_T("lines.txt"));
    CStdioFile out(path.c_str(), CFile::modeCreate | CFile::modeWrite);
    out.WriteString(_T("Gr\x00FC\x00DF\x65\n"));
    out.WriteString(_T("\nlast"));
    out.Close();
    EXPECT_EQ(folder.Read(_T("lines.txt")), "Gr\xFC\xDF" "e\r\n\r\nlast");

    CStdioFile in(path.c_str(), CFile::modeRead);
    CString line;
    EXPECT_TRUE(in.ReadString(line));
    EXPECT_EQ(line, _T("Gr\x00FC\x00DF\x65"));
    EXPECT_EQ(in.GetPosition(), 7U);
    EXPECT_TRUE(in.ReadString(line));
    EXPECT_TRUE(line.IsEmpty());
    TCHAR part[4];
    EXPECT_EQ(in.ReadString(part, 4), part);
    EXPECT_EQ(CString(part), _T("las"));
    EXPECT_TRUE(in.ReadString(line));
    EXPECT_EQ(line, _T("t"));
    EXPECT_FALSE(in.ReadString(line));
}

TEST(StdioFile, KeepsItsPlaceBetweenReadingAndWriting) {
    const TempFolder folder;
    const Text path = folder.Write(_T("f"), "one\r\ntwo\r\n");
    CStdioFile file(path.c_str(), CFile::modeReadWrite | CFile::typeBinary);
    CString line;
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_EQ(line, _T("one\r"));
    file.Write("TWO", 3);
    file.SeekToBegin();
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_TRUE(file.ReadString(line));
    EXPECT_EQ(line, _T("TWO\r"));
}

}  // namespace
