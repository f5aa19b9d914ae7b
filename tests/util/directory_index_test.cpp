#include "directory_test_support.h"

using test::NamesIn;
using test::Narrow;
using test::TempFolder;

namespace {

struct Items : CDirectory {
    using CDirectory::ParseFileIndex;
};

// With these files, a blank behind each name.
struct Folder : TempFolder {
    explicit Folder(std::string names) {
        for (std::size_t end; (end = names.find(' ')) != std::string::npos; names.erase(0, end + 1))
            Write(test::Widen(names.substr(0, end)), "");
    }
};

}  // namespace

TEST(DirectoryIndex, IsReadFromTheName) {
    const struct {
        LPCTSTR name, prefix, suffix;
        int expected;
    } rows[] = {{_T("Scan012.dat"), _T("Scan"), _T(".dat"), 12},
                {_T("012"), _T(""), _T(""), 12},
                // Deliberate: foreign names have the index 0, a sign counts, prefix and suffix are sets of characters.
                {_T("Scan12.dat"), _T("Scan"), _T(".dat"), 0},
                {_T("Scan-12.dat"), _T("Scan"), _T(".dat"), -12},
                {_T("nacS012tad."), _T("Scan"), _T(".dat"), 12},
                {_T("S0007"), _T("S0"), _T(""), 7},
                {_T("A013.mp3"), _T("A"), _T(".mp3"), 1}};
    for (const auto& row : rows)
        EXPECT_EQ(Items::ParseFileIndex(row.name, row.prefix, 3, row.suffix), row.expected) << Narrow(row.name);
    EXPECT_TRUE(CIntComparer()(-1, 2) && !CIntComparer()(2, 2));
}

TEST(DirectoryIndex, OfTheNextFileFollowsTheLast) {
    const struct {
        const char* there;
        int digits;
        bool wrap;
        const char* expected;
    } rows[] = {{"", 3, true, "S000.x"},
                {"", 3, false, "S001.x"},
                {"S000.x S001.x S999.x ", 3, true, "S002.x"},
                {"S999.x ", 3, false, "S1000.x"},
                {"S005.x S006.y S007 ", 3, true, "S006.x"},
                {"S1.x S2.x S3.x S4.x S5.x S6.x S7.x S8.x S9.x ", 1, true, "S10.x"},  // a full ring grows
                {"foreign.x ", 3, true, "S001.x"}};
    for (const auto& [there, digits, wrap, expected] : rows) {
        const Folder folder(there);
        EXPECT_EQ(Narrow(CDirectory::GetNextIndexedFilename(folder.Path().c_str(), _T("S"), digits, _T("x"), wrap)), expected);
    }
    const TempFolder folder;
    folder.MakeFolder(_T("S007"));  // Deliberate: a directory counts among files
    EXPECT_EQ(Narrow(CDirectory::GetNextIndexedFilename(folder.Path().c_str(), _T("S"), 3, _T(""), true)), "S008");
}

TEST(DirectoryIndex, LimitDeletesTheOldestFiles) {
    const std::tuple<const char*, int, const char*> rows[] = {
        {"S0.x S1.x S7.x S8.x S9.x ", 2, "S0.x S1.x "},
        {"S3.x S4.x S5.x ", 2, "S4.x S5.x "},
        {"S3.x S4.x S5.y ", -1, "S5.y "},
        {"S0.x S1.x S2.x S3.x S4.x S5.x S6.x S7.x S8.x S9.x ", 9, "S0.x S1.x S2.x S3.x S4.x S5.x S6.x S7.x S8.x S9.x "},
        {"S1.x S2.x foreign.x ", 2, "S1.x S2.x foreign.x "},  // Deliberate: that one counts as S0.x, which is not there
    };
    for (const auto& [there, maxCount, left] : rows) {
        const Folder folder(there);
        CDirectory::LimitIndexedFiles(maxCount, folder.Path().c_str(), _T("S"), 1, _T("x"));
        EXPECT_EQ(NamesIn(folder.Path().c_str()), left);
    }
}

TEST(DirectoryIndex, KeepsTheNewestAroundTheRing) {
    const TempFolder folder;
    const CString dir = folder.Path().c_str();
    for (int i = 0; i < 25; ++i) {
        const CString name = CDirectory::GetNextIndexedFilename(dir, _T("S"), 1, _T("x"), true);
        ASSERT_EQ(Narrow(name), "S" + std::to_string(i % 10) + ".x");
        folder.Write(name.GetString(), "");
        CDirectory::LimitIndexedFiles(4, dir, _T("S"), 1, _T("x"));
    }
    EXPECT_EQ(NamesIn(dir), "S1.x S2.x S3.x S4.x ");
}

TEST(DirectoryIndex, DirectoriesAreMadeAndLimited) {
    const TempFolder folder;
    const CString dir = folder.Path(_T("new")).c_str();
    for (const LPCTSTR expected : {_T("\\C00.kd"), _T("\\C01.kd"), _T("\\C02.kd")}) {
        const CString path = CDirectory::MakeNextIndexedLimitedDirectory(dir, 2, _T("C"), 2, _T("kd"));
        EXPECT_EQ(path, dir + expected);
        test::WriteBytes((path + _T("\\content")).GetString(), "x");
    }
    EXPECT_EQ(NamesIn(dir), "C01.kd C02.kd ");
    EXPECT_EQ(CDirectory::MakeNextIndexedLimitedDirectory(dir, 0, _T("C"), 2, _T("kd")), dir + _T("\\C03.kd"));
    EXPECT_EQ(NamesIn(dir), "");
}
