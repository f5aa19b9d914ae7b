#pragma once

// Globally unique identifiers.

#include "types.h"

struct GUID {
    DWORD Data1;
    WORD Data2;
    WORD Data3;
    BYTE Data4[8];

    friend bool operator==(const GUID&, const GUID&) = default;
};
using CLSID = GUID;
