// Exceptions in the log. Each case runs in a child, because a process sets its log up once.

#include <gtest/gtest.h>
#include <kadata/directory.h>
#include <kadata/log.h>
#include <kadata/tarvo_exception.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "log_reader.h"
#include "support/child_process.h"
#include "support/wine.h"

namespace {

using test::LoggedBy, test::Text;

constexpr CLog::SLogConfig kAll = {15, 10, 100'000'000};

[[gnu::noinline]] void MakeOneOfEach() {
    const CTarvoException withDetails(1058, _T("never logged"));
    const CTarvoException text(_T("never logged"));
    const CTarvoException variant(1, 21, _T("never logged"), "variant.cpp", 7);
    const CTarvoException complete(30, _T("never logged"), "complete.cpp", 8, CTarvoException::eWarning);
    const CTarvoException missing(4711, "missing.cpp", 9, CTarvoException::eNothing);
    const CTarvoException copy(missing);
}

int LogOneOfEach(const test::ChildArgs& /*args*/) {
    CLog::SetLogConfig(kAll);
    SetLastError(ERROR_WRITE_PROTECT);
    MakeOneOfEach();
    return GetLastError() == ERROR_WRITE_PROTECT ? 0 : 1;
}
REGISTER_CHILD(LogOneOfEach)

// A log's messages, each without blanks in front of its lines.
std::vector<std::string> Messages(const std::string& log) {
    std::vector<std::string> messages;
    for (std::size_t at = 0; at < log.size();) {
        const std::size_t end = std::min(log.find('\n', at), log.size());
        const std::string line = log.substr(at, end - at);
        const std::size_t first = line.find_first_not_of(' ');
        if (line.starts_with("HEADER"))
            messages.push_back(line.substr(6) + "\n");
        else if (first != line.npos && !messages.empty())
            messages.back() += line.substr(first) + "\n";
        at = end + 1;
    }
    return messages;
}

TEST(TarvoExceptionLog, HasEveryConstructionButCopies) {
    const char* const rows[] = {
        "Filename: (null) \nLine: 0 \nStringID: 1058\nMessageText: Damaged data\n",
        "Filename: (null) \nLine: 0 \nStringID: -1\nMessageText: \n",
        "Filename: variant.cpp \nLine: 7 \nStringID: 21\nMessageText: Scan\n",
        "Filename: complete.cpp \nLine: 8 \nStringID: 30\nMessageText: Message of P1 and P2, %1 of 100%\n",
        "Filename: missing.cpp \nLine: 9 \nStringID: 4711\nMessageText: \n",
    };
    const std::vector<std::string> messages = Messages(LoggedBy(_T("LogOneOfEach")));
    ASSERT_EQ(messages.size(), std::size(rows));
    for (std::size_t i = 0; i < messages.size(); ++i) {
        const std::string expected = std::string("@Error; @Catch;\t") + rows[i];
        EXPECT_EQ(messages[i].substr(0, expected.size()), expected);
        // The first frame is the maker's.
        const std::string frame = messages[i].substr(expected.size(), messages[i].find('\n', expected.size()) - expected.size());
        EXPECT_NE(frame.find("tarvo_exception_log_test.cpp ("), std::string::npos) << messages[i];
        EXPECT_NE(frame.find("): "), std::string::npos) << frame;
        EXPECT_NE(frame.find("MakeOneOfEach"), std::string::npos) << frame;
        EXPECT_TRUE(messages[i].find("never logged") == std::string::npos);
    }
}

volatile int after = 0;  // what follows a call keeps it on the stack

[[gnu::noinline]] void Deeper(int depth) {
    if (depth == 0)
        delete new CTarvoException(1058, "deep.cpp", 1, CTarvoException::eError);
    else
        Deeper(depth - 1);
    after = depth;
}

int LogADeepStack(const test::ChildArgs& /*args*/) {
    CLog::SetLogConfig(kAll);
    Deeper(40);
    return 0;
}
REGISTER_CHILD(LogADeepStack)

TEST(TarvoExceptionLog, EndsBehindAWholeFrameWhereTheStackIsTooDeep) {
    const std::vector<std::string> messages = Messages(LoggedBy(_T("LogADeepStack")));
    ASSERT_EQ(messages.size(), 1u);
    const std::string& message = messages[0];
    const std::size_t last = message.rfind('\n', message.size() - 2) + 1;
    EXPECT_NE(message.find("Deeper", last), std::string::npos) << message.substr(last);
    EXPECT_GT(message.size(), CLog::MAX_TEXT * 3 / 4);
}

int LogWhereNothingCanBeWritten(const test::ChildArgs& /*args*/) {
    CLog::SetLogConfig(kAll);
    CTarvoException e(1058, _T("d"), "a.cpp", 3, CTarvoException::eDefault);
    return e.GetMessageTextID() == 1058 && e.GetMessageDetails() == _T("d") ? 0 : 1;
}
REGISTER_CHILD(LogWhereNothingCanBeWritten)

TEST(TarvoExceptionLog, ThatCannotBeWrittenStopsNoException) {
    const Text service = test::OwnLogFolder().substr(0, test::OwnLogFolder().rfind(_T('\\')));
    CDirectory::Remove(service.c_str());
    test::WriteBytes(service, "a file where the folder should be");
    EXPECT_EQ(LoggedBy(_T("LogWhereNothingCanBeWritten")), "");
    EXPECT_TRUE(DeleteFileW(service.c_str()));
}

constexpr int kThreads = 8;

// Wine passes the log's mutex from thread to thread in ten milliseconds.
int EachThread() {
    return test::RunsOnWine() ? 25 : 1250;
}

int LogFromManyThreads(const test::ChildArgs& /*args*/) {
    CLog::SetLogConfig(kAll);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([] {
            for (int k = EachThread(); k > 0; --k) {
                try {
                    throw new CTarvoException(1062, _T("d"), __FILE__, __LINE__, CTarvoException::eNothing);
                } catch (CTarvoException* e) {
                    e->Delete();
                }
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    return 0;
}
REGISTER_CHILD(LogFromManyThreads)

TEST(TarvoExceptionLog, HasThoseOfManyThreadsWhole) {
    const std::vector<std::string> messages = Messages(LoggedBy(_T("LogFromManyThreads")));
    EXPECT_EQ(messages.size(), static_cast<std::size_t>(kThreads * EachThread()));
    for (const std::string& message : messages) {
        ASSERT_NE(message.find("StringID: 1062\nMessageText: Related data\n"), std::string::npos) << message;
        ASSERT_NE(message.find("LogFromManyThreads"), std::string::npos) << message;
    }
}

}  // namespace
