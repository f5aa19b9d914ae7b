#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>
// after it
#include <ktmw32.h>

#include <set>
#include <string>
#include <vector>

#include "support/environment.h"
#include "support/functions.h"
#include "support/temp_folder.h"
#include "support/wine.h"

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

TEST_F(Registry, GivesAValueByPathInOneCall) {
    HKEY sub = nullptr;
    Open(key_, _T("a\\b"), KEY_WRITE, &sub);
    Set(sub, _T("number"), REG_DWORD, std::string("\x07\0\0\0", 4));
    Set(sub, _T("text"), REG_SZ, std::string("%\0X\0%\0", 6));  // without terminator
    Set(sub, _T("path"), REG_EXPAND_SZ, std::string("%\0K\0D\0X\0%\0\0\0", 12));
    RegCloseKey(sub);
    const test::InEnvironment variable(_T("KDX"), _T("v"));
    const std::string number("\x07\0\0\0", 4), text("%\0X\0%\0\0\0", 8), path("%\0K\0D\0X\0%\0\0\0", 12);
    const struct {
        const TCHAR* name;
        DWORD flags;
        std::string result;  // "TYPE:bytes" or "error N"
    } rows[] = {
        {_T("number"), RRF_RT_REG_DWORD, "4:" + number},
        {_T("NUMBER"), RRF_RT_ANY, "4:" + number},
        {_T("number"), RRF_RT_REG_SZ, "error 1630"},
        {_T("text"), RRF_RT_REG_SZ, "1:" + text.substr(0, test::UnlessWine<std::size_t>(8, 6))},
        {_T("text"), RRF_RT_REG_DWORD | RRF_RT_REG_BINARY, "error 1630"},
        {_T("path"), RRF_RT_REG_SZ, std::string("1:v\0\0\0", 6)},
        {_T("path"), RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND, "2:" + path},
        {_T("path"), RRF_RT_REG_EXPAND_SZ, "error 87"},
        {_T("none"), RRF_RT_ANY, "error 2"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(test::Narrow(row.name) + " " + std::to_string(row.flags));
        DWORD type = 0, size = 100;
        std::string bytes(size, 'x');
        const LSTATUS status = RegGetValueW(key_, _T("A\\B"), row.name, row.flags, &type, bytes.data(), &size);
        EXPECT_EQ(
            status == ERROR_SUCCESS ? std::to_string(type) + ":" + bytes.substr(0, size) : "error " + std::to_string(status),
            row.result);
    }
    DWORD size = 3;
    BYTE small[3] = {1, 1, 1};
    EXPECT_EQ(RegGetValueW(key_, _T("a\\b"), _T("number"), RRF_RT_ANY | RRF_ZEROONFAILURE, nullptr, small, &size),
              static_cast<LSTATUS>(ERROR_MORE_DATA));
    EXPECT_EQ(std::pair(size, small[2]), std::pair(DWORD{4}, BYTE{0}));
}

TEST_F(Registry, ListsWhatIsBelowAKey) {
    HKEY sub = nullptr;
    for (const TCHAR* name : {_T("Bb"), _T("a"), _T("\u00C4\u00E4")}) {
        Open(key_, name, KEY_READ, &sub);
        RegCloseKey(sub);
    }
    Set(key_, _T("Value"), REG_BINARY, "12345");
    Set(key_, nullptr, REG_SZ, "");
    std::multiset<Text> keys, values;
    TCHAR name[10];
    LSTATUS status = ERROR_SUCCESS;
    for (DWORD i = 0, length = 10; (status = RegEnumKeyExW(key_, i, name, &length, nullptr, nullptr, nullptr, nullptr)) == 0;
         length = 10, ++i) {
        keys.emplace(name, length);
    }
    EXPECT_EQ(status, static_cast<LSTATUS>(ERROR_NO_MORE_ITEMS));
    EXPECT_EQ(keys, (std::multiset<Text>{_T("Bb"), _T("a"), _T("\u00C4\u00E4")}));
    for (DWORD i = 0, length = 10; (status = RegEnumValueW(key_, i, name, &length, nullptr, nullptr, nullptr, nullptr)) == 0;
         length = 10, ++i) {
        values.emplace(name, length);
    }
    EXPECT_EQ(status, static_cast<LSTATUS>(ERROR_NO_MORE_ITEMS));
    EXPECT_EQ(values, (std::multiset<Text>{_T(""), _T("Value")}));
    DWORD counts[5] = {};
    EXPECT_EQ(RegQueryInfoKeyW(key_, nullptr, nullptr, nullptr, &counts[0], &counts[1], nullptr, &counts[2], &counts[3],
                               &counts[4], nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(std::vector<DWORD>(std::begin(counts), std::end(counts)), (std::vector<DWORD>{3, 2, 2, 5, 5}));
    DWORD length = 1;  // no room for any of them
    EXPECT_EQ(RegEnumKeyExW(key_, 0, name, &length, nullptr, nullptr, nullptr, nullptr), static_cast<LSTATUS>(ERROR_MORE_DATA));
}

TEST_F(Registry, DeletesKeysThatHaveNoneBelow) {
    HKEY below = nullptr;
    Open(key_, _T("sub\\a"), KEY_READ, &below);
    EXPECT_EQ(RegDeleteKeyW(key_, _T("sub")), static_cast<LSTATUS>(ERROR_ACCESS_DENIED));
    EXPECT_EQ(RegDeleteKeyExW(key_, _T("SUB\\A"), KEY_WOW64_64KEY, 0), ERROR_SUCCESS);
    EXPECT_EQ(Get(below, _T("v")), "error 1018");
    RegCloseKey(below);
    EXPECT_EQ(RegDeleteKeyW(key_, _T("sub")), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteKeyW(key_, _T("sub")), static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
}

TEST_F(Registry, ShowsTheUsersClassesInTheClassesRoot) {
    const Text name = _T("KaData.Test.") + Widen(std::to_string(GetCurrentProcessId()));
    const Text path = _T("Software\\Classes\\") + name;
    HKEY sub = nullptr;
    const HKEY hive = test::UnlessWine(HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE);
    Open(hive, (path + _T("\\LocalServer32")).c_str(), KEY_WRITE, &sub);
    Set(sub, nullptr, REG_SZ, std::string("x\0\0\0", 4));
    RegCloseKey(sub);
    ASSERT_EQ(RegOpenKeyExW(HKEY_CLASSES_ROOT, name.c_str(), 0, KEY_READ, &sub), ERROR_SUCCESS);
    TCHAR text[10];
    DWORD size = sizeof text;
    EXPECT_EQ(RegGetValueW(sub, _T("localserver32"), nullptr, RRF_RT_REG_SZ, nullptr, text, &size), ERROR_SUCCESS);
    EXPECT_EQ(Text(text), _T("x"));
    RegCloseKey(sub);
    EXPECT_EQ(RegDeleteTreeW(hive, path.c_str()), ERROR_SUCCESS);
    EXPECT_EQ(RegOpenKeyExW(HKEY_CLASSES_ROOT, name.c_str(), 0, KEY_READ, &sub), static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND));
}

TEST_F(Registry, TakesPartInTransactionsByFunctionsLookedUp) {
    const HMODULE registry = LoadLibraryW(_T("Advapi32.dll")), manager = LoadLibraryW(_T("KtmW32.dll"));
    ASSERT_TRUE(registry != nullptr && manager != nullptr);
    const auto create = test::Function<decltype(RegCreateKeyTransactedW)>(registry, "RegCreateKeyTransactedW");
    const auto begin = test::Function<decltype(CreateTransaction)>(manager, "CreateTransaction");
    const auto commit = test::Function<decltype(CommitTransaction)>(manager, "CommitTransaction");
    ASSERT_TRUE(create && begin && commit);
    HKEY sub = nullptr;
    const HANDLE transaction = begin(nullptr, nullptr, 0, 0, 0, 0, nullptr);
    ASSERT_NE(transaction, INVALID_HANDLE_VALUE);
    DWORD disposition = 0;
    ASSERT_EQ(create(key_, _T("new"), 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr, &sub, &disposition, transaction, nullptr),
              test::UnlessWine<LSTATUS>(ERROR_SUCCESS, ERROR_CALL_NOT_IMPLEMENTED));
    if (sub == nullptr)
        return;
    EXPECT_EQ(disposition, DWORD{REG_CREATED_NEW_KEY});
    EXPECT_EQ(Set(sub, _T("v"), REG_BINARY, "1"), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(Get(sub, _T("v")), "3:1");
    EXPECT_TRUE(commit(transaction));
    RegCloseKey(sub);
    CloseHandle(transaction);
    ASSERT_EQ(RegOpenKeyExW(key_, _T("new"), 0, KEY_READ, &sub), ERROR_SUCCESS);
    EXPECT_EQ(Get(sub, _T("v")), "3:1");
    RegCloseKey(sub);
    FreeLibrary(manager);
    FreeLibrary(registry);
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
