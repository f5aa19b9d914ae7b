#include "served_registry.h"

#include "../ktmw32.h"
#include "registry.h"

namespace kawin {
namespace {

template <class Function>
FARPROC Address(Function* function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
}

}  // namespace

std::span<const ServedFunction> ServedRegistryFunctions() {
    static const ServedFunction functions[] = {
        {"RegCloseKey", Address(RegCloseKey)},
        {"RegCreateKeyExW", Address(RegCreateKeyExW)},
        {"RegCreateKeyTransactedW", Address(RegCreateKeyTransactedW)},
        {"RegDeleteKeyExW", Address(RegDeleteKeyExW)},
        {"RegDeleteKeyTransactedW", Address(RegDeleteKeyTransactedW)},
        {"RegDeleteKeyW", Address(RegDeleteKeyW)},
        {"RegDeleteTreeW", Address(RegDeleteTreeW)},
        {"RegDeleteValueW", Address(RegDeleteValueW)},
        {"RegEnumKeyExW", Address(RegEnumKeyExW)},
        {"RegEnumValueW", Address(RegEnumValueW)},
        {"RegGetValueW", Address(RegGetValueW)},
        {"RegOpenKeyExW", Address(RegOpenKeyExW)},
        {"RegOpenKeyTransactedW", Address(RegOpenKeyTransactedW)},
        {"RegQueryInfoKeyW", Address(RegQueryInfoKeyW)},
        {"RegQueryValueExW", Address(RegQueryValueExW)},
        {"RegSetValueExW", Address(RegSetValueExW)},
    };
    return functions;
}

std::span<const ServedFunction> ServedTransactionFunctions() {
    static const ServedFunction functions[] = {
        {"CommitTransaction", Address(CommitTransaction)},
        {"CreateTransaction", Address(CreateTransaction)},
        {"RollbackTransaction", Address(RollbackTransaction)},
    };
    return functions;
}

}  // namespace kawin
