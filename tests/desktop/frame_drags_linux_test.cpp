// A frame under the pointer and the arrow keys: the desktop is off screen, so that nothing but the test moves them.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <vector>

#include "message_log.h"
#include "picture.h"

namespace {

using desktop_test::MessageLog;

constexpr RECT kPlace = {100, 100, 500, 400};

struct Step {
    POINT place;
    DWORD button;  // MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP or 0
};

void Point(const std::vector<Step>& steps) {
    for (const Step& step : steps) {
        SetCursorPos(step.place.x, step.place.y);
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = step.button != 0 ? step.button : MOUSEEVENTF_MOVE;
        SendInput(1, &input, sizeof input);
    }
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        DispatchMessageW(&message);
    }
}

RECT WindowRectOf(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return rect;
}

std::vector<LONG> Edges(const RECT& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

constexpr DWORD kDown = MOUSEEVENTF_LEFTDOWN;
constexpr DWORD kUp = MOUSEEVENTF_LEFTUP;

TEST(LinuxFrameDrags, DragsTheCaptionAndTheEdges) {
    struct Case {
        POINT from;
        POINT to;
        RECT place;
    };
    const int least_width = GetSystemMetrics(SM_CXMINTRACK);
    const Case cases[] = {
        {{300, 115}, {340, 95}, {140, 80, 540, 380}},   {{103, 250}, {83, 300}, {80, 100, 500, 400}},
        {{497, 397}, {547, 417}, {100, 100, 550, 420}}, {{103, 103}, {113, 123}, {110, 120, 500, 400}},
        {{300, 397}, {350, 357}, {100, 100, 500, 360}}, {{497, 250}, {0, 250}, {100, 100, 100 + least_width, 400}},
    };
    for (const Case& each : cases) {
        MessageLog log;
        const HWND window = log.Create(WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, kPlace);
        Point({{each.from, 0}, {each.from, kDown}, {each.to, 0}, {each.to, kUp}});
        EXPECT_EQ(Edges(WindowRectOf(window)), Edges(each.place)) << each.from.x << "," << each.from.y;
        EXPECT_EQ(GetCapture(), nullptr);
    }
}

TEST(LinuxFrameDrags, AProcedureChangesWhereAWindowGoes) {
    MessageLog log;
    log.on_message = [](HWND, UINT message, WPARAM, LPARAM lparam, LRESULT& result) {
        if (message != WM_MOVING) {
            return false;
        }
        auto& rect = *reinterpret_cast<RECT*>(lparam);
        OffsetRect(&rect, 0, kPlace.top - rect.top);  // only sideways
        result = TRUE;
        return true;
    };
    const HWND window = log.Create(WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, kPlace);
    Point({{{300, 115}, kDown}, {{320, 215}, 0}, {{320, 215}, kUp}});
    EXPECT_EQ(Edges(WindowRectOf(window)), Edges({120, 100, 520, 400}));
}

TEST(LinuxFrameDrags, ABoxActsWhereItIsLetGo) {
    const POINT close_box = {480, 119};
    const POINT maximise_box = {440, 119};
    const POINT elsewhere = {300, 250};
    MessageLog log;
    int closes = 0;
    log.on_message = [&](HWND, UINT message, WPARAM, LPARAM, LRESULT&) {
        closes += message == WM_CLOSE;
        return message == WM_CLOSE;
    };
    const HWND window = log.Create(WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, kPlace);
    const HDC context = GetWindowDC(window);
    const auto box_color = [&] { return GetPixel(context, close_box.x - kPlace.left - 14, close_box.y - kPlace.top); };
    UpdateWindow(window);
    const COLORREF quiet = box_color();
    Point({{close_box, 0}});
    const COLORREF hot = box_color();
    EXPECT_NE(hot, quiet);
    Point({{elsewhere, 0}});
    EXPECT_EQ(box_color(), quiet);
    Point({{close_box, kDown}, {elsewhere, 0}, {elsewhere, kUp}});
    EXPECT_EQ(closes, 0);
    Point({{close_box, kDown}, {elsewhere, 0}, {close_box, 0}, {close_box, kUp}});
    EXPECT_EQ(closes, 1);
    EnableMenuItem(GetSystemMenu(window, FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
    Point({{close_box, kDown}, {close_box, kUp}});
    EXPECT_EQ(closes, 1);
    ReleaseDC(window, context);
    Point({{maximise_box, kDown}, {maximise_box, kUp}});
    EXPECT_TRUE(IsZoomed(window));
}

// The caption tells the active window from the others, and the title is in it.
TEST(LinuxFrameDrags, TheCaptionShowsStateAndTitle) {
    MessageLog log;
    const HWND window = log.Create(WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, kPlace);
    const HDC context = GetWindowDC(window);
    const auto dark_pixels = [&] {
        int dark = 0;
        for (int y = 10; y < 28; ++y) {
            for (int x = 40; x < 250; ++x) {
                dark += GetGValue(GetPixel(context, x, y)) < 100;
            }
        }
        return dark;
    };
    SendMessageW(window, WM_NCACTIVATE, TRUE, 0);
    const COLORREF active = GetPixel(context, 260, 19);
    SendMessageW(window, WM_NCACTIVATE, FALSE, 0);
    EXPECT_NE(GetPixel(context, 260, 19), active);
    SendMessageW(window, WM_NCACTIVATE, TRUE, -1);
    EXPECT_NE(GetPixel(context, 260, 19), active);
    SendMessageW(window, WM_NCPAINT, 1, 0);
    EXPECT_EQ(GetPixel(context, 260, 19), active);
    SetWindowTextW(window, _T(""));
    EXPECT_EQ(dark_pixels(), 0);
    SetWindowTextW(window, _T("Title"));
    EXPECT_GT(dark_pixels(), 20);
    ReleaseDC(window, context);
}

// The arrow keys that a moving or sizing loop finds in the queue, and where the window is afterwards.
TEST(LinuxFrameDrags, TheKeyboardMovesAndSizes) {
    struct Case {
        UINT command;
        std::vector<WPARAM> keys;
        RECT place;
    };
    const int step = 8;
    const Case cases[] = {
        {SC_MOVE, {VK_RIGHT, VK_DOWN, VK_DOWN, VK_RETURN}, {100 + step, 100 + 2 * step, 500 + step, 400 + 2 * step}},
        {SC_MOVE, {VK_RIGHT, VK_LEFT, VK_LEFT, VK_RETURN}, {100 - step, 100, 500 - step, 400}},
        {SC_MOVE, {VK_RIGHT, VK_DOWN, VK_ESCAPE}, kPlace},
        {SC_SIZE, {VK_RIGHT, VK_RIGHT, VK_RETURN}, {100, 100, 500 + step, 400}},
        {SC_SIZE, {VK_RIGHT, VK_RIGHT, VK_ESCAPE}, kPlace},
    };
    for (const Case& each : cases) {
        MessageLog log;
        int enters = 0;
        int exits = 0;
        int told = 0;
        log.on_message = [&](HWND, UINT message, WPARAM, LPARAM, LRESULT&) {
            enters += message == WM_ENTERSIZEMOVE;
            exits += message == WM_EXITSIZEMOVE;
            told += message == WM_MOVING || message == WM_SIZING;
            return false;
        };
        const HWND window = log.Create(WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, kPlace);
        SetCursorPos(300, 250);
        for (const WPARAM key : each.keys) {
            PostMessageW(window, WM_KEYDOWN, key, 0);
        }
        SendMessageW(window, WM_SYSCOMMAND, each.command, 0);
        const RECT place = WindowRectOf(window);
        EXPECT_TRUE(EqualRect(&place, &each.place))
            << each.command << ": " << place.left << "," << place.top << "," << place.right << "," << place.bottom;
        EXPECT_EQ(enters, 1);
        EXPECT_EQ(exits, 1);
        EXPECT_GT(told, 0);
    }
}

TEST(LinuxFrameDrags, AHiddenWindowIsPrintedWithItsFrame) {
    MessageLog log;
    const HWND window = log.Create(WS_OVERLAPPEDWINDOW, 0, kPlace);
    const desktop_test::Picture picture(400, 300, RGB(1, 2, 3));
    ASSERT_TRUE(PrintWindow(window, picture.Context(), 0));
    EXPECT_EQ(GetPixel(picture.Context(), 2, 150), GetPixel(picture.Context(), 260, 19));
    EXPECT_NE(GetPixel(picture.Context(), 2, 150), RGB(1, 2, 3));
}

}  // namespace
