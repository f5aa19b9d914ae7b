// Dialogs from templates: geometry, styles, fonts, the beginning, and what cannot be made.

#include <algorithm>

#include "dialog_template.h"
#include "support/wine.h"

namespace {

using desktop_test::DialogSpec;
using desktop_test::ItemSpec;
using desktop_test::kControl;
using desktop_test::kStatic;
using desktop_test::kStop;

class DialogCreate : public desktop_test::DialogTest {};

RECT PlaceOf(HWND control) {
    RECT rect = {};
    GetWindowRect(control, &rect);
    MapWindowPoints(nullptr, GetParent(control), reinterpret_cast<LPPOINT>(&rect), 2);
    return rect;
}

SIZE UnitsByRule(HFONT font) {
    const HDC context = CreateCompatibleDC(nullptr);
    SelectObject(context, font);
    TEXTMETRICW metrics = {};
    GetTextMetricsW(context, &metrics);
    SIZE extent = {};
    GetTextExtentPoint32W(context, _T("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"), 52, &extent);
    DeleteDC(context);
    return {(extent.cx / 26 + 1) / 2, metrics.tmHeight};
}

TEST_F(DialogCreate, PlacesAreInUnitsOfTheFont) {
    for (const bool extended : {false, true}) {
        for (const DWORD font_style : {DWORD{0}, DWORD{DS_SETFONT}, DWORD{DS_SHELLFONT}}) {
            SCOPED_TRACE(std::to_string(extended) + "," + std::to_string(font_style));
            ASSERT_TRUE(Create({.style = WS_POPUP | WS_CAPTION | font_style,
                                .items = {{.id = 7, .rect = {9, 11, 50, 14}},
                                          {.atom = kStatic, .style = kControl, .id = 70000, .rect = {-3, 31, 1, 1}}},
                                .extended = extended}));
            const auto font = reinterpret_cast<HFONT>(SendMessageW(dialog, WM_GETFONT, 0, 0));
            EXPECT_EQ(font != nullptr, font_style != 0);
            EXPECT_EQ(reinterpret_cast<HFONT>(SendMessageW(Item(7), WM_GETFONT, 0, 0)), font);
            const SIZE units = UnitsByRule(font != nullptr ? font : static_cast<HFONT>(GetStockObject(SYSTEM_FONT)));
            RECT rect = {4, 8, 400, 800};
            ASSERT_TRUE(MapDialogRect(dialog, &rect));
            EXPECT_EQ(rect.left, units.cx);
            EXPECT_EQ(rect.top, units.cy);
            if (font == nullptr) {
                EXPECT_EQ(GetDialogBaseUnits(), MAKELONG(units.cx, units.cy));
            }

            rect = {0, 0, 200, 100};
            MapDialogRect(dialog, &rect);
            RECT client = {};
            GetClientRect(dialog, &client);
            EXPECT_TRUE(EqualRect(&client, &rect));
            rect = {9, 11, 59, 25};
            MapDialogRect(dialog, &rect);
            const RECT place = PlaceOf(Item(7));
            EXPECT_EQ(place.left, rect.left);
            EXPECT_EQ(place.top, rect.top);
            EXPECT_LE(std::abs(place.right - rect.right), 1);  // a length is rounded, not the edge
            EXPECT_LE(PlaceOf(GetWindow(Item(7), GW_HWNDNEXT)).left, 0);
            EXPECT_EQ(GetDlgCtrlID(GetWindow(Item(7), GW_HWNDNEXT)), extended ? 70000 : 70000 - 65536);
            EXPECT_NE(GetWindowLongPtrW(Item(7), GWL_EXSTYLE) & WS_EX_NOPARENTNOTIFY, 0);
            TCHAR title[8] = {};
            GetWindowTextW(dialog, title, 8);
            EXPECT_EQ(desktop_test::Text(title), _T("Title"));
        }
    }
    RECT rect = {1, 2, 3, 4};
    EXPECT_FALSE(MapDialogRect(MakeOwner(), &rect));
}

TEST_F(DialogCreate, StylesOfTheTemplateBecomeStylesOfTheWindow) {
    const struct {
        DWORD style;
        DWORD extended_style;
        DWORD has;
        DWORD has_not;
        DWORD has_extended;
    } rows[] = {
        {WS_POPUP | WS_CAPTION | DS_MODALFRAME, 0, WS_CAPTION | WS_CLIPSIBLINGS | DS_MODALFRAME, WS_VISIBLE,
         WS_EX_DLGMODALFRAME | WS_EX_WINDOWEDGE | WS_EX_CONTROLPARENT},
        {WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_CONTROL, 0, WS_POPUP, WS_CAPTION | WS_SYSMENU, WS_EX_CONTROLPARENT},
        {WS_POPUP | DS_SYSMODAL, 0, WS_POPUP, WS_CAPTION, test::UnlessWine<DWORD>(WS_EX_TOPMOST, 0)},
        {WS_POPUP | DS_CONTEXTHELP, WS_EX_TOOLWINDOW, WS_POPUP, 0,
         test::UnlessWine<DWORD>(WS_EX_CONTEXTHELP, 0) | WS_EX_TOOLWINDOW},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.style);
        ASSERT_TRUE(Create({.style = row.style, .extended_style = row.extended_style}));
        const auto style = static_cast<DWORD>(GetWindowLongPtrW(dialog, GWL_STYLE));
        const auto extended = static_cast<DWORD>(GetWindowLongPtrW(dialog, GWL_EXSTYLE));
        EXPECT_EQ(style & row.has, row.has) << std::hex << style;
        EXPECT_EQ(style & row.has_not, 0u) << std::hex << style;
        EXPECT_EQ(extended & row.has_extended, row.has_extended) << std::hex << extended;
    }
}

TEST_F(DialogCreate, StandsWhereTheTemplateSays) {
    const HWND owner = MakeOwner();
    const struct {
        DWORD style;
        bool by_owner;
    } rows[] = {{0, true}, {DS_ABSALIGN, false}};
    for (const auto& row : rows) {
        ASSERT_TRUE(Create({.style = WS_POPUP | row.style}, owner));
        RECT units = {10, 10, 0, 0};
        MapDialogRect(dialog, &units);
        RECT place = {};
        GetWindowRect(dialog, &place);
        EXPECT_EQ(place.left, units.left + (row.by_owner ? 300 : 0));
        EXPECT_EQ(place.top, units.top + (row.by_owner ? 200 : 0));
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), owner);
    }

    ASSERT_TRUE(Create({.style = WS_POPUP | DS_CENTER}));
    RECT work = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    RECT place = {};
    GetWindowRect(dialog, &place);
    EXPECT_LE(std::abs((work.left + work.right) - (place.left + place.right)), 1);
    EXPECT_LE(std::abs((work.top + work.bottom) - (place.top + place.bottom)), 1);

    ASSERT_TRUE(Create({.style = WS_POPUP | DS_ABSALIGN, .rect = {30000, 30000, 200, 100}}));
    GetWindowRect(dialog, &place);
    EXPECT_LE(place.right, work.right);
    EXPECT_LE(place.bottom, work.bottom);

    ASSERT_TRUE(Create({.style = WS_CHILD | DS_CONTROL}, owner));
    EXPECT_EQ(GetParent(dialog), owner);
}

TEST_F(DialogCreate, BeginsWithTheFontThenInitDialogAndItsFocus) {
    for (const INT_PTR wants_focus : {INT_PTR{TRUE}, INT_PTR{FALSE}}) {
        std::string order;
        HWND first = nullptr;
        LPARAM parameter = 0;
        on_message = [&](HWND window, UINT message, WPARAM wparam, LPARAM lparam) -> INT_PTR {
            if (message == WM_SETFONT) {
                order += "font ";
            } else if (message == WM_INITDIALOG) {
                order += IsWindowVisible(window) ? "init-shown " : "init ";
                first = reinterpret_cast<HWND>(wparam);
                parameter = lparam;
                SetWindowLongPtrW(window, DWLP_USER, 0x123456789A);
                if (wants_focus == FALSE) {
                    SetFocus(GetDlgItem(window, 6));
                }
                return wants_focus;
            } else if (message == WM_SHOWWINDOW) {
                order += "show ";
            }
            return FALSE;
        };
        const HWND owner = MakeOwner();
        SetFocus(owner);
        ASSERT_TRUE(Create({.style = WS_POPUP | WS_VISIBLE | DS_SETFONT,
                            .items = {{.atom = kStatic, .style = kControl, .id = 1},
                                      {.style = kStop & ~WS_TABSTOP, .id = 2},
                                      {.style = kStop | WS_DISABLED, .id = 3},
                                      {.style = kStop & ~WS_VISIBLE, .id = 4},
                                      {.id = 5},
                                      {.id = 6}}},
                           owner, 0x1122334455));
        EXPECT_EQ(order, "font init show ");
        EXPECT_EQ(first, Item(5));
        EXPECT_EQ(parameter, 0x1122334455);
        EXPECT_EQ(GetWindowLongPtrW(dialog, DWLP_USER), 0x123456789A);
        EXPECT_EQ(GetFocus(), Item(wants_focus == TRUE ? 5 : 6));
        EXPECT_TRUE(IsWindowVisible(dialog));
    }
}

TEST_F(DialogCreate, ControlsGetTheirCreationData) {
    static std::vector<std::vector<WORD>> seen;
    WNDCLASSW description = {};
    description.lpszClassName = _T("kadata test: creation data");
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpfnWndProc = [](HWND window, UINT message, WPARAM wparam, LPARAM lparam) -> LRESULT {
        if (message == WM_CREATE) {
            const auto* const data = static_cast<const WORD*>(reinterpret_cast<LPCREATESTRUCT>(lparam)->lpCreateParams);
            seen.push_back(data == nullptr ? std::vector<WORD>() : std::vector<WORD>(data, data + 3));
        }
        return DefWindowProcW(window, message, wparam, lparam);
    };
    ASSERT_NE(RegisterClassW(&description), 0);
    for (const bool extended : {false, true}) {
        seen.clear();
        ASSERT_TRUE(Create({.items = {{.id = 1, .class_name = description.lpszClassName},
                                      {.id = 2, .class_name = description.lpszClassName, .data = {0x1234, 0x5678}}},
                            .extended = extended}));
        const std::vector<std::vector<WORD>> expected = {{}, {static_cast<WORD>(extended ? 4 : 6), 0x1234, 0x5678}};
        EXPECT_EQ(seen, expected) << extended;
        EXPECT_TRUE(Item(2));
        DestroyWindow(dialog);
    }
    EXPECT_TRUE(UnregisterClassW(description.lpszClassName, description.hInstance));
}

TEST_F(DialogCreate, WhatCannotBeMadeLeavesNothing) {
    const ItemSpec unknown = {.id = 9, .class_name = _T("kadata test: no such class")};
    int destroyed = 0;
    on_message = [&](HWND, UINT message, WPARAM, LPARAM) -> INT_PTR {
        destroyed += message == WM_NCDESTROY ? 1 : 0;
        return FALSE;
    };
    EXPECT_FALSE(Create({.items = {{.id = 1}, unknown}}));
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(Run({.items = {unknown}}), -1);

    ASSERT_TRUE(Create({.style = WS_POPUP | DS_NOFAILCREATE, .items = {unknown, {.id = 3}}}));
    EXPECT_TRUE(Item(3));
    EXPECT_FALSE(Item(9));

    on_message = [&](HWND window, UINT message, WPARAM, LPARAM) -> INT_PTR {
        return message == WM_INITDIALOG && DestroyWindow(window);
    };
    EXPECT_EQ(Create({.items = {{.id = 1}}}) != nullptr, test::UnlessWine(false, true));
    EXPECT_FALSE(IsWindow(dialog));
    EXPECT_FALSE(CreateDialogParamW(nullptr, MAKEINTRESOURCEW(4711), nullptr, nullptr, 0));
    EXPECT_FALSE(CreateDialogIndirectParamW(nullptr, nullptr, nullptr, nullptr, 0));
    EXPECT_FALSE(Create({.class_name = _T("kadata test: no such class")}));
}

TEST_F(DialogCreate, AClassOfItsOwnUsesTheDialogProcedure) {
    WNDCLASSW description = {};
    description.lpszClassName = _T("kadata test: dialogs");
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpfnWndProc = DefDlgProcW;
    description.cbWndExtra = DLGWINDOWEXTRA;
    ASSERT_NE(RegisterClassW(&description), 0);
    ASSERT_TRUE(Create({.items = {{.id = 4}}, .class_name = description.lpszClassName}));
    TCHAR name[32] = {};
    GetClassNameW(dialog, name, 32);
    EXPECT_EQ(desktop_test::Text(name), description.lpszClassName);
    Press(VK_ESCAPE);
    EXPECT_EQ(TakeCommands(), "2:0 ");
    DestroyWindow(dialog);
    EXPECT_TRUE(UnregisterClassW(description.lpszClassName, description.hInstance));
}

}  // namespace
