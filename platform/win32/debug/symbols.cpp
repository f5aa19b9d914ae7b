#include <cstddef>
#include <cstring>
#include <map>
#include <mutex>

#include "../base/error_map.h"
#include "../dbghelp.h"
#include "../text/no_throw.h"
#include "address_names.h"

namespace {

constinit std::mutex symbols_lock;

// Guarded by symbols_lock.
struct Symbols {
    DWORD options = 0;
    std::map<HANDLE, bool> sessions;  // and whether it knows modules
    kawin::AddressBook book;
};

// Never destroyed: a stack may be named while the process ends.
Symbols& TheSymbols() {
    static auto& symbols = *new Symbols;
    return symbols;
}

// The names of an address for a session; null with the last error set.
const kawin::AddressNames* FindNames(HANDLE process, DWORD64 address) {
    Symbols& symbols = TheSymbols();
    const auto session = symbols.sessions.find(process);
    if (session == symbols.sessions.end()) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    const kawin::AddressNames* const names = session->second ? &symbols.book.Find(address) : nullptr;
    if (names == nullptr || names->module_base == 0) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }
    return names;
}

void Fill(SYMBOL_INFOW& symbol, const kawin::AddressNames& names) {
    const ULONG room = symbol.MaxNameLen;
    const SYMBOL_INFOW cleared{};
    std::memcpy(&symbol, &cleared, offsetof(SYMBOL_INFOW, Name));  // the name is written as far as there is room
    symbol.SizeOfStruct = sizeof symbol;
    symbol.ModBase = names.module_base;
    symbol.Address = names.symbol_base;
    symbol.NameLen = static_cast<ULONG>(names.symbol.size());
    symbol.MaxNameLen = room;
    if (room > 0) {
        WCHAR* const name = symbol.Name;
        name[names.symbol.copy(name, room - 1)] = 0;
    }
}

}  // namespace

DWORD SymSetOptions(DWORD options) noexcept {
    return kawin::NoThrow([&] {
        const std::lock_guard lock(symbols_lock);
        Symbols& symbols = TheSymbols();
        symbols.options = options;
        symbols.book.SetReadable((options & SYMOPT_UNDNAME) != 0);
        return options;
    });
}

DWORD SymGetOptions() noexcept {
    return kawin::NoThrow([] {
        const std::lock_guard lock(symbols_lock);
        return TheSymbols().options;
    });
}

BOOL SymInitializeW(HANDLE process, LPCWSTR /*search_path*/, BOOL invade) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        const std::lock_guard lock(symbols_lock);
        Symbols& symbols = TheSymbols();
        if (process == nullptr || !symbols.sessions.emplace(process, invade != 0).second) {
            return kawin::Fail(ERROR_INVALID_PARAMETER);
        }
        if (invade) {
            symbols.book.FollowModules();
        }
        return TRUE;
    });
}

BOOL SymCleanup(HANDLE process) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        const std::lock_guard lock(symbols_lock);
        return TheSymbols().sessions.erase(process) != 0 ? TRUE : kawin::Fail(ERROR_INVALID_HANDLE);
    });
}

BOOL SymRefreshModuleList(HANDLE process) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        const std::lock_guard lock(symbols_lock);
        Symbols& symbols = TheSymbols();
        const auto session = symbols.sessions.find(process);
        if (session == symbols.sessions.end()) {
            return kawin::Fail(ERROR_INVALID_HANDLE);
        }
        session->second = true;
        symbols.book.FollowModules();
        return TRUE;
    });
}

DWORD64 SymGetModuleBase64(HANDLE process, DWORD64 address) noexcept {
    return kawin::NoThrow([&]() -> DWORD64 {
        const std::lock_guard lock(symbols_lock);
        const kawin::AddressNames* const names = FindNames(process, address);
        return names != nullptr ? names->module_base : 0;
    });
}

BOOL SymFromAddrW(HANDLE process, DWORD64 address, PDWORD64 displacement, PSYMBOL_INFOW symbol) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        if (symbol == nullptr || symbol->SizeOfStruct != sizeof *symbol) {
            return kawin::Fail(ERROR_INVALID_PARAMETER);
        }
        const std::lock_guard lock(symbols_lock);
        const kawin::AddressNames* const names = FindNames(process, address);
        if (names == nullptr || names->symbol.empty()) {
            return names == nullptr ? FALSE : kawin::Fail(ERROR_INVALID_ADDRESS);
        }
        Fill(*symbol, *names);
        if (displacement != nullptr) {
            *displacement = address - names->symbol_base;
        }
        return TRUE;
    });
}

BOOL SymGetLineFromAddrW64(HANDLE process, DWORD64 address, LPDWORD displacement, PIMAGEHLP_LINEW64 line) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        if (displacement == nullptr || line == nullptr || line->SizeOfStruct != sizeof *line) {
            return kawin::Fail(ERROR_INVALID_PARAMETER);
        }
        const std::lock_guard lock(symbols_lock);
        const kawin::AddressNames* const names = FindNames(process, address);
        if (names == nullptr) {
            return FALSE;
        }
        if (names->file.empty() || (TheSymbols().options & SYMOPT_LOAD_LINES) == 0) {
            return kawin::Fail(ERROR_INVALID_ADDRESS);
        }
        *displacement = 0;
        *line = {sizeof *line, nullptr, names->line, const_cast<LPWSTR>(names->file.c_str()), address};
        return TRUE;
    });
}
