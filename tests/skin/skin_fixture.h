#pragma once

// What the tests of the skin draw with: GDI+, a picture in memory, and a skin that writes down what it is asked to draw.

#include <gtest/gtest.h>
#include <kadata/skin.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace test {

// In data/resources.rc.
inline constexpr UINT POSITIONS = 100;  // 32 x 128, the colour tells the place
inline constexpr UINT TWO_BY_TWO = 101;

inline constexpr int SIDE = 48;  // of the picture
inline constexpr Gdiplus::ARGB PAPER = 0xFFC0D0E0;

inline Gdiplus::ARGB PositionColor(int x, int y) {
    return Gdiplus::Color::MakeARGB(0xFF, static_cast<BYTE>(x * 8), static_cast<BYTE>(y * 2), 0x40);
}

inline std::string Shown(const CRect& rect) {
    return std::to_string(rect.left) + "," + std::to_string(rect.top) + "," + std::to_string(rect.right) + "," +
           std::to_string(rect.bottom);
}

inline std::string ModesOf(Gdiplus::Graphics& graphics) {
    return std::to_string(graphics.GetSmoothingMode()) + " " + std::to_string(graphics.GetInterpolationMode()) + " " +
           std::to_string(graphics.GetPixelOffsetMode());
}

inline CFont* AnyFont() {
    return CFont::FromHandle(static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)));
}

class RecordingSkin : public CSkin {
public:
    Gdiplus::Status DrawBitmapPart(Gdiplus::Graphics* graphics, Gdiplus::Bitmap* bitmap, CRect source, CRect target) override {
        calls.push_back(Shown(source) + " > " + Shown(target));
        modes = ModesOf(*graphics);
        return CSkin::DrawBitmapPart(graphics, bitmap, source, target);
    }

    std::vector<std::string> calls;  // source > target, in order
    std::string modes;               // of the last call
};

class SkinTest : public testing::Test {
protected:
    SkinTest() {
        const Gdiplus::GdiplusStartupInput input;
        EXPECT_EQ(Gdiplus::GdiplusStartup(&token_, &input, nullptr), Gdiplus::Ok);
        picture_ = std::make_unique<Gdiplus::Bitmap>(SIDE, SIDE, PixelFormat32bppARGB);
        graphics_ = std::make_unique<Gdiplus::Graphics>(picture_.get());
        Clear();
    }
    ~SkinTest() override {
        graphics_.reset();
        picture_.reset();
        skin_.Release();
        Gdiplus::GdiplusShutdown(token_);
    }

    Gdiplus::Graphics* Target() { return graphics_.get(); }
    void Clear() {
        graphics_->Clear(Gdiplus::Color(PAPER));
        skin_.calls.clear();
    }
    Gdiplus::ARGB PixelAt(int x, int y) {
        Gdiplus::Color color;
        picture_->GetPixel(x, y, &color);
        return color.GetValue();
    }
    bool IsClear() {
        for (int i = 0; i < SIDE * SIDE; ++i) {
            if (PixelAt(i % SIDE, i / SIDE) != PAPER) {
                return false;
            }
        }
        return true;
    }

    void SetButton(SkinCaptionBitmapInfo glyph = {}) {
        SkinBitmapInfo info{POSITIONS, 13, 11, 3};
        ASSERT_TRUE(skin_.SetButtonBitmapInfo(info, glyph));
    }
    void SetWindow() {
        SkinBitmapInfo info{POSITIONS, 24, 20, 4, 3, 2};
        ASSERT_TRUE(skin_.SetWindowBitmapInfo(info));
    }
    // All four bitmaps.
    void SetAll() {
        SkinBitmapInfo background{POSITIONS, 32, 128};
        SetButton({POSITIONS, 5, 4});
        SetWindow();
        ASSERT_TRUE(skin_.SetWindowBackgroundBitmapInfo(background));
    }

private:
    ULONG_PTR token_ = 0;
    std::unique_ptr<Gdiplus::Bitmap> picture_;
    std::unique_ptr<Gdiplus::Graphics> graphics_;

protected:
    RecordingSkin skin_;
};

}  // namespace test
