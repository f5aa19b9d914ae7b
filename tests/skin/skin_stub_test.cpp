// Skinned windows: when a skin is put on and taken off, and what the window looks like meanwhile.

#include <kadata/skin_manager.h>

#include <memory>
#include <utility>

#include "skin_window_fixture.h"

namespace {

using test::SkinOfWindows;

constexpr auto BOTH = CSkinStubWnd::SkinFrame | CSkinStubWnd::SkinBackground;

class Manager : public CSkinManager {
public:
    using CSkinManager::Destroy;
};

class SkinStub : public test::SkinWindowTest {
protected:
    ~SkinStub() override { Manager::Destroy(); }
    static void SetSkin(CSkinStubWnd& stub) { ASSERT_TRUE(stub.SetSkinInfo(SkinOfWindows())); }
};

TEST_F(SkinStub, IsAppliedWithFlagsAndACompleteSkinOnly) {
    Make(WS_POPUP, CSize(60, 40));
    CSkinStubWnd stub;
    EXPECT_TRUE(stub.Apply(nullptr));
    EXPECT_TRUE(stub.IsNoFlagSet());
    EXPECT_FALSE(stub.SetFlags(BOTH, FALSE));
    EXPECT_EQ(stub.GetFlags(), CSkinStubWnd::NoFlags);
    EXPECT_FALSE(stub.Apply(Wnd()));
    EXPECT_TRUE(stub.SetFlags(CSkinStubWnd::SkinBackground, TRUE));
    EXPECT_FALSE(stub.IsFlagSet(BOTH));
    EXPECT_FALSE(stub.Apply(Wnd()));  // no skin
    EXPECT_FALSE(stub.SetSkinInfo(SkinInfo()));
    EXPECT_FALSE(stub.IsHooked(nullptr));

    ASSERT_TRUE(CSkinManager::GetInstance()->Init(SkinOfWindows()));
    CWnd none;
    EXPECT_FALSE(stub.Apply(&none));
    EXPECT_TRUE(stub.Apply(Wnd()));
    EXPECT_EQ(stub.GetInitSkinBackgroundBitmapInfo().nBitmapID, test::POSITIONS);
    EXPECT_TRUE(stub.GetSkinBackground().HasWindowBackgroundBitmap());
    EXPECT_FALSE(stub.Apply(Wnd()));
    EXPECT_TRUE(stub.SetFlags(BOTH, FALSE));
    EXPECT_TRUE(stub.IsFlagSet(BOTH));
    EXPECT_TRUE(stub.Apply(nullptr));
    EXPECT_FALSE(stub.IsHooked(nullptr));
}

TEST_F(SkinStub, GivesUpItsBackgroundWhenTheWindowEnds) {
    struct Stub : CSkinStubWnd {
        using CSkinStubWnd::CSkinStubWnd;
        void OnDestroySkin() override {
            CSkinStubWnd::OnDestroySkin();
            ++ended;
        }
        int ended = 0;
    } stub(CSkinStubWnd::SkinBackground);
    SetSkin(stub);
    for (int round = 1; round <= 2; ++round) {
        Make(WS_POPUP, CSize(60, 40));
        EXPECT_TRUE(stub.Apply(Wnd()));
        EXPECT_TRUE(stub.CreateBackground());
        CBitmap* const bitmap = stub.GetBackgroundBitmap();
        ASSERT_NE(bitmap, nullptr);
        const HGDIOBJ handle = bitmap->GetSafeHandle();
        EXPECT_TRUE(stub.CreateBackground());
        EXPECT_EQ(bitmap->GetSafeHandle(), handle);  // of the same size still
        Resize(CSize(61, 40));
        EXPECT_TRUE(stub.CreateBackground());
        BITMAP size = {};
        bitmap->GetBitmap(&size);
        EXPECT_EQ(size.bmWidth, 61);
        Resize(CSize(0, 40));
        EXPECT_FALSE(stub.CreateBackground());
        Resize(CSize(5, 5));
        EXPECT_TRUE(stub.CreateBackground());
        DestroyWindow(window_);
        EXPECT_EQ(stub.ended, round);
        EXPECT_EQ(stub.GetBackgroundBitmap(), nullptr);
        EXPECT_FALSE(stub.IsHooked(nullptr));
    }
    stub.WindowProc(WM_DESTROY, 0, 0);
    EXPECT_EQ(stub.ended, 3);
}

TEST_F(SkinStub, ShowsAMissingBackgroundInTheSystemsColor) {
    CSkinStubWnd stub(CSkinStubWnd::SkinBackground);
    SetSkin(stub);
    stub.GetInitSkinBackgroundBitmapInfo().nBitmapID = 999;
    Make(WS_POPUP, CSize(20, 20));
    EXPECT_TRUE(stub.Apply(Wnd()));
    const desktop_test::Picture picture(20, 20, test::PLAIN);
    EXPECT_EQ(SendMessageW(window_, WM_ERASEBKGND, reinterpret_cast<WPARAM>(picture.Context()), 0), 1);
    EXPECT_EQ(GetPixel(picture.Context(), 19, 19), GetSysColor(COLOR_3DFACE));
}

// Statics without text; the last rows lie partly or wholly outside of the window.
TEST_F(SkinStub, ShowsTheBackgroundThroughStaticsWithoutASeam) {
    const CRect controls[] = {{0, 0, 10, 10},       {10, 0, 47, 13},   {3, 21, 4, 22},     {50, 30, 131, 47},
                              {11, 51, 190, 52},    {60, 55, 61, 140}, {-7, 70, 9, 91},    {70, 60, 95, 85},
                              {150, 100, 260, 190}, {20, 90, 55, 260}, {100, -20, 130, 11}};
    for (const DWORD style : {DWORD{0}, DWORD{WS_CLIPCHILDREN}}) {
        CSkinStubWnd stub(CSkinStubWnd::SkinBackground);
        SetSkin(stub);
        Make(WS_POPUP | style, CSize(200, 150));
        for (const CRect& rect : controls) {
            ASSERT_NE(CreateWindowExW(0, _T("Static"), _T(""), WS_CHILD | WS_VISIBLE, rect.left, rect.top, rect.Width(),
                                      rect.Height(), window_, nullptr, GetModuleHandleW(nullptr), nullptr),
                      nullptr);
        }
        ASSERT_TRUE(stub.Apply(Wnd()));
        Show();
        EXPECT_EQ(Seam(), "") << style;
        for (const CSize size : {CSize(201, 150), CSize(77, 53), CSize(331, 211), CSize(331, 60), CSize(200, 150)}) {
            Resize(size);
            EXPECT_EQ(Seam(), "") << style << ": " << size.cx << " x " << size.cy;
        }
        SetWindowPos(window_, nullptr, -100, 80, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        EXPECT_EQ(Seam(100), "") << style;
    }
}

TEST_F(SkinStub, AlignsTheBrushOfAStaticToItsPlace) {
    CSkinStubWnd stub(CSkinStubWnd::SkinBackground);
    SetSkin(stub);
    Make(WS_POPUP, CSize(64, 48));
    const HWND control =
        CreateWindowExW(0, _T("Static"), _T(""), WS_CHILD, 40, 30, 20, 10, window_, nullptr, GetModuleHandleW(nullptr), nullptr);
    ASSERT_TRUE(stub.Apply(Wnd()));
    const desktop_test::Picture picture(20, 10, 0);
    const auto ask = [&] {
        return SendMessageW(window_, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(picture.Context()),
                            reinterpret_cast<LPARAM>(control));
    };
    const LRESULT plain = ask();  // without a background yet
    EXPECT_EQ(GetBkMode(picture.Context()), TRANSPARENT);
    ASSERT_TRUE(stub.CreateBackground());
    EXPECT_NE(ask(), plain);
    POINT origin = {};
    GetBrushOrgEx(picture.Context(), &origin);
    EXPECT_EQ(origin.x, (1 - 40 - GetSystemMetrics(SM_CXDLGFRAME)) % 64);
    EXPECT_EQ(origin.y, (1 - 30 - GetSystemMetrics(SM_CYDLGFRAME)) % 48);
}

TEST_F(SkinStub, ResizesWithoutAFrameOfPlainBackground) {
    int plain = 0;
    OnProcedure() = [&](HWND, UINT message, WPARAM, LPARAM) { plain += message == WM_ERASEBKGND; };
    struct Counter : CSkinSubclassWnd {
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            erased += message == WM_ERASEBKGND;
            return CSkinSubclassWnd::WindowProc(message, wParam, lParam);
        }
        int erased = 0;
    } counter;
    CSkinStubWnd stub(CSkinStubWnd::SkinBackground);
    SetSkin(stub);
    Make(WS_POPUP, CSize(120, 90));
    ASSERT_TRUE(stub.Apply(Wnd()));
    ASSERT_TRUE(counter.HookWindow(Wnd()));
    Show();
    for (int step = 0; step < 40; ++step) {
        const int grown = step < 20 ? step : 40 - 2 * step;
        counter.erased = 0;
        Resize(CSize(120 + 2 * grown, 90 + grown));
        EXPECT_EQ(Seam(), "") << step;
        EXPECT_GE(counter.erased, step == 0 ? 0 : 1) << step;
        EXPECT_LE(counter.erased, 3) << step;  // the part that is new, and all
    }
    EXPECT_EQ(plain, 0);
}

// The host deletes the skin, or destroys the window, while it handles what the skin has passed on.
TEST_F(SkinStub, MayGoInTheMiddleOfAMessage) {
    for (const UINT message :
         {WM_CTLCOLORSTATIC, WM_NCPAINT, WM_NCACTIVATE, WM_NCHITTEST, WM_SETTEXT, WM_PRINT, WM_SIZE, WM_PAINT, WM_NCMOUSEMOVE}) {
        for (const bool destroys : {false, true}) {
            auto stub = std::make_unique<CSkinStubWnd>(BOTH);
            SetSkin(*stub);
            OnProcedure() = nullptr;
            Make(WS_OVERLAPPEDWINDOW, CSize(300, 200));
            ASSERT_TRUE(stub->Apply(Wnd()));
            stub->CreateBackground();
            const desktop_test::Picture picture(300, 200, 0);
            const bool draws = message == WM_CTLCOLORSTATIC || message == WM_PRINT;
            bool done = false;
            OnProcedure() = [&](HWND window, UINT seen, WPARAM, LPARAM) {
                if (seen == message && !std::exchange(done, true)) {
                    destroys ? static_cast<void>(DestroyWindow(window)) : stub.reset();
                }
            };
            SendMessageW(window_, message, draws ? reinterpret_cast<WPARAM>(picture.Context()) : 0, 0);
            EXPECT_TRUE(done) << message;
            EXPECT_EQ(CSkinSubclassWndMap::GetHookMap().Lookup(window_), nullptr) << message;
            OnProcedure() = nullptr;
        }
    }
}

TEST_F(SkinStub, LeavesTheSystemWhatTheFrameDoesNotCover) {
    CSkinStubWnd stub(CSkinStubWnd::SkinFrame);
    SetSkin(stub);
    Make(WS_OVERLAPPEDWINDOW, CSize(300, 200));
    ASSERT_TRUE(stub.Apply(Wnd()));
    const CSkinWindowRect window(window_);
    const CSkinWndInfo info(Wnd());
    CRgn seen;
    seen.CreateRectRgn(0, 0, 0, 0);
    OnProcedure() = [&](HWND, UINT message, WPARAM wParam, LPARAM) {
        if (message == WM_NCPAINT) {
            EXPECT_NE(CombineRgn(seen, reinterpret_cast<HRGN>(wParam), nullptr, RGN_COPY), ERROR);
        }
    };
    CRgn client;
    client.Attach(info.GetClientRGN(TRUE));
    for (const WPARAM whole : {WPARAM{0}, WPARAM{1}}) {
        SendMessageW(window_, WM_NCPAINT, whole, 0);
        EXPECT_TRUE(seen.EqualRgn(&client)) << whole;
    }
    CRgn part;  // frame and client area
    part.CreateRectRgn(window.left, window.top, window.left + 50, window.bottom);
    SendMessageW(window_, WM_NCPAINT, reinterpret_cast<WPARAM>(HRGN{part}), 0);
    CRgn expected;
    expected.CreateRectRgn(0, 0, 0, 0);
    expected.CombineRgn(&part, &client, RGN_AND);
    EXPECT_TRUE(seen.EqualRgn(&expected));
    OnProcedure() = nullptr;
}

TEST_F(SkinStub, DrawsTheFrameFromTheSkin) {
    CSkinStubWnd stub(BOTH);
    SetSkin(stub);
    Make(WS_OVERLAPPEDWINDOW, CSize(300, 200));
    ASSERT_TRUE(stub.Apply(Wnd()));
    const desktop_test::Picture picture(300, 200, test::PLAIN);
    const auto print = [&](bool active) {
        SendMessageW(window_, WM_NCACTIVATE, active, 0);
        SendMessageW(window_, WM_PRINT, reinterpret_cast<WPARAM>(picture.Context()), PRF_NONCLIENT | PRF_CLIENT | PRF_ERASEBKGND);
        return std::vector<COLORREF>{GetPixel(picture.Context(), 0, 0), GetPixel(picture.Context(), 299, 199),
                                     GetPixel(picture.Context(), 1, 198)};
    };
    // The frame's bitmap has cells of 24 x 20 with a margin of 2; the inactive state is the second pair of cells.
    const auto color = [](int x, int y) { return Gdiplus::Color(test::PositionColor(x, y)).ToCOLORREF(); };
    EXPECT_EQ(print(true), (std::vector<COLORREF>{color(2, 2), color(21, 17), color(3, 16)}));
    EXPECT_EQ(print(false), (std::vector<COLORREF>{color(2, 42), color(21, 57), color(3, 56)}));

    // Inside of the borders nothing of the system's caption is left.
    const CRect caption = CSkinWndInfo(Wnd()).GetCaptionRect();
    for (int y = 0; y < caption.bottom; ++y) {
        for (int x = 0; x < 300; ++x) {
            ASSERT_NE(GetPixel(picture.Context(), x, y), test::PLAIN) << x << "," << y;
        }
    }
}

TEST_F(SkinStub, HasBoxesThatDoWhatTheSystemsDo) {
    CSkinStubWnd stub(CSkinStubWnd::SkinFrame);
    SetSkin(stub);
    const struct {
        DWORD style;
        std::vector<int> hits;
    } rows[] = {{WS_OVERLAPPEDWINDOW, {HTCAPTION, HTMINBUTTON, HTCAPTION, HTMAXBUTTON, HTCAPTION, HTCLOSE}},
                {WS_POPUP | WS_CAPTION | WS_SYSMENU, {HTCAPTION, HTCLOSE}},
                {WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX, {HTCAPTION, HTMINBUTTON, HTCAPTION, HTCLOSE}},
                {WS_POPUP | WS_CAPTION, {HTCAPTION}}};
    for (const auto& row : rows) {
        Make(row.style, CSize(300, 200));
        ASSERT_TRUE(stub.Apply(Wnd()));
        const CSkinWndInfo info(Wnd());
        const CRect caption = info.GetCaptionRect(TRUE);
        std::vector<int> hits;
        std::vector<int> widths;
        for (int x = caption.left; x < caption.right; ++x) {
            const auto hit = static_cast<int>(SendMessageW(window_, WM_NCHITTEST, 0, MAKELPARAM(x, caption.CenterPoint().y)));
            if (hits.empty() || hits.back() != hit) {
                hits.push_back(hit);
                widths.push_back(0);
            }
            ++widths.back();
        }
        EXPECT_EQ(hits, row.hits) << row.style;
        EXPECT_TRUE(hits.back() == HTCAPTION || widths.back() == 20) << row.style;
    }

    Make(WS_OVERLAPPEDWINDOW, CSize(300, 200));
    ASSERT_TRUE(stub.Apply(Wnd()));
    const CRect caption = CSkinWndInfo(Wnd()).GetCaptionRect(TRUE);
    const int y = caption.CenterPoint().y;
    const struct {
        int box;
        int pressed;  // from the caption's right edge
        int released;
        UINT command;  // 0: none
    } clicks[] = {
        {HTCLOSE, 5, 15, SC_CLOSE}, {HTCLOSE, 5, 30, 0}, {HTMAXBUTTON, 30, 30, SC_MAXIMIZE}, {HTMINBUTTON, 50, 50, SC_MINIMIZE}};
    for (const auto& click : clicks) {
        SendMessageW(window_, WM_NCLBUTTONDOWN, static_cast<WPARAM>(click.box), MAKELPARAM(caption.right - click.pressed, y));
        EXPECT_EQ(GetCapture(), window_);
        CPoint at(caption.right - click.released, y);
        ScreenToClient(window_, &at);
        SendMessageW(window_, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(at.x, at.y));
        SendMessageW(window_, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
        EXPECT_NE(GetCapture(), window_);
        MSG posted = {};
        const BOOL found = PeekMessageW(&posted, window_, WM_SYSCOMMAND, WM_SYSCOMMAND, PM_REMOVE);
        EXPECT_EQ(found ? posted.wParam : 0, click.command) << click.box;
    }
}

}  // namespace
