#include <kadata/transparent_bitmap.h>
#include <win32/gdi/gdi_objects.h>

#include "skin_window_fixture.h"

namespace {

class LinuxSkin : public test::SkinTest {};

TEST_F(LinuxSkin, LeavesNoDrawingObjectsBehind) {
    CDC dc;
    CFont font;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    ASSERT_TRUE(font.CreatePointFont(100, _T("Arial")));
    const auto draw = [&] {
        const CRect rect(0, 0, 20, 20);
        for (int type = CSkin::SkinNormal; type <= CSkin::SkinDefaultDisabled; ++type) {
            const auto state = static_cast<CSkin::ESkinBitmapType>(type);
            EXPECT_TRUE(skin_.DrawButtonBitmap(dc, state, rect, rect));
            EXPECT_TRUE(skin_.DrawButtonBitmap(dc, state, rect, CRect()));
            EXPECT_EQ(skin_.DrawButtonCaption(Target(), state, rect, _T("A"), &font, &dc), Gdiplus::Ok);
            EXPECT_EQ(skin_.DrawWindowCaption(Target(), state, rect, _T("A"), &font, &dc), Gdiplus::Ok);
        }
        SetAll();
        CDC::DeleteTempMap();
        CGdiObject::DeleteTempMap();
    };
    SetAll();
    draw();
    const std::size_t before = kawin::CountGdiObjects();
    for (int i = 0; i < 10; ++i) {
        draw();
    }
    EXPECT_EQ(kawin::CountGdiObjects(), before);
}

class LinuxSkinWindow : public test::SkinWindowTest {};

TEST_F(LinuxSkinWindow, LeavesNoDrawingObjectsBehind) {
    const auto wear = [&] {
        CSkinStubWnd stub(CSkinStubWnd::SkinFrame | CSkinStubWnd::SkinBackground);
        ASSERT_TRUE(stub.SetSkinInfo(test::SkinOfWindows()));
        Make(WS_OVERLAPPEDWINDOW, CSize(200, 150));
        CreateWindowExW(0, _T("Static"), _T(""), WS_CHILD | WS_VISIBLE, 9, 9, 30, 30, window_, nullptr, nullptr, nullptr);
        ASSERT_TRUE(stub.Apply(Wnd()));
        Show();
        Resize(CSize(180, 170));
        const desktop_test::Picture picture(200, 200, 0);
        SendMessageW(window_, WM_PRINT, reinterpret_cast<WPARAM>(picture.Context()), PRF_NONCLIENT | PRF_CLIENT | PRF_CHILDREN);
        CTransparentBitmap bitmap;
        EXPECT_TRUE(bitmap.LoadBitmapScaled(test::POSITIONS, nullptr));
        EXPECT_TRUE(bitmap.LoadIcon(110));
        EXPECT_TRUE(bitmap.LoadIcon(111));
        CDC dc;
        dc.Attach(picture.Context());
        bitmap.DrawTransparent(&dc, 0, 0, RGB(1, 2, 3), TRUE, TRUE);
        dc.Detach();
        DestroyWindow(window_);
        CDC::DeleteTempMap();
        CGdiObject::DeleteTempMap();
    };
    wear();
    const std::size_t before = kawin::CountGdiObjects();
    wear();
    EXPECT_EQ(kawin::CountGdiObjects(), before);
}

}  // namespace
