// Modal dialogs: their owner, their end, and everything that may happen in between.

#include "dialog_template.h"
#include "support/wine.h"

namespace {

using desktop_test::DialogSpec;
using desktop_test::kStop;

class DialogModal : public desktop_test::DialogTest {
protected:
    // Its result; does `what` with the dialog once that is idle, as a hidden dialog hears that owns it.
    template <class What>
    INT_PTR RunUntilIdle(DialogSpec spec, What what) {
        on_message = nullptr;
        owner = Create({.items = {{.id = 7}}});
        on_message = [this, what](HWND window, UINT message, WPARAM wparam, LPARAM lparam) -> INT_PTR {
            if (message == WM_ENTERIDLE && window == owner && wparam == MSGF_DIALOGBOX) {
                PostMessageW(reinterpret_cast<HWND>(lparam), WM_APP, 0, 0);
            } else if (message == WM_APP) {
                what(window);
            }
            return message == WM_INITDIALOG;
        };
        return Run(spec, owner);
    }

    HWND owner = nullptr;
};

constexpr INT_PTR kResult = 0x123456789A;
constexpr INT_PTR kWinesResult = 0x3456789A;  // it keeps 32 bits

TEST_F(DialogModal, DisablesTheOwnerUntilItsEnd) {
    const auto end = [this](HWND window) {
        EXPECT_EQ(GetWindow(window, GW_OWNER), owner);
        EXPECT_FALSE(IsWindowEnabled(owner));
        EXPECT_TRUE(IsWindowVisible(window));  // WS_VISIBLE or not
        EXPECT_TRUE(EndDialog(window, 2));
        EXPECT_TRUE(EndDialog(window, kResult));
        EXPECT_TRUE(IsWindowEnabled(owner));
        EXPECT_FALSE(IsWindowVisible(window));
        EXPECT_TRUE(IsWindow(window));
    };
    EXPECT_EQ(RunUntilIdle({.items = {{.id = 1}}}, end), test::UnlessWine(kResult, kWinesResult));
    EXPECT_FALSE(IsWindow(dialog));
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(Run({}, GetDlgItem(owner, 7)), test::UnlessWine(kResult, kWinesResult));  // a child's top-level window

    EnableWindow(owner, FALSE);  // by somebody else: stays so
    on_message = [](HWND window, UINT message, WPARAM, LPARAM) -> INT_PTR {
        return message == WM_INITDIALOG && EndDialog(window, 1);
    };
    EXPECT_EQ(Run({}, owner), 1);
    EXPECT_EQ(IsWindowEnabled(owner), test::UnlessWine(FALSE, TRUE));
}

TEST_F(DialogModal, EndsInItsBeginningWithoutBeingShown) {
    const HWND other = MakeOwner(WS_POPUP | WS_VISIBLE);
    SetFocus(other);
    bool shown = false;
    on_message = [&](HWND window, UINT message, WPARAM wparam, LPARAM) -> INT_PTR {
        shown = shown || (message == WM_SHOWWINDOW && wparam != 0);
        return message == WM_INITDIALOG && EndDialog(window, kResult);
    };
    EXPECT_EQ(Run({.style = WS_POPUP | WS_VISIBLE, .items = {{.id = 1}}}, other), test::UnlessWine(kResult, kWinesResult));
    EXPECT_EQ(shown, test::UnlessWine(false, true));
    EXPECT_FALSE(IsWindow(dialog));
    EXPECT_TRUE(IsWindowEnabled(other));
    EXPECT_EQ(GetActiveWindow(), other);
}

TEST_F(DialogModal, EndsHoweverItGoesAway) {
    EXPECT_EQ(RunUntilIdle({}, [](HWND window) { DestroyWindow(window); }), 0);
    EXPECT_EQ(IsWindowEnabled(owner), test::UnlessWine(TRUE, FALSE));

    RunUntilIdle({}, [this](HWND) { DestroyWindow(owner); });
    EXPECT_FALSE(IsWindow(dialog));

    RunUntilIdle({}, [](HWND) { PostQuitMessage(17); });
    EXPECT_FALSE(IsWindow(dialog));
    EXPECT_EQ(IsWindowEnabled(owner), test::UnlessWine(TRUE, FALSE));
    MSG message = {};
    EXPECT_FALSE(GetMessageW(&message, nullptr, 0, 0));
    EXPECT_EQ(message.wParam, 17u);

    EXPECT_EQ(Run({}, reinterpret_cast<HWND>(ULONG_PTR{0x7EAD})), test::UnlessWine(INT_PTR{0}, INT_PTR{-1}));
    EXPECT_EQ(DialogBoxParamW(nullptr, MAKEINTRESOURCEW(4711), owner, nullptr, 0), -1);
    EXPECT_FALSE(EndDialog(MakeOwner(), 1));
}

TEST_F(DialogModal, DialogsOfDialogs) {
    int depth = 0;
    on_message = [&](HWND window, UINT kind, WPARAM, LPARAM) -> INT_PTR {
        if (kind == WM_INITDIALOG) {
            if (++depth < 3) {
                EXPECT_EQ(Run({.items = {{.id = 1}}}, window), depth);
                EXPECT_TRUE(IsWindowEnabled(window));
            }
            EndDialog(window, --depth);
        }
        return FALSE;
    };
    EXPECT_EQ(Run({}), 0);
}

TEST_F(DialogModal, KeysReachItAndAQuietOneTellsNobody) {
    owner = Create({});
    bool idle = false;
    on_message = [&](HWND window, UINT message, WPARAM wparam, LPARAM) -> INT_PTR {
        idle = idle || message == WM_ENTERIDLE;
        if (message == WM_INITDIALOG) {
            SetTimer(window, 1, 30, nullptr);
        } else if (message == WM_TIMER) {
            PostMessageW(GetDlgItem(window, 7), WM_KEYDOWN, VK_RETURN, 1);
        } else if (message == WM_COMMAND && HIWORD(wparam) == BN_CLICKED) {
            EndDialog(window, LOWORD(wparam));
        }
        return message == WM_INITDIALOG;
    };
    EXPECT_EQ(Run({.style = WS_POPUP | DS_NOIDLEMSG, .items = {{.style = kStop | BS_AUTOCHECKBOX, .id = 7}}}, owner), IDOK);
    EXPECT_FALSE(idle);
}

}  // namespace
