#include "served_modules.h"

#include "../debug/served_debug.h"
#include "../gdi/served_blends.h"
#include "../registry/served_registry.h"
#include "../text/case_fold.h"

namespace kawin {
namespace {

constexpr ServedModule kServed[] = {
    {u"Advapi32.dll", ServedRegistryFunctions},
    {u"KtmW32.dll", ServedTransactionFunctions},
    {u"dbghelp.dll", ServedDebugFunctions},
    {u"msimg32.dll", ServedBlendFunctions},
};

}  // namespace

const ServedModule* FindServedModule(std::u16string_view name) noexcept {
    for (const ServedModule& module : kServed) {
        if (CompareFolded(module.name, name) == 0) {
            return &module;
        }
    }
    return nullptr;
}

}  // namespace kawin
