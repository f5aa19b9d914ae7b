// Dialogs that keep their caller waiting.

#include "../base/error_map.h"
#include "dialog_create.h"
#include "dialog_data.h"
#include "input.h"
#include "message_queue.h"
#include "window_tree.h"

namespace kawin {
namespace {

constexpr INT_PTR kNotMade = -1;

// With nothing left to do, a dialog shows itself if it has not, and its owner hears of it.
void BeIdle(HWND dialog, HWND owner) {
    const DWORD style = static_cast<DWORD>(GetWindowLongW(dialog, GWL_STYLE));
    if ((style & WS_VISIBLE) == 0) {
        ShowWindow(dialog, SW_SHOWNORMAL);
    }
    if (owner != nullptr && (style & DS_NOIDLEMSG) == 0) {
        SendMessageW(owner, WM_ENTERIDLE, MSGF_DIALOGBOX, reinterpret_cast<LPARAM>(dialog));
    }
}

INT_PTR RunLoop(HWND dialog, HWND owner, const DialogDataRef& data) {
    MSG message = {};
    while (!data->ended && IsWindow(dialog)) {
        if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            BeIdle(dialog, owner);
            if (data->ended || !IsWindow(dialog)) {
                break;
            }
            if (GetMessageW(&message, nullptr, 0, 0) < 0) {
                break;
            }
        }
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        if (!IsDialogMessageW(dialog, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    FreeOwner(*data);
    data->modal = false;
    if (IsWindow(dialog)) {
        DestroyWindow(dialog);
    }
    return data->ended ? data->result : 0;
}

INT_PTR Run(std::span<const std::byte> bytes, HINSTANCE module, HWND owner, DLGPROC procedure, LPARAM parameter) {
    if (owner != nullptr && !IsWindow(owner)) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return 0;
    }
    const HWND dialog = MakeDialog(bytes, {module, owner, procedure, parameter, true});
    if (dialog == nullptr) {
        return kNotMade;
    }
    const DialogDataRef data = FindDialogData(dialog);
    return data ? RunLoop(dialog, owner != nullptr ? GetAncestor(owner, GA_ROOT) : nullptr, data) : kNotMade;
}

template <class Source>
INT_PTR RunOrFail(Source source, HINSTANCE module, HWND owner, DLGPROC procedure, LPARAM parameter) noexcept {
    try {
        return Run(source(), module, owner, procedure, parameter);
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return kNotMade;
    }
}

}  // namespace

void DisableOwner(DialogData& data, HWND owner) noexcept {
    const HWND top = owner != nullptr ? GetAncestor(owner, GA_ROOT) : nullptr;
    if (top != nullptr && IsWindowEnabled(top)) {
        EnableWindow(top, FALSE);
        data.disabled_owner = top;
    }
}

}  // namespace kawin

INT_PTR DialogBoxIndirectParamW(HINSTANCE module, LPCDLGTEMPLATEW dialog, HWND owner, DLGPROC procedure,
                                LPARAM parameter) noexcept {
    return kawin::RunOrFail([&] { return kawin::BytesInMemory(dialog); }, module, owner, procedure, parameter);
}

INT_PTR DialogBoxParamW(HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure, LPARAM parameter) noexcept {
    return kawin::RunOrFail([&] { return kawin::BytesInModule(module, name); }, module, owner, procedure, parameter);
}

BOOL EndDialog(HWND dialog, INT_PTR result) noexcept {
    const kawin::DialogDataRef data = kawin::FindDialogData(dialog);
    if (!data) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    data->result = result;
    data->ended = true;
    const HWND owner = data->disabled_owner;
    kawin::FreeOwner(*data);
    // Hidden without being made inactive first, so that the owner and not somebody else's window is the active one next.
    SetWindowPos(dialog, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_HIDEWINDOW);
    if (owner != nullptr && (GetActiveWindow() == dialog || GetActiveWindow() == nullptr)) {
        SetActiveWindow(owner);
    }
    PostMessageW(dialog, WM_NULL, 0, 0);  // the loop looks
    return TRUE;
}
