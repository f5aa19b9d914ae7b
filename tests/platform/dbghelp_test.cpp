// Stacks, and the names of addresses.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <dbghelp.h>

#include <cstddef>
#include <string>
#include <vector>

#include "support/handles.h"
#include "support/last_error.h"
#include "support/temp_folder.h"
#include "support/wine.h"

namespace {

using test::ErrorOf, test::Narrow, test::UnlessWine;

[[gnu::noinline]] std::vector<void*> Capture(ULONG skip, ULONG capacity, ULONG* hash = nullptr) {
    std::vector<void*> frames(100);
    frames.resize(RtlCaptureStackBackTrace(skip, capacity, frames.data(), hash));
    return frames;
}

TEST(StackTrace, GoesFromItsCallerOutwards) {
    ULONG hashes[2] = {};
    std::vector<void*> all;
    for (ULONG& hash : hashes)  // one call, so that the addresses are the same
        all = Capture(0, 100, &hash);
    ASSERT_GT(all.size(), 4u);
    EXPECT_EQ(hashes[0], hashes[1]);
    EXPECT_EQ(Capture(0, 0).size(), 0u);
    EXPECT_EQ(Capture(5000, 100).size(), 0u);
    for (const ULONG skip : {1u, 3u}) {
        const std::vector<void*> part = Capture(skip, 2);
        ASSERT_EQ(part.size(), 2u);
        EXPECT_EQ(part[1], all[skip + 1]) << skip;
    }
}

class Symbols : public testing::Test {
protected:
    // A symbol with room for `size` characters of its name, and a mark behind them.
    class Room {
    public:
        explicit Room(ULONG size = 512) {
            Info().SizeOfStruct = sizeof(SYMBOL_INFOW);
            Info().MaxNameLen = size;
            Name()[size] = _T('#');
        }
        SYMBOL_INFOW& Info() { return *reinterpret_cast<SYMBOL_INFOW*>(bytes_.data()); }
        TCHAR* Name() { return reinterpret_cast<TCHAR*>(bytes_.data() + offsetof(SYMBOL_INFOW, Name)); }

    private:
        std::vector<BYTE> bytes_ = std::vector<BYTE>(sizeof(SYMBOL_INFOW) + 1024);
    };

    // In this function, and its line.
    [[gnu::noinline]] static DWORD64 AddressHere() {
        const DWORD64 address = reinterpret_cast<DWORD64>(Capture(0, 2).at(1)) - 1;
        return address;
    }
    static constexpr DWORD kLine = __LINE__ - 3;

    const test::Handle process_{OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, GetCurrentProcessId())};
    const DWORD64 address_ = AddressHere();
    IMAGEHLP_LINEW64 line_{};
    DWORD behind_ = 77;

    void SetUp() override {
        SymSetOptions(SYMOPT_UNDNAME | SYMOPT_LOAD_LINES);
        line_.SizeOfStruct = sizeof line_;
    }
};

TEST_F(Symbols, TellTheFunctionAndTheLineOfAnAddress) {
    ASSERT_TRUE(SymInitializeW(process_, nullptr, TRUE));
    for (int round = 0; round < 2; ++round) {  // looked up, and kept
        Room room;
        DWORD64 into = 0;
        ASSERT_TRUE(SymFromAddrW(process_, address_, &into, &room.Info()));
        EXPECT_TRUE(Narrow(room.Name()).ends_with("Symbols::AddressHere")) << Narrow(room.Name());
        EXPECT_EQ(room.Info().Address + into, address_);
        EXPECT_TRUE(room.Info().ModBase != 0 && room.Info().ModBase < room.Info().Address);
        EXPECT_EQ(room.Info().NameLen, test::Text(room.Name()).size());
        ASSERT_TRUE(SymGetLineFromAddrW64(process_, address_, &behind_, &line_));
        EXPECT_EQ(line_.LineNumber, kLine);
        EXPECT_TRUE(Narrow(line_.FileName).ends_with("dbghelp_test.cpp")) << Narrow(line_.FileName);
        EXPECT_TRUE(SymRefreshModuleList(process_));
    }
    Room whole;
    ASSERT_TRUE(SymFromAddrW(process_, address_, nullptr, &whole.Info()));
    for (const ULONG size : {0u, 1u, 5u}) {
        Room room(size);
        ASSERT_TRUE(SymFromAddrW(process_, address_, nullptr, &room.Info()));
        EXPECT_EQ(room.Name()[size], _T('#')) << "written behind " << size;
        if (size > 0) {
            EXPECT_EQ(Narrow(room.Name()), Narrow(whole.Name()).substr(0, size - 1));
        }
    }
    EXPECT_TRUE(SymCleanup(process_));
}

TEST_F(Symbols, TellWhatIsWrong) {
    Room room;
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(ErrorOf(SymFromAddrW(process_, address_, nullptr, &room.Info())), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(SymGetLineFromAddrW64(process_, address_, &behind_, &line_)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(SymRefreshModuleList(process_)), ERROR_INVALID_HANDLE);
    EXPECT_EQ(ErrorOf(SymCleanup(process_)), UnlessWine<DWORD>(ERROR_INVALID_HANDLE, ERROR_SUCCESS));

    ASSERT_TRUE(SymInitializeW(process_, nullptr, TRUE));
    SetLastError(ERROR_SUCCESS);
    if (!test::RunsOnWine()) {  // begins it again
        EXPECT_EQ(ErrorOf(SymInitializeW(process_, nullptr, TRUE)), ERROR_INVALID_PARAMETER);
        EXPECT_EQ(ErrorOf(SymInitializeW(nullptr, nullptr, TRUE)), ERROR_INVALID_PARAMETER);
    }
    EXPECT_EQ(ErrorOf(SymFromAddrW(process_, 16, nullptr, &room.Info())), ERROR_MOD_NOT_FOUND);
    EXPECT_EQ(ErrorOf(SymGetLineFromAddrW64(process_, 16, &behind_, &line_)), ERROR_MOD_NOT_FOUND);
    line_.SizeOfStruct = 5;
    EXPECT_EQ(ErrorOf(SymGetLineFromAddrW64(process_, address_, &behind_, &line_)),
              UnlessWine<DWORD>(ERROR_INVALID_PARAMETER, ERROR_SUCCESS));
    EXPECT_TRUE(SymCleanup(process_));
}

}  // namespace
