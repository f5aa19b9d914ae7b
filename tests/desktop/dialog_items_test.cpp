// A dialog's controls by their numbers, and what a dialog does with its other messages.

#include <limits>

#include "dialog_template.h"
#include "support/wine.h"

namespace {

using desktop_test::kStatic;
using desktop_test::kStop;

class DialogItems : public desktop_test::DialogTest {};

TEST_F(DialogItems, TextsAndNumbers) {
    ASSERT_TRUE(Create({.items = {{.atom = kStatic, .text = _T("text"), .id = 5}}}));
    TCHAR text[8] = _T("xxxxxxx");
    EXPECT_EQ(GetDlgItemTextW(dialog, 5, text, 3), 2u);
    EXPECT_EQ(desktop_test::Text(text), _T("te"));
    EXPECT_TRUE(SetDlgItemTextW(dialog, 5, _T("other")));
    EXPECT_EQ(SendDlgItemMessageW(dialog, 5, WM_GETTEXTLENGTH, 0, 0), 5);
    EXPECT_EQ(GetDlgItemTextW(dialog, 6, text, 8), 0u);
    EXPECT_EQ(desktop_test::Text(text), _T(""));
    EXPECT_FALSE(SetDlgItemTextW(dialog, 6, _T("")));
    SetLastError(0);
    EXPECT_FALSE(GetDlgItem(dialog, 6));
    const DWORD error = GetLastError();
    EXPECT_EQ(error, test::UnlessWine<DWORD>(ERROR_CONTROL_ID_NOT_FOUND, 0));
    EXPECT_FALSE(GetDlgItem(nullptr, 6));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));

    const struct {
        LPCTSTR text;
        BOOL is_signed;
        BOOL translated;
        int value;
    } rows[] = {
        {_T("42"), FALSE, TRUE, 42},
        {_T(" \t-42"), TRUE, TRUE, -42},
        {_T("-42"), FALSE, test::UnlessWine(FALSE, TRUE), test::UnlessWine(0, -42)},
        {_T("12x"), FALSE, TRUE, 12},
        {_T("x12"), FALSE, FALSE, 0},
        {_T(""), FALSE, FALSE, 0},
        {_T("4294967295"), FALSE, TRUE, -1},
        {_T("4294967296"), FALSE, FALSE, 0},
        {_T("2147483647"), TRUE, test::UnlessWine(TRUE, FALSE), test::UnlessWine(std::numeric_limits<int>::max(), 0)},
        {_T("2147483648"), TRUE, FALSE, 0},
        {_T("-2147483649"), TRUE, FALSE, 0},
    };
    for (const auto& row : rows) {
        SetDlgItemTextW(dialog, 5, row.text);
        BOOL translated = 2;
        EXPECT_EQ(static_cast<int>(GetDlgItemInt(dialog, 5, &translated, row.is_signed)), row.value) << &row - rows;
        EXPECT_EQ(translated, row.translated) << &row - rows;
    }
    BOOL translated = TRUE;
    EXPECT_EQ(GetDlgItemInt(dialog, 6, &translated, FALSE), 0u);
    EXPECT_FALSE(translated);
    for (const BOOL is_signed : {TRUE, FALSE}) {
        EXPECT_TRUE(SetDlgItemInt(dialog, 5, static_cast<UINT>(-12), is_signed));
        TCHAR shown[16] = {};
        GetDlgItemTextW(dialog, 5, shown, 16);
        EXPECT_EQ(desktop_test::Text(shown), is_signed ? _T("-12") : _T("4294967284"));
    }
}

TEST_F(DialogItems, Checks) {
    ASSERT_TRUE(Create({.items = {{.style = kStop | BS_AUTO3STATE, .id = 1},
                                  {.style = kStop | BS_AUTORADIOBUTTON, .id = 2},
                                  {.style = kStop | BS_RADIOBUTTON, .id = 3},
                                  {.style = kStop | BS_AUTORADIOBUTTON, .id = 4}}}));
    EXPECT_TRUE(CheckDlgButton(dialog, 1, BST_INDETERMINATE));
    EXPECT_EQ(IsDlgButtonChecked(dialog, 1), static_cast<UINT>(BST_INDETERMINATE));
    for (const int checked : {2, 4, 3}) {
        EXPECT_TRUE(CheckRadioButton(dialog, 2, 4, checked));
        for (int id = 2; id <= 4; ++id) {
            EXPECT_EQ(IsDlgButtonChecked(dialog, id), id == checked ? 1u : 0u);
        }
    }
    EXPECT_EQ(IsDlgButtonChecked(dialog, 9), 0u);
    EXPECT_EQ(CheckDlgButton(dialog, 9, 1), test::UnlessWine(FALSE, TRUE));
    EXPECT_EQ(TakeCommands(), "");
}

TEST_F(DialogItems, ResultsOfTheProcedure) {
    ASSERT_TRUE(Create({}));
    const struct {
        UINT message;
        LRESULT result;  // the procedure returns 5, DWLP_MSGRESULT is 9
    } rows[] = {{WM_APP, 9}, {WM_CTLCOLORSTATIC, 5}, {WM_CTLCOLORDLG, 5}, {WM_COMPAREITEM, 5}, {WM_QUERYDRAGICON, 5}};
    on_message = [](HWND window, UINT, WPARAM, LPARAM) -> INT_PTR {
        SetWindowLongPtrW(window, DWLP_MSGRESULT, 9);
        return 5;
    };
    for (const auto& row : rows) {
        EXPECT_EQ(SendMessageW(dialog, row.message, 0, 0), row.result) << row.message;
    }
    on_message = nullptr;
    EXPECT_EQ(SendMessageW(dialog, WM_APP, 0, 0), 0);
    SetWindowLongPtrW(dialog, DWLP_DLGPROC, 0);
    EXPECT_EQ(SendMessageW(dialog, WM_APP, 0, 0), 0);
}

TEST_F(DialogItems, TheBackgroundHasTheBrushOfTheProcedure) {
    const HBRUSH brush = CreateSolidBrush(RGB(10, 200, 30));
    on_message = [brush](HWND, UINT message, WPARAM, LPARAM) -> INT_PTR {
        return message == WM_CTLCOLORDLG ? reinterpret_cast<INT_PTR>(brush) : FALSE;
    };
    ASSERT_TRUE(Create({}));
    const HDC screen = GetDC(nullptr);
    const HDC context = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 20, 20);
    SelectObject(context, bitmap);
    EXPECT_NE(SendMessageW(dialog, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0), 0);
    EXPECT_EQ(GetPixel(context, 10, 10), RGB(10, 200, 30));
    on_message = nullptr;
    EXPECT_NE(SendMessageW(dialog, WM_ERASEBKGND, reinterpret_cast<WPARAM>(context), 0), 0);
    EXPECT_EQ(GetPixel(context, 10, 10), GetSysColor(COLOR_BTNFACE));
    DeleteDC(context);
    DeleteObject(bitmap);
    DeleteObject(brush);
    ReleaseDC(nullptr, screen);
}

TEST_F(DialogItems, TheFocusComesBackWithTheActivation) {
    ASSERT_TRUE(Create({.style = WS_POPUP | WS_VISIBLE, .items = {{.id = 1}, {.id = 2}}}));
    const HWND other = MakeOwner(WS_POPUP | WS_VISIBLE);
    SetActiveWindow(dialog);
    SetFocus(Item(2));
    SetActiveWindow(other);
    EXPECT_NE(GetFocus(), Item(2));
    SetActiveWindow(dialog);
    EXPECT_EQ(GetFocus(), Item(2));
    SetFocus(dialog);
    EXPECT_TRUE(IsChild(dialog, GetFocus()));
}

}  // namespace
