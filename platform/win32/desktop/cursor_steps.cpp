#include "default_steps.h"
#include "icons.h"
#include "window_classes.h"

namespace kawin {
namespace {

LPCWSTR SizingCursor(int hit) noexcept {
    switch (hit) {
        case HTLEFT:
        case HTRIGHT:
            return IDC_SIZEWE;
        case HTTOP:
        case HTBOTTOM:
            return IDC_SIZENS;
        case HTTOPLEFT:
        case HTBOTTOMRIGHT:
            return IDC_SIZENWSE;
        case HTTOPRIGHT:
        case HTBOTTOMLEFT:
            return IDC_SIZENESW;
        default:
            return nullptr;
    }
}

}  // namespace

LRESULT ShowCursorOf(HWND window, int hit) {
    if (hit == HTCLIENT) {
        const auto cursor = reinterpret_cast<HCURSOR>(GetClassLongPtrW(window, GCLP_HCURSOR));
        if (cursor == nullptr) {
            return FALSE;
        }
        SetCursor(cursor);
        return TRUE;
    }
    const LPCWSTR sizing = SizingCursor(hit);
    SetCursor(LoadCursorW(nullptr, sizing != nullptr ? sizing : IDC_ARROW));
    return TRUE;
}

}  // namespace kawin
