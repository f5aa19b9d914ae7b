// The layer's own inside: leaks, the clock of timers, what a display tells.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <chrono>
#include <string>
#include <thread>

#include "desktop/desktop_state.h"
#include "desktop/display.h"
#include "gdi/gdi_objects.h"
#include "message_log.h"

namespace {

using desktop_test::MessageLog;

constexpr RECT kPlace = {10, 20, 210, 180};

int Ticks(HWND window) {
    int ticks = 0;
    MSG message;
    while (PeekMessageW(&message, window, WM_TIMER, WM_TIMER, PM_REMOVE)) {
        ++ticks;
    }
    return ticks;
}

TEST(LinuxDesktop, NothingIsLeft) {
    const std::size_t windows = kawin::CountWindows();
    const std::size_t objects = kawin::CountGdiObjects();
    {
        MessageLog log;
        const HWND top = log.Create(WS_POPUP | WS_VISIBLE, 0, kPlace);
        log.Create(WS_CHILD | WS_VISIBLE, 0, kPlace, top);
        SetWindowRgn(top, CreateRectRgn(0, 0, 50, 50), TRUE);
        UpdateWindow(top);
        const HDC context = GetDCEx(top, CreateRectRgn(0, 0, 9, 9), DCX_INTERSECTRGN);
        ReleaseDC(top, context);
        EXPECT_EQ(kawin::CountWindows(), windows + 2);
    }
    std::thread([] {
        const HWND left = CreateWindowExW(0, _T("Static"), nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
        CreateWindowExW(0, _T("Static"), nullptr, WS_CHILD, 0, 0, 1, 1, left, nullptr, nullptr, nullptr);
    }).join();
    EXPECT_EQ(kawin::CountWindows(), windows);
    EXPECT_EQ(kawin::CountGdiObjects(), objects);
}

TEST(LinuxDesktop, LateTimersComeOnce) {
    MessageLog log;
    const HWND window = log.Create(WS_POPUP, 0, kPlace);
    SetTimer(window, 1, 60000, nullptr);
    EXPECT_EQ(Ticks(window), 0);
    kawin::AdvanceTimerClock(std::chrono::seconds(61));
    EXPECT_EQ(Ticks(window), 1);
    kawin::AdvanceTimerClock(std::chrono::seconds(600));
    EXPECT_EQ(Ticks(window), 1);
    kawin::AdvanceTimerClock(std::chrono::seconds(30));
    EXPECT_EQ(Ticks(window), 0);
    SetTimer(window, 1, 100000, nullptr);
    kawin::AdvanceTimerClock(std::chrono::seconds(61));
    EXPECT_EQ(Ticks(window), 0) << "set anew";
}

TEST(LinuxDesktop, WhatADisplaySeesAndTells) {
    MessageLog log;
    const HWND owner = log.Create(WS_POPUP | WS_VISIBLE, 0, kPlace);
    const HWND owned = log.Create(WS_POPUP, WS_EX_TOOLWINDOW, kPlace, owner);
    std::string order;
    for (const kawin::TopLevel& each : kawin::SnapshotTopLevels()) {
        if (each.window == owner || each.window == owned) {
            order += std::string(each.window == owner ? "owner" : "owned") + (each.visible ? " shown" : "") +
                     (each.tool ? " tool" : "") + (each.owner == owner ? " of owner;" : ";");
        }
    }
    EXPECT_EQ(order, "owned tool of owner;owner shown;");

    kawin::Moved(owner, {1, 2, 61, 52});
    kawin::CloseRequested(owned);
    MSG message;
    bool asked = false;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_SYSCOMMAND) {
            asked = message.hwnd == owned && message.wParam == SC_CLOSE;
        } else {
            DispatchMessageW(&message);
        }
    }
    EXPECT_TRUE(asked);
    RECT rect = {};
    GetWindowRect(owner, &rect);
    EXPECT_EQ(rect.left, 1);
    EXPECT_EQ(rect.bottom, 52);
    SetFocus(owner);
    kawin::Activated(nullptr);
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    EXPECT_EQ(GetFocus(), nullptr);
    EXPECT_EQ(GetForegroundWindow(), nullptr);
    kawin::Activated(owner);
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    EXPECT_EQ(GetFocus(), owner);
}

// Of WM_NCPAINT with a region the default procedure draws just that part of the frame.
TEST(LinuxDesktop, AFrameIsDrawnWhereItIsDue) {
    MessageLog log;
    const HWND window = log.Create(WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, kPlace);
    UpdateWindow(window);
    const HDC context = GetWindowDC(window);
    constexpr RECT kAll = {0, 0, 200, 160};
    FillRect(context, &kAll, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    const HRGN part = CreateRectRgn(kPlace.left, kPlace.top, kPlace.left + 100, kPlace.top + 4);
    DefWindowProcW(window, WM_NCPAINT, reinterpret_cast<WPARAM>(part), 0);
    EXPECT_NE(GetPixel(context, 99, 3), COLORREF{0});
    EXPECT_EQ(GetPixel(context, 100, 3), COLORREF{0});
    EXPECT_EQ(GetPixel(context, 99, 4), COLORREF{0});
    DeleteObject(part);
    ReleaseDC(window, context);
}

}  // namespace
