#pragma once

// A top-level window with a frame.

#include "afx_wnd.h"

// Belongs to itself: the object deletes itself when its window has ended, so that it is made by new.
class KADATA_API CFrameWnd : public CWnd {
    DECLARE_DYNCREATE(CFrameWnd)

public:
    CFrameWnd() = default;
    // Where the system chooses.
    static constexpr RECT rectDefault = {CW_USEDEFAULT, CW_USEDEFAULT, 0, 0};

    // A null class is one with the colour of windows. FALSE when the window could not be made; the object is gone then. There are
    // no menus: a menu's name is such a failure.
    virtual BOOL Create(LPCTSTR className, LPCTSTR title, DWORD style = WS_OVERLAPPEDWINDOW, const RECT& rect = rectDefault,
                        CWnd* parent = nullptr, LPCTSTR menuName = nullptr, DWORD exStyle = 0, LPVOID parameter = nullptr);
    BOOL PreCreateWindow(CREATESTRUCT& description) override;

protected:
    using CWnd::Create;
    void PostNcDestroy() override { delete this; }
};
