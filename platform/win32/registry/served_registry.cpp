#include "served_registry.h"

#include "../ktmw32.h"
#include "registry.h"

namespace kawin {
std::span<const ServedFunction> ServedRegistryFunctions() {
    static const ServedFunction functions[] = {
        {"RegCloseKey", AddressOf(RegCloseKey)},
        {"RegCreateKeyExW", AddressOf(RegCreateKeyExW)},
        {"RegCreateKeyTransactedW", AddressOf(RegCreateKeyTransactedW)},
        {"RegDeleteKeyExW", AddressOf(RegDeleteKeyExW)},
        {"RegDeleteKeyTransactedW", AddressOf(RegDeleteKeyTransactedW)},
        {"RegDeleteKeyW", AddressOf(RegDeleteKeyW)},
        {"RegDeleteTreeW", AddressOf(RegDeleteTreeW)},
        {"RegDeleteValueW", AddressOf(RegDeleteValueW)},
        {"RegEnumKeyExW", AddressOf(RegEnumKeyExW)},
        {"RegEnumValueW", AddressOf(RegEnumValueW)},
        {"RegGetValueW", AddressOf(RegGetValueW)},
        {"RegOpenKeyExW", AddressOf(RegOpenKeyExW)},
        {"RegOpenKeyTransactedW", AddressOf(RegOpenKeyTransactedW)},
        {"RegQueryInfoKeyW", AddressOf(RegQueryInfoKeyW)},
        {"RegQueryValueExW", AddressOf(RegQueryValueExW)},
        {"RegSetValueExW", AddressOf(RegSetValueExW)},
    };
    return functions;
}

std::span<const ServedFunction> ServedTransactionFunctions() {
    static const ServedFunction functions[] = {
        {"CommitTransaction", AddressOf(CommitTransaction)},
        {"CreateTransaction", AddressOf(CreateTransaction)},
        {"RollbackTransaction", AddressOf(RollbackTransaction)},
    };
    return functions;
}

}  // namespace kawin
