#pragma once

// Objects that several threads hold together.

#include <afx.h>
#include <afxmt.h>
#include <kadata/export.h>

// An object that lives as long as somebody holds a reference to it. Whoever makes it holds the first one; the object is made
// with new and destroyed by the last Release, never by delete from outside. Any thread that holds a reference may call both
// functions. Constructing throws what CCriticalSection throws when the lock cannot be made.
class KADATA_API CRefCount {
public:
    CRefCount();
    CRefCount(const CRefCount&) = delete;
    CRefCount& operator=(const CRefCount&) = delete;

    // Takes one more reference. Returns this object.
    CRefCount* AddRef();

    // Gives one reference back; the last one destroys the object, after its lock has been left.
    void Release();

protected:
    virtual ~CRefCount();

private:
    CCriticalSection m_Lock;
    LONG m_Count = 1;  // guarded by m_Lock
};

// Gives one reference back at the end of a scope.
class KADATA_API CAutoReleaser {
public:
    // Adopts a reference that the caller holds; takes none of its own. Null is allowed.
    CAutoReleaser(CRefCount* object);
    CAutoReleaser(const CAutoReleaser&) = delete;
    ~CAutoReleaser();

    // Deliberate: copies the pointer alone. Nothing is added to the count, and what this guard held before is not given back;
    // one of the two guards must be set to CAutoReleaser(nullptr) before it ends.
    CAutoReleaser& operator=(const CAutoReleaser& other);

private:
    CRefCount* m_Object;
};
