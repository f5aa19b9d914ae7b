#pragma once

// The inside of the class table, for the functions that change it.

#include <mutex>

#include "../base/utf.h"
#include "class_table.h"

namespace kawin {

struct ClassRegistry {
    std::mutex mutex;
    std::vector<ClassRef> classes;  // guarded by mutex

    // A class of that instance, else a global one, else one of the system. With the mutex held.
    ClassRef Find(ATOM atom, HINSTANCE instance) const noexcept;
};

ClassRegistry& TheClasses();

// Once per process; without the mutex held.
void RegisterSystemClassesOnce();

// Of a checked description. Throws std::bad_alloc; its atom is 0 when there is no room for one more name.
ClassRef MakeClass(const WNDCLASSEXW& description);

}  // namespace kawin
