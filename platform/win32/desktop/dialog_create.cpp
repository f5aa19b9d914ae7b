// A dialog from its template.

#include <algorithm>

#include "../base/error_map.h"
#include "../base/mul_div.h"
#include "../gdi/contexts.h"
#include "../gdi/fonts.h"
#include "../modules/module_table.h"
#include "../resources/resources.h"
#include "../text/no_throw.h"
#include "dialog_create.h"
#include "dialog_data.h"
#include "dialog_template.h"
#include "input.h"
#include "message_queue.h"
#include "metrics.h"
#include "monitors.h"
#include "painting.h"
#include "system_parameters.h"
#include "window_tree.h"

namespace kawin {
namespace {

// More than any dialog has: how far a template in memory is read, whose end only its caller knows.
constexpr std::size_t kLongestTemplate = std::size_t{1} << 20;

HFONT MakeFont(const TemplateFont& font) {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    if (font.points == kMessageFont && SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) {
        return CreateFontIndirectW(&metrics.lfMessageFont);
    }
    const HDC screen = GetDC(nullptr);
    const int height = -MulDiv(font.points, GetDeviceCaps(screen, LOGPIXELSY), 72);
    ReleaseDC(nullptr, screen);
    return CreateFontW(height, 0, 0, 0, font.weight, font.italic, FALSE, FALSE, font.charset, 0, 0, PROOF_QUALITY, FF_DONTCARE,
                       font.face.c_str());
}

RECT RectOf(const DialogUnits& units, const TemplateRect& rect) noexcept {
    const RECT pixels = InPixels(units, {rect.x, rect.y, rect.width, rect.height});
    return {pixels.left, pixels.top, pixels.left + pixels.right, pixels.top + pixels.bottom};
}

RECT WorkAreaOf(HWND owner) noexcept {
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof(monitor);
    GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY), &monitor);
    return monitor.rcWork;
}

bool LiesInOwner(const DialogTemplate& dialog) noexcept {
    return (dialog.style & (DS_ABSALIGN | WS_CHILD)) == 0;
}

// Where the window lies: on the screen, or of a child in its parent's client area.
RECT Place(const DialogTemplate& dialog, const DialogUnits& units, HWND owner, DWORD style, DWORD extended_style) {
    RECT rect = RectOf(units, dialog.rect);
    AdjustWindowRectEx(&rect, style, !dialog.menu.IsNone(), extended_style);
    const RECT pixels = RectOf(units, dialog.rect);
    // The template's place is that of the window, its size that of the client area.
    const LONG width = rect.right - rect.left;
    const LONG height = rect.bottom - rect.top;
    POINT at = {pixels.left, pixels.top};
    if ((style & WS_CHILD) == 0) {
        if ((dialog.style & DS_CENTER) != 0) {
            const RECT around = WorkAreaOf(owner);
            at = {(around.left + around.right - width) / 2, (around.top + around.bottom - height) / 2};
        } else if ((dialog.style & DS_CENTERMOUSE) != 0) {
            GetCursorPos(&at);
            at.x -= width / 2;
            at.y -= height / 2;
        } else if (LiesInOwner(dialog) && owner != nullptr) {
            ClientToScreen(owner, &at);
        }
    }
    return {at.x, at.y, at.x + width, at.y + height};
}

HWND MakeControl(HWND dialog, const TemplateItem& item, const DialogData& data, HINSTANCE module) {
    const RECT rect = RectOf(data.units, item.rect);
    static constexpr LPCWSTR kByNumber[] = {u"Button", u"Edit", u"Static", u"ListBox", u"ScrollBar", u"ComboBox"};
    constexpr WORD kFirstNumber = 0x80;
    const std::optional<WORD> number = item.window_class.number;
    const bool known = number && *number >= kFirstNumber && *number < kFirstNumber + std::size(kByNumber);
    const LPCWSTR name = known ? kByNumber[*number - kFirstNumber] : item.window_class.Name();
    const HWND control = CreateWindowExW(item.extended_style | WS_EX_NOPARENTNOTIFY, name, item.title.AsText().c_str(),
                                         item.style | WS_CHILD, rect.left, rect.top, rect.right - rect.left,
                                         rect.bottom - rect.top, dialog, reinterpret_cast<HMENU>(static_cast<ULONG_PTR>(item.id)),
                                         module, item.data.empty() ? nullptr : const_cast<std::byte*>(item.data.data()));
    if (control != nullptr && data.font != nullptr) {
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(data.font), FALSE);
    }
    return control;
}

// False when one could not be made and the template insists.
bool MakeControls(HWND dialog, const DialogTemplate& source, DialogData& data, HINSTANCE module) {
    for (const TemplateItem& item : source.items) {
        const HWND control = MakeControl(dialog, item, data, module);
        if (!IsWindow(dialog) || (control == nullptr && (source.style & DS_NOFAILCREATE) == 0)) {
            return false;
        }
        if (data.default_id == 0 && (DialogCodeOf(control) & DLGC_DEFPUSHBUTTON) != 0) {
            data.default_id = static_cast<UINT>(GetDlgCtrlID(control));
        }
    }
    return true;
}

void Initialise(HWND dialog, const DialogData& data, DWORD style, LPARAM parameter) {
    HWND focus = GetNextDlgTabItem(dialog, nullptr, FALSE);
    if (focus == nullptr) {
        focus = GetNextDlgGroupItem(dialog, nullptr, FALSE);
    }
    const LRESULT wants = SendMessageW(dialog, WM_INITDIALOG, reinterpret_cast<WPARAM>(focus), parameter);
    if (wants == 0 || !IsWindow(dialog) || data.ended || (style & DS_CONTROL) != 0) {
        return;
    }
    focus = GetNextDlgTabItem(dialog, nullptr, FALSE);  // the procedure may have enabled or hidden some
    if (focus != nullptr) {
        FocusControl(dialog, focus);
        ShowDefaultButton(dialog, focus);
    } else {
        SetFocus(dialog);
    }
}

DWORD StyleOf(const DialogTemplate& source) noexcept {
    const DWORD shown_later = source.style & ~DWORD{WS_VISIBLE};
    return (source.style & DS_CONTROL) != 0 ? shown_later & ~DWORD{WS_CAPTION | WS_SYSMENU} : shown_later;
}

DWORD ExtendedStyleOf(const DialogTemplate& source) noexcept {
    return source.extended_style | WS_EX_CONTROLPARENT | ((source.style & DS_MODALFRAME) != 0 ? WS_EX_DLGMODALFRAME : 0) |
           ((source.style & DS_SYSMODAL) != 0 ? WS_EX_TOPMOST : 0) |
           ((source.style & DS_CONTEXTHELP) != 0 ? WS_EX_CONTEXTHELP : 0);
}

HWND MakeWindow(const DialogTemplate& source, const DialogUnits& units, HWND owner, HINSTANCE module) {
    const DWORD style = StyleOf(source);
    const DWORD extended_style = ExtendedStyleOf(source);
    const RECT rect = Place(source, units, owner, style, extended_style);
    const bool placed_by_system = source.rect.x == static_cast<SHORT>(0x8000) && (style & WS_CHILD) == 0;
    return CreateWindowExW(extended_style, source.window_class.IsNone() ? kDialogClass : source.window_class.Name(),
                           source.title.c_str(), style, placed_by_system ? CW_USEDEFAULT : rect.left,
                           placed_by_system ? 0 : rect.top, rect.right - rect.left, rect.bottom - rect.top, owner, nullptr,
                           module, nullptr);
}

}  // namespace

HWND MakeDialog(std::span<const std::byte> bytes, const DialogSource& source) {
    if (bytes.empty()) {
        return nullptr;
    }
    const std::optional<DialogTemplate> read = ReadDialogTemplate(bytes);
    if (!read) {
        SetLastError(ERROR_INVALID_DATA);
        return nullptr;
    }
    const HFONT font = read->font ? MakeFont(*read->font) : nullptr;
    const DialogUnits units = MeasureDialogUnits(font);
    const HWND dialog = MakeWindow(*read, units, source.owner, source.module);
    const DialogDataRef data = dialog != nullptr ? DialogDataOf(dialog) : nullptr;
    if (!data) {
        DeleteObject(font);
        if (dialog != nullptr) {
            DestroyWindow(dialog);
        }
        return nullptr;
    }
    data->font = font;
    data->units = units;
    data->modal = source.modal;
    SetWindowLongPtrW(dialog, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(source.procedure));
    if (font != nullptr) {
        SendMessageW(dialog, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    }
    if (!MakeControls(dialog, *read, *data, source.module)) {
        DestroyWindow(dialog);
        return nullptr;
    }
    if (source.modal) {
        DisableOwner(*data, source.owner);
    }
    if ((read->style & DS_CENTER) == 0 && read->rect.x != static_cast<SHORT>(0x8000)) {
        MoveOntoScreen(dialog);
    }
    Initialise(dialog, *data, read->style, source.parameter);
    if (IsWindow(dialog) && !data->ended && (read->style & WS_VISIBLE) != 0) {
        ShowWindow(dialog, SW_SHOWNORMAL);
    }
    if (IsWindow(dialog) && !data->ended && (read->style & DS_SETFOREGROUND) != 0) {
        SetForegroundWindow(dialog);
    }
    return IsWindow(dialog) ? dialog : nullptr;
}

std::span<const std::byte> BytesInMemory(LPCDLGTEMPLATEW dialog) {
    const auto* const begin = reinterpret_cast<const std::byte*>(dialog);
    if (const auto resource = FindResourceBytes(begin)) {
        return *resource;
    }
    if (begin == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return {};
    }
    return {begin, kLongestTemplate};
}

std::span<const std::byte> BytesInModule(HINSTANCE module, LPCWSTR name) noexcept {
    const HRSRC found = FindResourceW(module, name, RT_DIALOG);
    const void* const bytes = found != nullptr ? LockResource(LoadResource(module, found)) : nullptr;
    return {static_cast<const std::byte*>(bytes), bytes != nullptr ? SizeofResource(module, found) : 0};
}

}  // namespace kawin

HWND CreateDialogIndirectParamW(HINSTANCE module, LPCDLGTEMPLATEW dialog, HWND owner, DLGPROC procedure,
                                LPARAM parameter) noexcept {
    return kawin::NoThrow([&] {
        return kawin::MakeDialog(kawin::BytesInMemory(dialog), {module, owner, procedure, parameter, false});
    });
}

HWND CreateDialogParamW(HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure, LPARAM parameter) noexcept {
    return kawin::NoThrow([&] {
        return kawin::MakeDialog(kawin::BytesInModule(module, name), {module, owner, procedure, parameter, false});
    });
}
