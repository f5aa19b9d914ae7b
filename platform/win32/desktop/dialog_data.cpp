#include "dialog_data.h"

#include <array>
#include <map>
#include <mutex>
#include <new>
#include <utility>

#include "../base/error.h"
#include "../base/mul_div.h"
#include "../gdi/contexts.h"
#include "../gdi/fonts.h"
#include "../gdi/text.h"
#include "input.h"
#include "painting.h"
#include "window_classes.h"
#include "window_tree.h"

namespace kawin {
namespace {

struct Dialogs {
    std::mutex mutex;
    std::map<HWND, DialogDataRef> of;  // guarded by mutex
};

// Never destroyed: windows may end while the process does.
Dialogs& TheDialogs() {
    static Dialogs* const dialogs = new Dialogs;
    return *dialogs;
}

}  // namespace

DialogData::~DialogData() {
    if (font != nullptr) {
        DeleteObject(font);
    }
}

DialogDataRef FindDialogData(HWND dialog) noexcept {
    Dialogs& dialogs = TheDialogs();
    const std::lock_guard lock(dialogs.mutex);
    const auto found = dialogs.of.find(dialog);
    return found != dialogs.of.end() ? found->second : nullptr;
}

DialogDataRef DialogDataOf(HWND dialog) {
    const bool has_room = GetClassLongPtrW(dialog, GCL_CBWNDEXTRA) >= DLGWINDOWEXTRA;
    if (!has_room) {
        return nullptr;
    }
    Dialogs& dialogs = TheDialogs();
    const std::lock_guard lock(dialogs.mutex);
    DialogDataRef& data = dialogs.of[dialog];
    if (!data) {
        data = std::make_shared<DialogData>();
    }
    return data;
}

void ForgetDialogData(HWND dialog) noexcept {
    DialogDataRef forgotten;
    Dialogs& dialogs = TheDialogs();
    const std::lock_guard lock(dialogs.mutex);
    const auto found = dialogs.of.find(dialog);
    if (found != dialogs.of.end()) {
        forgotten = std::move(found->second);
        dialogs.of.erase(found);
    }
}

DialogUnits MeasureDialogUnits(HFONT font) noexcept {
    constexpr std::u16string_view kLetters = u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const HDC screen = GetDC(nullptr);
    const HGDIOBJ before = SelectObject(screen, font != nullptr ? font : GetStockObject(SYSTEM_FONT));
    TEXTMETRICW metrics = {};
    SIZE size = {};
    GetTextMetricsW(screen, &metrics);
    GetTextExtentPoint32W(screen, kLetters.data(), static_cast<int>(kLetters.size()), &size);
    SelectObject(screen, before);
    ReleaseDC(nullptr, screen);
    return {(size.cx / 26 + 1) / 2, metrics.tmHeight};
}

RECT InPixels(const DialogUnits& units, const RECT& rect) noexcept {
    return {MulDiv(rect.left, units.width, 4), MulDiv(rect.top, units.height, 8), MulDiv(rect.right, units.width, 4),
            MulDiv(rect.bottom, units.height, 8)};
}

void FreeOwner(DialogData& data) noexcept {
    if (const HWND owner = std::exchange(data.disabled_owner, nullptr)) {
        EnableWindow(owner, TRUE);
    }
}

}  // namespace kawin

BOOL MapDialogRect(HWND dialog, LPRECT rect) noexcept {
    const kawin::DialogDataRef data = kawin::FindDialogData(dialog);
    if (!data || rect == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    if (data->units.width == 0) {
        data->units = kawin::MeasureDialogUnits(data->font);
    }
    *rect = kawin::InPixels(data->units, *rect);
    return TRUE;
}

LONG GetDialogBaseUnits() noexcept {
    const kawin::DialogUnits units = kawin::MeasureDialogUnits(nullptr);
    return MAKELONG(static_cast<ULONG_PTR>(units.width), static_cast<ULONG_PTR>(units.height));
}
