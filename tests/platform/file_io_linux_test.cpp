// Files where the native system shows through: links, pipes, devices, full disks and missing rights.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <windows.h>
#include <winternl.h>

#include <string>

#include "support/handles.h"
#include "support/temp_folder.h"
#include "support/unprivileged.h"

namespace {

using test::Narrow;
using test::TempFolder;
using test::Text;

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kLink = FILE_ATTRIBUTE_REPARSE_POINT;
constexpr DWORD kFolder = FILE_ATTRIBUTE_DIRECTORY;

std::string NativeOf(const Text& path) {
    std::string native = Narrow(std::u16string_view(path).substr(2));
    for (char& c : native) {
        c = c == '\\' ? '/' : c;
    }
    return native;
}

mode_t ModeOf(const Text& path) {
    struct stat status {};
    EXPECT_EQ(lstat(NativeOf(path).c_str(), &status), 0);
    return status.st_mode & 07777;
}

HANDLE Open(const Text& path, DWORD access, DWORD disposition = OPEN_EXISTING, DWORD flags = FILE_FLAG_BACKUP_SEMANTICS) {
    return CreateFileW(path.c_str(), access, kShareAll, nullptr, disposition, flags, nullptr);
}

DWORD ErrorOf(HANDLE opened) {
    const test::Handle file(opened == INVALID_HANDLE_VALUE ? nullptr : opened);
    return opened == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS;
}

DWORD ErrorOf(BOOL done) {
    return done ? ERROR_SUCCESS : GetLastError();
}

DWORD Dispose(HANDLE file) {
    FILE_DISPOSITION_INFO info{TRUE};
    return ErrorOf(SetFileInformationByHandle(file, FileDispositionInfo, &info, sizeof info));
}

DWORD AttributesOf(HANDLE file) {
    FILE_ATTRIBUTE_TAG_INFO tag{};
    EXPECT_TRUE(GetFileInformationByHandleEx(file, FileAttributeTagInfo, &tag, sizeof tag));
    EXPECT_EQ(tag.ReparseTag, (tag.FileAttributes & kLink) != 0 ? IO_REPARSE_TAG_SYMLINK : 0);
    return tag.FileAttributes;
}

// A folder with a file, a folder and links to them and to nothing.
class Links {
public:
    Links() {
        folder.Write(_T("file"), "contents");
        folder.MakeFolder(_T("folder"));
        Link("file", _T("to-file"));
        Link("folder", _T("to-folder"));
        Link("nothing", _T("to-nothing"));
    }
    void Link(const char* target, const TCHAR* name) const { EXPECT_EQ(symlink(target, NativeOf(folder.Path(name)).c_str()), 0); }

    TempFolder folder;
};

HANDLE OpenIn(HANDLE folder, const Text& name, ULONG options, DWORD& error) {
    UNICODE_STRING text;
    RtlInitUnicodeString(&text, name.c_str());
    OBJECT_ATTRIBUTES attributes;
    InitializeObjectAttributes(&attributes, &text, 0, folder, nullptr);
    IO_STATUS_BLOCK status{};
    HANDLE handle = nullptr;
    error = RtlNtStatusToDosError(NtOpenFile(&handle, DELETE | FILE_READ_ATTRIBUTES | SYNCHRONIZE, &attributes, &status,
                                             kShareAll, options | FILE_SYNCHRONOUS_IO_NONALERT));
    return handle;
}

TEST(Links, AreSeenThemselvesByNameAndFollowedByOpens) {
    const Links links;
    const struct {
        const TCHAR* name;
        DWORD attributes;
        DWORD followed;  // the error of an open that follows
        DWORD target;    // the attributes it then sees
    } rows[] = {
        {_T("to-file"), kLink, ERROR_SUCCESS, FILE_ATTRIBUTE_NORMAL},
        {_T("to-folder"), kLink | kFolder, ERROR_SUCCESS, kFolder},
        {_T("to-nothing"), kLink, ERROR_FILE_NOT_FOUND, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.name));
        const Text path = links.folder.Path(row.name);
        EXPECT_EQ(GetFileAttributesW(path.c_str()), row.attributes);
        const test::Handle itself(
            Open(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT));
        EXPECT_EQ(AttributesOf(itself), row.attributes);
        EXPECT_EQ(ErrorOf(Open(path, GENERIC_READ)), row.followed);
        if (row.followed == ERROR_SUCCESS) {
            EXPECT_EQ(AttributesOf(test::Handle(Open(path, 0))), row.target);
        }
        EXPECT_EQ(ErrorOf(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY)), ERROR_NOT_SUPPORTED);
    }
    EXPECT_EQ(ErrorOf(Open(links.folder.Path(_T("to-nothing")), GENERIC_WRITE, CREATE_NEW)), ERROR_FILE_EXISTS);
    EXPECT_FALSE(links.folder.Has(_T("nothing"))) << "a planted link must not lead a new file elsewhere";
    EXPECT_EQ(ErrorOf(Open(links.folder.Path(_T("to-nothing")), GENERIC_WRITE, OPEN_ALWAYS)), ERROR_SUCCESS);
    EXPECT_TRUE(links.folder.Has(_T("nothing")));
}

TEST(Links, GoWithoutWhatTheyLeadTo) {
    const Links links;
    EXPECT_EQ(ErrorOf(DeleteFileW(links.folder.Path(_T("to-folder")).c_str())), ERROR_ACCESS_DENIED);
    for (const TCHAR* const name : {_T("to-file"), _T("to-nothing")}) {
        EXPECT_TRUE(DeleteFileW(links.folder.Path(name).c_str()));
        EXPECT_FALSE(links.folder.Has(name));
    }
    links.Link("file", _T("to-file"));
    EXPECT_TRUE(MoveFileExW(links.folder.Path(_T("to-file")).c_str(), links.folder.Path(_T("moved")).c_str(), 0));
    EXPECT_EQ(GetFileAttributesW(links.folder.Path(_T("moved")).c_str()), kLink);
    EXPECT_EQ(links.folder.Read(_T("file")), "contents");
}

TEST(Links, AreOpenedAndDisposedRelativeToTheirFolder) {
    const Links links;
    const test::Handle base(Open(links.folder.Path(), FILE_LIST_DIRECTORY | SYNCHRONIZE));
    const struct {
        const TCHAR* name;
        ULONG kind;
        DWORD error;
    } rows[] = {
        {_T("to-file"), FILE_DIRECTORY_FILE, ERROR_DIRECTORY},
        {_T("to-folder"), FILE_NON_DIRECTORY_FILE, ERROR_ACCESS_DENIED},
        {_T("to-file"), FILE_NON_DIRECTORY_FILE, ERROR_SUCCESS},
        {_T("to-folder"), FILE_DIRECTORY_FILE, ERROR_SUCCESS},
        {_T("to-nothing"), FILE_NON_DIRECTORY_FILE, ERROR_SUCCESS},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.name));
        DWORD error = 0;
        test::Handle link(OpenIn(base, row.name, row.kind | FILE_OPEN_REPARSE_POINT, error));
        EXPECT_EQ(error, row.error);
        if (error == ERROR_SUCCESS) {
            EXPECT_EQ(AttributesOf(link) & kLink, kLink);
            EXPECT_EQ(Dispose(link), ERROR_SUCCESS);
            link.Close();
        }
        EXPECT_EQ(links.folder.Has(row.name), row.error != ERROR_SUCCESS);
    }
    EXPECT_TRUE(links.folder.Has(_T("folder")));
    EXPECT_EQ(links.folder.Read(_T("file")), "contents");
}

TEST(Disposal, SparesWhatHasTakenTheNameMeanwhile) {
    const TempFolder folder;
    const std::string victim = NativeOf(folder.Write(_T("x"), "first"));
    const test::Handle base(Open(folder.Path(), FILE_LIST_DIRECTORY | SYNCHRONIZE));
    DWORD error = 0;
    test::Handle opened(OpenIn(base, _T("x"), FILE_OPEN_REPARSE_POINT, error));
    ASSERT_EQ(rename(victim.c_str(), (victim + "-moved").c_str()), 0);
    folder.Write(_T("x"), "second");
    EXPECT_EQ(Dispose(opened), ERROR_SUCCESS);
    opened.Close();
    EXPECT_EQ(folder.Read(_T("x")), "second");
    EXPECT_EQ(folder.Read(_T("x-moved")), "first") << "what was moved out of reach is not looked for";
}

TEST(Disposal, ReachesEveryNameThatAListingShows) {
    const TempFolder folder;
    const test::Handle base(Open(folder.Path(), FILE_LIST_DIRECTORY | SYNCHRONIZE));
    const std::string native = NativeOf(folder.Path()) + "/";
    for (const char* const name : {"what?", "a\\b", "*", "caf\xE9", "\"<|>"}) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(close(open((native + name).c_str(), O_CREAT | O_WRONLY, 0600)) == 0);
        LONGLONG buffer[512];
        ASSERT_TRUE(GetFileInformationByHandleEx(base, FileFullDirectoryRestartInfo, buffer, sizeof buffer));
        for (const BYTE* at = reinterpret_cast<const BYTE*>(buffer);;) {
            const auto* const entry = reinterpret_cast<const FILE_FULL_DIR_INFO*>(at);
            const Text shown(entry->FileName, entry->FileNameLength / sizeof(WCHAR));
            if (shown != _T(".") && shown != _T("..")) {
                DWORD error = 0;
                const test::Handle opened(OpenIn(base, shown, FILE_OPEN_REPARSE_POINT, error));
                EXPECT_EQ(error, ERROR_SUCCESS);
                EXPECT_EQ(Dispose(opened), ERROR_SUCCESS);
            }
            if (entry->NextEntryOffset == 0) {
                break;
            }
            at += entry->NextEntryOffset;
        }
        EXPECT_NE(access((native + name).c_str(), F_OK), 0);
    }
}

TEST(Devices, FullDisksAndPipesAnswerAtOnce) {
    const TempFolder folder;
    DWORD count = 1;
    char byte = 'x';
    const test::Handle full(Open(_T("C:\\dev\\full"), GENERIC_WRITE));
    EXPECT_EQ(ErrorOf(WriteFile(full, &byte, 1, &count, nullptr)), ERROR_DISK_FULL);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(GetFileType(full), FILE_TYPE_CHAR);
    OVERLAPPED end{0, 0, MAXDWORD, MAXDWORD, nullptr};
    EXPECT_EQ(ErrorOf(WriteFile(full, &byte, 1, &count, &end)), ERROR_DISK_FULL);
    ASSERT_EQ(mkfifo(NativeOf(folder.Path(_T("pipe"))).c_str(), 0600), 0);
    const test::Handle reader(Open(folder.Path(_T("pipe")), GENERIC_READ));
    const test::Handle writer(Open(folder.Path(_T("pipe")), GENERIC_WRITE));
    EXPECT_EQ(GetFileType(reader), FILE_TYPE_PIPE);
    EXPECT_EQ(ErrorOf(ReadFile(reader, &byte, 1, &count, nullptr)), ERROR_LOCK_VIOLATION);
    EXPECT_TRUE(WriteFile(writer, "yz", 2, &count, nullptr));
    EXPECT_TRUE(ReadFile(reader, &byte, 1, &count, nullptr));
    EXPECT_EQ(byte, 'y');
    EXPECT_EQ(SetFilePointer(reader, 0, nullptr, FILE_BEGIN), INVALID_SET_FILE_POINTER);
    EXPECT_EQ(GetLastError(), ERROR_SEEK);
}

TEST(Devices, AreNeitherFilledNorRemovedByACopy) {
    const TempFolder folder;  // a pipe of our own: a mistake here must not hit a device of the machine
    const Text pipe = folder.Path(_T("pipe"));
    ASSERT_EQ(mkfifo(NativeOf(pipe).c_str(), 0600), 0);
    const Text file = folder.Write(_T("file"), "x");
    EXPECT_EQ(ErrorOf(CopyFileW(file.c_str(), pipe.c_str(), FALSE)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ErrorOf(CopyFileW(pipe.c_str(), folder.Path(_T("to")).c_str(), FALSE)), ERROR_ACCESS_DENIED);
    EXPECT_TRUE(folder.Has(_T("pipe")));
    EXPECT_FALSE(folder.Has(_T("to")));
}

// Files of this process can grow to so many bytes and no further.
class SizeLimit {
public:
    explicit SizeLimit(rlim_t bytes) : handler_(signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    SizeLimit(const SizeLimit&) = delete;
    SizeLimit& operator=(const SizeLimit&) = delete;
    ~SizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        signal(SIGXFSZ, handler_);
    }

private:
    void (*handler_)(int);
    rlimit before_{};
};

TEST(ShortOfRoom, AWriteTellsWhatWentOutAndACopyLeavesNoHalf) {
    const TempFolder folder;
    const Text from = folder.Write(_T("from"), std::string(300'000, 'x'));
    const test::Handle file(Open(folder.Path(_T("written")), GENERIC_WRITE, CREATE_NEW));
    const std::string bytes(2000, 'y');
    DWORD written = 0;
    const SizeLimit limit(1500);
    EXPECT_EQ(ErrorOf(WriteFile(file, bytes.data(), 2000, &written, nullptr)), ERROR_FILE_TOO_LARGE);
    EXPECT_EQ(written, 1500U);
    EXPECT_EQ(ErrorOf(CopyFileW(from.c_str(), folder.Path(_T("to")).c_str(), FALSE)), ERROR_FILE_TOO_LARGE);
    EXPECT_FALSE(folder.Has(_T("to")));
}

TEST(Devices, AVolumeIsAHandleOfItsOwnKind) {
    const test::Handle volume(Open(_T("\\\\.\\c:"), 0));
    char byte = 0;
    DWORD count = 0;
    EXPECT_EQ(ErrorOf(ReadFile(volume, &byte, 1, &count, nullptr)), ERROR_INVALID_FUNCTION);
    EXPECT_EQ(ErrorOf(Open(_T("\\\\?\\R:"), 0)), ERROR_FILE_NOT_FOUND);
}

TEST(Rights, MissingOnesAreAccessDenied) {
    const TempFolder folder;
    const Text locked = folder.MakeFolder(_T("locked"));
    folder.Write(_T("locked\\x"), "");
    const Text secret = folder.Write(_T("secret"), "");
    const Text drop = folder.Write(_T("drop"), "");
    ASSERT_EQ(chmod(NativeOf(locked).c_str(), 0700), 0);
    ASSERT_EQ(chmod(NativeOf(secret).c_str(), 0600), 0);
    ASSERT_EQ(chmod(NativeOf(drop).c_str(), 0622), 0);
    const test::UnprivilegedScope unprivileged;
    if (geteuid() == getuid()) {
        GTEST_SKIP() << "without root this user owns the files and may";
    }
    const Text inside = folder.Path(_T("locked\\x"));
    EXPECT_EQ(ErrorOf(Open(inside, GENERIC_READ)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ErrorOf(Open(inside, GENERIC_WRITE, CREATE_ALWAYS)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(GetFileAttributesW(inside.c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ErrorOf(DeleteFileW(inside.c_str())), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ErrorOf(Open(locked, FILE_LIST_DIRECTORY)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ErrorOf(Open(secret, GENERIC_READ)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ErrorOf(Open(secret, 0)), ERROR_SUCCESS) << "attributes are the folder's to tell";
    EXPECT_EQ(ErrorOf(SetFileAttributesW(secret.c_str(), FILE_ATTRIBUTE_READONLY)), ERROR_ACCESS_DENIED);
    test::Handle dropped(Open(drop, GENERIC_WRITE));
    DWORD count = 0;
    char byte = 'x';
    EXPECT_TRUE(WriteFile(dropped, &byte, 1, &count, nullptr)) << "who may write only, writes";
    EXPECT_EQ(ErrorOf(ReadFile(dropped, &byte, 1, &count, nullptr)), ERROR_ACCESS_DENIED);
    EXPECT_TRUE(DeleteFileW(secret.c_str())) << "the folder decides";
}

TEST(Rights, ReadOnlyIsAModeWithoutWriteBits) {
    const TempFolder folder;
    const Text path = folder.Write(_T("x"), "");
    const mode_t mask = umask(002);
    const struct {
        mode_t before;
        mode_t read_only;
        mode_t after;
    } rows[] = {{0640, 0440, 0660}, {0600, 0400, 0600}, {0755, 0555, 0775}, {0222, 0000, 0200}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.before);
        EXPECT_EQ(chmod(NativeOf(path).c_str(), row.before), 0);
        EXPECT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL));
        EXPECT_EQ(ModeOf(path), row.before) << "nothing to clear";
        EXPECT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY));
        EXPECT_EQ(ModeOf(path), row.read_only);
        EXPECT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL));
        EXPECT_EQ(ModeOf(path), row.after);
    }
    umask(mask);
}

TEST(Rights, ACopyIsNoMorePublicThanWhatWasCopied) {
    const TempFolder folder;
    const Text from = folder.Write(_T("from"), "x");
    ASSERT_EQ(chmod(NativeOf(from).c_str(), 0600), 0);
    const Text to = folder.Path(_T("to"));
    EXPECT_TRUE(CopyFileW(from.c_str(), to.c_str(), TRUE));
    EXPECT_EQ(ModeOf(to), 0600U);
}

TEST(ShareModes, AForeignLockOnTheFileStopsNobody) {
    const TempFolder folder;
    const Text path = folder.Write(_T("x"), "");
    const int foreign = open(NativeOf(path).c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(foreign, LOCK_EX), 0);
    EXPECT_EQ(ErrorOf(Open(path, GENERIC_READ)), ERROR_SUCCESS);
    close(foreign);
}

}  // namespace
