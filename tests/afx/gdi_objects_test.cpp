#include <afxwin.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <thread>

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kGreen = RGB(0, 255, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);

// A memory context of 8 x 8 white pixels.
struct Picture {
    Picture() {
        CClientDC screen(nullptr);
        EXPECT_TRUE(dc.CreateCompatibleDC(&screen) && bitmap.CreateCompatibleBitmap(&screen, 8, 8));
        before = dc.SelectObject(&bitmap);
        dc.FillSolidRect(0, 0, 8, 8, kWhite);
    }
    ~Picture() { dc.SelectObject(before); }

    CBitmap bitmap;
    CDC dc;
    CBitmap* before = nullptr;
};

struct Kind {
    CRuntimeClass* type;
    UINT number;
    std::function<BOOL(CGdiObject&)> create;
};

const std::vector<Kind>& Kinds() {
    static const std::vector<Kind> kinds = {
        {RUNTIME_CLASS(CPen), OBJ_PEN, [](CGdiObject& o) { return static_cast<CPen&>(o).CreatePen(PS_SOLID, 1, kRed); }},
        {RUNTIME_CLASS(CBrush), OBJ_BRUSH, [](CGdiObject& o) { return static_cast<CBrush&>(o).CreateSolidBrush(kRed); }},
        {RUNTIME_CLASS(CFont), OBJ_FONT, [](CGdiObject& o) { return static_cast<CFont&>(o).CreatePointFont(90, _T("Arial")); }},
        {RUNTIME_CLASS(CBitmap), OBJ_BITMAP,
         [](CGdiObject& o) { return static_cast<CBitmap&>(o).CreateBitmap(2, 2, 1, 1, nullptr); }},
        {RUNTIME_CLASS(CRgn), OBJ_REGION, [](CGdiObject& o) { return static_cast<CRgn&>(o).CreateRectRgn(0, 0, 2, 2); }},
    };
    return kinds;
}

std::unique_ptr<CGdiObject> Make(const Kind& kind) {
    return std::unique_ptr<CGdiObject>(static_cast<CGdiObject*>(kind.type->CreateObject()));
}

TEST(GdiObject, OwnsOneHandleAndDeletesItAtItsEnd) {
    for (const Kind& kind : Kinds()) {
        SCOPED_TRACE(kind.type->m_lpszClassName);
        auto object = Make(kind);
        EXPECT_TRUE(object->GetSafeHandle() == nullptr && object->GetObjectType() == 0 && !object->DeleteObject());
        ASSERT_TRUE(kind.create(*object));
        const HGDIOBJ handle = object->GetSafeHandle();
        EXPECT_EQ(object->GetObjectType(), kind.number);
        EXPECT_FALSE(kind.create(*object) || object->Attach(handle) || object->Attach(nullptr));
        EXPECT_EQ(object->GetSafeHandle(), handle);

        auto heir = Make(kind);
        EXPECT_TRUE(heir->Attach(object->Detach()));
        object.reset();
        EXPECT_EQ(::GetObjectType(handle), kind.number);
        heir.reset();
        EXPECT_EQ(::GetObjectType(handle), 0U);
    }
}

TEST(GdiObject, IsFoundByItsHandleAndHasATemporaryStandInOfItsClass) {
    for (const Kind& kind : Kinds()) {
        SCOPED_TRACE(kind.type->m_lpszClassName);
        const auto object = Make(kind);
        ASSERT_TRUE(kind.create(*object));
        EXPECT_EQ(CGdiObject::FromHandle(*object), object.get());
        const HGDIOBJ handle = object->Detach();
        CGdiObject* const temporary = CGdiObject::FromHandle(handle);
        ASSERT_TRUE(temporary != nullptr && temporary != object.get());
        EXPECT_EQ(temporary->GetRuntimeClass(), kind.type);
        EXPECT_EQ(CGdiObject::FromHandle(handle), temporary);
        EXPECT_EQ(CPen::FromHandle(static_cast<HPEN>(handle)) != nullptr, kind.number == OBJ_PEN);
        EXPECT_EQ(CFont::FromHandle(static_cast<HFONT>(handle)) != nullptr, kind.number == OBJ_FONT);
        CGdiObject::DeleteTempMap();
        EXPECT_EQ(::GetObjectType(handle), kind.number);
        EXPECT_TRUE(object->Attach(handle));
    }
    EXPECT_EQ(CGdiObject::FromHandle(nullptr), nullptr);
}

TEST(GdiObject, MayEndInAnotherThread) {
    auto brush = std::make_unique<CBrush>(kRed);
    const HBRUSH handle = *brush;
    const CBrush* const address = brush.get();
    std::thread([&] {
        EXPECT_EQ(CBrush::FromHandle(handle), address);
        brush.reset();
    }).join();
    EXPECT_EQ(CBrush::FromHandle(handle), nullptr);
    CGdiObject::DeleteTempMap();
}

TEST(GdiObject, ThrowsWhereAConstructorFails) {
    CWnd none;
    none.Attach(reinterpret_cast<HWND>(std::uintptr_t{0x7FFE}));
    EXPECT_THROW(CBrush(static_cast<CBitmap*>(nullptr)), CResourceException*);
    EXPECT_THROW(CClientDC dc(&none), CResourceException*);
    none.Detach();
}

TEST(GdiObject, TellsWhatItWasMadeOf) {
    LOGPEN pen = {};
    EXPECT_TRUE(CPen(PS_DASH, 1, kBlue).GetLogPen(&pen) && pen.lopnStyle == PS_DASH && pen.lopnColor == kBlue);
    LOGFONT font = {};
    CFont points;
    EXPECT_TRUE(points.CreatePointFont(90, _T("A name of far more than 31 characters")) && points.GetLogFont(&font));
    EXPECT_EQ(font.lfHeight, -12);  // 9 points at 96 pixels an inch
    EXPECT_EQ(CString(font.lfFaceName), _T("A name of far more than 31 char"));
    CFont plain;
    EXPECT_TRUE(plain.CreateFont(-17, 0, 0, 0, FW_BOLD, TRUE, 0, 0, 0, 0, 0, 0, 0, _T("Arial")) && plain.GetLogFont(&font));
    EXPECT_TRUE(font.lfHeight == -17 && font.lfWeight == FW_BOLD && font.lfItalic);
}

TEST(GdiObject, CombinesRegionsAndNullStandsForNone) {
    CRgn left;
    CRgn right;
    CRgn both;
    ASSERT_TRUE(left.CreateRectRgn(0, 0, 4, 4) && right.CreateRectRgn(2, 2, 6, 6) && both.CreateRectRgn(0, 0, 0, 0));
    CRect box;
    EXPECT_EQ(both.CombineRgn(&left, &right, RGN_AND), SIMPLEREGION);
    EXPECT_TRUE(both.GetRgnBox(&box) == SIMPLEREGION && box == CRect(2, 2, 4, 4));
    EXPECT_EQ(both.CombineRgn(&left, &right, RGN_DIFF), COMPLEXREGION);
    EXPECT_TRUE(both.PtInRegion(3, 1) && !both.PtInRegion(CPoint(3, 3)));
    EXPECT_EQ(both.CombineRgn(&left, nullptr, RGN_AND), ERROR);
}

TEST(DeviceContext, SelectsObjectsAndGivesBackTheOnesBefore) {
    Picture picture;
    CDC& dc = picture.dc;
    EXPECT_EQ(dc.GetCurrentBitmap(), &picture.bitmap);
    CPen red(PS_SOLID, 1, kRed);
    CBrush blue(kBlue);
    CPen* const pen = dc.SelectObject(&red);
    CBrush* const brush = dc.SelectObject(&blue);
    ASSERT_TRUE(pen != nullptr && brush != nullptr);
    EXPECT_TRUE(dc.GetCurrentPen() == &red && dc.GetCurrentBrush() == &blue);
    EXPECT_TRUE(dc.Rectangle(CRect(1, 1, 7, 7)));
    EXPECT_TRUE(dc.GetPixel(1, 1) == kRed && dc.GetPixel(2, 2) == kBlue && dc.GetPixel(7, 7) == kWhite);
    EXPECT_EQ(dc.SelectObject(pen), &red);
    EXPECT_EQ(dc.SelectStockObject(WHITE_BRUSH), &blue);
    EXPECT_EQ(dc.SelectObject(static_cast<CBrush*>(nullptr)), nullptr);
    EXPECT_EQ(dc.SelectObject(static_cast<CBitmap*>(nullptr)), nullptr);

    CRgn corner;
    ASSERT_TRUE(corner.CreateRectRgn(0, 0, 2, 2));
    EXPECT_EQ(dc.SelectObject(&corner), SIMPLEREGION);
    dc.FillSolidRect(0, 0, 8, 8, kGreen);
    EXPECT_TRUE(dc.GetPixel(1, 1) == kGreen && dc.SelectClipRgn(nullptr) == SIMPLEREGION && dc.GetPixel(2, 2) == kBlue);

    CDC second;  // a bitmap is in one context at a time
    EXPECT_TRUE(second.CreateCompatibleDC(nullptr));
    EXPECT_EQ(second.SelectObject(&picture.bitmap), nullptr);
}

TEST(DeviceContext, DrawsItsOwnShapesAndKeepsItsColors) {
    Picture picture;
    CDC& dc = picture.dc;
    dc.SetBkColor(kGreen);
    dc.Draw3dRect(CRect(0, 0, 4, 4), kRed, kBlue);
    EXPECT_EQ(dc.GetBkColor(), kGreen);
    constexpr COLORREF rows[4][4] = {
        {kRed, kRed, kRed, kBlue}, {kRed, kWhite, kWhite, kBlue}, {kRed, kWhite, kWhite, kBlue}, {kBlue, kBlue, kBlue, kBlue}};
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x)
            EXPECT_EQ(dc.GetPixel(x, y), rows[y][x]) << x << ", " << y;

    EXPECT_TRUE(dc.MoveTo(2, 7) == CPoint(0, 0) && dc.LineTo(CPoint(5, 7)) && dc.GetCurrentPosition() == CPoint(5, 7));
    EXPECT_TRUE(dc.GetPixel(4, 7) == kBlack && dc.GetPixel(5, 7) == kWhite);
    EXPECT_TRUE(dc.SetViewportOrg(3, 3) == CPoint(0, 0) && dc.GetViewportOrg() == CPoint(3, 3));
    CRect rect(0, 0, 1, 1);
    EXPECT_TRUE(dc.LPtoDP(&rect) && rect == CRect(3, 3, 4, 4) && dc.DPtoLP(&rect) && rect == CRect(0, 0, 1, 1));
    EXPECT_TRUE(dc.BitBlt(0, 0, 1, 1, nullptr, 0, 0, BLACKNESS) && dc.SaveDC() > 0);
    dc.SetViewportOrg(0, 0);
    EXPECT_TRUE(dc.GetPixel(3, 3) == kBlack && dc.RestoreDC(-1) && dc.GetViewportOrg() == CPoint(3, 3));
}

TEST(DeviceContext, MeasuresAndDrawsTextWithoutChangingIt) {
    Picture picture;
    const CString text(_T("A long line that does not fit"));
    CRect rect(0, 0, 20, 0);
    EXPECT_GT(picture.dc.DrawText(text, &rect, DT_CALCRECT | DT_SINGLELINE), 0);
    EXPECT_EQ(rect.Size(), picture.dc.GetTextExtent(text));
    CRect narrow(0, 0, 20, 8);
    picture.dc.DrawText(text, &narrow, DT_END_ELLIPSIS | DT_MODIFYSTRING | DT_SINGLELINE);
    EXPECT_EQ(text, _T("A long line that does not fit"));
    EXPECT_EQ(CDC().GetTextExtent(text), CSize());
}

TEST(DeviceContext, IsFoundByItsHandle) {
    CDC owner;
    EXPECT_FALSE(owner.DeleteDC() || owner.CreateDC(_T("DISPLAY"), nullptr, nullptr, &owner));
    ASSERT_TRUE(owner.CreateCompatibleDC(nullptr) && !owner.CreateCompatibleDC(nullptr) && CDC::FromHandle(owner) == &owner);
    const HDC handle = owner.Detach();
    EXPECT_EQ(CDC::FromHandle(handle)->m_hAttribDC, handle);
    CDC::DeleteTempMap();
    EXPECT_TRUE(owner.Attach(handle) && owner.DeleteDC());
}

TEST(Resources, AreLookedForInTheResourceModuleAndThenInTheProgram) {
    const HINSTANCE program = AfxGetInstanceHandle();
    const HINSTANCE module = AfxLoadLibrary(_T("afx_resource_module.dll"));
    ASSERT_NE(module, nullptr);
    const LPTSTR bitmap = MAKEINTRESOURCEW(5);
    TCHAR cut[6] = {};
    CString text(_T("kept"));
    EXPECT_EQ(AfxGetResourceHandle(), program);
    EXPECT_TRUE(text.LoadString(1) && text == _T("in the program"));
    AfxSetResourceHandle(module);
    EXPECT_TRUE(text.LoadString(1) && text == _T("in the module") && AfxFindStringResourceHandle(1) == module);
    EXPECT_TRUE(text.LoadString(2) && text == _T("in the program alone") && !text.LoadString(3));
    EXPECT_TRUE(AfxLoadString(1, cut, 6) == 5 && cut == CString(_T("in th")) && AfxLoadString(3, cut, 6) == 0 && cut[0] == 0);
    EXPECT_EQ(AfxFindResourceHandle(bitmap, RT_BITMAP), program);
    EXPECT_EQ(AfxFindResourceHandle(bitmap, RT_RCDATA), module);  // nobody has it

    Picture target;
    CDC source;
    CBitmap blue;
    ASSERT_TRUE(blue.LoadBitmap(5) && source.CreateCompatibleDC(nullptr));
    CBitmap* const before = source.SelectObject(&blue);
    EXPECT_TRUE(target.dc.BitBlt(0, 0, 1, 1, &source, 0, 0, SRCCOPY) && target.dc.GetPixel(0, 0) == kBlue);
    source.SelectObject(before);
    EXPECT_FALSE(CBitmap().LoadBitmap(99));
    AfxSetResourceHandle(nullptr);
    EXPECT_TRUE(AfxGetResourceHandle() == program && AfxFreeLibrary(module));
}

TEST(Rectangle, ComputesAsItsOperatorsSay) {
    const CRect rect(CPoint(10, 20), CSize(30, 40));
    EXPECT_TRUE(rect == CRect(10, 20, 40, 60) && rect.CenterPoint() == CPoint(25, 40) && rect.BottomRight() == CPoint(40, 60));
    EXPECT_TRUE(rect.PtInRect(CPoint(10, 20)) && !rect.PtInRect(CPoint(40, 20)) && !rect.PtInRect(CPoint(10, 60)));
    const std::pair<std::function<void(CRect&)>, CRect> rows[] = {
        {[](CRect& r) { r.InflateRect(1, 2); }, {9, 18, 41, 62}},
        {[](CRect& r) { r.DeflateRect(1, 2, 3, 4); }, {11, 22, 37, 56}},
        {[](CRect& r) { r.MoveToXY(0, 1); }, {0, 1, 30, 41}},
        {[](CRect& r) { r -= CPoint(10, 20); }, {0, 0, 30, 40}},
        {[](CRect& r) { r &= CRect(0, 0, 20, 30); }, {10, 20, 20, 30}},
        {[](CRect& r) { r |= CRect(0, 0, 20, 30); }, {0, 0, 40, 60}},
        {[](CRect& r) { r &= CRect(50, 0, 60, 30); }, {}},
        {[](CRect& r) { r.SubtractRect(&r, CRect(0, 0, 20, 90)); }, {20, 20, 40, 60}},
        {[](CRect& r) { std::swap(r.left, r.right), r.NormalizeRect(); }, {10, 20, 40, 60}},
    };
    for (const auto& [change, expected] : rows) {
        CRect changed(rect);
        change(changed);
        EXPECT_TRUE(changed == expected) << &expected - &rows[0].second << ": " << changed.left << ", " << changed.top << ", "
                                         << changed.right << ", " << changed.bottom;
    }
    EXPECT_TRUE(CPoint(MAKELPARAM(0xFFFF, 7)) == CPoint(-1, 7) && CPoint(3, 4) - CPoint(1, 1) == CSize(2, 3));
}

}  // namespace
