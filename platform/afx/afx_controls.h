#pragma once

// The system's static and button controls as objects.

#include "afx_wnd.h"

class KADATA_API CStatic : public CWnd {
    DECLARE_DYNAMIC(CStatic)

public:
    CStatic() = default;
    // SS_LEFT and the like. The number is that of texts and pictures that nobody asks for.
    virtual BOOL Create(LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id = 0xFFFF);

    // The one before; the control owns none of them.
    HICON SetIcon(HICON icon) { return reinterpret_cast<HICON>(SendMessage(STM_SETICON, reinterpret_cast<WPARAM>(icon))); }
    HICON GetIcon() const { return reinterpret_cast<HICON>(SendMessage(STM_GETICON)); }
    HBITMAP SetBitmap(HBITMAP bitmap) {
        return reinterpret_cast<HBITMAP>(SendMessage(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap)));
    }
    HBITMAP GetBitmap() const { return reinterpret_cast<HBITMAP>(SendMessage(STM_GETIMAGE, IMAGE_BITMAP)); }

    // Draws an SS_OWNERDRAW control; its parent passes the request on to it.
    virtual void DrawItem(LPDRAWITEMSTRUCT item);

protected:
    using CWnd::Create;
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class KADATA_API CButton : public CWnd {
    DECLARE_DYNAMIC(CButton)

public:
    CButton() = default;
    // BS_PUSHBUTTON and the like.
    virtual BOOL Create(LPCTSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // BST_UNCHECKED, BST_CHECKED, BST_INDETERMINATE.
    int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
    void SetCheck(int check) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(check)); }
    // The check in the lowest two bits; BST_PUSHED, BST_FOCUS.
    UINT GetState() const { return static_cast<UINT>(SendMessage(BM_GETSTATE)); }
    // Shown as pressed.
    void SetState(BOOL pressed) { SendMessage(BM_SETSTATE, static_cast<WPARAM>(pressed)); }
    UINT GetButtonStyle() const { return GetStyle() & 0xFF; }
    void SetButtonStyle(UINT style, BOOL redraw = TRUE) { SendMessage(BM_SETSTYLE, style, redraw); }
    void Click() { SendMessage(BM_CLICK); }

    // Draws a BS_OWNERDRAW button; its parent passes the request on to it.
    virtual void DrawItem(LPDRAWITEMSTRUCT item);

protected:
    using CWnd::Create;
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};
