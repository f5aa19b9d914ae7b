// Writers and a reader that are killed at random moments, again and again: what a power switch does to programs.

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <tchar.h>
#include <windows.h>
// after it
#include <ktmw32.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include "support/child_process.h"
#include "support/native_path_linux.h"
#include "support/registry_values_linux.h"

namespace {

using test::LinuxHives;
using test::Number;
using test::Text;

constexpr int kWriters = 2;
constexpr int kReader = kWriters;  // the children: the writers, then the reader
constexpr const TCHAR* kGroup[] = {_T(" a"), _T(" b"), _T(" c")};

// What the writers have been told is written; shared memory of the parent's.
struct Acknowledged {
    std::array<std::atomic<DWORD>, kWriters> single;
    std::array<std::atomic<DWORD>, kWriters> group;
};

// Mapped until the process ends.
Acknowledged& SharedNumbers(const Text& name) {
    const HANDLE mapping =
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Acknowledged), name.c_str());
    return *static_cast<Acknowledged*>(MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, sizeof(Acknowledged)));
}

Text Name(int writer, const TCHAR* part = _T("")) {
    return _T("writer ") + test::Widen(std::to_string(writer)) + part;
}

DWORD Current(const Text& name) {
    return Number(name.c_str()).value_or(0);
}

// One number after the other, alone and as a group of three in a transaction.
int WriteUntilKilled(const test::ChildArgs& args) {
    Acknowledged& shared = SharedNumbers(args[0]);
    const int writer = _wtoi(args[1].c_str());
    DWORD number = Current(Name(writer));
    for (DWORD group = Current(Name(writer, kGroup[0]));;) {
        if (!test::SetNumber(Name(writer).c_str(), ++number))
            return 1;
        shared.single[static_cast<std::size_t>(writer)] = number;
        const HANDLE transaction = CreateTransaction(nullptr, nullptr, 0, 0, 0, 0, nullptr);
        ++group;
        for (const TCHAR* const part : kGroup) {
            if (!test::SetNumber(Name(writer, part).c_str(), group, transaction))
                return 2;
        }
        if (!CommitTransaction(transaction))
            return 3;
        CloseHandle(transaction);
        shared.group[static_cast<std::size_t>(writer)] = group;
    }
}
REGISTER_CHILD(WriteUntilKilled)

// Never reads less than was acknowledged before it asked, and no half group.
int ReadUntilKilled(const test::ChildArgs& args) {
    Acknowledged& shared = SharedNumbers(args[0]);
    for (;;) {
        for (int writer = 0; writer < kWriters; ++writer) {
            const DWORD told = shared.single[static_cast<std::size_t>(writer)];
            if (Current(Name(writer)) < told)
                return 1;
            // The last part was written after the first one was read, if they differ: never the other way round.
            const DWORD last = Current(Name(writer, kGroup[2])), first = Current(Name(writer, kGroup[0]));
            if (first < last)
                return 2;
        }
    }
}
REGISTER_CHILD(ReadUntilKilled)

std::unique_ptr<test::ChildProcess> Start(const Text& shared, int child) {
    return std::make_unique<test::ChildProcess>(
        child == kReader ? test::ChildArgs{_T("ReadUntilKilled"), shared}
                         : test::ChildArgs{_T("WriteUntilKilled"), shared, test::Widen(std::to_string(child))});
}

std::string Integrity(const std::string& file) {
    sqlite3* database = nullptr;
    std::string answer = "not opened";
    if (sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK) {
        sqlite3_busy_timeout(database, 10000);
        answer.clear();
        const auto append = [](void* text, int, char** columns, char**) {
            *static_cast<std::string*>(text) += columns[0];
            return 0;
        };
        sqlite3_exec(database, "PRAGMA integrity_check", append, &answer, nullptr);
    }
    sqlite3_close(database);
    return answer;
}

// KADATA_SOAK_ROUNDS: how often a child is killed; 500 unless it says otherwise.
int Rounds() {
    const char* const rounds = std::getenv("KADATA_SOAK_ROUNDS");
    return rounds != nullptr ? std::atoi(rounds) : 500;
}

TEST_F(LinuxHives, SurviveProgramsThatAreKilled) {
    const Text name = _T("KaDataSoak") + test::Widen(std::to_string(GetCurrentProcessId()));
    const Acknowledged& shared = SharedNumbers(name);
    ASSERT_TRUE(test::SetNumber(_T("first"), 1));
    const std::string file = test::Native(hives_ + _T("\\user.registry"));
    std::unique_ptr<test::ChildProcess> children[kWriters + 1];
    for (int child = 0; child <= kReader; ++child)
        children[child] = Start(name, child);
    std::uint32_t random = GetCurrentProcessId();
    for (int round = 0; round < Rounds(); ++round) {
        random = random * 1664525 + 1013904223;
        const int victim = static_cast<int>(random >> 8) % (kWriters + 1);
        const std::optional<DWORD> ended = children[victim]->Wait((random >> 16) % 12);
        ASSERT_EQ(ended, std::nullopt) << "child " << victim << " found a fault, round " << round;
        children[victim]->Kill();
        for (int writer = 0; writer < kWriters; ++writer) {
            const auto index = static_cast<std::size_t>(writer);
            const DWORD single = shared.single[index], group = shared.group[index];
            ASSERT_GE(Current(Name(writer)), single) << "lost, round " << round;
            ASSERT_GE(Current(Name(writer, kGroup[2])), group) << "lost, round " << round;
        }
        if (victim != kReader) {
            const DWORD first = Current(Name(victim, kGroup[0]));
            ASSERT_EQ(Current(Name(victim, kGroup[1])), first) << "round " << round;
            ASSERT_EQ(Current(Name(victim, kGroup[2])), first) << "round " << round;
        }
        ASSERT_EQ(Integrity(file), "ok") << "round " << round;
        children[victim] = Start(name, victim);
    }
    for (int writer = 0; writer < kWriters; ++writer)
        EXPECT_GT(shared.group[static_cast<std::size_t>(writer)], 0U);
}

}  // namespace
