#include "afx_cmd_target.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

namespace {

// What is looked for in a table.
struct Command {
    UINT message;
    UINT code;
    UINT id;
};

bool Leads(const AFX_MSGMAP_ENTRY& entry, const Command& command) {
    return entry.nMessage == command.message && entry.nCode == command.code && command.id >= entry.nID &&
           command.id <= entry.nLastID;
}

}  // namespace

BOOL CCmdTarget::OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info) {
    const UINT parts = static_cast<UINT>(code);
    const UINT message = HIWORD(parts) != 0 ? HIWORD(parts) : WM_COMMAND;
    const Command command = {message, LOWORD(parts), id};
    for (const AFX_MSGMAP* map = GetMessageMap(); map != nullptr; map = AfxBaseOf(map)) {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->pfn != nullptr; ++entry) {
            if (!Leads(*entry, command)) {
                continue;
            }
            if (info != nullptr) {
                *info = {this, entry};
                return TRUE;
            }
            if (entry->pfn(*this, {message, 0, 0, id, static_cast<AFX_NOTIFY*>(extra)})) {
                return TRUE;
            }
        }
    }
    return FALSE;
}

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap() {
    static constexpr AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr, nullptr}};
    static constexpr AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const {
    return GetThisMessageMap();
}
