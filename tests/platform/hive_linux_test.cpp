// What the hives promise beyond the registry's functions: other processes' writes are seen at once, transactions, damage.

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <tchar.h>
#include <windows.h>
// after it
#include <ktmw32.h>

#include <filesystem>
#include <string>
#include <thread>

#include "support/child_process.h"
#include "support/native_path_linux.h"
#include "support/registry_values_linux.h"
#include "support/temp_folder.h"

namespace {

namespace fs = std::filesystem;
using test::LinuxHives;
using test::Number;
using test::TempFolder;
using test::Text;

// "v" becomes one number after the other, each when it is asked for.
int WriteWhenAsked(const test::ChildArgs& args) {
    const HANDLE ask = CreateEventW(nullptr, FALSE, FALSE, args[0].c_str()),
                 done = CreateEventW(nullptr, FALSE, FALSE, args[1].c_str());
    for (DWORD number = 1; WaitForSingleObject(ask, 60000) == WAIT_OBJECT_0; ++number) {
        if (!test::SetNumber(_T("v"), number))
            return 1;
        SetEvent(done);
    }
    return 2;
}
REGISTER_CHILD(WriteWhenAsked)

TEST_F(LinuxHives, TellAnotherProcessesWriteAtOnce) {
    const Text ask = _T("KaDataAsk") + test::Widen(std::to_string(GetCurrentProcessId())), done = ask + _T("Done");
    const HANDLE asked = CreateEventW(nullptr, FALSE, FALSE, ask.c_str()),
                 answered = CreateEventW(nullptr, FALSE, FALSE, done.c_str());
    ASSERT_TRUE(test::SetNumber(_T("v"), 0));
    ASSERT_EQ(Number(_T("none")), std::nullopt);
    const test::ChildProcess child({_T("WriteWhenAsked"), ask, done});
    for (DWORD number = 1; number <= 50; ++number) {
        EXPECT_EQ(Number(_T("v")), number - 1);
        EXPECT_EQ(Number(_T("v")), number - 1);  // from memory
        SetEvent(asked);
        ASSERT_EQ(WaitForSingleObject(answered, 60000), WAIT_OBJECT_0);
    }
    EXPECT_EQ(Number(_T("v")), DWORD{50});
    CloseHandle(asked);
    CloseHandle(answered);
}

TEST_F(LinuxHives, KeepTransactionsApart) {
    ASSERT_TRUE(test::SetNumber(_T("v"), 1));
    HKEY old = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, _T("Software\\Old"), 0, nullptr, 0, KEY_READ, nullptr, &old, nullptr),
              ERROR_SUCCESS);
    RegCloseKey(old);
    const auto begin = [] { return CreateTransaction(nullptr, nullptr, 0, 0, 0, 0, nullptr); };
    const HANDLE dropped = begin();
    EXPECT_TRUE(test::SetNumber(_T("v"), 2, dropped));
    EXPECT_EQ(Number(_T("v")), DWORD{1});
    EXPECT_EQ(Number(_T("v"), dropped), DWORD{2});
    EXPECT_FALSE(test::SetNumber(_T("v"), 3));  // this thread would wait for itself
    std::thread waiter([] { EXPECT_TRUE(test::SetNumber(_T("w"), 3)); });
    EXPECT_TRUE(RollbackTransaction(dropped));
    waiter.join();
    EXPECT_EQ(Number(_T("v")), DWORD{1});
    EXPECT_EQ(Number(_T("w")), DWORD{3});
    EXPECT_FALSE(test::SetNumber(_T("v"), 4, dropped));
    EXPECT_TRUE(!CommitTransaction(dropped) && GetLastError() == ERROR_TRANSACTION_ALREADY_ABORTED);
    CloseHandle(dropped);

    const HANDLE closed = begin();
    EXPECT_TRUE(test::SetNumber(_T("v"), 5, closed));
    CloseHandle(closed);  // is a rollback
    const HANDLE kept = begin();
    EXPECT_TRUE(test::SetNumber(_T("v"), 6, kept));
    EXPECT_EQ(RegDeleteKeyTransactedW(HKEY_CURRENT_USER, _T("Software\\Old"), 0, 0, kept, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, _T("Software\\Old"), 0, KEY_READ, &old), ERROR_SUCCESS);
    RegCloseKey(old);
    EXPECT_EQ(Number(_T("v")), DWORD{1});
    EXPECT_TRUE(CommitTransaction(kept));
    EXPECT_EQ(Number(_T("v")), DWORD{6});
    EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, _T("Software\\Old"), 0, KEY_READ, &old), LSTATUS{ERROR_FILE_NOT_FOUND});
    EXPECT_TRUE(!CommitTransaction(kept) && GetLastError() == ERROR_TRANSACTION_ALREADY_COMMITTED);
    EXPECT_TRUE(test::SetNumber(_T("v"), 7));
    CloseHandle(kept);
}

TEST_F(LinuxHives, ThatWereReplacedOrRemovedAreFollowed) {
    ASSERT_TRUE(test::SetNumber(_T("v"), 1));
    const fs::path hives = test::Native(hives_);
    fs::rename(hives, hives.string() + "2");
    EXPECT_TRUE(test::SetNumber(_T("w"), 2));
    EXPECT_EQ(Number(_T("v")), std::nullopt);
    EXPECT_EQ(Number(_T("w")), DWORD{2});
}

// Values of many sizes in a file of some fifty pages without a log: name by name 1, 2, 3 ...
constexpr DWORD kValues = 120;
const Text kLong(3000, _T('x'));

Text NameOf(DWORD number) {
    return _T("value ") + test::Widen(std::to_string(number)) + (number % 20 == 0 ? kLong : Text());
}

void MakeHive(const fs::path& file) {
    for (DWORD number = 1; number <= kValues; ++number)
        ASSERT_TRUE(test::SetNumber(NameOf(number).c_str(), number));
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, "PRAGMA wal_checkpoint(TRUNCATE)", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(database);
}

TEST_F(LinuxHives, GiveTheRightValueOrNoneWhereABitIsWrong) {
    MakeHive(test::Native(hives_ + _T("\\user.registry")));
    const std::string whole = test::ReadBytes(hives_ + _T("\\user.registry"));
    constexpr std::size_t kPage = 4096;
    ASSERT_GT(whole.size(), 20 * kPage);
    std::uint32_t random = 1;
    int lost = 0, aside = 0;
    for (std::size_t flip = 0; flip < 4 * whole.size() / kPage; ++flip) {
        random = random * 1664525 + 1013904223;
        // Every second one near a page's start, where its structure is.
        const std::size_t place = flip / 4 * kPage + (random >> 8) % (flip % 2 == 0 ? 128 : kPage);
        std::string damaged = whole;
        damaged[place] = static_cast<char>(damaged[place] ^ (1 << (random >> 28) % 8));
        SCOPED_TRACE("byte " + std::to_string(place));
        const TempFolder hive;
        hive.Write(_T("user.registry"), damaged);
        UseFolder(hive.Path());
        for (DWORD number = 1; number <= kValues; ++number) {
            const std::optional<DWORD> value = Number(NameOf(number).c_str());
            lost += value ? 0 : 1;
            ASSERT_TRUE(!value || *value == number) << number << " became " << *value;
        }
        ASSERT_TRUE(test::SetNumber(_T("value 1"), 1000));
        ASSERT_EQ(Number(_T("value 1")), DWORD{1000});
        aside += std::distance(fs::directory_iterator(test::Native(hive.Path())), fs::directory_iterator()) > 3;
        UseFolder(hives_);
        Number(_T("v"));  // closes the other one
    }
    EXPECT_GT(lost, 0);
    EXPECT_GT(aside, 0);
}

}  // namespace
