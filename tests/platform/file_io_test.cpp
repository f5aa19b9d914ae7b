#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/child_process.h"
#include "support/handles.h"
#include "support/temp_folder.h"

namespace {

using test::Narrow;
using test::TempFolder;
using test::Text;

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE Open(const Text& path, DWORD access, DWORD share = kShareAll, DWORD disposition = OPEN_EXISTING, DWORD flags = 0) {
    SetLastError(ERROR_GEN_FAILURE);
    return CreateFileW(path.c_str(), access, share, nullptr, disposition, flags, nullptr);
}

// The error of an open that fails, ERROR_SUCCESS for one that succeeds; it is closed again.
DWORD OpenError(const Text& path, DWORD access, DWORD share = kShareAll, DWORD disposition = OPEN_EXISTING, DWORD flags = 0) {
    const HANDLE file = Open(path, access, share, disposition, flags);
    const DWORD error = file == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS;
    if (file != INVALID_HANDLE_VALUE) {
        CloseHandle(file);
    }
    return error;
}

OVERLAPPED At(DWORD offset, DWORD high = 0) {
    OVERLAPPED place{};
    place.Offset = offset;
    place.OffsetHigh = high;
    return place;
}

BOOL Write(HANDLE file, const std::string& bytes, OVERLAPPED* place = nullptr) {
    DWORD written = 0;
    const BOOL done = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, place);
    EXPECT_EQ(written, done ? bytes.size() : 0);
    return done;
}

// What a read of `size` bytes gives, or "error N".
std::string Read(HANDLE file, DWORD size, OVERLAPPED* place = nullptr) {
    std::string bytes(size, '\0');
    DWORD read = MAXDWORD;
    if (!ReadFile(file, bytes.data(), size, &read, place)) {
        return "error " + std::to_string(GetLastError());
    }
    return bytes.substr(0, read);
}

TEST(CreateFile, DispositionsDecideByWhatIsThere) {
    const struct {
        DWORD disposition;
        DWORD on_file;  // the last error, of a success too
        DWORD on_nothing;
        DWORD on_folder;
        const char* left;  // of a file with "old" in it
    } rows[] = {
        {CREATE_NEW, ERROR_FILE_EXISTS, ERROR_SUCCESS, ERROR_FILE_EXISTS, "old"},
        {CREATE_ALWAYS, ERROR_ALREADY_EXISTS, ERROR_SUCCESS, ERROR_ACCESS_DENIED, ""},
        {OPEN_EXISTING, ERROR_SUCCESS, ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, "old"},
        {OPEN_ALWAYS, ERROR_ALREADY_EXISTS, ERROR_SUCCESS, ERROR_ACCESS_DENIED, "old"},
        {TRUNCATE_EXISTING, ERROR_SUCCESS, ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.disposition);
        const TempFolder folder;
        const auto last_error = [&row](const Text& path) {
            const test::Handle file(Open(path, GENERIC_WRITE, 0, row.disposition));
            return GetLastError();
        };
        EXPECT_EQ(last_error(folder.Write(_T("file"), "old")), row.on_file);
        EXPECT_EQ(folder.Read(_T("file")), row.left);
        EXPECT_EQ(last_error(folder.Path(_T("new"))), row.on_nothing);
        EXPECT_EQ(folder.Has(_T("new")), row.on_nothing == ERROR_SUCCESS);
        EXPECT_EQ(last_error(folder.MakeFolder(_T("folder"))), row.on_folder);
        EXPECT_EQ(last_error(folder.Path(_T("missing\\x"))), ERROR_PATH_NOT_FOUND);
        EXPECT_EQ(last_error(folder.Path(_T("file\\x"))), ERROR_PATH_NOT_FOUND);
    }
}

TEST(CreateFile, RefusesWhatItCannotMean) {
    const TempFolder folder;
    const Text file = folder.Write(_T("file"), "old");
    const Text read_only = folder.Write(_T("read-only"), "old");
    ASSERT_TRUE(SetFileAttributesW(read_only.c_str(), FILE_ATTRIBUTE_READONLY));
    const struct {
        const Text& path;
        DWORD access, share, disposition, flags, error;
    } rows[] = {
        {file, GENERIC_READ, 0, 0, 0, ERROR_INVALID_PARAMETER},
        {file, GENERIC_READ, 0, 6, 0, ERROR_INVALID_PARAMETER},
        {file, GENERIC_READ, 0, TRUNCATE_EXISTING, 0, ERROR_INVALID_PARAMETER},
        {folder.Path(), GENERIC_READ, kShareAll, OPEN_EXISTING, 0, ERROR_ACCESS_DENIED},
        {folder.Path(), GENERIC_READ, kShareAll, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, ERROR_SUCCESS},
        {read_only, GENERIC_READ, 0, OPEN_EXISTING, 0, ERROR_SUCCESS},
        {read_only, GENERIC_WRITE, 0, OPEN_EXISTING, 0, ERROR_ACCESS_DENIED},
        {read_only, FILE_APPEND_DATA, 0, OPEN_ALWAYS, 0, ERROR_ACCESS_DENIED},
        {read_only, GENERIC_READ, 0, CREATE_ALWAYS, 0, ERROR_ACCESS_DENIED},
        {read_only, DELETE, 0, OPEN_EXISTING, FILE_FLAG_DELETE_ON_CLOSE, ERROR_ACCESS_DENIED},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.path) + " " + std::to_string(row.access) + " " + std::to_string(row.disposition));
        EXPECT_EQ(OpenError(row.path, row.access, row.share, row.disposition, row.flags), row.error);
    }
    EXPECT_EQ(folder.Read(_T("file")) + folder.Read(_T("read-only")), "oldold");
    EXPECT_TRUE(SetFileAttributesW(read_only.c_str(), FILE_ATTRIBUTE_NORMAL));
}

TEST(CreateFile, AReadOnlyFileIsWritableForWhoCreatesIt) {
    const TempFolder folder;
    const Text path = folder.Path(_T("new"));
    test::Handle file(Open(path, GENERIC_WRITE, 0, CREATE_NEW, FILE_ATTRIBUTE_READONLY));
    EXPECT_TRUE(Write(file, "once"));
    file.Close();
    EXPECT_EQ(folder.Read(_T("new")), "once");
    EXPECT_EQ(OpenError(path, GENERIC_WRITE), ERROR_ACCESS_DENIED);
    EXPECT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL));
}

TEST(CreateFile, DeletesOnCloseWhenAsked) {
    const TempFolder folder;
    const Text path = folder.Path(_T("x"));
    test::Handle file(Open(path, GENERIC_WRITE, 0, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE));
    EXPECT_TRUE(Write(file, "1"));
    EXPECT_EQ(OpenError(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE), ERROR_SHARING_VIOLATION);
    file.Close();
    EXPECT_FALSE(folder.Has(_T("x")));
}

struct Use {
    DWORD access;
    DWORD share;
};

TEST(ShareModes, EachSideMustAllowTheOther) {
    constexpr Use kReader{GENERIC_READ, FILE_SHARE_READ};
    constexpr Use kTolerantReader{GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE};
    constexpr Use kWriter{GENERIC_WRITE, FILE_SHARE_READ};
    constexpr Use kTolerantWriter{GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE};
    constexpr Use kAppender{FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE};
    constexpr Use kAlone{GENERIC_READ | GENERIC_WRITE, 0};
    constexpr Use kAny{GENERIC_READ | GENERIC_WRITE | DELETE, kShareAll};
    constexpr Use kRemover{DELETE, kShareAll};
    constexpr Use kLooker{FILE_READ_ATTRIBUTES, 0};
    const struct {
        Use first, second;
        bool together;
    } rows[] = {
        {kReader, kReader, true},
        {kReader, kTolerantReader, true},
        {kReader, kWriter, false},
        {kReader, kTolerantWriter, false},
        {kTolerantReader, kWriter, true},
        {kTolerantReader, kTolerantWriter, true},
        {kWriter, kWriter, false},
        {kWriter, kTolerantWriter, false},
        {kTolerantWriter, kTolerantWriter, true},
        {kWriter, kAppender, false},
        {kTolerantReader, kAppender, true},
        {kAppender, kAppender, true},
        {kAlone, kReader, false},
        {kAlone, kAppender, false},
        {kAlone, kRemover, false},
        {kAlone, kAlone, false},
        {kAlone, kLooker, true},
        {kAny, kAny, true},
        {kAny, kTolerantWriter, false},
        {kTolerantReader, kRemover, false},
        {kAny, kRemover, true},
        {kRemover, kTolerantReader, false},
        {kRemover, kRemover, true},
        {kLooker, kLooker, true},
    };
    const TempFolder folder;
    const Text path = folder.Write(_T("file"), "");
    for (const auto& row : rows) {
        for (const auto& [first, second] : {std::pair(row.first, row.second), std::pair(row.second, row.first)}) {
            SCOPED_TRACE(std::to_string(first.access) + "/" + std::to_string(first.share) + " then " +
                         std::to_string(second.access) + "/" + std::to_string(second.share));
            const test::Handle held(Open(path, first.access, first.share));
            EXPECT_EQ(OpenError(path, second.access, second.share), row.together ? ERROR_SUCCESS : ERROR_SHARING_VIOLATION);
        }
    }
    EXPECT_EQ(OpenError(path, kAlone.access, kAlone.share), ERROR_SUCCESS) << "what is closed must not stay in the way";
}

TEST(ShareModes, AFileThatCannotBeHadIsNotCut) {
    const TempFolder folder;
    const Text path = folder.Write(_T("file"), "kept");
    const test::Handle reader(Open(path, GENERIC_READ, FILE_SHARE_READ));
    EXPECT_EQ(OpenError(path, GENERIC_WRITE, kShareAll, CREATE_ALWAYS), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(OpenError(path, GENERIC_READ, kShareAll, CREATE_ALWAYS), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(Read(reader, 9), "kept");
}

TEST(ShareModes, OfManyWhoWantItAloneOneGetsIt) {
    const TempFolder folder;
    const Text path = folder.Write(_T("file"), "");
    constexpr int kThreads = 4;
    constexpr int kRounds = 200;
    long inside = 0;  // guarded by the file
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            for (int got = 0; got < kRounds;) {
                const test::Handle file(Open(path, GENERIC_READ | GENERIC_WRITE, 0));
                if (file != INVALID_HANDLE_VALUE) {
                    DWORD count = 0;
                    OVERLAPPED begin = At(0);
                    ReadFile(file, &inside, sizeof inside, &count, &begin);
                    long next = count == 0 ? 1 : inside + 1;
                    begin = At(0);
                    EXPECT_TRUE(WriteFile(file, &next, sizeof next, &count, &begin));
                    ++got;
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    const std::string bytes = folder.Read(_T("file"));
    ASSERT_EQ(bytes.size(), sizeof(long));
    EXPECT_EQ(*reinterpret_cast<const long*>(bytes.data()), kThreads * kRounds);
}

int HoldAlone(const test::ChildArgs& args) {  // path, event to set when held, event to wait for
    const test::Handle file(Open(args[0], GENERIC_READ | GENERIC_WRITE, 0));
    const test::Handle held(OpenEventW(EVENT_MODIFY_STATE, FALSE, args[1].c_str()));
    const test::Handle done(OpenEventW(SYNCHRONIZE, FALSE, args[2].c_str()));
    return file != INVALID_HANDLE_VALUE && SetEvent(held) && WaitForSingleObject(done, 60000) == WAIT_OBJECT_0 ? 0 : 1;
}
REGISTER_CHILD(HoldAlone)

TEST(ShareModes, HoldBetweenProcesses) {
    const TempFolder folder;
    const Text path = folder.Write(_T("file"), "");
    const Text held_name = test::UniqueName(_T("held"));
    const Text done_name = test::UniqueName(_T("done"));
    const test::Handle held(CreateEventW(nullptr, TRUE, FALSE, held_name.c_str()));
    const test::Handle done(CreateEventW(nullptr, TRUE, FALSE, done_name.c_str()));
    const test::ChildProcess child({_T("HoldAlone"), path, held_name, done_name});
    ASSERT_EQ(WaitForSingleObject(held, 60000), WAIT_OBJECT_0);
    EXPECT_EQ(OpenError(path, GENERIC_READ), ERROR_SHARING_VIOLATION);
    EXPECT_FALSE(DeleteFileW(path.c_str()));
    EXPECT_EQ(GetLastError(), ERROR_SHARING_VIOLATION);
    SetEvent(done);
    EXPECT_EQ(child.Wait(60000), 0U);
    EXPECT_EQ(OpenError(path, GENERIC_READ, 0), ERROR_SUCCESS);
}

TEST(FileContents, AreReadAndWrittenAtThePosition) {
    const TempFolder folder;
    const test::Handle file(Open(folder.Path(_T("x")), GENERIC_READ | GENERIC_WRITE, 0, CREATE_NEW));
    EXPECT_TRUE(Write(file, "0123456789"));
    EXPECT_EQ(Read(file, 5), "");
    EXPECT_EQ(SetFilePointer(file, 2, nullptr, FILE_BEGIN), 2U);
    EXPECT_EQ(Read(file, 3), "234");
    OVERLAPPED place = At(8);
    EXPECT_EQ(Read(file, 9, &place), "89");
    EXPECT_TRUE(Write(file, "ab")) << "goes behind what was read at the place";
    place = At(10);
    EXPECT_EQ(Read(file, 1, &place), "a");
    place = At(12);
    EXPECT_EQ(Read(file, 1, &place), "error " + std::to_string(ERROR_HANDLE_EOF));
    EXPECT_EQ(Read(file, 0), "");
    place = At(1);
    EXPECT_TRUE(Write(file, "XY", &place));
    EXPECT_EQ(SetFilePointer(file, 0, nullptr, FILE_CURRENT), 3U);
    EXPECT_TRUE(SetEndOfFile(file));
    EXPECT_EQ(SetFilePointer(file, 3, nullptr, FILE_END), 6U);
    EXPECT_TRUE(Write(file, "z"));
    place = At(0);
    EXPECT_EQ(Read(file, 99, &place), std::string("0XY\0\0\0z", 7));
    EXPECT_TRUE(FlushFileBuffers(file));
}

TEST(FileContents, GrowAtTheEndWhoeverElseWrites) {
    const TempFolder folder;
    const Text path = folder.Write(_T("log"), "0");
    const test::Handle by_place(Open(path, GENERIC_WRITE));
    const test::Handle by_access(Open(path, FILE_APPEND_DATA));
    for (int i = 0; i < 2; ++i) {
        OVERLAPPED end = At(MAXDWORD, MAXDWORD);
        EXPECT_TRUE(Write(by_place, "a", &end));
        EXPECT_TRUE(Write(by_access, "b"));
        OVERLAPPED begin = At(0);
        EXPECT_TRUE(Write(by_access, "c", &begin)) << "this handle can do no other than append";
    }
    EXPECT_EQ(folder.Read(_T("log")), "0abcabc");
    OVERLAPPED end = At(MAXDWORD, MAXDWORD);
    EXPECT_TRUE(Write(by_place, "d", &end));
    EXPECT_EQ(SetFilePointer(by_place, 0, nullptr, FILE_CURRENT), 8U);
}

TEST(FileContents, ArePassedOnlyThroughAHandleWithTheRight) {
    const TempFolder folder;
    const Text path = folder.Write(_T("x"), "123");
    const struct {
        DWORD access;
        DWORD read, write, cut, flush, times;
    } rows[] = {
        {GENERIC_READ, 0, 5, 5, 5, 5},          {GENERIC_WRITE, 5, 0, 0, 0, 0}, {FILE_APPEND_DATA, 5, 0, 5, 0, 5},
        {FILE_READ_ATTRIBUTES, 5, 5, 5, 5, 5},  {DELETE, 5, 5, 5, 5, 5},        {0, 5, 5, 5, 5, 5},
        {FILE_WRITE_ATTRIBUTES, 5, 5, 5, 5, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.access);
        const test::Handle file(Open(path, row.access));
        const auto error = [](BOOL done) { return done ? ERROR_SUCCESS : GetLastError(); };
        const FILETIME time{1, 0x01D00000};
        char byte = '1';
        DWORD count = 0;
        LARGE_INTEGER size;
        EXPECT_EQ(error(ReadFile(file, &byte, 1, &count, nullptr)), row.read);
        EXPECT_EQ(error(WriteFile(file, &byte, 1, &count, nullptr)), row.write);
        EXPECT_EQ(error(FlushFileBuffers(file)), row.flush);
        EXPECT_EQ(error(SetFileTime(file, nullptr, nullptr, &time)), row.times);
        EXPECT_EQ(error(SetEndOfFile(file)), row.cut);
        EXPECT_TRUE(GetFileSizeEx(file, &size));
        EXPECT_EQ(GetFileType(file), FILE_TYPE_DISK);
    }
}

TEST(FilePosition, GoesWhereThePairOfHalvesSays) {
    const TempFolder folder;
    const test::Handle file(Open(folder.Write(_T("x"), "0123456789"), GENERIC_READ | GENERIC_WRITE));
    const struct {
        LONG low;
        std::optional<LONG> high;
        DWORD method;
        DWORD result;
        LONG result_high;
        DWORD error;
    } rows[] = {
        {4, {}, FILE_BEGIN, 4, 0, ERROR_SUCCESS},
        {-1, {}, FILE_CURRENT, 3, 0, ERROR_SUCCESS},
        {-4, {}, FILE_CURRENT, INVALID_SET_FILE_POINTER, 0, ERROR_NEGATIVE_SEEK},
        {0, {}, FILE_CURRENT, 3, 0, ERROR_SUCCESS},
        {-11, {}, FILE_END, INVALID_SET_FILE_POINTER, 0, ERROR_NEGATIVE_SEEK},
        {-10, {}, FILE_END, 0, 0, ERROR_SUCCESS},
        {0, {}, 3, INVALID_SET_FILE_POINTER, 0, ERROR_INVALID_PARAMETER},
        {1, 2, FILE_BEGIN, 1, 2, ERROR_SUCCESS},
        {0x7FFFFFFF, {}, FILE_CURRENT, INVALID_SET_FILE_POINTER, 0, ERROR_INVALID_PARAMETER},
        {-2, -1, FILE_CURRENT, 0xFFFFFFFF, 1, NO_ERROR},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.low << " by " << row.method);
        LONG high = row.high.value_or(0);
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(SetFilePointer(file, row.low, row.high ? &high : nullptr, row.method), row.result);
        EXPECT_EQ(GetLastError(), row.error);
        EXPECT_EQ(high, row.result_high);
    }
    LARGE_INTEGER distant;
    distant.QuadPart = 0x1'2345'6789;
    EXPECT_TRUE(SetFilePointerEx(file, distant, nullptr, FILE_BEGIN));
    EXPECT_TRUE(SetEndOfFile(file));
    DWORD high = 0;
    EXPECT_EQ(GetFileSize(file, &high), 0x23456789U);
    EXPECT_EQ(high, 1U);
}

TEST(DeleteFile, FailsByWhatIsInTheWay) {
    const TempFolder folder;
    const Text held = folder.Write(_T("held"), "");
    const Text shared = folder.Write(_T("shared"), "");
    const Text read_only = folder.Write(_T("read-only"), "");
    ASSERT_TRUE(SetFileAttributesW(read_only.c_str(), FILE_ATTRIBUTE_READONLY));
    const test::Handle without(Open(held, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE));
    test::Handle with(Open(shared, GENERIC_READ, kShareAll));
    const struct {
        Text path;
        DWORD error;
    } rows[] = {
        {folder.Path(_T("missing")), ERROR_FILE_NOT_FOUND},
        {folder.Path(_T("missing\\x")), ERROR_PATH_NOT_FOUND},
        {folder.MakeFolder(_T("folder")), ERROR_ACCESS_DENIED},
        {held, ERROR_SHARING_VIOLATION},
        {read_only, ERROR_ACCESS_DENIED},
        {shared, ERROR_SUCCESS},
        {folder.Write(_T("file"), ""), ERROR_SUCCESS},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.path));
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(DeleteFileW(row.path.c_str()), row.error == ERROR_SUCCESS);
        EXPECT_EQ(GetLastError(), row.error);
    }
    with.Close();
    EXPECT_TRUE(folder.Has(_T("held")) && folder.Has(_T("read-only")) && folder.Has(_T("folder")));
    EXPECT_FALSE(folder.Has(_T("shared")) || folder.Has(_T("file")));
    EXPECT_TRUE(SetFileAttributesW(read_only.c_str(), FILE_ATTRIBUTE_NORMAL));
}

TEST(MoveFile, RenamesOrSaysWhatIsInTheWay) {
    const TempFolder folder;
    folder.Write(_T("file"), "new");
    folder.Write(_T("other"), "old");
    folder.MakeFolder(_T("folder"));
    folder.Write(_T("folder\\inside"), "");
    folder.Write(_T("held"), "");
    folder.Write(_T("read-only"), "");
    ASSERT_TRUE(SetFileAttributesW(folder.Path(_T("read-only")).c_str(), FILE_ATTRIBUTE_READONLY));
    const test::Handle held(Open(folder.Path(_T("held")), GENERIC_READ, FILE_SHARE_READ));
    const struct {
        const TCHAR* from;
        const TCHAR* to;
        DWORD flags;
        DWORD error;
    } rows[] = {
        {_T("missing"), _T("x"), 0, ERROR_FILE_NOT_FOUND},
        {_T("missing\\x"), _T("x"), 0, ERROR_PATH_NOT_FOUND},
        {_T("file"), _T("missing\\x"), 0, ERROR_PATH_NOT_FOUND},
        {_T("file"), _T("other"), 0, ERROR_ALREADY_EXISTS},
        {_T("file"), _T("folder"), 0, ERROR_ALREADY_EXISTS},
        {_T("file"), _T("folder"), MOVEFILE_REPLACE_EXISTING, ERROR_ACCESS_DENIED},
        {_T("file"), _T("read-only"), MOVEFILE_REPLACE_EXISTING, ERROR_ACCESS_DENIED},
        {_T("file"), _T("held"), MOVEFILE_REPLACE_EXISTING, ERROR_ACCESS_DENIED},
        {_T("folder"), _T("file"), MOVEFILE_REPLACE_EXISTING, ERROR_ACCESS_DENIED},
        {_T("held"), _T("x"), 0, ERROR_SHARING_VIOLATION},
        {_T("file"), _T("file"), 0, ERROR_SUCCESS},
        {_T("file"), _T("other"), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH, ERROR_SUCCESS},
        {_T("read-only"), _T("moved"), 0, ERROR_SUCCESS},
        {_T("folder"), _T("renamed"), 0, ERROR_SUCCESS},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.from) + " to " + Narrow(row.to));
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(MoveFileExW(folder.Path(row.from).c_str(), folder.Path(row.to).c_str(), row.flags), row.error == ERROR_SUCCESS);
        EXPECT_EQ(row.error == ERROR_SUCCESS ? row.error : GetLastError(), row.error);
    }
    EXPECT_EQ(folder.Read(_T("other")), "new");
    EXPECT_FALSE(folder.Has(_T("file")) || folder.Has(_T("folder")));
    EXPECT_TRUE(folder.Has(_T("renamed\\inside")));
    EXPECT_TRUE(SetFileAttributesW(folder.Path(_T("moved")).c_str(), FILE_ATTRIBUTE_NORMAL));
}

TEST(CopyFile, BringsContentsTimeAndReadOnly) {
    const TempFolder folder;
    const std::string contents = std::string(300'000, 'c') + "end";
    const Text from = folder.Write(_T("from"), contents);
    const Text to = folder.Path(_T("to"));
    const FILETIME time{0x12345600, 0x01D00000};
    test::Handle file(Open(from, GENERIC_WRITE));
    ASSERT_TRUE(SetFileTime(file, nullptr, nullptr, &time));
    file.Close();
    ASSERT_TRUE(SetFileAttributesW(from.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_TRUE(CopyFileW(from.c_str(), to.c_str(), TRUE));
    WIN32_FILE_ATTRIBUTE_DATA data;
    ASSERT_TRUE(GetFileAttributesExW(to.c_str(), GetFileExInfoStandard, &data));
    EXPECT_EQ(data.ftLastWriteTime.dwHighDateTime, time.dwHighDateTime);
    EXPECT_EQ(data.ftLastWriteTime.dwLowDateTime, time.dwLowDateTime);
    EXPECT_NE(data.dwFileAttributes & FILE_ATTRIBUTE_READONLY, 0U);
    EXPECT_TRUE(folder.Read(_T("to")) == contents);
    for (const Text& path : {from, to}) {
        EXPECT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL));
    }
}

TEST(CopyFile, FailsWithoutHarm) {
    const TempFolder folder;
    folder.Write(_T("file"), "new");
    folder.Write(_T("other"), "old");
    folder.Write(_T("held"), "held");
    folder.MakeFolder(_T("folder"));
    const test::Handle held(Open(folder.Path(_T("held")), GENERIC_READ | GENERIC_WRITE, 0));
    const struct {
        const TCHAR* from;
        const TCHAR* to;
        BOOL keep;
        DWORD error;
    } rows[] = {
        {_T("missing"), _T("x"), FALSE, ERROR_FILE_NOT_FOUND},    {_T("file"), _T("missing\\x"), FALSE, ERROR_PATH_NOT_FOUND},
        {_T("folder"), _T("x"), FALSE, ERROR_ACCESS_DENIED},      {_T("file"), _T("folder"), FALSE, ERROR_ACCESS_DENIED},
        {_T("file"), _T("other"), TRUE, ERROR_FILE_EXISTS},       {_T("held"), _T("x"), FALSE, ERROR_SHARING_VIOLATION},
        {_T("file"), _T("held"), FALSE, ERROR_SHARING_VIOLATION}, {_T("file"), _T("file"), FALSE, ERROR_SHARING_VIOLATION},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.from) + " to " + Narrow(row.to));
        EXPECT_FALSE(CopyFileW(folder.Path(row.from).c_str(), folder.Path(row.to).c_str(), row.keep));
        EXPECT_EQ(GetLastError(), row.error);
    }
    EXPECT_EQ(folder.Read(_T("file")) + folder.Read(_T("other")), "newold");
    EXPECT_FALSE(folder.Has(_T("x")));
    EXPECT_TRUE(CopyFileW(folder.Path(_T("file")).c_str(), folder.Path(_T("other")).c_str(), FALSE));
    EXPECT_EQ(folder.Read(_T("other")), "new");
}

TEST(FileHandles, OfOtherKindsAreRefused) {
    const test::Handle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    const TempFolder folder;
    HANDLE closed = Open(folder.Path(_T("x")), GENERIC_WRITE, 0, CREATE_NEW);
    CloseHandle(closed);
    for (const HANDLE handle : {static_cast<HANDLE>(event), closed, HANDLE{}}) {
        DWORD count = 0;
        char byte = 0;
        EXPECT_FALSE(ReadFile(handle, &byte, 1, &count, nullptr));
        EXPECT_FALSE(WriteFile(handle, &byte, 1, &count, nullptr));
        EXPECT_EQ(SetFilePointer(handle, 0, nullptr, FILE_BEGIN), INVALID_SET_FILE_POINTER);
        EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    }
}

}  // namespace
