#include <win32/gdi/gdi_objects.h>

#include "skin_fixture.h"

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

}  // namespace
