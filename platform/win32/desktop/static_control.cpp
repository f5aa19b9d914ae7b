// The class "Static": texts, icons, bitmaps, rectangles and lines.

#include "static_control.h"

#include <string>
#include <utility>

#include "../gdi/bitmaps.h"
#include "../gdi/brushes.h"
#include "../gdi/copies.h"
#include "../gdi/shapes.h"
#include "../gdi/text.h"
#include "../text/no_throw.h"
#include "colors.h"
#include "control_state.h"
#include "dialogs.h"
#include "frame_drawing.h"
#include "icons.h"
#include "rectangles.h"

namespace kawin {
namespace {

struct StaticState {
    HFONT font = nullptr;      // of the dialog
    HANDLE image = nullptr;    // an icon or a bitmap, by the style
    bool owns_bitmap = false;  // the control loaded it; icons are shared
};

DWORD TypeOf(HWND control) noexcept {
    return StyleOfControl(control) & SS_TYPEMASK;
}

SIZE ImageSize(HANDLE image, DWORD type) noexcept {
    if (type == SS_BITMAP) {
        BITMAP bitmap = {};
        GetObjectW(image, sizeof(bitmap), &bitmap);
        return {bitmap.bmWidth, bitmap.bmHeight};
    }
    ICONINFO info = {};
    if (!GetIconInfo(static_cast<HICON>(image), &info)) {
        return {};
    }
    BITMAP mask = {};
    GetObjectW(info.hbmMask, sizeof(mask), &mask);
    const SIZE size = {mask.bmWidth, info.hbmColor != nullptr ? mask.bmHeight : mask.bmHeight / 2};
    DeleteObject(info.hbmMask);
    DeleteObject(info.hbmColor);
    return size;
}

// Of the client area. The upper left corner stays, or the lower right one.
void TakeSize(HWND control, SIZE size, bool keeps_right) {
    RECT window = {};
    RECT client = {};
    GetWindowRect(control, &window);
    GetClientRect(control, &client);
    const int width = size.cx + (window.right - window.left) - client.right;
    const int height = size.cy + (window.bottom - window.top) - client.bottom;
    POINT at = {keeps_right ? window.right - width : window.left, keeps_right ? window.bottom - height : window.top};
    ScreenToClient(GetParent(control), &at);
    SetWindowPos(control, nullptr, at.x, at.y, width, height, SWP_NOACTIVATE | SWP_NOZORDER | (keeps_right ? 0 : SWP_NOMOVE));
}

// Takes the size of the image, unless the style says that the control keeps its own.
void Show(HWND control, StaticState& state, HANDLE image, bool owns) {
    const DWORD style = StyleOfControl(control);
    if (state.owns_bitmap) {
        DeleteObject(state.image);
    }
    state.image = image;
    state.owns_bitmap = owns;
    const SIZE size = image != nullptr ? ImageSize(image, style & SS_TYPEMASK) : SIZE{};
    if (size.cx > 0 && (style & (SS_CENTERIMAGE | SS_REALSIZECONTROL)) == 0) {
        TakeSize(control, size, (style & SS_RIGHTJUST) != 0);
    }
    InvalidateRect(control, nullptr, TRUE);
}

HANDLE SetImage(HWND control, StaticState& state, DWORD type, HANDLE image) {
    if (TypeOf(control) != type) {
        return nullptr;
    }
    const HANDLE before = state.image;
    state.owns_bitmap = false;  // the caller has it now
    Show(control, state, image, false);
    return before;
}

// By the name that a template or CreateWindowExW gives for a text.
void LoadByName(HWND control, StaticState& state, LPCWSTR name) {
    if (name == nullptr || (!IS_INTRESOURCE(name) && *name == 0)) {
        return;
    }
    const auto module = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(control, GWLP_HINSTANCE));
    if (TypeOf(control) == SS_ICON) {
        const bool own_size = (StyleOfControl(control) & SS_REALSIZEIMAGE) != 0;
        HANDLE icon = own_size ? LoadImageW(module, name, IMAGE_ICON, 0, 0, LR_SHARED) : LoadIconW(module, name);
        if (icon == nullptr) {
            icon = LoadCursorW(module, name);
        }
        if (icon != nullptr) {
            Show(control, state, icon, false);
        }
    } else if (TypeOf(control) == SS_BITMAP) {
        if (const HBITMAP bitmap = LoadBitmapW(module, name)) {
            Show(control, state, bitmap, true);
        }
    }
}

UINT TextFormat(DWORD style) noexcept {
    UINT format = DT_EXPANDTABS;
    switch (style & SS_TYPEMASK) {
        case SS_CENTER:
            format |= DT_CENTER | DT_WORDBREAK;
            break;
        case SS_RIGHT:
            format |= DT_RIGHT | DT_WORDBREAK;
            break;
        case SS_SIMPLE:
            format |= DT_SINGLELINE | DT_NOCLIP;
            break;
        case SS_LEFTNOWORDWRAP:
            break;
        default:
            format |= DT_WORDBREAK;
    }
    format |= (style & SS_NOPREFIX) != 0 ? DT_NOPREFIX : 0;
    format |= (style & SS_EDITCONTROL) != 0 ? DT_EDITCONTROL : 0;
    const DWORD ellipsis = style & SS_ELLIPSISMASK;
    if ((style & SS_CENTERIMAGE) != 0) {
        format |= DT_SINGLELINE | DT_VCENTER;
    }
    if (ellipsis != 0) {
        format |= DT_SINGLELINE | (ellipsis == SS_ENDELLIPSIS    ? DT_END_ELLIPSIS
                                   : ellipsis == SS_PATHELLIPSIS ? DT_PATH_ELLIPSIS
                                                                 : DT_WORD_ELLIPSIS);
    }
    return (format & DT_SINGLELINE) != 0 ? format & ~DT_WORDBREAK : format;
}

void DrawCaption(HWND control, HDC context, RECT rect) {
    const DWORD style = StyleOfControl(control);
    std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(control)), u'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(control, text.data(), static_cast<int>(text.size()) + 1)));
    if (!IsWindowEnabled(control)) {
        SetTextColor(context, GetSysColor(COLOR_GRAYTEXT));
    }
    DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &rect, TextFormat(style));
}

void DrawImage(HWND control, const StaticState& state, HDC context, const RECT& rect) {
    if (state.image == nullptr) {
        return;
    }
    const DWORD style = StyleOfControl(control);
    const SIZE size = ImageSize(state.image, style & SS_TYPEMASK);
    const bool centered = (style & SS_CENTERIMAGE) != 0;
    const int x = centered ? (rect.right - size.cx) / 2 : 0;
    const int y = centered ? (rect.bottom - size.cy) / 2 : 0;
    const int width = centered ? size.cx : rect.right;
    const int height = centered ? size.cy : rect.bottom;
    if (TypeOf(control) == SS_ICON) {
        DrawIconEx(context, x, y, static_cast<HICON>(state.image), width, height, 0, nullptr, DI_NORMAL);
        return;
    }
    const HDC memory = CreateCompatibleDC(context);
    const HGDIOBJ before = SelectObject(memory, state.image);
    if (centered) {  // what is around a bitmap has the colour of its corner, as documented
        const HBRUSH brush = CreateSolidBrush(GetPixel(memory, 0, 0));
        FillRect(context, &rect, brush);
        DeleteObject(brush);
    }
    StretchBlt(context, x, y, width, height, memory, 0, 0, size.cx, size.cy, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
}

void LetOwnerDraw(HWND control, HDC context, const RECT& rect) {
    DRAWITEMSTRUCT item = {};
    item.CtlType = ODT_STATIC;
    item.CtlID = static_cast<UINT>(GetDlgCtrlID(control));
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = IsWindowEnabled(control) ? 0 : ODS_DISABLED;
    item.hwndItem = control;
    item.hDC = context;
    item.rcItem = rect;
    SendMessageW(GetParent(control), WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
}

void DrawPlain(HDC context, RECT rect, DWORD type) {
    static constexpr int kColors[] = {COLOR_3DDKSHADOW, COLOR_3DSHADOW, COLOR_3DHIGHLIGHT};
    if (type >= SS_BLACKRECT && type <= SS_WHITERECT) {
        FillRect(context, &rect, GetSysColorBrush(kColors[type - SS_BLACKRECT]));
    } else if (type >= SS_BLACKFRAME && type <= SS_WHITEFRAME) {
        FrameRect(context, &rect, GetSysColorBrush(kColors[type - SS_BLACKFRAME]));
    } else {
        const UINT sides = type == SS_ETCHEDHORZ ? BF_TOP | BF_BOTTOM : type == SS_ETCHEDVERT ? BF_LEFT | BF_RIGHT : BF_RECT;
        DrawEdge(context, &rect, EDGE_ETCHED, sides);
    }
}

// The state is a copy: a parent that is asked for colours may destroy the control.
void Draw(HWND control, StaticState state, HDC context) {
    const int depth = SaveDC(context);
    SelectObject(context, state.font != nullptr ? static_cast<HGDIOBJ>(state.font) : GetStockObject(SYSTEM_FONT));
    RECT rect = {};
    GetClientRect(control, &rect);
    const DWORD type = TypeOf(control);
    const HBRUSH behind = ParentColors(control, context, WM_CTLCOLORSTATIC);
    if (type != SS_OWNERDRAW) {
        FillRect(context, &rect, behind);
    }
    switch (type) {
        case SS_OWNERDRAW:
            LetOwnerDraw(control, context, rect);
            break;
        case SS_ICON:
        case SS_BITMAP:
            DrawImage(control, state, context, rect);
            break;
        case SS_LEFT:
        case SS_CENTER:
        case SS_RIGHT:
        case SS_SIMPLE:
        case SS_LEFTNOWORDWRAP:
            DrawCaption(control, context, rect);
            break;
        default:
            DrawPlain(context, rect, type);
    }
    RestoreDC(context, depth);
}

void TellIfWanted(HWND control, WORD what) noexcept {
    if ((StyleOfControl(control) & SS_NOTIFY) != 0) {
        TellParent(control, what);
    }
}

LRESULT Handle(HWND control, StaticState& state, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_CREATE: {
            LoadByName(control, state, reinterpret_cast<const CREATESTRUCTW*>(lparam)->lpszName);
            return 0;
        }
        case WM_GETDLGCODE:
            return DLGC_STATIC;
        case WM_NCHITTEST:
            return (StyleOfControl(control) & SS_NOTIFY) != 0 ? HTCLIENT : HTTRANSPARENT;
        case WM_LBUTTONDOWN:
        case WM_NCLBUTTONDOWN:
            TellIfWanted(control, STN_CLICKED);
            return 0;
        case WM_LBUTTONDBLCLK:
        case WM_NCLBUTTONDBLCLK:
            TellIfWanted(control, STN_DBLCLK);
            return 0;
        case WM_ENABLE:
            TellIfWanted(control, wparam != FALSE ? STN_ENABLE : STN_DISABLE);
            InvalidateRect(control, nullptr, TRUE);
            return 0;
        case WM_SETTEXT: {
            const LRESULT result = DefWindowProcW(control, message, wparam, lparam);
            InvalidateRect(control, nullptr, TRUE);
            return result;
        }
        case WM_SETFONT:
            state.font = reinterpret_cast<HFONT>(wparam);
            if (LOWORD(static_cast<ULONG_PTR>(lparam)) != 0) {
                InvalidateRect(control, nullptr, TRUE);
            }
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(state.font);
        case STM_GETICON:
            return TypeOf(control) == SS_ICON ? reinterpret_cast<LRESULT>(state.image) : 0;
        case STM_SETICON:
            return reinterpret_cast<LRESULT>(SetImage(control, state, SS_ICON, reinterpret_cast<HANDLE>(wparam)));
        case STM_GETIMAGE:
            return reinterpret_cast<LRESULT>((wparam == IMAGE_BITMAP) == (TypeOf(control) == SS_BITMAP) ? state.image : nullptr);
        case STM_SETIMAGE:
            return reinterpret_cast<LRESULT>(
                SetImage(control, state, wparam == IMAGE_BITMAP ? SS_BITMAP : SS_ICON, reinterpret_cast<HANDLE>(lparam)));
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
        case WM_PRINTCLIENT:
            PaintControl(control, wparam, [&](HDC context) { Draw(control, state, context); });
            return 0;
        case WM_DESTROY:
            if (state.owns_bitmap) {
                DeleteObject(std::exchange(state.image, nullptr));
                state.owns_bitmap = false;
            }
            break;
        default:
            break;
    }
    return DefWindowProcW(control, message, wparam, lparam);
}

}  // namespace

LRESULT CALLBACK StaticProcedure(HWND control, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_NCCREATE && !MakeControlState<StaticState>(control)) {
        return FALSE;
    }
    if (message == WM_NCCREATE && (StyleOfControl(control) & SS_SUNKEN) != 0) {
        SetWindowLongW(control, GWL_EXSTYLE, GetWindowLongW(control, GWL_EXSTYLE) | static_cast<LONG>(WS_EX_STATICEDGE));
    }
    if (message == WM_NCDESTROY) {
        EndControlState<StaticState>(control);
    }
    StaticState* const state = ControlState<StaticState>(control);
    if (state == nullptr) {
        return DefWindowProcW(control, message, wparam, lparam);
    }
    return NoThrow([&] { return Handle(control, *state, message, wparam, lparam); });
}

}  // namespace kawin
