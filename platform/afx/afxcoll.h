#pragma once

// The collections that are no templates in the classic interface.

#include "afx_map.h"
#include "afxtempl.h"

class KADATA_API CStringArray : public CArray<CString, const CString&> {
public:
    CStringArray() = default;
};

// Pointers to objects that stay their owner's.
class KADATA_API CObList : public CList<CObject*, CObject*> {
public:
    explicit CObList(INT_PTR blockSize = 10) : CList(blockSize) {}
};
