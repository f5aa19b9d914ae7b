#pragma once

// What the tests of skinned windows need: a skin, windows of a class with a background of its own, and their pictures.

#include <gtest/gtest.h>
#include <kadata/skin_window.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "desktop/picture.h"
#include "skin_fixture.h"

namespace test {

inline constexpr COLORREF PLAIN = RGB(250, 0, 0);  // the background of the windows' class

// Complete, of the bitmaps in data/resources.rc.
inline SkinInfo SkinOfWindows() {
    SkinInfo skin;
    std::vector<UINT> fields(sizeof(skin) / sizeof(UINT), 1);
    std::memcpy(static_cast<void*>(&skin), fields.data(), sizeof(skin));
    skin.windowBackground = {POSITIONS, 32, 128};
    skin.windowFrame = {POSITIONS, 24, 20, 4, 3, 2};
    skin.captionButton = {POSITIONS, 13, 11, 3};
    skin.closeGlyph = skin.minimizeGlyph = {POSITIONS, 5, 4};
    skin.nCaptionButtonWidth = 20;
    skin.nCaptionButtonHeight = 14;
    skin.nCaptionButtonGap = 2;
    return skin;
}

class SkinWindowTest : public testing::Test {
protected:
    using Procedure = std::function<void(HWND window, UINT message, WPARAM wParam, LPARAM lParam)>;

    SkinWindowTest() {
        const Gdiplus::GdiplusStartupInput input;
        EXPECT_EQ(Gdiplus::GdiplusStartup(&token_, &input, nullptr), Gdiplus::Ok);
        WNDCLASSW description = {};
        description.lpfnWndProc = &OwnProcedure;
        description.hInstance = GetModuleHandleW(nullptr);
        description.hbrBackground = CreateSolidBrush(PLAIN);
        description.lpszClassName = CLASS_NAME;
        RegisterClassW(&description);
    }
    ~SkinWindowTest() override {
        OnProcedure() = nullptr;
        if (IsWindow(window_)) {
            DestroyWindow(window_);
        }
        UnregisterClassW(CLASS_NAME, GetModuleHandleW(nullptr));
        CWnd::DeleteTempMap();
        EXPECT_TRUE(CSkinSubclassWndMap::GetHookMap().IsEmpty());
        Gdiplus::GdiplusShutdown(token_);
    }

    // What the windows' own procedure is told.
    static Procedure& OnProcedure() {
        static Procedure call;
        return call;
    }

    // Instead of the one before.
    void Make(DWORD style, CSize size, DWORD exStyle = 0) {
        if (IsWindow(window_)) {
            DestroyWindow(window_);
        }
        window_ = CreateWindowExW(exStyle, CLASS_NAME, _T("Title"), style, 100, 80, size.cx, size.cy, nullptr, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(window_, nullptr);
    }
    CWnd* Wnd() { return CWnd::FromHandle(window_); }

    // Paints what is due.
    void Show() {
        ShowWindow(window_, SW_SHOWNOACTIVATE);
        RedrawWindow(window_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }
    void Resize(CSize size) {
        SetWindowPos(window_, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        RedrawWindow(window_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }

    // The first pixel, from column `from` on, in which the client area is not the stretched background; empty when there is none.
    std::string Seam(int from = 0) {
        const CSize size = CSkinClientRect(window_).Size();
        const desktop_test::Picture shown(size.cx, size.cy, 0);
        const desktop_test::Picture expected(size.cx, size.cy, 0);
        const HDC dc = GetDCEx(window_, nullptr, DCX_CACHE);
        BitBlt(shown.Context(), 0, 0, size.cx, size.cy, dc, 0, 0, SRCCOPY);
        ReleaseDC(window_, dc);
        DrawExpected(expected, size);
        for (int y = 0; y < size.cy; ++y) {
            for (int x = from; x < size.cx; ++x) {
                const DWORD pixel = shown.Pixels()[y * size.cx + x] & 0xFFFFFF;
                const DWORD wanted = expected.Pixels()[y * size.cx + x] & 0xFFFFFF;
                if (pixel != wanted) {
                    return std::to_string(x) + "," + std::to_string(y) + ": " + std::to_string(pixel) + " for " +
                           std::to_string(wanted);
                }
            }
        }
        return {};
    }

    HWND window_ = nullptr;

private:
    static constexpr LPCTSTR CLASS_NAME = _T("SkinWindowTest");

    static LRESULT CALLBACK OwnProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (OnProcedure()) {
            OnProcedure()(window, message, wParam, lParam);
        }
        return DefWindowProcW(window, message, wParam, lParam);
    }

    static void DrawExpected(const desktop_test::Picture& picture, CSize size) {
        CSkin skin;
        SkinBitmapInfo info = SkinOfWindows().windowBackground;
        ASSERT_TRUE(skin.SetWindowBackgroundBitmapInfo(info));
        const CRect whole(CPoint(), size);
        FillRect(picture.Context(), &whole, GetSysColorBrush(COLOR_3DFACE));
        Gdiplus::Graphics graphics(picture.Context());
        EXPECT_EQ(skin.DrawWindowBackgroundBitmap(&graphics, whole), Gdiplus::Ok);
    }

    ULONG_PTR token_ = 0;
};

}  // namespace test
