// Buttons, keys and places of the message box.

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "message_box_fixture.h"

using namespace test;

namespace {

struct Row {
    UINT style;
    std::vector<std::pair<int, int>> buttons;  // command and caption, from left to right
    int defaultCommand;
    int escapeCommand;  // 0: none
};

// A default button beyond the last one changes nothing; neither do other values of its bits.
const Row ROWS[] = {
    {MB_OK, {{IDOK, 0}}, IDOK, IDOK},
    {0xA, {{IDOK, 0}}, IDOK, IDOK},
    {0xF | MB_DEFBUTTON2, {{IDOK, 0}}, IDOK, IDOK},
    {MB_OKCANCEL, {{IDOK, 0}, {IDCANCEL, 1}}, IDOK, IDCANCEL},
    {MB_OKCANCEL | MB_DEFBUTTON2, {{IDOK, 0}, {IDCANCEL, 1}}, IDCANCEL, IDCANCEL},
    {MB_OKCANCEL | 0x600, {{IDOK, 0}, {IDCANCEL, 1}}, IDOK, IDCANCEL},
    {MB_ABORTRETRYIGNORE, {{IDABORT, 2}, {IDRETRY, 3}, {IDIGNORE, 4}}, IDABORT, 0},
    {MB_ABORTRETRYIGNORE | MB_DEFBUTTON3, {{IDABORT, 2}, {IDRETRY, 3}, {IDIGNORE, 4}}, IDIGNORE, 0},
    {MB_ABORTRETRYIGNORE | MB_DEFBUTTON4, {{IDABORT, 2}, {IDRETRY, 3}, {IDIGNORE, 4}}, IDABORT, 0},
    {MB_YESNOCANCEL, {{IDYES, 7}, {IDNO, 9}, {IDCANCEL, 1}}, IDYES, IDCANCEL},
    {MB_YESNOCANCEL | 0x0C000000, {{IDYES, 7}, {14, 8}, {IDNO, 9}, {15, 10}, {IDCANCEL, 1}}, IDYES, IDCANCEL},
    {MB_YESNOCANCEL | 0x0C000400, {{IDYES, 7}, {14, 8}, {IDNO, 9}, {15, 10}, {IDCANCEL, 1}}, IDCANCEL, IDCANCEL},
    {MB_YESNOCANCEL | 0x0C000500, {{IDYES, 7}, {14, 8}, {IDNO, 9}, {15, 10}, {IDCANCEL, 1}}, IDYES, IDCANCEL},
    {MB_YESNOCANCEL | 0x0C000500 | MB_HELP,
     {{IDYES, 7}, {14, 8}, {IDNO, 9}, {15, 10}, {IDCANCEL, 1}, {IDHELP, 13}},
     IDHELP,
     IDCANCEL},
    {MB_YESNO, {{IDYES, 7}, {IDNO, 9}}, IDYES, 0},
    {MB_YESNO | 0x04000000 | MB_DEFBUTTON2, {{IDYES, 7}, {14, 8}, {IDNO, 9}}, 14, 0},
    {MB_YESNO | 0x08000000 | MB_DEFBUTTON3, {{IDYES, 7}, {IDNO, 9}, {15, 10}}, 15, 0},
    {MB_OKCANCEL | 0x0C000000, {{IDOK, 0}, {IDCANCEL, 1}}, IDOK, IDCANCEL},
    {MB_RETRYCANCEL | MB_HELP, {{IDRETRY, 3}, {IDCANCEL, 1}, {IDHELP, 13}}, IDRETRY, IDCANCEL},
    {MB_CANCELTRYCONTINUE, {{IDTRYAGAIN, 3}, {IDCONTINUE, 6}, {IDCANCEL, 1}}, IDCANCEL, IDCANCEL},
    {MB_CANCELTRYCONTINUE | MB_DEFBUTTON2, {{IDTRYAGAIN, 3}, {IDCONTINUE, 6}, {IDCANCEL, 1}}, IDCONTINUE, IDCANCEL},
    {7, {{IDCONTINUE, 6}, {IDABORT, 2}}, IDCONTINUE, 0},
    {8, {{16, 11}, {17, 12}, {IDCANCEL, 1}}, 16, IDCANCEL},
    {9, {{IDIGNORE, 4}, {18, 5}, {IDCANCEL, 1}}, IDIGNORE, IDCANCEL}};

std::string Name(UINT style) {
    char text[16];
    std::snprintf(text, sizeof(text), "0x%08X", style);
    return text;
}

// From left to right, as a user sees them.
std::vector<int> ButtonsOf(Box& box) {
    std::vector<std::pair<int, int>> found;
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if ((SendMessageW(child, WM_GETDLGCODE, 0, 0) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0) {
            found.emplace_back(box.RectOf(GetDlgCtrlID(child)).left, GetDlgCtrlID(child));
        }
    }
    std::sort(found.begin(), found.end());
    std::vector<int> ids;
    for (const auto& [left, id] : found) {
        ids.push_back(id);
    }
    return ids;
}

void ExpectButtons(Box& box, const Row& row) {
    std::vector<int> ids;
    for (const auto& [command, caption] : row.buttons) {
        CString text;
        text.Format(_T("T%d"), caption);
        EXPECT_EQ(box.TextOf(command), text) << command;
        ids.push_back(command);
    }
    EXPECT_EQ(ButtonsOf(box), ids);
    EXPECT_EQ(box.GetDefID(), static_cast<DWORD>(MAKELONG(row.defaultCommand, DC_HASDEFID)));
    EXPECT_EQ(GetFocus(), box.GetDlgItem(row.defaultCommand)->m_hWnd);
    EXPECT_TRUE(box.GetDlgItem(row.defaultCommand)->SendMessage(WM_GETDLGCODE) & DLGC_DEFPUSHBUTTON);
    const UINT close = box.GetSystemMenu(FALSE)->GetMenuState(SC_CLOSE, MF_BYCOMMAND);
    EXPECT_EQ((close & MF_GRAYED) != 0, row.escapeCommand == 0);
}

using BoxButtons = MessageBoxTest;

TEST_F(BoxButtons, FollowTheStyle) {
    for (const Row& row : ROWS) {
        SCOPED_TRACE(Name(row.style));
        const int stays = row.escapeCommand != 0 ? row.escapeCommand : STAYED;
        const auto result = [&](const std::function<void(Box&)>& act) {
            Box box(row.style);
            box.m_skin = AnySkin();
            return box.Run({[&] { ExpectButtons(box, row); }, [&] { act(box); }});
        };
        EXPECT_EQ(result([](Box& box) { box.PostKey(VK_RETURN); }), row.defaultCommand);
        EXPECT_EQ(result([](Box& box) { box.PostKey(VK_ESCAPE); }), stays);
        EXPECT_EQ(result([](Box& box) { box.PostKey(VK_CANCEL); }), stays);
        EXPECT_EQ(result([](Box& box) { box.PostMessage(WM_CLOSE); }), stays);
        for (const auto& [command, caption] : row.buttons) {
            const int clicked = command;
            EXPECT_EQ(result([=](Box& box) { box.PostClick(clicked); }), command == IDHELP ? STAYED : command);
        }
    }
}

TEST_F(BoxButtons, AnswerToKeys) {
    Box box(MB_YESNOCANCEL | MB_HELP | MB_REMEMBERANSWER);
    const auto focus = [&](int id) { return [&box, id] { box.GotoDlgCtrl(box.GetDlgItem(id)); }; };
    const auto key = [&](WPARAM code) { return [&box, code] { box.PostKey(code); }; };
    EXPECT_EQ(box.Run({focus(IDNO), key(VK_RETURN)}), IDNO);
    EXPECT_EQ(box.Run({focus(Box::ControlCheckBox), key(VK_RETURN)}), IDYES);
    EXPECT_EQ(box.Run({key(VK_TAB), key(VK_RETURN)}), IDNO);
    EXPECT_EQ(box.Run({[&] { PostMessageW(GetFocus(), WM_CHAR, 'n', 1); }}), IDNO);
    EXPECT_EQ(box.Run({[&] { PostMessageW(GetFocus(), WM_SYSCHAR, 'y', 1); }}), IDYES);
    EXPECT_EQ(box.m_helps, 0);
    // Help stays open, but for Enter.
    EXPECT_EQ(box.Run({key(VK_F1), [&] { box.PostClick(IDHELP); }, [&] { EXPECT_EQ(box.m_helps, 2); }}), STAYED);
    EXPECT_EQ(box.Run({focus(IDHELP), key(VK_RETURN)}), IDHELP);
    // Commands that no button of the box has, and notifications, change nothing.
    EXPECT_EQ(box.Run({[&] {
        for (const WPARAM command : {WPARAM{IDOK}, WPARAM{Box::ControlCheckBox}, WPARAM{99}, MAKEWPARAM(IDNO, 5)}) {
            box.SendMessage(WM_COMMAND, command);
        }
    }}),
              STAYED);
}

// The application has named its help for each box, and its main window shows it.
TEST_F(BoxButtons, AskTheOwnerForHelp) {
    class Owner : public CWnd {
    public:
        HELPINFO m_info = {};

    protected:
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            if (message == WM_HELP) {
                m_info = *reinterpret_cast<HELPINFO*>(lParam);
            }
            return CWnd::WindowProc(message, wParam, lParam);
        }
    };
    Owner owner;
    ASSERT_TRUE(owner.CreateEx(0, nullptr, _T(""), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 300, 200), nullptr, 0));
    Box box(MB_OK | MB_HELP, _T("?"), &owner);
    box.SetHelpContext(1234);
    HWND window = nullptr;
    box.Run({[&] {
        window = box;
        EXPECT_FALSE(owner.IsWindowEnabled());
        box.GetDlgItem(IDHELP)->SendMessage(BM_CLICK);
    }});
    EXPECT_TRUE(owner.IsWindowEnabled());
    EXPECT_EQ(owner.m_info.dwContextId, 1234U);
    EXPECT_EQ(owner.m_info.hItemHandle, window);
}

TEST_F(BoxButtons, HaveCaptionsOfTheCallerTheSkinOrTheLibrary) {
    Box box(MB_OKCANCEL);
    box.SetString(Box::StringCancel, _T("Later"));
    EXPECT_EQ(box.GetString(Box::StringOK), _T(""));
    box.Run({[&] {
        EXPECT_EQ(box.TextOf(IDOK), _T("OK"));
        EXPECT_EQ(box.TextOf(IDCANCEL), _T("Later"));
    }});
    EXPECT_EQ(box.GetString(Box::StringOK), _T("OK"));
    Box skinned(MB_OKCANCEL);
    skinned.m_skin = AnySkin();
    EXPECT_TRUE(skinned.SetString(Box::StringCancel, BOX_TEXTS + 5) && !skinned.SetString(Box::StringCancel, 9999));
    skinned.Run({[&] {
        EXPECT_EQ(skinned.TextOf(IDOK), _T("T0"));
        EXPECT_EQ(skinned.TextOf(IDCANCEL), _T("T5"));
    }});
}

// A timer answers boxes that have no object here.
CString expected_title;

void CALLBACK AnswerNo(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND box = GetActiveWindow();
    if (box == nullptr) {
        return;  // it is not shown yet
    }
    KillTimer(nullptr, timer);
    CString title;
    CWnd::FromHandle(box)->GetWindowText(title);
    EXPECT_EQ(title, expected_title);
    PostMessageW(GetDlgItem(box, IDNO), BM_CLICK, 0, 0);
}

TEST_F(BoxButtons, OfTheFunctionsAnswer) {
    CWinApp app(_T("Box tests"));
    const auto prepare = [](LPCTSTR title) {
        expected_title = title;
        SetTimer(nullptr, 0, 10, &AnswerNo);
    };
    prepare(_T("Box tests"));
    EXPECT_EQ(AfxSkinMessageBox(_T("Text"), MB_YESNO), IDNO);
    prepare(_T("Box tests"));
    EXPECT_EQ(AfxSkinMessageBox(BOX_TEXTS, MB_YESNO, 5), IDNO);
    prepare(_T("Own"));
    EXPECT_EQ(AfxSkinMessageBox(nullptr, _T("Text"), _T("Own"), MB_YESNO), IDNO);
}

}  // namespace
