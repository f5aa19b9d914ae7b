#include <afxwin.h>
#include <gtest/gtest.h>

namespace {

const UINT kRegistered = ::RegisterWindowMessageW(_T("KaData tests: registered"));

// Writes down each call of a handler with its arguments.
class CLogged : public CWnd {
public:
    CString Take() { return std::exchange(m_log, CString()); }
    LRESULT Handle(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) { return WindowProc(message, wParam, lParam); }

    CString m_log;

protected:
    template <class... Arguments>
    void Log(LPCTSTR name, Arguments... arguments) {
        m_log += name;
        (m_log.AppendFormat(_T(" %d"), static_cast<int>(arguments)), ...);
    }
    LRESULT OnNumber(WPARAM wParam, LPARAM lParam) {
        Log(_T("number"), wParam, lParam);
        return 11;
    }
    void OnSize() { Log(_T("wrong")); }  // one more of that name
    void OnSize(UINT type, int width, int height) { Log(_T("size"), type, width, height); }
    void OnTimer(UINT_PTR id) { Log(_T("timer"), id); }
    void OnLButtonDown(UINT keys, CPoint point) { Log(_T("down"), keys, point.x, point.y); }
    void OnKeyDown(UINT key, UINT repeat, UINT flags) { Log(_T("key"), key, repeat, flags); }
    LRESULT OnNcHitTest(CPoint point) {
        Log(_T("hit"), point.x, point.y);
        return HTCAPTION;
    }
    BOOL OnSetCursor(CWnd* window, UINT hitTest, UINT message) {
        Log(_T("cursor"), window == this, hitTest, message);
        return TRUE;
    }
    void OnActivate(UINT state, CWnd* other, BOOL minimized) { Log(_T("activate"), state, other == this, minimized); }
    void OnSysCommand(UINT command, LPARAM position) { Log(_T("system"), command, position); }
    BOOL OnEraseBkgnd(CDC* dc) {
        Log(_T("erase"), dc->m_hDC == m_context);
        return 5;
    }
    HBRUSH OnCtlColor(CDC* dc, CWnd* control, UINT kind) {
        Log(_T("color"), dc->m_hDC == m_context, control == this, kind);
        return static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH));
    }
    void OnGetMinMaxInfo(MINMAXINFO* info) { info->ptMinTrackSize.x = 77; }
    void OnClicked() { Log(_T("clicked")); }
    void OnCommandOfRange(UINT id) { Log(_T("range"), id); }
    BOOL OnMaybe(UINT id) {
        Log(_T("maybe"), id);
        return id == 31;
    }
    void OnFallBack() { Log(_T("fallback")); }
    void OnCustom(NMHDR* header, LRESULT* result) {
        Log(_T("notify"), header->idFrom);
        *result = 9;
    }
    LRESULT OnRegistered(WPARAM wParam, LPARAM /*lParam*/) {
        Log(_T("registered"), wParam);
        return 12;
    }

    HDC m_context = nullptr;

public:
    void SetContext(HDC dc) { m_context = dc; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CLogged, CWnd)
ON_MESSAGE(WM_USER + 1, OnNumber)
ON_WM_SIZE()
ON_WM_MOVE()
ON_WM_TIMER()
ON_WM_LBUTTONDOWN()
ON_WM_MOUSEWHEEL()
ON_WM_KEYDOWN()
ON_WM_NCHITTEST()
ON_WM_SETCURSOR()
ON_WM_ACTIVATE()
ON_WM_SYSCOMMAND()
ON_WM_ERASEBKGND()
ON_WM_CTLCOLOR()
ON_WM_GETMINMAXINFO()
ON_COMMAND(10, OnClicked)
ON_COMMAND_RANGE(20, 22, OnCommandOfRange)
ON_COMMAND(32, OnFallBack)
ON_BN_DOUBLECLICKED(10, OnFallBack)
ON_NOTIFY(-12, 40, OnCustom)
ON_REGISTERED_MESSAGE(kRegistered, OnRegistered)
END_MESSAGE_MAP()

// Leads to inherited handlers, and takes some messages away from its base.
class CDerived : public CLogged {
protected:
    void OnTimer(UINT_PTR id) {
        Log(_T("derived"));
        CLogged::OnTimer(id);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CDerived, CLogged)
ON_WM_TIMER()
ON_MESSAGE(WM_USER + 2, OnNumber)
ON_COMMAND_EX(31, OnMaybe)
ON_COMMAND_EX(32, OnMaybe)
END_MESSAGE_MAP()

TEST(MessageMap, LeadsEachMessageToItsHandlerWithItsArguments) {
    CDerived window;
    ASSERT_TRUE(window.Create(nullptr, _T(""), WS_POPUP, CRect(0, 0, 50, 50), CWnd::GetDesktopWindow(), 0));
    CDC context;
    ASSERT_TRUE(context.CreateCompatibleDC(nullptr));
    window.SetContext(context);
    const auto self = reinterpret_cast<LPARAM>(window.m_hWnd);
    const auto dc = reinterpret_cast<WPARAM>(context.m_hDC);
    const auto black = reinterpret_cast<LRESULT>(::GetStockObject(BLACK_BRUSH));
    const struct {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        LPCTSTR log;
        LRESULT result;
    } rows[] = {
        {WM_USER + 1, 3, -4, _T("number 3 -4"), 11},
        {WM_USER + 2, 5, 6, _T("number 5 6"), 11},
        {kRegistered, 8, 0, _T("registered 8"), 12},
        {WM_SIZE, SIZE_MAXIMIZED, MAKELPARAM(40000, 30), _T("size 2 40000 30"), 0},
        {WM_TIMER, 9, 0, _T("derivedtimer 9"), 0},
        {WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(0xFFFF, 0x8000), _T("down 1 -1 -32768"), 0},
        {WM_KEYDOWN, VK_RETURN, MAKELPARAM(2, 0x4010), _T("key 13 2 16400"), 0},
        {WM_NCHITTEST, 0, MAKELPARAM(1, 0xFFF0), _T("hit 1 -16"), HTCAPTION},
        {WM_SETCURSOR, static_cast<WPARAM>(self), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE), _T("cursor 1 1 512"), TRUE},
        {WM_ACTIVATE, MAKEWPARAM(WA_CLICKACTIVE, 1), self, _T("activate 2 1 1"), 0},
        {WM_SYSCOMMAND, SC_CLOSE, 17, _T("system 61536 17"), 0},
        {WM_ERASEBKGND, dc, 0, _T("erase 1"), 5},
        {WM_CTLCOLORSTATIC, dc, self, _T("color 1 1 6"), black},
        {WM_CTLCOLORDLG, dc, self, _T("color 1 1 4"), black},
        {WM_COMMAND, 10, 0, _T("clicked"), 1},
        {WM_COMMAND, MAKEWPARAM(10, BN_DOUBLECLICKED), self, _T("fallback"), 1},
        {WM_COMMAND, MAKEWPARAM(10, BN_SETFOCUS), self, _T(""), 0},
        {WM_COMMAND, 20, 0, _T("range 20"), 1},
        {WM_COMMAND, 22, 0, _T("range 22"), 1},
        {WM_COMMAND, 23, 0, _T(""), 0},
        {WM_COMMAND, 31, 0, _T("maybe 31"), 1},
        {WM_COMMAND, 32, 0, _T("maybe 32fallback"), 1},
    };
    window.Take();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.message);
        EXPECT_EQ(window.Handle(row.message, row.wParam, row.lParam), row.result);
        EXPECT_EQ(window.Take(), row.log);
    }
    MINMAXINFO info = {};
    EXPECT_EQ(window.Handle(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info)), 0);
    EXPECT_EQ(info.ptMinTrackSize.x, 77);
}

TEST(MessageMap, TellsWhoWouldHandleACommand) {
    CDerived window;
    AFX_CMDHANDLERINFO info = {};
    EXPECT_TRUE(window.OnCmdMsg(10, CN_COMMAND, nullptr, &info));
    EXPECT_TRUE(info.pTarget == &window && info.pEntry->nID == 10 && window.Take().IsEmpty());
    EXPECT_FALSE(window.OnCmdMsg(11, CN_COMMAND, nullptr, &info));
}

constexpr UINT kStatic = 6;  // CTLCOLOR_STATIC

// Takes what it sends to its parent for itself.
class CSelfish : public CButton {
protected:
    void OnClicked() { ++m_clicks; }
    void OnOwn(NMHDR* /*header*/, LRESULT* result) { *result = 21; }
    HBRUSH CtlColor(CDC* /*dc*/, UINT kind) {
        return kind == kStatic ? static_cast<HBRUSH>(::GetStockObject(GRAY_BRUSH)) : nullptr;
    }
    void DrawItem(LPDRAWITEMSTRUCT item) override { m_drawn = item->CtlID; }
    DECLARE_MESSAGE_MAP()

public:
    int m_clicks = 0;
    UINT m_drawn = 0;
};

BEGIN_MESSAGE_MAP(CSelfish, CButton)
ON_CONTROL_REFLECT(BN_CLICKED, OnClicked)
ON_NOTIFY_REFLECT(-13, OnOwn)
ON_WM_CTLCOLOR_REFLECT()
END_MESSAGE_MAP()

// A parent whose handlers pass on what they get.
class CParent : public CLogged {
protected:
    HBRUSH OnCtlColor(CDC* dc, CWnd* control, UINT kind) {
        Log(_T("parent"));
        return CWnd::OnCtlColor(dc, control, kind);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CParent, CLogged)
ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

TEST(MessageMap, AsksTheControlBeforeItsParent) {
    CParent parent;
    CSelfish own;
    CButton plain;
    const CRect rect(0, 0, 20, 20);
    ASSERT_TRUE(parent.Create(nullptr, _T(""), WS_POPUP, rect, CWnd::GetDesktopWindow(), 0));
    ASSERT_TRUE(own.Create(_T(""), BS_OWNERDRAW, rect, &parent, 10) && plain.Create(_T(""), BS_PUSHBUTTON, rect, &parent, 40));
    CDC context;
    ASSERT_TRUE(context.CreateCompatibleDC(nullptr));
    parent.Take();

    parent.SendMessage(WM_COMMAND, MAKEWPARAM(10, BN_CLICKED), reinterpret_cast<LPARAM>(own.m_hWnd));
    EXPECT_TRUE(own.m_clicks == 1 && parent.Take().IsEmpty());

    NMHDR header = {own, 10, static_cast<UINT>(-13)};
    EXPECT_EQ(parent.SendMessage(WM_NOTIFY, 10, reinterpret_cast<LPARAM>(&header)), 21);
    header = {plain, 40, static_cast<UINT>(-12)};
    EXPECT_EQ(parent.SendMessage(WM_NOTIFY, 40, reinterpret_cast<LPARAM>(&header)), 9);
    EXPECT_EQ(parent.Take(), _T("notify 40"));

    const auto dc = reinterpret_cast<WPARAM>(context.m_hDC);
    const auto gray = reinterpret_cast<LRESULT>(::GetStockObject(GRAY_BRUSH));
    EXPECT_EQ(parent.SendMessage(WM_CTLCOLORSTATIC, dc, reinterpret_cast<LPARAM>(own.m_hWnd)), gray);
    EXPECT_NE(parent.SendMessage(WM_CTLCOLORSTATIC, dc, reinterpret_cast<LPARAM>(plain.m_hWnd)), gray);
    EXPECT_NE(parent.SendMessage(WM_CTLCOLORBTN, dc, reinterpret_cast<LPARAM>(own.m_hWnd)), gray);
    EXPECT_EQ(parent.Take(), _T("parentparentparent"));

    DRAWITEMSTRUCT item = {};
    item.CtlType = ODT_BUTTON;
    item.CtlID = 10;
    item.hwndItem = own;
    parent.SendMessage(WM_DRAWITEM, 10, reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(own.m_drawn, 10U);
}

}  // namespace
