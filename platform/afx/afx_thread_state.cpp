#include "afx_thread_state.h"

_AFX_THREAD_STATE* AfxGetThreadState() {
    static constinit thread_local _AFX_THREAD_STATE state = {};
    return &state;
}
