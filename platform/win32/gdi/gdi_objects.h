#pragma once

// The table of drawing objects: what DeleteObject, SelectObject and DeleteDC know. Safe from every thread; the objects
// themselves belong to one thread at a time. An object that is in use somewhere lives until it is not, deleted or not.

#include <memory>

#include "gdi_types.h"

namespace kawin {

class GdiObject {
public:
    GdiObject() = default;
    GdiObject(const GdiObject&) = delete;
    GdiObject& operator=(const GdiObject&) = delete;
    virtual ~GdiObject() = default;

    // One of OBJ_PEN, OBJ_BRUSH, OBJ_DC, OBJ_FONT, OBJ_BITMAP, OBJ_REGION, OBJ_MEMDC.
    virtual DWORD Type() const noexcept = 0;

    // GetObjectW of it: the bytes written, or needed for a null target. 0 with ERROR_INVALID_PARAMETER when the capacity is less,
    // ERROR_INVALID_HANDLE for an object that has no description.
    virtual int Describe(int capacity, void* target) const noexcept;

    // Stock objects stay whoever deletes them.
    bool IsStock() const noexcept { return stock_; }
    void MakeStock() noexcept { stock_ = true; }

    // The handle it was given; for those who answer with a handle when they have the object.
    HGDIOBJ Handle() const noexcept { return handle_; }

private:
    friend HGDIOBJ AddGdiObject(std::shared_ptr<GdiObject> object) noexcept;
    bool stock_ = false;
    HGDIOBJ handle_ = nullptr;
};

// A new handle. Null with ERROR_NOT_ENOUGH_MEMORY without memory, or for a null object. A handle that was removed does not
// come again for a long time.
HGDIOBJ AddGdiObject(std::shared_ptr<GdiObject> object) noexcept;

// Null when there is none behind the handle; the last error stays.
std::shared_ptr<GdiObject> FindGdiObject(HGDIOBJ handle) noexcept;

// Null when it is of another class, too.
template <class T>
std::shared_ptr<T> FindGdi(HGDIOBJ handle) noexcept {
    return std::dynamic_pointer_cast<T>(FindGdiObject(handle));
}

// False when there is none behind the handle.
bool RemoveGdiObject(HGDIOBJ handle) noexcept;

// How many there are, stock objects left out: for tests that look for leaks.
KADATA_API std::size_t CountGdiObjects() noexcept;

}  // namespace kawin
