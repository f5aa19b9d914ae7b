#include "skin_push_button.h"

#include "memory_picture.h"

namespace kadata {
namespace {

DWORD TypeOf(HWND button) {
    return static_cast<DWORD>(::GetWindowLongW(button, GWL_STYLE)) & BS_TYPEMASK;
}

// After these a button draws itself at once on Windows, past WM_PAINT.
bool DrawsAtOnce(UINT message) {
    switch (message) {
        case BM_SETSTATE:
        case BM_SETCHECK:
        case BM_SETSTYLE:
        case WM_ENABLE:
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
        case WM_SETTEXT:
        case WM_SETFONT:
            return true;
        default:
            return false;
    }
}

}  // namespace

bool SkinPushButton::CanDraw(HWND window, DialogSurfaces& surfaces) {
    WCHAR name[8] = {};
    ::GetClassNameW(window, name, static_cast<int>(std::size(name)));
    if (CString(name).CompareNoCase(_T("Button")) != 0) {
        return false;
    }
    const DWORD type = TypeOf(window);
    const bool pushes = type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON;
    const bool checks = type == BS_CHECKBOX || type == BS_AUTOCHECKBOX;
    return pushes || (checks && surfaces.CheckBox() != nullptr);
}

LRESULT SkinPushButton::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_PRINTCLIENT:
            DrawOn(*CDC::FromHandle(reinterpret_cast<HDC>(wParam)));
            return 0;
        case WM_ERASEBKGND:
            return TRUE;  // everything is drawn at once
        case WM_MOUSEMOVE:
            SetHot(true);
            break;
        case WM_MOUSELEAVE:
            SetHot(false);
            break;
        default:
            if (DrawsAtOnce(message)) {
                return Silently(message, wParam, lParam);
            }
            break;
    }
    return CButton::WindowProc(message, wParam, lParam);
}

// The style decides whether a window's drawing is seen; WM_SETREDRAW would show it on the way back.
LRESULT SkinPushButton::Silently(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND button = m_hWnd;
    const bool visible = (GetStyle() & WS_VISIBLE) != 0;
    if (visible) {
        CButton::DefWindowProc(WM_SETREDRAW, FALSE, 0);
    }
    const LRESULT result = CButton::WindowProc(message, wParam, lParam);
    if (visible && FromHandlePermanent(button) == this) {
        CButton::DefWindowProc(WM_SETREDRAW, TRUE, 0);
        Invalidate(FALSE);
    }
    return result;
}

void SkinPushButton::SetHot(bool hot) {
    if (hot == hot_) {
        return;
    }
    hot_ = hot;
    if (hot) {
        TRACKMOUSEEVENT track = {sizeof(track), TME_LEAVE, m_hWnd, 0};
        TrackMouseEvent(&track);
    }
    Invalidate(FALSE);
}

bool SkinPushButton::IsCheckBox() const {
    const DWORD type = TypeOf(m_hWnd);
    return type == BS_CHECKBOX || type == BS_AUTOCHECKBOX;
}

bool SkinPushButton::ShowsFocus() const {
    return ::GetFocus() == m_hWnd && (SendMessage(WM_QUERYUISTATE) & UISF_HIDEFOCUS) == 0;
}

CSkin::ESkinBitmapType SkinPushButton::Type(bool isDefault) const {
    const int state = !IsWindowEnabled()               ? CSkin::SkinDisabled
                      : (GetState() & BST_PUSHED) != 0 ? CSkin::SkinPressed
                      : hot_                           ? CSkin::SkinHot
                                                       : CSkin::SkinNormal;
    return static_cast<CSkin::ESkinBitmapType>(state + (isDefault ? CSkin::SkinDefault : CSkin::SkinNormal));
}

void SkinPushButton::Paint() {
    CPaintDC dc(this);
    DrawOn(dc);
}

void SkinPushButton::DrawOn(CDC& target) {
    CRect rect;
    GetClientRect(rect);
    MemoryPicture picture(target, rect.Size());
    if (rect.IsRectEmpty() || !picture.IsValid()) {
        return;
    }
    CWnd* const dialog = GetParent();
    CRect client;
    CPoint corner;
    dialog->GetClientRect(client);
    MapWindowPoints(dialog, &corner, 1);
    surfaces_.FillBackground(picture.Context(), rect, client.Size(), corner);
    if (IsCheckBox()) {
        DrawCheckBox(picture.Context(), picture.Graphics(), rect);
    } else {
        DrawPushButton(picture.Context(), picture.Graphics(), rect);
    }
    picture.CopyTo(target);
}

void SkinPushButton::DrawPushButton(CDC& dc, Gdiplus::Graphics* graphics, const CRect& rect) {
    const CSkin::ESkinBitmapType type = Type(GetButtonStyle() == BS_DEFPUSHBUTTON);
    CString text;
    GetWindowText(text);
    surfaces_.Button().DrawButtonBitmap(graphics, type, rect);
    surfaces_.Button().DrawButtonCaption(graphics, type, rect, text, GetFont(), &dc);
    CRect mark = rect;
    const int distance = 3 * surfaces_.Line();
    mark.DeflateRect(distance, distance);
    DrawFocus(dc, mark);
}

// A button as high as the text, with the glyph upon it when it is checked, and the text beside it.
void SkinPushButton::DrawCheckBox(CDC& dc, Gdiplus::Graphics* graphics, const CRect& rect) {
    CSkin& surface = *surfaces_.CheckBox();
    CFont* const font = GetFont();
    CFont* const before = font != nullptr ? dc.SelectObject(font) : nullptr;
    TEXTMETRICW metrics = {};
    dc.GetTextMetrics(&metrics);
    const int side = std::min<int>(metrics.tmHeight, rect.Height());
    const CRect box(CPoint(0, (rect.Height() - side) / 2), CSize(side, side));
    const CSkin::ESkinBitmapType type = Type(ShowsFocus());
    const Gdiplus::GraphicsState state = graphics->Save();
    graphics->SetClip(Gdiplus::Rect(box.left, box.top, side, side));  // its corners may be larger than it
    surface.DrawButtonBitmap(graphics, type, box);
    if (GetCheck() == BST_CHECKED) {
        surface.DrawButtonCaption(graphics, type, box, CString(), GetFont(), nullptr);
    }
    graphics->Restore(state);
    graphics->Flush(Gdiplus::FlushIntentionSync);
    DrawCheckBoxText(dc, CRect(side + metrics.tmAveCharWidth, 0, rect.right, rect.bottom));
    if (before != nullptr) {
        dc.SelectObject(before);
    }
}

void SkinPushButton::DrawCheckBoxText(CDC& dc, CRect rect) {
    DWORD color = 0;
    DWORD disabled = 0;
    DWORD third = 0;
    DWORD highlight = 0;
    surfaces_.Button().GetCaptionTextColors(color, disabled, third, highlight);
    CString text;
    GetWindowText(text);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(IsWindowEnabled() ? color : disabled);
    dc.DrawText(text, rect, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS);
    CRect mark = rect;
    dc.DrawText(text, mark, DT_SINGLELINE | DT_CALCRECT);
    mark.left -= 1;
    mark.right = std::min(mark.right + 1, rect.right);
    mark.bottom = rect.bottom;
    DrawFocus(dc, mark);
}

void SkinPushButton::DrawFocus(CDC& dc, const CRect& rect) {
    if (ShowsFocus() && rect.Width() > 0 && rect.Height() > 0) {
        dc.SetTextColor(RGB(0, 0, 0));
        dc.SetBkColor(RGB(0xFF, 0xFF, 0xFF));
        dc.DrawFocusRect(rect);
    }
}

void SkinnedButtons::Add(HWND button, DialogSurfaces& surfaces) {
    if (CWnd::FromHandlePermanent(button) != nullptr || !SkinPushButton::CanDraw(button, surfaces)) {
        return;
    }
    buttons_.push_back(std::make_unique<SkinPushButton>(surfaces));
    buttons_.back()->SubclassWindow(button);
}

}  // namespace kadata
