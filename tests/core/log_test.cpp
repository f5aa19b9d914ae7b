#include <gtest/gtest.h>
#include <kadata/directory.h>
#include <kadata/log.h>

#include <array>
#include <string>
#include <vector>

#include "log_reader.h"
#include "support/temp_folder.h"

namespace {

using test::TempFolder;
using test::Text;

// 2026-03-01 07:05:09 wherever the test runs.
__time64_t FixedClock() {
    return CTime(2026, 3, 1, 7, 5, 9).GetTime();
}

CLogFile::SOptions Options(const TempFolder& folder, DWORD flags, DWORD size = 1000000, DWORD count = 100) {
    CLogFile::SOptions options;
    options.m_strFolder = CString(folder.Path().c_str());
    options.m_dwFlags = flags;
    options.m_dwMaxFileSize = size;
    options.m_dwMaxFileCount = count;
    options.m_pfnClock = FixedClock;
    return options;
}

// Bytes of a text of ASCII letters in UTF-16LE.
std::string Utf16(std::string_view ascii) {
    std::string bytes;
    for (const char c : ascii) {
        bytes += c;
        bytes += '\0';
    }
    return bytes;
}

std::string FileStart() {
    const std::string asterisks(51, '*');
    return "\xFF\xFE" +
           Utf16("\r\n" + asterisks + "\r\n     Kalido Dental Systems - TARVO LogFile File \r\n" + asterisks + "\r\n");
}

// A full or a small log file of the given age; higher is newer.
void PutFile(const TempFolder& folder, const TCHAR* name, std::size_t bytes, int newness) {
    const Text path = folder.Write(name, FileStart() + std::string(bytes, '\0') + Utf16("\r\n"));
    const HANDLE file =
        CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    SYSTEMTIME time = {2020, 1, 0, 1, 0, 0, 0, 0};
    time.wHour = static_cast<WORD>(newness / 60);
    time.wMinute = static_cast<WORD>(newness % 60);
    FILETIME written = {};
    EXPECT_TRUE(SystemTimeToFileTime(&time, &written));
    EXPECT_TRUE(SetFileTime(file, nullptr, nullptr, &written));
    CloseHandle(file);
}

int CountFiles(const TempFolder& folder) {
    CStringArray names;
    return CDirectory::ListFiles(folder.Path().c_str(), names, _T("*.*"), 0xFFFFFFFF);
}

TEST(LogFile, WritesExactlyTheseBytes) {
    const TempFolder folder;
    CLogFile log(Options(folder, CLogFile::HEADER_DATE | CLogFile::HEADER_TIME));
    log.PrintCore(_T("first\r\nsecond\r\n\r\n"));
    EXPECT_FALSE(DeleteFileW(folder.Path(_T("TARVO000.log")).c_str())) << "it is open";
    log.PrintCore(_T("\r\n"));
    log.PrintCore(_T(""));
    log.PrintCore(nullptr);
    log.PrintCore(_T("\r\nafter an empty line"));
    EXPECT_EQ(folder.Read(_T("TARVO000.log")), FileStart() + Utf16("2026-03-01;  07:05:09;  first\r\n"
                                                                   "                        second\r\n"
                                                                   "\r\n"
                                                                   "\r\n"
                                                                   "\r\n"
                                                                   "                        after an empty line\r\n"));
}

TEST(LogFile, BuildsTheHeaderFromItsFlags) {
    char process[64];
    std::snprintf(process, sizeof(process), "P%4u.%4u ", static_cast<unsigned>(GetCurrentProcessId()),
                  static_cast<unsigned>(GetCurrentThreadId()));
    const std::string ids = process;
    const struct {
        DWORD flags;
        std::string header;
    } rows[] = {
        {0, ""},
        {CLogFile::HEADER_TIME, "07:05:09;  "},
        {CLogFile::HEADER_DATE, "2026-03-01;  "},
        {CLogFile::HEADER_PROCESS, ids + " "},
        {CLogFile::HEADER_DATE | CLogFile::HEADER_PROCESS, "2026-03-01;  " + ids + " "},
        {CLogFile::HEADER_DATE | CLogFile::HEADER_TIME | CLogFile::HEADER_PROCESS | CLogFile::WRITE_THROUGH,
         "2026-03-01;  07:05:09;  " + ids + " "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.flags);
        const TempFolder folder;
        CLogFile(Options(folder, row.flags)).PrintCore(_T("x\r\ny"));
        EXPECT_EQ(folder.Read(_T("TARVO000.log")),
                  FileStart() + Utf16(row.header + "x\r\n" + std::string(row.header.size(), ' ') + "y\r\n"));
    }
}

TEST(LogFile, KeepsABareCarriageReturnInItsLine) {
    const TempFolder folder;
    CLogFile(Options(folder, 0)).PrintCore(_T("a\rb\r\r\nc"));
    EXPECT_EQ(folder.Read(_T("TARVO000.log")), FileStart() + Utf16("a\rb\r\r\nc\r\n"));
}

TEST(LogFile, ChoosesTheNextFileByNumberOfTheNewest) {
    const struct {
        std::vector<std::pair<const TCHAR*, std::size_t>> present;  // oldest first, with bytes behind the file header
        const TCHAR* expected;
    } rows[] = {
        {{}, _T("TARVO000.log")},
        {{{_T("TARVO007.log"), 10}}, _T("TARVO007.log")},
        {{{_T("TARVO007.log"), 5000}}, _T("TARVO008.log")},
        {{{_T("TARVO998.log"), 5000}}, _T("TARVO999.log")},
        {{{_T("TARVO998.log"), 5000}, {_T("TARVO999.log"), 5000}}, _T("TARVO000.log")},
        {{{_T("TARVO003.log"), 10}, {_T("TARVO002.log"), 5000}}, _T("TARVO003.log")},
        {{{_T("tarvo012.LOG"), 5000}}, _T("TARVO013.log")},
        {{{_T("TARVO12.log"), 5000}}, _T("TARVO000.log")},
        {{{_T("TARVO01a.log"), 5000}}, _T("TARVO000.log")},
        {{{_T("TARVO01a.log"), 10}}, _T("TARVO01a.log")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(test::Narrow(row.expected));
        const TempFolder folder;
        int newness = 0;
        for (const auto& [name, bytes] : row.present)
            PutFile(folder, name, bytes, ++newness);
        CLogFile(Options(folder, 0, 1000)).PrintCore(_T("here"));
        EXPECT_TRUE(folder.Read(row.expected).ends_with(Utf16("here\r\n")));
    }
}

TEST(LogFile, AppendsToAChosenFileThatIsFullAlready) {
    const TempFolder folder;
    PutFile(folder, _T("TARVO001.log"), 5000, 1);
    PutFile(folder, _T("TARVO000.log"), 5000, 2);
    const std::size_t before = folder.Read(_T("TARVO001.log")).size();
    CLogFile(Options(folder, 0, 1000)).PrintCore(_T("here"));
    EXPECT_EQ(folder.Read(_T("TARVO001.log")).size(), before + 12);
}

TEST(LogFile, DeletesTheOldestBeforeAFileIsUsed) {
    const struct {
        DWORD maximum;
        std::size_t newestBytes;
        int left;
    } rows[] = {{3, 5000, 3}, {3, 10, 2}, {2, 5000, 2}, {1, 5000, 1}, {1, 10, 1}, {0, 10, 1}, {4, 5000, 4}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.maximum);
        const TempFolder folder;
        PutFile(folder, _T("TARVO004.log"), 5000, 1);
        PutFile(folder, _T("TARVO005.log"), 5000, 2);
        PutFile(folder, _T("TARVO006.log"), row.newestBytes, 3);
        CLogFile(Options(folder, 0, 1000, row.maximum)).PrintCore(_T("here"));
        EXPECT_EQ(CountFiles(folder), row.left);
        EXPECT_FALSE(row.maximum < 4 && folder.Has(_T("TARVO004.log")));
    }
}

TEST(LogFile, LeavesAFileThatIsHeldOpenAndDeletesTheNextOne) {
    const TempFolder folder;
    PutFile(folder, _T("TARVO004.log"), 5000, 1);
    PutFile(folder, _T("TARVO005.log"), 5000, 2);
    PutFile(folder, _T("TARVO006.log"), 5000, 3);
    const HANDLE held = CreateFileW(folder.Path(_T("TARVO004.log")).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    CLogFile(Options(folder, 0, 1000, 3)).PrintCore(_T("here"));
    EXPECT_TRUE(folder.Has(_T("TARVO004.log")));
    EXPECT_FALSE(folder.Has(_T("TARVO005.log")));
    EXPECT_TRUE(folder.Has(_T("TARVO007.log")));
    CloseHandle(held);
}

TEST(LogFile, EndsALineThatAnotherWriterLeftTorn) {
    const struct {
        std::string torn;
        std::string ended;
    } rows[] = {
        {"\xFF", "\xFF\xFE" + Utf16("\r\n")},
        {FileStart() + Utf16("half a li"), FileStart() + Utf16("half a li\r\n")},
        {FileStart() + Utf16("half a l") + "i", FileStart() + Utf16("half a li\r\n")},
        {FileStart() + Utf16("line\r"), FileStart() + Utf16("line\r\n")},
        {FileStart() + Utf16("line\r") + "\n", FileStart() + Utf16("line\r\n\r\n")},
        {FileStart() + Utf16("line\r\n"), FileStart() + Utf16("line\r\n")},
    };
    for (const auto& row : rows) {
        const TempFolder folder;
        folder.Write(_T("TARVO000.log"), row.torn);
        CLogFile(Options(folder, 0)).PrintCore(_T("next"));
        EXPECT_EQ(folder.Read(_T("TARVO000.log")), row.ended + Utf16("next\r\n"));
    }
}

TEST(LogFile, DropsMessagesSilentlyWithoutAFolder) {
    const TempFolder folder;
    folder.Write(_T("file"), "");
    CLogFile::SOptions options = Options(folder, 0);
    options.m_strFolder = folder.Path(_T("file\\below")).c_str();
    CLogFile log(options);
    log.PrintCore(_T("nowhere"));
    EXPECT_EQ(CountFiles(folder), 1);
}

}  // namespace
