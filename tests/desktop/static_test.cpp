// The static control: text, images, rectangles, and clicks.

#include "control_picture.h"
#include "dialog_template.h"
#include "support/wine.h"

namespace {

using desktop_test::ControlPicture;
using desktop_test::kControl;
using desktop_test::kStatic;

constexpr COLORREF kBack = RGB(200, 220, 240);

class Static : public desktop_test::DialogTest {
protected:
    Static() {
        on_message = [this](HWND, UINT message, WPARAM wparam, LPARAM) -> INT_PTR {
            if (message == WM_CTLCOLORSTATIC) {
                SetBkColor(reinterpret_cast<HDC>(wparam), kBack);
                return reinterpret_cast<INT_PTR>(brush_);
            }
            return FALSE;
        };
    }
    ~Static() override { DeleteObject(brush_); }

    HWND Make(DWORD style, LPCTSTR text = _T("text"), RECT rect = {0, 0, 50, 40}) {
        EXPECT_TRUE(Create({.items = {{.atom = kStatic, .text = text, .style = kControl | style, .id = 7, .rect = rect}}}));
        return Item(7);
    }
    // Where a text's ink is.
    RECT InkOf(DWORD style, LPCTSTR text) { return ControlPicture(Make(style, text), kBack).Ink(kBack); }

    HBRUSH brush_ = CreateSolidBrush(kBack);
};

TEST_F(Static, TextStandsWhereTheStyleSays) {
    const HWND control = Make(SS_LEFT);
    RECT client = {};
    GetClientRect(control, &client);
    const RECT left = InkOf(SS_LEFT, _T("MM"));
    const RECT center = InkOf(SS_CENTER, _T("MM"));
    const RECT right = InkOf(SS_RIGHT, _T("MM"));
    EXPECT_LE(left.left, 4);
    EXPECT_LE(client.right - right.right, 4);
    EXPECT_LE(std::abs(center.left + center.right - client.right), 4);
    EXPECT_LE(left.top, 8);
    const RECT middle = InkOf(SS_LEFT | SS_CENTERIMAGE, _T("MM"));
    EXPECT_LE(std::abs(middle.top + middle.bottom - client.bottom), 6);

    const LPCTSTR words = _T("MM MM MM MM MM MM MM MM MM MM MM");
    const LONG one_line = left.bottom;
    EXPECT_GT(InkOf(SS_LEFT, words).bottom, one_line);
    EXPECT_LE(InkOf(SS_LEFTNOWORDWRAP, words).bottom, one_line);
    EXPECT_LE(InkOf(SS_SIMPLE, words).bottom, one_line);
    EXPECT_LE(InkOf(SS_LEFT | SS_ENDELLIPSIS, words).bottom, one_line);
    EXPECT_GT(InkOf(SS_LEFTNOWORDWRAP, _T("M\nM")).bottom, one_line);

    const LONG without = InkOf(SS_LEFT, _T("M&M")).right;
    EXPECT_GT(InkOf(SS_LEFT | SS_NOPREFIX, _T("M&M")).right, without);
    EXPECT_EQ(InkOf(SS_LEFT, _T("")).right, 0);
}

TEST_F(Static, RectanglesAndFrames) {
    const struct {
        DWORD style;
        int color;
        bool filled;
    } rows[] = {
        {SS_BLACKRECT, COLOR_3DDKSHADOW, true},  {SS_GRAYRECT, COLOR_3DSHADOW, true},
        {SS_WHITERECT, COLOR_3DHIGHLIGHT, true}, {SS_BLACKFRAME, COLOR_3DDKSHADOW, false},
        {SS_GRAYFRAME, COLOR_3DSHADOW, false},   {SS_WHITEFRAME, COLOR_3DHIGHLIGHT, false},
    };
    for (const auto& row : rows) {
        const ControlPicture picture(Make(row.style));
        const RECT client = picture.Client();
        const LONG frame = 2 * (client.right + client.bottom) - 4;
        EXPECT_EQ(picture.Count(GetSysColor(row.color)), row.filled ? client.right * client.bottom : frame) << row.style;
    }
    for (const DWORD style : {SS_ETCHEDHORZ, SS_ETCHEDVERT, SS_ETCHEDFRAME}) {
        const bool drawn = ControlPicture(Make(style)).Count(GetSysColor(COLOR_3DSHADOW)) > 0;
        EXPECT_EQ(drawn, test::UnlessWine(true, style == SS_ETCHEDFRAME)) << style;  // its lines are edges of the frame
    }
}

TEST_F(Static, ClicksAndKeys) {
    const struct {
        DWORD style;
        bool notifies;
    } rows[] = {{SS_LEFT, false}, {SS_LEFT | SS_NOTIFY, true}};
    for (const auto& row : rows) {
        const HWND control = Make(row.style);
        EXPECT_EQ(SendMessageW(control, WM_GETDLGCODE, 0, 0), DLGC_STATIC);
        RECT place = {};
        GetWindowRect(control, &place);
        EXPECT_EQ(SendMessageW(control, WM_NCHITTEST, 0, MAKELPARAM(place.left + 2, place.top + 2)),
                  row.notifies ? HTCLIENT : HTTRANSPARENT);
        TakeCommands();
        SendMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, 0);
        SendMessageW(control, WM_LBUTTONDBLCLK, MK_LBUTTON, 0);
        EnableWindow(control, FALSE);
        EnableWindow(control, TRUE);
        EXPECT_EQ(TakeCommands(), row.notifies ? "7:0 7:1 7:3 7:2 " : "");
    }
}

TEST_F(Static, Images) {
    const HICON icon = LoadIconW(nullptr, IDI_APPLICATION);
    HWND control = Make(SS_ICON, _T(""));
    EXPECT_EQ(SendMessageW(control, STM_SETICON, reinterpret_cast<WPARAM>(icon), 0), 0);
    EXPECT_EQ(reinterpret_cast<HICON>(SendMessageW(control, STM_GETICON, 0, 0)), icon);
    EXPECT_EQ(reinterpret_cast<HICON>(SendMessageW(control, STM_GETIMAGE, IMAGE_ICON, 0)), icon);
    const ControlPicture picture(control);
    EXPECT_EQ(picture.Client().right, GetSystemMetrics(SM_CXICON));
    EXPECT_EQ(picture.Client().bottom, GetSystemMetrics(SM_CYICON));
    EXPECT_LT(picture.Count(kBack), picture.Client().right * picture.Client().bottom);
    EXPECT_GT(picture.Count(kBack), 0);

    const desktop_test::Picture image(20, 10, RGB(9, 8, 7));
    SetPixel(image.Context(), 0, 0, RGB(99, 88, 77));
    const HBITMAP bitmap = CreateCompatibleBitmap(image.Context(), 20, 10);
    const HDC context = CreateCompatibleDC(nullptr);
    SelectObject(context, bitmap);
    BitBlt(context, 0, 0, 20, 10, image.Context(), 0, 0, SRCCOPY);
    DeleteDC(context);
    for (const bool centered : {false, true}) {
        control = Make(SS_BITMAP | (centered ? SS_CENTERIMAGE : 0), _T(""));
        RECT before = {};
        GetClientRect(control, &before);
        EXPECT_EQ(SendMessageW(control, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap)), 0);
        EXPECT_EQ(reinterpret_cast<HBITMAP>(SendMessageW(control, STM_GETIMAGE, IMAGE_BITMAP, 0)), bitmap);
        EXPECT_EQ(SendMessageW(control, STM_GETIMAGE, IMAGE_ICON, 0), 0);
        const ControlPicture seen(control);
        const RECT client = seen.Client();
        EXPECT_EQ(client.right, centered ? before.right : 20);
        EXPECT_EQ(client.bottom, centered ? before.bottom : 10);
        const RECT place = {(client.right - 20) / 2, (client.bottom - 10) / 2, (client.right + 20) / 2, (client.bottom + 10) / 2};
        EXPECT_EQ(seen.Count(RGB(9, 8, 7), place), 199);
        EXPECT_EQ(seen.Count(RGB(99, 88, 77)), client.right * client.bottom - 199);  // as the corner
        DestroyWindow(dialog);
        EXPECT_EQ(GetObjectType(bitmap), static_cast<DWORD>(OBJ_BITMAP));
    }
    DeleteObject(bitmap);
}

TEST_F(Static, TheParentDrawsAnOwnerDrawnOne) {
    const HWND control = Make(SS_OWNERDRAW);
    int drawn = 0;
    on_message = [&](HWND, UINT message, WPARAM wparam, LPARAM lparam) -> INT_PTR {
        if (message != WM_DRAWITEM) {
            return FALSE;
        }
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lparam);
        EXPECT_EQ(wparam, 7u);
        EXPECT_EQ(item.CtlType, static_cast<UINT>(ODT_STATIC));
        EXPECT_EQ(item.hwndItem, control);
        EXPECT_EQ(item.itemAction, static_cast<UINT>(ODA_DRAWENTIRE));
        EXPECT_EQ(item.itemState, IsWindowEnabled(control) ? 0u : ODS_DISABLED);
        return ++drawn;
    };
    const ControlPicture enabled(control);
    EnableWindow(control, FALSE);
    const ControlPicture disabled(control);
    EXPECT_EQ(drawn, 2);
}

}  // namespace
