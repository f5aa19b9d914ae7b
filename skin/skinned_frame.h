#pragma once

// The skinned frame of a dialog: where it is, how it looks, and its close box.

#include <afxwin.h>

#include "dialog_surfaces.h"

namespace kadata {

class SkinnedFrame {
public:
    // The window and the surfaces outlive this.
    SkinnedFrame(CWnd& window, DialogSurfaces& surfaces) : window_(window), surfaces_(surfaces) {}
    SkinnedFrame(const SkinnedFrame&) = delete;
    SkinnedFrame& operator=(const SkinnedFrame&) = delete;

    // Makes a rectangle of the client area one of the window, or the other way round.
    void AddTo(RECT& client) const;
    void TakeFrom(RECT& window) const;

    // The messages of the frame. TRUE: that was all, and `result` is the message's.
    bool Handle(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    // After the window has handled a message: whether the system has drawn over the frame then.
    static bool IsSpoiledBy(UINT message);
    void Draw();
    // 0,0 being the corner of the window; the client area stays.
    void Draw(CDC& dc);

private:
    CRect Outer() const;     // all rectangles count from the window's corner
    CRect CloseBox() const;  // empty without one
    bool CanClose() const;
    LRESULT HitTest(CPoint screen) const;
    bool IsOverCloseBox(CPoint screen) const;
    int CaptionHeight() const;
    CPoint ToScreen(LPARAM client) const;

    bool HandleLook(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool HandlePointer(UINT message, WPARAM wParam, LPARAM lParam);
    void Print(WPARAM dc, LPARAM parts);
    void SetHot(bool hot);
    void Press();
    void Follow(CPoint screen);
    void Release(CPoint screen);

    void DrawCaption(CDC& dc, Gdiplus::Graphics* graphics);
    void DrawCloseBox(Gdiplus::Graphics* graphics);

    CWnd& window_;
    DialogSurfaces& surfaces_;
    bool active_ = true;
    bool hot_ = false;      // the pointer is over the close box
    bool pressed_ = false;  // the button went down on it, and has not come up
};

}  // namespace kadata
