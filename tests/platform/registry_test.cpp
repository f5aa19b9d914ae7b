#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>

#include "support/environment.h"
#include "support/temp_folder.h"

namespace {

using test::Text;
using test::Widen;

// Under HKEY_CURRENT_USER, so that the tests run on every system without rights; a process has its own branch.
class Registry : public testing::Test {
protected:
    Registry() { EXPECT_EQ(Open(HKEY_CURRENT_USER, branch_.c_str(), KEY_READ | KEY_WRITE, &key_), REG_CREATED_NEW_KEY); }
    ~Registry() override {
        EXPECT_EQ(RegCloseKey(key_), ERROR_SUCCESS);
        EXPECT_EQ(RegDeleteTreeW(HKEY_CURRENT_USER, branch_.c_str()), ERROR_SUCCESS);
    }

    // Opens or creates; whether it was there.
    static DWORD Open(HKEY parent, const TCHAR* path, REGSAM rights, HKEY* key) {
        DWORD disposition = 0;
        EXPECT_EQ(RegCreateKeyExW(parent, path, 0, nullptr, 0, rights, nullptr, key, &disposition), ERROR_SUCCESS);
        return disposition;
    }

    // No terminator lies behind the bytes: a system may count one that a text was meant to have.
    static DWORD Set(HKEY key, const TCHAR* name, DWORD type, const std::string& bytes) {
        const std::string longer = bytes + "more";
        const auto* const data = reinterpret_cast<const BYTE*>(longer.data());
        return static_cast<DWORD>(RegSetValueExW(key, name, 0, type, data, static_cast<DWORD>(bytes.size())));
    }

    // "TYPE:bytes", or "error N".
    static std::string Get(HKEY key, const TCHAR* name, DWORD room = 300) {
        DWORD type = 0;
        std::string bytes(room, '\0');
        const LSTATUS status = RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(bytes.data()), &room);
        return status == ERROR_SUCCESS ? std::to_string(type) + ":" + bytes.substr(0, room) : "error " + std::to_string(status);
    }

    const test::TempFolder folder_;
    const test::InEnvironment hives_{_T("KADATA_REGISTRY_DIR"), folder_.Path(_T("registry")).c_str()};
    const Text branch_ = _T("Software\\KaData Tests\\") + Widen(std::to_string(GetCurrentProcessId()));
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
        {_T("number"), REG_DWORD, std::string("\x07\0\0\0", 4)},
        {_T("list"), REG_MULTI_SZ, std::string("a\0\0\0\0\0", 6)},
        {_T("big"), REG_QWORD, std::string("12345678")},
        {_T("nothing"), REG_BINARY, ""},
        {nullptr, REG_SZ, std::string("d\0\0\0", 4)},
        {_T("\u00C4 name with blanks"), REG_BINARY, std::string("\0\xFF\0", 3)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.type);
        EXPECT_EQ(Set(key_, row.name, row.type, row.bytes), DWORD{ERROR_SUCCESS});
        EXPECT_EQ(Get(key_, row.name), std::to_string(row.type) + ":" + row.bytes);
    }
    EXPECT_EQ(Get(key_, _T("")), Get(key_, nullptr));
    EXPECT_EQ(Get(key_, _T("\u00E4 NAME with Blanks")), std::string("3:\0\xFF\0", 5));
    EXPECT_EQ(Set(key_, _T("TEXT"), REG_DWORD, "new!"), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(Get(key_, _T("text")), "4:new!");
    EXPECT_EQ(RegDeleteValueW(key_, _T("Text")), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueW(key_, _T("text")), static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(Get(key_, _T("text")), "error 2");
}

TEST_F(Registry, SaysHowMuchRoomAValueNeeds) {
    Set(key_, _T("v"), REG_BINARY, "12345");
    BYTE buffer[5] = {};
    DWORD size = 0, type = 0;
    const auto query = [&](BYTE* data) { return RegQueryValueExW(key_, _T("v"), nullptr, &type, data, &size); };
    EXPECT_EQ(query(nullptr), ERROR_SUCCESS);
    EXPECT_EQ(std::pair(size, type), std::pair(DWORD{5}, DWORD{REG_BINARY}));
    size = 4;
    EXPECT_EQ(query(buffer), static_cast<LSTATUS>(ERROR_MORE_DATA));
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(Get(key_, _T("v"), 5), "3:12345");
    EXPECT_EQ(RegQueryValueExW(key_, _T("v"), nullptr, nullptr, buffer, nullptr), static_cast<LSTATUS>(ERROR_INVALID_PARAMETER));
}

TEST_F(Registry, OpensKeysByPathWithoutRegardToCase) {
    HKEY sub = nullptr;
    EXPECT_EQ(Open(key_, _T("\u00C4a\\Sub"), KEY_WRITE, &sub), REG_CREATED_NEW_KEY);
    EXPECT_EQ(Get(sub, _T("v")), "error 5");  // not opened for reading
    EXPECT_EQ(RegCloseKey(sub), ERROR_SUCCESS);
    EXPECT_EQ(Open(key_, _T("\u00E4A\\sUB\\"), KEY_READ, &sub), REG_OPENED_EXISTING_KEY);
    EXPECT_EQ(Set(sub, _T("v"), REG_NONE, ""), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegCloseKey(sub), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(sub), static_cast<LSTATUS>(ERROR_INVALID_HANDLE));

    const std::pair<const TCHAR*, LSTATUS> rows[] = {
        {_T("\u00E4a"), 0},
        {nullptr, 0},
        {_T("\u00C4a\\Sub\\none"), ERROR_FILE_NOT_FOUND},
        {_T("Sub"), ERROR_FILE_NOT_FOUND},
        {_T("\\\u00C4a"), ERROR_BAD_PATHNAME},
    };
    for (const auto& [path, status] : rows) {
        SCOPED_TRACE(path == nullptr ? "null" : test::Narrow(path));
        HKEY opened = key_;
        EXPECT_EQ(RegOpenKeyExW(key_, path, 0, KEY_READ, &opened), status);
        EXPECT_EQ(opened == nullptr, status != 0);
        EXPECT_TRUE(opened == nullptr || RegCloseKey(opened) == ERROR_SUCCESS);
    }
    EXPECT_EQ(RegCloseKey(HKEY_CURRENT_USER), ERROR_SUCCESS);
}

TEST_F(Registry, RemovesAKeyWithAllBelowIt) {
    HKEY below = nullptr;
    Open(key_, _T("sub\\a\\b"), KEY_READ | KEY_WRITE, &below);
    Set(key_, _T("kept"), REG_BINARY, "2");
    EXPECT_EQ(RegDeleteTreeW(key_, _T("SUB")), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteTreeW(key_, _T("sub")), static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(Set(below, _T("v"), REG_BINARY, "1"), ERROR_KEY_DELETED);
    EXPECT_EQ(Get(below, _T("v")), "error 1018");
    EXPECT_EQ(Get(key_, _T("kept")), "3:2");
    EXPECT_EQ(RegCloseKey(below), ERROR_SUCCESS);
    EXPECT_EQ(RegOpenKeyExW(key_, _T("sub\\a"), 0, KEY_READ, &below), static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
}

}  // namespace
