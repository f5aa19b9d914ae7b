// Where the parts of a frame are, and what they answer.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>
#include <vector>

#include "message_log.h"

namespace {

using desktop_test::MessageLog;

constexpr RECT kPlace = {100, 100, 500, 400};

RECT WindowRectOf(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return rect;
}

// The client area on the screen.
RECT ClientRectOf(HWND window) {
    RECT rect = {};
    GetClientRect(window, &rect);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

LRESULT HitTest(HWND window, LONG x, LONG y) {
    return SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(y)));
}

int Metric(int index) {
    return GetSystemMetrics(index);
}

struct Frame {
    DWORD style;
    DWORD extended;
    int side;
    int caption;
};

std::vector<Frame> Frames() {
    const int sizing = Metric(SM_CXSIZEFRAME) + Metric(SM_CXPADDEDBORDER);
    const int dialog = Metric(SM_CXFIXEDFRAME);
    const int line = Metric(SM_CXBORDER);
    const int edge = Metric(SM_CXEDGE);
    const int caption = Metric(SM_CYCAPTION);
    const int small = Metric(SM_CYSMCAPTION);
    return {
        {WS_POPUP, 0, 0, 0},
        {WS_POPUP | WS_BORDER, 0, line, 0},
        {WS_POPUP | WS_DLGFRAME, 0, dialog, 0},
        {WS_POPUP | WS_CAPTION, 0, dialog, caption},
        {WS_POPUP | WS_CAPTION | WS_SYSMENU, WS_EX_DLGMODALFRAME, dialog, caption},
        {WS_POPUP | WS_CAPTION, WS_EX_TOOLWINDOW, dialog, small},
        {WS_POPUP | WS_CAPTION | WS_THICKFRAME, WS_EX_TOOLWINDOW, sizing, small},
        {WS_OVERLAPPEDWINDOW, 0, sizing, caption},
        {WS_OVERLAPPEDWINDOW, WS_EX_CLIENTEDGE, sizing + edge, caption},
        {WS_POPUP, WS_EX_CLIENTEDGE, edge, 0},
        {WS_POPUP, WS_EX_STATICEDGE, line, 0},
        {WS_POPUP | WS_BORDER, WS_EX_STATICEDGE, line + line, 0},
        {WS_POPUP, WS_EX_DLGMODALFRAME, dialog, 0},
        {WS_POPUP | WS_BORDER, WS_EX_CLIENTEDGE, line + edge, 0},
    };
}

// What AdjustWindowRectEx adds and what WM_NCCALCSIZE takes off are the same.
TEST(FrameLayout, WidthsFollowTheStyles) {
    for (const Frame& frame : Frames()) {
        SCOPED_TRACE(testing::Message() << std::hex << frame.style << " " << frame.extended);
        RECT around = {0, 0, 100, 50};
        ASSERT_TRUE(AdjustWindowRectEx(&around, frame.style, FALSE, frame.extended));
        EXPECT_EQ(around.left, -frame.side);
        EXPECT_EQ(around.top, -frame.side - frame.caption);
        EXPECT_EQ(around.right, 100 + frame.side);
        EXPECT_EQ(around.bottom, 50 + frame.side);

        MessageLog log;
        const HWND window = log.Create(frame.style, frame.extended, kPlace);
        const RECT client = ClientRectOf(window);
        EXPECT_EQ(client.left - kPlace.left, -around.left);
        EXPECT_EQ(client.top - kPlace.top, -around.top);
        EXPECT_EQ(kPlace.right - client.right, around.right - 100);
        EXPECT_EQ(kPlace.bottom - client.bottom, around.bottom - 50);
    }
}

TEST(FrameLayout, AWindowTooSmallForItsFrameHasNoClientArea) {
    MessageLog log;
    const HWND window = log.Create(WS_POPUP | WS_CAPTION, 0, {10, 10, 15, 15});
    const RECT client = ClientRectOf(window);
    EXPECT_EQ(client.right - client.left, 0);
    EXPECT_EQ(client.bottom - client.top, 0);
}

TEST(FrameLayout, EveryPartIsFound) {
    MessageLog log;
    const HWND window = log.Create(WS_OVERLAPPEDWINDOW, 0, kPlace);
    const RECT all = WindowRectOf(window);
    const RECT client = ClientRectOf(window);
    const LONG middle_x = (all.left + all.right) / 2;
    const LONG middle_y = (all.top + all.bottom) / 2;
    const LONG caption_y = client.top - 1 - Metric(SM_CYSIZE) / 2;
    const struct {
        LONG x;
        LONG y;
        int part;
    } points[] = {
        {middle_x, middle_y, HTCLIENT},
        {client.left, client.top, HTCLIENT},
        {client.right - 1, client.bottom - 1, HTCLIENT},
        {middle_x, caption_y, HTCAPTION},
        {all.left, middle_y, HTLEFT},
        {client.left - 1, middle_y, HTLEFT},
        {all.right - 1, middle_y, HTRIGHT},
        {middle_x, all.top, HTTOP},
        {middle_x, all.bottom - 1, HTBOTTOM},
        {all.left, all.top, HTTOPLEFT},
        {all.right - 1, all.top, HTTOPRIGHT},
        {all.left, all.bottom - 1, HTBOTTOMLEFT},
        {all.right - 1, all.bottom - 1, HTBOTTOMRIGHT},
        {client.right - Metric(SM_CXSMSIZE) / 2, caption_y, HTCLOSE},
        {client.left + Metric(SM_CXSMICON) / 2, caption_y, HTSYSMENU},
        {all.left - 1, middle_y, HTNOWHERE},
        {middle_x, all.bottom, HTNOWHERE},
    };
    for (const auto& point : points) {
        EXPECT_EQ(HitTest(window, point.x, point.y), point.part) << point.x - all.left << "," << point.y - all.top;
    }
    // From the close box to the left: the other two, each once.
    std::string seen;
    for (LONG x = client.right - 1; x >= middle_x; --x) {
        const LRESULT part = HitTest(window, x, caption_y);
        const char sign = part == HTCLOSE ? 'x' : part == HTMAXBUTTON ? 'M' : part == HTMINBUTTON ? 'm' : '.';
        if (sign != '.' && (seen.empty() || seen.back() != sign)) {
            seen += sign;
        }
    }
    EXPECT_EQ(seen, "xMm");
}

TEST(FrameLayout, AFixedFrameIsNoHandle) {
    MessageLog log;
    const HWND window = log.Create(WS_POPUP | WS_CAPTION, 0, kPlace);
    EXPECT_EQ(HitTest(window, kPlace.left, 250), HTBORDER);
    EXPECT_EQ(HitTest(window, 300, kPlace.bottom - 1), HTBORDER);
    EXPECT_EQ(HitTest(window, 300, kPlace.top + Metric(SM_CYCAPTION) / 2), HTCAPTION);
}

}  // namespace
