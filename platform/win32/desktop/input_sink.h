#pragma once

// Where input enters: from a display, or made by SendInput. Exported for tests that play the display. Any thread; with no lock of
// this room held. Times are GetTickCount's.

#include <string_view>

#include "window_messages.h"

namespace kawin {

enum class PointerButtonId { Left, Right, Middle, X1, X2 };
enum class WheelAxis { Vertical, Horizontal };

KADATA_API void PointerMoved(POINT screen, DWORD time);
KADATA_API void PointerButton(PointerButtonId button, bool down, DWORD time);
KADATA_API void PointerWheel(WheelAxis axis, int delta,
                             DWORD time);  // WHEEL_DELTA per notch, positive away from the user or to the right

// A key by VK_* (left and right Shift, Control and Alt may be told apart: VK_LSHIFT ...) and scan code (0x100 set: extended).
// `text` is what it types when it goes down, empty when nothing or when the display tells that by Text.
KADATA_API void Key(int key, int scan, bool down, DWORD time, std::u16string_view text);

// Characters without a key of theirs (composed by an input method).
KADATA_API void Text(std::u16string_view text, DWORD time);

// The display has given the focus to a window (null: to none of this program).
KADATA_API void Activated(HWND window);

// The user wants a window closed by means outside of its frame.
KADATA_API void CloseRequested(HWND window);

// The display has placed or sized a window itself; the rectangle is the whole window's, on the screen.
KADATA_API void Moved(HWND window, const RECT& rect);
KADATA_API void Minimised(HWND window, bool minimised);

}  // namespace kawin
