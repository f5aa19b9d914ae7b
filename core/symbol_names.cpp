#include "symbol_names.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace {

// Inside a function because not every platform has mutexes that need no construction at load.
std::mutex& Turn() {
    static std::mutex turn;
    return turn;
}

template <class Function>
bool Find(HMODULE module, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    return function != nullptr;
}

// Symbol files are looked for beside the program only: without a path it would be the current folder, and whatever the
// environment names, servers included.
std::basic_string<TCHAR> ProgramFolder() {
    std::basic_string<TCHAR> path(MAX_PATH, 0);
    DWORD length = GetModuleFileNameW(nullptr, path.data(), MAX_PATH);
    while (length == path.size()) {
        path.resize(path.size() * 2);
        length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    }
    path.resize(length);
    return path.substr(0, path.find_last_of(_T('\\')));
}

DWORD64 CallBefore(const void* returnAddress) {
    return reinterpret_cast<DWORD64>(returnAddress) - 1;  // a call may be the last instruction of its function
}

}  // namespace

// Guarded by Turn().
class CSymbolNames::CLibrary {
public:
    // Tried again until it is there: what was missing may have been memory.
    void Load() {
        const HMODULE module = LoadLibraryW(_T("dbghelp.dll"));
        if (module != nullptr && !(FindFunctions(module) && BeginSession())) {
            FreeLibrary(module);
        }
    }
    bool IsLoaded() const { return m_hSession != nullptr; }

    decltype(&::SymGetOptions) m_pfnGetOptions = nullptr;
    decltype(&::SymSetOptions) m_pfnSetOptions = nullptr;
    decltype(&::SymInitializeW) m_pfnInitialize = nullptr;
    decltype(&::SymRefreshModuleList) m_pfnRefresh = nullptr;
    decltype(&::SymGetModuleBase64) m_pfnModuleBase = nullptr;
    decltype(&::SymFromAddrW) m_pfnFromAddr = nullptr;
    decltype(&::SymGetLineFromAddrW64) m_pfnLineFromAddr = nullptr;
    HANDLE m_hSession = nullptr;

private:
    bool FindFunctions(HMODULE module) {
        return Find(module, "SymGetOptions", m_pfnGetOptions) && Find(module, "SymSetOptions", m_pfnSetOptions) &&
               Find(module, "SymInitializeW", m_pfnInitialize) && Find(module, "SymRefreshModuleList", m_pfnRefresh) &&
               Find(module, "SymGetModuleBase64", m_pfnModuleBase) && Find(module, "SymFromAddrW", m_pfnFromAddr) &&
               Find(module, "SymGetLineFromAddrW64", m_pfnLineFromAddr);
    }

    // A handle of our own: a host may have a session of this process under the usual one.
    bool BeginSession() {
        m_pfnSetOptions(m_pfnGetOptions() | SYMOPT_UNDNAME | SYMOPT_LOAD_LINES | SYMOPT_DEFERRED_LOADS |
                        SYMOPT_FAIL_CRITICAL_ERRORS | SYMOPT_NO_PROMPTS);
        const std::basic_string<TCHAR> folder = ProgramFolder();
        const HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, GetCurrentProcessId());
        if (process != nullptr && m_pfnInitialize(process, folder.c_str(), TRUE)) {
            m_hSession = process;
        } else if (process != nullptr) {
            CloseHandle(process);
        }
        return IsLoaded();
    }
};

// Never ended: a stack may be named while the process ends.
const CSymbolNames::CLibrary& CSymbolNames::TheLibrary() {
    static CLibrary& library = *new CLibrary;
    if (!library.IsLoaded()) {
        library.Load();
    }
    return library;
}

CSymbolNames::CSymbolNames() : m_lock(Turn()), m_library(TheLibrary()) {}

// Looking which modules there are takes a millisecond on Windows, so it is done for an address in none that is known.
bool CSymbolNames::LearnModuleOf(DWORD64 address) {
    if (m_hasLearned || m_library.m_pfnModuleBase(m_library.m_hSession, address) != 0) {
        return false;
    }
    m_hasLearned = true;
    return m_library.m_pfnRefresh(m_library.m_hSession) != FALSE;
}

CSymbolNames::SLine CSymbolNames::FindLine(const void* returnAddress) {
    if (!m_library.IsLoaded()) {
        return {{}, 0};
    }
    const DWORD64 address = CallBefore(returnAddress);
    IMAGEHLP_LINEW64 line{};
    line.SizeOfStruct = sizeof line;
    DWORD displacement = 0;
    const auto find = [&] { return m_library.m_pfnLineFromAddr(m_library.m_hSession, address, &displacement, &line) != FALSE; };
    const bool found = find() || (LearnModuleOf(address) && find());
    return found ? SLine{line.FileName, line.LineNumber} : SLine{{}, 0};
}

std::basic_string_view<TCHAR> CSymbolNames::FindFunction(const void* returnAddress) {
    SYMBOL_INFOW& info = m_symbol.m_info;
    info = {};
    info.SizeOfStruct = sizeof info;
    info.MaxNameLen = static_cast<ULONG>(sizeof m_symbol.m_rest / sizeof(TCHAR));
    DWORD64 displacement = 0;
    const bool found =
        m_library.IsLoaded() && m_library.m_pfnFromAddr(m_library.m_hSession, CallBefore(returnAddress), &displacement, &info);
    const std::size_t length = found ? std::min(info.NameLen, info.MaxNameLen - 1) : 0;
    return {info.Name, length};
}
