#pragma once

// What a dialog knows beside its window, and the steps that the files of this room share. In the dialog's thread.

#include <memory>
#include <vector>

#include "dialogs.h"

namespace kawin {

// The class of dialogs: an atom, "#32770" in text.
inline const LPCWSTR kDialogClass = reinterpret_cast<LPCWSTR>(ULONG_PTR{32770});

// Pixels of 4 horizontal and 8 vertical dialog units.
struct DialogUnits {
    int width;
    int height;
};

struct DialogData {
    DialogData() = default;
    DialogData(const DialogData&) = delete;
    DialogData& operator=(const DialogData&) = delete;
    ~DialogData();

    HFONT font = nullptr;  // made for this dialog; null: the system's
    DialogUnits units = {};
    UINT default_id = 0;
    HWND focus = nullptr;  // the control that has it again when the dialog is active again
    bool modal = false;    // a loop waits for its end
    bool ended = false;    // EndDialog was called
    INT_PTR result = 0;
    HWND disabled_owner = nullptr;  // to be enabled at the end
};
using DialogDataRef = std::shared_ptr<DialogData>;

// Of a window that has asked DefDlgProcW; null for any other.
DialogDataRef FindDialogData(HWND dialog) noexcept;
// The same, made at the first question; null for a window that has no room for a dialog's values. Throws std::bad_alloc.
DialogDataRef DialogDataOf(HWND dialog);
void ForgetDialogData(HWND dialog) noexcept;

// Of a font, by the documented rule.
DialogUnits MeasureDialogUnits(HFONT font) noexcept;
RECT InPixels(const DialogUnits& units, const RECT& rect) noexcept;

// Every control, those in WS_EX_CONTROLPARENT windows included, in the order in which Tab goes through them. Hidden and disabled
// windows are left out, with what is in them.
std::vector<HWND> ReachableControls(HWND dialog);

// The group that `control` is in, its hidden and disabled members too, in the order of their parent's children. A group begins
// with WS_GROUP; what is behind the last one goes on at the parent's first child.
std::vector<HWND> GroupOf(HWND control);

// What a control says to WM_GETDLGCODE; 0 for null.
LRESULT DialogCodeOf(HWND control) noexcept;

// Gives the look of the default button to `focused` when that is a push button, else to the dialog's own default button.
void ShowDefaultButton(HWND dialog, HWND focused) noexcept;

// Focus for a control, with its text selected where it has a selection.
void FocusControl(HWND dialog, HWND control) noexcept;

// Moves a dialog that is not a child onto its monitor.
void MoveOntoScreen(HWND dialog) noexcept;

// Enables the owner again; once.
void FreeOwner(DialogData& data) noexcept;

}  // namespace kawin
