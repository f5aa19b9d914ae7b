// How system paths lie in the native file system.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>
#include <windows.h>

#include <string>
#include <string_view>

#include "support/handles.h"
#include "support/temp_folder.h"

namespace {

using test::Narrow;
using test::TempFolder;
using test::Text;

class Variable {
public:
    Variable(const char* name, const std::string& value) : name_(name) { setenv(name, value.c_str(), 1); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { unsetenv(name_); }

private:
    const char* name_;
};

std::string NativeOf(const Text& path) {
    std::string native = Narrow(std::u16string_view(path).substr(2));
    for (char& c : native) {
        c = c == '\\' ? '/' : c;
    }
    return native;
}

void Touch(const std::string& native) {
    const int fd = open(native.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    ASSERT_GE(fd, 0) << native;
    close(fd);
}

DWORD ErrorOf(const Text& path) {
    SetLastError(ERROR_SUCCESS);
    return GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES ? GetLastError() : ERROR_SUCCESS;
}

std::u16string FinalPath(const Text& path) {
    const test::Handle file(CreateFileW(path.c_str(), 0, 0, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    std::u16string final(1024, 0);
    final.resize(GetFinalPathNameByHandleW(file, final.data(), static_cast<DWORD>(final.size()), 0));
    return final;
}

TEST(NativePaths, LettersAndNetworkPathsLieBelowTheirRoots) {
    const TempFolder folder;
    const std::string root = NativeOf(folder.Path());
    folder.MakeFolder(_T("drive\\sub"));
    folder.MakeFolder(_T("net\\server\\share"));
    folder.Write(_T("drive\\sub\\x"), "");
    folder.Write(_T("net\\server\\share\\y"), "");
    folder.Write(_T("top"), "");
    const Variable drives("KADATA_DRIVES", "Q=" + root + "/drive/");
    const struct {
        const TCHAR* path;
        DWORD without_root;
        DWORD error;
    } rows[] = {
        {_T("Q:\\sub\\x"), ERROR_SUCCESS, ERROR_SUCCESS},
        {_T("q:/sub/x"), ERROR_SUCCESS, ERROR_SUCCESS},
        {_T("Q:sub\\x"), ERROR_SUCCESS, ERROR_SUCCESS},  // the current folder lies elsewhere
        {_T("\\\\?\\Q:\\sub\\x"), ERROR_SUCCESS, ERROR_SUCCESS},
        {_T("Q:\\..\\top"), ERROR_FILE_NOT_FOUND, ERROR_FILE_NOT_FOUND},
        {_T("R:\\x"), ERROR_PATH_NOT_FOUND, ERROR_PATH_NOT_FOUND},
        {_T("\\\\.\\PhysicalDrive0"), ERROR_PATH_NOT_FOUND, ERROR_PATH_NOT_FOUND},
        {_T("\\\\server\\share\\y"), ERROR_BAD_NETPATH, ERROR_SUCCESS},
        {_T("//server/share/y"), ERROR_BAD_NETPATH, ERROR_SUCCESS},
        {_T("\\\\?\\UNC\\server\\share\\y"), ERROR_BAD_NETPATH, ERROR_SUCCESS},
        {_T("\\\\server\\share"), ERROR_BAD_NETPATH, ERROR_SUCCESS},
        {_T("\\\\server\\share\\..\\..\\..\\top"), ERROR_BAD_NETPATH, ERROR_FILE_NOT_FOUND},
        {_T("\\\\..\\..\\drive\\sub\\x"), ERROR_BAD_NETPATH, ERROR_BAD_NETPATH},
        {_T("\\\\server"), ERROR_BAD_NETPATH, ERROR_BAD_NETPATH},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(Narrow(row.path));
        EXPECT_EQ(ErrorOf(row.path), row.without_root);
        const Variable network("KADATA_UNC_ROOT", root + "/net");
        EXPECT_EQ(ErrorOf(row.path), row.error);
    }
    EXPECT_EQ(Narrow(FinalPath(folder.Path(_T("drive\\sub\\x")))), "\\\\?\\Q:\\sub\\x");
    EXPECT_EQ(Narrow(FinalPath(folder.Path(_T("drive")))), "\\\\?\\Q:\\");
    EXPECT_EQ(Narrow(FinalPath(_T("C:\\"))), "\\\\?\\C:\\");
}

TEST(NativePaths, KeepNamesAsTheyAreStored) {
    const TempFolder folder;
    const std::string root = NativeOf(folder.Path()) + "/";
    const struct {
        std::string native;
        Text name;
    } rows[] = {
        {"trailing. ", _T("trailing. ")},
        {"CON", _T("CON")},
        {"a:b", _T("a:b")},
        {"gr\u00FC\u00DFe \U0001F9B7", _T("gr\u00FC\u00DFe \U0001F9B7")},
        {"caf\xE9 \xC3", {u'c', u'a', u'f', u'\xDCE9', u' ', u'\xDCC3'}},  // no UTF-8: each such byte is a lone surrogate
        {std::string(255, 'n'), Text(255, u'n')},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.native);
        Touch(root + row.native);
        EXPECT_EQ(ErrorOf(folder.Path(row.name)), ERROR_SUCCESS);
        EXPECT_EQ(FinalPath(folder.Path(row.name)), _T("\\\\?\\") + folder.Path(row.name));
        EXPECT_TRUE(DeleteFileW(folder.Path(row.name).c_str()));
        EXPECT_FALSE(folder.Has(row.name));
    }
    EXPECT_EQ(ErrorOf(folder.Path(Text(256, u'n'))), ERROR_FILENAME_EXCED_RANGE);
    EXPECT_EQ(ErrorOf(folder.Path(Text(32768, u'n'))), ERROR_FILENAME_EXCED_RANGE);
}

TEST(NativePaths, ACurrentFolderThatIsGoneLeavesOnlyAbsolutePaths) {
    const TempFolder folder;
    const std::string gone = NativeOf(folder.MakeFolder(_T("gone")));
    char before[4096];
    ASSERT_NE(getcwd(before, sizeof before), nullptr);
    ASSERT_EQ(chdir(gone.c_str()), 0);
    rmdir(gone.c_str());
    EXPECT_EQ(ErrorOf(_T("x")), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(ErrorOf(folder.Path()), ERROR_SUCCESS);
    EXPECT_EQ(chdir(before), 0);
}

}  // namespace
