// The demo's skin fits its description, and the main window its skin.

#include <gtest/gtest.h>

#include <memory>
#include <set>

#include "main_view.h"
#include "picture_file.h"
#include "skin/skin_ids.h"
#include "support/temp_folder.h"

namespace {

CSize SizeOf(UINT id) {
    const std::unique_ptr<Gdiplus::Bitmap> bitmap(
        Gdiplus::Bitmap::FromResource(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(static_cast<WORD>(id))));
    return bitmap != nullptr ? CSize(static_cast<int>(bitmap->GetWidth()), static_cast<int>(bitmap->GetHeight())) : CSize();
}

TEST(DemoSkin, HasBitmapsOfTheSizesItTells) {
    const CGdiPlus gdiplus;
    for (const int percent : {100, 200}) {
        const SkinInfo skin = MakeSkinInfo(percent);
        EXPECT_TRUE(skin.IsComplete());
        EXPECT_TRUE(SSurfaces().Load(skin));
        const struct {
            SkinBitmapInfo info;
            UINT cells;
        } rows[] = {{skin.button, 8},  {skin.windowBackground, 1}, {skin.captionButton, 8}, {skin.windowFrame, 4},
                    {skin.toolBar, 1}, {skin.toolBarButton, 8},    {skin.statusBar, 1},     {skin.statusBarPane, 1}};
        for (const auto& row : rows) {
            EXPECT_EQ(SizeOf(row.info.nBitmapID),
                      CSize(static_cast<int>(row.info.nCellWidth), static_cast<int>(row.cells * row.info.nCellHeight)))
                << row.info.nBitmapID;
        }
        for (const SkinCaptionBitmapInfo& glyph : {skin.buttonGlyph, skin.closeGlyph, skin.minimizeGlyph}) {
            EXPECT_EQ(SizeOf(glyph.nBitmapID),
                      CSize(static_cast<int>(glyph.nGlyphWidth), static_cast<int>(8 * glyph.nGlyphHeight)))
                << glyph.nBitmapID;
        }
    }
}

TEST(DemoSkin, SpeaksBothLanguages) {
    const UINT ranges[][2] = {{IDS_OK, IDS_REMEMBER_ANSWER}, {IDS_TITLE, IDS_READY}};
    for (const auto& [first, last] : ranges) {
        for (UINT id = first; id <= last; ++id) {
            EXPECT_FALSE(LoadText(id, ENGLISH).IsEmpty()) << id;
            EXPECT_FALSE(LoadText(id, GERMAN).IsEmpty()) << id;
        }
    }
    EXPECT_EQ(LoadText(IDS_CLOSE, GERMAN), _T("Schlie\u00DFen"));
    EXPECT_EQ(LoadText(IDS_CLOSE, ENGLISH), _T("Close"));
    EXPECT_TRUE(LoadText(IDS_READY + 1, ENGLISH).IsEmpty());
}

TEST(DemoWindow, HasAPlaceForEverything) {
    for (const int percent : {100, 200}) {
        for (const CSize size : {CSize(480, 320), CSize(760, 500), CSize(1919, 1081)}) {
            const SMainLayout layout =
                LayOut(MakeSkinInfo(percent), percent, CSize(size.cx * percent / 100, size.cy * percent / 100));
            for (int i = 0; i < ITEMS; ++i) {
                const CRect& item = layout.items[static_cast<std::size_t>(i)];
                EXPECT_EQ(layout.ItemAt(item.TopLeft()), i);
                EXPECT_EQ(layout.ItemAt(item.BottomRight() - CSize(1, 1)), i);
                EXPECT_EQ(layout.FramePart(item.CenterPoint()), UINT{HTCLIENT});
                EXPECT_TRUE((item & layout.list).IsRectEmpty()) << i;
                EXPECT_TRUE((item & layout.title).IsRectEmpty()) << i;
                for (int other = 0; other < i; ++other) {
                    EXPECT_TRUE((item & layout.items[static_cast<std::size_t>(other)]).IsRectEmpty()) << i << " " << other;
                }
            }
            EXPECT_GE(layout.RowsShown(), 3);
            EXPECT_EQ(layout.RowAt(layout.rows.TopLeft() + CPoint(0, 2 * layout.rowHeight)), 2);
            EXPECT_EQ(layout.FramePart(layout.title.CenterPoint()), UINT{HTCAPTION});
            EXPECT_EQ(layout.FramePart(CPoint(0, 0)), UINT{HTTOPLEFT});
            EXPECT_EQ(layout.FramePart(CPoint(1, layout.window.CenterPoint().y)), UINT{HTLEFT});
            EXPECT_EQ(layout.FramePart(layout.window.BottomRight() - CSize(1, 1)), UINT{HTBOTTOMRIGHT});
        }
    }
}

TEST(DemoWindow, ShowsWhatIsHotPressedAndDisabled) {
    const CGdiPlus gdiplus;
    CDC screen;
    ASSERT_TRUE(screen.CreateDC(_T("DISPLAY"), nullptr, nullptr, nullptr));
    CMainView view(MakeSkinInfo(100), 100, GERMAN,
                   {{_T("Voß"), _T("Ben"), _T("1923"), _T("1")}, {_T("Bauer"), _T("Sören"), _T("1968"), _T("2")}});
    ASSERT_TRUE(view.Load());
    view.SetSize(CSize(760, 500));
    CPicture picture(&screen, 760, 500);
    const auto color = [&](EItem item, const SMainState& state) {
        view.Draw(picture.Context(), picture.Graphics(), state);
        const CRect& rect = view.Layout().items[item];
        return picture.Context().GetPixel(rect.left + 7, rect.bottom - 7);
    };
    for (const EItem item : {ITEM_CLOSE_BOX, ITEM_LAST, ITEM_PICTURES, ITEM_CLOSE}) {
        SMainState normal;
        normal.active = true;
        SMainState hot = normal;
        hot.hot = item;
        SMainState pressed = hot;
        pressed.pressed = item;
        EXPECT_EQ((std::set<COLORREF>{color(item, normal), color(item, hot), color(item, pressed)}).size(), 3U) << item;
    }
    const test::TempFolder folder;
    const CString path = folder.Path(_T("window.png")).c_str();
    EXPECT_TRUE(SaveBitmapPicture(picture.Bitmap(), path));
    EXPECT_FALSE(SaveBitmapPicture(picture.Bitmap(), folder.Path(_T("none\\window.png")).c_str()));
    Gdiplus::Bitmap saved(path);
    Gdiplus::Color pixel;
    EXPECT_EQ(saved.GetPixel(200, 150, &pixel), Gdiplus::Ok);
    EXPECT_EQ(pixel.ToCOLORREF(), picture.Context().GetPixel(200, 150));
}

}  // namespace
