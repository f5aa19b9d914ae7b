// What the default procedure makes of keys.

#include "default_steps.h"
#include "input.h"
#include "message_queue.h"
#include "window_tree.h"

namespace kawin {
namespace {

// Alt alone, or F10, opens the menu when it comes up again; any other key between spoils it. Of the thread that has the keyboard.
thread_local bool menu_key_down = false;

bool Pressed(HWND window, WPARAM key, LPARAM lparam) {
    const bool alt = (HIWORD(static_cast<ULONG_PTR>(lparam)) & KF_ALTDOWN) != 0;
    const bool repeated = (HIWORD(static_cast<ULONG_PTR>(lparam)) & KF_REPEAT) != 0;
    if (alt) {
        menu_key_down = key == VK_MENU && (menu_key_down || !repeated);
        if (key == VK_F4) {
            PostMessageW(GetAncestor(window, GA_ROOT), WM_SYSCOMMAND, SC_CLOSE, 0);
        }
        return true;
    }
    menu_key_down = key == VK_F10;
    if (key == VK_F10 && (GetKeyState(VK_SHIFT) & 0x8000) != 0) {
        SendMessageW(window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window), -1);
    }
    return true;
}

bool Released(HWND window, WPARAM key) {
    if (menu_key_down && (key == VK_MENU || key == VK_F10)) {
        SendMessageW(GetAncestor(window, GA_ROOT), WM_SYSCOMMAND, SC_KEYMENU, 0);
    }
    menu_key_down = false;
    return true;
}

bool Character(HWND window, WPARAM character) {
    menu_key_down = false;
    if (character == VK_RETURN && IsIconic(window) != FALSE) {
        PostMessageW(window, WM_SYSCOMMAND, SC_RESTORE, 0);
    } else if (character != VK_TAB && character != VK_ESCAPE) {
        SendMessageW(GetAncestor(window, GA_ROOT), WM_SYSCOMMAND, SC_KEYMENU, static_cast<LPARAM>(character));
    }
    return true;
}

}  // namespace

bool SystemKey(HWND window, UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
    result = 0;
    switch (message) {
        case WM_SYSKEYDOWN:
            return Pressed(window, wparam, lparam);
        case WM_SYSKEYUP:
        case WM_KEYUP:
            if (wparam == VK_APPS) {
                SendMessageW(window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window), -1);
            }
            return Released(window, wparam);
        default:
            return Character(window, wparam);
    }
}

}  // namespace kawin
