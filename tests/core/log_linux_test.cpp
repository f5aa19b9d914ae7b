// What happens to log files on Linux alone: others take their names away, and the library's calls of write() are answered here.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <kadata/directory.h>
#include <kadata/log.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>

#include "log_reader.h"
#include "support/child_process.h"
#include "support/native_path_linux.h"
#include "support/temp_folder.h"

namespace {

constexpr int kNever = -1;
std::atomic<int> writes_until_full{kNever};
std::atomic<std::size_t> bytes_that_still_fit{0};

}  // namespace

// Stands in front of the C library's for the whole program.
extern "C" __attribute__((visibility("default"))) ssize_t write(int file, const void* bytes, size_t count) {
    using Function = ssize_t (*)(int, const void*, size_t);
    static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "write"));
    if (writes_until_full == kNever || writes_until_full-- > 0)
        return real(file, bytes, count);
    writes_until_full = 0;  // and it stays full
    const std::size_t fits = std::min(bytes_that_still_fit.exchange(0), count);
    if (fits != 0)
        return real(file, bytes, fits);
    errno = ENOSPC;
    return -1;
}

namespace {

CLogFile::SOptions Options(const test::TempFolder& folder) {
    CLogFile::SOptions options;
    options.m_strFolder = folder.Path().c_str();
    options.m_dwFlags = 0;
    return options;
}

__time64_t clock_now = 1000000000;

TEST(LinuxFiles, TakenFromAnOpenLogLetItGoOnInANewFile) {
    const test::TempFolder folder;
    CLogFile::SOptions options = Options(folder);
    options.m_pfnClock = [] { return clock_now; };
    CLogFile log(options);
    log.PrintCore(_T("lost"));
    ASSERT_EQ(unlink(test::Native(folder.Path(_T("TARVO000.log"))).c_str()), 0);
    ++clock_now;
    log.PrintCore(_T("kept"));
    EXPECT_EQ(test::ReadLogLines(folder.Path(_T("TARVO000.log"))), std::vector<std::string>{"kept"});
}

TEST(LinuxFiles, MayBeFullAndTheLogIsWholeAgainWhenThereIsRoom) {
    for (int full_at = 0; full_at < 4; ++full_at) {
        for (const std::size_t fits : {0, 1, 2, 3, 7, 14}) {
            SCOPED_TRACE(testing::Message() << "write " << full_at << ", " << fits << " bytes fit");
            const test::TempFolder folder;
            CLogFile log(Options(folder));
            bytes_that_still_fit = fits;
            writes_until_full = full_at;
            for (int i = 0; i < 4; ++i)
                log.PrintCore(_T("<early>\r\n"));
            writes_until_full = kNever;
            log.PrintCore(_T("<after>\r\n"));
            CLogFile(Options(folder)).PrintCore(_T("<other>\r\n"));

            const std::string bytes = folder.Read(_T("TARVO000.log"));
            EXPECT_EQ(bytes.size() % 2, 0U);
            EXPECT_EQ(bytes.substr(0, 2), "\xFF\xFE");
            const std::string end("<\0a\0f\0t\0e\0r\0>\0\r\0\n\0<\0o\0t\0h\0e\0r\0>\0\r\0\n\0", 36);
            EXPECT_TRUE(bytes.ends_with(end));
            const std::string before = bytes.substr(0, bytes.size() - end.size());
            EXPECT_TRUE(before.empty() || before.size() == 2 || before.ends_with(std::string("\r\0\n\0", 4)));
        }
    }
}

// A setting is asked for before there is a log, and one afterwards.
int ReadDamagedSettings(const test::ChildArgs& args) {
    SetEnvironmentVariableW(_T("KADATA_REGISTRY_DIR"), args[0].c_str());
    BYTE value = 0;
    DWORD size = sizeof value;
    const LSTATUS user = RegGetValueW(HKEY_CURRENT_USER, _T("a"), _T("b"), RRF_RT_ANY, nullptr, &value, &size);
    CLog::SetLogConfig({15, 10, 1000000});
    const LSTATUS machine = RegGetValueW(HKEY_LOCAL_MACHINE, _T("a"), _T("b"), RRF_RT_ANY, nullptr, &value, &size);
    return user == ERROR_FILE_NOT_FOUND && machine == ERROR_FILE_NOT_FOUND ? 0 : 1;
}
REGISTER_CHILD(ReadDamagedSettings)

TEST(LinuxHives, ThatAreDamagedAreToldInTheLog) {
    const test::TempFolder folder;
    folder.Write(_T("user.registry"), std::string(5000, '?'));
    folder.Write(_T("machine.registry"), std::string(5000, '?'));
    const CString logs = CDirectory::Concat(CDirectory::GetExePath(), _T("SERVICE\\LOG-FILES"));
    CDirectory::Remove(logs);
    ASSERT_EQ(test::ChildProcess({_T("ReadDamagedSettings"), folder.Path()}).Wait(60000), 0U);
    std::string told;
    for (const std::string& line : test::ReadLogLines(test::Text(CDirectory::Concat(logs, _T("TARVO000.log")).View())))
        told += line;
    EXPECT_NE(told.find("user.registry is damaged and was kept as"), told.npos) << told;
    EXPECT_NE(told.find("machine.registry is damaged and was kept as"), told.npos) << told;
}

}  // namespace
