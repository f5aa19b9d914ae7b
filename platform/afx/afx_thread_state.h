#pragma once

// What the foundation knows of the calling thread.

#include <windows.h>

#include "../kadata_export.h"

class CWinThread;
class CWnd;

// Deliberate: the traditional name, under which code that passes messages around a CWnd asks for it.
struct _AFX_THREAD_STATE {
    // The message that a CWnd of this thread is handling; CWnd::Default passes it on. Whoever puts himself between a window and
    // its CWnd saves it, sets it for the message that he hands on, and puts it back.
    MSG m_lastSentMsg;

    CWinThread* m_pCurrentWinThread;  // null in a thread without one
    CWnd* m_pWndInit;                 // the object that the window being created belongs to, until its first message
    POINT m_ptCursorLast;             // of the last mouse message that counted for idle work
    UINT m_nMsgLast;
};

// Never null; valid until the thread ends.
KADATA_API _AFX_THREAD_STATE* AfxGetThreadState();
