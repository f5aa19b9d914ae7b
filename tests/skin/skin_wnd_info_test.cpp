// Where the parts of a window's frame are.

#include "skin_window_fixture.h"

namespace {

class SkinWndInfo : public test::SkinWindowTest {};

int Metric(int index) {
    return GetSystemMetrics(index);
}

// Deletes the region.
CRect BoundsOf(HRGN region) {
    CRect box;
    GetRgnBox(region, &box);
    DeleteObject(region);
    return box;
}

TEST_F(SkinWndInfo, AnswersByTheStylesOfThenAndNow) {
    struct Answers {
        int sysMenu, caption, maximize, minimize, thick;
    };
    const struct {
        DWORD style;
        Answers answers;
    } rows[] = {{WS_POPUP, {0, 0, 0, 0, 0}},
                {WS_POPUP | WS_BORDER, {0, 1, 0, 0, 0}},
                {WS_POPUP | WS_DLGFRAME, {0, 1, 0, 0, 0}},
                {WS_POPUP | WS_CAPTION | WS_SYSMENU, {1, 1, 0, 0, 0}},
                {WS_POPUP | WS_CAPTION | WS_MAXIMIZEBOX, {0, 1, 1, 0, 0}},
                {WS_POPUP | WS_CAPTION | WS_MINIMIZEBOX, {0, 1, 0, 1, 0}},
                {WS_POPUP | WS_THICKFRAME, {0, 0, 0, 0, 1}},
                {WS_OVERLAPPEDWINDOW, {1, 1, 1, 1, 1}}};
    for (const auto& row : rows) {
        Make(WS_POPUP, CSize(200, 150));
        const CSkinWndInfo before(Wnd());
        SetWindowLongW(window_, GWL_STYLE, static_cast<LONG>(row.style));
        CSkinWndInfo info(Wnd());
        info = CSkinWndInfo(info);
        const Answers& wanted = row.answers;
        EXPECT_EQ(info.HasSysMenu(), wanted.sysMenu) << row.style;
        EXPECT_EQ(info.HasCaption(), wanted.caption) << row.style;
        EXPECT_EQ(info.HasMaximizeBox(), wanted.maximize) << row.style;
        EXPECT_EQ(info.HasMinimizeBox(), wanted.minimize) << row.style;
        EXPECT_EQ(info.HasThickFrame(), wanted.thick) << row.style;
        EXPECT_TRUE(info.HasBorder());
        EXPECT_EQ(before.HasCaption(), wanted.caption) << row.style;
        EXPECT_FALSE(before.HasInitialSysMenu() || before.HasInitialCaption() || before.HasInitialMaximizeBox() ||
                     before.HasInitialMinimizeBox());
        SetWindowLongW(window_, GWL_STYLE, static_cast<LONG>(WS_POPUP));
        EXPECT_EQ(info.HasInitialSysMenu(), wanted.sysMenu) << row.style;
        EXPECT_EQ(info.HasInitialCaption(), wanted.caption) << row.style;
        EXPECT_EQ(info.HasInitialMaximizeBox(), wanted.maximize) << row.style;
        EXPECT_EQ(info.HasInitialMinimizeBox(), wanted.minimize) << row.style;
        EXPECT_FALSE(info.HasCaption());
    }
}

TEST_F(SkinWndInfo, TellsThePartsOfTheFrame) {
    const int padding = Metric(SM_CXPADDEDBORDER);
    const struct {
        DWORD style;
        DWORD exStyle;
        int border;
        int caption;  // 0: none
    } rows[] = {{WS_OVERLAPPEDWINDOW, 0, Metric(SM_CXSIZEFRAME) + padding, Metric(SM_CYCAPTION)},
                {WS_OVERLAPPEDWINDOW, WS_EX_TOOLWINDOW, Metric(SM_CXSIZEFRAME) + padding, Metric(SM_CYSMCAPTION)},
                {WS_OVERLAPPEDWINDOW, WS_EX_CLIENTEDGE, Metric(SM_CXSIZEFRAME) + padding, Metric(SM_CYCAPTION)},
                {WS_POPUP | WS_CAPTION, 0, Metric(SM_CXDLGFRAME), Metric(SM_CYCAPTION)},
                {WS_POPUP | WS_DLGFRAME, 0, Metric(SM_CXDLGFRAME), Metric(SM_CYCAPTION)},
                {WS_POPUP | WS_BORDER, 0, Metric(SM_CXBORDER), Metric(SM_CYCAPTION)},
                {WS_POPUP, 0, 0, 0}};
    for (const auto& row : rows) {
        Make(row.style, CSize(230, 170), row.exStyle);
        const CSkinWndInfo info(Wnd());
        const CSkinWindowRect window(window_);
        const int b = row.border;
        EXPECT_EQ(info.GetTopBorderRect(), CRect(0, 0, 230, b)) << row.style;
        EXPECT_EQ(info.GetBottomBorderRect(), CRect(0, 170 - b, 230, 170)) << row.style;
        EXPECT_EQ(info.GetLeftBorderRect(), CRect(0, b, b, 170 - b)) << row.style;
        EXPECT_EQ(info.GetRightBorderRect(), CRect(230 - b, b, 230, 170 - b)) << row.style;
        EXPECT_EQ(info.GetBorderRect(), CRect(0, 0, 230, 170)) << row.style;
        EXPECT_EQ(info.GetBorderRect(TRUE), window) << row.style;
        const CRect caption = row.caption != 0 ? CRect(b, b, 230 - b, b + row.caption) : CRect();
        EXPECT_EQ(info.GetCaptionRect(), caption) << row.style;
        EXPECT_EQ(BoundsOf(info.GetCaptionRGN()), caption) << row.style;

        CRect client = CSkinClientRect(Wnd());
        MapWindowPoints(window_, nullptr, reinterpret_cast<LPPOINT>(&client), 2);
        EXPECT_EQ(info.GetClientRect(TRUE), client) << row.style;
        EXPECT_EQ(BoundsOf(info.GetClientRGN(TRUE)), client) << row.style;
        client.OffsetRect(-window.TopLeft());
        EXPECT_EQ(info.GetClientRect(FALSE), client) << row.style;
    }
}

TEST_F(SkinWndInfo, MakesRegionsOfTheParts) {
    for (const DWORD style : {DWORD{WS_OVERLAPPEDWINDOW}, DWORD{WS_POPUP | WS_BORDER}, DWORD{WS_POPUP}}) {
        Make(style, CSize(230, 170), WS_EX_CLIENTEDGE);
        const CSkinWndInfo info(Wnd());
        CRgn border;
        CRgn both;
        CRgn covered;
        border.Attach(info.GetBorderRGN(TRUE));
        both.Attach(info.GetCaptionAndBorderRGN(TRUE));
        covered.Attach(info.GetClipRGN(TRUE));
        const CSkinWindowRect window(Wnd());
        const CRect client = info.GetClientRect(TRUE);
        const CRect caption = info.GetCaptionRect(TRUE);
        const CRect inside(info.GetLeftBorderRect(TRUE).right, info.GetTopBorderRect(TRUE).bottom,
                           info.GetRightBorderRect(TRUE).left, info.GetBottomBorderRect(TRUE).top);
        for (CPoint at = window.TopLeft(); at.y < window.bottom; ++at.y) {
            for (at.x = window.left; at.x < window.right; ++at.x) {
                const bool inBorder = !inside.PtInRect(at);
                const bool inBoth = inBorder || caption.PtInRect(at);
                ASSERT_EQ(border.PtInRegion(at) != 0, inBorder) << style << ": " << at.x << "," << at.y;
                ASSERT_EQ(both.PtInRegion(at) != 0, inBoth) << style << ": " << at.x << "," << at.y;
                ASSERT_EQ(covered.PtInRegion(at) != 0, inBoth && !client.PtInRect(at)) << style << ": " << at.x << "," << at.y;
            }
        }
    }
}

TEST_F(SkinWndInfo, TellsNothingOfNoWindow) {
    const CSkinWndInfo info(nullptr);
    EXPECT_FALSE(info.HasCaption());
    EXPECT_TRUE(info.GetBorderRect().IsRectEmpty());
    EXPECT_TRUE(BoundsOf(info.GetClipRGN(TRUE)).IsRectEmpty());
    EXPECT_TRUE(CSkinClientRect(HWND{}).IsRectEmpty());
    EXPECT_TRUE(CSkinWindowRect(static_cast<CWnd*>(nullptr)).IsRectEmpty());
    EXPECT_TRUE(CSkinClipRect(static_cast<CDC*>(nullptr)).IsRectEmpty());
}

TEST_F(SkinWndInfo, FillsItsRectangles) {
    Make(WS_POPUP | WS_BORDER, CSize(60, 40));
    EXPECT_EQ(CSkinClientRect(window_), CRect(0, 0, 58, 38));
    EXPECT_EQ(CSkinWindowRect(window_), CRect(100, 80, 160, 120));
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.CreateBitmap(30, 20, 1, 1, nullptr));
    CBitmap* const before = dc.SelectObject(&bitmap);
    dc.SetViewportOrg(5, 5);
    dc.IntersectClipRect(0, 0, 10, 30);
    EXPECT_EQ(CSkinClipRect(&dc), CRect(0, 0, 10, 15));
    dc.SelectObject(before);
}

}  // namespace
