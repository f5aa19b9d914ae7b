#include "menus.h"

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "../base/error_map.h"
#include "../base/text_length.h"
#include "../text/no_throw.h"
#include "desktop_state.h"
#include "menu_table.h"
#include "window_tree.h"

namespace kawin {
namespace {

struct Item {
    UINT state = 0;  // MF_*, without MF_BYPOSITION
    UINT id = 0;
    std::u16string text;
};

struct Menu {
    HWND owner = nullptr;  // of a system menu
    std::vector<Item> items;
};

struct Menus {
    std::mutex mutex;
    std::map<ULONG_PTR, Menu> all;   // guarded by mutex
    ULONG_PTR next_handle = 0x4001;  // guarded by mutex
};

// Never destroyed: windows may go while the process ends.
Menus& TheMenus() {
    static Menus* const menus = new Menus;
    return *menus;
}

constexpr UINT kStates = MF_GRAYED | MF_DISABLED | MF_CHECKED;
constexpr UINT kKnownFlags = kStates | MF_SEPARATOR | MF_BYPOSITION;
constexpr UINT kNone = static_cast<UINT>(-1);

// The menus with their lock.
class MenuLock {
public:
    MenuLock() : lock_(TheMenus().mutex) {}

    Menus* operator->() const noexcept { return &TheMenus(); }

    // Null with ERROR_INVALID_MENU_HANDLE.
    Menu* Find(HMENU handle) const noexcept {
        const auto found = TheMenus().all.find(reinterpret_cast<ULONG_PTR>(handle));
        if (found == TheMenus().all.end()) {
            SetLastError(ERROR_INVALID_MENU_HANDLE);
            return nullptr;
        }
        return &found->second;
    }

    // Null with ERROR_MENU_ITEM_NOT_FOUND too.
    Item* Find(HMENU handle, UINT item, UINT flags) const noexcept {
        Menu* const menu = Find(handle);
        const std::optional<std::size_t> place = menu != nullptr ? PlaceOf(*menu, item, flags) : std::nullopt;
        if (menu != nullptr && !place) {
            SetLastError(ERROR_MENU_ITEM_NOT_FOUND);
        }
        return place ? &menu->items[*place] : nullptr;
    }

    static std::optional<std::size_t> PlaceOf(const Menu& menu, UINT item, UINT flags) noexcept {
        if ((flags & MF_BYPOSITION) != 0) {
            return item < menu.items.size() ? std::optional<std::size_t>(item) : std::nullopt;
        }
        const auto found = std::ranges::find_if(
            menu.items, [&](const Item& each) { return each.id == item && (each.state & MF_SEPARATOR) == 0; });
        return found != menu.items.end() ? std::optional(static_cast<std::size_t>(found - menu.items.begin())) : std::nullopt;
    }

private:
    std::unique_lock<std::mutex> lock_;
};

HMENU AddMenu(Menu menu) {
    const MenuLock menus;
    const ULONG_PTR handle = menus->next_handle;
    menus->next_handle += 2;
    menus->all.emplace(handle, std::move(menu));
    return reinterpret_cast<HMENU>(handle);
}

std::vector<Item> StandardItems() {
    return {{0, SC_RESTORE, u"&Restore"},    {0, SC_MOVE, u"&Move"},         {0, SC_SIZE, u"&Size"},
            {0, SC_MINIMIZE, u"Mi&nimize"},  {0, SC_MAXIMIZE, u"Ma&ximize"}, {MF_SEPARATOR, 0, u""},
            {0, SC_CLOSE, u"&Close\tAlt+F4"}};
}

// The box in the caption follows the item. Without any lock held.
void ShowChange(HWND owner) {
    if (owner != nullptr && GetWindowThreadProcessId(owner, nullptr) == CurrentThreadId() && IsWindowVisible(owner)) {
        SendMessageW(owner, WM_NCPAINT, 1, 0);
    }
}

// The state before, of the bits in `mask`.
UINT ChangeState(HMENU handle, UINT item, UINT flags, UINT mask) {
    HWND owner = nullptr;
    UINT before = 0;
    {
        const MenuLock menus;
        Item* const found = menus.Find(handle, item, flags);
        if (found == nullptr) {
            return kNone;
        }
        owner = menus.Find(handle)->owner;
        before = found->state & mask;
        found->state = (found->state & ~mask) | (flags & mask);
    }
    ShowChange(owner);
    return before;
}

BOOL Insert(HMENU handle, std::optional<UINT> before, UINT flags, UINT_PTR id, LPCWSTR text) {
    if ((flags & ~kKnownFlags) != 0) {
        return Fail(ERROR_INVALID_PARAMETER);
    }
    Item item{flags & ~MF_BYPOSITION, (flags & MF_SEPARATOR) != 0 ? 0 : static_cast<UINT>(id), {}};
    if (text != nullptr && (flags & MF_SEPARATOR) == 0) {
        item.text.assign(text, TextLength(text));
    }
    const MenuLock menus;
    Menu* const menu = menus.Find(handle);
    if (menu == nullptr) {
        return FALSE;
    }
    const std::optional<std::size_t> place = before ? MenuLock::PlaceOf(*menu, *before, flags) : std::nullopt;
    if (before && !place && (flags & MF_BYPOSITION) == 0) {
        return Fail(ERROR_MENU_ITEM_NOT_FOUND);
    }
    menu->items.insert(menu->items.begin() + static_cast<std::ptrdiff_t>(place.value_or(menu->items.size())), std::move(item));
    return TRUE;
}

int CopyText(const Item& item, LPWSTR target, int capacity) noexcept {
    if (target == nullptr || capacity <= 0) {
        return static_cast<int>(item.text.size());
    }
    const std::size_t count = std::min(item.text.size(), static_cast<std::size_t>(capacity) - 1);
    std::copy_n(item.text.data(), count, target);
    target[count] = 0;
    return static_cast<int>(count);
}

}  // namespace

HMENU OwnSystemMenu(HWND window) {
    const DesktopLock desktop;
    const Window* const found = desktop.Look(window);
    return found != nullptr ? found->frame.menu : nullptr;
}

void ForgetSystemMenu(HWND window) {
    HMENU menu = nullptr;
    {
        const DesktopLock desktop;
        if (Window* const found = desktop.Look(window)) {
            menu = std::exchange(found->frame.menu, nullptr);
        }
    }
    if (menu != nullptr) {
        DestroyMenu(menu);
    }
}

namespace {

HMENU MakeSystemMenu(HWND window) {
    const HMENU made = AddMenu({window, StandardItems()});
    const DesktopLock desktop;
    if (Window* const found = desktop.Look(window)) {
        found->frame.menu = made;
    }
    return made;
}

HMENU SystemMenu(HWND window, bool revert) {
    if (!IsWindow(window)) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    if (revert) {
        ForgetSystemMenu(window);
        ShowChange(window);
        return nullptr;
    }
    if ((static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)) & WS_SYSMENU) == 0) {
        return nullptr;
    }
    const HMENU own = OwnSystemMenu(window);
    return own != nullptr ? own : MakeSystemMenu(window);
}

}  // namespace
}  // namespace kawin

using kawin::Item;
using kawin::kNone;
using kawin::Menu;
using kawin::MenuLock;
using kawin::NoThrow;

HMENU CreatePopupMenu() noexcept {
    return NoThrow([] { return kawin::AddMenu({}); });
}

BOOL DestroyMenu(HMENU menu) noexcept {
    const MenuLock menus;
    return menus->all.erase(reinterpret_cast<ULONG_PTR>(menu)) != 0 || kawin::Fail(ERROR_INVALID_MENU_HANDLE);
}

BOOL IsMenu(HMENU menu) noexcept {
    const DWORD error = GetLastError();
    const bool found = MenuLock().Find(menu) != nullptr;
    SetLastError(error);
    return found;
}

HMENU GetSystemMenu(HWND window, BOOL revert) noexcept {
    return NoThrow([&] { return kawin::SystemMenu(window, revert != FALSE); });
}

BOOL AppendMenuW(HMENU menu, UINT flags, UINT_PTR id, LPCWSTR text) noexcept {
    return NoThrow([&] { return kawin::Insert(menu, std::nullopt, flags, id, text); });
}

BOOL InsertMenuW(HMENU menu, UINT position, UINT flags, UINT_PTR id, LPCWSTR text) noexcept {
    return NoThrow([&] { return kawin::Insert(menu, position, flags, id, text); });
}

BOOL DeleteMenu(HMENU handle, UINT item, UINT flags) noexcept {
    HWND owner = nullptr;
    {
        const MenuLock menus;
        Item* const found = menus.Find(handle, item, flags);
        if (found == nullptr) {
            return FALSE;
        }
        Menu& menu = *menus.Find(handle);
        owner = menu.owner;
        menu.items.erase(menu.items.begin() + (found - menu.items.data()));
    }
    kawin::ShowChange(owner);
    return TRUE;
}

BOOL RemoveMenu(HMENU menu, UINT item, UINT flags) noexcept {
    return DeleteMenu(menu, item, flags);
}

BOOL EnableMenuItem(HMENU menu, UINT item, UINT flags) noexcept {
    return static_cast<BOOL>(kawin::ChangeState(menu, item, flags, MF_GRAYED | MF_DISABLED));
}

DWORD CheckMenuItem(HMENU menu, UINT item, UINT flags) noexcept {
    return kawin::ChangeState(menu, item, flags, MF_CHECKED);
}

UINT GetMenuState(HMENU menu, UINT item, UINT flags) noexcept {
    const MenuLock menus;
    const Item* const found = menus.Find(menu, item, flags);
    return found != nullptr ? found->state : kNone;
}

int GetMenuItemCount(HMENU handle) noexcept {
    const MenuLock menus;
    const Menu* const menu = menus.Find(handle);
    return menu != nullptr ? static_cast<int>(menu->items.size()) : -1;
}

UINT GetMenuItemID(HMENU menu, int position) noexcept {
    const MenuLock menus;
    const Item* const found = menus.Find(menu, static_cast<UINT>(position), MF_BYPOSITION);
    return found != nullptr ? found->id : kNone;
}

int GetMenuStringW(HMENU menu, UINT item, LPWSTR target, int capacity, UINT flags) noexcept {
    const MenuLock menus;
    const Item* const found = menus.Find(menu, item, flags);
    return found != nullptr ? kawin::CopyText(*found, target, capacity) : 0;
}
