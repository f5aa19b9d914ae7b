#include <kadata/version_info.h>

#include "directory_test_support.h"
#include "support/environment.h"

namespace {

constexpr LPCTSTR MODULE = _T("version_module.dll");
constexpr WORD SWISS = 0x0807, GERMAN = 0x0407;

std::string Numbers(const CFileVersionInfo& info) {
    WORD numbers[8] = {};
    info.GetFileVersion(numbers, CFileVersionInfo::VERSION_SIZE);
    info.GetProductVersion(numbers + 4, CFileVersionInfo::VERSION_SIZE);
    std::string text;
    for (const WORD number : numbers)
        text += std::to_string(number) + " ";
    return text;
}

TEST(VersionInfo, IsThatOfTheFileBesideTheProgram) {
    const CString path = CDirectory::GetExePath() + MODULE;
    const CString version =
        _T(": FileVer 1.2 Gr\x00F6\x00DF")
        _T("e [1,2,3,4]");
    const test::InEnvironment variable(_T("KADATA_TEST_PLACE"), CDirectory::GetExePath());
    for (const CString& name : {CString(MODULE), path, CString(_T("%KADATA_TEST_PLACE%version_module.dll"))}) {
        const CFileVersionInfo info(name, SWISS);
        ASSERT_TRUE(info.IsValid()) << test::Narrow(name);
        EXPECT_EQ(info.GetLanguage(), GERMAN);
        EXPECT_EQ(Numbers(info), "1 2 3 4 5 6 7 65535 ");
        EXPECT_EQ(info.GetProductVersion(), _T("5.6"));
        EXPECT_EQ(info.ToString(false), CString(MODULE) + version);
        const CString found = CDirectory::FileExist(name, _T("")) != 0 ? name : path;  // tests may run in the program's folder
        EXPECT_EQ(info.ToString(true), found + version);
        WORD kept[4] = {9, 9, 9, 9};
        info.GetFileVersion(kept, 4);
        info.GetProductVersion(kept, 16);
        EXPECT_TRUE(kept[0] == 9 && kept[3] == 9);
        info.GetFileVersion(nullptr, CFileVersionInfo::VERSION_SIZE);
    }
}

TEST(VersionInfo, OfWhatHasNoneIsNotValid) {
    const test::TempFolder folder;
    const CString text = folder.Write(_T("a.txt"), "no module").c_str();
    const std::pair<CString, CString> rows[] = {
        {_T("plain_module.dll"), _T("plain_module.dll  : no version info or file not found")},
        {_T("missing.dll"), _T("missing.dll       : no version info or file not found")},
        {text, _T("a.txt             : no version info or file not found")},
    };
    for (const auto& [path, line] : rows) {
        const CFileVersionInfo info(path, SWISS);
        EXPECT_FALSE(info.IsValid());
        EXPECT_EQ(info.GetLanguage(), SWISS);
        EXPECT_EQ(Numbers(info), "0 0 0 0 0 0 0 0 ");
        EXPECT_EQ(test::Narrow(info.ToString(false)), test::Narrow(line));
    }
    EXPECT_FALSE(CFileVersionInfo(_T(""), SWISS).IsValid() || CFileVersionInfo(folder.Path().c_str(), SWISS).IsValid());
    EXPECT_EQ(CFileVersionInfo().GetLanguage(), 0);
}

TEST(VersionInfo, OfAFileThatIsCutItIsTheSameOrNotValid) {
    const test::TempFolder folder;
    const std::string bytes = test::ReadBytes((CDirectory::GetExePath() + MODULE).GetString());
    int valid = 0;
    for (std::size_t size = 0; size < bytes.size(); size += 17) {
        const CFileVersionInfo info(folder.Write(_T("cut.dll"), bytes.substr(0, size)).c_str(), SWISS);
        const std::string numbers = Numbers(info);
        ASSERT_TRUE(info.IsValid() ? numbers == "1 2 3 4 5 6 7 65535 " || numbers == "0 0 0 0 0 0 0 0 " : numbers[0] == '0')
            << size;
        valid += info.IsValid();
    }
    EXPECT_LT(valid, static_cast<int>(bytes.size() / 17));
}

}  // namespace
