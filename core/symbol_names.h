#pragma once

// Names of code addresses, by the debugging help library.

#include <tchar.h>
#include <windows.h>

#include <dbghelp.h>

#include <mutex>
#include <string_view>

// One object for the process, held while names are asked for: the library is not made for several threads. The texts are valid
// until the next address is asked for.
class CSymbolNames {
public:
    // Waits for its turn.
    CSymbolNames();
    CSymbolNames(const CSymbolNames&) = delete;
    CSymbolNames& operator=(const CSymbolNames&) = delete;

    struct SLine {
        std::basic_string_view<TCHAR> m_file;  // empty when it is not known
        DWORD m_dwLine;
    };
    // Of the call before a return address. To be asked before the function: it notices modules that have been loaded since.
    SLine FindLine(const void* returnAddress);
    // Empty when there is none.
    std::basic_string_view<TCHAR> FindFunction(const void* returnAddress);

private:
    class CLibrary;
    static const CLibrary& TheLibrary();

    bool LearnModuleOf(DWORD64 address);

    const std::lock_guard<std::mutex> m_lock;
    const CLibrary& m_library;
    bool m_hasLearned = false;  // looked once, which is enough for one stack
    struct {
        SYMBOL_INFOW m_info;
        TCHAR m_rest[512];  // of the name
    } m_symbol;
};
