// Drawing objects and contexts: who may be selected where, what is told of them, and which handles end when.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include "gdi/picture.h"
#include "support/wine.h"

using test::Picture;
using test::StockBrush;

TEST(GdiContexts, StartWithStockObjectsAndOneMonochromePixel) {
    const HDC context = CreateCompatibleDC(nullptr);
    EXPECT_EQ(GetObjectType(context), DWORD{OBJ_MEMDC});
    EXPECT_EQ(GetCurrentObject(context, OBJ_BRUSH), GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(GetCurrentObject(context, OBJ_PEN), GetStockObject(BLACK_PEN));
    EXPECT_EQ(GetObjectType(GetCurrentObject(context, OBJ_FONT)), DWORD{OBJ_FONT});
    BITMAP bitmap;
    ASSERT_NE(GetObjectW(GetCurrentObject(context, OBJ_BITMAP), sizeof(bitmap), &bitmap), 0);
    EXPECT_EQ(bitmap.bmWidth, 1);
    EXPECT_EQ(bitmap.bmBitsPixel, 1);

    const RECT rect = {0, 0, 5, 5};
    EXPECT_NE(FillRect(context, &rect, StockBrush(BLACK_BRUSH)), 0) << "nothing to draw on is no failure";
    EXPECT_TRUE(DeleteDC(context));
    EXPECT_EQ(GetObjectType(context), 0u);
    EXPECT_FALSE(DeleteDC(context));
}

TEST(GdiContexts, TellOfTheScreen) {
    EXPECT_EQ(CreateDCW(_T("no such driver"), nullptr, nullptr, nullptr), nullptr);
    const HDC screen = CreateDCW(_T("display"), nullptr, nullptr, nullptr);
    ASSERT_NE(screen, nullptr);
    EXPECT_EQ(GetObjectType(screen), DWORD{OBJ_DC});
    EXPECT_EQ(GetDeviceCaps(screen, HORZRES), GetSystemMetrics(SM_CXSCREEN));
    EXPECT_EQ(GetDeviceCaps(screen, TECHNOLOGY), DT_RASDISPLAY);
    EXPECT_EQ(GetDeviceCaps(screen, BITSPIXEL) * GetDeviceCaps(screen, PLANES), 32);
    EXPECT_EQ(GetDeviceCaps(screen, LOGPIXELSX), 96);
    EXPECT_NE(GetDeviceCaps(screen, RASTERCAPS) & RC_BITBLT, 0);
    EXPECT_TRUE(DeleteDC(screen));
}

TEST(GdiContexts, ABitmapIsInOneMemoryContextAtATime) {
    const Picture picture(2, 2);
    const HDC other = CreateCompatibleDC(picture);
    const HGDIOBJ single = GetCurrentObject(other, OBJ_BITMAP);
    EXPECT_EQ(SelectObject(other, picture.Handle()), nullptr);
    EXPECT_EQ(GetCurrentObject(other, OBJ_BITMAP), single);
    EXPECT_EQ(SelectObject(picture, picture.Handle()), picture.Handle()) << "where it is already, it may be selected again";

    const HDC screen = CreateDCW(_T("DISPLAY"), nullptr, nullptr, nullptr);
    const test::Bitmap free(CreateBitmap(2, 2, 1, 32, nullptr));
    EXPECT_EQ(SelectObject(screen, free), nullptr) << "only memory contexts draw on bitmaps";
    DeleteDC(screen);

    EXPECT_EQ(SelectObject(other, free), single);
    DeleteDC(other);
    const test::Selected again(picture, free);
    EXPECT_EQ(GetCurrentObject(picture, OBJ_BITMAP), free) << "a deleted context holds nothing";
}

TEST(GdiObjects, EndWhenDeletedAndNoEarlier) {
    const HBITMAP bitmap = CreateBitmap(1, 1, 1, 1, nullptr);
    EXPECT_TRUE(DeleteObject(bitmap));
    EXPECT_FALSE(DeleteObject(bitmap));
    EXPECT_FALSE(DeleteObject(nullptr));
    EXPECT_TRUE(DeleteObject(GetStockObject(WHITE_BRUSH)));
    EXPECT_EQ(GetObjectType(GetStockObject(WHITE_BRUSH)), DWORD{OBJ_BRUSH});

    Picture picture(1, 1);
    const HBITMAP selected = picture.Handle();
    EXPECT_EQ(DeleteObject(selected), test::UnlessWine(FALSE, TRUE));
    EXPECT_EQ(picture.At(0, 0), test::kWhite);

    // A brush that is selected draws on, deleted or not.
    const HBRUSH brush = CreateSolidBrush(test::kRed);
    const HGDIOBJ before = SelectObject(picture, brush);
    DeleteObject(brush);
    PatBlt(picture, 0, 0, 1, 1, PATCOPY);
    EXPECT_EQ(picture.At(0, 0), test::kRed);
    SelectObject(picture, before);
    EXPECT_EQ(GetObjectType(brush), 0u);
    EXPECT_EQ(SelectObject(picture, brush), nullptr);
}

TEST(GdiObjects, DescribeThemselves) {
    const test::Brush brush(CreateHatchBrush(HS_CROSS, test::kRed));
    LOGBRUSH log_brush;
    EXPECT_EQ(GetObjectW(brush, 0, nullptr), int{sizeof(LOGBRUSH)});
    EXPECT_EQ(GetObjectW(brush, sizeof(log_brush), &log_brush), int{sizeof(LOGBRUSH)});
    EXPECT_EQ(log_brush.lbStyle, UINT{BS_HATCHED});
    EXPECT_EQ(log_brush.lbColor, test::kRed);
    EXPECT_EQ(log_brush.lbHatch, ULONG_PTR{HS_CROSS});

    struct {
        int style, width, told_width;
    } const kPens[] = {{PS_SOLID, 0, 0}, {PS_DASH, 1, 1}, {PS_INSIDEFRAME, 4, 4}, {PS_SOLID, -3, 3}, {PS_NULL, 7, 1}};
    for (const auto& row : kPens) {
        const test::Pen pen(CreatePen(row.style, row.width, test::kBlue));
        LOGPEN log_pen;
        ASSERT_EQ(GetObjectW(pen, sizeof(log_pen), &log_pen), int{sizeof(LOGPEN)});
        EXPECT_EQ(log_pen.lopnStyle, static_cast<UINT>(row.style));
        EXPECT_EQ(log_pen.lopnWidth.x, row.told_width);
    }

    const Picture picture(5, 3);
    DIBSECTION section;
    ASSERT_EQ(GetObjectW(picture.Handle(), sizeof(section), &section), int{sizeof(section)});
    EXPECT_EQ(section.dsBm.bmBits, static_cast<void*>(picture.Pixels().data()));
    EXPECT_EQ(section.dsBmih.biSizeImage, 60u);
    EXPECT_EQ(GetObjectW(picture.Handle(), 4, &section), 0);
    EXPECT_EQ(GetObjectW(test::Region(CreateRectRgn(0, 0, 1, 1)), 0, nullptr), 0);
}

TEST(GdiContexts, KeepAndRestoreTheirState) {
    const Picture picture(4, 4);
    const test::Brush brush(CreateSolidBrush(test::kGreen));
    ASSERT_EQ(SaveDC(picture), 1);
    SelectObject(picture, brush);
    SetTextColor(picture, test::kRed);
    SetBkMode(picture, TRANSPARENT);
    SetROP2(picture, R2_XORPEN);
    SetViewportOrgEx(picture, 3, 4, nullptr);
    MoveToEx(picture, 7, 8, nullptr);
    IntersectClipRect(picture, -3, -4, -2, -3);
    ASSERT_EQ(SaveDC(picture), 2);
    ASSERT_EQ(SaveDC(picture), 3);
    SetTextColor(picture, test::kBlue);

    EXPECT_FALSE(RestoreDC(picture, 4));
    EXPECT_FALSE(RestoreDC(picture, 0));
    EXPECT_FALSE(RestoreDC(picture, -4));
    EXPECT_TRUE(RestoreDC(picture, -2));
    EXPECT_EQ(GetTextColor(picture), test::kRed);
    POINT point;
    GetCurrentPositionEx(picture, &point);
    EXPECT_EQ(point.y, 8);
    RECT box;
    GetClipBox(picture, &box);
    EXPECT_EQ(box.right, -2);
    EXPECT_TRUE(RestoreDC(picture, 1));
    EXPECT_FALSE(RestoreDC(picture, -1)) << "nothing is left";
    EXPECT_EQ(GetCurrentObject(picture, OBJ_BRUSH), GetStockObject(WHITE_BRUSH));
    EXPECT_EQ(GetROP2(picture), R2_COPYPEN);
    EXPECT_EQ(GetBkMode(picture), OPAQUE);
    GetClipBox(picture, &box);
    EXPECT_EQ(box.right, 4);
}

TEST(GdiContexts, RefuseModesThatThereAreNot) {
    const Picture picture(1, 1);
    struct {
        int(WINAPI* set)(HDC, int);
        int(WINAPI* get)(HDC);
        int good, bad;
    } const kModes[] = {{SetROP2, GetROP2, R2_NOT, 17},
                        {SetBkMode, GetBkMode, TRANSPARENT, 3},
                        {SetStretchBltMode, GetStretchBltMode, HALFTONE, 5},
                        {SetPolyFillMode, GetPolyFillMode, WINDING, 0}};
    for (const auto& mode : kModes) {
        const int before = mode.get(picture);
        EXPECT_EQ(mode.set(picture, mode.good), before);
        EXPECT_EQ(mode.set(picture, mode.bad), 0);
        EXPECT_EQ(mode.get(picture), mode.good);
        EXPECT_EQ(mode.get(nullptr), 0);
    }
    EXPECT_EQ(GetMapMode(picture), MM_TEXT);
    EXPECT_EQ(SetTextColor(nullptr, 0), DWORD{CLR_INVALID});
}

TEST(GdiContexts, TranslateBetweenTheirOrigins) {
    const Picture picture(4, 4);
    SetWindowOrgEx(picture, 10, 20, nullptr);
    OffsetViewportOrgEx(picture, 3, 5, nullptr);
    POINT points[] = {{10, 20}, {-1, 0}};
    EXPECT_TRUE(LPtoDP(picture, points, 2));
    EXPECT_EQ(points[0].x, 3);
    EXPECT_EQ(points[1].y, -15);
    EXPECT_TRUE(DPtoLP(picture, points, 2));
    EXPECT_EQ(points[0].x, 10);
    EXPECT_EQ(points[1].y, 0);
    POINT before;
    EXPECT_TRUE(OffsetWindowOrgEx(picture, 1, 1, &before));
    EXPECT_EQ(before.y, 20);
}
