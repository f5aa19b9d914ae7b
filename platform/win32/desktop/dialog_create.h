#pragma once

// A dialog from the bytes of its template.

#include <span>

#include "dialog_data.h"

namespace kawin {

struct DialogSource {
    HINSTANCE module;
    HWND owner;
    DLGPROC procedure;
    LPARAM parameter;
    bool modal;  // the owner is disabled before WM_INITDIALOG
};

// Null, with the last error, when it could not be made, or was destroyed while it was. Empty bytes: the last error stays.
HWND MakeDialog(std::span<const std::byte> bytes, const DialogSource& source);

// Those of the resource that begins there, else as far as a template may reach; empty, with the last error, for null.
std::span<const std::byte> BytesInMemory(LPCDLGTEMPLATEW dialog);
// Empty, with the last error, when there are none.
std::span<const std::byte> BytesInModule(HINSTANCE module, LPCWSTR name) noexcept;

// Its top-level window, if it is enabled, until FreeOwner.
void DisableOwner(DialogData& data, HWND owner) noexcept;

}  // namespace kawin
