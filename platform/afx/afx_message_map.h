#pragma once

// Message maps: which messages of a window, and which commands, lead to which handler.
//
//     class CPlan : public CWnd {
//         ...
//         afx_msg void OnPaint();
//         afx_msg void OnPrintPlan();
//         DECLARE_MESSAGE_MAP()
//     };
//     BEGIN_MESSAGE_MAP(CPlan, CWnd)
//         ON_WM_PAINT()
//         ON_COMMAND(ID_PRINT_PLAN, OnPrintPlan)
//     END_MESSAGE_MAP()
//
// A handler with another signature than the macro's does not compile: nothing is cast. ON_WM_... leads to the handler of that
// name, whose signature stands in CWnd. The map of the most derived class is asked first, from its beginning.

#include "afx_message_calls.h"

#define BEGIN_MESSAGE_MAP(class_name, base_class_name)                        \
    const AFX_MSGMAP* class_name::GetMessageMap() const {                     \
        return GetThisMessageMap();                                           \
    }                                                                         \
    const AFX_MSGMAP* class_name::GetThisMessageMap() {                       \
        using ThisClass [[maybe_unused]] = class_name;                        \
        static const AfxMapGetter base = &base_class_name::GetThisMessageMap; \
        static constexpr AFX_MSGMAP_ENTRY entries[] = {
#define END_MESSAGE_MAP()                          \
    { 0, 0, 0, 0, nullptr, nullptr }               \
    }                                              \
    ;                                              \
    static const AFX_MSGMAP map = {base, entries}; \
    return &map;                                   \
    }

// The entry of a handler that is called by `call`, a template of afx_message_calls.h.
#define AFX_MAP_ENTRY(message_number, code, first, last, registered, call, method)                                 \
    {message_number, code, first, last, registered, [](CCmdTarget& target, const AfxMessage& message) -> LRESULT { \
         return afx::call(static_cast<ThisClass&>(target), &ThisClass::method, message);                           \
     }},
#define AFX_MAP_MESSAGE(message_number, call, method) AFX_MAP_ENTRY(message_number, 0, 0, 0, nullptr, call, method)
#define AFX_MAP_COMMAND(message_number, code, first, last, call, method) \
    AFX_MAP_ENTRY(message_number, LOWORD(code), static_cast<UINT>(first), static_cast<UINT>(last), nullptr, call, method)

// LRESULT method(WPARAM, LPARAM). A registered message is named by a variable of static life that holds its number.
#define ON_MESSAGE(message_number, method) AFX_MAP_MESSAGE(message_number, CallMessage, method)
#define ON_REGISTERED_MESSAGE(variable, method) AFX_MAP_ENTRY(0, 0, 0, 0, &variable, CallMessage, method)

// void method(); of a range, void method(UINT id). BOOL method(UINT id) in the EX forms: FALSE asks the next one.
#define ON_COMMAND(id, method) AFX_MAP_COMMAND(WM_COMMAND, CN_COMMAND, id, id, CallCommand, method)
#define ON_COMMAND_EX(id, method) AFX_MAP_COMMAND(WM_COMMAND, CN_COMMAND, id, id, CallCommandEx, method)
#define ON_COMMAND_RANGE(id, last, method) AFX_MAP_COMMAND(WM_COMMAND, CN_COMMAND, id, last, CallCommandOfRange, method)
#define ON_CONTROL(code, id, method) AFX_MAP_COMMAND(WM_COMMAND, code, id, id, CallCommand, method)
#define ON_CONTROL_RANGE(code, id, last, method) AFX_MAP_COMMAND(WM_COMMAND, code, id, last, CallCommandOfRange, method)
#define ON_BN_CLICKED(id, method) ON_CONTROL(BN_CLICKED, id, method)
#define ON_BN_DOUBLECLICKED(id, method) ON_CONTROL(BN_DOUBLECLICKED, id, method)
#define ON_BN_SETFOCUS(id, method) ON_CONTROL(BN_SETFOCUS, id, method)
#define ON_BN_KILLFOCUS(id, method) ON_CONTROL(BN_KILLFOCUS, id, method)
#define ON_STN_CLICKED(id, method) ON_CONTROL(STN_CLICKED, id, method)
#define ON_STN_DBLCLK(id, method) ON_CONTROL(STN_DBLCLK, id, method)
// void method(NMHDR*, LRESULT*).
#define ON_NOTIFY(code, id, method) AFX_MAP_COMMAND(WM_NOTIFY, code, id, id, CallNotify, method)

// In the control's own map: void method(); void method(NMHDR*, LRESULT*); HBRUSH CtlColor(CDC*, UINT), where null asks the
// parent.
#define ON_CONTROL_REFLECT(code, method) AFX_MAP_COMMAND(WM_REFLECT_BASE + WM_COMMAND, code, 0, 0, CallCommand, method)
#define ON_NOTIFY_REFLECT(code, method) AFX_MAP_COMMAND(WM_REFLECT_BASE + WM_NOTIFY, code, 0, 0, CallNotify, method)
#define ON_WM_CTLCOLOR_REFLECT() AFX_MAP_MESSAGE(WM_REFLECT_BASE + afx::kCtlColor, CallCtlColorReflect, CtlColor)

#define ON_WM_ACTIVATE() AFX_MAP_MESSAGE(WM_ACTIVATE, CallActivate, OnActivate)
#define ON_WM_ACTIVATEAPP() AFX_MAP_MESSAGE(WM_ACTIVATEAPP, CallActivateApp, OnActivateApp)
#define ON_WM_CANCELMODE() AFX_MAP_MESSAGE(WM_CANCELMODE, CallPlain, OnCancelMode)
#define ON_WM_CAPTURECHANGED() AFX_MAP_MESSAGE(WM_CAPTURECHANGED, CallWindowOfLParam, OnCaptureChanged)
#define ON_WM_CHAR() AFX_MAP_MESSAGE(WM_CHAR, CallKey, OnChar)
#define ON_WM_CLOSE() AFX_MAP_MESSAGE(WM_CLOSE, CallPlain, OnClose)
#define ON_WM_CONTEXTMENU() AFX_MAP_MESSAGE(WM_CONTEXTMENU, CallContextMenu, OnContextMenu)
#define ON_WM_CREATE() AFX_MAP_MESSAGE(WM_CREATE, CallCreate, OnCreate)
#define ON_WM_CTLCOLOR() AFX_MAP_MESSAGE(afx::kCtlColor, CallCtlColor, OnCtlColor)
#define ON_WM_DESTROY() AFX_MAP_MESSAGE(WM_DESTROY, CallPlain, OnDestroy)
#define ON_WM_DRAWITEM() AFX_MAP_MESSAGE(WM_DRAWITEM, CallDrawItem, OnDrawItem)
#define ON_WM_ENABLE() AFX_MAP_MESSAGE(WM_ENABLE, CallFlag, OnEnable)
#define ON_WM_ERASEBKGND() AFX_MAP_MESSAGE(WM_ERASEBKGND, CallEraseBackground, OnEraseBkgnd)
#define ON_WM_GETDLGCODE() AFX_MAP_MESSAGE(WM_GETDLGCODE, CallDialogCode, OnGetDlgCode)
#define ON_WM_GETMINMAXINFO() AFX_MAP_MESSAGE(WM_GETMINMAXINFO, CallStructure<MINMAXINFO>, OnGetMinMaxInfo)
#define ON_WM_HELPINFO() AFX_MAP_MESSAGE(WM_HELP, CallHelpInfo, OnHelpInfo)
#define ON_WM_KEYDOWN() AFX_MAP_MESSAGE(WM_KEYDOWN, CallKey, OnKeyDown)
#define ON_WM_KEYUP() AFX_MAP_MESSAGE(WM_KEYUP, CallKey, OnKeyUp)
#define ON_WM_KILLFOCUS() AFX_MAP_MESSAGE(WM_KILLFOCUS, CallWindowOfWParam, OnKillFocus)
#define ON_WM_LBUTTONDBLCLK() AFX_MAP_MESSAGE(WM_LBUTTONDBLCLK, CallMouse, OnLButtonDblClk)
#define ON_WM_LBUTTONDOWN() AFX_MAP_MESSAGE(WM_LBUTTONDOWN, CallMouse, OnLButtonDown)
#define ON_WM_LBUTTONUP() AFX_MAP_MESSAGE(WM_LBUTTONUP, CallMouse, OnLButtonUp)
#define ON_WM_MBUTTONDOWN() AFX_MAP_MESSAGE(WM_MBUTTONDOWN, CallMouse, OnMButtonDown)
#define ON_WM_MBUTTONUP() AFX_MAP_MESSAGE(WM_MBUTTONUP, CallMouse, OnMButtonUp)
#define ON_WM_MOUSEACTIVATE() AFX_MAP_MESSAGE(WM_MOUSEACTIVATE, CallMouseActivate, OnMouseActivate)
#define ON_WM_MOUSEHOVER() AFX_MAP_MESSAGE(WM_MOUSEHOVER, CallMouse, OnMouseHover)
#define ON_WM_MOUSELEAVE() AFX_MAP_MESSAGE(WM_MOUSELEAVE, CallPlain, OnMouseLeave)
#define ON_WM_MOUSEMOVE() AFX_MAP_MESSAGE(WM_MOUSEMOVE, CallMouse, OnMouseMove)
#define ON_WM_MOUSEWHEEL() AFX_MAP_MESSAGE(WM_MOUSEWHEEL, CallMouseWheel, OnMouseWheel)
#define ON_WM_MOVE() AFX_MAP_MESSAGE(WM_MOVE, CallMove, OnMove)
#define ON_WM_MOVING() AFX_MAP_MESSAGE(WM_MOVING, CallSideAndRect, OnMoving)
#define ON_WM_NCACTIVATE() AFX_MAP_MESSAGE(WM_NCACTIVATE, CallNcActivate, OnNcActivate)
#define ON_WM_NCCALCSIZE() AFX_MAP_MESSAGE(WM_NCCALCSIZE, CallNcCalcSize, OnNcCalcSize)
#define ON_WM_NCCREATE() AFX_MAP_MESSAGE(WM_NCCREATE, CallNcCreate, OnNcCreate)
#define ON_WM_NCDESTROY() AFX_MAP_MESSAGE(WM_NCDESTROY, CallPlain, OnNcDestroy)
#define ON_WM_NCHITTEST() AFX_MAP_MESSAGE(WM_NCHITTEST, CallNcHitTest, OnNcHitTest)
#define ON_WM_NCLBUTTONDBLCLK() AFX_MAP_MESSAGE(WM_NCLBUTTONDBLCLK, CallMouse, OnNcLButtonDblClk)
#define ON_WM_NCLBUTTONDOWN() AFX_MAP_MESSAGE(WM_NCLBUTTONDOWN, CallMouse, OnNcLButtonDown)
#define ON_WM_NCLBUTTONUP() AFX_MAP_MESSAGE(WM_NCLBUTTONUP, CallMouse, OnNcLButtonUp)
#define ON_WM_NCMOUSELEAVE() AFX_MAP_MESSAGE(WM_NCMOUSELEAVE, CallPlain, OnNcMouseLeave)
#define ON_WM_NCMOUSEMOVE() AFX_MAP_MESSAGE(WM_NCMOUSEMOVE, CallMouse, OnNcMouseMove)
#define ON_WM_NCPAINT() AFX_MAP_MESSAGE(WM_NCPAINT, CallPlain, OnNcPaint)
#define ON_WM_NCRBUTTONDOWN() AFX_MAP_MESSAGE(WM_NCRBUTTONDOWN, CallMouse, OnNcRButtonDown)
#define ON_WM_NCRBUTTONUP() AFX_MAP_MESSAGE(WM_NCRBUTTONUP, CallMouse, OnNcRButtonUp)
#define ON_WM_PAINT() AFX_MAP_MESSAGE(WM_PAINT, CallPlain, OnPaint)
#define ON_WM_QUERYENDSESSION() AFX_MAP_MESSAGE(WM_QUERYENDSESSION, CallQuestion, OnQueryEndSession)
#define ON_WM_QUERYOPEN() AFX_MAP_MESSAGE(WM_QUERYOPEN, CallQuestion, OnQueryOpen)
#define ON_WM_RBUTTONDOWN() AFX_MAP_MESSAGE(WM_RBUTTONDOWN, CallMouse, OnRButtonDown)
#define ON_WM_RBUTTONUP() AFX_MAP_MESSAGE(WM_RBUTTONUP, CallMouse, OnRButtonUp)
#define ON_WM_SETCURSOR() AFX_MAP_MESSAGE(WM_SETCURSOR, CallSetCursor, OnSetCursor)
#define ON_WM_SETFOCUS() AFX_MAP_MESSAGE(WM_SETFOCUS, CallWindowOfWParam, OnSetFocus)
#define ON_WM_SETTINGCHANGE() AFX_MAP_MESSAGE(WM_SETTINGCHANGE, CallSettingChange, OnSettingChange)
#define ON_WM_SHOWWINDOW() AFX_MAP_MESSAGE(WM_SHOWWINDOW, CallShowWindow, OnShowWindow)
#define ON_WM_SIZE() AFX_MAP_MESSAGE(WM_SIZE, CallSize, OnSize)
#define ON_WM_SIZING() AFX_MAP_MESSAGE(WM_SIZING, CallSideAndRect, OnSizing)
#define ON_WM_STYLECHANGED() AFX_MAP_MESSAGE(WM_STYLECHANGED, CallStyleChange, OnStyleChanged)
#define ON_WM_STYLECHANGING() AFX_MAP_MESSAGE(WM_STYLECHANGING, CallStyleChange, OnStyleChanging)
#define ON_WM_SYSCOLORCHANGE() AFX_MAP_MESSAGE(WM_SYSCOLORCHANGE, CallPlain, OnSysColorChange)
#define ON_WM_SYSCOMMAND() AFX_MAP_MESSAGE(WM_SYSCOMMAND, CallSysCommand, OnSysCommand)
#define ON_WM_SYSKEYDOWN() AFX_MAP_MESSAGE(WM_SYSKEYDOWN, CallKey, OnSysKeyDown)
#define ON_WM_SYSKEYUP() AFX_MAP_MESSAGE(WM_SYSKEYUP, CallKey, OnSysKeyUp)
#define ON_WM_TIMER() AFX_MAP_MESSAGE(WM_TIMER, CallTimer, OnTimer)
#define ON_WM_WINDOWPOSCHANGED() AFX_MAP_MESSAGE(WM_WINDOWPOSCHANGED, CallStructure<WINDOWPOS>, OnWindowPosChanged)
#define ON_WM_WINDOWPOSCHANGING() AFX_MAP_MESSAGE(WM_WINDOWPOSCHANGING, CallStructure<WINDOWPOS>, OnWindowPosChanging)
