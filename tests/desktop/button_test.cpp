// The button: its kinds, mouse and keyboard, what it tells, and how it looks.

#include "control_picture.h"
#include "dialog_template.h"
#include "support/wine.h"

namespace {

using desktop_test::ControlPicture;
using desktop_test::kStop;

constexpr LPARAM kInside = 5 | (5 << 16);
constexpr LPARAM kOutside = 5 | (500 << 16);

class Button : public desktop_test::DialogTest {
protected:
    HWND Make(DWORD style, LPCTSTR text = _T("&Text")) {
        EXPECT_TRUE(
            Create({.items = {{.style = kStop | BS_CHECKBOX, .id = 8}, {.text = text, .style = kStop | style, .id = 7}}}));
        SetFocus(Item(8));
        button = Item(7);
        TakeCommands();
        return button;
    }
    LRESULT Send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) { return SendMessageW(button, message, wparam, lparam); }
    LRESULT State() { return Send(BM_GETSTATE) & (BST_CHECKED | BST_PUSHED | BST_FOCUS); }
    bool IsPushed() { return (Send(BM_GETSTATE) & BST_PUSHED) != 0; }
    void Click() {
        Send(WM_LBUTTONDOWN, MK_LBUTTON, kInside);
        Send(WM_LBUTTONUP, 0, kInside);
    }

    HWND button = nullptr;
};

TEST_F(Button, KindsAnswerAndChangeAsDocumented) {
    const struct {
        DWORD style;
        LRESULT code;
        const char* checks;    // after each of four clicks
        int checked;           // after BM_SETCHECK BST_CHECKED
        const char* commands;  // of a click and a double click
    } rows[] = {
        {BS_PUSHBUTTON, DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON, "0000", 0, "7:0 7:0 "},
        {BS_DEFPUSHBUTTON, DLGC_BUTTON | DLGC_DEFPUSHBUTTON, "0000", 0, "7:0 7:0 "},
        {BS_CHECKBOX, DLGC_BUTTON, "0000", 1, "7:0 7:0 "},
        {BS_AUTOCHECKBOX, DLGC_BUTTON, "1010", 1, "7:0 7:0 "},
        {BS_RADIOBUTTON, DLGC_BUTTON | DLGC_RADIOBUTTON, "0000", 1, "7:0 7:5 "},
        {BS_3STATE, DLGC_BUTTON, "0000", 1, "7:0 7:0 "},
        {BS_AUTO3STATE, DLGC_BUTTON, "1201", 1, "7:0 7:0 "},
        {BS_AUTORADIOBUTTON, DLGC_BUTTON | DLGC_RADIOBUTTON, "1111", 1, "7:0 7:0 "},
        {BS_OWNERDRAW, DLGC_BUTTON, "0000", 0, "7:0 7:5 "},
        {BS_GROUPBOX, DLGC_STATIC, "0000", 0, test::UnlessWine("", "7:0 7:0 ")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.style);
        Make(row.style);
        EXPECT_EQ(Send(WM_GETDLGCODE), row.code);
        std::string checks;
        for (int i = 0; i < 4; ++i) {
            Click();
            checks += std::to_string(Send(BM_GETCHECK));
        }
        EXPECT_EQ(checks, row.checks);
        TakeCommands();
        Click();
        Send(WM_LBUTTONDBLCLK, MK_LBUTTON, kInside);
        Send(WM_LBUTTONUP, 0, kInside);
        EXPECT_EQ(TakeCommands(), row.commands);
        EXPECT_FALSE(GetCapture());
        Send(BM_SETCHECK, BST_UNCHECKED);
        EXPECT_EQ(Send(BM_GETCHECK), 0);
        Send(BM_SETCHECK, BST_CHECKED);
        EXPECT_EQ(Send(BM_GETCHECK), row.checked);
        EXPECT_EQ(TakeCommands(), "");
    }
}

TEST_F(Button, FollowsTheMouseWhileItIsPressed) {
    Make(BS_PUSHBUTTON);
    const struct {
        UINT message;
        LPARAM place;
        bool pushed;
        bool captured;
        const char* commands;
    } rows[] = {
        {WM_LBUTTONDOWN, kInside, true, true, ""}, {WM_MOUSEMOVE, kOutside, false, true, ""},
        {WM_MOUSEMOVE, kInside, true, true, ""},   {WM_LBUTTONUP, kInside, false, false, "7:0 "},
        {WM_LBUTTONUP, kInside, false, false, ""}, {WM_LBUTTONDOWN, kInside, true, true, ""},
        {WM_MOUSEMOVE, kOutside, false, true, ""}, {WM_LBUTTONUP, kOutside, false, false, ""},
        {WM_LBUTTONDOWN, kInside, true, true, ""}, {WM_CANCELMODE, 0, false, false, ""},
        {WM_LBUTTONUP, kInside, false, false, ""},
    };
    for (const auto& row : rows) {
        Send(row.message, row.message == WM_MOUSEMOVE ? MK_LBUTTON : 0, row.place);
        EXPECT_EQ(IsPushed(), row.pushed) << &row - rows;
        EXPECT_EQ(GetCapture() == button, row.captured) << &row - rows;
        EXPECT_EQ(TakeCommands(), row.commands) << &row - rows;
        EXPECT_EQ(GetFocus(), button);
    }
}

TEST_F(Button, SpaceAndMessagesPressIt) {
    Make(BS_AUTOCHECKBOX);
    SetFocus(button);
    Send(WM_KEYDOWN, VK_SPACE, 1);
    EXPECT_EQ(State(), static_cast<LRESULT>(BST_PUSHED | BST_FOCUS));
    Send(WM_KEYDOWN, VK_SPACE, 0x40000001);
    EXPECT_EQ(Send(BM_GETCHECK), 0);
    Send(WM_KEYUP, VK_SPACE, static_cast<LPARAM>(0xC0000001));
    EXPECT_EQ(State(), static_cast<LRESULT>(BST_CHECKED | BST_FOCUS));
    EXPECT_EQ(TakeCommands(), "7:0 ");
    Send(WM_KEYDOWN, VK_SPACE, 1);
    SetFocus(Item(8));
    EXPECT_EQ(State(), static_cast<LRESULT>(BST_CHECKED));
    Send(WM_KEYUP, VK_SPACE, static_cast<LPARAM>(0xC0000001));
    EXPECT_EQ(TakeCommands(), "");

    Send(BM_CLICK);
    EXPECT_EQ(TakeCommands(), "7:0 ");
    EXPECT_EQ(Send(BM_GETCHECK), 0);
    Send(BM_SETSTATE, TRUE);
    EXPECT_TRUE(IsPushed());
    Send(BM_SETSTATE, FALSE);
    EXPECT_EQ(TakeCommands(), "");
    EXPECT_FALSE(GetCapture());
}

TEST_F(Button, MayBeDestroyedByItsClick) {
    for (const DWORD style : {BS_PUSHBUTTON, BS_AUTORADIOBUTTON, BS_AUTOCHECKBOX}) {
        Make(style);
        on_message = [&](HWND, UINT message, WPARAM, LPARAM) -> INT_PTR {
            return message == WM_COMMAND && DestroyWindow(button);
        };
        Click();
        EXPECT_FALSE(IsWindow(button));
        on_message = nullptr;
    }
}

TEST_F(Button, NotifiesWhenAsked) {
    Make(BS_PUSHBUTTON | BS_NOTIFY);
    SetFocus(button);
    SetFocus(Item(8));
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, kInside);
    Send(WM_LBUTTONUP, 0, kInside);
    EXPECT_EQ(TakeCommands(), "7:6 7:7 7:5 ");
    Click();
    EXPECT_EQ(TakeCommands(), "7:6 7:0 ");
    EnableWindow(button, FALSE);
    Send(BM_CLICK);
    EXPECT_EQ(TakeCommands(), test::UnlessWine("7:7 ", "7:7 7:0 "));
}

TEST_F(Button, AutomaticRadioButtonsOfAGroup) {
    const DWORD radio = kStop | BS_AUTORADIOBUTTON;
    ASSERT_TRUE(Create({.items = {{.style = radio | WS_GROUP, .id = 1},
                                  {.style = radio, .id = 2},
                                  {.style = kStop | BS_AUTOCHECKBOX, .id = 3},
                                  {.style = radio, .id = 4},
                                  {.style = radio | WS_GROUP, .id = 5}}}));
    for (const int clicked : {5, 1, 4, 2}) {
        SendMessageW(Item(clicked), BM_CLICK, 0, 0);
        for (const int id : {1, 2, 4}) {
            EXPECT_EQ(IsDlgButtonChecked(dialog, id), id == clicked ? 1u : 0u) << clicked << " " << id;
            EXPECT_EQ((GetWindowLongPtrW(Item(id), GWL_STYLE) & WS_TABSTOP) != 0, id == clicked || clicked == 5)
                << clicked << " " << id;
        }
        EXPECT_EQ(IsDlgButtonChecked(dialog, 5), 1u);
    }
    if (test::RunsOnWine()) {
        return;  // it goes round in circles for ever when the button is hidden
    }
    ShowWindow(Item(1), SW_HIDE);
    SendMessageW(Item(1), BM_CLICK, 0, 0);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 1), 1u);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 2), 0u);
}

TEST_F(Button, StylesAndImages) {
    Make(BS_PUSHBUTTON);
    Send(BM_SETSTYLE, BS_DEFPUSHBUTTON | BS_LEFT, TRUE);
    EXPECT_EQ(GetWindowLongPtrW(button, GWL_STYLE) & 0xFFFF,
              test::UnlessWine<LONG_PTR>(BS_DEFPUSHBUTTON | BS_LEFT, BS_DEFPUSHBUTTON));
    EXPECT_NE(GetWindowLongPtrW(button, GWL_STYLE) & WS_TABSTOP, 0);
    const HICON icon = LoadIconW(nullptr, IDI_APPLICATION);
    Make(BS_PUSHBUTTON | BS_ICON);
    EXPECT_EQ(Send(BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon)), 0);
    EXPECT_EQ(reinterpret_cast<HICON>(Send(BM_GETIMAGE, IMAGE_ICON)), icon);
    EXPECT_EQ(reinterpret_cast<HICON>(Send(BM_SETIMAGE, IMAGE_ICON, 0)), icon);
}

TEST_F(Button, TheParentDrawsAnOwnerDrawnOne) {
    Make(BS_OWNERDRAW);
    std::string seen;
    on_message = [&](HWND, UINT message, WPARAM wparam, LPARAM lparam) -> INT_PTR {
        if (message == WM_DRAWITEM) {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lparam);
            seen += std::to_string(item.itemAction) + "/" + std::to_string(item.itemState) + " ";
            EXPECT_EQ(wparam, 7u);
            EXPECT_EQ(item.CtlID, 7u);
            EXPECT_EQ(item.CtlType, static_cast<UINT>(ODT_BUTTON));
            EXPECT_EQ(item.hwndItem, button);
            EXPECT_EQ(GetObjectType(item.hDC), static_cast<DWORD>(OBJ_MEMDC));
            RECT client = {};
            GetClientRect(button, &client);
            EXPECT_TRUE(EqualRect(&item.rcItem, &client));
        }
        return message == WM_DRAWITEM;
    };
    const ControlPicture plain(button);
    EnableWindow(button, FALSE);
    const ControlPicture disabled(button);
    EnableWindow(button, TRUE);
    Send(BM_SETSTATE, TRUE);
    const ControlPicture pressed(button);
    SetFocus(button);
    const ControlPicture focused(button);
    EXPECT_EQ(seen, "1/0 1/4 1/1 1/17 ");
}

TEST_F(Button, Looks) {
    const HBRUSH brush = CreateSolidBrush(RGB(200, 220, 240));
    on_message = [brush](HWND, UINT message, WPARAM wparam, LPARAM) -> INT_PTR {
        if (message == WM_CTLCOLORSTATIC || message == WM_CTLCOLORBTN) {
            SetTextColor(reinterpret_cast<HDC>(wparam), RGB(255, 0, 0));
            SetBkMode(reinterpret_cast<HDC>(wparam), TRANSPARENT);
            return reinterpret_cast<INT_PTR>(brush);
        }
        return FALSE;
    };
    const struct {
        DWORD style;
        bool parents_background;
    } rows[] = {{BS_PUSHBUTTON, false}, {BS_AUTOCHECKBOX, true}, {BS_AUTORADIOBUTTON, true}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.style);
        Make(row.style, _T("MMM"));
        const ControlPicture whole(button);
        EXPECT_EQ(whole.Count(desktop_test::kUntouched), 0);
        EXPECT_EQ(whole.At(whole.Client().right - 2, whole.Client().bottom / 2) == RGB(200, 220, 240), row.parents_background);

        // Each of these shows.
        const auto plain = whole.Colors();
        Send(BM_SETSTATE, TRUE);
        EXPECT_NE(ControlPicture(button).Colors(), plain);
        Send(BM_SETSTATE, FALSE);
        EXPECT_EQ(ControlPicture(button).Colors(), plain);
        EnableWindow(button, FALSE);
        EXPECT_NE(ControlPicture(button).Colors(), plain);
        EnableWindow(button, TRUE);
        Send(BM_SETCHECK, BST_CHECKED);
        EXPECT_EQ(ControlPicture(button).Colors() == plain, row.style == BS_PUSHBUTTON);
        Send(BM_SETCHECK, BST_UNCHECKED);
        SetWindowTextW(button, _T("WWW"));
        EXPECT_NE(ControlPicture(button).Colors(), plain);
    }
    DeleteObject(brush);
}

}  // namespace
