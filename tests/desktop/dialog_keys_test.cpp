// A dialog's keyboard: Tab, arrows, Enter, Escape, mnemonics, the default button and the focus.

#include "dialog_template.h"
#include "support/wine.h"

namespace {

using desktop_test::kControl;
using desktop_test::kStatic;
using desktop_test::kStop;

constexpr TCHAR kHungry[] = _T("kadata test: takes all keys");

class DialogKeys : public desktop_test::DialogTest {
protected:
    DialogKeys() {
        WNDCLASSW description = {};
        description.lpszClassName = kHungry;
        description.hInstance = GetModuleHandleW(nullptr);
        description.lpfnWndProc = [](HWND window, UINT message, WPARAM wparam, LPARAM lparam) -> LRESULT {
            return message == WM_GETDLGCODE ? DLGC_WANTALLKEYS | DLGC_WANTTAB | DLGC_WANTARROWS | DLGC_WANTCHARS
                                            : DefWindowProcW(window, message, wparam, lparam);
        };
        RegisterClassW(&description);
        made_ = Create({.items = {{.text = _T("&Ok"), .style = kStop | BS_DEFPUSHBUTTON, .id = IDOK},
                                  {.atom = kStatic, .text = _T("&Name"), .style = kControl, .id = 10},
                                  {.text = _T("Na&med"), .style = kStop | BS_AUTOCHECKBOX, .id = 11},
                                  {.text = _T("&A"), .style = kStop | WS_GROUP | BS_AUTORADIOBUTTON, .id = 20},
                                  {.text = _T("&B"), .style = kControl | WS_DISABLED | BS_AUTORADIOBUTTON, .id = 21},
                                  {.text = _T("&C"), .style = kControl | BS_AUTORADIOBUTTON, .id = 22},
                                  {.text = _T("R && &Right"), .style = kStop | WS_GROUP, .id = 30},
                                  {.text = _T("&Gone"), .style = WS_CHILD | WS_TABSTOP, .id = 31},
                                  {.id = 40, .class_name = kHungry},
                                  {.text = _T("&Twice"), .style = kStop, .id = 50},
                                  {.text = _T("&Twice"), .style = kStop, .id = 51},
                                  {.text = _T("Cancel"), .style = kStop, .id = IDCANCEL}}}) != nullptr;
    }
    ~DialogKeys() override {
        DestroyWindow(dialog);
        UnregisterClassW(kHungry, GetModuleHandleW(nullptr));
    }
    void SetUp() override { ASSERT_TRUE(made_); }

    int Default() { return LOWORD(SendMessageW(dialog, DM_GETDEFID, 0, 0)); }
    bool LooksDefault(int id) { return (GetWindowLongPtrW(Item(id), GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON; }

private:
    bool made_;
};

TEST_F(DialogKeys, MoveTheFocusAndPressButtons) {
    constexpr UINT kChar = WM_CHAR;
    constexpr UINT kAlt = WM_SYSCHAR;
    const struct {
        int focus;
        UINT key;
        UINT message;
        bool shift;
        int expected_focus;
        const char* commands;
    } rows[] = {
        {IDOK, VK_TAB, WM_KEYDOWN, false, 11, ""},
        {11, VK_TAB, WM_KEYDOWN, true, IDOK, ""},
        {IDOK, VK_TAB, WM_KEYDOWN, true, IDCANCEL, ""},
        {IDCANCEL, VK_TAB, WM_KEYDOWN, false, IDOK, ""},
        {30, VK_TAB, WM_KEYDOWN, false, 40, ""},
        {40, VK_TAB, WM_KEYDOWN, false, 40, ""},
        {40, VK_RETURN, WM_KEYDOWN, false, 40, ""},
        {40, VK_ESCAPE, WM_KEYDOWN, false, 40, ""},
        {40, 'm', kChar, false, 40, ""},
        {30, VK_LEFT, WM_KEYDOWN, false, 11, ""},
        {IDCANCEL, VK_DOWN, WM_KEYDOWN, false, IDOK, ""},
        {30, VK_RIGHT, WM_KEYDOWN, false, 40, ""},
        {20, VK_DOWN, WM_KEYDOWN, false, 22, "22:0 "},
        {22, VK_DOWN, WM_KEYDOWN, false, 20, "20:0 "},
        {20, VK_UP, WM_KEYDOWN, false, 22, "22:0 "},
        {11, VK_RETURN, WM_KEYDOWN, false, 11, "1:0 "},
        {30, VK_RETURN, WM_KEYDOWN, false, 30, "30:0 "},
        {11, VK_ESCAPE, WM_KEYDOWN, false, 11, "2:0 "},
        {11, VK_CANCEL, WM_KEYDOWN, false, 11, "2:0 "},
        {30, 'm', kChar, false, 11, "11:0 "},
        {30, 'M', kAlt, false, 11, "11:0 "},
        {40, 'm', kAlt, false, 11, "11:0 "},
        {30, 'n', kAlt, false, 11, ""},  // the control behind the label
        {11, 'o', kChar, false, IDOK, "1:0 "},
        {11, 'c', kAlt, false, 22, "22:0 "},
        {11, 'r', kAlt, false, 30, "30:0 "},
        {11, 'b', kAlt, false, 11, ""},  // disabled
        {11, 'g', kAlt, false, 11, ""},  // hidden
        {11, 'x', kChar, false, 11, ""},
        {11, 't', kChar, false, 50, test::UnlessWine("", "50:0 ")},  // from one to the next of those that have the letter
        {50, 't', kAlt, false, test::UnlessWine(51, 50), test::UnlessWine("", "50:0 ")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.focus) + " " + std::to_string(row.key) + " " + std::to_string(row.message));
        SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(row.focus)), TRUE);
        ASSERT_EQ(GetDlgCtrlID(GetFocus()), row.focus);
        TakeCommands();
        BYTE keys[256] = {};
        keys[VK_SHIFT] = row.shift ? 0x80 : 0;
        SetKeyboardState(keys);
        Press(row.key, row.message);
        EXPECT_EQ(GetDlgCtrlID(GetFocus()), row.expected_focus);
        EXPECT_EQ(TakeCommands(), row.commands);
    }
    BYTE keys[256] = {};
    SetKeyboardState(keys);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 22), static_cast<UINT>(BST_CHECKED));
    EXPECT_EQ(IsDlgButtonChecked(dialog, 20), static_cast<UINT>(BST_UNCHECKED));

    MSG foreign = {};
    foreign.hwnd = MakeOwner();
    foreign.message = WM_KEYDOWN;
    foreign.wParam = VK_ESCAPE;
    EXPECT_FALSE(IsDialogMessageW(dialog, &foreign));
    EXPECT_FALSE(IsDialogMessageW(nullptr, &foreign));
}

TEST_F(DialogKeys, TheDefaultButtonFollowsTheFocus) {
    EXPECT_EQ(SendMessageW(dialog, DM_GETDEFID, 0, 0), MAKELRESULT(IDOK, DC_HASDEFID));
    const struct {
        int focus;
        int looks_default;
    } rows[] = {{11, IDOK}, {30, 30}, {50, 50}, {20, IDOK}, {IDCANCEL, IDCANCEL}, {40, IDOK}, {IDOK, IDOK}};
    for (const auto& row : rows) {
        SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(row.focus)), TRUE);
        for (const int id : {static_cast<int>(IDOK), 30, 50, 51, static_cast<int>(IDCANCEL)}) {
            EXPECT_EQ(LooksDefault(id), id == row.looks_default) << row.focus << " " << id;
        }
        EXPECT_EQ(Default(), IDOK);
    }
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(11)), TRUE);
    SendMessageW(dialog, DM_SETDEFID, 50, 0);
    EXPECT_EQ(Default(), 50);
    EXPECT_TRUE(LooksDefault(50));
    EXPECT_FALSE(LooksDefault(IDOK));
    Press(VK_RETURN);
    EXPECT_EQ(TakeCommands(), "50:0 ");

    EnableWindow(Item(50), FALSE);
    Press(VK_RETURN);
    EXPECT_EQ(TakeCommands(), "");
    EnableWindow(Item(IDCANCEL), FALSE);
    Press(VK_ESCAPE);
    EXPECT_EQ(TakeCommands(), test::UnlessWine("", "2:0 "));
    SendMessageW(dialog, WM_CLOSE, 0, 0);
    Serve();
    EXPECT_EQ(TakeCommands(), test::UnlessWine("", "2:0 "));
    EnableWindow(Item(IDCANCEL), TRUE);
    SendMessageW(dialog, WM_CLOSE, 0, 0);
    Serve();
    EXPECT_EQ(TakeCommands(), "2:0 ");
}

TEST_F(DialogKeys, NextControls) {
    const struct {
        int from;
        BOOL previous;
        int tab;
        int group;
    } rows[] = {
        {0, FALSE, IDOK, -1},
        {IDOK, FALSE, 11, 10},
        {11, FALSE, 20, 30},
        {20, FALSE, 30, 22},
        {22, FALSE, 30, 20},
        {22, TRUE, 20, 20},
        {20, TRUE, 11, 22},
        {30, TRUE, 20, 11},
        {30, FALSE, 40, 40},
        {21, FALSE, 30, 22},
        {IDCANCEL, FALSE, IDOK, IDOK},
    };
    for (const auto& row : rows) {
        const HWND from = row.from == 0 ? nullptr : Item(row.from);
        EXPECT_EQ(GetDlgCtrlID(GetNextDlgTabItem(dialog, from, row.previous)), row.tab) << row.from;
        if (row.group >= 0) {
            EXPECT_EQ(GetDlgCtrlID(GetNextDlgGroupItem(dialog, from, row.previous)), row.group) << row.from << row.previous;
        }
    }
    SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(30)), TRUE);
    SendMessageW(dialog, WM_NEXTDLGCTL, 0, 0);
    EXPECT_EQ(GetDlgCtrlID(GetFocus()), 40);
    SendMessageW(dialog, WM_NEXTDLGCTL, 1, 0);
    EXPECT_EQ(GetDlgCtrlID(GetFocus()), 30);
}

TEST_F(DialogKeys, ControlsOfAnInnerDialogJoinIn) {
    const HWND outer = dialog;
    const HWND inner = Create({.style = kControl | DS_CONTROL, .items = {{.id = 60}, {.id = 61}}}, outer);
    ASSERT_TRUE(inner);
    EXPECT_EQ(GetDlgCtrlID(GetNextDlgTabItem(outer, GetDlgItem(outer, IDCANCEL), FALSE)), 60);
    EXPECT_EQ(GetDlgCtrlID(GetNextDlgTabItem(outer, GetDlgItem(inner, 60), FALSE)), 61);
    EXPECT_EQ(GetDlgCtrlID(GetNextDlgTabItem(outer, GetDlgItem(inner, 61), FALSE)), IDOK);
    EXPECT_EQ(GetDlgCtrlID(GetNextDlgTabItem(outer, GetDlgItem(outer, IDOK), TRUE)), 61);
    EnableWindow(inner, FALSE);
    EXPECT_EQ(GetDlgCtrlID(GetNextDlgTabItem(outer, GetDlgItem(outer, IDCANCEL), FALSE)), IDOK);
    dialog = outer;
}

}  // namespace
