// Files where the native system shows through: links, pipes, devices, full disks and missing rights.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <tchar.h>
#include <unistd.h>
#include <windows.h>

#include <string>
#include <tuple>

#include "support/file_calls.h"
#include "support/handles.h"
#include "support/native_path_linux.h"
#include "support/temp_folder.h"
#include "support/unprivileged.h"

namespace {

using test::Dispose, test::kShareAll, test::Narrow, test::Native, test::Open, test::Outcome, test::TempFolder, test::Text;

constexpr DWORD kLink = FILE_ATTRIBUTE_REPARSE_POINT;
constexpr DWORD kFolder = FILE_ATTRIBUTE_DIRECTORY;

mode_t ModeOf(const Text& path) {
    struct stat status {};
    EXPECT_EQ(lstat(Native(path).c_str(), &status), 0);
    return status.st_mode & 07777;
}

DWORD AttributesOf(HANDLE file) {
    FILE_ATTRIBUTE_TAG_INFO tag{};
    EXPECT_TRUE(GetFileInformationByHandleEx(file, FileAttributeTagInfo, &tag, sizeof tag));
    EXPECT_EQ(tag.ReparseTag, (tag.FileAttributes & kLink) != 0 ? IO_REPARSE_TAG_SYMLINK : 0);
    return tag.FileAttributes;
}

// With a file, a folder and links to them and to nothing.
struct LinkFolder : TempFolder {
    LinkFolder() {
        Write(_T("file"), "contents");
        MakeFolder(_T("folder"));
        for (const std::string target : {"file", "folder", "nothing"})
            EXPECT_EQ(symlink(target.c_str(), (Native(Path()) + "/to-" + target).c_str()), 0);
    }
};

// The attributes that a search shows.
DWORD FoundAttributes(const Text& pattern) {
    WIN32_FIND_DATAW found{};
    EXPECT_TRUE(FindClose(FindFirstFileW(pattern.c_str(), &found)));
    EXPECT_EQ(found.dwReserved0, IO_REPARSE_TAG_SYMLINK);
    return found.dwFileAttributes;
}

TEST(LinuxFiles, AreSeenMovedAndDeletedThemselvesAndFollowedByOpens) {
    const LinkFolder folder;
    const struct {
        const TCHAR* name;
        DWORD attributes;
        DWORD followed, target;  // the error of an open that follows, the attributes that it then sees
    } rows[] = {
        {_T("to-file"), kLink, ERROR_SUCCESS, FILE_ATTRIBUTE_NORMAL},
        {_T("to-folder"), kLink | kFolder, ERROR_SUCCESS, kFolder},
        {_T("to-nothing"), kLink, ERROR_FILE_NOT_FOUND, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.name));
        const Text path = folder.Path(row.name);
        EXPECT_EQ(GetFileAttributesW(path.c_str()), row.attributes);
        EXPECT_EQ(FoundAttributes(path.substr(0, path.size() - 1) + _T("?")), row.attributes);
        constexpr DWORD kItself = FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT;
        EXPECT_EQ(AttributesOf(test::Handle(Open(path, FILE_READ_ATTRIBUTES, kShareAll, OPEN_EXISTING, kItself))),
                  row.attributes);
        EXPECT_EQ(Outcome(Open(path, GENERIC_READ)), row.followed);
        if (row.followed == ERROR_SUCCESS) {
            EXPECT_EQ(AttributesOf(test::Handle(Open(path, 0))), row.target);
        }
        EXPECT_EQ(Outcome(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY)), ERROR_NOT_SUPPORTED);
    }
    const Text to_nothing = folder.Path(_T("to-nothing"));
    EXPECT_EQ(Outcome(Open(to_nothing, GENERIC_WRITE, 0, CREATE_NEW)), ERROR_FILE_EXISTS);
    EXPECT_FALSE(folder.Has(_T("nothing"))) << "a planted link must not lead a new file elsewhere";
    EXPECT_EQ(Outcome(Open(to_nothing, GENERIC_WRITE, 0, OPEN_ALWAYS)), ERROR_SUCCESS);
    EXPECT_TRUE(folder.Has(_T("nothing")));

    EXPECT_EQ(Outcome(DeleteFileW(folder.Path(_T("to-folder")).c_str())), ERROR_ACCESS_DENIED);
    EXPECT_EQ(Outcome(RemoveDirectoryW(folder.Path(_T("to-file")).c_str())), ERROR_DIRECTORY);
    EXPECT_TRUE(RemoveDirectoryW(folder.Path(_T("to-folder")).c_str()));
    EXPECT_FALSE(folder.Has(_T("to-folder")) || !folder.Has(_T("folder")));
    EXPECT_TRUE(MoveFileW(folder.Path(_T("to-file")).c_str(), folder.Path(_T("moved")).c_str()));
    EXPECT_EQ(GetFileAttributesW(folder.Path(_T("moved")).c_str()), kLink);
    EXPECT_TRUE(DeleteFileW(folder.Path(_T("moved")).c_str()));
    EXPECT_EQ(folder.Read(_T("file")), "contents");
}

TEST(LinuxFiles, AreOpenedAndDisposedRelativeToTheirFolder) {
    const LinkFolder folder;
    const test::Handle base(Open(folder.Path(), FILE_LIST_DIRECTORY | SYNCHRONIZE));
    const std::tuple<const TCHAR*, DWORD, DWORD> rows[] = {
        {_T("to-file"), FILE_DIRECTORY_FILE, ERROR_DIRECTORY},
        {_T("to-folder"), FILE_NON_DIRECTORY_FILE, ERROR_ACCESS_DENIED},
        {_T("to-folder"), FILE_DIRECTORY_FILE, ERROR_SUCCESS},
        {_T("to-nothing"), FILE_NON_DIRECTORY_FILE, ERROR_SUCCESS},
    };
    for (const auto& [name, kind, error] : rows) {
        SCOPED_TRACE(Narrow(name));
        test::Handle link;
        EXPECT_EQ(OpenIn(base, name, kind | FILE_OPEN_REPARSE_POINT, link), error);
        if (error == ERROR_SUCCESS) {
            EXPECT_EQ(AttributesOf(link) & kLink, kLink);
            EXPECT_EQ(Dispose(link), ERROR_SUCCESS);
        }
        link.Close();
        EXPECT_EQ(folder.Has(name), error != ERROR_SUCCESS);
    }
    EXPECT_TRUE(folder.Has(_T("folder")));
    EXPECT_EQ(folder.Read(_T("file")), "contents");
}

TEST(LinuxFiles, AnswerAtOnce) {
    const TempFolder folder;
    DWORD count = 1;
    char byte = 'x';
    const test::Handle full(Open(_T("C:\\dev\\full"), GENERIC_WRITE));
    EXPECT_EQ(Outcome(WriteFile(full, &byte, 1, &count, nullptr)), ERROR_DISK_FULL);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(GetFileType(full), FILE_TYPE_CHAR);
    OVERLAPPED end{0, 0, MAXDWORD, MAXDWORD, nullptr};
    EXPECT_EQ(Outcome(WriteFile(full, &byte, 1, &count, &end)), ERROR_DISK_FULL);

    const Text pipe = folder.Path(_T("pipe"));  // of our own: a copy's mistake must not hit a device of the machine
    ASSERT_EQ(mkfifo(Native(pipe).c_str(), 0600), 0);
    const test::Handle reader(Open(pipe, GENERIC_READ));
    const test::Handle writer(Open(pipe, GENERIC_WRITE));
    EXPECT_EQ(GetFileType(reader), FILE_TYPE_PIPE);
    EXPECT_EQ(Outcome(ReadFile(reader, &byte, 1, &count, nullptr)), ERROR_LOCK_VIOLATION);
    EXPECT_TRUE(WriteFile(writer, "yz", 2, &count, nullptr) && ReadFile(reader, &byte, 1, &count, nullptr));
    EXPECT_EQ(byte, 'y');
    EXPECT_EQ(Outcome(BOOL{SetFilePointer(reader, 0, nullptr, FILE_BEGIN) != INVALID_SET_FILE_POINTER}), ERROR_SEEK);
    EXPECT_EQ(Outcome(CopyFileW(folder.Write(_T("file"), "x").c_str(), pipe.c_str(), FALSE)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(Outcome(CopyFileW(pipe.c_str(), folder.Path(_T("to")).c_str(), FALSE)), ERROR_ACCESS_DENIED);
    EXPECT_TRUE(folder.Has(_T("pipe")) && !folder.Has(_T("to")));

    const test::Handle volume(Open(_T("\\\\.\\c:"), 0));
    EXPECT_EQ(Outcome(ReadFile(volume, &byte, 1, &count, nullptr)), ERROR_INVALID_FUNCTION);
    EXPECT_EQ(Outcome(Open(_T("\\\\?\\R:"), 0)), ERROR_FILE_NOT_FOUND);
}

TEST(LinuxFiles, ShortOfRoomTellWhatWentOutAndKeepNoHalfCopy) {
    const TempFolder folder;
    const std::string bytes(300'000, 'x');
    const Text from = folder.Write(_T("from"), bytes);
    const test::Handle file(Open(folder.Path(_T("written")), GENERIC_WRITE, 0, CREATE_NEW));
    DWORD written = 0;
    const auto handler = signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{1500, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ(Outcome(WriteFile(file, bytes.data(), 2000, &written, nullptr)), ERROR_FILE_TOO_LARGE);
    EXPECT_EQ(written, 1500U);
    EXPECT_EQ(Outcome(CopyFileW(from.c_str(), folder.Path(_T("to")).c_str(), FALSE)), ERROR_FILE_TOO_LARGE);
    EXPECT_FALSE(folder.Has(_T("to")));
    setrlimit(RLIMIT_FSIZE, &before);
    signal(SIGXFSZ, handler);
}

TEST(LinuxRights, AreAskedOfFiles) {
    const TempFolder folder;
    const Text locked = folder.MakeFolder(_T("locked"));
    const Text inside = folder.Write(_T("locked\\x"), "");
    const Text secret = folder.Write(_T("secret"), "");
    const Text drop = folder.Write(_T("drop"), "");
    ASSERT_EQ(chmod(Native(locked).c_str(), 0700) + chmod(Native(secret).c_str(), 0600) + chmod(Native(drop).c_str(), 0622), 0);
    const test::UnprivilegedScope unprivileged;
    if (geteuid() == getuid())
        GTEST_SKIP() << "without root this user owns the files and may";
    EXPECT_EQ(Outcome(Open(inside, GENERIC_WRITE, 0, CREATE_ALWAYS)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(Outcome(BOOL{GetFileAttributesW(inside.c_str()) != INVALID_FILE_ATTRIBUTES}), ERROR_ACCESS_DENIED);
    EXPECT_EQ(Outcome(DeleteFileW(inside.c_str())), ERROR_ACCESS_DENIED);
    EXPECT_EQ(Outcome(Open(locked, FILE_LIST_DIRECTORY)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(Outcome(Open(secret, GENERIC_READ)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(Outcome(Open(secret, 0)), ERROR_SUCCESS) << "attributes are the folder's to tell";
    EXPECT_EQ(Outcome(SetFileAttributesW(secret.c_str(), FILE_ATTRIBUTE_READONLY)), ERROR_ACCESS_DENIED);
    const test::Handle dropped(Open(drop, GENERIC_WRITE));
    DWORD count = 0;
    EXPECT_TRUE(WriteFile(dropped, "x", 1, &count, nullptr)) << "who may write only, writes";
    EXPECT_TRUE(DeleteFileW(secret.c_str())) << "the folder decides";
}

TEST(LinuxRights, AreAskedOfFolders) {
    const TempFolder folder;
    const Text sub = folder.MakeFolder(_T("closed\\sub")), closed = folder.Path(_T("closed"));
    ASSERT_EQ(chmod(Native(sub).c_str(), 0555), 0);
    EXPECT_EQ(Outcome(RemoveDirectoryW(sub.c_str())), ERROR_ACCESS_DENIED);  // read-only, for root too
    ASSERT_EQ(chmod(Native(sub).c_str(), 0777), 0);
    ASSERT_EQ(chmod(Native(closed).c_str(), 0555), 0);
    {
        const test::UnprivilegedScope unprivileged;
        TCHAR name[MAX_PATH];
        EXPECT_EQ(Outcome(CreateDirectoryW((closed + _T("\\new")).c_str(), nullptr)), ERROR_ACCESS_DENIED);
        EXPECT_EQ(Outcome(RemoveDirectoryW(sub.c_str())), ERROR_ACCESS_DENIED);
        EXPECT_EQ(Outcome(BOOL{GetTempFileNameW(closed.c_str(), _T("k"), 0, name) != 0}), ERROR_ACCESS_DENIED);
    }
    ASSERT_EQ(chmod(Native(closed).c_str(), 0777), 0);
}

TEST(LinuxRights, WithoutWriteBitsMeanReadOnlyAndAreCopied) {
    const TempFolder folder;
    const Text path = folder.Write(_T("x"), "");
    const mode_t mask = umask(002);
    const struct { mode_t before, read_only, after; } rows[] = {{0755, 0555, 0775}, {0222, 0000, 0200}, {0600, 0400, 0600}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.before);
        EXPECT_EQ(chmod(Native(path).c_str(), row.before), 0);
        EXPECT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL));
        EXPECT_EQ(ModeOf(path), row.before) << "nothing to clear";
        EXPECT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY));
        EXPECT_EQ(ModeOf(path), row.read_only);
        EXPECT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL));
        EXPECT_EQ(ModeOf(path), row.after);
    }
    EXPECT_TRUE(CopyFileW(path.c_str(), folder.Path(_T("copy")).c_str(), TRUE));
    EXPECT_EQ(ModeOf(folder.Path(_T("copy"))), 0600U) << "no more public than what was copied";
    umask(mask);
}

}  // namespace
