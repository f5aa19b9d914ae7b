#include <gtest/gtest.h>
#include <kadata/call_stack.h>

#include <cstdio>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/child_process.h"
#include "support/temp_folder.h"

namespace {

using test::Narrow, test::Text;

// Three functions deep. Each tells beforehand in which line it calls on; what follows the call keeps it on the stack.
volatile int steps = 0;

struct Place {
    const char* function;
    int line;
};
std::vector<Place> places;  // the innermost first

void Remember(const char* function, int line) {
    places.insert(places.begin(), {function, line});
}

class Deep {
public:
    [[gnu::noinline]] CCallStack Third(DWORD skip) {
        Remember("Third", __LINE__ + 1);
        CCallStack stack(skip);
        steps = steps + 1;
        return stack;
    }
};

[[gnu::noinline]] CCallStack Second(DWORD skip) {
    Remember("Second", __LINE__ + 1);
    CCallStack stack = Deep().Third(skip);
    steps = steps + 1;
    return stack;
}

[[gnu::noinline]] CCallStack First(DWORD skip) {
    places.clear();
    Remember("First", __LINE__ + 1);
    CCallStack stack = Second(skip);
    steps = steps + 1;
    return stack;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find("\r\n", at);
        lines.push_back(text.substr(at, end - at));
        at = end == text.npos ? end : end + 2;
    }
    return lines;
}

void ExpectDeepPlaces(const std::string& text, std::size_t skipped = 0) {
    const std::vector<std::string> lines = Lines(text);
    ASSERT_EQ(places.size(), 3u);
    ASSERT_GT(lines.size(), places.size() - skipped) << text;
    for (std::size_t i = skipped; i < places.size(); ++i) {
        const std::string file = "call_stack_test.cpp (" + std::to_string(places[i].line) + "): ";
        const std::size_t function = lines[i - skipped].find(file);
        EXPECT_NE(function, std::string::npos) << lines[i - skipped] << " is not at " << file;
        EXPECT_NE(lines[i - skipped].find(places[i].function, function), std::string::npos) << lines[i - skipped];
    }
}

TEST(CallStack, NamesFunctionsFilesAndLinesFromItsMakerOutwards) {
    for (const DWORD skip : {0u, 1u, 2u}) {
        const CCallStack stack = First(skip);
        ExpectDeepPlaces(Narrow(stack.GetText()), skip);
    }
}

TEST(CallStack, IsThatOfTheThreadThatMadeItAndNamedByAny) {
    CCallStack stack;
    std::thread([&stack] { stack = First(0); }).join();
    ExpectDeepPlaces(Narrow(stack.GetText()));
    const CCallStack copy = stack;
    EXPECT_EQ(copy.GetText(), stack.GetText());
}

[[gnu::noinline]] CCallStack Recurse(int depth) {
    CCallStack stack = depth == 0 ? CCallStack() : Recurse(depth - 1);
    steps = steps + 1;
    return stack;
}

TEST(CallStack, HasAtMostItsNumberOfFrames) {
    constexpr DWORD most = CCallStack::MAX_FRAMES;
    const CCallStack stack = Recurse(200);
    ASSERT_EQ(stack.GetCount(), most);
    EXPECT_EQ(Lines(Narrow(stack.GetText())).size(), most);
    EXPECT_NE(stack.GetFrame(most - 1), nullptr);
    EXPECT_EQ(stack.GetFrame(most), nullptr);
    const CCallStack none(1000);
    EXPECT_EQ(none.GetCount(), 0u);
    EXPECT_EQ(none.GetFrame(0), nullptr);
    EXPECT_EQ(Narrow(none.GetText()), "(No stack trace availabe)");
}

TEST(CallStack, EndsBehindAWholeFrameWhereTheTextIsLimited) {
    const CCallStack stack = First(0);
    const std::string whole = Narrow(stack.GetText());
    const int first = static_cast<int>(whole.find("\r\n")) + 2;
    for (const auto& [most, length] : {std::pair{-1, 0}, {0, 0}, {first - 1, 0}, {first, first}, {first + 1, first}})
        EXPECT_EQ(Narrow(stack.GetText(most)), whole.substr(0, static_cast<std::size_t>(length))) << most;
}

int TellStack(const test::ChildArgs& args) {
    const CCallStack stack = First(0);
    std::string text = Narrow(stack.GetText());
    char address[32];
    std::snprintf(address, sizeof address, "0x%016llX", reinterpret_cast<unsigned long long>(stack.GetFrame(0)));
    test::WriteBytes(args[0], text + address);
    return 0;
}
REGISTER_CHILD(TellStack)

TEST(CallStack, OfAStrippedProgramIsAddresses) {
    const test::TempFolder folder;
    Text program = test::OwnPath();
    program.insert(program.rfind(_T("core_tests")) + 10, _T("_stripped"));
    ASSERT_EQ(test::ChildProcess({_T("TellStack"), folder.Path(_T("stack.txt"))}, program).Wait(60000), 0u);
    std::vector<std::string> lines = Lines(folder.Read(_T("stack.txt")));
    ASSERT_GT(lines.size(), 4u);
    EXPECT_EQ(lines[0], lines.back() + " (File and line number not available): (Function name unavailable)");
    for (int i = 1; i < 3; ++i) {
        const std::string& line = lines[static_cast<std::size_t>(i)];
        EXPECT_TRUE(line.starts_with("0x") && line.ends_with("): (Function name unavailable)")) << line;
    }
}

}  // namespace
