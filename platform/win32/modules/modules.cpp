#include "modules.h"

#include <memory>
#include <string>
#include <string_view>

#include "../base/error_map.h"
#include "../base/path_map.h"
#include "../text/no_throw.h"
#include "module_files.h"
#include "module_search.h"
#include "module_table.h"

namespace {

using kawin::FileKind;
using kawin::Module;
using kawin::ModuleKind;

HMODULE FailToLoad(DWORD error) {
    SetLastError(error);
    return nullptr;
}

HMODULE AddOpened(std::shared_ptr<Module> module) {
    return module == nullptr ? nullptr : kawin::AddModule(std::move(module));
}

HMODULE LoadFile(const std::string& path, const std::u16string& name, FileKind kind, bool as_data) {
    if (kind == FileKind::SharedObject) {
        return as_data ? FailToLoad(ERROR_BAD_EXE_FORMAT) : AddOpened(Module::OpenShared(path, name));
    }
    return AddOpened(Module::OpenResources(path, name, as_data ? ModuleKind::DataFile : ModuleKind::Resources));
}

// The first file that is there decides.
HMODULE Search(std::u16string_view library, bool as_data) {
    const kawin::ModuleSearch search = kawin::SearchFor(library, as_data);
    const std::u16string name(kawin::BaseName(kawin::WithExtension(library)));
    for (const std::string& file : search.files) {
        const FileKind kind = kawin::KindOfFile(file);
        if (kind != FileKind::Missing) {
            return LoadFile(file, name, kind, as_data);
        }
    }
    if (!search.linked_name.empty()) {
        return AddOpened(Module::OpenShared(search.linked_name, name));
    }
    return FailToLoad(as_data ? ERROR_FILE_NOT_FOUND : ERROR_MOD_NOT_FOUND);
}

HMODULE Load(std::u16string_view library, bool as_data) {
    const std::u16string name = kawin::WithExtension(library);
    const bool is_bare = kawin::BaseName(name).size() == name.size();
    if (!as_data && is_bare) {
        if (const kawin::ServedModule* const served = kawin::FindServedModule(name)) {
            return kawin::AddModule(Module::OpenServed(*served));
        }
        if (const HMODULE loaded = kawin::CountLoaded(name)) {
            return loaded;
        }
    }
    return Search(library, as_data);
}

HMODULE FindHandle(std::u16string_view library) {
    const std::u16string name = kawin::WithExtension(library);
    const bool is_bare = kawin::BaseName(name).size() == name.size();
    HMODULE found = nullptr;
    if (is_bare) {
        found = kawin::FindLoaded(name);
    } else if (const std::optional<std::string> native = kawin::ToNativePath(name.c_str())) {
        found = kawin::FindLoadedFile(*native);
    }
    return found != nullptr ? found : FailToLoad(ERROR_MOD_NOT_FOUND);
}

DWORD CopyCut(std::u16string_view path, LPWSTR target, DWORD capacity) {
    if (path.size() < capacity) {
        target[path.copy(target, path.size())] = 0;
        return static_cast<DWORD>(path.size());
    }
    if (capacity > 0) {
        target[path.copy(target, capacity - 1)] = 0;
    }
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return capacity;
}

}  // namespace

HMODULE LoadLibraryW(LPCWSTR name) noexcept {
    return LoadLibraryExW(name, nullptr, 0);
}

HMODULE LoadLibraryExW(LPCWSTR name, HANDLE file, DWORD flags) noexcept {
    return kawin::NoThrow([&]() -> HMODULE {
        constexpr DWORD kAsData = LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE;
        if (name == nullptr || file != nullptr || (flags & ~(kAsData | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS)) != 0) {
            return FailToLoad(ERROR_INVALID_PARAMETER);
        }
        return Load(name, (flags & kAsData) != 0);
    });
}

BOOL FreeLibrary(HMODULE module) noexcept {
    return kawin::NoThrow(
        [&]() -> BOOL { return module == nullptr ? kawin::Fail(ERROR_INVALID_HANDLE) : kawin::RemoveModule(module); });
}

FARPROC GetProcAddress(HMODULE module, LPCSTR name) noexcept {
    return kawin::NoThrow([&]() -> FARPROC {
        const std::shared_ptr<const Module> found = kawin::FindModule(module);
        if (found == nullptr) {
            return nullptr;
        }
        const bool by_number = (reinterpret_cast<ULONG_PTR>(name) >> 16) == 0;
        const FARPROC function = by_number ? nullptr : found->FindFunction(name);
        if (function == nullptr) {
            SetLastError(ERROR_PROC_NOT_FOUND);
        }
        return function;
    });
}

HMODULE GetModuleHandleW(LPCWSTR name) noexcept {
    return kawin::NoThrow([&]() -> HMODULE {
        return name == nullptr ? reinterpret_cast<HMODULE>(const_cast<Module*>(kawin::FindModule(nullptr).get()))
                               : FindHandle(name);
    });
}

DWORD GetModuleFileNameW(HMODULE module, LPWSTR target, DWORD capacity) noexcept {
    return kawin::NoThrow([&]() -> DWORD {
        const std::shared_ptr<const Module> found = kawin::FindModule(module);
        if (found == nullptr || found->Kind() == ModuleKind::DataFile || target == nullptr) {
            SetLastError(target == nullptr ? ERROR_INVALID_PARAMETER : ERROR_MOD_NOT_FOUND);
            return 0;
        }
        return CopyCut(found->SystemPath(), target, capacity);
    });
}
