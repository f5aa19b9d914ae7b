// The way of keys and the pointer to windows.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>
#include <windowsx.h>

#include <algorithm>
#include <string>
#include <utility>

#include "message_log.h"

namespace {

using desktop_test::Joined;
using desktop_test::MessageLog;
using desktop_test::Names;

struct Known {
    UINT message;
    const char* name;
};

constexpr Known kKnown[] = {
    {WM_MOUSEMOVE, "MOVE"},
    {WM_LBUTTONDOWN, "DOWN"},
    {WM_LBUTTONUP, "UP"},
    {WM_LBUTTONDBLCLK, "DOUBLE"},
    {WM_NCLBUTTONDOWN, "NCDOWN"},
    {WM_MOUSEWHEEL, "WHEEL"},
    {WM_MOUSEACTIVATE, "ACTIVATE"},
    {WM_SETCURSOR, "CURSOR"},
    {WM_CAPTURECHANGED, "CAPTURE"},
    {WM_MOUSELEAVE, "LEAVE"},
    {WM_KEYDOWN, "KEY"},
    {WM_KEYUP, "KEYUP"},
    {WM_CHAR, "CHAR"},
    {WM_SYSKEYDOWN, "SYSKEY"},
    {WM_SYSKEYUP, "SYSKEYUP"},
    {WM_SYSCHAR, "SYSCHAR"},
    {WM_PARENTNOTIFY, "NOTIFY"},
};

bool HasPlace(UINT message) {
    return message == WM_MOUSEMOVE || message == WM_LBUTTONDOWN || message == WM_LBUTTONUP || message == WM_LBUTTONDBLCLK;
}

bool HasCode(UINT message) {
    return message >= WM_KEYFIRST && message <= WM_KEYLAST;
}

// A window of 200 x 100 at 100,100 with a child of 50 x 40 at 20,30; what input brings them is written down.
class MessageInput : public testing::Test {
protected:
    void SetUp() override {
        top_ = log_.Create(WS_POPUP | WS_VISIBLE, WS_EX_TOPMOST, {100, 100, 300, 200}, nullptr, "top");
        child_ = log_.Create(WS_CHILD | WS_VISIBLE, 0, {20, 30, 70, 70}, top_, "child");
        SetForegroundWindow(top_);
        SetFocus(top_);
        MoveTo(0, 0);
        log_.on_message = [this](HWND at, UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
            Write(at, message, wparam, lparam);
            if (message == WM_NCHITTEST && at == child_ && child_hit_ != 0) {
                result = child_hit_;
                return true;
            }
            return message == WM_SYSKEYUP || message == WM_SYSCHAR || message == WM_NCLBUTTONDOWN;
        };
    }

    void TearDown() override {
        log_.on_message = nullptr;
        ReleaseCapture();
    }

    static void Mouse(DWORD flags, int data = 0) {
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flags;
        input.mi.mouseData = static_cast<DWORD>(data);
        SendInput(1, &input, sizeof input);
    }

    static void Key(WORD key, DWORD flags = 0) {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.dwFlags = flags;
        SendInput(1, &input, sizeof input);
    }

    static void Press() { Mouse(MOUSEEVENTF_LEFTDOWN); }
    static void Release() { Mouse(MOUSEEVENTF_LEFTUP); }

    void MoveTo(int x, int y) {
        SetCursorPos(x, y);
        Drain();
        seen_.clear();
    }

    // What the input so far has brought, without what `left_out` names.
    std::string Seen(const Names& left_out = {"CURSOR", "MOVE"}) {
        Drain();
        std::erase_if(seen_, [&](const std::string& each) {
            return std::any_of(left_out.begin(), left_out.end(),
                               [&](const std::string& name) { return each.find("." + name) != std::string::npos; });
        });
        return Joined(std::exchange(seen_, {}));
    }

    static void Drain() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }

    MessageLog log_;
    HWND top_ = nullptr;
    HWND child_ = nullptr;
    LRESULT child_hit_ = 0;

private:
    void Write(HWND at, UINT message, WPARAM wparam, LPARAM lparam) {
        for (const Known& each : kKnown) {
            if (each.message == message) {
                std::string text = std::string(at == top_ ? "top." : "child.") + each.name;
                if (HasPlace(message)) {
                    text += std::to_string(GET_X_LPARAM(lparam)) + "," + std::to_string(GET_Y_LPARAM(lparam));
                } else if (HasCode(message)) {
                    text += std::to_string(wparam);
                } else if (message == WM_MOUSEWHEEL) {
                    text += std::to_string(GET_WHEEL_DELTA_WPARAM(wparam));
                }
                seen_.push_back(text);
            }
        }
    }

    Names seen_;
};

TEST_F(MessageInput, APressFindsItsWindow) {
    MoveTo(110, 105);
    Press();
    Release();
    EXPECT_EQ(Seen(), "top.DOWN10,5 top.UP10,5");
    MoveTo(125, 140);
    Press();
    Release();
    EXPECT_EQ(Seen(), "top.NOTIFY child.ACTIVATE top.ACTIVATE child.DOWN5,10 child.UP5,10");
    EnableWindow(child_, FALSE);
    Press();
    EXPECT_EQ(Seen(), "top.DOWN25,40") << "a disabled child lets its parent have it";
    Release();
    Seen();
    EnableWindow(child_, TRUE);
    child_hit_ = HTTRANSPARENT;
    Press();
    EXPECT_EQ(Seen(), "top.DOWN25,40");
    Release();
    Seen();
    child_hit_ = HTCAPTION;
    Press();
    EXPECT_EQ(Seen(), "top.NOTIFY child.ACTIVATE top.ACTIVATE child.NCDOWN");
    Release();
}

TEST_F(MessageInput, CaptureTakesEverything) {
    MoveTo(110, 105);
    SetCapture(child_);
    EXPECT_EQ(GetCapture(), child_);
    SetCursorPos(105, 90);
    EXPECT_EQ(Seen({"CURSOR"}), "child.MOVE-15,-40");
    Press();
    EXPECT_EQ(Seen(), "child.DOWN-15,-40");
    SetCapture(top_);
    EXPECT_EQ(Seen(), "child.CAPTURE");
    Release();
    EXPECT_EQ(Seen(), "top.UP5,-10");
    EnableWindow(top_, FALSE);
    EXPECT_EQ(Seen(), "top.CAPTURE");
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(MessageInput, DoubleClicksForClassesThatWantThem) {
    MoveTo(110, 105);
    for (const ULONG_PTR style : {ULONG_PTR{0}, ULONG_PTR{CS_DBLCLKS}}) {
        SetClassLongPtrW(top_, GCL_STYLE, static_cast<LONG_PTR>(style));
        for (int i = 0; i < 3; ++i) {
            Press();
            Release();
        }
        EXPECT_EQ(Seen(), style == 0 ? "top.DOWN10,5 top.UP10,5 top.DOWN10,5 top.UP10,5 top.DOWN10,5 top.UP10,5"
                                     : "top.DOWN10,5 top.UP10,5 top.DOUBLE10,5 top.UP10,5 top.DOWN10,5 top.UP10,5");
        MoveTo(150, 105);
        MoveTo(110, 105);
        Mouse(MOUSEEVENTF_RIGHTDOWN);
        Mouse(MOUSEEVENTF_RIGHTUP);
        Seen();
    }
}

TEST_F(MessageInput, LeavingIsToldOnce) {
    MoveTo(125, 140);
    TRACKMOUSEEVENT track = {sizeof track, TME_LEAVE, child_, 0};
    EXPECT_TRUE(TrackMouseEvent(&track));
    SetCursorPos(126, 141);
    EXPECT_EQ(Seen(), "");
    SetCursorPos(110, 105);
    std::string seen;
    for (int i = 0; seen.empty() && i < 100; ++i) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);  // it may take the system a while to see
        seen = Seen();
    }
    EXPECT_EQ(seen, "child.LEAVE");
    SetCursorPos(125, 140);
    SetCursorPos(110, 105);
    EXPECT_EQ(Seen(), "");
}

TEST_F(MessageInput, KeysGoToTheFocus) {
    SetFocus(child_);
    Seen();
    Key('A');
    Key('A', KEYEVENTF_KEYUP);
    EXPECT_EQ(Seen(), "child.KEY65 child.CHAR97 child.KEYUP65");
    Key(VK_SHIFT);
    Key('A');
    EXPECT_EQ(Seen(), "child.KEY16 child.KEY65 child.CHAR65");
    EXPECT_LT(GetKeyState(VK_SHIFT), 0);
    Key('A', KEYEVENTF_KEYUP);
    Key(VK_SHIFT, KEYEVENTF_KEYUP);
    Seen();
    EXPECT_GE(GetKeyState(VK_SHIFT), 0);
    Key(VK_MENU);
    Key('X');
    Key('X', KEYEVENTF_KEYUP);
    Key(VK_MENU, KEYEVENTF_KEYUP);
    EXPECT_EQ(Seen(), "child.SYSKEY18 child.SYSKEY88 child.SYSCHAR120 child.SYSKEYUP88 child.KEYUP18");
    MoveTo(125, 140);
    Mouse(MOUSEEVENTF_WHEEL, -WHEEL_DELTA);
    EXPECT_EQ(Seen(), "child.WHEEL-120 top.WHEEL-120");
}

}  // namespace
