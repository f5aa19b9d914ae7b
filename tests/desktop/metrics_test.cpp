// Sizes, colours, settings and monitors of the desktop.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <cstddef>
#include <string_view>

#include "../support/last_error.h"
#include "../support/wine.h"

namespace {

using test::ErrorOf;

int Metric(int index) {
    return GetSystemMetrics(index);
}

TEST(Metrics, FitTogether) {
    EXPECT_GT(Metric(SM_CXSCREEN), 0);
    EXPECT_GE(Metric(SM_CXVIRTUALSCREEN), Metric(SM_CXSCREEN));
    EXPECT_GE(Metric(SM_CYMAXTRACK), Metric(SM_CYVIRTUALSCREEN));
    EXPECT_GE(Metric(SM_CMONITORS), 1);
    EXPECT_EQ(Metric(SM_MOUSEPRESENT), 1);
    EXPECT_EQ(Metric(SM_REMOTESESSION), 0);
    EXPECT_EQ(Metric(SM_CXFIXEDFRAME), Metric(SM_CXDLGFRAME));
    EXPECT_EQ(Metric(-1), 0);
    EXPECT_EQ(Metric(60000), 0);
    constexpr struct {
        int index;
        int least;
        int most;
    } ranges[] = {{SM_CXICON, 32, 32},    {SM_CXSMICON, 16, 16},   {SM_CXCURSOR, 32, 32}, {SM_CXBORDER, 1, 1},
                  {SM_CXEDGE, 2, 2},      {SM_CXFIXEDFRAME, 3, 3}, {SM_CXFRAME, 3, 8},    {SM_CYCAPTION, 18, 31},
                  {SM_CXVSCROLL, 15, 20}, {SM_CXDOUBLECLK, 4, 4},  {SM_CXDRAG, 2, 8}};
    for (const auto& [index, least, most] : ranges) {
        EXPECT_GE(Metric(index), least) << index;
        EXPECT_LE(Metric(index), most) << index;
    }
    EXPECT_EQ(GetDoubleClickTime(), 500U);
}

TEST(Metrics, SettingsAgreeWithMetrics) {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    ASSERT_TRUE(SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0));
    EXPECT_EQ(metrics.iCaptionHeight + 1, Metric(SM_CYCAPTION));
    EXPECT_EQ(metrics.iScrollWidth, Metric(SM_CXVSCROLL));
    EXPECT_EQ(metrics.iMenuHeight + 1, Metric(SM_CYMENU));
    EXPECT_LT(metrics.lfCaptionFont.lfHeight, 0);
    EXPECT_FALSE(std::basic_string_view<TCHAR>(metrics.lfMessageFont.lfFaceName).empty());

    NONCLIENTMETRICSW older = {};
    older.cbSize = offsetof(NONCLIENTMETRICSW, iPaddedBorderWidth);
    older.iPaddedBorderWidth = 77;
    ASSERT_TRUE(SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, older.cbSize, &older, 0));
    EXPECT_EQ(older.iPaddedBorderWidth, 77);
    EXPECT_EQ(older.iCaptionHeight, metrics.iCaptionHeight);
    older.cbSize = 12;
    EXPECT_EQ(SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, 12, &older, 0), test::UnlessWine(FALSE, TRUE));

    RECT work = {};
    ASSERT_TRUE(SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0));
    EXPECT_EQ(work.right - work.left, Metric(SM_CXFULLSCREEN));
    EXPECT_LE(work.bottom - work.top, Metric(SM_CYSCREEN));
    UINT lines = 0;
    ASSERT_TRUE(SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0));
    EXPECT_EQ(lines, 3U);
    EXPECT_EQ(ErrorOf(SystemParametersInfoW(0xBEEF, 0, &lines, 0)), ERROR_INVALID_SPI_VALUE);
}

TEST(Metrics, ColoursHaveBrushesThatStay) {
    EXPECT_EQ(GetSysColor(COLOR_WINDOW), RGB(255, 255, 255));
    EXPECT_EQ(GetSysColor(COLOR_WINDOWTEXT), RGB(0, 0, 0));
    EXPECT_EQ(GetSysColor(1000), 0U);
    EXPECT_EQ(GetSysColorBrush(1000), nullptr);
    for (const int color : {COLOR_BTNFACE, COLOR_HIGHLIGHT, COLOR_MENUBAR}) {
        const HBRUSH brush = GetSysColorBrush(color);
        EXPECT_EQ(GetSysColorBrush(color), brush);
        DeleteObject(brush);
        LOGBRUSH description = {};
        ASSERT_EQ(GetObjectW(brush, sizeof description, &description), static_cast<int>(sizeof description)) << color;
        EXPECT_EQ(description.lbColor, GetSysColor(color)) << color;
    }
}

TEST(Metrics, TheWindowStationIsNamed) {
    const HWINSTA station = GetProcessWindowStation();
    USEROBJECTFLAGS flags = {};
    DWORD needed = 0;
    EXPECT_TRUE(GetUserObjectInformationW(station, UOI_FLAGS, &flags, sizeof flags, &needed));
    EXPECT_EQ(needed, sizeof flags);
    TCHAR name[16] = {};
    EXPECT_TRUE(GetUserObjectInformationW(station, UOI_NAME, name, sizeof name, &needed));
    EXPECT_EQ(std::basic_string_view<TCHAR>(name), _T("WinSta0"));
    EXPECT_EQ(needed, 16U);
    EXPECT_EQ(ErrorOf(GetUserObjectInformationW(station, UOI_TYPE, name, 8, &needed)), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(needed, 28U);
    EXPECT_EQ(ErrorOf(GetUserObjectInformationW(station, 99, name, sizeof name, nullptr)), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ErrorOf(GetUserObjectInformationW(nullptr, UOI_NAME, name, sizeof name, nullptr)), ERROR_INVALID_HANDLE);
}

TEST(Metrics, MonitorsAreFoundByPlace) {
    const HMONITOR primary = MonitorFromPoint({0, 0}, MONITOR_DEFAULTTONULL);
    ASSERT_NE(primary, nullptr);
    MONITORINFO info = {};
    info.cbSize = sizeof info;
    ASSERT_TRUE(GetMonitorInfoW(primary, &info));
    EXPECT_EQ(info.dwFlags, static_cast<DWORD>(MONITORINFOF_PRIMARY));
    EXPECT_EQ(info.rcMonitor.right - info.rcMonitor.left, Metric(SM_CXSCREEN));
    EXPECT_GE(info.rcWork.top, info.rcMonitor.top);
    EXPECT_LE(info.rcWork.bottom, info.rcMonitor.bottom);

    const POINT far_away = {100000, -100000};
    EXPECT_EQ(MonitorFromPoint(far_away, MONITOR_DEFAULTTONULL), nullptr);
    EXPECT_EQ(MonitorFromPoint(far_away, MONITOR_DEFAULTTOPRIMARY), primary);
    EXPECT_NE(MonitorFromPoint({0x7FFFFFFF, 0x7FFFFFFF}, MONITOR_DEFAULTTONEAREST), nullptr);
    const RECT across = {-10, -10, 10, 10};
    EXPECT_EQ(MonitorFromRect(&across, MONITOR_DEFAULTTONULL), primary);
    EXPECT_EQ(MonitorFromWindow(nullptr, MONITOR_DEFAULTTOPRIMARY), primary);
    EXPECT_EQ(MonitorFromWindow(nullptr, MONITOR_DEFAULTTONULL), nullptr);

    info.cbSize = 7;
    EXPECT_FALSE(GetMonitorInfoW(primary, &info));
    info.cbSize = sizeof info;
    EXPECT_EQ(ErrorOf(GetMonitorInfoW(reinterpret_cast<HMONITOR>(LONG_PTR{0x7654}), &info)), ERROR_INVALID_MONITOR_HANDLE);
}

}  // namespace
