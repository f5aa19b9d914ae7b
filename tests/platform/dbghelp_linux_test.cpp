// Names in modules that come and go.

#include <dbghelp.h>
#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include "support/last_error.h"

namespace {

using test::ErrorOf;

TEST(LinuxSymbols, KnowTheModulesThatWereThereWhenTheSessionLastLooked) {
    int handle = 0;
    const HANDLE session = &handle;
    SYMBOL_INFOW symbol{};
    symbol.SizeOfStruct = sizeof symbol;
    symbol.MaxNameLen = 1;

    ASSERT_TRUE(SymInitializeW(session, nullptr, FALSE));
    EXPECT_EQ(SymGetModuleBase64(session, reinterpret_cast<DWORD64>(&SymCleanup)), 0u);
    EXPECT_TRUE(SymRefreshModuleList(session));
    EXPECT_NE(SymGetModuleBase64(session, reinterpret_cast<DWORD64>(&SymCleanup)), 0u);

    const HMODULE library = LoadLibraryW(_T("libtiff.so.6"));  // nobody else needs it
    ASSERT_NE(library, nullptr);
    const auto address = reinterpret_cast<DWORD64>(GetProcAddress(library, "TIFFClose"));
    EXPECT_EQ(SymGetModuleBase64(session, address), 0u);
    EXPECT_EQ(ErrorOf(SymFromAddrW(session, address, nullptr, &symbol)), ERROR_MOD_NOT_FOUND);
    EXPECT_TRUE(SymRefreshModuleList(session));
    EXPECT_TRUE(SymFromAddrW(session, address, nullptr, &symbol));
    EXPECT_EQ(symbol.Address, address);
    EXPECT_EQ(symbol.NameLen, 9u);
    EXPECT_TRUE(FreeLibrary(library));
    EXPECT_TRUE(SymRefreshModuleList(session));
    EXPECT_EQ(SymGetModuleBase64(session, address), 0u);
    EXPECT_TRUE(SymCleanup(session));
}

}  // namespace
