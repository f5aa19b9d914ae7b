#pragma once

// The class "Button": what its files share.

#include "controls.h"

namespace kawin {

struct ButtonState {
    UINT state = BST_UNCHECKED;  // BST_*
    HFONT font = nullptr;        // of the dialog
    HANDLE image = nullptr;      // of the caller, with BM_SETIMAGE
    bool tracking = false;       // the pointer or the space bar is down on it
    bool silent = false;         // BM_CLICK presses it
};

DWORD ButtonType(DWORD style) noexcept;  // BS_PUSHBUTTON for those that are not listed in controls.h, and BS_USERBUTTON
bool IsPushType(DWORD type) noexcept;    // looks like a push button, BS_OWNERDRAW aside

// Draws all of it; `action` is ODA_*, for owners that draw. The state is a copy: a parent that is asked for colours may destroy
// the button.
void DrawButton(HWND button, ButtonState state, HDC context, UINT action) noexcept;

LRESULT CALLBACK ButtonProcedure(HWND button, UINT message, WPARAM wparam, LPARAM lparam);

}  // namespace kawin
