#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <tuple>

#include "support/handles.h"
#include "support/last_error.h"

namespace {

using test::ErrorOf, test::Handle, test::UniqueName;

constexpr DWORD kSize = 0x20010;  // two allocation units and a rest

Handle NewMapping(const TCHAR* name, DWORD protect = PAGE_READWRITE) {
    return Handle(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, protect, 0, kSize, name));
}

TEST(FileMapping, IsZeroWhenNewAndSharedByItsName) {
    const auto name = UniqueName(_T("Mapping"));
    for (const TCHAR* const shared_name : {static_cast<const TCHAR*>(nullptr), name.c_str()}) {
        Handle mapping = NewMapping(shared_name);
        EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
        auto* const view = static_cast<char*>(MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, 0));
        ASSERT_NE(view, nullptr);
        EXPECT_EQ(std::count(view, view + kSize, 0), kSize);
        std::strcpy(view + 0x10000, "text");

        const Handle again = shared_name != nullptr ? NewMapping(shared_name) : std::move(mapping);
        EXPECT_EQ(GetLastError(), shared_name != nullptr ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
        auto* const part = static_cast<char*>(MapViewOfFile(again, FILE_MAP_READ, 0, 0x10000, 5));
        ASSERT_NE(part, nullptr);
        EXPECT_STREQ(part, "text");
        EXPECT_TRUE(UnmapViewOfFile(part));
        EXPECT_TRUE(UnmapViewOfFile(view));
    }
}

TEST(FileMapping, RefusesWhatItCannotGive) {
    for (const auto& [protect, size] : {std::pair<DWORD, DWORD>{PAGE_READWRITE, 0}, {0, 100}})
        EXPECT_EQ(ErrorOf(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, protect, 0, size, nullptr)), ERROR_INVALID_PARAMETER);
    const Handle writable = NewMapping(nullptr), readable = NewMapping(nullptr, PAGE_READONLY);
    const std::tuple<HANDLE, DWORD, DWORD, DWORD, DWORD> views[] = {
        {writable, FILE_MAP_READ, 0x1000, 1, ERROR_MAPPED_ALIGNMENT},
        {writable, FILE_MAP_READ, 0x10000, kSize, ERROR_ACCESS_DENIED},
        {readable, FILE_MAP_WRITE, 0, 0, ERROR_ACCESS_DENIED},
        {nullptr, FILE_MAP_READ, 0, 0, ERROR_INVALID_HANDLE},
    };
    for (const auto& [mapping, access, offset, length, error] : views)
        EXPECT_EQ(ErrorOf(MapViewOfFile(mapping, access, 0, offset, length)), error);
    EXPECT_EQ(ErrorOf(UnmapViewOfFile(&views)), ERROR_INVALID_ADDRESS);
}

}  // namespace
