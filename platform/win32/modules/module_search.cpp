#include "module_search.h"

#include <dlfcn.h>
#include <link.h>

#include <memory>
#include <string>

#include "../base/error_map.h"
#include "../base/utf.h"
#include "../text/no_throw.h"
#include "module_table.h"

namespace {

using kawin::Module;

// One that the linker has brought is counted in any case, since it has to be known before it has a handle.
HMODULE ModuleAt(const void* address, bool counted) {
    Dl_info info{};
    void* owner = nullptr;
    if (dladdr1(address, &info, &owner, RTLD_DL_LINKMAP) == 0 || owner == nullptr) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }
    const std::string path = static_cast<const link_map*>(owner)->l_name;
    if (path.empty()) {
        return GetModuleHandleW(nullptr);
    }
    const HMODULE known = counted ? nullptr : kawin::FindLoadedFile(path);
    if (known != nullptr) {
        return known;
    }
    std::shared_ptr<Module> opened = Module::OpenShared(path, kawin::FromFileName(path.substr(path.find_last_of('/') + 1)));
    return opened == nullptr ? nullptr : kawin::AddModule(std::move(opened));
}

HMODULE ModuleNamed(LPCWSTR name, bool counted) {
    const HMODULE found = GetModuleHandleW(name);
    const std::shared_ptr<const Module> module = found != nullptr && counted ? kawin::FindModule(found) : nullptr;
    const bool is_counted = module != nullptr && module->Kind() != kawin::ModuleKind::Executable;
    return is_counted ? kawin::AddModule(std::const_pointer_cast<Module>(module)) : found;
}

}  // namespace

BOOL GetModuleHandleExW(DWORD flags, LPCWSTR name, HMODULE* module) noexcept {
    constexpr DWORD kNeverBoth = GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (module == nullptr) {
        return kawin::Fail(ERROR_INVALID_PARAMETER);
    }
    *module = nullptr;
    if ((flags & ~(kNeverBoth | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS)) != 0 || (flags & kNeverBoth) == kNeverBoth) {
        return kawin::Fail(ERROR_INVALID_PARAMETER);
    }
    return kawin::NoThrow([&]() -> BOOL {
        const bool counted = (flags & GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT) == 0;
        const bool by_address = (flags & GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS) != 0;
        *module = by_address ? ModuleAt(name, counted) : ModuleNamed(name, counted);
        return *module != nullptr;
    });
}
