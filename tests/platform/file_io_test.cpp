#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <optional>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include "support/child_process.h"
#include "support/file_calls.h"
#include "support/handles.h"
#include "support/temp_folder.h"
#include "support/unprivileged.h"
#include "support/wine.h"

namespace {

using test::kShareAll, test::Open, test::Outcome, test::TempFolder, test::Text, test::UnlessWine;

constexpr ULONGLONG kEnd = ~0ULL;

OVERLAPPED PlaceOf(ULONGLONG at) {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(at);
    place.OffsetHigh = static_cast<DWORD>(at >> 32);
    return place;
}

BOOL Write(HANDLE file, const std::string& bytes, std::optional<ULONGLONG> at = {}) {
    OVERLAPPED place = PlaceOf(at.value_or(0));
    DWORD written = 0;
    const BOOL done = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, at ? &place : nullptr);
    EXPECT_EQ(written, done ? bytes.size() : 0);
    return done;
}

// What a read of `size` bytes gives, or "error N".
std::string Read(HANDLE file, DWORD size, std::optional<ULONGLONG> at = {}) {
    OVERLAPPED place = PlaceOf(at.value_or(0));
    std::string bytes(size, '\0');
    DWORD read = MAXDWORD;
    const BOOL done = ReadFile(file, bytes.data(), size, &read, at ? &place : nullptr);
    return done ? bytes.substr(0, read) : "error " + std::to_string(GetLastError());
}

TEST(FileOpening, DispositionsDecideByWhatIsThere) {
    const struct {
        DWORD disposition;
        DWORD on_file, on_nothing, on_folder;  // the last error, of a success too
        const char* left;                      // of a file with "old" in it
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
            SetLastError(ERROR_GEN_FAILURE);
            const test::Handle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, row.disposition, 0, nullptr));
            return GetLastError();
        };
        EXPECT_EQ(last_error(folder.Write(_T("file"), "old")), row.on_file);
        EXPECT_EQ(folder.Read(_T("file")), row.left);
        EXPECT_EQ(last_error(folder.Path(_T("new"))), row.on_nothing);
        EXPECT_EQ(folder.Has(_T("new")), row.on_nothing == ERROR_SUCCESS);
        EXPECT_EQ(last_error(folder.MakeFolder(_T("folder"))), row.on_folder);
        EXPECT_EQ(last_error(folder.Path(_T("missing\\x"))), ERROR_PATH_NOT_FOUND);
    }
    const TempFolder folder;
    const Text file = folder.Write(_T("file"), "");
    EXPECT_EQ(Outcome(Open(file, GENERIC_READ, kShareAll, 0)), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Outcome(Open(file, GENERIC_READ, kShareAll, 6)), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Outcome(Open(file, GENERIC_READ, kShareAll, TRUNCATE_EXISTING)),
              UnlessWine<DWORD>(ERROR_INVALID_PARAMETER, ERROR_SUCCESS));
}

TEST(FileOpening, KeepsReadOnlyFilesAsTheyAre) {
    const TempFolder folder;
    const Text path = folder.Path(_T("read-only"));
    test::Handle created(Open(path, GENERIC_WRITE, 0, CREATE_NEW, FILE_ATTRIBUTE_READONLY));
    EXPECT_TRUE(Write(created, "old")) << "who creates a read-only file may fill it";
    created.Close();
    if (test::UnprivilegedScope().Active()) {
        EXPECT_EQ(Outcome(Open(path, FILE_APPEND_DATA, kShareAll, OPEN_ALWAYS)), ERROR_ACCESS_DENIED);
        EXPECT_EQ(Outcome(Open(path, GENERIC_READ, kShareAll, CREATE_ALWAYS)), ERROR_ACCESS_DENIED);
    }
    const auto remove = [&path] { return Open(path, DELETE, kShareAll, OPEN_EXISTING, FILE_FLAG_DELETE_ON_CLOSE); };
    EXPECT_EQ(Outcome(remove()), ERROR_ACCESS_DENIED);
    EXPECT_EQ(folder.Read(_T("read-only")), "old");
    EXPECT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(Outcome(remove()), ERROR_SUCCESS);
    EXPECT_FALSE(folder.Has(_T("read-only")));
}

struct Use {
    DWORD access;
    DWORD share;
};

TEST(ShareModes, EachSideMustAllowTheOther) {
    constexpr DWORD kShareBoth = FILE_SHARE_READ | FILE_SHARE_WRITE;
    constexpr Use kReader{GENERIC_READ, FILE_SHARE_READ};
    constexpr Use kTolerantReader{GENERIC_READ, kShareBoth};
    constexpr Use kWriter{GENERIC_WRITE, FILE_SHARE_READ};
    constexpr Use kTolerantWriter{GENERIC_WRITE, kShareBoth};
    constexpr Use kHiddenWriter{GENERIC_WRITE, FILE_SHARE_WRITE};
    constexpr Use kAppender{FILE_APPEND_DATA, kShareBoth};
    constexpr Use kAlone{GENERIC_READ | GENERIC_WRITE, 0};
    constexpr Use kAny{GENERIC_READ | GENERIC_WRITE | DELETE, kShareAll};
    constexpr Use kRemover{DELETE, kShareAll};
    constexpr Use kLooker{FILE_READ_ATTRIBUTES, 0};
    const struct {
        Use first, second;
        bool together;
    } rows[] = {
        {kReader, kReader, true},         {kReader, kTolerantWriter, false},
        {kTolerantReader, kWriter, true}, {kTolerantReader, kHiddenWriter, false},
        {kWriter, kAppender, false},      {kTolerantWriter, kTolerantWriter, true},
        {kAlone, kRemover, false},        {kAlone, kLooker, true},
        {kAny, kTolerantWriter, false},   {kAny, kRemover, true},
    };
    const TempFolder folder;
    const Text path = folder.Write(_T("file"), "kept");
    for (const auto& row : rows) {
        for (const auto& [first, second] : {std::pair(row.first, row.second), std::pair(row.second, row.first)}) {
            SCOPED_TRACE(testing::Message() << first.access << "/" << first.share << ", " << second.access << "/"
                                            << second.share);
            const test::Handle held(Open(path, first.access, first.share));
            EXPECT_EQ(Outcome(Open(path, second.access, second.share)), row.together ? ERROR_SUCCESS : ERROR_SHARING_VIOLATION);
        }
    }
    const test::Handle reader(Open(path, GENERIC_READ, FILE_SHARE_READ));
    EXPECT_EQ(Outcome(Open(path, GENERIC_WRITE, kShareAll, CREATE_ALWAYS)), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(Read(reader, 9), "kept") << "what cannot be had must not be cut";
    EXPECT_EQ(Outcome(Open(path, GENERIC_READ, kShareAll, CREATE_ALWAYS)),  // to cut is to write
              UnlessWine<DWORD>(ERROR_SHARING_VIOLATION, ERROR_SUCCESS));
}

TEST(ShareModes, OfManyWhoWantItAloneOneGetsIt) {
    const TempFolder folder;
    const Text path = folder.Write(_T("file"), "");
    constexpr int kThreads = 4;
    constexpr int kRounds = 200;
    std::vector<std::jthread> threads(kThreads);
    for (std::jthread& thread : threads) {
        thread = std::jthread([&path] {
            for (int got = 0; got < kRounds;) {
                const test::Handle file(Open(path, GENERIC_READ | GENERIC_WRITE, 0));
                if (file != INVALID_HANDLE_VALUE) {
                    EXPECT_TRUE(Write(file, Read(file, kThreads * kRounds) + "+", 0));
                    ++got;
                }
            }
        });
    }
    threads.clear();
    EXPECT_EQ(folder.Read(_T("file")), std::string(kThreads * kRounds, '+'));
}

int HoldAlone(const test::ChildArgs& args) {  // path, event to set when held; until it is killed
    const test::Handle file(Open(args[0], GENERIC_READ | GENERIC_WRITE, 0));
    const test::Handle held(OpenEventW(EVENT_MODIFY_STATE, FALSE, args[1].c_str()));
    const test::Handle never(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    return file != INVALID_HANDLE_VALUE && SetEvent(held) ? static_cast<int>(WaitForSingleObject(never, 60000)) : 1;
}
REGISTER_CHILD(HoldAlone)

TEST(ShareModes, HoldBetweenProcesses) {
    const TempFolder folder;
    const Text path = folder.Write(_T("file"), "");
    const Text held_name = test::UniqueName(_T("held"));
    const test::Handle held(CreateEventW(nullptr, TRUE, FALSE, held_name.c_str()));
    const test::ChildProcess child({_T("HoldAlone"), path, held_name});
    ASSERT_EQ(WaitForSingleObject(held, 60000), WAIT_OBJECT_0);
    EXPECT_EQ(Outcome(Open(path, GENERIC_READ)), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(Outcome(DeleteFileW(path.c_str())), ERROR_SHARING_VIOLATION);
    child.Kill();
    EXPECT_EQ(Outcome(Open(path, GENERIC_READ, 0)), ERROR_SUCCESS);
}

TEST(FileContents, AreReadAndWrittenAtThePosition) {
    const TempFolder folder;
    const test::Handle file(Open(folder.Path(_T("x")), GENERIC_READ | GENERIC_WRITE, 0, CREATE_NEW));
    EXPECT_TRUE(Write(file, "0123456789"));
    EXPECT_EQ(Read(file, 5), "");
    EXPECT_EQ(Read(file, 9, 8), "89");
    EXPECT_TRUE(Write(file, "ab")) << "goes behind what was read at the place";
    EXPECT_EQ(Read(file, 1, 10), "a");
    EXPECT_EQ(Read(file, 1, 12), "error " + std::to_string(ERROR_HANDLE_EOF));
    EXPECT_TRUE(Write(file, "XY", 1));
    EXPECT_EQ(SetFilePointer(file, 0, nullptr, FILE_CURRENT), 3U);
    EXPECT_TRUE(SetEndOfFile(file));
    EXPECT_EQ(SetFilePointer(file, 3, nullptr, FILE_END), 6U);
    EXPECT_TRUE(Write(file, "z"));
    EXPECT_EQ(Read(file, 99, 0), std::string("0XY\0\0\0z", 7));
}

TEST(FileContents, GrowAtTheEndWhoeverElseWrites) {
    const TempFolder folder;
    const Text path = folder.Write(_T("log"), "0");
    const test::Handle by_place(Open(path, GENERIC_WRITE));
    const test::Handle by_access(Open(path, FILE_APPEND_DATA));
    EXPECT_TRUE(Write(by_place, "a", kEnd) && Write(by_access, "b"));
    EXPECT_TRUE(Write(by_access, "c", 0)) << "this handle can do no other than append";
    EXPECT_TRUE(Write(by_place, "d", kEnd));
    EXPECT_EQ(folder.Read(_T("log")), "0abcd");
    EXPECT_EQ(SetFilePointer(by_place, 0, nullptr, FILE_CURRENT), 5U);
}

TEST(FileContents, ArePassedOnlyThroughAFileWithTheRight) {
    const TempFolder folder;
    const Text path = folder.Write(_T("x"), "123");
    const HANDLE closed = Open(path, GENERIC_READ | GENERIC_WRITE);
    const auto unseen = UnlessWine<DWORD>(5, 0);  // Wine does not look at this right
    const struct {
        HANDLE handle;
        DWORD read, write, cut, flush, times, size;
    } rows[] = {
        {Open(path, GENERIC_READ), 0, 5, UnlessWine<DWORD>(5, 87), 5, unseen, 0},
        {Open(path, GENERIC_WRITE), 5, 0, 0, 0, 0, 0},
        {Open(path, FILE_APPEND_DATA), 5, 0, unseen, 0, unseen, 0},
        {Open(path, FILE_WRITE_ATTRIBUTES), 5, 5, unseen, 5, 0, 0},
        {CreateEventW(nullptr, TRUE, FALSE, nullptr), 6, 6, 6, 6, 6, 6},
        {closed, 6, 6, 6, 6, 6, 6},
    };
    CloseHandle(closed);
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << "row " << &row - rows);
        const FILETIME time{1, 0x01D00000};
        LARGE_INTEGER size;
        char byte = '1';
        DWORD count = 0;
        EXPECT_EQ(Outcome(ReadFile(row.handle, &byte, 1, &count, nullptr)), row.read);
        EXPECT_EQ(Outcome(WriteFile(row.handle, &byte, 1, &count, nullptr)), row.write);
        EXPECT_EQ(Outcome(FlushFileBuffers(row.handle)), row.flush);
        EXPECT_EQ(Outcome(SetFileTime(row.handle, nullptr, nullptr, &time)), row.times);
        EXPECT_EQ(Outcome(SetEndOfFile(row.handle)), row.cut);
        EXPECT_EQ(Outcome(GetFileSizeEx(row.handle, &size)), row.size);
        EXPECT_EQ(CloseHandle(row.handle), row.handle != closed);
    }
}

TEST(FilePosition, GoesWhereThePairOfHalvesSays) {
    const TempFolder folder;
    const test::Handle file(Open(folder.Write(_T("x"), "0123456789"), GENERIC_READ | GENERIC_WRITE));
    using Sought = std::pair<DWORD, DWORD>;  // the place and the last error
    const auto seek = [file = HANDLE{file}](LONG low, LONG* high, DWORD method) {
        SetLastError(ERROR_SUCCESS);
        const DWORD place = SetFilePointer(file, low, high, method);
        return Sought(place, GetLastError());
    };
    LONG high = 2;
    EXPECT_EQ(seek(-11, nullptr, FILE_END), Sought(INVALID_SET_FILE_POINTER, ERROR_NEGATIVE_SEEK));
    EXPECT_EQ(seek(0, nullptr, 3), Sought(INVALID_SET_FILE_POINTER, ERROR_INVALID_PARAMETER));
    EXPECT_EQ(seek(1, &high, FILE_BEGIN), Sought(1, ERROR_SUCCESS));
    high = -1;
    EXPECT_EQ(seek(-2, &high, FILE_CURRENT), Sought(INVALID_SET_FILE_POINTER, ERROR_SUCCESS));
    EXPECT_EQ(high, 1);
    EXPECT_TRUE(SetEndOfFile(file));
    LARGE_INTEGER size;
    EXPECT_TRUE(GetFileSizeEx(file, &size));
    EXPECT_EQ(size.QuadPart, 0x1'FFFF'FFFF);
    EXPECT_EQ(seek(1, nullptr, FILE_END), UnlessWine(Sought(INVALID_SET_FILE_POINTER, ERROR_INVALID_PARAMETER), Sought(0, 0)))
        << "more than 32 bits can tell";
}

using Call = BOOL (*)(LPCTSTR from, LPCTSTR to);
constexpr Call kDelete = [](LPCTSTR from, LPCTSTR) { return DeleteFileW(from); };
constexpr Call kMove = [](LPCTSTR from, LPCTSTR to) { return MoveFileW(from, to); };
constexpr Call kReplace = [](LPCTSTR from, LPCTSTR to) { return MoveFileExW(from, to, MOVEFILE_REPLACE_EXISTING); };
constexpr Call kCopy = [](LPCTSTR from, LPCTSTR to) { return CopyFileW(from, to, FALSE); };
constexpr Call kCopyNew = [](LPCTSTR from, LPCTSTR to) { return CopyFileW(from, to, TRUE); };

TEST(DeleteMoveAndCopy, FailByWhatIsInTheWayWithoutHarm) {
    const TempFolder folder;
    folder.Write(_T("file"), "new");
    folder.Write(_T("other"), "old");
    folder.MakeFolder(_T("folder"));
    folder.Write(_T("folder\\inside"), "");
    const test::Handle held(Open(folder.Write(_T("held"), ""), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE));
    const test::Handle alone(Open(folder.Write(_T("alone"), ""), GENERIC_READ | GENERIC_WRITE, 0));
    test::Handle shared(Open(folder.Write(_T("shared"), ""), GENERIC_READ));
    const Text read_only = folder.Write(_T("read-only"), std::string(300'000, 'c') + "end");
    const FILETIME time{0x12345600, 0x01D00000};
    ASSERT_TRUE(SetFileTime(test::Handle(Open(read_only, GENERIC_WRITE)), nullptr, nullptr, &time));
    ASSERT_TRUE(SetFileAttributesW(read_only.c_str(), FILE_ATTRIBUTE_READONLY));
    const std::tuple<Call, const char*, const char*, DWORD> rows[] = {
        {kDelete, "missing", "", ERROR_FILE_NOT_FOUND},      {kDelete, "missing\\x", "", ERROR_PATH_NOT_FOUND},
        {kDelete, "folder", "", ERROR_ACCESS_DENIED},        {kDelete, "held", "", ERROR_SHARING_VIOLATION},
        {kDelete, "read-only", "", ERROR_ACCESS_DENIED},     {kMove, "missing", "x", ERROR_FILE_NOT_FOUND},
        {kMove, "file", "missing\\x", ERROR_PATH_NOT_FOUND}, {kMove, "file", "other", ERROR_ALREADY_EXISTS},
        {kMove, "file", "folder", ERROR_ALREADY_EXISTS},     {kMove, "held", "x", ERROR_SHARING_VIOLATION},
        {kReplace, "file", "folder", ERROR_ACCESS_DENIED},   {kReplace, "file", "held", ERROR_ACCESS_DENIED},
        {kCopy, "missing", "x", ERROR_FILE_NOT_FOUND},       {kCopy, "file", "missing\\x", ERROR_PATH_NOT_FOUND},
        {kCopy, "folder", "x", ERROR_ACCESS_DENIED},         {kCopy, "file", "folder", ERROR_ACCESS_DENIED},
        {kCopy, "alone", "x", ERROR_SHARING_VIOLATION},      {kCopy, "file", "alone", ERROR_SHARING_VIOLATION},
        {kCopy, "file", "file", ERROR_SHARING_VIOLATION},    {kCopyNew, "file", "other", ERROR_FILE_EXISTS},
    };
    const auto call = [&folder](Call of, const char* from, const char* to) {
        SetLastError(ERROR_SUCCESS);
        return Outcome(of(folder.Path(test::Widen(from)).c_str(), folder.Path(test::Widen(to)).c_str()));
    };
    for (const auto& [function, from, to, error] : rows) {
        SCOPED_TRACE(testing::Message() << from << " to " << to);
        EXPECT_EQ(call(function, from, to), error);
        EXPECT_EQ(folder.Read(_T("file")) + folder.Read(_T("other")), "newold");
        EXPECT_FALSE(folder.Has(_T("x")));
    }
    if (test::UnprivilegedScope().Active()) {
        EXPECT_EQ(call(kReplace, "file", "read-only"), ERROR_ACCESS_DENIED);
    }
    EXPECT_EQ(call(kDelete, "shared", ""), ERROR_SUCCESS);
    shared.Close();
    EXPECT_EQ(call(kMove, "file", "file"), ERROR_SUCCESS);
    EXPECT_EQ(call(kMove, "read-only", "moved"), ERROR_SUCCESS);
    EXPECT_EQ(call(kMove, "folder", "renamed"), ERROR_SUCCESS);
    EXPECT_FALSE(folder.Has(_T("shared")) || folder.Has(_T("folder")));
    EXPECT_TRUE(folder.Has(_T("renamed\\inside")) && folder.Has(_T("held")));
    EXPECT_EQ(call(kReplace, "file", "other"), ERROR_SUCCESS);
    EXPECT_FALSE(folder.Has(_T("file")));
    EXPECT_EQ(call(kCopy, "other", "renamed\\inside"), ERROR_SUCCESS);
    EXPECT_EQ(folder.Read(_T("other")) + folder.Read(_T("renamed\\inside")), "newnew");
    EXPECT_EQ(call(kReplace, "renamed", "other"), UnlessWine<DWORD>(ERROR_ACCESS_DENIED, ERROR_SUCCESS));

    EXPECT_EQ(call(kCopyNew, "moved", "copied"), ERROR_SUCCESS);
    EXPECT_TRUE(folder.Read(_T("copied")) == std::string(300'000, 'c') + "end");
    for (const TCHAR* const name : {_T("moved"), _T("copied")}) {
        WIN32_FILE_ATTRIBUTE_DATA data;
        ASSERT_TRUE(GetFileAttributesExW(folder.Path(name).c_str(), GetFileExInfoStandard, &data));
        EXPECT_EQ(CompareFileTime(&data.ftLastWriteTime, &time), 0);
        EXPECT_NE(data.dwFileAttributes & FILE_ATTRIBUTE_READONLY, 0U);
        EXPECT_TRUE(SetFileAttributesW(folder.Path(name).c_str(), FILE_ATTRIBUTE_NORMAL));
    }
}

}  // namespace
