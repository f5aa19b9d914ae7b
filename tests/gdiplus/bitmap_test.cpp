// Bitmaps: pixels, formats, parts, locks, GDI's bitmaps, resources and files.

#include <cstring>
#include <vector>

#include "gdiplus/pictures.h"
#include "support/temp_folder.h"
#include "support/wine.h"

namespace {

using namespace test;

class BitmapTest : public GdiplusTest {};

constexpr PixelFormat kFormats[] = {PixelFormat24bppRGB, PixelFormat32bppRGB, PixelFormat32bppARGB, PixelFormat32bppPARGB};

TEST_F(BitmapTest, PixelsAreKeptAsTheFormatCan) {
    const ARGB expected[] = {0xFF643219, 0xFF643219, 0x80643219, 0x80633119};
    for (int i = 0; i < 4; ++i) {
        Bitmap bitmap(4, 3, kFormats[i]);
        EXPECT_EQ(bitmap.GetPixelFormat(), kFormats[i]);
        EXPECT_EQ(PixelAt(bitmap, 3, 2), IsAlphaPixelFormat(kFormats[i]) ? 0 : 0xFF000000);
        EXPECT_EQ(bitmap.SetPixel(3, 2, Color(128, 100, 50, 25)), Ok);
        EXPECT_EQ(PixelAt(bitmap, 3, 2), expected[i]) << std::hex << kFormats[i];
        EXPECT_EQ(PixelAt(bitmap, 2, 2), IsAlphaPixelFormat(kFormats[i]) ? 0 : 0xFF000000);
    }
}

TEST_F(BitmapTest, PixelsOutsideAreRefused) {
    Bitmap bitmap(4, 3);
    Color color;
    const INT outside[][2] = {{4, 0}, {-1, 0}, {0, 3}, {0, -1}, {0x7FFFFFFF, 0}};
    for (const auto& place : outside) {
        EXPECT_EQ(bitmap.GetPixel(place[0], place[1], &color), InvalidParameter);
        EXPECT_EQ(bitmap.SetPixel(place[0], place[1], color), InvalidParameter);
    }
    EXPECT_EQ(bitmap.GetLastStatus(), InvalidParameter);
    EXPECT_EQ(bitmap.GetLastStatus(), Ok);
    EXPECT_EQ(bitmap.GetPixel(0, 0, nullptr), InvalidParameter);
}

TEST_F(BitmapTest, ImpossibleSizesAreRefused) {
    for (const Size& size : {Size(0, 4), Size(4, 0), Size(-3, 4), Size(4, -1)}) {
        Bitmap bitmap(size.Width, size.Height, PixelFormat32bppARGB);
        EXPECT_EQ(bitmap.GetLastStatus(), InvalidParameter) << size.Width;
        EXPECT_EQ(bitmap.GetWidth(), 0U);
    }
}

TEST_F(BitmapTest, PixelsOfTheCallersAreDrawnOnAndFrom) {
    BYTE rows[2][8] = {{1, 2, 3, 4, 5, 6, 0, 0}, {7, 8, 9, 10, 11, 12, 0, 0}};
    Bitmap upwards(2, 2, -8, PixelFormat24bppRGB, rows[1]);
    EXPECT_EQ(PixelAt(upwards, 0, 0), 0xFF090807);
    EXPECT_EQ(PixelAt(upwards, 1, 1), 0xFF060504);
    Graphics(&upwards).Clear(Color(0x10, 0x20, 0x30));
    const BYTE expected[8] = {0x30, 0x20, 0x10, 0x30, 0x20, 0x10, 0, 0};
    EXPECT_EQ(std::memcmp(rows[0], expected, 8), 0);

    Bitmap target(4, 4);
    Graphics graphics(&target);
    for (const BYTE red : {BYTE{50}, BYTE{60}, BYTE{70}}) {  // nothing of it is kept
        rows[1][2] = red;
        graphics.DrawImage(&upwards, 0, 0, 4, 4);
        EXPECT_EQ(PixelAt(target, 0, 0) >> 16 & 0xFF, red);
    }
    Bitmap wrong(2, 2, 6, PixelFormat24bppRGB, rows[0]);
    EXPECT_EQ(wrong.GetLastStatus(), InvalidParameter);
}

TEST_F(BitmapTest, PartsAreClonedInAnyFormat) {
    Bitmap source(4, 3);
    for (int i = 0; i < 12; ++i) {
        source.SetPixel(i % 4, i / 4, Color(0x80, static_cast<BYTE>(i), 0, 0));
    }
    const std::unique_ptr<Bitmap> part(source.Clone(Rect(1, 1, 2, 2), PixelFormat24bppRGB));
    ASSERT_NE(part, nullptr);
    EXPECT_EQ(part->GetPixelFormat(), PixelFormat24bppRGB);
    EXPECT_EQ(part->GetWidth(), 2U);
    EXPECT_EQ(PixelAt(*part, 1, 1), 0xFF0A0000);
    const std::unique_ptr<Bitmap> same(source.Clone(RectF(1.6F, 0.4F, 1.7F, 1.4F), PixelFormatDontCare));
    ASSERT_NE(same, nullptr);
    EXPECT_EQ(same->GetPixelFormat(), PixelFormat32bppARGB);
    EXPECT_EQ(same->GetHeight(), 1U);
    EXPECT_EQ(PixelAt(*same, 0, 0), 0x80020000);
    source.SetPixel(2, 0, Color(Gray(0)));
    EXPECT_EQ(PixelAt(*same, 0, 0), 0x80020000);
    for (const Rect& outside : {Rect(3, 1, 2, 2), Rect(-1, 0, 1, 1), Rect(0, 0, 0, 1), Rect(1, 0, 0x7FFFFFFF, 1)}) {
        EXPECT_EQ(source.Clone(outside, PixelFormat24bppRGB), nullptr) << outside.X;
        EXPECT_EQ(source.GetLastStatus(), InvalidParameter);
    }
}

TEST_F(BitmapTest, LocksShowAndTakePixels) {
    Bitmap bitmap(4, 3);
    bitmap.SetPixel(1, 1, Color(128, 200, 100, 50));
    const Rect part(1, 1, 2, 2);
    const struct {
        PixelFormat format;
        ARGB mask;
        ARGB expected;
    } cases[] = {{PixelFormat24bppRGB, 0xFFFFFF, 0xC86432},
                 {PixelFormat32bppRGB, 0xFFFFFF, 0xC86432},
                 {PixelFormat32bppARGB, 0xFFFFFFFF, 0x80C86432},
                 {PixelFormat32bppPARGB, 0xFFFFFFFF, 0x80643219}};
    for (const auto& row : cases) {
        BitmapData data = {};
        ASSERT_EQ(bitmap.LockBits(&part, ImageLockModeRead, row.format, &data), Ok);
        EXPECT_EQ(data.Width, 2U);
        EXPECT_EQ(data.Height, 2U);
        EXPECT_GE(data.Stride, 8);
        EXPECT_EQ(data.PixelFormat, row.format);
        ARGB first = 0;
        std::memcpy(&first, data.Scan0, sizeof(first));
        EXPECT_EQ(first & row.mask, row.expected) << std::hex << row.format;
        EXPECT_EQ(bitmap.UnlockBits(&data), Ok);
    }
    std::vector<ARGB> buffer(4, 0x80112233);
    BitmapData users = {2, 2, 8, PixelFormat32bppARGB, buffer.data(), 0};
    ASSERT_EQ(bitmap.LockBits(&part, ImageLockModeWrite | ImageLockModeUserInputBuf, PixelFormat32bppARGB, &users), Ok);
    BitmapData second = {};
    EXPECT_EQ(bitmap.LockBits(nullptr, ImageLockModeRead, PixelFormat32bppARGB, &second), WrongState);
    Bitmap target(4, 3);
    EXPECT_EQ(Graphics(&target).DrawImage(&bitmap, 0, 0), WrongState);
    EXPECT_EQ(bitmap.UnlockBits(&users), Ok);
    EXPECT_EQ(bitmap.UnlockBits(&users), WrongState);
    EXPECT_EQ(PixelAt(bitmap, 1, 1), 0x80112233U);
    EXPECT_EQ(PixelAt(bitmap, 2, 2), 0x80112233U);
    EXPECT_EQ(PixelAt(bitmap, 3, 2), 0U);
    for (const Rect& outside : {Rect(2, 2, 9, 9), Rect(-1, 0, 2, 2), Rect(0, 0, 5, 1)}) {
        EXPECT_EQ(bitmap.LockBits(&outside, ImageLockModeRead, PixelFormat32bppARGB, &second), InvalidParameter);
    }
    EXPECT_EQ(bitmap.LockBits(nullptr, ImageLockModeRead, PixelFormat32bppARGB, nullptr), InvalidParameter);
}

TEST_F(BitmapTest, BitmapsOfGdiGoBothWays) {
    Bitmap bitmap(3, 2);
    bitmap.SetPixel(0, 0, Color(128, 200, 100, 50));
    bitmap.SetPixel(2, 1, Color(255, 1, 2, 3));
    HBITMAP made = nullptr;
    ASSERT_EQ(bitmap.GetHBITMAP(Color(255, 10, 20, 30), &made), Ok);
    {
        const std::unique_ptr<Bitmap> back(Bitmap::FromHBITMAP(made, nullptr));
        EXPECT_EQ(back->GetPixelFormat(), PixelFormat32bppRGB);
        EXPECT_EQ(PixelAt(*back, 0, 0), 0xFF693C28);
        EXPECT_EQ(PixelAt(*back, 2, 1), 0xFF010203);
        EXPECT_EQ(PixelAt(*back, 1, 0), 0xFF0A141E);
    }
    DeleteObject(made);
    EXPECT_EQ(bitmap.GetHBITMAP(Color(0), nullptr), InvalidParameter);
    EXPECT_EQ(Bitmap(static_cast<HBITMAP>(nullptr), nullptr).GetLastStatus(), InvalidParameter);
}

TEST_F(BitmapTest, ResourcesAreReadWithoutAlpha) {
    const struct {
        const WCHAR* name;
        UINT width, height;
        PixelFormat format;
        std::vector<ARGB> pixels;
    } cases[] = {
        {_T("TRUE_COLOR"), 3, 2, PixelFormat24bppRGB, {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFF0A141E, 0xFF28323C, 0xFF46505A}},
        {_T("TOP_BYTES"), 2, 1, PixelFormat32bppRGB, {0xFF102030, 0xFF405060}},
    };
    for (const auto& row : cases) {
        const std::unique_ptr<Bitmap> bitmap(Bitmap::FromResource(GetModuleHandleW(nullptr), row.name));
        ASSERT_EQ(bitmap->GetLastStatus(), Ok);
        ASSERT_EQ(bitmap->GetWidth(), row.width);
        ASSERT_EQ(bitmap->GetHeight(), row.height);
        EXPECT_EQ(bitmap->GetPixelFormat(), row.format);
        for (UINT i = 0; i < row.pixels.size(); ++i) {
            EXPECT_EQ(PixelAt(*bitmap, static_cast<INT>(i % row.width), static_cast<INT>(i / row.width)), row.pixels[i]) << i;
        }
    }
    const std::unique_ptr<Bitmap> palette(Bitmap::FromResource(GetModuleHandleW(nullptr), _T("PALETTE")));
    ASSERT_EQ(palette->GetLastStatus(), Ok);
    EXPECT_EQ(PixelAt(*palette, 0, 0), 0xFF112233);
    EXPECT_EQ(PixelAt(*palette, 1, 0), 0xFF445566);
    EXPECT_EQ(PixelAt(*palette, 2, 0), 0xFF778899);
    EXPECT_EQ(PixelAt(*palette, 3, 0), 0xFF000000);
}

TEST_F(BitmapTest, ResourcesThatAreNotThereOrDamagedGiveNoPicture) {
    const struct {
        const WCHAR* name;
        Status status;
    } cases[] = {{_T("NONE"), InvalidParameter},
                 {_T("CUT"), UnlessWine(InvalidParameter, Ok)},
                 {_T("LYING_TABLE"), UnlessWine(InvalidParameter, Ok)}};
    for (const auto& row : cases) {
        const std::unique_ptr<Bitmap> bitmap(Bitmap::FromResource(GetModuleHandleW(nullptr), row.name));
        ASSERT_NE(bitmap, nullptr);
        EXPECT_EQ(bitmap->GetLastStatus(), row.status) << Narrow(row.name);
        EXPECT_EQ(bitmap->GetWidth() == 0, row.status != Ok) << Narrow(row.name);
    }
}

CLSID EncoderFor(const WCHAR* type) {
    UINT count = 0;
    UINT size = 0;
    EXPECT_EQ(GetImageEncodersSize(&count, &size), Ok);
    std::vector<BYTE> bytes(size);
    auto* const encoders = reinterpret_cast<ImageCodecInfo*>(bytes.data());
    EXPECT_EQ(GetImageEncoders(count, size - 1, encoders), GenericError);
    EXPECT_EQ(GetImageEncoders(count, size, encoders), Ok);
    for (UINT i = 0; i < count; ++i) {
        if (std::basic_string<WCHAR>(encoders[i].MimeType) == type) {
            return encoders[i].Clsid;
        }
    }
    ADD_FAILURE() << "no such encoder";
    return {};
}

TEST_F(BitmapTest, FilesAreWrittenAndReadBack) {
    const TempFolder folder;
    const CLSID png = EncoderFor(_T("image/png"));
    const CLSID bmp = EncoderFor(_T("image/bmp"));
    const struct {
        const CLSID& encoder;
        PixelFormat format;
        PixelFormat read;
        ARGB pixel;
    } cases[] = {{png, PixelFormat32bppARGB, PixelFormat32bppARGB, 0x80C86432},
                 {png, PixelFormat24bppRGB, PixelFormat24bppRGB, 0xFFC86432},
                 {bmp, PixelFormat24bppRGB, PixelFormat24bppRGB, 0xFFC86432},
                 {bmp, PixelFormat32bppARGB, PixelFormat24bppRGB, 0xFFC86432}};
    int number = 0;
    for (const auto& row : cases) {
        Bitmap bitmap(5, 3, row.format);
        bitmap.SetPixel(1, 1, Color(0x80C86432));
        bitmap.SetPixel(4, 2, Color(255, 1, 2, 3));
        const auto path = folder.Path(Widen(std::to_string(++number)));
        ASSERT_EQ(bitmap.Save(path.c_str(), &row.encoder, nullptr), Ok);
        const std::unique_ptr<Image> image(Image::FromFile(path.c_str()));
        EXPECT_EQ(image->GetWidth(), 5U);
        EXPECT_EQ(image->GetType(), ImageTypeBitmap);
        Bitmap read(path.c_str());
        EXPECT_EQ(read.GetPixelFormat(), row.read) << number;
        EXPECT_EQ(PixelAt(read, 1, 1), row.pixel) << number;
        EXPECT_EQ(PixelAt(read, 4, 2), 0xFF010203) << number;
    }
    Bitmap bitmap(1, 1);
    const CLSID unknown = {1, 0, 0, {}};
    EXPECT_EQ(bitmap.Save(folder.Path(_T("5")).c_str(), &unknown, nullptr), UnknownImageFormat);
    EXPECT_EQ(bitmap.Save(folder.Path(_T("none\\5")).c_str(), &png, nullptr), GenericError);
    EXPECT_NE(Bitmap(folder.Path(_T("none")).c_str()).GetLastStatus(), Ok);
    const std::unique_ptr<Image> absent(Image::FromFile(folder.Path(_T("none")).c_str()));
    ASSERT_NE(absent, nullptr);
    EXPECT_NE(absent->GetLastStatus(), Ok);
}

}  // namespace
