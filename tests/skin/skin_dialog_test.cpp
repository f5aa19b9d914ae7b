// The skinned dialog: its frame, its buttons, and that it works without a skin.

#include <tuple>

#include "message_box_fixture.h"

using namespace test;

namespace {

constexpr int BORDER = 6;  // of AnySkin: frame and line
constexpr int TOP = 31;

class Dialog : public Stepped<CSkinDialog> {
public:
    explicit Dialog(bool skinned) : Stepped(DIALOG) { m_skin = skinned ? AnySkin() : SkinInfo(); }

    CRect Rect(int id = 0) {
        CRect rect;
        (id == 0 ? this : GetDlgItem(id))->GetWindowRect(rect);
        return rect;
    }
    COLORREF PixelOf(CPoint screen) {
        const CRect window = Rect();
        CWindowDC dc(this);
        return dc.GetPixel(CPoint() + (screen - window.TopLeft()));
    }
    LRESULT HitTest(CPoint screen) { return SendMessage(WM_NCHITTEST, 0, MAKELPARAM(screen.x, screen.y)); }
    CPoint CloseBox() { return {Rect().right - BORDER - 9, Rect().top + (30 + 2 - 18) / 2 + 9}; }
    void PostNc(UINT message, CPoint screen) {
        PostMessage(message, static_cast<WPARAM>(HitTest(screen)), MAKELPARAM(screen.x, screen.y));
    }
    void PostUp(CPoint screen) {
        ScreenToClient(&screen);
        PostMessage(WM_LBUTTONUP, 0, MAKELPARAM(screen.x, screen.y));
    }
};

using SkinDialog = MessageBoxTest;

TEST_F(SkinDialog, KeepsItsClientAreaInAnotherFrame) {
    CSize plain;
    Dialog system(false);
    EXPECT_EQ(system.Run({[&] {
        CRect client;
        system.GetClientRect(client);
        plain = client.Size();
        EXPECT_FALSE(system.IsSkinned());
    }}),
              STAYED);
    Dialog dialog(true);
    dialog.Run({[&] {
        ASSERT_TRUE(dialog.IsSkinned());
        CRect client;
        dialog.GetClientRect(client);
        EXPECT_EQ(client.Size(), plain);
        dialog.ClientToScreen(client);
        CRect window = client;
        window.InflateRect(BORDER, TOP, BORDER, BORDER);
        EXPECT_EQ(window, dialog.Rect());
        CRect work;
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
        const CSize off = window.CenterPoint() - work.CenterPoint();  // the template tells no place
        EXPECT_TRUE(std::abs(off.cx) <= 1 && std::abs(off.cy) <= 1);
        const std::tuple<CPoint, LRESULT> hits[] = {
            {client.TopLeft(), HTCLIENT},
            {client.TopLeft() - CSize(0, 1), HTCAPTION},
            {window.TopLeft() + CSize(40, 3), HTCAPTION},
            {CPoint(window.left + 2, client.bottom - 1), HTBORDER},
            {CPoint(client.right, client.top + 5), HTBORDER},
            {CPoint(window.right - 20, window.bottom - 1), HTBORDER},
            {dialog.CloseBox(), HTCLOSE},
            {window.BottomRight(), HTNOWHERE},
        };
        for (const auto& [point, part] : hits) {
            EXPECT_EQ(dialog.HitTest(point), part) << point.x - window.left << "," << point.y - window.top;
        }
    }});
}

TEST_F(SkinDialog, ClosesByItsCloseBox) {
    const auto result = [](const std::function<void(Dialog&)>& act) {
        Dialog dialog(true);
        return dialog.Run({[&] { act(dialog); }});
    };
    EXPECT_EQ(result([](Dialog& dialog) {
                  dialog.PostNc(WM_NCLBUTTONDOWN, dialog.CloseBox());
                  dialog.PostUp(dialog.CloseBox());
              }),
              IDCANCEL);
    EXPECT_EQ(result([](Dialog& dialog) {
                  dialog.PostNc(WM_NCLBUTTONDOWN, dialog.CloseBox());
                  dialog.PostUp(dialog.CloseBox() - CSize(50, 0));
              }),
              STAYED);
    EXPECT_EQ(result([](Dialog& dialog) {
                  dialog.GetSystemMenu(FALSE)->EnableMenuItem(SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
                  dialog.PostNc(WM_NCLBUTTONDOWN, dialog.CloseBox());
                  dialog.PostUp(dialog.CloseBox());
              }),
              STAYED);
}

// The row of a cell is told by the green of its colour: 16 lines of 2 for each state.
int StateShown(Dialog& dialog, CPoint screen) {
    dialog.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    return GetGValue(dialog.PixelOf(screen)) / 32;
}

TEST_F(SkinDialog, DrawsEachStateOfItsButtons) {
    Dialog dialog(true);
    const auto shown = [&](int id) { return StateShown(dialog, dialog.Rect(id).TopLeft() + CSize(2, 5)); };
    dialog.Run({[&] {
        dialog.ShowWindow(SW_SHOW);
        dialog.GotoDlgCtrl(dialog.GetDlgItem(13));  // the check box: no push button has the focus
        EXPECT_EQ(shown(10), CSkin::SkinNormal);
        EXPECT_EQ(shown(11), CSkin::SkinDefault);
        EXPECT_EQ(shown(12), CSkin::SkinDisabled);
        dialog.GetDlgItem(10)->SendMessage(BM_SETSTATE, TRUE);
        dialog.GetDlgItem(11)->SendMessage(BM_SETSTATE, TRUE);
        EXPECT_EQ(shown(10), CSkin::SkinPressed);
        EXPECT_EQ(shown(11), CSkin::SkinDefaultPressed);
        dialog.GetDlgItem(10)->SendMessage(BM_SETSTATE, FALSE);
        dialog.GetDlgItem(11)->SendMessage(BM_SETSTATE, FALSE);
        dialog.GetDlgItem(10)->SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(4, 4));
        EXPECT_EQ(shown(10), CSkin::SkinHot);
        dialog.GetDlgItem(10)->SendMessage(WM_MOUSELEAVE);
        EXPECT_EQ(shown(10), CSkin::SkinNormal);
        dialog.GetDlgItem(11)->EnableWindow(FALSE);
        EXPECT_EQ(shown(11), CSkin::SkinDefaultDisabled);
        dialog.GotoDlgCtrl(dialog.GetDlgItem(10));  // Enter presses it now
        EXPECT_EQ(shown(10), CSkin::SkinDefault);
    }});
}

TEST_F(SkinDialog, DrawsItsCheckBoxAndCloseBox) {
    Dialog dialog(true);
    dialog.Run({[&] {
        dialog.ShowWindow(SW_SHOW);
        const CPoint check = dialog.Rect(13).TopLeft() + CSize(5, dialog.Rect(13).Height() / 2);
        StateShown(dialog, check);
        const COLORREF before = dialog.PixelOf(check);
        dialog.GetDlgItem(13)->SendMessage(BM_CLICK);
        EXPECT_EQ(dialog.IsDlgButtonChecked(13), static_cast<UINT>(BST_CHECKED));
        StateShown(dialog, check);
        EXPECT_NE(dialog.PixelOf(check), before);

        const CPoint corner = dialog.CloseBox() - CSize(8, 4);
        EXPECT_EQ(StateShown(dialog, corner), CSkin::SkinNormal);
        dialog.SendMessage(WM_NCMOUSEMOVE, HTCLOSE);
        EXPECT_EQ(StateShown(dialog, corner), CSkin::SkinHot);
        dialog.SendMessage(WM_NCMOUSELEAVE);
        dialog.GetSystemMenu(FALSE)->EnableMenuItem(SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
        EXPECT_EQ(StateShown(dialog, corner), CSkin::SkinDisabled);
    }});
}

// The static, the group box and the dialog itself show one picture, stretched over the client area.
TEST_F(SkinDialog, HasOneBackgroundBehindEverything) {
    Dialog dialog(true);
    dialog.Run({[&] {
        dialog.ShowWindow(SW_SHOW);
        const CPoint behind = dialog.Rect(15).BottomRight() - CSize(2, 2);
        const CPoint beside = behind + CSize(3, 0);
        StateShown(dialog, behind);
        const COLORREF inside = dialog.PixelOf(behind);
        const COLORREF outside = dialog.PixelOf(beside);
        EXPECT_NE(outside, GetSysColor(COLOR_3DFACE));
        EXPECT_LE(std::abs(GetRValue(inside) - GetRValue(outside)), 8);
        EXPECT_EQ(GetGValue(inside), GetGValue(outside));
        dialog.GetDlgItem(15)->ShowWindow(SW_HIDE);
        StateShown(dialog, behind);
        EXPECT_EQ(dialog.PixelOf(behind), inside);
    }});
}

}  // namespace
