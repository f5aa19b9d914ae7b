#pragma once

// The table of window classes. Safe from every thread.

#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "window_classes.h"

namespace kawin {

// A registered class. Lives as long as a window of it, registered or not.
struct WindowClass {
    std::u16string name;
    ATOM atom = 0;
    bool system = false;  // of no instance, never unregistered
    HINSTANCE instance = nullptr;
    int class_extra = 0;
    int window_extra = 0;
    // SetClassLongPtrW changes these in any thread:
    std::atomic<UINT> style{0};
    std::atomic<WNDPROC> procedure{nullptr};
    std::atomic<HICON> icon{nullptr};
    std::atomic<HICON> small_icon{nullptr};
    std::atomic<HCURSOR> cursor{nullptr};
    std::atomic<HBRUSH> background{nullptr};
    std::vector<BYTE> extra;  // guarded by the table's mutex
    std::atomic<int> windows{0};
};
using ClassRef = std::shared_ptr<WindowClass>;

// A class of the system's own, found whatever the instance; hInstance of `description` does not count. Throws std::bad_alloc.
void RegisterSystemClass(const WNDCLASSEXW& description);

// By name or atom. Null when there is none; the last error stays.
ClassRef FindClass(LPCWSTR name, HINSTANCE instance);

// Atoms are numbers for names without regard to case, for classes, messages and properties alike. 0 without memory or room.
ATOM AtomOf(std::u16string_view name);    // made when there is none
ATOM FindAtom(std::u16string_view name);  // 0 when there is none
ATOM AtomOfName(LPCWSTR name);            // of a name that may be an atom (MAKEINTATOM); 0 when there is none

}  // namespace kawin
