#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <thread>
#include <vector>

#include "support/temp_folder.h"

namespace {

using test::Narrow;
using test::Text;

// Under HKEY_CURRENT_USER, so that the tests run on every system without rights; a process has its own branch.
Text Branch() {
    return _T("Software\\KaData Tests\\") + test::Widen(std::to_string(GetCurrentProcessId()));
}

class Registry : public testing::Test {
protected:
    void SetUp() override {
        SetEnvironmentVariableW(_T("KADATA_REGISTRY_DIR"), folder_.Path(_T("registry")).c_str());
        ASSERT_EQ(
            RegCreateKeyExW(HKEY_CURRENT_USER, Branch().c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr, &key_, nullptr),
            ERROR_SUCCESS);
    }
    void TearDown() override {
        EXPECT_EQ(RegCloseKey(key_), ERROR_SUCCESS);
        EXPECT_EQ(RegDeleteTreeW(HKEY_CURRENT_USER, Branch().c_str()), ERROR_SUCCESS);
        SetEnvironmentVariableW(_T("KADATA_REGISTRY_DIR"), nullptr);
    }

    LSTATUS Set(const TCHAR* name, DWORD type, const std::string& bytes) const {
        return RegSetValueExW(key_, name, 0, type, reinterpret_cast<const BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size()));
    }

    // "TYPE:bytes", or "error N".
    std::string Get(const TCHAR* name, HKEY key = nullptr) const {
        DWORD type = 0;
        std::string bytes(300, '\0');
        auto size = static_cast<DWORD>(bytes.size());
        const LSTATUS status =
            RegQueryValueExW(key == nullptr ? key_ : key, name, nullptr, &type, reinterpret_cast<BYTE*>(bytes.data()), &size);
        return status == ERROR_SUCCESS ? std::to_string(type) + ":" + bytes.substr(0, size) : "error " + std::to_string(status);
    }

    test::TempFolder folder_;
    HKEY key_ = nullptr;
};

TEST_F(Registry, KeepsTheBytesAndTypeOfEveryKindOfValue) {
    const struct {
        const TCHAR* name;
        DWORD type;
        std::string bytes;
    } rows[] = {
        {_T("text"), REG_SZ, std::string("a\0\xE4\0\0\0", 6)},
        {_T("path"), REG_EXPAND_SZ, std::string("%\0X\0%\0", 6)},
        {_T("bytes"), REG_BINARY, std::string("\0\xFF\0", 3)},
        {_T("number"), REG_DWORD, std::string("\x07\0\0\0", 4)},
        {_T("list"), REG_MULTI_SZ, std::string("a\0\0\0\0\0", 6)},
        {_T("big"), REG_QWORD, std::string("12345678")},
        {_T("nothing"), REG_BINARY, ""},
        {nullptr, REG_SZ, std::string("d\0\0\0", 4)},
        {_T("\u00C4 name with blanks"), REG_DWORD, "1234"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name == nullptr ? "default" : Narrow(row.name));
        EXPECT_EQ(Set(row.name, row.type, row.bytes), ERROR_SUCCESS);
        EXPECT_EQ(Get(row.name), std::to_string(row.type) + ":" + row.bytes);
    }
    EXPECT_EQ(Get(_T("")), Get(nullptr));
    EXPECT_EQ(Get(_T("\u00E4 NAME with Blanks")), "4:1234");
    EXPECT_EQ(Set(_T("TEXT"), REG_DWORD, "new!"), ERROR_SUCCESS);
    EXPECT_EQ(Get(_T("text")), "4:new!");
    EXPECT_EQ(RegDeleteValueW(key_, _T("Text")), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueW(key_, _T("text")), static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(Get(_T("text")), "error 2");
}

TEST_F(Registry, SaysHowMuchRoomAValueNeeds) {
    ASSERT_EQ(Set(_T("v"), REG_BINARY, "12345"), ERROR_SUCCESS);
    BYTE buffer[5] = {};
    DWORD size = 0;
    DWORD type = 0;
    EXPECT_EQ(RegQueryValueExW(key_, _T("v"), nullptr, &type, nullptr, &size), ERROR_SUCCESS);
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(type, REG_BINARY);
    size = 4;
    EXPECT_EQ(RegQueryValueExW(key_, _T("v"), nullptr, &type, buffer, &size), static_cast<LSTATUS>(ERROR_MORE_DATA));
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(RegQueryValueExW(key_, _T("v"), nullptr, nullptr, buffer, &size), ERROR_SUCCESS);
    EXPECT_EQ(buffer[4], '5');
    EXPECT_EQ(RegQueryValueExW(key_, _T("v"), nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(RegQueryValueExW(key_, _T("v"), nullptr, nullptr, buffer, nullptr), static_cast<LSTATUS>(ERROR_INVALID_PARAMETER));
}

TEST_F(Registry, OpensKeysByPathWithoutRegardToCase) {
    HKEY sub = nullptr;
    DWORD disposition = 0;
    EXPECT_EQ(RegCreateKeyExW(key_, _T("\u00C4a\\Sub"), 0, nullptr, 0, KEY_WRITE, nullptr, &sub, &disposition), ERROR_SUCCESS);
    EXPECT_EQ(disposition, REG_CREATED_NEW_KEY);
    EXPECT_EQ(Get(_T("v"), sub), "error 5");  // not opened for reading
    EXPECT_EQ(RegCloseKey(sub), ERROR_SUCCESS);
    EXPECT_EQ(RegCreateKeyExW(key_, _T("\u00E4A\\sUB\\"), 0, nullptr, 0, KEY_READ, nullptr, &sub, &disposition), ERROR_SUCCESS);
    EXPECT_EQ(disposition, REG_OPENED_EXISTING_KEY);
    EXPECT_EQ(RegSetValueExW(sub, _T("v"), 0, REG_NONE, nullptr, 0), static_cast<LSTATUS>(ERROR_ACCESS_DENIED));
    EXPECT_EQ(RegCloseKey(sub), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(sub), static_cast<LSTATUS>(ERROR_INVALID_HANDLE));

    const struct {
        const TCHAR* path;
        LSTATUS status;
    } rows[] = {
        {_T("\u00E4a"), 0},
        {_T(""), 0},
        {nullptr, 0},
        {_T("\u00C4a\\Sub\\none"), ERROR_FILE_NOT_FOUND},
        {_T("Sub"), ERROR_FILE_NOT_FOUND},
        {_T("\\\u00C4a"), ERROR_BAD_PATHNAME},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path == nullptr ? "null" : Narrow(row.path));
        HKEY opened = key_;
        EXPECT_EQ(RegOpenKeyExW(key_, row.path, 0, KEY_READ, &opened), row.status);
        EXPECT_EQ(opened == nullptr, row.status != 0);
        EXPECT_TRUE(opened == nullptr || RegCloseKey(opened) == ERROR_SUCCESS);
    }
    EXPECT_EQ(RegOpenKeyExW(nullptr, _T("x"), 0, KEY_READ, &sub), static_cast<LSTATUS>(ERROR_INVALID_HANDLE));
    EXPECT_EQ(RegCloseKey(HKEY_CURRENT_USER), ERROR_SUCCESS);
}

TEST_F(Registry, RemovesAKeyWithAllBelowIt) {
    HKEY sub = nullptr;
    HKEY below = nullptr;
    ASSERT_EQ(RegCreateKeyExW(key_, _T("sub"), 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr, &sub, nullptr), ERROR_SUCCESS);
    ASSERT_EQ(RegCreateKeyExW(sub, _T("a\\b"), 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr, &below, nullptr), ERROR_SUCCESS);
    ASSERT_EQ(RegSetValueExW(below, _T("v"), 0, REG_BINARY, reinterpret_cast<const BYTE*>("1"), 1), ERROR_SUCCESS);
    ASSERT_EQ(Set(_T("kept"), REG_BINARY, "2"), ERROR_SUCCESS);

    EXPECT_EQ(RegDeleteTreeW(key_, _T("SUB")), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteTreeW(key_, _T("sub")), static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(Get(_T("v"), below), "error 1018");  // ERROR_KEY_DELETED
    EXPECT_EQ(RegSetValueExW(below, _T("v"), 0, REG_NONE, nullptr, 0), static_cast<LSTATUS>(ERROR_KEY_DELETED));
    EXPECT_EQ(Get(_T("kept")), "3:2");
    EXPECT_EQ(RegCloseKey(sub), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(below), ERROR_SUCCESS);
    EXPECT_EQ(RegOpenKeyExW(key_, _T("sub\\a"), 0, KEY_READ, &sub), static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
}

TEST_F(Registry, LosesNothingThatSeveralThreadsWrite) {
    constexpr int kThreads = 4;
    constexpr int kValues = 50;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([this, t] {
            for (int i = 0; i < kValues; ++i) {
                EXPECT_EQ(Set(test::Widen(std::to_string(t * kValues + i)).c_str(), REG_BINARY, std::to_string(i)),
                          ERROR_SUCCESS);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (int i = 0; i < kThreads * kValues; ++i) {
        EXPECT_EQ(Get(test::Widen(std::to_string(i)).c_str()), "3:" + std::to_string(i % kValues));
    }
}

}  // namespace
