#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <algorithm>
#include <string>

#include "support/temp_folder.h"

namespace {

using test::Narrow;
using test::TempFolder;
using test::Text;

constexpr DWORD kRoom = 200;

// Calls with a buffer of `size` characters: the result and what was written, zeros shown as '|'.
template <class Call>
std::string Filled(DWORD size, Call call) {
    Text buffer(kRoom, _T('~'));
    const DWORD count = call(buffer.data(), size);
    EXPECT_EQ(buffer[size], _T('~'));
    std::string shown = Narrow({buffer.data(), count + 1});
    std::replace(shown.begin(), shown.end(), '\0', '|');
    return std::to_string(count) + " " + shown;
}

std::string Get(const Text& file, const TCHAR* section, const TCHAR* key, const TCHAR* by_default = _T("def  "),
                DWORD size = kRoom - 1) {
    return Filled(size, [&](LPWSTR buffer, DWORD room) {
        return GetPrivateProfileStringW(section, key, by_default, buffer, room, file.c_str());
    });
}

const char kSample[] =
    "outside=1\r\n ; comment\r\n"
    "[First]\r\n  one =  v 1  \r\nTwo=\"q v\"\r\nthree='s'\nnested=\"'x'\"\r\nempty=\r\nbare\r\n"
    ";hidden=1\r\ntail=a ; b=c\r\nopen=\"a\r\none=again\r\n\r\n"
    "[next]\r\na=\xE4\r\n"
    "[FIRST]\r\nlate=1\r\nlast=\"\"";

TEST(Profile, ReadsValues) {
    const TempFolder folder;
    const Text file = folder.Write(_T("sample.ini"), kSample);
    const std::pair<const TCHAR*, const char*> rows[] = {
        {_T("ONE"), "3 v 1|"},  {_T("two"), "3 q v|"},  {_T("three"), "1 s|"}, {_T("nested"), "3 'x'|"},
        {_T("empty"), "0 |"},   {_T("bare"), "3 def|"}, {_T("a"), "3 def|"},   {_T("tail"), "7 a ; b=c|"},
        {_T("open"), "2 \"a|"}, {_T("late"), "3 def|"},  // in the second section of that name
    };
    for (const auto& [key, expected] : rows)
        EXPECT_EQ(Get(file, _T("first"), key), expected) << Narrow(key);
    EXPECT_EQ(Get(file, _T("next"), _T("a")), "1 \xC3\xA4|");
    EXPECT_EQ(Get(file, _T("next"), _T("none"), nullptr), "0 |");
    const std::string wide("\xFF\xFE[\0s\0]\0\r\0\n\0a\0=\0\x2D\x4E\n\0\x0A\x0A=\0b\0", 26);
    EXPECT_EQ(Get(folder.Write(_T("wide.ini"), wide), _T("S"), _T("a")), "1 \xE4\xB8\xAD|");
    EXPECT_EQ(Get(folder.Path(_T("wide.ini")), _T("S"), _T("\u0A0A")), "1 b|");
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(Get(folder.Path(_T("none.ini")), _T("S"), _T("a")), "3 def|");
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(Get(folder.Path(), _T("S"), _T("a")), "3 def|");
}

TEST(Profile, ListsSectionsKeysAndLines) {
    const TempFolder folder;
    const Text file = folder.Write(_T("sample.ini"), "[a b]\none = \"1\"\n;c\ntwo=2 ; x\n\n[b]\n[empty]\n");
    const auto lines = [&](const TCHAR* section, DWORD size) {
        return Filled(size, [&](LPWSTR to, DWORD room) { return GetPrivateProfileSectionW(section, to, room, file.c_str()); });
    };
    const auto sections = [&](DWORD size) {
        return Filled(size, [&](LPWSTR to, DWORD room) { return GetPrivateProfileSectionNamesW(to, room, file.c_str()); });
    };
    EXPECT_EQ(Get(file, nullptr, _T("ignored")), "12 a b|b|empty||");
    EXPECT_EQ(sections(kRoom - 1), "12 a b|b|empty||");
    EXPECT_EQ(Get(file, _T("A B"), nullptr), "8 one|two||");
    EXPECT_EQ(lines(_T("A B"), kRoom - 1), "18 one=\"1\"|two=2 ; x||");
    EXPECT_EQ(lines(_T("empty"), kRoom - 1) + lines(_T("none"), kRoom - 1), "0 |0 |");
    EXPECT_EQ(Get(file, _T("none"), nullptr, _T("def")), "3 def|");
    // Cut: a value and the default at the size less one, lists less two.
    EXPECT_EQ(Get(file, _T("a b"), _T("two"), nullptr, 4), "3 2 ;|");
    EXPECT_EQ(Get(file, _T("a b"), _T("none"), _T("def"), 3), "2 de|");
    EXPECT_EQ(Get(file, _T("a b"), nullptr, nullptr, 7), "5 one|t|");
    EXPECT_EQ(sections(8), "6 a b|b||");
    EXPECT_EQ(lines(_T("a b"), 7), "5 one=\"|");
}

TEST(Profile, ReadsNumbers) {
    const TempFolder folder;
    const Text file = folder.Write(_T("n.ini"), "[n]\na=12\nb=-5\nc=0x1F\nd=12x\ne=x\nf=\ng=\" 7\"\nh=+4\ni=4294967297\n");
    Text key = _T("a");
    for (const int number : {12, -5, 31, 12, 0, -77, 7, 4, 1, -77}) {
        EXPECT_EQ(static_cast<int>(GetPrivateProfileIntW(_T("N"), key.c_str(), -77, file.c_str())), number) << Narrow(key);
        ++key[0];
    }
}

TEST(Profile, IsWritten) {
    const TempFolder folder;
    const auto set = [&](const TCHAR* section, const TCHAR* key, const TCHAR* text, const TCHAR* file = _T("w.ini")) {
        return WritePrivateProfileStringW(section, key, text, folder.Path(file).c_str());
    };
    EXPECT_TRUE(set(_T("S"), _T("k"), _T("v")));
    EXPECT_TRUE(set(_T("T"), _T("a"), _T("\u00E4")) && set(_T("s"), _T("z"), _T("2")) && set(_T("S"), _T("K"), _T("\"w\"")));
    EXPECT_EQ(folder.Read(_T("w.ini")), "[S]\r\nk=\"w\"\r\nz=2\r\n[T]\r\na=\xE4\r\n");
    EXPECT_TRUE(set(_T("S"), _T("k"), nullptr) && set(_T("S"), _T("k"), nullptr) && set(_T("none"), nullptr, nullptr));
    EXPECT_TRUE(set(_T("t"), nullptr, _T("x")));
    EXPECT_EQ(folder.Read(_T("w.ini")), "[S]\r\nz=2\r\n");
    EXPECT_FALSE(set(nullptr, nullptr, nullptr));
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(set(_T("S"), _T("k"), _T("v"), _T("no\\w.ini")));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});

    folder.Write(_T("o.ini"), std::string("\xFF\xFE[\0s\0]\0", 8));
    EXPECT_TRUE(set(_T("s"), _T("b"), _T("\u4E2D"), _T("o.ini")));
    EXPECT_EQ(folder.Read(_T("o.ini")), std::string("\xFF\xFE[\0s\0]\0\r\0\n\0b\0=\0\x2D\x4E\r\0\n\0", 22));
    const Text rest = folder.Write(_T("r.ini"), "; top\r\n[s]\r\n;c\r\nk = 1\r\n[t]\r\n  x = \xFF\r\n");
    EXPECT_TRUE(set(_T("s"), _T("K"), _T("2"), _T("r.ini")));
    EXPECT_EQ(folder.Read(_T("r.ini")).substr(0, 21), "; top\r\n[s]\r\n;c\r\nk=2\r\n");
    EXPECT_EQ(Get(rest, _T("t"), _T("x")), "1 \xC3\xBF|");
}

}  // namespace
