// Compiled .res files and damaged files, which the layer reads itself.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>

#include "support/child_process.h"
#include "support/last_error.h"
#include "support/temp_folder.h"

namespace {

using test::TempFolder, test::Text;

Text Module() {
    const Text program = test::OwnPath();
    return program.substr(0, program.find_last_of(_T('\\')) + 1) + _T("resource_module.dll");
}

std::string Data(HMODULE module, HRSRC resource) {
    const auto* const bytes = static_cast<const char*>(LockResource(LoadResource(module, resource)));
    return bytes == nullptr ? "" : std::string(bytes, SizeofResource(module, resource));
}

constexpr int kAll = 9;

// How many of the resources of the undamaged file are found in a module; reads all of them.
int CountFound(HMODULE module) {
    int found = 0;
    for (const WORD id : {WORD{7}, WORD{100}, WORD{101}})
        found += !Data(module, FindResourceW(module, MAKEINTRESOURCEW(id), RT_RCDATA)).empty();
    found += !Data(module, FindResourceW(module, _T("TEETH"), RT_RCDATA)).empty();
    found += !Data(module, FindResourceW(module, _T("JAWS"), _T("PATTERNS"))).empty();
    TCHAR text[100];
    for (const UINT id : {1u, 16u, 31u, 40u})
        found += LoadStringW(module, id, text, 100) > 0;
    return found;
}

// The same in a file of these bytes; 0 when it is refused. The file is removed then: to replace a file's bytes again and again
// would wait for the disk.
int CountFound(const TempFolder& folder, const std::string& bytes) {
    const Text path = folder.Write(_T("resources.res"), bytes);
    const HMODULE module = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    EXPECT_TRUE(module != nullptr || GetLastError() == ERROR_BAD_EXE_FORMAT);
    const int found = module == nullptr ? 0 : CountFound(module);
    EXPECT_TRUE(module == nullptr || FreeLibrary(module));
    EXPECT_TRUE(DeleteFileW(path.c_str()));
    return found;
}

TEST(LinuxModules, ReadResourcesAsFarAsTheFileGoesAndSurviveDamage) {
    const TempFolder folder;
    for (const auto& [path, step] : {std::pair<Text, std::size_t>{test::OwnPath() + _T(".res"), 1}, {Module(), 16}}) {
        const std::string whole = test::ReadBytes(path);
        EXPECT_EQ(CountFound(folder, whole), kAll);
        int before = 0;
        for (std::size_t length = 0; length < whole.size(); length += step) {
            const int found = CountFound(folder, whole.substr(0, length));
            EXPECT_GE(found, before) << length;
            before = found;
        }
        for (std::size_t i = 0; i < whole.size(); ++i) {
            std::string damaged = whole;
            damaged[i] = static_cast<char>(damaged[i] ^ 0xFF);
            EXPECT_LE(whole[i] != 0 || i % step == 0 ? CountFound(folder, damaged) : 0, kAll);
        }
    }
}

TEST(LinuxModules, LoseOnlyTheResourcesThatATableInACircleHeld) {
    const TempFolder folder;
    std::string image = test::ReadBytes(Module());
    const std::size_t raw_pointer = image.find(".rsrc") + 20;
    const std::size_t directory = static_cast<BYTE>(image.at(raw_pointer)) + 256u * static_cast<BYTE>(image.at(raw_pointer + 1));
    const std::size_t first_type = directory + 16;  // PATTERNS: texts come before numbers
    ASSERT_EQ(image.at(first_type + 7), '\x80');
    image.replace(first_type + 4, 4, std::string("\0\0\0\x80", 4));  // leads back to the root
    const HMODULE module = LoadLibraryExW(folder.Write(_T("circle.dll"), image).c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(test::ErrorOf(FindResourceW(module, _T("JAWS"), _T("PATTERNS"))), ERROR_RESOURCE_TYPE_NOT_FOUND);
    EXPECT_EQ(Data(module, FindResourceW(module, _T("TEETH"), RT_RCDATA)), "named");
    EXPECT_TRUE(FreeLibrary(module));
}

}  // namespace
