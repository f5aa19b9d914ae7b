#pragma once

// Settings of a product of the tests' own.

#include <gtest/gtest.h>
#include <kadata/directory.h>
#include <kadata/registry.h>

#include <string>

#include "support/environment.h"
#include "support/handles.h"
#include "support/temp_folder.h"

namespace test {

constexpr DWORD kPatience = 60000;  // milliseconds

// The helpers made public, and a screen of the tests' choice.
class Settings : public CKalidoRegistry {
public:
    explicit Settings(const Text& product) : CKalidoRegistry(product.c_str()) {}

    using CKalidoRegistry::ClearScreenProfileEntry;
    using CKalidoRegistry::GetProfileIntW;
    using CKalidoRegistry::GetProfileRect;
    using CKalidoRegistry::GetProfileStringW;
    using CKalidoRegistry::WriteProfileStringW;

    CString GetScreenResolutionString() const override {
        return screen_.IsEmpty() ? CKalidoRegistry::GetScreenResolutionString() : screen_;
    }

    CString screen_;
};

inline CString ProgramKey() {
    return _T("Software\\Kalido Dental Systems\\CADCAM\\") + CDirectory::GetExeNameWithoutPath(0);
}

// On Linux the hives lie in a folder of the test, on Windows a product's keys are removed at the end.
class SettingsTest : public testing::Test {
protected:
    ~SettingsTest() override {
        RegDeleteTreeW(HKEY_CURRENT_USER, settings_.GetRegistryRoot());
        for (const CString& path : {settings_.GetRegistryRoot(), ProgramKey()})
            RegDeleteTreeW(HKEY_LOCAL_MACHINE, path);
    }

    // Writes the bytes as they are.
    static void SetRaw(HKEY hive, const CString& path, LPCTSTR name, DWORD type, const void* data, std::size_t size) {
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyExW(hive, path, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key, nullptr), 0);
        EXPECT_EQ(RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size)), 0);
        EXPECT_EQ(RegCloseKey(key), 0);
    }
    static void SetText(HKEY hive, const CString& path, LPCTSTR name, const CString& text) {
        SetRaw(hive, path, name, REG_SZ, text.GetString(), (static_cast<std::size_t>(text.GetLength()) + 1) * sizeof(TCHAR));
    }
    // A text of the user's section "Settings".
    std::string StoredText(LPCTSTR name) const {
        return Narrow(settings_.GetProfileStringW(_T("Settings"), name, _T("def"), HKEY_CURRENT_USER));
    }

    const TempFolder folder_;
    const InEnvironment hives_{_T("KADATA_REGISTRY_DIR"), folder_.Path(_T("registry")).c_str()};
    const Text product_ = UniqueName(_T("KaData tests "));
    Settings settings_{product_};
    const CString section_ = settings_.GetRegistryRoot() + _T("\\Settings");
};

}  // namespace test
