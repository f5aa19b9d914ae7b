#include <afxwin.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

namespace {

// Does what a test says with its messages, and counts its ends.
class CProbe : public CWnd {
public:
    explicit CProbe(int* deleted = nullptr) : m_deleted(deleted) {}
    ~CProbe() override {
        if (m_deleted != nullptr) {
            ++*m_deleted;
        }
    }
    BOOL Make(DWORD style = WS_POPUP, CWnd* parent = nullptr) {
        return CreateEx(0, m_class, _T("probe"), style, CRect(10, 20, 110, 100), parent, 0);
    }
    bool Saw(UINT message) const { return std::find(m_seen.begin(), m_seen.end(), message) != m_seen.end(); }
    LRESULT CallDefault() { return Default(); }

    LPCTSTR m_class = nullptr;
    std::vector<UINT> m_seen;
    // FALSE: the message goes on as usual.
    std::function<BOOL(UINT message, LRESULT* result)> m_on;
    std::function<BOOL(CREATESTRUCT&)> m_before;
    std::function<void()> m_after;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        m_seen.push_back(message);
        EXPECT_EQ(AfxGetThreadState()->m_lastSentMsg.message, message);
        LRESULT result = 0;
        const auto on = m_on;  // the object may end in it
        return on != nullptr && on(message, &result) ? result : CWnd::WindowProc(message, wParam, lParam);
    }
    BOOL PreCreateWindow(CREATESTRUCT& description) override {
        return (m_before == nullptr || m_before(description)) && CWnd::PreCreateWindow(description);
    }
    void PostNcDestroy() override {
        EXPECT_EQ(m_hWnd, nullptr);
        const auto after = m_after;
        if (after != nullptr) {
            after();
        }
    }

private:
    int* m_deleted;
};

const int kUser = WM_USER + 7;

TEST(Window, HasItsObjectFromItsFirstMessageToItsLast) {
    CProbe probe;
    int ends = 0;
    probe.m_after = [&] { ++ends; };
    probe.m_on = [&](UINT, LRESULT*) {
        EXPECT_EQ(CWnd::FromHandlePermanent(probe.m_hWnd), &probe);
        return FALSE;
    };
    ASSERT_TRUE(probe.Make());
    EXPECT_TRUE(probe.Saw(WM_NCCREATE) && probe.Saw(WM_CREATE) && probe.m_seen.front() != WM_CREATE);
    EXPECT_FALSE(probe.Make());
    const HWND handle = probe;
    EXPECT_TRUE(probe.DestroyWindow());
    EXPECT_TRUE(probe.m_seen.back() == WM_NCDESTROY && ends == 1 && !::IsWindow(handle));
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
    EXPECT_TRUE(!probe.DestroyWindow() && probe.Make());  // once more
}

TEST(Window, ThatCannotBeMadeTellsItsObjectOnce) {
    const std::pair<LPCTSTR, std::function<void(CProbe&)>> rows[] = {
        {_T("PreCreateWindow"), [](CProbe& p) { p.m_before = [](CREATESTRUCT&) { return FALSE; }; }},
        {_T("no such class"), [](CProbe& p) { p.m_class = _T("KaData tests: no such class"); }},
        {_T("WM_NCCREATE"), [](CProbe& p) { p.m_on = [](UINT m, LRESULT*) { return m == WM_NCCREATE; }; }},
        {_T("WM_CREATE"), [](CProbe& p) {
             p.m_on = [](UINT m, LRESULT* result) {
                 *result = -1;
                 return m == WM_CREATE;
             };
         }}};
    for (const auto& [name, prepare] : rows) {
        SCOPED_TRACE(testing::PrintToString(name));
        int ends = 0;
        int deleted = 0;
        auto* const probe = new CProbe(&deleted);
        prepare(*probe);
        probe->m_after = [&, probe] {
            ++ends;
            delete probe;
        };
        EXPECT_FALSE(probe->Make());
        EXPECT_TRUE(ends == 1 && deleted == 1);
    }
}

TEST(Window, OrItsObjectMayEndInAnyMessage) {
    const std::function<void(CProbe*)> ways[] = {[](CProbe* p) { p->DestroyWindow(); }, [](CProbe* p) { delete p; },
                                                 [](CProbe* p) {
                                                     p->m_after = [p] { delete p; };
                                                     p->DestroyWindow();
                                                 }};
    for (const UINT when : {static_cast<UINT>(WM_CREATE), static_cast<UINT>(WM_SHOWWINDOW), static_cast<UINT>(kUser),
                            static_cast<UINT>(WM_DESTROY), static_cast<UINT>(WM_NCDESTROY)}) {
        for (const auto& way : ways) {
            SCOPED_TRACE(when * 10 + static_cast<UINT>(&way - ways));
            int deleted = 0;
            HWND handle = nullptr;
            auto* const probe = new CProbe(&deleted);
            probe->m_on = [&, probe](UINT message, LRESULT*) {
                handle = handle != nullptr ? handle : probe->m_hWnd;
                if (message != when) {
                    return FALSE;
                }
                probe->m_on = nullptr;
                way(probe);
                return TRUE;
            };
            probe->Make();
            for (const UINT message : {static_cast<UINT>(WM_SHOWWINDOW), static_cast<UINT>(kUser)})
                ::SendMessageW(handle, message, 0, 0);
            if (::IsWindow(handle))
                ::DestroyWindow(handle);
            EXPECT_FALSE(::IsWindow(handle));
            EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
            if (deleted == 0) {
                EXPECT_EQ(probe->m_hWnd, nullptr);
                delete probe;
            }
            EXPECT_EQ(deleted, 1);
        }
    }
}

TEST(Window, OfTheSystemIsSubclassedAndFreedAgain) {
    CProbe parent;
    ASSERT_TRUE(parent.Make());
    const HWND button = ::CreateWindowExW(0, _T("Button"), _T("text"), WS_CHILD, 0, 0, 9, 9, parent,
                                          reinterpret_cast<HMENU>(UINT_PTR{5}), nullptr, nullptr);
    ASSERT_NE(button, nullptr);
    CWnd* const temporary = parent.GetDlgItem(5);
    EXPECT_TRUE(temporary->m_hWnd == button && CWnd::FromHandlePermanent(button) == nullptr);
    CWnd::DeleteTempMap();
    ASSERT_TRUE(::IsWindow(button));
    const LONG_PTR before = ::GetWindowLongPtrW(button, GWLP_WNDPROC);
    CProbe probe;
    CProbe second;
    ASSERT_TRUE(probe.SubclassDlgItem(5, &parent));
    EXPECT_FALSE(probe.SubclassWindow(parent) || second.SubclassWindow(button) || second.Attach(button) ||
                 second.SubclassWindow(nullptr));
    EXPECT_EQ(parent.GetDlgItem(5), &probe);
    CString text;
    probe.GetWindowText(text);
    EXPECT_TRUE(text == _T("text") && probe.Saw(WM_GETTEXT));

    const LONG_PTR ours = ::SetWindowLongPtrW(button, GWLP_WNDPROC, before);  // somebody else came later
    EXPECT_EQ(probe.UnsubclassWindow(), nullptr);
    ::SetWindowLongPtrW(button, GWLP_WNDPROC, ours);
    EXPECT_EQ(probe.UnsubclassWindow(), button);
    EXPECT_EQ(::GetWindowLongPtrW(button, GWLP_WNDPROC), before);

    CStatic label;
    ASSERT_TRUE(label.Create(_T("&Name"), SS_LEFT, CRect(0, 0, 40, 10), &parent));
    EXPECT_TRUE(label.GetDlgCtrlID() == 0xFFFF && parent.IsChild(&label) && label.GetParent() == &parent);
    CButton check;
    ASSERT_TRUE(check.Create(_T("Check"), BS_AUTOCHECKBOX, CRect(0, 0, 40, 10), &parent, 6));
    check.SetCheck(BST_CHECKED);
    EXPECT_TRUE(check.GetCheck() == BST_CHECKED && check.GetButtonStyle() == BS_AUTOCHECKBOX);
    check.SetButtonStyle(BS_AUTORADIOBUTTON);
    check.SetState(TRUE);
    EXPECT_TRUE(check.GetButtonStyle() == BS_AUTORADIOBUTTON && (check.GetState() & BST_PUSHED) != 0);
    parent.DestroyWindow();
    EXPECT_TRUE(check.m_hWnd == nullptr && label.m_hWnd == nullptr);
}

TEST(Window, PassesTheMessageOnThatTheThreadHandles) {
    CProbe probe;
    ASSERT_TRUE(probe.Make());
    probe.m_on = [&](UINT message, LRESULT* result) {
        if (message != WM_SETTEXT) {
            return FALSE;
        }
        ::SendMessageW(probe, kUser, 0, 0);  // has a record of its own
        AfxGetThreadState()->m_lastSentMsg.lParam = reinterpret_cast<LPARAM>(_T("another"));
        *result = probe.CallDefault();
        return TRUE;
    };
    AfxGetThreadState()->m_lastSentMsg.message = 4711;
    probe.SetWindowText(_T("one"));
    EXPECT_EQ(AfxGetThreadState()->m_lastSentMsg.message, 4711U);
    CString text;
    probe.GetWindowText(text);
    EXPECT_EQ(text, _T("another"));
}

// The thread of the tests, as somebody who wants to hear of exceptions.
class CTestThread : public CWinThread {
public:
    LRESULT ProcessWndProcException(CException* exception, const MSG* message) override {
        m_caught.push_back(exception->GetRuntimeClass());
        return AnswerFailedMessage(exception, message);
    }
    std::vector<CRuntimeClass*> m_caught;
};

TEST(Window, LetsNoExceptionThroughTheSystem) {
    CTestThread thread;
    ASSERT_EQ(AfxGetThread(), &thread);
    const std::pair<void (*)(), CRuntimeClass*> rows[] = {
        {&AfxThrowUserException, RUNTIME_CLASS(CUserException)},
        {[] { AfxThrowFileException(CFileException::diskFull); }, RUNTIME_CLASS(CFileException)},
        {[] { throw std::bad_alloc(); }, RUNTIME_CLASS(CMemoryException)}};
    CProbe probe;
    void (*raise)() = nullptr;
    UINT when = kUser;
    probe.m_on = [&](UINT message, LRESULT*) {
        if (message == when) {
            raise();
        }
        return FALSE;
    };
    ASSERT_TRUE(probe.Make(WS_POPUP | WS_VISIBLE));
    for (const auto& [how, kind] : rows) {
        raise = how;
        EXPECT_EQ(probe.SendMessage(kUser), 0);
        ASSERT_EQ(thread.m_caught.size(), 1U);
        EXPECT_EQ(thread.m_caught.back(), kind);
        thread.m_caught.clear();
    }
    when = WM_PAINT;
    probe.Invalidate();
    probe.UpdateWindow();
    EXPECT_TRUE(thread.m_caught.size() == 1 && !probe.GetUpdateRect(nullptr));  // and is not asked again
    when = WM_CREATE;
    probe.DestroyWindow();
    EXPECT_TRUE(!probe.Make() && thread.m_caught.size() == 2 && probe.m_hWnd == nullptr);
}

TEST(Window, IsPlacedAndMeasured) {
    CProbe window;
    CProbe child;
    ASSERT_TRUE(window.Make(WS_OVERLAPPEDWINDOW) && child.Make(WS_CHILD, &window));
    CRect rect(0, 0, 300, 200);
    window.CalcWindowRect(&rect);
    window.MoveWindow(rect);
    CRect client;
    window.GetClientRect(&client);
    EXPECT_EQ(client, CRect(0, 0, 300, 200));
    child.CenterWindow();
    child.GetWindowRect(&rect);
    window.ScreenToClient(&rect);
    EXPECT_EQ(rect, CRect(100, 60, 200, 140));
    CPoint origin;
    child.MapWindowPoints(&window, &origin, 1);
    EXPECT_EQ(origin, CPoint(100, 60));
    window.SetWindowPos(nullptr, -5000, -5000, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    window.CenterWindow();
    window.GetWindowRect(&rect);
    const CRect screen(0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN));
    EXPECT_TRUE((rect & screen) == rect && std::abs(rect.CenterPoint().x - screen.CenterPoint().x) < 50);

    EXPECT_TRUE(window.ModifyStyle(WS_MAXIMIZEBOX, 0, SWP_FRAMECHANGED) && !window.ModifyStyle(WS_MAXIMIZEBOX, 0));
    EXPECT_TRUE((window.GetStyle() & WS_MAXIMIZEBOX) == 0 && child.GetTopLevelParent() == &window &&
                window.GetOwner() == nullptr);
    window.SendMessageToDescendants(kUser);
    EXPECT_TRUE(child.Saw(kUser) && !window.Saw(kUser));
    CMenu* const menu = window.GetSystemMenu(FALSE);
    ASSERT_NE(menu, nullptr);
    menu->EnableMenuItem(SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
    EXPECT_TRUE((menu->GetMenuState(SC_CLOSE, MF_BYCOMMAND) & MF_GRAYED) != 0 && menu->GetMenuItemCount() > 0);
    EXPECT_EQ(menu->GetMenuState(4711, MF_BYCOMMAND), ~0U);
}

TEST(Window, IsPaintedThroughContextsThatAreGivenBack) {
    CProbe probe;
    ASSERT_TRUE(probe.Make(WS_POPUP | WS_VISIBLE));
    probe.Invalidate();
    {
        CPaintDC paint(&probe);
        EXPECT_EQ(CRect(paint.m_ps.rcPaint), CRect(0, 0, 100, 80));
        EXPECT_EQ(CDC::FromHandle(paint.m_hDC), &paint);
    }
    EXPECT_FALSE(probe.GetUpdateRect(nullptr));
    for (int i = 0; i < 2000; ++i) {  // more than there are
        CClientDC client(&probe);
        CWindowDC window(&probe);
        ASSERT_TRUE(client.m_hDC != nullptr && window.m_hDC != nullptr);
    }
    CRect box;
    EXPECT_TRUE(CClientDC(&probe).GetClipBox(&box) != ERROR && box == CRect(0, 0, 100, 80));
}

TEST(Window, RunsAModalLoopUntilItIsEnded) {
    const std::tuple<LPCTSTR, std::function<void(CProbe*)>, int> rows[] = {
        {_T("ended"), [](CProbe* p) { p->EndModalLoop(42); }, 42},
        {_T("ended twice"), [](CProbe* p) { p->EndModalLoop(1), p->EndModalLoop(2); }, 1},
        {_T("destroyed"), [](CProbe* p) { p->DestroyWindow(); }, -1},
        {_T("deleted"), [](CProbe* p) { delete p; }, -1},
        {_T("quit"), [](CProbe*) { ::PostQuitMessage(5); }, -1}};
    for (const auto& [name, end, result] : rows) {
        SCOPED_TRACE(testing::PrintToString(name));
        int deleted = 0;
        auto* const probe = new CProbe(&deleted);
        ASSERT_TRUE(probe->Make());
        probe->m_on = [&](UINT message, LRESULT*) {
            if (message == static_cast<UINT>(kUser)) {
                end(probe);
            }
            return message == static_cast<UINT>(kUser);
        };
        probe->PostMessage(kUser);
        EXPECT_EQ(probe->RunModalLoop(), result);
        MSG quit;
        EXPECT_EQ(::PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE), name == CString(_T("quit")));
        if (deleted == 0) {
            delete probe;
        }
    }
}

}  // namespace
