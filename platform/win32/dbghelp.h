#pragma once

// Names and source lines of addresses. "dbghelp.dll" has these functions by name, too.
//
// Names come from the symbol tables of the loaded modules, source lines from their debug information (DWARF 2 to 5), which may
// stand in a file of its own below /usr/lib/debug/.build-id; nothing is ever fetched from a network. What a module does not have
// is not there: a stripped one still names the functions that it exports. Both are read by libdw, loaded at the first question;
// without it only exported functions are named. Answers are kept, 4,096 of them.
//
// The code of functions that the compiler has put into others counts as theirs: the line is that of the call.
//
// Unlike on Windows, any thread may call any of these at any time. Every failure sets the last error:
//   ERROR_INVALID_HANDLE     there is no session of that handle
//   ERROR_MOD_NOT_FOUND      the address lies in no module that was loaded when the session last looked
//   ERROR_INVALID_ADDRESS    there is no symbol, or no source line, for the address
//   ERROR_INVALID_PARAMETER  an argument is null that must not be, or a SizeOfStruct is not the structure's

#include <windows.h>

using ULONG64 = ULONGLONG;
using PDWORD64 = DWORD64*;

constexpr DWORD SYMOPT_UNDNAME = 0x00000002;
constexpr DWORD SYMOPT_DEFERRED_LOADS = 0x00000004;
constexpr DWORD SYMOPT_LOAD_LINES = 0x00000010;
constexpr DWORD SYMOPT_FAIL_CRITICAL_ERRORS = 0x00000200;
constexpr DWORD SYMOPT_NO_PROMPTS = 0x00080000;

struct SYMBOL_INFOW {
    ULONG SizeOfStruct;  // set by the caller: sizeof(SYMBOL_INFOW)
    ULONG TypeIndex;     // this, and every other member without a remark, is set to 0
    ULONG64 Reserved[2];
    ULONG Index;
    ULONG Size;
    ULONG64 ModBase;  // where the module begins
    ULONG Flags;
    ULONG64 Value;
    ULONG64 Address;  // where the symbol begins
    ULONG Register;
    ULONG Scope;
    ULONG Tag;
    ULONG NameLen;     // of the whole name, without terminator
    ULONG MaxNameLen;  // set by the caller: the room of Name in characters, terminator included; 0: the name is not wanted
    WCHAR Name[1];     // cut to its room, always ended
};
using PSYMBOL_INFOW = SYMBOL_INFOW*;

struct IMAGEHLP_LINEW64 {
    DWORD SizeOfStruct;  // set by the caller
    PVOID Key;           // null
    DWORD LineNumber;    // from 1 on
    LPWSTR FileName;     // as the compiler has written it down; read-only, valid until the next call of any of these functions
    DWORD64 Address;     // the asked one
};
using PIMAGEHLP_LINEW64 = IMAGEHLP_LINEW64*;

// Options of the process, all off at first. SYMOPT_UNDNAME makes C++ names readable, SYMOPT_LOAD_LINES is needed for source
// lines; the others are kept without effect. SymSetOptions returns the new ones.
KADATA_API DWORD SymSetOptions(DWORD options) noexcept;
KADATA_API DWORD SymGetOptions() noexcept;

// Begins a session of this process. The handle is any that is not null and has none yet (ERROR_INVALID_PARAMETER); whatever it
// is, the modules are those of this process. The search path is not used. Without `invade` no module is known before
// SymRefreshModuleList.
KADATA_API BOOL SymInitializeW(HANDLE process, LPCWSTR search_path, BOOL invade) noexcept;
KADATA_API BOOL SymCleanup(HANDLE process) noexcept;

// Looks which modules are loaded now. Cheap when none has come or gone.
KADATA_API BOOL SymRefreshModuleList(HANDLE process) noexcept;

// Where the module begins that the address lies in; 0 when it is not known.
KADATA_API DWORD64 SymGetModuleBase64(HANDLE process, DWORD64 address) noexcept;

// The function, or other symbol, that the address lies in. A return address may lie behind its function: ask for one less.
// `displacement` (how far into it) may be null.
KADATA_API BOOL SymFromAddrW(HANDLE process, DWORD64 address, PDWORD64 displacement, PSYMBOL_INFOW symbol) noexcept;

// The source line of the code at the address. `displacement` is set to 0.
KADATA_API BOOL SymGetLineFromAddrW64(HANDLE process, DWORD64 address, LPDWORD displacement, PIMAGEHLP_LINEW64 line) noexcept;
