// The demo's skin fits its description, and the main window its skin.

#include <gtest/gtest.h>
#include <kadata/directory.h>
#include <kadata/tarvo_exception.h>

#include <memory>
#include <set>

#include "box_sheet.h"
#include "main_view.h"
#include "main_window.h"
#include "patient_card.h"
#include "picture_file.h"
#include "save_patient.h"
#include "skin/skin_ids.h"
#include "store.h"
#include "support/temp_folder.h"
#include "support/wine.h"

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
    const UINT ranges[][2] = {
        {IDS_OK, IDS_REMEMBER_ANSWER}, {IDS_TITLE, IDS_NOT_SAVED}, {IDS_BOX_TITLE, IDS_BOX_LONG}, {IDS_CARD, IDS_NO_TOOTH}};
    for (const auto& [first, last] : ranges) {
        for (UINT id = first; id <= last; ++id) {
            EXPECT_FALSE(LoadText(id, ENGLISH).IsEmpty()) << id;
            EXPECT_FALSE(LoadText(id, GERMAN).IsEmpty()) << id;
        }
    }
    EXPECT_EQ(LoadText(IDS_CLOSE, GERMAN), _T("Schlie\u00DFen"));
    EXPECT_EQ(LoadText(IDS_CLOSE, ENGLISH), _T("Close"));
    EXPECT_TRUE(LoadText(IDS_NOT_SAVED + 1, ENGLISH).IsEmpty());
}

// Every box opens, in both languages and sizes.
TEST(DemoBoxes, ArePictured) {
    const CGdiPlus gdiplus;
    const test::TempFolder folder;
    for (const int percent : {100, 200}) {
        for (const LANGID language : {ENGLISH, GERMAN}) {
            if (test::UnlessWine(false, percent == 200 || language == GERMAN)) {
                continue;  // each box takes it two seconds
            }
            CString name;
            name.Format(_T("-%d-%d.png"), static_cast<int>(language), percent);
            const CString sheet = folder.Path((_T("sheet") + name).GetString()).c_str();
            const CString box = folder.Path((_T("box") + name).GetString()).c_str();
            ASSERT_TRUE(SaveBoxSheet(percent, language, sheet) && SaveBoxPicture(percent, language, box));
            EXPECT_EQ(Gdiplus::Bitmap(sheet).GetWidth(), static_cast<UINT>(1640 * percent / 100));
            EXPECT_GT(Gdiplus::Bitmap(box).GetWidth(), static_cast<UINT>(300 * percent / 100));
        }
    }
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
                EXPECT_TRUE((item & layout.list).IsRectEmpty()) << i;
                for (int other = 0; other < i; ++other) {
                    EXPECT_TRUE((item & layout.items[static_cast<std::size_t>(other)]).IsRectEmpty()) << i << " " << other;
                }
            }
            EXPECT_GE(layout.RowsShown(), 3);
            EXPECT_EQ(layout.RowAt(layout.rows.TopLeft() + CPoint(0, 2 * layout.rowHeight)), 2);
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
    for (const EItem item : {ITEM_LAST, ITEM_PICTURES, ITEM_CLOSE}) {
        SMainState normal;
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

// A picture as it is saved, of a window that is not shown.
class CShot {
public:
    explicit CShot(CWnd& window) : m_size(CSkinWindowRect(&window).Size()), m_picture(&m_screen.Get(), m_size.cx, m_size.cy) {
        PrintWindow(window, m_picture.Context().GetSafeHdc(), 0);
    }
    COLORREF At(CPoint point) { return m_picture.Context().GetPixel(point); }

private:
    struct CScreen {
        CDC& Get() {
            m_dc.CreateDC(_T("DISPLAY"), nullptr, nullptr, nullptr);
            return m_dc;
        }
        CDC m_dc;
    };
    CScreen m_screen;
    CSize m_size;
    CPicture m_picture;
};

TEST(DemoWindow, WearsTheSkin) {
    const CGdiPlus gdiplus;
    SImported imported;
    CMainWindow window(MakeSkinInfo(100), 100, ENGLISH, {imported}, CString());
    ASSERT_TRUE(window.Create());
    window.SendMessage(WM_NCACTIVATE, TRUE);
    CShot shot(window);
    EXPECT_EQ(shot.At(CPoint(60, 0)), ACCENT_COLOR);  // the stripe above the caption
    const CRect client = CSkinWndInfo(&window).GetClientRect();
    EXPECT_GT(client.top, 10);
    EXPECT_EQ(shot.At(CPoint(client.left + 30, client.top - 4)), BAND_COLOR);
    const CPoint header = LayOut(MakeSkinInfo(100), 100, client.Size()).header.BottomRight() - CSize(3, 3);
    const CPoint content = test::UnlessWine(client.TopLeft(), CPoint());
    EXPECT_EQ(shot.At(content + header), LIST_HEADER_COLOR);  // before the window was ever shown
    window.DestroyWindow();
}

int boxes = 0;

TEST(DemoWindow, SavesAPatientOrTellsWhyNot) {
    const test::TempFolder folder;
    const CString place = folder.Path(_T("CASES")).c_str();
    SavePatient(CPatient(_T("Müller, Anna,19800131#7")), place);
    EXPECT_EQ(
        ReadArchive(CDirectory::Concat(place, CPatient(_T("Müller, Anna,19800131#7")).GetDirectoryName() + _T(".kda"))).size(),
        1U);
    // Yes, the details are wanted.
    const auto before = CTarvoException::SetBoxFunction([](LPCTSTR text, UINT style) {
        boxes += CString(text).Find(boxes == 0 ? LoadText(IDS_NO_BIRTHDAY, UserLanguage()) : _T("Becker, Käthe")) >= 0 ? 1 : 100;
        return style == (MB_YESNO | MB_ICONERROR | MB_DEFBUTTON2) ? IDYES : IDOK;
    });
    CPatient born;
    born.SetName(_T("Becker"));
    born.SetFirstName(_T("Käthe"));
    try {
        SavePatient(born, place);
        ADD_FAILURE() << "saved";
    } catch (CTarvoException* error) {
        error->Display();
        error->Delete();
    }
    EXPECT_EQ(boxes, 2);
    CTarvoException::SetBoxFunction(before);
}

TEST(PatientCard, TellsWhichToothWasClicked) {
    const CGdiPlus gdiplus;
    for (const int percent : {100, 200}) {
        CPatientCard card(MakeSkinInfo(percent), percent, GERMAN, CPatient());
        ASSERT_TRUE(card.Make());
        EXPECT_EQ(card.Hint(), LoadText(IDS_CLICK_TOOTH, GERMAN));
        const auto click = [&](int x, int y) {
            card.Teeth().SendMessage(WM_LBUTTONDOWN, 0, MAKELPARAM(x * percent / 100, y * percent / 100));
            return card.Hint();
        };
        EXPECT_EQ(click(20, 20), _T("Zahn 1"));
        EXPECT_EQ(click(140, 20), _T("Zahn 4"));
        EXPECT_EQ(click(40, 20), LoadText(IDS_NO_TOOTH, GERMAN));
        EXPECT_EQ(click(20, 44), LoadText(IDS_NO_TOOTH, GERMAN));  // between the roots
        card.DestroyWindow();
    }
}

}  // namespace
