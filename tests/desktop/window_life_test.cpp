// Creation, showing, placing and destruction: which messages come, and in which order.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>
#include <vector>

#include "message_log.h"
#include "support/last_error.h"

namespace {

using desktop_test::Joined;
using desktop_test::MessageLog;
using desktop_test::Names;

constexpr RECT kPlace = {10, 20, 210, 180};

TEST(WindowLife, MessagesOfCreationShowingAndDestruction) {
    struct Row {
        const char* name;
        DWORD style;
        bool child;
        const char* creation;
        const char* showing;
        const char* hiding;
        const char* destruction;
    };
    const Row rows[] = {
        {"popup", WS_POPUP, false, "NCCREATE NCCALCSIZE CREATE SIZE MOVE", "SHOWWINDOW POSCHANGING POSCHANGED",
         "SHOWWINDOW POSCHANGING POSCHANGED", "DESTROY NCDESTROY"},
        {"overlapped", WS_OVERLAPPEDWINDOW, false, "GETMINMAXINFO NCCREATE NCCALCSIZE CREATE",
         "SHOWWINDOW POSCHANGING POSCHANGED SIZE MOVE", "SHOWWINDOW POSCHANGING POSCHANGED", "DESTROY NCDESTROY"},
        {"child", WS_CHILD, true, "NCCREATE NCCALCSIZE CREATE SIZE MOVE", "SHOWWINDOW POSCHANGING POSCHANGED",
         "SHOWWINDOW POSCHANGING POSCHANGED", "DESTROY NCDESTROY"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        MessageLog log;
        const HWND parent = row.child ? log.Create(WS_POPUP | WS_VISIBLE, 0, {0, 0, 300, 300}, nullptr, "parent") : nullptr;
        const auto own = [&] {
            Names names = log.Take();
            std::erase_if(names, [](const std::string& each) { return each.find("parent.") == 0; });
            return Joined(names);
        };
        own();
        const HWND window = log.Create(row.style, 0, kPlace, parent);
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(own(), row.creation);
        EXPECT_EQ(ShowWindow(window, SW_SHOWNA), FALSE);
        EXPECT_EQ(own(), row.showing);
        EXPECT_EQ(ShowWindow(window, SW_HIDE), TRUE);
        EXPECT_EQ(own(), row.hiding);
        EXPECT_TRUE(DestroyWindow(window));
        EXPECT_EQ(own(), row.destruction);
        EXPECT_FALSE(IsWindow(window));
    }
}

TEST(WindowLife, MessagesOfPlacing) {
    MessageLog log;
    const HWND top = log.Create(WS_POPUP, 0, kPlace);
    log.Take();
    struct Row {
        const char* name;
        RECT place;  // left, top, width, height
        UINT flags;
        const char* messages;
    };
    const Row rows[] = {
        {"moved", {30, 40, 0, 0}, SWP_NOSIZE, "POSCHANGING POSCHANGED MOVE"},
        {"sized", {0, 0, 120, 90}, SWP_NOMOVE, "POSCHANGING NCCALCSIZE POSCHANGED SIZE"},
        {"both", {50, 60, 100, 70}, 0, "POSCHANGING NCCALCSIZE POSCHANGED MOVE SIZE"},
        {"nothing", {50, 60, 100, 70}, 0, "POSCHANGING"},
        {"frame", {0, 0, 0, 0}, SWP_NOMOVE | SWP_NOSIZE | SWP_FRAMECHANGED, "POSCHANGING NCCALCSIZE POSCHANGED"},
        {"untold", {51, 61, 0, 0}, SWP_NOSIZE | SWP_NOSENDCHANGING, "POSCHANGED MOVE"},
    };
    for (const Row& row : rows) {
        EXPECT_TRUE(SetWindowPos(top, nullptr, row.place.left, row.place.top, row.place.right, row.place.bottom,
                                 row.flags | SWP_NOACTIVATE | SWP_NOZORDER));
        EXPECT_EQ(Joined(log.Take()), row.messages) << row.name;
    }
    EXPECT_TRUE(SetWindowTextW(top, _T("another title")));
    EXPECT_EQ(EnableWindow(top, FALSE), FALSE);
    EXPECT_EQ(EnableWindow(top, FALSE), TRUE);
    EXPECT_EQ(EnableWindow(top, TRUE), TRUE);
    EXPECT_EQ(Joined(log.Take()), "CANCELMODE ENABLE CANCELMODE ENABLE");
    SetWindowLongPtrW(top, GWL_STYLE, GetWindowLongPtrW(top, GWL_STYLE) | WS_BORDER);
    EXPECT_EQ(Joined(log.Take()), "STYLECHANGING STYLECHANGED");
}

TEST(WindowLife, ARefusedCreationLeavesNothing) {
    struct Row {
        UINT message;
        LRESULT answer;
        const char* messages;
    };
    const Row rows[] = {{WM_NCCREATE, FALSE, "NCCREATE NCDESTROY"}, {WM_CREATE, -1, "NCCREATE NCCALCSIZE CREATE NCDESTROY"}};
    for (const Row& row : rows) {
        MessageLog log;
        HWND refused = nullptr;
        log.on_message = [&](HWND at, UINT message, WPARAM, LPARAM, LRESULT& result) {
            refused = at;
            result = row.answer;
            return message == row.message;
        };
        EXPECT_EQ(log.Create(WS_POPUP, 0, kPlace), nullptr);
        EXPECT_EQ(Joined(log.Take()), row.messages);
        EXPECT_FALSE(IsWindow(refused));
    }
}

TEST(WindowLife, AWindowTakesItsChildrenAndOwnedWindowsAlong) {
    MessageLog log;
    const HWND top = log.Create(WS_POPUP, 0, kPlace, nullptr, "top");
    const HWND outer = log.Create(WS_CHILD, 0, kPlace, top, "outer");
    log.Create(WS_CHILD, 0, kPlace, outer, "inner");
    log.Create(WS_POPUP, 0, kPlace, outer, "owned");
    log.Take();
    EXPECT_TRUE(DestroyWindow(top));
    Names names = log.Take();
    std::erase_if(names, [](const std::string& each) {
        return each.find("DESTROY") == std::string::npos && each.find("NOTIFY") == std::string::npos;
    });
    EXPECT_EQ(
        Joined(names),
        "owned.DESTROY owned.NCDESTROY top.DESTROY outer.DESTROY inner.DESTROY inner.NCDESTROY outer.NCDESTROY top.NCDESTROY");
}

TEST(WindowLife, DestroyedInsideEachMessage) {
    struct Step {
        const char* name;
        UINT message;
        void (*provoke)(HWND);
    };
    const Step steps[] = {
        {"show", WM_SHOWWINDOW, [](HWND window) { ShowWindow(window, SW_SHOWNA); }},
        {"changing", WM_WINDOWPOSCHANGING, [](HWND window) { MoveWindow(window, 1, 2, 30, 40, FALSE); }},
        {"client area", WM_NCCALCSIZE, [](HWND window) { MoveWindow(window, 1, 2, 30, 40, FALSE); }},
        {"changed", WM_WINDOWPOSCHANGED, [](HWND window) { MoveWindow(window, 1, 2, 30, 40, FALSE); }},
        {"size", WM_SIZE, [](HWND window) { MoveWindow(window, 1, 2, 30, 40, FALSE); }},
        {"enable", WM_ENABLE, [](HWND window) { EnableWindow(window, FALSE); }},
        {"text", WM_SETTEXT, [](HWND window) { SetWindowTextW(window, _T("x")); }},
        {"style", WM_STYLECHANGED, [](HWND window) { SetWindowLongPtrW(window, GWL_STYLE, WS_POPUP | WS_BORDER); }},
        {"paint", WM_PAINT, [](HWND window) { ShowWindow(window, SW_SHOWNA), UpdateWindow(window); }},
        {"erase", WM_ERASEBKGND, [](HWND window) { ShowWindow(window, SW_SHOWNA), UpdateWindow(window); }},
        {"activate", WM_ACTIVATE, [](HWND window) { ShowWindow(window, SW_SHOW); }},
        {"focus", WM_SETFOCUS, [](HWND window) { ShowWindow(window, SW_SHOW), SetFocus(window); }},
        {"capture", WM_CAPTURECHANGED, [](HWND window) { SetCapture(window), ReleaseCapture(); }},
        {"destroy", WM_DESTROY, [](HWND window) { DestroyWindow(window); }},
        {"last", WM_NCDESTROY, [](HWND window) { DestroyWindow(window); }},
    };
    for (const Step& step : steps) {
        MessageLog log;
        const HWND window = log.Create(WS_POPUP, 0, kPlace);
        int times = 0;
        log.on_message = [&](HWND at, UINT message, WPARAM, LPARAM, LRESULT&) {
            if (message == step.message && times++ == 0) {
                DestroyWindow(at);
            }
            return false;
        };
        step.provoke(window);
        EXPECT_GE(times, 1) << step.name;
        EXPECT_FALSE(IsWindow(window)) << step.name;
        EXPECT_EQ(GetFocus() == window || GetActiveWindow() == window || GetCapture() == window, false) << step.name;
    }
}

TEST(WindowLife, AThousandWindows) {
    MessageLog log;
    const HWND top = log.Create(WS_POPUP, 0, kPlace);
    std::vector<HWND> all;
    for (int i = 0; i < 1000; ++i) {
        all.push_back(log.Create(WS_CHILD | WS_VISIBLE, 0, {i, i, i + 1, i + 1}, top));
        ASSERT_NE(all.back(), nullptr);
    }
    int counted = 0;
    EnumChildWindows(
        top,
        [](HWND, LPARAM count) -> BOOL {
            ++*reinterpret_cast<int*>(count);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&counted));
    EXPECT_EQ(counted, 1000);
    EXPECT_TRUE(DestroyWindow(top));
    for (const HWND each : all) {
        ASSERT_FALSE(IsWindow(each));
    }
}

}  // namespace
