#pragma once

// How the handlers of message maps are called: one template for each signature, which takes the arguments out of the message.
// Used by the macros of afx_message_map.h; the handler's class is deduced from the target alone, so that a handler may be
// inherited, or one of several of its name.

#include <type_traits>

#include "afx_wnd.h"

using AfxMapGetter = const AFX_MSGMAP* (*)();

namespace afx {

// Stands in maps for all messages with which controls ask for colours.
constexpr UINT kCtlColor = 0x0019;

template <class Target, class Signature>
struct HandlerType;
template <class Target, class Result, class... Arguments>
struct HandlerType<Target, Result(Arguments...)> {
    using Type = Result (Target::*)(Arguments...);
};
// void(UINT) of class Target: void (Target::*)(UINT).
template <class Target, class Signature>
using Handler = typename HandlerType<std::type_identity_t<Target>, Signature>::Type;

template <class Type>
Type* Pointer(LPARAM value) {
    return reinterpret_cast<Type*>(value);
}
inline CWnd* WindowOf(WPARAM value) {
    return CWnd::FromHandle(reinterpret_cast<HWND>(value));
}
inline CWnd* WindowOf(LPARAM value) {
    return CWnd::FromHandle(reinterpret_cast<HWND>(value));
}
inline CDC* ContextOf(WPARAM value) {
    return CDC::FromHandle(reinterpret_cast<HDC>(value));
}
inline LRESULT ResultOf(HBRUSH brush) {
    return reinterpret_cast<LRESULT>(brush);
}

template <class Target>
LRESULT CallMessage(Target& target, Handler<Target, LRESULT(WPARAM, LPARAM)> handler, const AfxMessage& m) {
    return (target.*handler)(m.wParam, m.lParam);
}

template <class Target>
LRESULT CallCommand(Target& target, Handler<Target, void()> handler, const AfxMessage& /*m*/) {
    (target.*handler)();
    return TRUE;
}
template <class Target>
LRESULT CallCommandEx(Target& target, Handler<Target, BOOL(UINT)> handler, const AfxMessage& m) {
    return (target.*handler)(m.id);
}
template <class Target>
LRESULT CallCommandOfRange(Target& target, Handler<Target, void(UINT)> handler, const AfxMessage& m) {
    (target.*handler)(m.id);
    return TRUE;
}
template <class Target>
LRESULT CallNotify(Target& target, Handler<Target, void(NMHDR*, LRESULT*)> handler, const AfxMessage& m) {
    (target.*handler)(m.notification->pNMHDR, m.notification->pResult);
    return TRUE;
}

template <class Target>
LRESULT CallPlain(Target& target, Handler<Target, void()> handler, const AfxMessage& /*m*/) {
    (target.*handler)();
    return 0;
}
template <class Target>
LRESULT CallQuestion(Target& target, Handler<Target, BOOL()> handler, const AfxMessage& /*m*/) {
    return (target.*handler)();
}
template <class Target>
LRESULT CallFlag(Target& target, Handler<Target, void(BOOL)> handler, const AfxMessage& m) {
    (target.*handler)(m.wParam != 0);
    return 0;
}
template <class Data, class Target>
LRESULT CallStructure(Target& target, Handler<Target, void(Data*)> handler, const AfxMessage& m) {
    (target.*handler)(Pointer<Data>(m.lParam));
    return 0;
}
template <class Target>
LRESULT CallWindowOfWParam(Target& target, Handler<Target, void(CWnd*)> handler, const AfxMessage& m) {
    (target.*handler)(WindowOf(m.wParam));
    return 0;
}
template <class Target>
LRESULT CallWindowOfLParam(Target& target, Handler<Target, void(CWnd*)> handler, const AfxMessage& m) {
    (target.*handler)(WindowOf(m.lParam));
    return 0;
}
template <class Target>
LRESULT CallMouse(Target& target, Handler<Target, void(UINT, CPoint)> handler, const AfxMessage& m) {
    (target.*handler)(static_cast<UINT>(m.wParam), CPoint(m.lParam));
    return 0;
}
template <class Target>
LRESULT CallKey(Target& target, Handler<Target, void(UINT, UINT, UINT)> handler, const AfxMessage& m) {
    const auto flags = static_cast<DWORD>(m.lParam);
    (target.*handler)(static_cast<UINT>(m.wParam), LOWORD(flags), HIWORD(flags));
    return 0;
}
template <class Target>
LRESULT CallSideAndRect(Target& target, Handler<Target, void(UINT, LPRECT)> handler, const AfxMessage& m) {
    (target.*handler)(static_cast<UINT>(m.wParam), Pointer<RECT>(m.lParam));
    return TRUE;
}
template <class Target>
LRESULT CallStyleChange(Target& target, Handler<Target, void(int, STYLESTRUCT*)> handler, const AfxMessage& m) {
    (target.*handler)(static_cast<int>(m.wParam), Pointer<STYLESTRUCT>(m.lParam));
    return 0;
}

template <class Target>
LRESULT CallActivate(Target& target, Handler<Target, void(UINT, CWnd*, BOOL)> handler, const AfxMessage& m) {
    (target.*handler)(LOWORD(m.wParam), WindowOf(m.lParam), HIWORD(m.wParam) != 0);
    return 0;
}
template <class Target>
LRESULT CallActivateApp(Target& target, Handler<Target, void(BOOL, DWORD)> handler, const AfxMessage& m) {
    (target.*handler)(m.wParam != 0, static_cast<DWORD>(m.lParam));
    return 0;
}
template <class Target>
LRESULT CallContextMenu(Target& target, Handler<Target, void(CWnd*, CPoint)> handler, const AfxMessage& m) {
    (target.*handler)(WindowOf(m.wParam), CPoint(m.lParam));
    return 0;
}
template <class Target>
LRESULT CallCreate(Target& target, Handler<Target, int(LPCREATESTRUCT)> handler, const AfxMessage& m) {
    return (target.*handler)(Pointer<CREATESTRUCT>(m.lParam));
}
template <class Target>
LRESULT CallNcCreate(Target& target, Handler<Target, BOOL(LPCREATESTRUCT)> handler, const AfxMessage& m) {
    return (target.*handler)(Pointer<CREATESTRUCT>(m.lParam));
}
template <class Target>
LRESULT CallCtlColor(Target& target, Handler<Target, HBRUSH(CDC*, CWnd*, UINT)> handler, const AfxMessage& m) {
    return ResultOf((target.*handler)(ContextOf(m.wParam), WindowOf(m.lParam), m.message - WM_CTLCOLORMSGBOX));
}
template <class Target>
LRESULT CallCtlColorReflect(Target& target, Handler<Target, HBRUSH(CDC*, UINT)> handler, const AfxMessage& m) {
    return ResultOf((target.*handler)(ContextOf(m.wParam), m.id));
}
template <class Target>
LRESULT CallDrawItem(Target& target, Handler<Target, void(int, LPDRAWITEMSTRUCT)> handler, const AfxMessage& m) {
    (target.*handler)(static_cast<int>(m.wParam), Pointer<DRAWITEMSTRUCT>(m.lParam));
    return TRUE;
}
template <class Target>
LRESULT CallEraseBackground(Target& target, Handler<Target, BOOL(CDC*)> handler, const AfxMessage& m) {
    return (target.*handler)(ContextOf(m.wParam));
}
template <class Target>
LRESULT CallDialogCode(Target& target, Handler<Target, UINT()> handler, const AfxMessage& /*m*/) {
    return (target.*handler)();
}
template <class Target>
LRESULT CallHelpInfo(Target& target, Handler<Target, BOOL(HELPINFO*)> handler, const AfxMessage& m) {
    return (target.*handler)(Pointer<HELPINFO>(m.lParam));
}
template <class Target>
LRESULT CallMouseActivate(Target& target, Handler<Target, int(CWnd*, UINT, UINT)> handler, const AfxMessage& m) {
    return (target.*handler)(WindowOf(m.wParam), LOWORD(m.lParam), HIWORD(m.lParam));
}
template <class Target>
LRESULT CallMouseWheel(Target& target, Handler<Target, BOOL(UINT, short, CPoint)> handler, const AfxMessage& m) {
    return (target.*handler)(LOWORD(m.wParam), static_cast<short>(HIWORD(m.wParam)), CPoint(m.lParam));
}
template <class Target>
LRESULT CallMove(Target& target, Handler<Target, void(int, int)> handler, const AfxMessage& m) {
    const CPoint position(m.lParam);
    (target.*handler)(position.x, position.y);
    return 0;
}
template <class Target>
LRESULT CallNcActivate(Target& target, Handler<Target, BOOL(BOOL)> handler, const AfxMessage& m) {
    return (target.*handler)(m.wParam != 0);
}
template <class Target>
LRESULT CallNcCalcSize(Target& target, Handler<Target, void(BOOL, NCCALCSIZE_PARAMS*)> handler, const AfxMessage& m) {
    (target.*handler)(m.wParam != 0, Pointer<NCCALCSIZE_PARAMS>(m.lParam));
    return 0;
}
template <class Target>
LRESULT CallNcHitTest(Target& target, Handler<Target, LRESULT(CPoint)> handler, const AfxMessage& m) {
    return (target.*handler)(CPoint(m.lParam));
}
template <class Target>
LRESULT CallSetCursor(Target& target, Handler<Target, BOOL(CWnd*, UINT, UINT)> handler, const AfxMessage& m) {
    return (target.*handler)(WindowOf(m.wParam), LOWORD(m.lParam), HIWORD(m.lParam));
}
template <class Target>
LRESULT CallSettingChange(Target& target, Handler<Target, void(UINT, LPCTSTR)> handler, const AfxMessage& m) {
    (target.*handler)(static_cast<UINT>(m.wParam), Pointer<const TCHAR>(m.lParam));
    return 0;
}
template <class Target>
LRESULT CallShowWindow(Target& target, Handler<Target, void(BOOL, UINT)> handler, const AfxMessage& m) {
    (target.*handler)(m.wParam != 0, static_cast<UINT>(m.lParam));
    return 0;
}
template <class Target>
LRESULT CallSize(Target& target, Handler<Target, void(UINT, int, int)> handler, const AfxMessage& m) {
    (target.*handler)(static_cast<UINT>(m.wParam), LOWORD(m.lParam), HIWORD(m.lParam));
    return 0;
}
template <class Target>
LRESULT CallSysCommand(Target& target, Handler<Target, void(UINT, LPARAM)> handler, const AfxMessage& m) {
    (target.*handler)(static_cast<UINT>(m.wParam), m.lParam);
    return 0;
}
template <class Target>
LRESULT CallTimer(Target& target, Handler<Target, void(UINT_PTR)> handler, const AfxMessage& m) {
    (target.*handler)(m.wParam);
    return 0;
}

}  // namespace afx
