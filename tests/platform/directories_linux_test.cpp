// What the environment says of folders.

#include <gtest/gtest.h>
#include <shlobj.h>
#include <sys/stat.h>
#include <tchar.h>
#include <unistd.h>
#include <windows.h>

#include <string>

#include "support/environment.h"
#include "support/native_path_linux.h"
#include "support/temp_folder.h"

namespace {

using test::InEnvironment;
using test::Narrow;
using test::Native;
using test::TempFolder;
using test::Text;

TEST(LinuxEnvironment, GivesTheTempPathInItsOwnSpelling) {
    const InEnvironment tmp(_T("TMP"), nullptr), temp(_T("TEMP"), nullptr), profile(_T("USERPROFILE"), nullptr);
    TCHAR path[MAX_PATH];
    const InEnvironment native(_T("TMPDIR"), _T("/var/tmp"));
    EXPECT_NE(GetTempPathW(MAX_PATH, path), 0u);
    EXPECT_EQ(Narrow(path), "C:\\var\\tmp\\");
    const InEnvironment none(_T("TMPDIR"), nullptr);
    EXPECT_NE(GetTempPathW(MAX_PATH, path), 0u);
    EXPECT_EQ(Narrow(path), "C:\\tmp\\");

    ASSERT_NE(GetTempFileNameW(path, _T("k"), 0, path), 0u);
    struct stat status;
    ASSERT_EQ(stat(Native(path).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);  // this user's alone
    EXPECT_EQ(unlink(Native(path).c_str()), 0);
}

TEST(LinuxEnvironment, GivesTheSpecialFoldersOfTheDesktopsSettings) {
    const TempFolder folder;
    const Text native = test::Widen(Native(folder.Path()));
    const InEnvironment home(_T("HOME"), native.c_str()), config(_T("XDG_CONFIG_HOME"), nullptr);
    const InEnvironment data(_T("XDG_DATA_HOME"), (native + _T("/data")).c_str());
    folder.MakeFolder(_T(".config"));
    folder.MakeFolder(_T("data"));
    folder.MakeFolder(_T("Meine Dokumente"));
    folder.Write(_T(".config\\user-dirs.dirs"),
                 "# XDG_DOCUMENTS_DIR=\"/wrong\"\nXDG_DOCUMENTS_DIR=\"$HOME/Meine Dokumente/\"\nXDG_PICTURES_DIR=\"relative\"\n"
                 "XDG_MUSIC_DIR=\"/no/such \\\"place\\\"\"\n");
    const struct {
        int folder;
        HRESULT result;
        Text path;
    } rows[] = {
        {CSIDL_PERSONAL, S_OK, folder.Path(_T("Meine Dokumente"))},
        {CSIDL_MYPICTURES, S_OK, folder.Path()},
        {CSIDL_MYMUSIC, S_FALSE, _T("C:\\no\\such \"place\"")},
        {CSIDL_DESKTOPDIRECTORY, S_FALSE, folder.Path(_T("Desktop"))},
        {CSIDL_DESKTOPDIRECTORY | CSIDL_FLAG_CREATE, S_OK, folder.Path(_T("Desktop"))},
        {CSIDL_APPDATA, S_OK, folder.Path(_T(".config"))},
        {CSIDL_LOCAL_APPDATA, S_OK, folder.Path(_T("data"))},
        {CSIDL_PROFILE, S_OK, folder.Path()},
        {0x24, E_INVALIDARG, _T("")},  // the system's own folder has no counterpart
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.folder);
        TCHAR path[MAX_PATH] = {_T('?')};
        EXPECT_EQ(SHGetFolderPathW(nullptr, row.folder, nullptr, SHGFP_TYPE_CURRENT, path), row.result);
        EXPECT_EQ(Narrow(path), Narrow(row.path));
        EXPECT_EQ(SHGetSpecialFolderPathW(nullptr, path, row.folder, FALSE), row.result == S_OK);
    }
}

}  // namespace
