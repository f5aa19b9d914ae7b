// Compiled .res files, the user's language, and damaged files, which the layer reads itself.

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "support/temp_folder.h"

namespace {

using test::TempFolder;
using test::Text;

constexpr WORD kIds[] = {7, 100, 101};
constexpr UINT kStrings[] = {1, 16, 31, 40};

Text Beside(const TCHAR* name) {
    TCHAR path[4 * MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, 4 * MAX_PATH);
    const Text program = path;
    return name == nullptr ? program + _T(".res") : program.substr(0, program.find_last_of(_T('\\')) + 1) + name;
}

std::string Data(HMODULE module, HRSRC resource) {
    const auto* const bytes = static_cast<const char*>(LockResource(LoadResource(module, resource)));
    return bytes == nullptr ? "" : std::string(bytes, SizeofResource(module, resource));
}

// How many of the resources that the undamaged file has are found in a module; reads all of them.
int CountFound(HMODULE module) {
    int found = 0;
    for (const WORD id : kIds) {
        found += !Data(module, FindResourceW(module, MAKEINTRESOURCEW(id), RT_RCDATA)).empty();
    }
    found += !Data(module, FindResourceW(module, _T("TEETH"), RT_RCDATA)).empty();
    found += !Data(module, FindResourceW(module, _T("JAWS"), _T("PATTERNS"))).empty();
    for (const UINT id : kStrings) {
        TCHAR text[100];
        found += LoadStringW(module, id, text, 100) > 0;
    }
    return found;
}

// The same in a file, which is removed then: to replace a file's bytes again and again would wait for the disk. 0 when it is
// refused.
int CountFound(const Text& path) {
    const HMODULE module = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    EXPECT_TRUE(module != nullptr || GetLastError() == ERROR_BAD_EXE_FORMAT);
    const int found = module == nullptr ? 0 : CountFound(module);
    EXPECT_TRUE(module == nullptr || FreeLibrary(module));
    EXPECT_TRUE(DeleteFileW(path.c_str()));
    return found;
}

constexpr int kAll = 9;

TEST(CompiledResources, AreReadAsFarAsTheFileGoes) {
    const TempFolder folder;
    const std::string whole = test::ReadBytes(Beside(nullptr));
    int before = 0;
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const int found = CountFound(folder.Write(_T("cut.res"), whole.substr(0, length)));
        EXPECT_GE(found, before) << length;
        before = found;
    }
    EXPECT_EQ(before, kAll);
}

TEST(CompiledResources, SurviveDamage) {
    const TempFolder folder;
    const std::string whole = test::ReadBytes(Beside(nullptr));
    for (std::size_t i = 0; i < whole.size(); ++i) {
        std::string damaged = whole;
        damaged[i] = static_cast<char>(damaged[i] ^ 0xFF);
        EXPECT_LE(CountFound(folder.Write(_T("damaged.res"), damaged)), kAll);
    }
}

TEST(PeResources, SurviveDamage) {
    const TempFolder folder;
    const std::string whole = test::ReadBytes(Beside(_T("resource_module.dll")));
    EXPECT_EQ(CountFound(folder.Write(_T("whole.dll"), whole)), kAll);
    for (std::size_t i = 0; i < whole.size(); ++i) {
        if (whole[i] != 0 || i % 16 == 0) {
            std::string damaged = whole;
            damaged[i] = static_cast<char>(damaged[i] ^ 0xFF);
            EXPECT_LE(CountFound(folder.Write(_T("damaged.dll"), damaged)), kAll);
        }
    }
    for (std::size_t length = 0; length < whole.size(); length += 16) {
        EXPECT_LE(CountFound(folder.Write(_T("cut.dll"), whole.substr(0, length))), kAll);
    }
}

// The offset in the file of a PE image's resource directory.
std::size_t DirectoryOf(const std::string& image) {
    constexpr std::size_t kRawPointer = 20;
    const std::size_t section = image.find(".rsrc") + kRawPointer;
    return static_cast<unsigned char>(image.at(section)) |
           static_cast<std::size_t>(static_cast<unsigned char>(image.at(section + 1))) << 8;
}

TEST(PeResources, LoseOnlyWhatATableInACircleHeld) {
    const TempFolder folder;
    std::string image = test::ReadBytes(Beside(_T("resource_module.dll")));
    const std::size_t first_type = DirectoryOf(image) + 16;  // PATTERNS: texts come before numbers
    ASSERT_EQ(image.at(first_type + 7), '\x80');
    image.replace(first_type + 4, 4, std::string("\0\0\0\x80", 4));  // leads back to the root
    const HMODULE module = LoadLibraryExW(folder.Write(_T("circle.dll"), image).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(FindResourceW(module, _T("JAWS"), _T("PATTERNS")), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_RESOURCE_TYPE_NOT_FOUND);
    EXPECT_EQ(Data(module, FindResourceW(module, _T("TEETH"), RT_RCDATA)), "named");
    EXPECT_TRUE(FreeLibrary(module));
}

TEST(ResourceLanguage, IsTheUsersElseANeighbourElseEnglishElseTheFirst) {
    const struct {
        const TCHAR* locale;
        WORD id;
        std::string data;
    } rows[] = {
        {_T("fr_FR.UTF-8"), 100, "fr-FR"}, {_T("de_CH.UTF-8"), 100, "de-DE"}, {_T("ja_JP"), 100, "en-US"},
        {_T("en_GB"), 100, "en-US"},       {_T("de_DE"), 101, "only fr-FR"},
    };
    TCHAR before[200] = {};
    const DWORD had = GetEnvironmentVariableW(_T("LC_ALL"), before, 200);
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        SetEnvironmentVariableW(_T("LC_ALL"), row.locale);
        EXPECT_EQ(Data(nullptr, FindResourceW(nullptr, MAKEINTRESOURCEW(row.id), RT_RCDATA)), row.data);
    }
    SetEnvironmentVariableW(_T("LC_ALL"), had > 0 ? before : nullptr);
}

}  // namespace
