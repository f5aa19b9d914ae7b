// Coordinates, placements, positions, focus and activation.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>

#include "message_log.h"
#include "support/last_error.h"
#include "support/wine.h"

namespace {

using desktop_test::Joined;
using desktop_test::MessageLog;

std::string Text(const RECT& rect) {
    return std::to_string(rect.left) + "," + std::to_string(rect.top) + "," + std::to_string(rect.right) + "," +
           std::to_string(rect.bottom);
}

std::string PlaceOf(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return Text(rect);
}

TEST(WindowPlace, Coordinates) {
    MessageLog log;
    const HWND top = log.Create(WS_POPUP, 0, {100, 50, 300, 250});
    const HWND child = log.Create(WS_CHILD, 0, {10, 20, 60, 80}, top);
    const HWND inner = log.Create(WS_CHILD, 0, {-5, 1, 5, 11}, child);
    EXPECT_EQ(PlaceOf(inner), "105,71,115,81");
    RECT client = {};
    GetClientRect(child, &client);
    EXPECT_EQ(Text(client), "0,0,50,60");
    POINT point = {1, 2};
    ClientToScreen(inner, &point);
    EXPECT_EQ(point.x, 106);
    EXPECT_EQ(point.y, 73);
    ScreenToClient(child, &point);
    EXPECT_EQ(point.x, -4);
    POINT points[] = {{0, 0}, {3, 4}};
    EXPECT_EQ(MapWindowPoints(child, top, points, 2), MAKELONG(10, 20));
    EXPECT_EQ(points[1].x, 13);
    EXPECT_EQ(points[1].y, 24);

    const HWND second = log.Create(WS_CHILD | WS_VISIBLE, 0, {10, 20, 60, 80}, top);
    EXPECT_EQ(ChildWindowFromPoint(top, {15, 25}), child);
    EXPECT_EQ(ChildWindowFromPointEx(top, {15, 25}, CWP_SKIPINVISIBLE), second);
    EXPECT_EQ(ChildWindowFromPoint(top, {150, 25}), top);
    EXPECT_EQ(ChildWindowFromPoint(top, {-1, 25}), nullptr);
    ShowWindow(top, SW_SHOWNA);
    EXPECT_EQ(WindowFromPoint({115, 75}), second);
    EnableWindow(second, FALSE);
    EXPECT_EQ(WindowFromPoint({115, 75}), top);
}

TEST(WindowPlace, MinimisedMaximisedRestored) {
    MessageLog log;
    const HWND window = log.Create(WS_POPUP | WS_VISIBLE, 0, {100, 50, 300, 250});
    const std::string before = PlaceOf(window);
    ShowWindow(window, SW_MAXIMIZE);
    EXPECT_TRUE(IsZoomed(window));
    EXPECT_NE(PlaceOf(window), before);
    ShowWindow(window, SW_MINIMIZE);
    EXPECT_TRUE(IsIconic(window));
    EXPECT_FALSE(IsZoomed(window));
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    EXPECT_TRUE(GetWindowPlacement(window, &placement));
    EXPECT_EQ(Text(placement.rcNormalPosition), before);
    EXPECT_EQ(placement.showCmd, static_cast<UINT>(SW_SHOWMINIMIZED));
    EXPECT_EQ(placement.flags & WPF_RESTORETOMAXIMIZED, static_cast<UINT>(WPF_RESTORETOMAXIMIZED));
    ShowWindow(window, SW_RESTORE);
    EXPECT_TRUE(IsZoomed(window));
    ShowWindow(window, SW_RESTORE);
    EXPECT_EQ(PlaceOf(window), before);
    placement.showCmd = SW_SHOWNORMAL;
    placement.rcNormalPosition = {5, 6, 105, 76};
    EXPECT_TRUE(SetWindowPlacement(window, &placement));
    EXPECT_EQ(PlaceOf(window), "5,6,105,76");
    placement.length = 1;
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(SetWindowPlacement(window, &placement));
}

TEST(WindowPlace, DeferredPositionsComeTogether) {
    MessageLog log;
    const HWND top = log.Create(WS_POPUP, 0, {0, 0, 200, 200});
    const HWND a = log.Create(WS_CHILD, 0, {0, 0, 10, 10}, top);
    const HWND b = log.Create(WS_CHILD, 0, {0, 0, 10, 10}, top);
    HDWP positions = BeginDeferWindowPos(1);
    positions = DeferWindowPos(positions, a, nullptr, 20, 30, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    positions = DeferWindowPos(positions, b, nullptr, 0, 0, 15, 16, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(PlaceOf(a), "0,0,10,10");
    EXPECT_TRUE(EndDeferWindowPos(positions));
    EXPECT_EQ(PlaceOf(a), "20,30,30,40");
    EXPECT_EQ(PlaceOf(b), "0,0,15,16");
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(test::ErrorOf(DeferWindowPos(BeginDeferWindowPos(1), nullptr, nullptr, 0, 0, 0, 0, 0) != nullptr),
              ERROR_INVALID_WINDOW_HANDLE);
}

TEST(WindowPlace, ShapesLimitWindows) {
    MessageLog log;
    const HWND window = log.Create(WS_POPUP | WS_VISIBLE, 0, {0, 0, 100, 100});
    EXPECT_TRUE(SetWindowRgn(window, CreateRectRgn(10, 10, 50, 60), TRUE));
    const HRGN copy = CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(GetWindowRgn(window, copy), SIMPLEREGION);
    RECT box = {};
    GetRgnBox(copy, &box);
    EXPECT_EQ(Text(box), "10,10,50,60");
    EXPECT_NE(WindowFromPoint({5, 5}), window);
    EXPECT_EQ(WindowFromPoint({15, 15}), window);
    EXPECT_TRUE(SetWindowRgn(window, nullptr, TRUE));
    EXPECT_EQ(GetWindowRgn(window, copy), ERROR);
    DeleteObject(copy);
}

TEST(WindowFocus, MessagesOfActivationAndFocus) {
    MessageLog log;
    log.NoteFocus();
    const HWND first = log.Create(WS_POPUP | WS_VISIBLE, 0, {0, 0, 100, 100}, nullptr, "1");
    const HWND second = log.Create(WS_POPUP | WS_VISIBLE, 0, {0, 0, 100, 100}, nullptr, "2");
    const HWND child = log.Create(WS_CHILD | WS_VISIBLE, 0, {0, 0, 10, 10}, first, "child");
    SetActiveWindow(second);
    log.TakeFocus();
    EXPECT_EQ(SetActiveWindow(first), second);
    EXPECT_EQ(Joined(log.TakeFocus()), "2.NCACTIVATE0 2.ACTIVATE0 1.NCACTIVATE1 1.ACTIVATE1 2.KILLFOCUS 1.SETFOCUS");
    EXPECT_EQ(GetActiveWindow(), first);
    EXPECT_EQ(SetFocus(child), first);
    EXPECT_EQ(Joined(log.TakeFocus()), "1.KILLFOCUS child.SETFOCUS");
    EnableWindow(child, FALSE);
    EXPECT_EQ(Joined(log.TakeFocus()), "child.KILLFOCUS");
    EXPECT_EQ(GetFocus(), nullptr);
    EXPECT_EQ(SetFocus(child), nullptr);
    EnableWindow(child, TRUE);
    SetFocus(child);
    ShowWindow(child, SW_HIDE);
    EXPECT_EQ(GetFocus(), first);
    log.TakeFocus();
    SetWindowPos(first, nullptr, 0, 0, 0, 0, SWP_HIDEWINDOW | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(GetActiveWindow(), first);  // as dialogs rely on that end: only then the owner is activated
    EXPECT_EQ(GetFocus(), first);
    ShowWindow(first, SW_SHOW);
    ShowWindow(first, SW_HIDE);
    EXPECT_EQ(GetActiveWindow(), second);
    SetActiveWindow(first);
    DestroyWindow(first);
    EXPECT_EQ(GetActiveWindow(), second);
    EXPECT_EQ(GetFocus(), second);
}

}  // namespace
