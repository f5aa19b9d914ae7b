#include "system_classes.h"

#include "button.h"
#include "class_table.h"
#include "colors.h"
#include "dialog_data.h"
#include "dialogs.h"
#include "icons.h"
#include "static_control.h"
#include "window_styles.h"

namespace kawin {
namespace {

LRESULT CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    return DefDlgProcW(dialog, message, wparam, lparam);
}

void Register(LPCWSTR name, WNDPROC procedure, UINT style, int extra) {
    WNDCLASSEXW description = {};
    description.cbSize = sizeof(description);
    description.style = style;
    description.lpfnWndProc = procedure;
    description.cbWndExtra = extra;
    description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    description.lpszClassName = name;
    RegisterSystemClass(description);
}

}  // namespace

void RegisterSystemClasses() {
    Register(u"Button", &ButtonProcedure, CS_DBLCLKS | CS_VREDRAW | CS_HREDRAW | CS_PARENTDC, sizeof(void*));
    Register(u"Static", &StaticProcedure, CS_DBLCLKS | CS_PARENTDC, sizeof(void*));
    Register(kDialogClass, &DialogProcedure, CS_SAVEBITS | CS_DBLCLKS, DLGWINDOWEXTRA);
}

}  // namespace kawin
