// Visual styles: those of the system, where there are any, and those of a library that the test brings.

#include <gtest/gtest.h>
#include <kadata/directory.h>
#include <kadata/theme_util.h>

#include <algorithm>
#include <iterator>

#include "desktop/picture.h"
#include "fake_theme/fake_theme.h"
#include "support/temp_folder.h"

namespace {

constexpr LPCTSTR FAKE_LIBRARY = _T("fake_theme.dll");

TEST(ThemeUtil, AnswersNoWithoutATheme) {
    EXPECT_EQ(CThemeUtil::IsWinXPOrHigher() != 0, CThemeUtil::GetWinVersion() >= 0x50001);
    EXPECT_EQ(CThemeUtil::IsWinVistaOrHigher() != 0, CThemeUtil::GetWinVersion() >= 0x60000);
    CThemeUtil util;
    WCHAR name[8] = {};
    DWORD flags = 9;
    EXPECT_FALSE(util.OpenThemeData(nullptr, _T("BUTTON")));
    EXPECT_FALSE(util.IsLunaTheme() || util.IsAeroTheme());
    EXPECT_FALSE(util.DrawThemeParentBackground(nullptr, nullptr, nullptr));
    EXPECT_FALSE(util.GetThemeSysSize(1));
    EXPECT_FALSE(util.GetCurrentThemeName(name, 8, name, 8, name, 8));
    EXPECT_FALSE(util.SetThemeAppProperties(0));
    EXPECT_FALSE(util.GetThemeAppProperties(flags));
    EXPECT_EQ(util.LoadBitmap(name), nullptr);
    EXPECT_EQ(flags, 9U);
}

TEST(ThemeUtil, BlendsOnEverySystem) {
    const CThemeUtil util;
    const desktop_test::Picture from(2, 1, RGB(1, 2, 3));
    const desktop_test::Picture to(2, 1, RGB(40, 50, 60));
    SetPixel(from.Context(), 1, 0, RGB(255, 0, 255));
    EXPECT_TRUE(util.TransparentBlt(to.Context(), 0, 0, 2, 1, from.Context(), 0, 0, 2, 1, RGB(255, 0, 255)));
    EXPECT_EQ(GetPixel(to.Context(), 0, 0), RGB(1, 2, 3));
    EXPECT_EQ(GetPixel(to.Context(), 1, 0), RGB(40, 50, 60));
    TRIVERTEX corners[] = {{0, 0, 0xFF00, 0, 0, 0}, {2, 1, 0xFF00, 0, 0, 0}};
    GRADIENT_RECT all = {0, 1};
    EXPECT_TRUE(util.GradientFill(to.Context(), corners, 2, &all, 1, GRADIENT_FILL_RECT_H));
    EXPECT_EQ(GetPixel(to.Context(), 1, 0), RGB(255, 0, 0));
    EXPECT_TRUE(util.GradientFill(nullptr, corners, 2, &all, 1, GRADIENT_FILL_RECT_H));  // called is called
}

class FakeUtil : public CThemeUtil {
public:
    explicit FakeUtil(LPCTSTR library = FAKE_LIBRARY) : CThemeUtil(library) {}
    using CThemeUtil::FreeLibrary;

    BOOL Open() { return OpenThemeData(GetDesktopWindow(), _T("BUTTON;STATIC")); }
};

class ThemeUtilWithStyle : public testing::Test {
protected:
    ThemeUtilWithStyle() : library_(LoadLibraryW(FAKE_LIBRARY)) {
        const FARPROC found = GetProcAddress(library_, "TheFakeTheme");
        theme_ = found != nullptr ? reinterpret_cast<TheFakeThemeFunction*>(reinterpret_cast<void*>(found))() : nullptr;
    }
    ~ThemeUtilWithStyle() override { FreeLibrary(library_); }
    void SetUp() override {
        ASSERT_NE(theme_, nullptr);
        *theme_ = FakeTheme();
        theme_->theme = theme_;
        SetFile(_T("Luna"), _T("Luna.msstyles"));
    }

    // A copy of the style under another name.
    void SetFile(LPCTSTR subfolder, LPCTSTR name) {
        TCHAR program[MAX_PATH] = {};
        GetModuleFileNameW(nullptr, program, MAX_PATH);
        const CString style = CString(program).Left(CString(program).ReverseFind(_T('\\')) + 1) + _T("skin_style.dll");
        const CString path = folder_.Path(subfolder).c_str();
        CDirectory::Make(path);
        lstrcpynW(theme_->file, CDirectory::Concat(path, name), static_cast<int>(std::size(theme_->file)));
        ASSERT_TRUE(CopyFileW(style, theme_->file, FALSE));
    }

    FakeTheme* theme_ = nullptr;

private:
    const test::TempFolder folder_;
    HMODULE library_;
};

TEST_F(ThemeUtilWithStyle, TellsTheStyleByTheEndOfItsFile) {
    const struct {
        LPCTSTR subfolder;
        LPCTSTR name;
        bool luna;
        bool aero;
    } rows[] = {{_T("Luna"), _T("Luna.msstyles"), true, false},
                {_T("Aero"), _T("Aero.msstyles"), false, true},
                {_T("other\\aero"), _T("aero.msstyles"), false, false},
                {_T("XLuna"), _T("Luna.msstyles"), false, false}};
    for (const auto& row : rows) {
        SetFile(row.subfolder, row.name);
        FakeUtil util;
        EXPECT_TRUE(util.Open());
        EXPECT_EQ(util.IsLunaTheme() != 0, row.luna) << row.luna;
        EXPECT_EQ(util.IsAeroTheme() != 0, row.aero) << row.aero;
        util.CloseThemeData();
        EXPECT_FALSE(util.IsLunaTheme() || util.IsAeroTheme());
    }
    EXPECT_EQ(theme_->closed, 4);
}

TEST_F(ThemeUtilWithStyle, OpensNothingWhenAStepFails) {
    FakeUtil util;
    const auto fails = [&](int closed) {
        theme_->closed = 0;
        EXPECT_FALSE(util.Open());
        EXPECT_EQ(theme_->closed, closed);
        EXPECT_FALSE(util.IsLunaTheme());
        DWORD flags = 0;
        EXPECT_FALSE(util.GetThemeAppProperties(flags));
    };
    EXPECT_FALSE(util.OpenThemeData(nullptr, _T("BUTTON")));
    theme_->isActive = FALSE;
    fails(0);
    theme_->isActive = TRUE;
    theme_->theme = nullptr;
    fails(0);
    theme_->theme = theme_;
    theme_->nameResult = -1;
    fails(1);
    theme_->nameResult = 0;
    DeleteFileW(theme_->file);
    fails(1);
    EXPECT_FALSE(FakeUtil(_T("no_such_theme.dll")).Open());
}

TEST_F(ThemeUtilWithStyle, SharesAnOpenThemeAndClosesItOnce) {
    {
        FakeUtil util;
        ASSERT_TRUE(util.Open());
        EXPECT_FALSE(util.Open());
        const CThemeUtil copy(util);
        util.FreeLibrary();
        EXPECT_EQ(theme_->closed, 0);
        DWORD flags = 0;
        EXPECT_FALSE(util.GetThemeAppProperties(flags));
        EXPECT_TRUE(copy.GetThemeAppProperties(flags));
        EXPECT_TRUE(copy.IsLunaTheme());
        TCHAR name[] = _T("IMAGES\\BUTTON.BMP");
        const HBITMAP bitmap = copy.LoadBitmap(name);
        EXPECT_EQ(CString(name), _T("IMAGES\\BUTTON.BMP"));
        BITMAP size = {};
        GetObjectW(bitmap, sizeof(size), &size);
        EXPECT_EQ(size.bmWidth, 3);
        DeleteObject(bitmap);
        name[0] = _T('X');
        EXPECT_EQ(copy.LoadBitmap(name), nullptr);
    }
    EXPECT_EQ(theme_->closed, 1);
}

TEST_F(ThemeUtilWithStyle, ForwardsArgumentsAndValues) {
    FakeUtil util;
    int number = 0;
    EXPECT_FALSE(util.GetThemeInt(1, 2, 3, &number));
    ASSERT_TRUE(util.Open());
    const auto called = [&](int a, int b, int c, int d = 0) {
        const int numbers[] = {a, b, c, d};
        EXPECT_TRUE(std::equal(std::begin(numbers), std::end(numbers), theme_->numbers)) << a;
        EXPECT_EQ(theme_->calledWith, theme_);
    };
    EXPECT_TRUE(util.GetThemeInt(1, 2, 3, &number));
    EXPECT_EQ(number, 17);
    called(1, 2, 3);
    CThemeUtil::SMargins margins = {};
    EXPECT_TRUE(util.GetThemeMargins(nullptr, 4, 5, 6, nullptr, &margins));
    EXPECT_EQ(margins.left * 10 + margins.bottom, 14);
    called(4, 5, 6);
    const RECT rect = {0, 0, 77, 0};
    EXPECT_TRUE(util.DrawThemeBackground(nullptr, 7, 8, &rect));
    called(7, 8, 77, 1);
    DWORD flags = 0;
    EXPECT_TRUE(util.GetThemeAppProperties(flags));
    EXPECT_EQ(flags, 5U);
    EXPECT_FALSE(util.GetThemeSysSize(1));  // functions that the library has not
    EXPECT_FALSE(util.SetThemeAppProperties(1));
}

}  // namespace
