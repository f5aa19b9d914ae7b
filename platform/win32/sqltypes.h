#pragma once

// The part of the ODBC types that the records use: the date-time record and the types of its fields.

#include "windows.h"

using SQLSMALLINT = SHORT;
using SQLUSMALLINT = USHORT;
using SQLINTEGER = LONG;
using SQLUINTEGER = ULONG;

// A date and time without a time zone. 16 bytes without gaps.
struct TIMESTAMP_STRUCT {
    SQLSMALLINT year;
    SQLUSMALLINT month;  // 1 to 12
    SQLUSMALLINT day;    // 1 to 31
    SQLUSMALLINT hour;
    SQLUSMALLINT minute;
    SQLUSMALLINT second;
    SQLUINTEGER fraction;  // nanoseconds
};
static_assert(sizeof(TIMESTAMP_STRUCT) == 16);
