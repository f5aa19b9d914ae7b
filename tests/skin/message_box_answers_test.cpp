// The countdown, the remembered answers and the clipboard of the message box.

#include <tuple>

#include "message_box_fixture.h"
#include "support/environment.h"
#include "support/handles.h"
#include "support/temp_folder.h"

using namespace test;

namespace {

using BoxCountdown = MessageBoxTest;

TEST_F(BoxCountdown, EndsWithTheDefaultButton) {
    Box box(MB_OKCANCEL | MB_DEFBUTTON2);
    box.SetTimeout(2, FALSE);
    const INT_PTR result = box.Run({box.StopClock(), [&] {
                                        EXPECT_EQ(box.TextOf(IDOK), _T("OK"));
                                        EXPECT_EQ(box.TextOf(IDCANCEL), _T("Cancel = 2"));
                                        box.SendMessage(WM_TIMER, 99);
                                        box.Tick();
                                        EXPECT_EQ(box.TextOf(IDCANCEL), _T("Cancel = 1"));
                                        EXPECT_EQ(box.GetTimeoutSeconds(), 1U);
                                        box.Tick();
                                        EXPECT_EQ(box.TextOf(IDCANCEL), _T("Cancel"));
                                        box.Tick();  // one too many
                                        EXPECT_EQ(box.GetTimeoutSeconds(), 0U);
                                    }});
    EXPECT_EQ(result, IDCANCEL);
    box.SetTimeout(2, FALSE);
    EXPECT_EQ(box.Run({box.StopClock(), [&] { box.PostClick(IDOK); }}), IDOK);
}

TEST_F(BoxCountdown, KeepsTheBoxClosedToEverything) {
    for (const UINT style : {UINT{MB_OKCANCEL | MB_DONOTSHOWAGAIN}, UINT{MB_YESNO | MB_HELP}}) {
        const bool cancels = (style & MB_TYPEMASK) == MB_OKCANCEL;
        const int first = cancels ? IDOK : IDYES;
        Box box(style);
        box.m_skin = AnySkin();
        box.SetTimeout(2, TRUE);
        const auto enabled = [&](int id) { return box.GetDlgItem(id) == nullptr || box.GetDlgItem(id)->IsWindowEnabled(); };
        const auto attack = [&] {
            for (const WPARAM key : {VK_RETURN, VK_ESCAPE, VK_CANCEL, VK_SPACE, VK_F1, VK_TAB}) {
                box.PostKey(key);
            }
            box.PostMessage(WM_CLOSE);
            box.PostMessage(WM_SYSCOMMAND, SC_CLOSE);
            box.PostMessage(WM_COMMAND, static_cast<WPARAM>(first));
            box.GetDlgItem(first)->PostMessage(BM_CLICK);
        };
        EXPECT_EQ(box.Run({box.StopClock(),
                           [&] {
                               for (const int id : {+IDOK, +IDCANCEL, +IDYES, +IDNO, +IDHELP, +Box::ControlCheckBox}) {
                                   EXPECT_TRUE(box.GetDlgItem(id) == nullptr || !enabled(id)) << id;
                               }
                               EXPECT_EQ(box.TextOf(first), cancels ? _T("T0 = 2") : _T("T7 = 2"));
                               attack();
                           },
                           [&] {
                               box.Tick();
                               attack();
                           },
                           [&] {
                               EXPECT_EQ(box.m_helps, 0);
                               box.Tick();  // over, and nobody has answered
                               EXPECT_TRUE(enabled(first) && enabled(IDHELP) && enabled(Box::ControlCheckBox));
                               EXPECT_EQ(box.TextOf(first), cancels ? _T("T0") : _T("T7"));
                               EXPECT_EQ(GetFocus(), box.GetDlgItem(first)->m_hWnd);
                           },
                           [&] { box.PostKey(VK_RETURN); }}),
                  first);
    }
}

// An application with a profile of its own.
class BoxAnswers : public MessageBoxTest {
protected:
    BoxAnswers() { app_.SetRegistryKey(product_.c_str()); }
    ~BoxAnswers() override { CWinApp::DelRegTree(HKEY_CURRENT_USER, CString(_T("Software\\")) + product_.c_str()); }

    // Whether there was a box, which is answered with a click behind the check box.
    static bool Shows(Box& box, int answer, bool checked = true) {
        bool shown = false;
        const INT_PTR result = box.Run({[&] {
            shown = true;
            if (checked) {
                box.CheckDlgButton(Box::ControlCheckBox, BST_CHECKED);
            }
            box.PostClick(answer);
        }});
        EXPECT_EQ(result, answer);
        return shown;
    }
    UINT Stored(LPCTSTR key) { return app_.GetProfileInt(_T("SkinMessageBoxes"), key, -7); }

    const TempFolder folder_;
    const InEnvironment hives_{_T("KADATA_REGISTRY_DIR"), folder_.Path(_T("registry")).c_str()};
    const std::basic_string<TCHAR> product_ = UniqueName(_T("KaData tests "));
    CWinApp app_{_T("Planner")};
};

TEST_F(BoxAnswers, AreFoundByNameNumberOrText) {
    const struct {
        UINT bit;
        LPCTSTR name;
        UINT number;
        LPCTSTR text;
        LPCTSTR key;
        int answer;
    } rows[] = {{MB_DONOTSHOWAGAIN, _T("Milling\\start"), 5, _T("Text"), _T("Milling\\start"), IDNO},
                {MB_REMEMBERANSWER, _T(""), 17, _T("Text"), _T("17"), IDYES},
                {MB_REMEMBERANSWER, _T(""), 0xFFFFFFFF, _T("Text"), _T("-1"), IDYES},
                {MB_DONOTSHOWAGAIN, _T(""), 0, _T("AB"), _T("66"), IDNO},  // 'A' * 0 + 'B' * 1
                {MB_DONOTSHOWAGAIN, _T(""), 0, _T("A\x20AC\x20AC"), _T("25092"), IDNO},
                {MB_DONOTSHOWAGAIN, _T(""), 0, _T(""), _T("0"), IDCANCEL}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.key));
        const auto make = [&](UINT bits) {
            auto box = std::make_unique<Box>(MB_YESNOCANCEL | bits, row.text);
            box->SetRegistryKey(CString(row.name));
            box->SetRegistryKey(row.number);
            return box;
        };
        EXPECT_TRUE(Shows(*make(row.bit), row.answer, false));  // not asked to remember
        EXPECT_EQ(Stored(row.key), static_cast<UINT>(-7));
        EXPECT_TRUE(Shows(*make(row.bit), row.answer));
        EXPECT_EQ(Stored(row.key), static_cast<UINT>(row.answer));
        EXPECT_FALSE(Shows(*make(row.bit), row.answer));
        EXPECT_TRUE(Shows(*make(0), IDCANCEL, false));  // without a check box nothing is remembered
    }
    // Any number but -1 counts as an answer.
    for (const auto& [stored, shows] : {std::pair{-1, true}, {0, false}, {-2, false}}) {
        app_.WriteProfileInt(_T("SkinMessageBoxes"), _T("90"), stored);
        Box box(MB_OK | MB_REMEMBERANSWER);
        box.SetRegistryKey(90U);
        EXPECT_EQ(box.Run({}), shows ? STAYED : stored);
    }
}

TEST_F(BoxAnswers, OfOneTextAreShared) {
    const CString text(_T('x'), 1000000);
    Box first(MB_OK | MB_DONOTSHOWAGAIN, text);
    Box second(MB_OKCANCEL | MB_REMEMBERANSWER, text);
    EXPECT_TRUE(Shows(first, IDOK));
    EXPECT_EQ(Stored(_T("-753125120")), static_cast<UINT>(IDOK));  // 120 * (0 + 1 + ... + 999999), in 32 bits
    EXPECT_FALSE(Shows(second, IDOK));
}

TEST_F(BoxAnswers, AreForgottenTogether) {
    app_.WriteProfileInt(_T("Window"), _T("left"), 12);
    const CString other = CString(_T("Software\\")) + product_.c_str() + _T("\\Other program\\SkinMessageBoxes");
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, other, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr), 0);
    RegCloseKey(key);
    Box box(MB_OK | MB_DONOTSHOWAGAIN);
    EXPECT_TRUE(Shows(box, IDOK) && !Shows(box, IDOK));
    CSkinMessageBox::ResetMessageBoxes();
    EXPECT_TRUE(Shows(box, IDOK));
    EXPECT_EQ(app_.GetProfileInt(_T("Window"), _T("left"), 0), 12U);
    EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, other, 0, KEY_READ, &key), 0);
    RegCloseKey(key);
}

TEST_F(MessageBoxTest, WithoutAnApplicationRemembersNothing) {
    CSkinMessageBox::ResetMessageBoxes();
    Box box(MB_OK | MB_DONOTSHOWAGAIN);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(box.Run({[&] { box.CheckDlgButton(Box::ControlCheckBox, BST_CHECKED); }}), STAYED);
    }
}

TEST_F(MessageBoxTest, IsCopiedAsTheSystemsBox) {
    Box box(MB_YESNO | MB_HELP, _T("Two\nlines & more"));
    box.SetTimeout(5, FALSE);
    CString copied;
    box.Run({box.StopClock(), [&] { PostMessageW(GetFocus(), WM_CHAR, 3, 1); },
             [&] {
                 ASSERT_TRUE(OpenClipboard(box));
                 const HANDLE data = GetClipboardData(CF_UNICODETEXT);
                 ASSERT_NE(data, nullptr);
                 copied = static_cast<LPCTSTR>(GlobalLock(data));
                 GlobalUnlock(data);
                 CloseClipboard();
             }});
    const CString line = _T("---------------------------\r\n");
    EXPECT_EQ(copied,
              line + _T("Title\r\n") + line + _T("Two\r\nlines & more\r\n") + line + _T("Yes = 5   No   Help   \r\n") + line);
}

}  // namespace
