#pragma once

// The version block of a file: the resource VS_VERSION_INFO, number 1, of the type RT_VERSION.
//
// A block is a tree of nodes, each with a key and a value. The root's value is a VS_FIXEDFILEINFO; below it are "VarFileInfo"
// with the languages, and "StringFileInfo" with a table of texts for each of them.

#include "../base/error.h"

// Numbers of two words have the more significant one in ...MS.
struct VS_FIXEDFILEINFO {
    DWORD dwSignature;  // 0xFEEF04BD
    DWORD dwStrucVersion;
    DWORD dwFileVersionMS;
    DWORD dwFileVersionLS;
    DWORD dwProductVersionMS;
    DWORD dwProductVersionLS;
    DWORD dwFileFlagsMask;
    DWORD dwFileFlags;
    DWORD dwFileOS;
    DWORD dwFileType;
    DWORD dwFileSubtype;
    DWORD dwFileDateMS;
    DWORD dwFileDateLS;
};

// Bytes of the version block of the file that LoadLibraryExW finds by `path`; 0 when there is none, with the last error of
// LoadLibraryExW or FindResourceW. `handle`, when given, becomes 0: it means nothing.
KADATA_API DWORD GetFileVersionInfoSizeW(LPCWSTR path, LPDWORD handle) noexcept;

// Copies the block, cut to `size` bytes, into `block`. FALSE as above; ERROR_INVALID_PARAMETER for a null block and when not even
// the block's head fits. `handle` is not looked at.
KADATA_API BOOL GetFileVersionInfoW(LPCWSTR path, DWORD handle, DWORD size, LPVOID block) noexcept;

// Points `value` into a block that GetFileVersionInfoW has filled. Asked for are
//   "\"                                        a VS_FIXEDFILEINFO
//   "\VarFileInfo\Translation"                 pairs of words: language and code page
//   "\StringFileInfo\LLLLCCCC\NAME"            a text; language and code page in four hexadecimal digits each
// `size` becomes the number of bytes, of a text that of the characters with its terminator, 0 for none; of a damaged block no
// more than the block has. Keys are compared without regard to case. FALSE with ERROR_RESOURCE_TYPE_NOT_FOUND when there is no
// such node, with ERROR_INVALID_PARAMETER for a null pointer.
KADATA_API BOOL VerQueryValueW(LPCVOID block, LPCWSTR path, LPVOID* value, UINT* size) noexcept;
