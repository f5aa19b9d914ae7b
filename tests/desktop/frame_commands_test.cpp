// The system menu, and what a frame does on its commands.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>

#include "../support/last_error.h"
#include "../support/wine.h"
#include "message_log.h"

namespace {

using desktop_test::MessageLog;
using test::ErrorOf;

constexpr RECT kPlace = {100, 100, 500, 400};

RECT WindowRectOf(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return rect;
}

TEST(FrameCommands, TheSystemMenuIsTheWindows) {
    MessageLog log;
    const HWND window = log.Create(WS_OVERLAPPEDWINDOW, 0, kPlace);
    const HMENU menu = GetSystemMenu(window, FALSE);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(GetSystemMenu(window, FALSE), menu);
    EXPECT_TRUE(IsMenu(menu));
    const int count = GetMenuItemCount(menu);
    EXPECT_GE(count, 7);
    EXPECT_EQ(GetMenuItemID(menu, 6), static_cast<UINT>(SC_CLOSE));
    EXPECT_EQ(GetMenuState(menu, SC_CLOSE, MF_BYCOMMAND) & (MF_GRAYED | MF_DISABLED), 0U);
    EXPECT_EQ(EnableMenuItem(menu, SC_CLOSE, MF_BYCOMMAND | MF_GRAYED), static_cast<BOOL>(MF_ENABLED));
    EXPECT_EQ(EnableMenuItem(menu, SC_CLOSE, MF_BYCOMMAND | MF_GRAYED), static_cast<BOOL>(MF_GRAYED));
    EXPECT_NE(GetMenuState(menu, SC_CLOSE, MF_BYCOMMAND) & MF_GRAYED, 0U);
    EXPECT_EQ(EnableMenuItem(menu, 12345, MF_BYCOMMAND | MF_GRAYED), -1);
    EXPECT_TRUE(AppendMenuW(menu, MF_SEPARATOR, 0, nullptr));
    EXPECT_TRUE(AppendMenuW(menu, MF_STRING, 0x10, _T("&About")));
    EXPECT_EQ(GetMenuItemCount(menu), count + 2);
    TCHAR text[5];
    EXPECT_EQ(GetMenuStringW(menu, 0x10, text, 5, MF_BYCOMMAND), 4);
    EXPECT_EQ(std::basic_string<TCHAR>(text), _T("&Abo"));
    EXPECT_TRUE(DeleteMenu(menu, 0x10, MF_BYCOMMAND));
    EXPECT_EQ(GetMenuState(menu, 0x10, MF_BYCOMMAND), 0xFFFFFFFFU);
    EXPECT_EQ(GetSystemMenu(window, TRUE), nullptr);
    const HMENU anew = GetSystemMenu(window, FALSE);
    EXPECT_EQ(GetMenuItemCount(anew), count);
    DestroyWindow(window);
    EXPECT_FALSE(IsMenu(anew));
    EXPECT_EQ(GetMenuItemCount(anew), -1);
    EXPECT_EQ(ErrorOf(GetSystemMenu(window, FALSE)), ERROR_INVALID_WINDOW_HANDLE);

    const HWND plain = log.Create(WS_POPUP, 0, kPlace);
    EXPECT_EQ(GetSystemMenu(plain, FALSE), nullptr);
}

TEST(FrameCommands, CloseObeysTheSystemMenu) {
    MessageLog log;
    int closes = 0;
    log.on_message = [&](HWND, UINT message, WPARAM, LPARAM, LRESULT&) {
        closes += message == WM_CLOSE;
        return message == WM_CLOSE;
    };
    const HWND window = log.Create(WS_OVERLAPPEDWINDOW, 0, kPlace);
    SendMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(closes, 1);
    EnableMenuItem(GetSystemMenu(window, FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
    SendMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(closes, test::UnlessWine(1, 2));
}

TEST(FrameCommands, WindowsAreMaximisedMinimisedAndRestored) {
    MessageLog log;
    const HWND window = log.Create(WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, kPlace);
    const RECT before = WindowRectOf(window);
    SendMessageW(window, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    EXPECT_TRUE(IsZoomed(window));
    EXPECT_GE(WindowRectOf(window).right - WindowRectOf(window).left, GetSystemMetrics(SM_CXFULLSCREEN));
    SendMessageW(window, WM_SYSCOMMAND, SC_RESTORE, 0);
    EXPECT_FALSE(IsZoomed(window));
    SendMessageW(window, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    EXPECT_TRUE(IsIconic(window));
    SendMessageW(window, WM_SYSCOMMAND, SC_RESTORE, 0);
    EXPECT_FALSE(IsIconic(window));
    const RECT after = WindowRectOf(window);
    EXPECT_TRUE(EqualRect(&before, &after));
    // A double click in the caption.
    SendMessageW(window, WM_NCLBUTTONDBLCLK, HTCAPTION, MAKELPARAM(300, 110));
    EXPECT_TRUE(IsZoomed(window));
    SendMessageW(window, WM_NCLBUTTONDBLCLK, HTCAPTION, MAKELPARAM(300, 10));
    EXPECT_FALSE(IsZoomed(window));
}

}  // namespace
