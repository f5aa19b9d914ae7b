#pragma once

// Objects that receive commands, and the tables that lead messages to their handlers (afx_message_map.h makes them).

#include <windows.h>

#include "afx_object.h"

class CCmdTarget;

// What a handler is called for. Of a command or a notification only `id` and `notification` count.
struct AfxMessage {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    UINT id = 0;                                // the control or command
    struct AFX_NOTIFY* notification = nullptr;  // of WM_NOTIFY only
};

// OnCmdMsg's extra argument for a WM_NOTIFY.
struct AFX_NOTIFY {
    LRESULT* pResult;
    NMHDR* pNMHDR;
};

struct AFX_MSGMAP_ENTRY {
    UINT nMessage;  // WM_COMMAND and WM_NOTIFY for what comes by OnCmdMsg; 0 for a registered message
    UINT nCode;     // the control's notification, its low 16 bits
    UINT nID;       // first and last control
    UINT nLastID;
    const UINT* registered;  // the number of the registered message, else null
    // Calls the handler. For a command or notification, 0 means that the next one is to be asked.
    LRESULT (*pfn)(CCmdTarget& target, const AfxMessage& message);  // null ends the table
};

struct AFX_MSGMAP {
    const AFX_MSGMAP* (*pfnGetBaseMap)();  // null for the last class
    const AFX_MSGMAP_ENTRY* lpEntries;
};

// Null at the end.
inline const AFX_MSGMAP* AfxBaseOf(const AFX_MSGMAP* map) {
    return map->pfnGetBaseMap != nullptr ? map->pfnGetBaseMap() : nullptr;
}

// Who would handle a command, when OnCmdMsg is asked but shall not call.
struct AFX_CMDHANDLERINFO {
    CCmdTarget* pTarget;
    const AFX_MSGMAP_ENTRY* pEntry;
};

// Marks handlers; says nothing to the compiler.
#define afx_msg

#define DECLARE_MESSAGE_MAP()                     \
protected:                                        \
    static const AFX_MSGMAP* GetThisMessageMap(); \
    const AFX_MSGMAP* GetMessageMap() const override;

// The code of a command that no control has sent.
constexpr int CN_COMMAND = 0;
// Added to the notifications that a control sends its parent when the control itself is asked for a handler.
constexpr UINT WM_REFLECT_BASE = 0xBC00;

class KADATA_API CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)

public:
    // Looks for the handler of command `id`. `code` holds the notification in its low and the message (0: WM_COMMAND) in its high
    // half; `extra` is the AFX_NOTIFY of a WM_NOTIFY. The most derived class is asked first. TRUE when a handler has taken it;
    // with `info`, the handler is written there and not called.
    virtual BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info);

protected:
    CCmdTarget() = default;
    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
};
