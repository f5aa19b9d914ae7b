#include "served_debug.h"

#include "../dbghelp.h"

namespace kawin {

std::span<const ServedFunction> ServedDebugFunctions() {
    static const ServedFunction functions[] = {
        {"SymCleanup", AddressOf(SymCleanup)},
        {"SymFromAddrW", AddressOf(SymFromAddrW)},
        {"SymGetLineFromAddrW64", AddressOf(SymGetLineFromAddrW64)},
        {"SymGetModuleBase64", AddressOf(SymGetModuleBase64)},
        {"SymGetOptions", AddressOf(SymGetOptions)},
        {"SymInitializeW", AddressOf(SymInitializeW)},
        {"SymRefreshModuleList", AddressOf(SymRefreshModuleList)},
        {"SymSetOptions", AddressOf(SymSetOptions)},
    };
    return functions;
}

}  // namespace kawin
