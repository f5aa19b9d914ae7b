// Where the hives lie, and what is in their place when they cannot be used.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <filesystem>
#include <string>

#include "support/environment.h"
#include "support/native_path_linux.h"
#include "support/registry_values_linux.h"
#include "support/unprivileged.h"

namespace {

namespace fs = std::filesystem;
using test::LinuxHives;
using test::Text;

DWORD Write(HKEY hive, const std::string& bytes) {
    HKEY key = nullptr;
    LSTATUS status = RegCreateKeyExW(hive, _T("Software\\Maker"), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
    if (status == ERROR_SUCCESS) {
        const auto* const data = reinterpret_cast<const BYTE*>(bytes.data());
        status = RegSetValueExW(key, _T("v"), 0, REG_BINARY, data, static_cast<DWORD>(bytes.size()));
        RegCloseKey(key);
    }
    return static_cast<DWORD>(status);
}

// The value's bytes, or "error N".
std::string Read(HKEY hive) {
    HKEY key = nullptr;
    std::string bytes(100, '\0');
    auto size = static_cast<DWORD>(bytes.size());
    LSTATUS status = RegOpenKeyExW(hive, _T("software\\maker"), 0, KEY_READ, &key);
    if (status == ERROR_SUCCESS) {
        status = RegQueryValueExW(key, _T("v"), nullptr, nullptr, reinterpret_cast<BYTE*>(bytes.data()), &size);
        RegCloseKey(key);
    }
    return status == ERROR_SUCCESS ? bytes.substr(0, size) : "error " + std::to_string(status);
}

TEST_F(LinuxHives, AreTwoFilesThatOnlyWritingCreates) {
    EXPECT_EQ(Read(HKEY_CURRENT_USER), "error 2");
    EXPECT_FALSE(folder_.Has(_T("new")));
    EXPECT_EQ(Write(HKEY_CURRENT_USER, "user"), ERROR_SUCCESS);
    EXPECT_EQ(Write(HKEY_LOCAL_MACHINE, "machine"), ERROR_SUCCESS);
    EXPECT_EQ(Read(HKEY_CURRENT_USER), "user");
    EXPECT_TRUE(folder_.Has(_T("new\\hives\\user.registry")));
    EXPECT_TRUE(folder_.Has(_T("new\\hives\\machine.registry")));

    const Text config = test::Widen(test::Native(folder_.Path(_T("config"))));
    const test::InEnvironment unset(_T("KADATA_REGISTRY_DIR"), nullptr), other(_T("XDG_CONFIG_HOME"), config.c_str());
    EXPECT_EQ(Write(HKEY_CURRENT_USER, "x"), ERROR_SUCCESS);
    EXPECT_TRUE(folder_.Has(_T("config\\kadata\\user.registry")));
}

TEST_F(LinuxHives, ArePutAsideWhenTheyAreNone) {
    UseFolder(folder_.Path(_T("damaged")));
    folder_.MakeFolder(_T("damaged"));
    const std::string garbage(5000, '?');
    folder_.Write(_T("damaged\\user.registry"), garbage);
    EXPECT_EQ(Read(HKEY_CURRENT_USER), "error 2");
    EXPECT_EQ(Write(HKEY_CURRENT_USER, "x"), ERROR_SUCCESS);
    EXPECT_EQ(Read(HKEY_CURRENT_USER), "x");
    std::string kept;
    for (const fs::directory_entry& entry : fs::directory_iterator(test::Native(folder_.Path(_T("damaged"))))) {
        if (entry.path().filename().string().starts_with("user.registry.damaged-20"))
            kept = test::ReadBytes(folder_.Path(_T("damaged\\") + test::Widen(entry.path().filename().string())));
    }
    EXPECT_EQ(kept, garbage);
}

TEST_F(LinuxHives, AreReadByUsersWhoMayNotWriteThem) {
    folder_.MakeFolder(_T("hives"));
    UseFolder(folder_.Path(_T("hives")));
    ASSERT_EQ(Write(HKEY_LOCAL_MACHINE, "for all"), ERROR_SUCCESS);
    UseFolder(folder_.Path(_T("elsewhere")));
    EXPECT_EQ(Read(HKEY_LOCAL_MACHINE), "error 2");  // the last connection to the hive is closed now
    UseFolder(folder_.Path(_T("hives")));
    fs::permissions(test::Native(folder_.Path(_T("hives"))), fs::perms(0555));
    {
        const test::UnprivilegedScope rights;
        EXPECT_EQ(Read(HKEY_LOCAL_MACHINE), "for all");
        EXPECT_EQ(Write(HKEY_LOCAL_MACHINE, "x"), ERROR_ACCESS_DENIED);
        UseFolder(folder_.Path(_T("hives\\below")));
        EXPECT_EQ(Read(HKEY_LOCAL_MACHINE), "error 2");
        EXPECT_EQ(Write(HKEY_LOCAL_MACHINE, "x"), ERROR_ACCESS_DENIED);
    }
    fs::permissions(test::Native(folder_.Path(_T("hives"))), fs::perms(0755));
}

}  // namespace
