#include <afxwin.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

constexpr UINT kSeven = 7;  // of the program's resources
const UINT kGo = WM_USER + 9;

class CDrawn : public CButton {
public:
    void DrawItem(LPDRAWITEMSTRUCT item) override { m_drawn = item->hwndItem == m_hWnd && (item->itemState & ODS_DISABLED) == 0; }
    bool m_drawn = false;
};

// Does what a test says when it begins, and once more when its loop runs.
class CSeven : public CDialog {
public:
    explicit CSeven(CWnd* parent = nullptr, UINT id = kSeven) : CDialog(id, parent) {}
    ~CSeven() override { ++s_deleted; }
    BOOL OnInitDialog() override {
        m_drawn.SubclassDlgItem(30, this);
        PostMessage(kGo);
        return m_init != nullptr ? m_init() : CDialog::OnInitDialog();
    }
    void OnOK() override {
        m_ok = true;
        CDialog::OnOK();
    }

    std::function<BOOL()> m_init;
    std::function<void()> m_go;
    CDrawn m_drawn;
    bool m_ok = false;
    static inline int s_deleted = 0;

protected:
    LRESULT OnGo(WPARAM, LPARAM) {
        const auto go = m_go;
        if (go != nullptr) {
            go();
        }
        return 0;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CSeven, CDialog)
ON_MESSAGE(kGo, OnGo)
END_MESSAGE_MAP()

void PressKey(CWnd& window, WPARAM key) {
    window.PostMessage(WM_KEYDOWN, key, 1);
    window.PostMessage(WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

TEST(Dialog, ReturnsWhatEndedIt) {
    const std::tuple<LPCTSTR, std::function<void(CSeven&)>, INT_PTR> rows[] = {
        {_T("in its beginning"), [](CSeven& d) { d.m_init = [&] { return d.EndDialog(42), TRUE; }; }, 42},
        {_T("in its loop"), [](CSeven& d) { d.m_go = [&] { d.EndDialog(43); }; }, 43},
        {_T("by its button"), [](CSeven& d) { d.m_go = [&] { d.GetDlgItem(IDOK)->PostMessage(BM_CLICK); }; }, IDOK},
        {_T("by Escape"), [](CSeven& d) { d.m_go = [&] { PressKey(*d.GetDlgItem(IDOK), VK_ESCAPE); }; }, IDCANCEL},
        {_T("by Enter"), [](CSeven& d) { d.m_go = [&] { PressKey(d, VK_RETURN); }; }, IDOK},
        {_T("by its close box"), [](CSeven& d) { d.m_go = [&] { d.PostMessage(WM_SYSCOMMAND, SC_CLOSE); }; }, IDCANCEL},
        {_T("destroyed"), [](CSeven& d) { d.m_go = [&] { d.DestroyWindow(); }; }, -1},
        {_T("destroyed in its beginning"), [](CSeven& d) { d.m_init = [&] { return d.DestroyWindow(); }; }, -1},
        {_T("by an exception"), [](CSeven& d) { d.m_init = []() -> BOOL { AfxThrowUserException(); }; }, -1}};
    for (const auto& [name, prepare, result] : rows) {
        SCOPED_TRACE(testing::PrintToString(name));
        CSeven dialog;
        prepare(dialog);
        EXPECT_EQ(dialog.DoModal(), result);
        EXPECT_TRUE(dialog.m_hWnd == nullptr && dialog.m_ok == (result == IDOK));
        dialog.m_init = [&] { return dialog.EndDialog(7), TRUE; };
        EXPECT_EQ(dialog.DoModal(), 7);  // it may be used again
    }
}

TEST(Dialog, ObjectMayEndInItsLoop) {
    auto* const dialog = new CSeven;
    CSeven::s_deleted = 0;
    dialog->m_go = [dialog] { delete dialog; };
    EXPECT_EQ(dialog->DoModal(), -1);
    EXPECT_EQ(CSeven::s_deleted, 1);
}

TEST(Dialog, DisablesItsOwnerMeanwhile) {
    CWnd owner;
    CWnd child;
    ASSERT_TRUE(owner.CreateEx(0, nullptr, _T(""), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(100, 100, 700, 500), nullptr, 0));
    ASSERT_TRUE(child.Create(nullptr, _T(""), WS_VISIBLE, CRect(0, 0, 9, 9), &owner, 1));
    CSeven dialog(&child);
    CRect rect;
    dialog.m_go = [&] {
        dialog.ShowWindow(SW_SHOW);
        EXPECT_TRUE(!owner.IsWindowEnabled() && dialog.GetOwner() == &owner && dialog.IsWindowVisible());
        dialog.GetWindowRect(&rect);
        dialog.RedrawWindow();
        dialog.m_drawn.RedrawWindow();
        EXPECT_TRUE(dialog.m_drawn.m_drawn);
        CSeven inner(&dialog);
        inner.m_go = [&] {
            EXPECT_FALSE(dialog.IsWindowEnabled());
            inner.EndDialog(3);
        };
        EXPECT_EQ(inner.DoModal(), 3);
        EXPECT_TRUE(dialog.IsWindowEnabled() && !owner.IsWindowEnabled());
        dialog.EndDialog(2);
    };
    EXPECT_EQ(dialog.DoModal(), 2);
    EXPECT_TRUE(owner.IsWindowEnabled());
    CRect middle;
    owner.GetWindowRect(&middle);
    const CSize off = rect.CenterPoint() - middle.CenterPoint();  // the template tells no place
    EXPECT_TRUE(std::abs(off.cx) <= 1 && std::abs(off.cy) <= 1);

    owner.EnableWindow(FALSE);
    dialog.m_go = [&] { dialog.EndDialog(4); };
    EXPECT_EQ(dialog.DoModal(), 4);
    EXPECT_FALSE(owner.IsWindowEnabled());  // as it was
}

TEST(Dialog, WithoutAUsableTemplateIsNotMade) {
    EXPECT_EQ(CSeven(nullptr, 4711).DoModal(), -1);
    EXPECT_EQ(CSeven(nullptr, 8).DoModal(), -1);  // names an unknown class
    CDialog dialog;
    EXPECT_FALSE(dialog.Create(4711) || dialog.CreateIndirect(nullptr) || dialog.InitModalIndirect(nullptr));
    EXPECT_EQ(dialog.DoModal(), -1);
}

TEST(Dialog, ModelessKnowsItsControls) {
    CDialog dialog;
    ASSERT_TRUE(dialog.Create(kSeven) && !dialog.Create(kSeven));
    CString text;
    EXPECT_TRUE(dialog.GetDlgItemText(IDCANCEL, text) == 6 && text == _T("Cancel") && dialog.GetDlgItemText(99, text) == 0);
    EXPECT_EQ(dialog.GetDefID(), MAKELONG(IDOK, DC_HASDEFID));
    EXPECT_EQ(dialog.GetNextDlgTabItem(dialog.GetDlgItem(IDOK)), dialog.GetDlgItem(IDCANCEL));
    CRect units(0, 0, 4, 8);
    dialog.MapDialogRect(&units);
    EXPECT_TRUE(units.Width() > 3 && units.Height() > 7);
    dialog.ShowWindow(SW_SHOW);
    dialog.GotoDlgCtrl(dialog.GetDlgItem(IDCANCEL));
    EXPECT_EQ(CWnd::GetFocus(), dialog.GetDlgItem(IDCANCEL));
    dialog.PrevDlgCtrl();
    EXPECT_EQ(CWnd::GetFocus(), dialog.GetDlgItem(IDOK));
    EXPECT_TRUE(dialog.DestroyWindow() && dialog.m_hWnd == nullptr);

    alignas(DWORD) const WORD bytes[] = {0, WS_POPUP >> 16, 0, 0, 0, 5, 6, 50, 40, 0, 0, 'T', 0};
    EXPECT_TRUE(dialog.CreateIndirect(reinterpret_cast<LPCDLGTEMPLATE>(bytes)));
    dialog.GetWindowText(text);
    EXPECT_EQ(text, _T("T"));
}

}  // namespace
