#pragma once

// CMapPtrToPtr: a map from pointers to pointers, none of which it owns. Whoever changes it while it is walked through starts
// anew, but may remove the association that he was given last.

#include <unordered_map>

#include "afx_object.h"
#include "afxtempl.h"

class KADATA_API CMapPtrToPtr : public CObject {
public:
    // The classic interface allocates in blocks of this size; here it is only remembered as accepted.
    explicit CMapPtrToPtr(INT_PTR /*blockSize*/ = 10) {}

    INT_PTR GetCount() const { return static_cast<INT_PTR>(m_values.size()); }
    INT_PTR GetSize() const { return GetCount(); }
    BOOL IsEmpty() const { return m_values.empty(); }

    // FALSE, and `value` stays, when there is no such key.
    BOOL Lookup(void* key, void*& value) const {
        const auto found = m_values.find(key);
        if (found == m_values.end()) {
            return FALSE;
        }
        value = found->second;
        return TRUE;
    }
    // Null for a key that there was not; it is there afterwards.
    void*& operator[](void* key) { return m_values[key]; }
    void SetAt(void* key, void* value) { m_values[key] = value; }
    BOOL RemoveKey(void* key) { return m_values.erase(key) != 0; }
    void RemoveAll() { m_values.clear(); }

    // All associations, in no particular order. Null when there is none, or none any more.
    POSITION GetStartPosition() const { return PositionOf(m_values.begin()); }
    void GetNextAssoc(POSITION& at, void*& key, void*& value) const {
        const auto found = at != nullptr ? m_values.find(*reinterpret_cast<void* const*>(at)) : m_values.end();
        if (found == m_values.end()) {
            AfxThrowInvalidArgException();
        }
        key = found->first;
        value = found->second;
        at = PositionOf(std::next(found));
    }

private:
    using Values = std::unordered_map<void*, void*>;

    // The address of the key, which stays in its place.
    POSITION PositionOf(Values::const_iterator at) const {
        return at != m_values.end() ? reinterpret_cast<POSITION>(const_cast<void**>(&at->first)) : nullptr;
    }

    Values m_values;
};
