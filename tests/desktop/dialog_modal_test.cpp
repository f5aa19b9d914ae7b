// Modal dialogs: their owner, their end, and everything that may happen in between.

#include "dialog_template.h"
#include "support/wine.h"

namespace {

using desktop_test::kStop;

class DialogModal : public desktop_test::DialogTest {
protected:
    // Does `what` once the loop has nothing else to do.
    template <class What>
    void InTheLoop(What what) {
        on_message = [what](HWND window, UINT message, WPARAM, LPARAM) -> INT_PTR {
            if (message == WM_INITDIALOG) {
                SetTimer(window, 1, 10, nullptr);
            } else if (message == WM_TIMER) {
                KillTimer(window, 1);
                what(window);
            }
            return message == WM_INITDIALOG;
        };
    }
};

constexpr INT_PTR kResult = 0x123456789A;
constexpr INT_PTR kWinesResult = 0x3456789A;  // it keeps 32 bits

TEST_F(DialogModal, DisablesTheOwnerUntilItsEnd) {
    const HWND owner = MakeOwner(WS_POPUP | WS_VISIBLE);
    const HWND child =
        CreateWindowExW(0, _T("Button"), _T(""), WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, owner, nullptr, nullptr, nullptr);
    for (const HWND asked : {owner, child}) {
        bool enabled_inside = true;
        bool enabled_at_end = false;
        bool visible = false;
        InTheLoop([&](HWND window) {
            enabled_inside = IsWindowEnabled(owner);
            visible = IsWindowVisible(window);
            EXPECT_EQ(GetWindow(window, GW_OWNER), owner);
            EXPECT_TRUE(EndDialog(window, 2));
            EXPECT_TRUE(EndDialog(window, kResult));
            enabled_at_end = IsWindowEnabled(owner);
            EXPECT_TRUE(IsWindow(window));
            EXPECT_FALSE(IsWindowVisible(window));
        });
        EXPECT_EQ(Run({.style = WS_POPUP | WS_CAPTION, .items = {{.id = 1}}}, asked), test::UnlessWine(kResult, kWinesResult));
        EXPECT_FALSE(enabled_inside);
        EXPECT_TRUE(enabled_at_end);
        EXPECT_TRUE(visible);  // WS_VISIBLE or not
        EXPECT_FALSE(IsWindow(dialog));
        EXPECT_TRUE(IsWindowEnabled(owner));
        EXPECT_EQ(GetActiveWindow(), owner);
    }
    EnableWindow(owner, FALSE);  // by somebody else: stays so
    InTheLoop([&](HWND window) { EndDialog(window, 1); });
    EXPECT_EQ(Run({}, owner), 1);
    EXPECT_EQ(IsWindowEnabled(owner), test::UnlessWine(FALSE, TRUE));
}

TEST_F(DialogModal, EndsInItsBeginning) {
    const HWND owner = MakeOwner();
    bool shown = false;
    on_message = [&](HWND window, UINT message, WPARAM wparam, LPARAM) -> INT_PTR {
        shown = shown || (message == WM_SHOWWINDOW && wparam != 0);
        return message == WM_INITDIALOG && EndDialog(window, kResult);
    };
    EXPECT_EQ(Run({.style = WS_POPUP | WS_VISIBLE, .items = {{.id = 1}}}, owner), test::UnlessWine(kResult, kWinesResult));
    EXPECT_EQ(shown, test::UnlessWine(false, true));
    EXPECT_FALSE(IsWindow(dialog));
    EXPECT_TRUE(IsWindowEnabled(owner));
}

TEST_F(DialogModal, WhatMayHappenInTheLoop) {
    HWND owner = MakeOwner();
    InTheLoop([&](HWND window) { DestroyWindow(window); });
    EXPECT_EQ(Run({}, owner), 0);
    EXPECT_EQ(IsWindowEnabled(owner), test::UnlessWine(TRUE, FALSE));
    EnableWindow(owner, TRUE);

    InTheLoop([&](HWND) { PostQuitMessage(17); });
    Run({}, owner);
    EXPECT_FALSE(IsWindow(dialog));
    EXPECT_EQ(IsWindowEnabled(owner), test::UnlessWine(TRUE, FALSE));
    MSG message = {};
    EXPECT_FALSE(GetMessageW(&message, nullptr, 0, 0));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 17u);

    InTheLoop([&](HWND) { DestroyWindow(owner); });
    Run({}, owner);
    EXPECT_FALSE(IsWindow(dialog));

    int depth = 0;
    on_message = [&](HWND window, UINT kind, WPARAM, LPARAM) -> INT_PTR {
        if (kind == WM_INITDIALOG) {
            if (++depth < 3) {
                EXPECT_EQ(Run({.items = {{.id = 1}}}, window), depth);
            }
            EndDialog(window, --depth);
        }
        return FALSE;
    };
    owner = MakeOwner();
    EXPECT_EQ(Run({}, owner), 0);
    EXPECT_TRUE(IsWindowEnabled(owner));

    EXPECT_EQ(Run({}, reinterpret_cast<HWND>(ULONG_PTR{0x7EAD})), test::UnlessWine(INT_PTR{0}, INT_PTR{-1}));
    EXPECT_EQ(DialogBoxParamW(nullptr, MAKEINTRESOURCEW(4711), owner, nullptr, 0), -1);
    EXPECT_FALSE(EndDialog(owner, 1));
}

TEST_F(DialogModal, TellsTheOwnerThatItIsIdle) {
    static HWND owner;
    static HWND idle;
    static WNDPROC before;
    owner = MakeOwner();
    before = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
        owner, GWLP_WNDPROC,
        reinterpret_cast<LONG_PTR>(static_cast<WNDPROC>([](HWND window, UINT message, WPARAM wparam, LPARAM lparam) -> LRESULT {
            if (message == WM_ENTERIDLE && wparam == MSGF_DIALOGBOX) {
                idle = reinterpret_cast<HWND>(lparam);
                PostMessageW(idle, WM_APP, 0, 0);
            }
            return CallWindowProcW(before, window, message, wparam, lparam);
        }))));
    const struct {
        DWORD style;
        bool tells;
    } rows[] = {{0, true}, {DS_NOIDLEMSG, false}};
    for (const auto& row : rows) {
        idle = nullptr;
        on_message = [&](HWND window, UINT message, WPARAM, LPARAM) -> INT_PTR {
            if (message == WM_INITDIALOG && !row.tells) {
                SetTimer(window, 1, 30, nullptr);
            }
            if (message == WM_APP || message == WM_TIMER) {
                EndDialog(window, 1);
            }
            return FALSE;
        };
        EXPECT_EQ(Run({.style = WS_POPUP | row.style}, owner), 1);
        EXPECT_EQ(idle != nullptr, row.tells);
    }
}

TEST_F(DialogModal, ButtonsAndKeysEndIt) {
    const struct {
        UINT key;
        INT_PTR result;
    } rows[] = {{VK_RETURN, IDOK}, {VK_ESCAPE, IDCANCEL}};
    for (const auto& row : rows) {
        on_message = [&](HWND window, UINT message, WPARAM wparam, LPARAM) -> INT_PTR {
            if (message == WM_INITDIALOG) {
                PostMessageW(GetDlgItem(window, 7), WM_KEYDOWN, row.key, 1);
            }
            if (message == WM_COMMAND && HIWORD(wparam) == BN_CLICKED) {
                EndDialog(window, LOWORD(wparam));
            }
            return message == WM_INITDIALOG;
        };
        EXPECT_EQ(Run({.items = {{.style = kStop | BS_AUTOCHECKBOX, .id = 7}, {.id = IDCANCEL}}}), row.result);
    }
}

}  // namespace
