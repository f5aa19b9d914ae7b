// How buttons look.

#include <string>

#include "../gdi/copies.h"
#include "../gdi/fonts.h"
#include "../gdi/shapes.h"
#include "../gdi/text.h"
#include "../text/no_throw.h"
#include "button.h"
#include "colors.h"
#include "control_state.h"
#include "frame_drawing.h"
#include "icons.h"
#include "rectangles.h"

namespace kawin {
namespace {

constexpr int kMarkSize = 13;
constexpr int kMarkGap = 4;
constexpr int kPushInset = 2;  // of text, from the focus rectangle
constexpr int kGroupTextInset = 9;

std::u16string TextOf(HWND control) {
    std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(control)), u'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(control, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

UINT TextFormat(DWORD style, UINT otherwise) noexcept {
    UINT format = (style & BS_MULTILINE) != 0 ? DT_WORDBREAK : DT_SINGLELINE;
    switch (style & BS_CENTER) {
        case BS_LEFT:
            break;
        case BS_RIGHT:
            format |= DT_RIGHT;
            break;
        case BS_CENTER:
            format |= DT_CENTER;
            break;
        default:
            format |= otherwise;
    }
    const DWORD vertical = style & BS_VCENTER;
    return format | (vertical == BS_TOP ? DT_TOP : vertical == BS_BOTTOM ? DT_BOTTOM : DT_VCENTER);
}

// What the text covers of `rect`. Several lines have no vertical place of their own: their block is put where it belongs.
RECT TextPlace(HDC context, const std::u16string& text, const RECT& rect, UINT format) {
    RECT block = rect;
    DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &block, (format & ~(DT_VCENTER | DT_BOTTOM)) | DT_CALCRECT);
    const LONG right = rect.right - rect.left - (block.right - block.left);
    const LONG below = rect.bottom - rect.top - (block.bottom - block.top);
    OffsetRect(&block,
               (format & DT_RIGHT) != 0    ? right
               : (format & DT_CENTER) != 0 ? right / 2
                                           : 0,
               (format & DT_BOTTOM) != 0    ? below
               : (format & DT_VCENTER) != 0 ? below / 2
                                            : 0);
    return block;
}

void DrawCaption(HDC context, const std::u16string& text, RECT rect, UINT format, bool enabled) {
    SetBkMode(context, TRANSPARENT);
    if ((format & DT_SINGLELINE) == 0) {
        rect.top = TextPlace(context, text, rect, format).top;
    }
    if (!enabled) {
        RECT lit = rect;
        OffsetRect(&lit, 1, 1);
        SetTextColor(context, GetSysColor(COLOR_BTNHIGHLIGHT));
        DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &lit, format);
        SetTextColor(context, GetSysColor(COLOR_GRAYTEXT));
    }
    DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &rect, format);
}

void DrawImage(HDC context, HANDLE image, const RECT& rect, DWORD style) {
    const int middle_x = (rect.left + rect.right) / 2;
    const int middle_y = (rect.top + rect.bottom) / 2;
    if ((style & BS_ICON) != 0) {
        ICONINFO info = {};
        if (GetIconInfo(static_cast<HICON>(image), &info)) {
            BITMAP size = {};
            GetObjectW(info.hbmMask, sizeof(size), &size);
            const int height = info.hbmColor != nullptr ? size.bmHeight : size.bmHeight / 2;
            DrawIcon(context, middle_x - size.bmWidth / 2, middle_y - height / 2, static_cast<HICON>(image));
            DeleteObject(info.hbmMask);
            DeleteObject(info.hbmColor);
        }
        return;
    }
    BITMAP size = {};
    if (GetObjectW(image, sizeof(size), &size) != 0) {
        const HDC memory = CreateCompatibleDC(context);
        const HGDIOBJ before = SelectObject(memory, image);
        BitBlt(context, middle_x - size.bmWidth / 2, middle_y - size.bmHeight / 2, size.bmWidth, size.bmHeight, memory, 0, 0,
               SRCCOPY);
        SelectObject(memory, before);
        DeleteDC(memory);
    }
}

void DrawPush(HWND button, const ButtonState& state, HDC context, RECT rect) {
    const DWORD style = StyleOfControl(button);
    const bool enabled = IsWindowEnabled(button) != FALSE;
    const bool pushed = (state.state & BST_PUSHED) != 0;
    FillRect(context, &rect, ParentColors(button, context, WM_CTLCOLORBTN));
    if (ButtonType(style) == BS_DEFPUSHBUTTON) {
        FrameRect(context, &rect, GetSysColorBrush(COLOR_WINDOWFRAME));
        InflateRect(&rect, -1, -1);
    }
    UINT look = DFCS_BUTTONPUSH;
    look |= pushed ? DFCS_PUSHED : 0;
    look |= enabled ? 0 : DFCS_INACTIVE;
    look |= (state.state & (BST_CHECKED | BST_INDETERMINATE)) != 0 ? DFCS_CHECKED : 0;
    DrawFrameControl(context, &rect, DFC_BUTTON, look);
    InflateRect(&rect, -3, -3);
    RECT content = rect;
    if (pushed) {
        OffsetRect(&content, 1, 1);
    }
    if (state.image != nullptr && (style & (BS_ICON | BS_BITMAP)) != 0) {
        DrawImage(context, state.image, content, style);
    } else {
        SetTextColor(context, GetSysColor(COLOR_BTNTEXT));
        InflateRect(&content, -kPushInset, 0);
        DrawCaption(context, TextOf(button), content, TextFormat(style, DT_CENTER), enabled);
    }
    if ((state.state & BST_FOCUS) != 0) {
        DrawFocusRect(context, &rect);
    }
}

UINT MarkLook(const ButtonState& state, DWORD type, bool enabled) noexcept {
    const UINT check = state.state & (BST_CHECKED | BST_INDETERMINATE);
    UINT look = type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON ? DFCS_BUTTONRADIO
                : check == BST_INDETERMINATE                         ? DFCS_BUTTON3STATE
                                                                     : DFCS_BUTTONCHECK;
    look |= check != BST_UNCHECKED ? DFCS_CHECKED : 0;
    look |= (state.state & BST_PUSHED) != 0 ? DFCS_PUSHED : 0;
    return look | (enabled ? 0 : DFCS_INACTIVE);
}

void DrawMark(HWND button, const ButtonState& state, HDC context, const RECT& client) {
    RECT rect = client;
    const DWORD style = StyleOfControl(button);
    const bool enabled = IsWindowEnabled(button) != FALSE;
    FillRect(context, &rect, ParentColors(button, context, WM_CTLCOLORSTATIC));
    const DWORD vertical = style & BS_VCENTER;
    const int top = vertical == BS_TOP      ? rect.top
                    : vertical == BS_BOTTOM ? rect.bottom - kMarkSize
                                            : (rect.top + rect.bottom - kMarkSize) / 2;
    const int left = (style & BS_LEFTTEXT) != 0 ? rect.right - kMarkSize : rect.left;
    RECT mark = {left, top, left + kMarkSize, top + kMarkSize};
    DrawFrameControl(context, &mark, DFC_BUTTON, MarkLook(state, ButtonType(style), enabled));
    (style & BS_LEFTTEXT) != 0 ? rect.right -= kMarkSize + kMarkGap : rect.left += kMarkSize + kMarkGap;
    const std::u16string text = TextOf(button);
    const UINT format = TextFormat(style, DT_LEFT);
    DrawCaption(context, text, rect, format, enabled);
    if ((state.state & BST_FOCUS) != 0 && !text.empty()) {
        RECT around = TextPlace(context, text, rect, format);
        InflateRect(&around, kMarkGap / 2, 1);
        IntersectRect(&around, &around, &client);
        DrawFocusRect(context, &around);
    }
}

void DrawGroup(HWND button, HDC context, RECT rect) {
    const HBRUSH behind = ParentColors(button, context, WM_CTLCOLORSTATIC);
    const std::u16string text = TextOf(button);
    TEXTMETRICW metrics = {};
    GetTextMetricsW(context, &metrics);
    RECT frame = rect;
    frame.top += metrics.tmHeight / 2;
    DrawEdge(context, &frame, EDGE_ETCHED, BF_RECT | BF_FLAT);
    if (text.empty()) {
        return;
    }
    RECT caption = {rect.left + kGroupTextInset, rect.top, rect.right - kGroupTextInset, rect.top + metrics.tmHeight};
    DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &caption, DT_SINGLELINE | DT_CALCRECT);
    RECT gap = {caption.left - 2, caption.top, caption.right + 2, caption.bottom};
    FillRect(context, &gap, behind);
    DrawCaption(context, text, caption, DT_SINGLELINE, IsWindowEnabled(button) != FALSE);
}

void LetOwnerDraw(HWND button, const ButtonState& state, HDC context, const RECT& rect, UINT action) {
    ParentColors(button, context, WM_CTLCOLORBTN);
    DRAWITEMSTRUCT item = {};
    item.CtlType = ODT_BUTTON;
    item.CtlID = static_cast<UINT>(GetDlgCtrlID(button));
    item.itemAction = action;
    item.itemState = ((state.state & BST_FOCUS) != 0 ? ODS_FOCUS : 0) | ((state.state & BST_PUSHED) != 0 ? ODS_SELECTED : 0) |
                     (IsWindowEnabled(button) ? 0 : ODS_DISABLED);
    item.hwndItem = button;
    item.hDC = context;
    item.rcItem = rect;
    SendMessageW(GetParent(button), WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
}

void Draw(HWND button, const ButtonState& state, HDC context, UINT action) {
    const int depth = SaveDC(context);
    SelectObject(context, state.font != nullptr ? static_cast<HGDIOBJ>(state.font) : GetStockObject(SYSTEM_FONT));
    RECT rect = {};
    GetClientRect(button, &rect);
    const DWORD style = StyleOfControl(button);
    const DWORD type = ButtonType(style);
    if (type == BS_OWNERDRAW) {
        LetOwnerDraw(button, state, context, rect, action);
    } else if (type == BS_GROUPBOX) {
        DrawGroup(button, context, rect);
    } else if (IsPushType(type) || (style & BS_PUSHLIKE) != 0) {
        DrawPush(button, state, context, rect);
    } else {
        DrawMark(button, state, context, rect);
    }
    RestoreDC(context, depth);
}

}  // namespace

void DrawButton(HWND button, ButtonState state, HDC context, UINT action) noexcept {
    NoThrow([&]() -> BOOL {
        Draw(button, state, context, action);
        return TRUE;
    });
}

}  // namespace kawin
