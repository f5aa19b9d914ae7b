// Relations, order, values and names of windows.

#include <gtest/gtest.h>
#include <tchar.h>
#include <windows.h>

#include <string>
#include <vector>

#include "message_log.h"
#include "support/last_error.h"
#include "support/wine.h"

namespace {

using desktop_test::kClass;
using desktop_test::MessageLog;

constexpr RECT kPlace = {10, 20, 210, 180};

const HINSTANCE kInstance = GetModuleHandleW(nullptr);

LRESULT CALLBACK Plain(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    return DefWindowProcW(window, message, wparam, lparam);
}

WNDCLASSEXW PlainClass(const TCHAR* name) {
    WNDCLASSEXW description = {};
    description.cbSize = sizeof description;
    description.lpfnWndProc = Plain;
    description.hInstance = kInstance;
    description.lpszClassName = name;
    return description;
}

TEST(WindowClass, RegisteredAskedAndTakenBack) {
    WNDCLASSEXW description = PlainClass(_T("kadata test class"));
    description.style = CS_HREDRAW | CS_DBLCLKS;
    description.cbWndExtra = 24;
    description.cbClsExtra = 16;
    const ATOM atom = RegisterClassExW(&description);
    ASSERT_NE(atom, 0);
    EXPECT_EQ(test::ErrorOf(RegisterClassExW(&description)), ERROR_CLASS_ALREADY_EXISTS);
    WNDCLASSEXW found = {};
    found.cbSize = sizeof found;
    EXPECT_EQ(GetClassInfoExW(kInstance, _T("KADATA Test Class"), &found), atom);
    EXPECT_EQ(found.style, description.style);
    EXPECT_EQ(found.cbWndExtra, 24);
    EXPECT_EQ(found.lpfnWndProc, Plain);

    const HWND window = CreateWindowExW(0, MAKEINTATOM(atom), _T(""), WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, kInstance, nullptr);
    ASSERT_NE(window, nullptr);
    TCHAR name[64];
    EXPECT_EQ(GetClassNameW(window, name, 64), 17);
    EXPECT_EQ(GetClassNameW(window, name, 7), 6);
    EXPECT_EQ(std::basic_string<TCHAR>(name), _T("kadata"));
    EXPECT_EQ(GetClassLongPtrW(window, GCW_ATOM), atom);
    EXPECT_EQ(SetClassLongPtrW(window, 8, 77), 0u);
    EXPECT_EQ(SetClassLongPtrW(window, 8, 78), 77u);
    EXPECT_EQ(test::ErrorOf(SetClassLongPtrW(window, 9, 1)), ERROR_INVALID_INDEX);
    EXPECT_EQ(SetWindowLongPtrW(window, 16, -5), 0);
    EXPECT_EQ(GetWindowLongPtrW(window, 16), -5);
    EXPECT_EQ(test::ErrorOf(GetWindowLongPtrW(window, 17)), ERROR_INVALID_INDEX);
    EXPECT_EQ(test::ErrorOf(UnregisterClassW(description.lpszClassName, kInstance)), ERROR_CLASS_HAS_WINDOWS);
    DestroyWindow(window);
    EXPECT_TRUE(UnregisterClassW(description.lpszClassName, kInstance));
    EXPECT_EQ(test::ErrorOf(UnregisterClassW(description.lpszClassName, kInstance)), ERROR_CLASS_DOES_NOT_EXIST);
    EXPECT_EQ(test::ErrorOf(GetClassInfoExW(kInstance, description.lpszClassName, &found)), ERROR_CLASS_DOES_NOT_EXIST);
}

TEST(WindowClass, WhatIsRefused) {
    struct Row {
        const char* name;
        void (*spoil)(WNDCLASSEXW&);
    };
    const Row rows[] = {
        {"size", [](WNDCLASSEXW& c) { c.cbSize = 8; }},
        {"extra", [](WNDCLASSEXW& c) { c.cbWndExtra = -1; }},
        {"name", [](WNDCLASSEXW& c) { c.lpszClassName = nullptr; }},
    };
    for (const Row& row : rows) {
        WNDCLASSEXW description = PlainClass(_T("kadata test refused"));
        row.spoil(description);
        EXPECT_EQ(RegisterClassExW(&description), 0) << row.name;
    }
}

TEST(WindowTree, Relations) {
    MessageLog log;
    const HWND top = log.Create(WS_POPUP, 0, kPlace);
    const HWND outer = log.Create(WS_CHILD, 0, kPlace, top);
    const HWND inner = log.Create(WS_CHILD, 0, kPlace, outer);
    const HWND second = log.Create(WS_CHILD, 0, kPlace, top);
    const HWND owned = log.Create(WS_POPUP, 0, kPlace, inner);
    const HWND overlapped = log.Create(WS_OVERLAPPED, 0, kPlace, top);
    struct Row {
        const char* name;
        HWND got;
        HWND expected;
    };
    const Row rows[] = {
        {"parent of a child", GetParent(inner), outer},
        {"parent of a popup", GetParent(owned), top},
        {"parent of an overlapped one", GetParent(overlapped), nullptr},
        {"owner of an overlapped one", GetWindow(overlapped, GW_OWNER), top},
        {"owner of a child", GetWindow(inner, GW_OWNER), nullptr},
        {"parent in the tree", GetAncestor(owned, GA_PARENT), GetDesktopWindow()},
        {"root", GetAncestor(inner, GA_ROOT), top},
        {"root owner", GetAncestor(owned, GA_ROOTOWNER), top},
        {"first child", GetWindow(top, GW_CHILD), outer},
        {"top child", GetTopWindow(top), outer},
        {"next", GetWindow(outer, GW_HWNDNEXT), second},
        {"previous", GetWindow(second, GW_HWNDPREV), outer},
        {"last", GetWindow(outer, GW_HWNDLAST), second},
        {"none", GetWindow(second, GW_HWNDNEXT), nullptr},
        {"found child", FindWindowExW(top, outer, kClass, nullptr), second},
        {"found none", FindWindowExW(top, second, kClass, nullptr), nullptr},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.got, row.expected) << row.name;
    }
    EXPECT_TRUE(IsChild(top, inner));
    EXPECT_FALSE(IsChild(top, owned));
    EXPECT_FALSE(IsChild(inner, top));
    EXPECT_EQ(GetWindowThreadProcessId(top, nullptr), GetCurrentThreadId());

    EXPECT_EQ(SetParent(inner, second), outer);
    EXPECT_EQ(GetParent(inner), second);
    EXPECT_EQ(SetParent(second, inner), nullptr);
    EXPECT_EQ(GetParent(second), top);
}

TEST(WindowTree, OrderOfChildrenAndOwnedWindows) {
    MessageLog log;
    const HWND top = log.Create(WS_POPUP, 0, kPlace);
    const HWND a = log.Create(WS_CHILD, 0, kPlace, top);
    const HWND b = log.Create(WS_CHILD, 0, kPlace, top);
    const HWND c = log.Create(WS_CHILD, 0, kPlace, top);
    const auto order = [&] {
        std::string text;
        for (HWND at = GetTopWindow(top); at != nullptr; at = GetWindow(at, GW_HWNDNEXT)) {
            text += at == a ? "a" : at == b ? "b" : "c";
        }
        return text;
    };
    struct Row {
        HWND window;
        HWND after;
        const char* expected;
    };
    const Row rows[] = {{a, c, "bca"},        {a, HWND_TOP, "abc"}, {a, HWND_BOTTOM, "bca"},
                        {c, HWND_TOP, "cba"}, {c, c, "cba"},        {c, a, "bac"}};
    EXPECT_EQ(order(), "abc");
    for (const Row& row : rows) {
        SetWindowPos(row.window, row.after, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        EXPECT_EQ(order(), row.expected);
    }

    const HWND owner = log.Create(WS_POPUP | WS_VISIBLE, 0, kPlace);
    const HWND owned = log.Create(WS_POPUP | WS_VISIBLE, 0, kPlace, owner);
    const HWND other = log.Create(WS_POPUP | WS_VISIBLE, 0, kPlace);
    const auto above = [](HWND upper, HWND lower) {
        for (HWND at = upper; at != nullptr; at = GetWindow(at, GW_HWNDNEXT)) {
            if (at == lower) {
                return true;
            }
        }
        return false;
    };
    SetWindowPos(owner, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_TRUE(above(owned, owner));
    EXPECT_TRUE(above(owner, other));
    SetWindowPos(other, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SetWindowPos(owner, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_TRUE(above(other, owned));
    EXPECT_NE(GetWindowLongPtrW(other, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
}

TEST(WindowTree, TextPropertiesAndValues) {
    MessageLog log;
    const HWND window = log.Create(WS_POPUP, 0, kPlace);
    TCHAR text[32];
    EXPECT_EQ(GetWindowTextW(window, text, 32), 5);
    EXPECT_TRUE(SetWindowTextW(window, _T("Zahnkrone")));
    EXPECT_EQ(GetWindowTextLengthW(window), 9);
    EXPECT_EQ(GetWindowTextW(window, text, 5), 4);
    EXPECT_EQ(std::basic_string<TCHAR>(text), _T("Zahn"));
    EXPECT_EQ(FindWindowW(kClass, _T("zahnKRONE")), window);

    EXPECT_TRUE(SetPropW(window, _T("KaData.Test"), window));
    EXPECT_EQ(GetPropW(window, _T("kadata.test")), window);
    EXPECT_EQ(RemovePropW(window, _T("KaData.Test")), window);
    EXPECT_EQ(GetPropW(window, _T("KaData.Test")), nullptr);

    const HWND child = CreateWindowExW(0, kClass, nullptr, WS_CHILD, 0, 0, 1, 1, window, reinterpret_cast<HMENU>(ULONG_PTR{42}),
                                       kInstance, nullptr);
    EXPECT_EQ(GetDlgCtrlID(child), 42);
    EXPECT_EQ(SetWindowLongPtrW(child, GWLP_ID, 43), 42);
    EXPECT_EQ(GetWindowLongPtrW(child, GWLP_ID), 43);
    EXPECT_EQ(SetWindowLongPtrW(child, GWLP_USERDATA, -1), 0);
    EXPECT_EQ(GetWindowLongPtrW(child, GWLP_USERDATA), -1);
    EXPECT_EQ(GetWindowLongPtrW(child, GWLP_HINSTANCE), reinterpret_cast<LONG_PTR>(kInstance));
    EXPECT_EQ(GetWindowTextLengthW(child), 0);
}

TEST(WindowTree, ErrorsOfWhatIsNoWindow) {
    MessageLog log;
    const HWND gone = log.Create(WS_POPUP, 0, kPlace);
    DestroyWindow(gone);
    RECT rect;
    TCHAR text[8];
    SetLastError(ERROR_SUCCESS);
    struct Row {
        const char* name;
        DWORD error;
        DWORD wines = ERROR_INVALID_WINDOW_HANDLE;
    };
    const Row rows[] = {
        {"destroy", test::ErrorOf(DestroyWindow(gone)), ERROR_ACCESS_DENIED},
        {"show", test::ErrorOf(ShowWindow(gone, SW_SHOW))},
        {"rect", test::ErrorOf(GetWindowRect(gone, &rect))},
        {"value", test::ErrorOf(GetWindowLongPtrW(gone, GWL_STYLE))},
        {"position", test::ErrorOf(SetWindowPos(gone, nullptr, 0, 0, 0, 0, 0))},
        {"parent", test::ErrorOf(GetParent(gone) != nullptr)},
        {"send", test::ErrorOf(SendMessageW(gone, WM_USER, 0, 0))},
        {"post", test::ErrorOf(PostMessageW(gone, WM_USER, 0, 0))},
        {"timer", test::ErrorOf(SetTimer(gone, 1, 100, nullptr)), ERROR_INVALID_HANDLE},
        {"enable", test::ErrorOf(EnableWindow(gone, TRUE))},
        {"class name", test::ErrorOf(GetClassNameW(gone, text, 8)), ERROR_INVALID_PARAMETER},
        {"update", test::ErrorOf(InvalidateRect(gone, nullptr, TRUE))},
        {"context", test::ErrorOf(GetDC(gone) != nullptr)},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.error, test::UnlessWine<DWORD>(ERROR_INVALID_WINDOW_HANDLE, row.wines)) << row.name;
    }
    EXPECT_EQ(test::ErrorOf(log.Create(WS_CHILD, 0, kPlace) != nullptr), ERROR_TLW_WITH_WSCHILD);
    EXPECT_EQ(test::ErrorOf(CreateWindowExW(0, _T("no such class"), nullptr, 0, 0, 0, 0, 0, nullptr, nullptr, kInstance,
                                            nullptr) != nullptr),
              test::UnlessWine(ERROR_CANNOT_FIND_WND_CLASS, ERROR_CLASS_DOES_NOT_EXIST));
}

TEST(WindowTree, ProceduresAreChainedAndTakenOutAgain) {
    MessageLog log;
    const HWND window = log.Create(WS_POPUP, 0, kPlace);
    static WNDPROC before;
    static int calls;
    calls = 0;
    before = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
        window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(+[](HWND at, UINT message, WPARAM wparam, LPARAM lparam) -> LRESULT {
            ++calls;
            const LRESULT result = CallWindowProcW(before, at, message, wparam, lparam);
            if (message == WM_USER) {
                SetWindowLongPtrW(at, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(before));
            }
            return message == WM_USER ? 99 : result;
        })));
    ASSERT_NE(before, nullptr);
    EXPECT_EQ(SendMessageW(window, WM_USER, 0, 0), 99);
    EXPECT_EQ(SendMessageW(window, WM_USER, 0, 0), 0);
    EXPECT_EQ(calls, 1);
}

}  // namespace
