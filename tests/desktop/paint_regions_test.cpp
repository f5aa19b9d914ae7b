// Update regions, painting, and where children are drawn.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>
#include <vector>

#include "message_log.h"
#include "support/wine.h"

namespace {

using desktop_test::MessageLog;
using desktop_test::Names;

std::string Text(const RECT& rect) {
    return std::to_string(rect.left) + "," + std::to_string(rect.top) + "," + std::to_string(rect.right) + "," +
           std::to_string(rect.bottom);
}

std::string UpdateOf(HWND window) {
    RECT rect = {};
    return GetUpdateRect(window, &rect, FALSE) ? Text(rect) : "none";
}

// A window of 100 x 60 and a child of 30 x 20 at 20,10, which fill themselves red and blue.
class PaintRegions : public testing::Test {
protected:
    void Open(DWORD style) {
        top_ = log_.Create(WS_POPUP | WS_VISIBLE | style, 0, {10, 20, 110, 80}, nullptr, "top");
        child_ = log_.Create(WS_CHILD | WS_VISIBLE, 0, {20, 10, 50, 30}, top_, "child");
        log_.on_message = [this](HWND at, UINT message, WPARAM wparam, LPARAM, LRESULT& result) {
            return Serve(at, message, wparam, result);
        };
        RedrawWindow(top_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        painted_.clear();
    }

    COLORREF PixelAt(int x, int y) const {
        const HDC context = GetDCEx(top_, nullptr, DCX_CACHE);  // children are not clipped away
        const COLORREF color = GetPixel(context, x, y);
        ReleaseDC(top_, context);
        return color;
    }

    void Update() { RedrawWindow(top_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); }

    MessageLog log_;
    HWND top_ = nullptr;
    HWND child_ = nullptr;
    COLORREF child_color_ = RGB(0, 0, 255);
    LRESULT erased_ = 1;
    std::vector<std::string> painted_;  // "erase" and "top 0,0,1,1"

private:
    bool Serve(HWND at, UINT message, WPARAM, LRESULT& result) {
        const std::string name = at == top_ ? "top" : at == child_ ? "child" : "other";
        if (message == WM_ERASEBKGND) {
            painted_.push_back(name + " erase");
            result = erased_;
            return true;
        }
        if (message != WM_PAINT) {
            return false;
        }
        PAINTSTRUCT paint;
        const HDC context = BeginPaint(at, &paint);
        const RECT all = {-1000, -1000, 1000, 1000};
        const HBRUSH brush = CreateSolidBrush(at == child_ ? child_color_ : RGB(255, 0, 0));
        FillRect(context, &all, brush);
        DeleteObject(brush);
        EndPaint(at, &paint);
        painted_.push_back(name + " " + Text(paint.rcPaint) + (paint.fErase ? " dirty" : ""));
        return true;
    }
};

TEST_F(PaintRegions, ParentAndChildKeepToTheirPlaces) {
    Open(WS_CLIPCHILDREN);
    struct Row {
        int x;
        int y;
        COLORREF color;
    };
    const Row rows[] = {{0, 0, RGB(255, 0, 0)},
                        {19, 10, RGB(255, 0, 0)},
                        {20, 10, RGB(0, 0, 255)},
                        {49, 29, RGB(0, 0, 255)},
                        {50, 29, RGB(255, 0, 0)}};
    for (const Row& row : rows) {
        EXPECT_EQ(PixelAt(row.x, row.y), row.color) << row.x << "," << row.y;
    }
    child_color_ = RGB(0, 255, 0);
    InvalidateRect(child_, nullptr, FALSE);
    EXPECT_EQ(UpdateOf(top_), "none");
    Update();
    EXPECT_EQ(PixelAt(20, 10), RGB(0, 255, 0));
    EXPECT_EQ(painted_, Names({"child 0,0,30,20"}));
}

TEST_F(PaintRegions, WhatIsInvalidatedWhere) {
    struct Row {
        const char* name;
        DWORD style;
        UINT flags;
        const char* top;
        const char* child;
    };
    const Row rows[] = {
        {"children below", 0, RDW_INVALIDATE, "10,5,40,25", "0,0,20,15"},
        {"clipped children", WS_CLIPCHILDREN, RDW_INVALIDATE, "10,5,40,25", "none"},
        {"all children", WS_CLIPCHILDREN, RDW_INVALIDATE | RDW_ALLCHILDREN, "10,5,40,25", "0,0,20,15"},
        {"no children", 0, RDW_INVALIDATE | RDW_NOCHILDREN, "10,5,40,25", "none"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Open(row.style);
        const RECT part = {10, 5, 40, 25};
        RedrawWindow(top_, &part, nullptr, row.flags);
        EXPECT_EQ(UpdateOf(top_), row.top);
        EXPECT_EQ(UpdateOf(child_), row.child);
        const RECT upper = {0, 0, 100, 15};
        ValidateRect(top_, &upper);
        EXPECT_EQ(UpdateOf(top_), "10,15,40,25");
        RedrawWindow(top_, nullptr, nullptr, RDW_VALIDATE | RDW_ALLCHILDREN);
        EXPECT_EQ(UpdateOf(top_) + UpdateOf(child_), "nonenone");
        DestroyWindow(top_);
    }
}

TEST_F(PaintRegions, ErasingAndItsRefusal) {
    Open(0);
    const RECT part = {60, 0, 70, 10};
    InvalidateRect(top_, &part, FALSE);
    Update();
    EXPECT_EQ(painted_, Names({"top 60,0,70,10"}));
    painted_.clear();
    InvalidateRect(top_, &part, TRUE);
    Update();
    EXPECT_EQ(painted_, Names({"top erase", "top 60,0,70,10"}));
    painted_.clear();
    erased_ = 0;
    InvalidateRect(top_, &part, TRUE);
    Update();
    EXPECT_EQ(painted_, Names({"top erase", "top 60,0,70,10 dirty"}));
}

TEST_F(PaintRegions, ThingsThatMoveAreRepaired) {
    Open(WS_CLIPCHILDREN);
    SetWindowPos(child_, nullptr, 40, 10, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(UpdateOf(child_), "none") << "its picture moves along";
    Update();
    EXPECT_EQ(PixelAt(20, 10), RGB(255, 0, 0));
    EXPECT_EQ(PixelAt(69, 29), RGB(0, 0, 255));
    painted_.clear();
    ShowWindow(child_, SW_HIDE);
    EXPECT_EQ(UpdateOf(top_), "40,10,70,30");
    Update();
    EXPECT_EQ(PixelAt(50, 20), RGB(255, 0, 0));
    InvalidateRect(child_, nullptr, TRUE);
    EXPECT_EQ(UpdateOf(child_), "none") << "hidden";
    ShowWindow(child_, SW_SHOWNA);
    EXPECT_EQ(UpdateOf(child_), "0,0,30,20");
    Update();
    EXPECT_EQ(PixelAt(50, 20), RGB(0, 0, 255));
}

TEST_F(PaintRegions, ContextsStayInTheirWindow) {
    Open(WS_CLIPCHILDREN);
    const HDC whole = GetDC(top_);
    const RECT all = {-50, -50, 500, 500};
    FillRect(whole, &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    ReleaseDC(top_, whole);
    EXPECT_EQ(PixelAt(5, 5), RGB(0, 0, 0));
    EXPECT_EQ(PixelAt(25, 15), RGB(0, 0, 255)) << "children are left out";
    const HDC part = GetDC(child_);
    RECT clip = {};
    GetClipBox(part, &clip);
    EXPECT_EQ(Text(clip), "0,0,30,20");
    SetPixel(part, 0, 0, RGB(255, 255, 255));
    EXPECT_EQ(ReleaseDC(child_, part), 1);
    EXPECT_EQ(PixelAt(20, 10), RGB(255, 255, 255));

    const HDC memory = CreateCompatibleDC(nullptr);
    const HDC screen = GetDC(nullptr);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 100, 60);
    ReleaseDC(nullptr, screen);
    const HGDIOBJ old = SelectObject(memory, bitmap);
    EXPECT_TRUE(PrintWindow(top_, memory, 0));
    EXPECT_EQ(GetPixel(memory, 25, 15), test::UnlessWine(RGB(0, 0, 255), RGB(0, 0, 0)));
    SelectObject(memory, old);
    DeleteObject(bitmap);
    DeleteDC(memory);
}

}  // namespace
