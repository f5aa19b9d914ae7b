#pragma once

// Menus, as far as a window's system menu needs them.

#include "afx_object.h"

// Owns its handle, like a drawing object (afx_gdi.h); a window's menus come as temporary objects. Positions and command numbers
// are told apart by MF_BYPOSITION and MF_BYCOMMAND.
class KADATA_API CMenu : public CObject {
    DECLARE_DYNCREATE(CMenu)

public:
    CMenu() = default;
    ~CMenu() override;

    HMENU GetSafeHmenu() const { return m_hMenu; }
    operator HMENU() const { return m_hMenu; }
    static CMenu* FromHandle(HMENU menu);
    static void DeleteTempMap();
    // FALSE for null and when the object has a handle already.
    BOOL Attach(HMENU menu);
    HMENU Detach();
    BOOL DestroyMenu();

    // The state before (MF_ENABLED, MF_GRAYED, MF_DISABLED), all bits set when there is no such item.
    UINT EnableMenuItem(UINT item, UINT enable) { return static_cast<UINT>(::EnableMenuItem(m_hMenu, item, enable)); }
    // All bits set when there is no such item.
    UINT GetMenuState(UINT item, UINT flags) const { return ::GetMenuState(m_hMenu, item, flags); }
    // -1 on failure.
    int GetMenuItemCount() const { return ::GetMenuItemCount(m_hMenu); }
    BOOL AppendMenu(UINT flags, UINT_PTR item = 0, LPCTSTR text = nullptr) { return ::AppendMenuW(m_hMenu, flags, item, text); }
    BOOL DeleteMenu(UINT item, UINT flags) { return ::DeleteMenu(m_hMenu, item, flags); }

    HMENU m_hMenu = nullptr;
};
