// data/resources.rc is compiled into this program and, with other texts, into resource_module.dll beside it.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>

#include "support/last_error.h"
#include "support/temp_folder.h"

namespace {

using test::Text;

Text String(HMODULE module, UINT id, int capacity = 80) {
    TCHAR text[80] = _T("unchanged");
    const int count = LoadStringW(module, id, text, capacity);
    EXPECT_EQ(count, lstrlenW(text));
    return text;
}

std::string Data(HMODULE module, HRSRC resource) {
    const auto* const bytes = static_cast<const char*>(LockResource(LoadResource(module, resource)));
    return bytes == nullptr ? "failed" : std::string(bytes, SizeofResource(module, resource));
}

class Resources : public testing::TestWithParam<bool> {
protected:
    Resources() : module_(GetParam() ? LoadLibraryExW(_T("resource_module"), nullptr, LOAD_LIBRARY_AS_DATAFILE) : nullptr) {}
    ~Resources() override { EXPECT_TRUE(!GetParam() || FreeLibrary(module_)); }

    HMODULE module_;
};

TEST_P(Resources, HaveStrings) {
    EXPECT_EQ(String(module_, 1), GetParam() ? _T("module") : _T("program"));
    EXPECT_EQ(String(module_, 16), _T("first of its block"));
    EXPECT_EQ(String(module_, 31), _T("last of its block"));
    EXPECT_EQ(String(module_, 40), _T("\u00E4\u20AC\U0001F9B7"));
    EXPECT_EQ(String(module_, 16, 6), _T("first"));
    EXPECT_EQ(String(module_, 2), _T(""));
    TCHAR none[9];
    EXPECT_EQ(LoadStringW(module_, 5000, none, 9), 0);

    const TCHAR* in_place = nullptr;
    ASSERT_EQ(LoadStringW(module_, 31, reinterpret_cast<LPTSTR>(&in_place), 0), 17);
    EXPECT_EQ(Text(in_place, 17), _T("last of its block"));
}

TEST_P(Resources, AreFoundByNumberAndNameAndChosenByLanguage) {
    const struct {
        LPCTSTR name, type;
        const char* data;
    } rows[] = {{MAKEINTRESOURCEW(7), RT_RCDATA, "BADC"},
                {_T("#7"), _T("#10"), "BADC"},
                {_T("teeth"), RT_RCDATA, "named"},
                {_T("Jaws"), _T("Patterns"), "typed by name"},
                {MAKEINTRESOURCEW(101), RT_RCDATA, "only fr-FR"}};
    for (const auto& row : rows)
        EXPECT_EQ(Data(module_, FindResourceW(module_, row.name, row.type)), row.data);
    const auto in = [&](WORD language, WORD id) {
        return Data(module_, FindResourceExW(module_, RT_RCDATA, MAKEINTRESOURCEW(id), language));
    };
    EXPECT_EQ(in(MAKELANGID(LANG_GERMAN, 1), 100), "de-DE");
    EXPECT_EQ(in(MAKELANGID(0x0C, 1), 100), "fr-FR");
    EXPECT_EQ(in(MAKELANGID(LANG_GERMAN, 1), 7), "BADC");  // there is a neutral one
}

TEST_P(Resources, TellWhatIsMissing) {
    const auto error = [&](LPCTSTR type, LPCTSTR name, WORD language = 0) {
        return test::ErrorOf(FindResourceExW(module_, type, name, language));
    };
    EXPECT_EQ(error(MAKEINTRESOURCEW(99), MAKEINTRESOURCEW(7)), ERROR_RESOURCE_TYPE_NOT_FOUND);
    EXPECT_EQ(error(RT_RCDATA, MAKEINTRESOURCEW(8)), ERROR_RESOURCE_NAME_NOT_FOUND);
    EXPECT_EQ(error(RT_RCDATA, _T("TEET")), ERROR_RESOURCE_NAME_NOT_FOUND);
    EXPECT_EQ(error(RT_RCDATA, MAKEINTRESOURCEW(100), MAKELANGID(0x10, 1)), ERROR_RESOURCE_LANG_NOT_FOUND);
}

INSTANTIATE_TEST_SUITE_P(Modules, Resources, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& info) { return info.param ? "OfAModule" : "OfTheProgram"; });

}  // namespace
