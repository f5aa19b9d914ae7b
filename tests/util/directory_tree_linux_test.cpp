// Links and missing rights, which cannot be made in the same way everywhere.

#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <latch>
#include <thread>

#include "directory_test_support.h"
#include "support/native_path_linux.h"

using test::ExpectAccessDenied;
using test::Native;
using test::TempFolder;

namespace {

// A tree, and beside it a directory with a file that has to stay.
class LinuxFiles : public testing::Test {
protected:
    LinuxFiles() {
        m_folder.MakeFolder(_T("tree\\a\\b"));
        m_folder.MakeFolder(_T("outside"));
        m_folder.Write(_T("outside\\canary"), "alive");
    }
    ~LinuxFiles() override { EXPECT_EQ(m_folder.Read(_T("outside\\canary")), "alive"); }

    std::string Path(LPCTSTR name) const { return Native(m_folder.Path(name)); }
    void Link(const std::string& target, LPCTSTR name) const { ASSERT_EQ(symlink(target.c_str(), Path(name).c_str()), 0); }
    int Remove(LPCTSTR name) const { return CDirectory::Remove(m_folder.Path(name).c_str()); }

    TempFolder m_folder;
};

// Rights count in these; whoever cannot lose them skips.
class LinuxRights : public testing::Test {
protected:
    void SetUp() override {
        if (!m_unprivileged.Active())
            GTEST_SKIP() << "rights do not stop this user";
        m_folder.MakeFolder(_T("tree\\sub"));
        m_folder.Write(_T("tree\\file"), "");
    }
    void SetMode(LPCTSTR name, mode_t mode) const { ASSERT_EQ(chmod(Native(m_folder.Path(name)).c_str(), mode), 0); }

    TempFolder m_folder;
    test::UnprivilegedScope m_unprivileged;
    const CString m_tree = m_folder.Path(_T("tree")).c_str();
};

}  // namespace

TEST_F(LinuxFiles, AreRemovedThemselves) {
    Link(Path(_T("outside")), _T("tree\\to a directory"));
    Link(Path(_T("outside\\canary")), _T("tree\\a\\to a file"));
    Link("nowhere", _T("tree\\broken"));
    Link(Path(_T("outside")), _T("top"));
    EXPECT_EQ(Remove(_T("tree")), 1);
    EXPECT_EQ(Remove(_T("top\\")), 1);
    EXPECT_EQ(test::NamesIn(m_folder.Path().c_str()), "outside ");
}

// One thread removes; another one takes a directory out of the tree and puts a link to the outside into its place, and back.
// Both hold files of the same names, so that whoever goes by paths deletes outside.
TEST_F(LinuxFiles, SwappedInMeanwhileAreNotFollowed) {
    const std::string inner = Path(_T("tree\\a\\b")), aside = Path(_T("aside")), outside = Path(_T("outside"));
    const auto fill = [&](const test::Text& name) {
        m_folder.MakeFolder(name);
        for (int i = 0; i < 30; ++i)
            m_folder.Write(name + test::Widen("\\" + std::to_string(i)), "");
    };
    fill(_T("outside"));
    const std::string files = test::NamesIn(m_folder.Path(_T("outside")).c_str());
    for (int round = 0; round < 100; ++round) {
        fill(_T("tree\\a\\b"));
        std::atomic<bool> done = false;
        std::latch started(2);
        std::thread swapper([&] {
            started.arrive_and_wait();
            while (!done && rename(inner.c_str(), aside.c_str()) == 0) {
                [[maybe_unused]] const int linked = symlink(outside.c_str(), inner.c_str());
                std::this_thread::yield();
                unlink(inner.c_str());
                rename(aside.c_str(), inner.c_str());
            }
        });
        started.arrive_and_wait();
        try {
            Remove(_T("tree"));
        } catch (CFileException* vanishedUnderItsHands) {
            vanishedUnderItsHands->Delete();
        }
        done = true;
        swapper.join();
        ASSERT_EQ(test::NamesIn(m_folder.Path(_T("outside")).c_str()), files);
        Remove(_T("aside"));
    }
}

TEST_F(LinuxRights, MissingOnesAreToldAndWhatCannotBeListedStays) {
    SetMode(_T("tree"), 0500);
    const CString file = m_tree + _T("\\file"), made = m_tree + _T("\\new");
    EXPECT_EQ(ExpectAccessDenied(made, [&] { CDirectory::Make(made + _T("\\er")); }), LONG{ERROR_ACCESS_DENIED});
    EXPECT_EQ(ExpectAccessDenied(file, [&] { CDirectory::DeleteFiles(m_tree + _T("\\*")); }), LONG{ERROR_ACCESS_DENIED});
    EXPECT_EQ(CDirectory::DeleteOlderFiles(m_tree, _T("*"), 0), 0);
    EXPECT_EQ(test::NamesIn(m_tree), "file sub ");
    SetMode(_T("tree"), 0700);
    CDirectory::Remove(m_tree + _T("\\sub"));
    SetMode(_T("tree"), 0500);
    EXPECT_EQ(ExpectAccessDenied(file, [&] { CDirectory::Remove(m_tree); }), LONG{ERROR_ACCESS_DENIED});
    SetMode(_T("tree"), 0700);
    m_folder.MakeFolder(_T("tree\\open\\sub"));
    m_folder.MakeFolder(_T("tree\\sub"));
    SetMode(_T("tree\\sub"), 0300);
    EXPECT_EQ(CDirectory::Remove(m_tree), 0);
    EXPECT_EQ(test::NamesIn(m_tree), "sub ");
    SetMode(_T("tree\\sub"), 0700);
}
