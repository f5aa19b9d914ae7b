#include "directory_test_support.h"

using test::ExpectTexts;

TEST(DirectoryNames, AreJoinedWithOneBackslash) {
    ExpectTexts({
        {CDirectory::Concat(_T("C:\\data\\"), _T("\\x")), "C:\\data\\x"},
        {CDirectory::Concat(_T("C:\\data\\\\"), _T("x")), "C:\\data\\\\x"},  // one is taken off
        {CDirectory::Concat(_T("C:\\data\\"), _T("")), "C:\\data"},
        {CDirectory::Concat(_T(""), _T("x")), "x"},
    });
}

TEST(DirectoryNames, AreSplit) {
    const struct {
        LPCTSTR path;
        std::string directory, name, extension;
    } rows[] = {{_T("C:\\a\\b.c\\file.tar.gz"), "C:\\a\\b.c\\", "file.tar", ".gz"},
                {_T("C:\\a\\b.c\\file"), "C:\\a\\b.c\\", "file", ""},
                {_T("C:/a/file.txt"), "C:/a/", "file", ".txt"},
                {_T(".hidden"), "", "", ".hidden"},
                {_T("C:\\a\\"), "C:\\a\\", "", ""}};
    for (const auto& row : rows) {
        EXPECT_EQ(test::Narrow(CDirectory::SplitPathFromFileNameWithPath(row.path)), row.directory);
        EXPECT_EQ(test::Narrow(CDirectory::SplitFileNameWithoutExtensionFromPath(row.path)), row.name);
        EXPECT_EQ(test::Narrow(CDirectory::GetFileExtension(row.path)), row.extension);
        EXPECT_EQ(test::Narrow(CDirectory::SplitFileNameAndExtensionFromPath(row.path)), row.name + row.extension);
    }
    const CString longName(_T('n'), 5000);
    EXPECT_EQ(CDirectory::SplitFileNameWithoutExtensionFromPath(_T("C:\\") + longName + _T(".x")), longName);
    EXPECT_TRUE(CDirectory::HasFileExtension(_T("C:\\a\\IMAGE.Tif"), _T(".tIF")));
    EXPECT_FALSE(CDirectory::HasFileExtension(_T("C:\\a\\IMAGE.Tif"), _T("tif")));
}

TEST(DirectoryNames, AreCheckedForWhatAFileNameMayHold) {
    for (const TCHAR c : test::Text(_T("\\/\"<>*?|:")))
        EXPECT_FALSE(CDirectory::IsValidFileName(CString(_T("a")) + c, _T("")));
    EXPECT_TRUE(CDirectory::IsValidFileName(_T(""), _T("#+")));
    EXPECT_TRUE(CDirectory::IsValidFileName(_T("M\u00FCller, 3+4;~.dat"), _T("")));
    EXPECT_FALSE(CDirectory::IsValidFileName(_T("a+b"), _T("#+")));
}

TEST(DirectoryNames, AreEscapedForTheDiskAndBack) {
    ExpectTexts({
        {CDirectory::CreateFileNameForDisk(_T("C:\\a\\b?c:d")), "C:\\a\\b~Qc~Cd"},
        {CDirectory::CreateFileNameForDisk(_T("D:\\x~y\\*+,/:;<>?|~")), "D:\\x~y\\~A~P~k~S~C~K~L~G~Q~V~T"},
        {CDirectory::CreateFileNameForDisplay(_T("x~Zy")), "x~Zy"},
        {CDirectory::CreateFileNameForDisplay(_T("~~A~a~")), "~*~a~"},
        {CDirectory::CreateFileNameForDisplay(_T("~K\\~k")), ";\\,"},
    });
    for (int c = 1; c <= 0xFFFF; ++c) {
        const CString name = CString(static_cast<TCHAR>(c)) + _T("A") + static_cast<TCHAR>(c) + _T("~T");
        const CString stored = CDirectory::CreateFileNameForDisk(name);
        ASSERT_EQ(CDirectory::CreateFileNameForDisplay(stored), name) << c;
        ASSERT_EQ(stored.FindOneOf(_T("*+,/:;<>?|")), -1) << c;
    }
}

TEST(DirectoryNames, AreExpandedFromTheEnvironment) {
    const CString longValue(_T('v'), 20'000);
    const std::pair<LPCTSTR, LPCTSTR> variables[] = {
        {_T("KD_A"), _T("one")}, {_T("KD_B"), _T("<%KD_A%>")}, {_T("KD_SELF"), _T("%KD_SELF%")}, {_T("KD_LONG"), longValue}};
    for (const auto& [name, value] : variables)
        SetEnvironmentVariableW(name, value);
    const std::pair<CString, CString> rows[] = {{_T("%kd_a%\\x%KD_B%"), _T("one\\x<one>")},
                                                {_T("%KD_A%%KD_NONE%%KD_A%"), _T("one%KD_NONE%%KD_A%")},
                                                {_T("%%KD_A%"), _T("%%KD_A%")},
                                                {_T("%KD_SELF%"), _T("%KD_SELF%")},
                                                {_T("%KD_LONG%%KD_LONG%"), longValue + _T("%KD_LONG%")}};
    for (const auto& [text, expected] : rows) {
        CString expanded = text;
        CDirectory::ExpandEnvironmentVariables(expanded);
        EXPECT_EQ(expanded, expected) << test::Narrow(text);
    }
    for (const auto& [name, value] : variables)
        SetEnvironmentVariableW(name, nullptr);
    ExpectTexts({{CDirectory::FullPath(_T("C:\\a\\.\\b\\..\\c")), "C:\\a\\c"}, {CDirectory::FullPath(_T("")), ""}});
}
