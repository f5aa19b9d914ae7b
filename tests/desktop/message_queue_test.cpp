// Posting, retrieving, timers, waiting.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>
#include <thread>
#include <vector>

#include "message_log.h"
#include "support/last_error.h"
#include "support/wine.h"

namespace {

using desktop_test::MessageLog;

constexpr RECT kPlace = {10, 20, 210, 180};

void Drain() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        DispatchMessageW(&message);
    }
}

std::string Kind(UINT message) {
    switch (message) {
        case WM_PAINT:
            return "paint";
        case WM_TIMER:
            return "timer";
        case WM_QUIT:
            return "quit";
        default:
            return message >= WM_APP ? "app" + std::to_string(message - WM_APP) : "other";
    }
}

TEST(MessageQueue, OrderOfRetrieval) {
    Drain();
    MessageLog log;
    const HWND window = log.Create(WS_POPUP | WS_VISIBLE, 0, kPlace);
    Drain();
    SetTimer(window, 7, USER_TIMER_MINIMUM, nullptr);
    const DWORD start = GetTickCount();
    while (GetTickCount() - start < 3 * USER_TIMER_MINIMUM) {
    }
    InvalidateRect(window, nullptr, FALSE);
    PostQuitMessage(5);
    PostMessageW(window, WM_APP + 1, 0, 0);
    PostMessageW(nullptr, WM_APP + 2, 0, 0);
    std::string order;
    MSG message;
    while (order.find("timer") == std::string::npos && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (Kind(message.message) != "other") {
            order += Kind(message.message) + " ";
        }
        if (message.message == WM_QUIT) {
            EXPECT_EQ(message.wParam, 5u);
        }
        DispatchMessageW(&message);
    }
    KillTimer(window, 7);
    EXPECT_EQ(order, "app1 app2 quit paint timer ");
}

TEST(MessageQueue, Filters) {
    Drain();
    MessageLog log;
    const HWND top = log.Create(WS_POPUP, 0, kPlace);
    const HWND child = log.Create(WS_CHILD, 0, kPlace, top);
    const HWND other = log.Create(WS_POPUP, 0, kPlace);
    PostMessageW(other, WM_APP + 1, 0, 0);
    PostMessageW(child, WM_APP + 2, 0, 0);
    PostMessageW(nullptr, WM_APP + 3, 0, 0);
    struct Row {
        const char* name;
        HWND window;
        UINT first;
        UINT last;
        UINT expected;  // 0: nothing
    };
    const Row rows[] = {
        {"of a window and its children", top, 0, 0, WM_APP + 2},
        {"of a child", child, 0, 0, WM_APP + 2},
        {"without a window", reinterpret_cast<HWND>(LONG_PTR{-1}), 0, 0, WM_APP + 3},
        {"by number", nullptr, WM_APP + 2, WM_APP + 9, WM_APP + 2},
        {"neither", other, WM_APP + 2, WM_APP + 9, 0},
    };
    for (const Row& row : rows) {
        MSG message = {};
        const BOOL found = PeekMessageW(&message, row.window, row.first, row.last, PM_NOREMOVE);
        EXPECT_EQ(found != FALSE ? message.message : 0, row.expected) << row.name;
    }
    DestroyWindow(other);
    MSG message = {};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_APP + 1, WM_APP + 1, PM_REMOVE));
    Drain();
}

TEST(MessageQueue, PostedToThreads) {
    Drain();
    const DWORD here = GetCurrentThreadId();
    std::thread other([&] {
        for (UINT i = 0; i < 500; ++i) {
            EXPECT_TRUE(PostThreadMessageW(here, WM_APP + i, i, -1));
        }
    });
    MSG message = {};
    for (UINT i = 0; i < 500; ++i) {
        ASSERT_EQ(GetMessageW(&message, nullptr, WM_APP, WM_APP + 999), TRUE);
        ASSERT_EQ(message.message, WM_APP + i);
        ASSERT_EQ(message.wParam, i);
    }
    other.join();
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(test::ErrorOf(PostThreadMessageW(0x7FFFFFF0, WM_APP, 0, 0)),
              test::UnlessWine<DWORD>(ERROR_INVALID_THREAD_ID, ERROR_INVALID_PARAMETER));
    UINT posted = 0;
    while (posted <= 10000 && PostMessageW(nullptr, WM_APP, 0, 0)) {
        ++posted;
    }
    EXPECT_EQ(posted, test::UnlessWine(10000u, 10001u));
    Drain();
}

TEST(MessageQueue, ATimerKilledInItsTick) {
    Drain();
    MessageLog log;
    const HWND window = log.Create(WS_POPUP, 0, kPlace);
    int ticks = 0;
    log.on_message = [&](HWND at, UINT message, WPARAM id, LPARAM, LRESULT&) {
        if (message == WM_TIMER) {
            ++ticks;
            EXPECT_TRUE(KillTimer(at, id));
            SetLastError(ERROR_SUCCESS);
            EXPECT_FALSE(KillTimer(at, id));
        }
        return false;
    };
    EXPECT_EQ(SetTimer(window, 3, USER_TIMER_MINIMUM, nullptr), 3u);
    static int calls;
    calls = 0;
    const UINT_PTR own = SetTimer(nullptr, 0, 2 * USER_TIMER_MINIMUM, [](HWND, UINT, UINT_PTR id, DWORD) {
        if (++calls == 2) {
            KillTimer(nullptr, id);
        }
    });
    EXPECT_NE(own, 0u);
    while (calls < 2) {
        MSG message;
        ASSERT_EQ(GetMessageW(&message, nullptr, 0, 0), TRUE);
        DispatchMessageW(&message);
    }
    EXPECT_EQ(ticks, 1);
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(KillTimer(nullptr, own));
}

TEST(MessageQueue, WaitingTogetherWithObjects) {
    Drain();
    const HANDLE events[] = {CreateEventW(nullptr, FALSE, FALSE, nullptr), CreateEventW(nullptr, FALSE, FALSE, nullptr)};
    const auto wait = [&](DWORD milliseconds, DWORD flags = 0) {
        return MsgWaitForMultipleObjectsEx(2, events, milliseconds, QS_ALLINPUT, flags);
    };
    EXPECT_EQ(wait(0), WAIT_TIMEOUT);
    SetEvent(events[1]);
    EXPECT_EQ(wait(INFINITE), WAIT_OBJECT_0 + 1);
    EXPECT_EQ(wait(0), WAIT_TIMEOUT);
    PostMessageW(nullptr, WM_APP, 0, 0);
    EXPECT_EQ(wait(INFINITE), WAIT_OBJECT_0 + 2);
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    EXPECT_EQ(wait(0), WAIT_TIMEOUT) << "seen, and nothing new";
    EXPECT_EQ(wait(0, MWMO_INPUTAVAILABLE), WAIT_OBJECT_0 + 2);
    EXPECT_EQ(HIWORD(GetQueueStatus(QS_POSTMESSAGE)), QS_POSTMESSAGE);
    Drain();
    const DWORD here = GetCurrentThreadId();
    std::thread other([&] { PostThreadMessageW(here, WM_APP, 0, 0); });
    EXPECT_EQ(wait(INFINITE), WAIT_OBJECT_0 + 2);
    other.join();
    Drain();
    CloseHandle(events[0]);
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(wait(0), WAIT_FAILED);
    CloseHandle(events[1]);
}

TEST(MessageQueue, RegisteredNumbers) {
    const UINT one = RegisterWindowMessageW(_T("KaData.Message.One"));
    EXPECT_GE(one, 0xC000u);
    EXPECT_EQ(RegisterWindowMessageW(_T("kadata.MESSAGE.one")), one);
    EXPECT_NE(RegisterWindowMessageW(_T("KaData.Message.Two")), one);
}

TEST(MessageSend, AcrossThreadsBothWays) {
    Drain();
    MessageLog log;
    const HWND window = log.Create(WS_POPUP, 0, kPlace);
    const HANDLE finished = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    bool inside = false;
    log.on_message = [&](HWND, UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
        if (message != WM_APP) {
            return false;
        }
        inside = InSendMessage() != FALSE;
        // While it waits for us, the sender serves what we send to it.
        result = lparam != 0 ? SendMessageW(reinterpret_cast<HWND>(lparam), WM_GETTEXTLENGTH, 0, 0) + 1
                             : static_cast<LRESULT>(wparam) * 2;
        return true;
    };
    std::thread other([&] {
        EXPECT_EQ(SendMessageW(window, WM_APP, 21, 0), 42);
        const HWND own = CreateWindowExW(0, _T("Static"), _T("12345"), WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
        if (own != nullptr) {
            EXPECT_EQ(SendMessageW(window, WM_APP, 0, reinterpret_cast<LPARAM>(own)), 6);
            DestroyWindow(own);
        }
        DWORD_PTR answer = 0;
        EXPECT_NE(SendMessageTimeoutW(window, WM_APP, 4, 0, SMTO_NORMAL, 10000, &answer), 0);
        EXPECT_EQ(answer, 8u);
        EXPECT_FALSE(DestroyWindow(window));
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
        SetEvent(finished);
    });
    while (MsgWaitForMultipleObjectsEx(1, &finished, INFINITE, QS_ALLINPUT, 0) == WAIT_OBJECT_0 + 1) {
        Drain();
    }
    other.join();
    EXPECT_TRUE(inside);
    EXPECT_FALSE(InSendMessage());
    CloseHandle(finished);
}

TEST(MessageSend, WhenTheReceiverDoesNotAnswer) {
    MessageLog log;
    const HWND window = log.Create(WS_POPUP, 0, kPlace);
    int received = 0;
    log.on_message = [&](HWND, UINT message, WPARAM, LPARAM, LRESULT&) {
        received += message == WM_APP;
        return false;
    };
    std::thread other([&] {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(SendMessageTimeoutW(window, WM_APP, 0, 0, SMTO_NORMAL, 50, nullptr), 0);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_TIMEOUT));
        EXPECT_TRUE(SendNotifyMessageW(window, WM_APP, 0, 0));
    });
    other.join();
    Drain();
    EXPECT_EQ(received, 1) << "what timed out before it began is not delivered";
}

TEST(MessageSend, WindowsOfAThreadThatEnds) {
    HWND left = nullptr;
    std::thread other(
        [&] { left = CreateWindowExW(0, _T("Static"), nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr); });
    other.join();
    EXPECT_FALSE(IsWindow(left));
}

}  // namespace
