#include "afx_menu.h"

#include "afx_handle_map.h"

IMPLEMENT_DYNCREATE(CMenu, CObject)

namespace {

using MenuMap = afx::HandleMap<CMenu, &CMenu::m_hMenu>;

}  // namespace

CMenu::~CMenu() {
    CMenu::DestroyMenu();
}

CMenu* CMenu::FromHandle(HMENU menu) {
    return MenuMap::FromHandle(menu);
}

void CMenu::DeleteTempMap() {
    MenuMap::DeleteTemporaries();
}

BOOL CMenu::Attach(HMENU menu) {
    return MenuMap::Attach(*this, menu);
}

HMENU CMenu::Detach() {
    return MenuMap::Detach(*this);
}

BOOL CMenu::DestroyMenu() {
    const HMENU menu = Detach();
    return menu != nullptr && ::DestroyMenu(menu);
}
