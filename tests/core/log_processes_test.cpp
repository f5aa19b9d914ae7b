// Several processes and threads write into one folder.

#include <gtest/gtest.h>
#include <kadata/directory.h>
#include <kadata/log.h>

#include <memory>
#include <set>
#include <thread>

#include "log_reader.h"
#include "support/child_process.h"
#include "support/temp_folder.h"

namespace {

using test::ChildProcess;
using test::TempFolder;
using test::Text;

struct Limits {
    DWORD fileSize;
    DWORD fileCount;
};
constexpr Limits kKeepAll = {30000, 900};
constexpr Limits kKeepFew = {20000, 5};
constexpr int kThreads = 2;
constexpr DWORD kPatience = 600000;  // milliseconds

std::unique_ptr<CLogFile> OpenLog(const Text& folder, const Limits& limits) {
    CLogFile::SOptions options;
    options.m_strFolder = folder.c_str();
    options.m_dwFlags = CLogFile::HEADER_DATE | CLogFile::HEADER_TIME | CLogFile::HEADER_PROCESS;
    options.m_dwMaxFileSize = limits.fileSize;
    options.m_dwMaxFileCount = limits.fileCount;
    return std::make_unique<CLogFile>(options);
}

// "<writer.number>" over one to three lines; the lengths differ so that file limits are met at every place.
CString Message(int writer, int number) {
    CString text;
    text.Format(_T("<%d.%d"), writer, number);
    for (int line = 0; line < number % 3; ++line) {
        text += _T("\r\n") + CString(_T('x'), 1 + number % 40);
    }
    return text + _T(">\r\n\r\n");
}

std::string Expected(int writer, int number) {
    std::string text = "<" + std::to_string(writer) + "." + std::to_string(number);
    for (int line = 0; line < number % 3; ++line) {
        text += "|" + std::string(static_cast<std::size_t>(1 + number % 40), 'x');
    }
    return text + ">";
}

// folder, first writer, messages, "all" or "few" files to keep: two threads write, each under a writer number of its own.
int WriteMessages(const test::ChildArgs& args) {
    const std::unique_ptr<CLogFile> log = OpenLog(args[0], args[3] == _T("all") ? kKeepAll : kKeepFew);
    const int first = _wtoi(args[1].c_str());
    const int count = _wtoi(args[2].c_str());
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&log, first, count, t] {
            for (int i = 0; i < count; ++i) {
                log->PrintCore(Message(first + t, i));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return 0;
}
REGISTER_CHILD(WriteMessages)

std::unique_ptr<ChildProcess> StartWriter(const TempFolder& folder, int first, int count, const TCHAR* keep = _T("all")) {
    return std::make_unique<ChildProcess>(test::ChildArgs{_T("WriteMessages"), folder.Path(), test::Widen(std::to_string(first)),
                                                          test::Widen(std::to_string(count)), keep});
}

void ExpectOrderedRing(const test::LogFolder& log, std::size_t largestMessage) {
    EXPECT_LE(log.files.size(), kKeepAll.fileCount);
    for (std::size_t i = 0; i < log.files.size(); ++i) {
        EXPECT_EQ(log.files[i].first, static_cast<int>(i)) << "a gap in the numbers";
        EXPECT_LE(log.files[i].second, kKeepAll.fileSize + largestMessage) << "TARVO" << i;
    }
}

constexpr std::size_t kLargestMessage = 2 * (2 * 100 + 3 * 40 + 10);  // bytes, of one process

TEST(LogProcesses, LoseAndMixNothing) {
    constexpr int kProcesses = 4;
    constexpr int kMessages = 1500;
    const TempFolder folder;
    std::vector<std::unique_ptr<ChildProcess>> children;
    for (int p = 0; p < kProcesses; ++p) {
        children.push_back(StartWriter(folder, p * kThreads, kMessages));
    }
    for (const auto& child : children) {
        EXPECT_EQ(child->Wait(kPatience), 0U);
    }
    const test::LogFolder log = test::ReadLogFolder(folder.Path());
    EXPECT_TRUE(log.broken.empty()) << log.broken.size() << " lines without a message, first " << log.broken.front();
    ASSERT_EQ(log.messages.size(), static_cast<std::size_t>(kProcesses * kThreads * kMessages));
    EXPECT_GT(log.files.size(), 50U);
    ExpectOrderedRing(log, kProcesses * kLargestMessage);
    std::vector<int> next(kProcesses * kThreads, 0);
    for (const std::string& message : log.messages) {
        const int writer = std::stoi(message.substr(1));
        ASSERT_EQ(message, Expected(writer, next[static_cast<std::size_t>(writer)]++));
    }
}

TEST(LogProcesses, KeepNoMoreFilesThanTheMaximum) {
    const TempFolder folder;
    std::vector<std::unique_ptr<ChildProcess>> children;
    for (int p = 0; p < 4; ++p) {
        children.push_back(StartWriter(folder, p * kThreads, 700, _T("few")));
    }
    for (const auto& child : children) {
        while (!child->Wait(1)) {
            CStringArray names;
            ASSERT_LE(CDirectory::ListFiles(folder.Path().c_str(), names, _T("*.*"), 0xFFFFFFFF),
                      static_cast<int>(kKeepFew.fileCount));
        }
    }
    const test::LogFolder log = test::ReadLogFolder(folder.Path());
    EXPECT_GE(log.files.size(), 2U);
    EXPECT_TRUE(log.broken.empty());
}

TEST(LogProcesses, StayWholeWhileOneIsKilledAgainAndAgain) {
    constexpr int kSurvivors = 3;
    constexpr int kMessages = 4000;
    const TempFolder folder;
    std::vector<std::unique_ptr<ChildProcess>> survivors;
    for (int p = 0; p < kSurvivors; ++p) {
        survivors.push_back(StartWriter(folder, p * kThreads, kMessages));
    }
    int kills = 0;
    while (!survivors.back()->Wait(0)) {
        const std::unique_ptr<ChildProcess> victim = StartWriter(folder, 1000, 1000000);
        victim->Wait(static_cast<DWORD>(5 + kills % 23));
        victim->Kill();
        ++kills;
    }
    for (const auto& child : survivors) {
        EXPECT_EQ(child->Wait(kPatience), 0U);
    }
    EXPECT_GT(kills, 5);
    OpenLog(folder.Path(), kKeepAll)->PrintCore(_T("<9999.0>\r\n"));  // ends what the last victim may have left
    const test::LogFolder log = test::ReadLogFolder(folder.Path());
    std::set<std::string> seen(log.messages.begin(), log.messages.end());
    for (int writer = 0; writer < kSurvivors * kThreads; ++writer) {
        for (int number = 0; number < kMessages; ++number) {
            ASSERT_TRUE(seen.count(Expected(writer, number))) << "lost " << Expected(writer, number);
        }
    }
    for (const std::string& torn : log.broken) {
        EXPECT_EQ(torn.substr(0, 4), "<100") << "a message of a survivor is torn";
    }
    EXPECT_LE(log.broken.size(), static_cast<std::size_t>(kills));
    ExpectOrderedRing(log, (kSurvivors + 1) * kLargestMessage);
}

}  // namespace
