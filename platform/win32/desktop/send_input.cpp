// Input made by the program.

#include <algorithm>

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "../time/times.h"
#include "display.h"
#include "input.h"
#include "input_sink.h"
#include "window_position.h"

namespace kawin {
namespace {

struct ButtonFlag {
    DWORD flag;
    PointerButtonId button;
    bool down;
};

constexpr ButtonFlag kButtons[] = {
    {MOUSEEVENTF_LEFTDOWN, PointerButtonId::Left, true},     {MOUSEEVENTF_LEFTUP, PointerButtonId::Left, false},
    {MOUSEEVENTF_RIGHTDOWN, PointerButtonId::Right, true},   {MOUSEEVENTF_RIGHTUP, PointerButtonId::Right, false},
    {MOUSEEVENTF_MIDDLEDOWN, PointerButtonId::Middle, true}, {MOUSEEVENTF_MIDDLEUP, PointerButtonId::Middle, false},
};

POINT OnScreen(LONGLONG x, LONGLONG y) noexcept {
    const RECT screen = ScreenRect();
    return {static_cast<LONG>(std::clamp<LONGLONG>(x, 0, screen.right - 1)),
            static_cast<LONG>(std::clamp<LONGLONG>(y, 0, screen.bottom - 1))};
}

POINT Target(const MOUSEINPUT& input) noexcept {
    if ((input.dwFlags & MOUSEEVENTF_ABSOLUTE) != 0) {
        const RECT screen = ScreenRect();
        constexpr LONGLONG kAcross = 65536;
        return OnScreen(LONGLONG{input.dx} * screen.right / kAcross, LONGLONG{input.dy} * screen.bottom / kAcross);
    }
    POINT at = {};
    GetCursorPos(&at);
    return OnScreen(LONGLONG{at.x} + input.dx, LONGLONG{at.y} + input.dy);
}

void Mouse(const MOUSEINPUT& input) {
    const DWORD time = input.time != 0 ? input.time : GetTickCount();
    if ((input.dwFlags & MOUSEEVENTF_MOVE) != 0) {
        PointerMoved(Target(input), time);
    }
    for (const ButtonFlag& each : kButtons) {
        if ((input.dwFlags & each.flag) != 0) {
            PointerButton(each.button, each.down, time);
        }
    }
    const PointerButtonId extra = input.mouseData == XBUTTON2 ? PointerButtonId::X2 : PointerButtonId::X1;
    if ((input.dwFlags & (MOUSEEVENTF_XDOWN | MOUSEEVENTF_XUP)) != 0) {
        PointerButton(extra, (input.dwFlags & MOUSEEVENTF_XDOWN) != 0, time);
    }
    if ((input.dwFlags & MOUSEEVENTF_WHEEL) != 0) {
        PointerWheel(WheelAxis::Vertical, static_cast<int>(input.mouseData), time);
    }
}

void Keyboard(const KEYBDINPUT& input) {
    const DWORD time = input.time != 0 ? input.time : GetTickCount();
    const bool down = (input.dwFlags & KEYEVENTF_KEYUP) == 0;
    if ((input.dwFlags & KEYEVENTF_UNICODE) != 0) {
        const auto character = static_cast<char16_t>(input.wScan);
        Key(VK_PACKET, 0, down, time, down ? std::u16string_view(&character, 1) : std::u16string_view());
        return;
    }
    const int extended = (input.dwFlags & KEYEVENTF_EXTENDEDKEY) != 0 ? 0x100 : 0;
    Key(input.wVk, (input.wScan & 0xFF) | extended, down, time, {});
}

}  // namespace
}  // namespace kawin

UINT SendInput(UINT count, INPUT* inputs, int size) noexcept {
    if (count == 0 || inputs == nullptr || size != static_cast<int>(sizeof(INPUT))) {
        return static_cast<UINT>(kawin::Fail(ERROR_INVALID_PARAMETER));
    }
    return kawin::NoThrow([&] {
        for (UINT i = 0; i < count; ++i) {
            if (inputs[i].type == INPUT_MOUSE) {
                kawin::Mouse(inputs[i].mi);
            } else if (inputs[i].type == INPUT_KEYBOARD) {
                kawin::Keyboard(inputs[i].ki);
            }
        }
        return count;
    });
}

void mouse_event(DWORD flags, DWORD dx, DWORD dy, DWORD data, ULONG_PTR extra) noexcept {
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi = {static_cast<LONG>(dx), static_cast<LONG>(dy), data, flags, 0, extra};
    SendInput(1, &input, sizeof input);
}

void keybd_event(BYTE key, BYTE scan, DWORD flags, ULONG_PTR extra) noexcept {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki = {key, scan, flags, 0, extra};
    SendInput(1, &input, sizeof input);
}

BOOL SetCursorPos(int x, int y) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        const POINT at = kawin::OnScreen(x, y);
        kawin::PointerMoved(at, GetTickCount());
        if (kawin::Display* const display = kawin::TheDisplay(); display != nullptr && display->IsMine()) {
            display->Warp(at);
        }
        return TRUE;
    });
}

BOOL SwapMouseButton(BOOL /*swap*/) noexcept {
    return FALSE;
}
