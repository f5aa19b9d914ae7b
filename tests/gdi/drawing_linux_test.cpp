// The insides of our layer: error numbers, handles that are left over, and arguments from far away.

#include <gtest/gtest.h>
#include <windows.h>

#include <limits>
#include <thread>
#include <vector>

#include "gdi/gdi_objects.h"
#include "gdi/picture.h"

using test::Picture;

namespace {

constexpr int kFar = std::numeric_limits<int>::max();
constexpr int kNear = std::numeric_limits<int>::min();

// Every test leaves as many drawing objects as there were.
class Leaks : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { before_ = kawin::CountGdiObjects(); }
    void OnTestEnd(const testing::TestInfo& test) override {
        EXPECT_EQ(kawin::CountGdiObjects(), before_) << test.name() << " leaves drawing objects";
    }
    std::size_t before_ = 0;
};

const bool kListens = (testing::UnitTest::GetInstance()->listeners().Append(new Leaks), true);

DWORD ErrorOf(long long result) {
    EXPECT_EQ(result, 0);
    return GetLastError();
}

}  // namespace

TEST(LinuxDrawing, SayWhatIsWrong) {
    EXPECT_TRUE(kListens);
    const Picture picture(2, 2);
    const test::Brush brush(CreateSolidBrush(0));
    const RECT rect = {0, 0, 1, 1};
    const auto value = [](HGDIOBJ handle) { return reinterpret_cast<long long>(handle); };
    struct {
        long long (*call)(HDC, HBRUSH, const RECT&, long long (*)(HGDIOBJ));
        DWORD error;
    } const kRows[] = {
        {[](HDC, HBRUSH b, const RECT& r, auto) { return 0LL + FillRect(nullptr, &r, b); }, ERROR_INVALID_HANDLE},
        {[](HDC dc, HBRUSH, const RECT& r, auto) { return 0LL + FillRect(dc, &r, nullptr); }, ERROR_INVALID_HANDLE},
        {[](HDC dc, HBRUSH b, const RECT&, auto) { return 0LL + FillRect(dc, nullptr, b); }, ERROR_INVALID_PARAMETER},
        {[](HDC dc, HBRUSH, const RECT&, auto) { return 0LL + PatBlt(dc, 0, 0, 1, 1, SRCCOPY); }, ERROR_INVALID_PARAMETER},
        {[](HDC dc, HBRUSH, const RECT&, auto v) { return v(SelectObject(dc, nullptr)); }, ERROR_INVALID_HANDLE},
        {[](HDC dc, HBRUSH, const RECT&, auto v) { return v(GetCurrentObject(dc, 99)); }, ERROR_INVALID_PARAMETER},
        {[](HDC dc, HBRUSH, const RECT&, auto) { return 0LL + RestoreDC(dc, 1); }, ERROR_INVALID_PARAMETER},
        {[](HDC, HBRUSH b, const RECT&, auto) { return 0LL + GetObjectW(b, 3, &b); }, ERROR_INVALID_PARAMETER},
        {[](HDC dc, HBRUSH, const RECT&, auto) { return 0LL + GetObjectW(dc, 0, nullptr); }, ERROR_INVALID_HANDLE},
        {[](HDC, HBRUSH, const RECT&, auto v) { return v(CreateBitmap(2, 2, 1, 16, nullptr)); }, ERROR_INVALID_PARAMETER},
        {[](HDC, HBRUSH, const RECT&, auto v) { return v(CreateBitmap(65536, 1, 1, 1, nullptr)); }, ERROR_NOT_ENOUGH_MEMORY},
        {[](HDC, HBRUSH, const RECT&, auto v) { return v(CreateHatchBrush(6, 0)); }, ERROR_INVALID_PARAMETER},
        {[](HDC, HBRUSH, const RECT&, auto v) { return v(CreateEllipticRgn(0, 0, 9, kFar)); }, ERROR_NOT_ENOUGH_MEMORY},
        {[](HDC, HBRUSH, const RECT&, auto v) { return v(LoadBitmapW(nullptr, MAKEINTRESOURCEW(3))); }, ERROR_INVALID_DATA},
        {[](HDC, HBRUSH, const RECT&, auto v) { return v(LoadBitmapW(nullptr, MAKEINTRESOURCEW(9))); },
         ERROR_RESOURCE_NAME_NOT_FOUND},
    };
    for (const auto& row : kRows) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(ErrorOf(row.call(picture, brush, rect, value)), row.error) << "row " << &row - kRows;
    }
}

// With the address and undefined-behaviour sanitizers these tell whether any sum or product overflows.
TEST(LinuxDrawing, BearsCoordinatesFromFarAway) {
    const Picture picture(8, 8);
    const Picture source(4, 4, test::kBlue);
    const int ends[] = {kNear, kNear + 1, -1, 0, 3, kFar - 1, kFar};
    for (const int a : ends) {
        for (const int b : ends) {
            SetWindowOrgEx(picture, a, b, nullptr);
            SetViewportOrgEx(picture, b, a, nullptr);
            SetBrushOrgEx(picture, a, b, nullptr);
            MoveToEx(picture, b, a, nullptr);
            LineTo(picture, a, b);
            Rectangle(picture, a, a, b, b);
            Ellipse(picture, a, b, b, a);
            RoundRect(picture, a, a, b, b, b, a);
            const RECT rect = {a, b, b, a};
            FillRect(picture, &rect, test::StockBrush(BLACK_BRUSH));
            InvertRect(picture, &rect);
            RectVisible(picture, &rect);
            IntersectClipRect(picture, a, a, b, b);
            SelectClipRgn(picture, nullptr);
            const POINT points[] = {{a, b}, {b, a}, {a, a}};
            Polygon(picture, points, 3);
            BitBlt(picture, a, b, b, a, source, b, a, SRCCOPY);
            StretchBlt(picture, a, b, b, a, source, b, b, a, a, SRCCOPY);
            StretchBlt(picture, 0, 0, a, b, source, 0, 0, 4, 4, SRCCOPY);
            AlphaBlend(picture, a, b, b, a, source, 0, 0, 4, 4, {AC_SRC_OVER, 0, 99, 0});
            TRIVERTEX corners[] = {{a, b, 0, 0, 0, 0}, {b, a, 0xFF00, 0, 0, 0}};
            GRADIENT_RECT mesh = {0, 1};
            GradientFill(picture, corners, 2, &mesh, 1, GRADIENT_FILL_RECT_H);
            const test::Region region(CreateRectRgn(a, b, b, a));
            OffsetRgn(region, b, a);
        }
    }
    SetWindowOrgEx(picture, 0, 0, nullptr);
    SetViewportOrgEx(picture, 0, 0, nullptr);
    PatBlt(picture, kNear, kNear, kFar, kFar, BLACKNESS);
    EXPECT_TRUE(BitBlt(picture, 0, 0, kFar, kFar, source, 0, 0, SRCCOPY));
    EXPECT_EQ(picture.At(3, 3), test::kBlue);
}

TEST(LinuxDrawing, RefuseWhatDoesNotFit) {
    const test::Region region(CreateEllipticRgn(-9, -8, 12, 10));
    const DWORD size = GetRegionData(region, 0, nullptr);
    std::vector<char> bytes(size);
    auto* const data = reinterpret_cast<RGNDATA*>(bytes.data());
    ASSERT_EQ(GetRegionData(region, size, data), size);
    EXPECT_TRUE(EqualRgn(region, test::Region(ExtCreateRegion(nullptr, size, data))));
    EXPECT_EQ(ExtCreateRegion(nullptr, size - 1, data), nullptr) << "fewer bytes than rectangles";
    data->rdh.nCount = 0xFFFFFFFF;
    EXPECT_EQ(ExtCreateRegion(nullptr, size, data), nullptr);
    EXPECT_EQ(ExtCreateRegion(nullptr, size, nullptr), nullptr);
    const POINT points[] = {{0, 0}, {9, 0}, {9, 9}};
    EXPECT_EQ(CreatePolygonRgn(points, 3, 3), nullptr);
    EXPECT_EQ(CreatePolygonRgn(nullptr, 3, WINDING), nullptr);
    EXPECT_EQ(CreateRectRgnIndirect(nullptr), nullptr);
    EXPECT_EQ(OffsetRgn(region, kFar, 0), RGN_ERROR);
    const RECT empty = {0, 0, 0, 5};
    EXPECT_FALSE(RectInRegion(region, &empty));
}

TEST(LinuxDrawing, OfTheScreenAreReleasedNotDeleted) {
    const HDC screen = GetDC(nullptr);
    EXPECT_EQ(GetObjectType(screen), OBJ_DC);
    EXPECT_FALSE(DeleteDC(screen));
    EXPECT_EQ(WindowFromDC(screen), nullptr);
    EXPECT_EQ(ReleaseDC(nullptr, screen), 1);
    EXPECT_EQ(ReleaseDC(nullptr, screen), 0);
}

TEST(LinuxDrawing, AreClaimedByOneOfManyThreads) {
    const test::Bitmap bitmap(CreateBitmap(1, 1, 1, 32, nullptr));
    for (int round = 0; round < 50; ++round) {
        const HDC contexts[] = {CreateCompatibleDC(nullptr), CreateCompatibleDC(nullptr)};
        bool got[2] = {};
        std::thread other([&] { got[1] = SelectObject(contexts[1], bitmap) != nullptr; });
        got[0] = SelectObject(contexts[0], bitmap) != nullptr;
        other.join();
        EXPECT_NE(got[0], got[1]);
        DeleteDC(contexts[0]);
        DeleteDC(contexts[1]);
    }
}
