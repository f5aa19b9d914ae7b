#pragma once

// The device contexts of windows. They are the window's as long as the object lives; all but CPaintDC are the screen's with a
// null window. The constructors throw CResourceException* when the system gives none.

#include "afx_dc.h"

class CWnd;

class KADATA_API CClientDC : public CDC {
    DECLARE_DYNAMIC(CClientDC)

public:
    explicit CClientDC(CWnd* window);
    ~CClientDC() override;

protected:
    HWND m_hWnd;
};

// The whole window, its frame included.
class KADATA_API CWindowDC : public CDC {
    DECLARE_DYNAMIC(CWindowDC)

public:
    explicit CWindowDC(CWnd* window);
    ~CWindowDC() override;

protected:
    HWND m_hWnd;
};

// BeginPaint and EndPaint: to be made once in each WM_PAINT. The window must not be null.
class KADATA_API CPaintDC : public CDC {
    DECLARE_DYNAMIC(CPaintDC)

public:
    explicit CPaintDC(CWnd* window);
    ~CPaintDC() override;

    PAINTSTRUCT m_ps = {};

protected:
    HWND m_hWnd;
};
