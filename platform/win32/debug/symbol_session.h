#pragma once

// The modules of this process as libdw knows them, from the moment at which the session began.

#include <optional>

#include "../base/types.h"
#include "dw_library.h"

namespace kawin {

// Texts belong to the session, or to the module.
struct RawNames {
    DWORD64 module_base = 0;  // 0: in no module
    DWORD64 symbol_base = 0;
    const char* symbol = nullptr;  // mangled
    const char* file = nullptr;
    DWORD line = 0;
};

// Not for several threads at once.
class SymbolSession {
public:
    explicit SymbolSession(const Dw& dw) noexcept;
    SymbolSession(const SymbolSession&) = delete;
    SymbolSession& operator=(const SymbolSession&) = delete;
    ~SymbolSession();

    RawNames Find(DWORD64 address) const noexcept;

private:
    struct Line {
        const char* file;
        DWORD number;
    };
    Dwarf_Die* UnitOf(Dwfl_Module* module, Dwarf_Addr address, Dwarf_Addr& bias) const noexcept;
    std::optional<Line> LineOf(Dwfl_Module* module, Dwarf_Addr address) const noexcept;
    std::optional<Line> CallOfInlined(Dwarf_Die* unit, Dwarf_Addr address) const noexcept;
    std::optional<Line> CallOf(Dwarf_Die* unit, Dwarf_Die* inlined) const noexcept;
    DWORD Number(Dwarf_Die* die, unsigned attribute) const noexcept;

    const Dw& dw_;
    Dwfl_Callbacks callbacks_{};
    Dwfl* session_;  // null when it could not be begun
};

}  // namespace kawin
