// Several processes and threads write into one folder.

#include <gtest/gtest.h>
#include <kadata/directory.h>
#include <kadata/log.h>

#include <memory>
#include <set>
#include <thread>

#include "log_reader.h"
#include "support/child_process.h"
#include "support/handles.h"
#include "support/temp_folder.h"

namespace {

using test::ChildProcess;
using test::TempFolder;
using test::Text;

struct Limits {
    DWORD fileSize;
    DWORD fileCount;
};
constexpr Limits kKeepAll = {40000, 900};
constexpr Limits kKeepFew = {20000, 5};
constexpr int kThreads = 2;
constexpr int kBatch = 50;
constexpr int kVictim = 1000;
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
    for (int line = 0; line < number % 3; ++line)
        text += _T("\r\n") + CString(_T('x'), 1 + number % 40);
    return text + _T(">\r\n\r\n");
}

std::string Expected(int writer, int number) {
    std::string text = "<" + std::to_string(writer) + "." + std::to_string(number);
    for (int line = 0; line < number % 3; ++line)
        text += "|" + std::string(static_cast<std::size_t>(1 + number % 40), 'x');
    return text + ">";
}

// folder, first writer, messages, "all" or "few" files to keep, event: two threads write, each under a writer number of its own,
// and stop after a whole batch when the event is signalled.
int WriteMessages(const test::ChildArgs& args) {
    const std::unique_ptr<CLogFile> log = OpenLog(args[0], args[3] == _T("all") ? kKeepAll : kKeepFew);
    const int first = _wtoi(args[1].c_str());
    const int count = _wtoi(args[2].c_str());
    const test::Handle stop(OpenEventW(SYNCHRONIZE, FALSE, args[4].c_str()));
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&log, &stop, first, count, t] {
            const auto stopped = [&stop](int i) {
                return i != 0 && i % kBatch == 0 && WaitForSingleObject(stop, 0) == WAIT_OBJECT_0;
            };
            for (int i = 0; i < count && !stopped(i); ++i)
                log->PrintCore(Message(first + t, i));
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    return 0;
}
REGISTER_CHILD(WriteMessages)

// folder, event: signalled when the first message is written; others follow.
int WriteUntilKilled(const test::ChildArgs& args) {
    const std::unique_ptr<CLogFile> log = OpenLog(args[0], kKeepAll);
    log->PrintCore(Message(kVictim, 0));
    SetEvent(test::Handle(OpenEventW(EVENT_MODIFY_STATE, FALSE, args[1].c_str())));
    for (int i = 1;; ++i)
        log->PrintCore(Message(kVictim, i));
}
REGISTER_CHILD(WriteUntilKilled)

std::unique_ptr<ChildProcess> StartWriter(const TempFolder& folder, int first, int count, const TCHAR* keep = _T("all"),
                                          const Text& stop = _T("none")) {
    return std::make_unique<ChildProcess>(test::ChildArgs{_T("WriteMessages"), folder.Path(), test::Widen(std::to_string(first)),
                                                          test::Widen(std::to_string(count)), keep, stop});
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
    for (int p = 0; p < kProcesses; ++p)
        children.push_back(StartWriter(folder, p * kThreads, kMessages));
    for (const auto& child : children)
        EXPECT_EQ(child->Wait(kPatience), 0U);
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
    for (int p = 0; p < 4; ++p)
        children.push_back(StartWriter(folder, p * kThreads, 700, _T("few")));
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
    constexpr int kMostMessages = 12000;
    constexpr DWORD kKills = 20;
    const TempFolder folder;
    const Text stop_name = test::UniqueName(_T("Stop")), writing_name = test::UniqueName(_T("Writing"));
    const test::Handle stop(CreateEventW(nullptr, TRUE, FALSE, stop_name.c_str()));
    const test::Handle writing(CreateEventW(nullptr, FALSE, FALSE, writing_name.c_str()));
    std::vector<std::unique_ptr<ChildProcess>> survivors;
    for (int p = 0; p < kSurvivors; ++p)
        survivors.push_back(StartWriter(folder, p * kThreads, kMostMessages, _T("all"), stop_name));
    for (DWORD kills = 0; kills < kKills; ++kills) {
        const ChildProcess victim({_T("WriteUntilKilled"), folder.Path(), writing_name});
        ASSERT_EQ(WaitForSingleObject(writing, kPatience), WAIT_OBJECT_0);
        victim.Wait(kills % 7);
        victim.Kill();
    }
    SetEvent(stop);
    for (const auto& child : survivors)
        EXPECT_EQ(child->Wait(kPatience), 0U);
    OpenLog(folder.Path(), kKeepAll)->PrintCore(_T("<9999.0>\r\n"));  // ends what the last victim may have left
    const test::LogFolder log = test::ReadLogFolder(folder.Path());
    const std::set<std::string> seen(log.messages.begin(), log.messages.end());
    for (int writer = 0; writer < kSurvivors * kThreads; ++writer) {
        int count = 0;
        while (seen.contains(Expected(writer, count)))
            ++count;
        const auto first = seen.lower_bound("<" + std::to_string(writer) + "."),
                   last = seen.lower_bound("<" + std::to_string(writer) + "/");
        EXPECT_EQ(std::distance(first, last), count) << "lost " << Expected(writer, count);
        EXPECT_TRUE(count > 0 && count % kBatch == 0) << "lost " << Expected(writer, count);
    }
    const std::string victims = "<" + std::to_string(kVictim) + ".";
    for (const std::string& torn : log.broken)
        EXPECT_TRUE(victims.starts_with(torn.substr(0, victims.size()))) << "a message of a survivor is torn: " << torn;
    EXPECT_LE(log.broken.size(), std::size_t{kKills});
    ExpectOrderedRing(log, (kSurvivors + 1) * kLargestMessage);
}

}  // namespace
