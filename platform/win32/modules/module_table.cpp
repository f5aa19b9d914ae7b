#include "module_table.h"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <vector>

#include "../base/error_map.h"
#include "../base/path_map.h"
#include "../base/utf.h"
#include "../text/case_fold.h"
#include "module_files.h"

namespace kawin {
namespace {

struct Loaded {
    std::shared_ptr<Module> module;
    long count;
};

constinit std::mutex modules_lock;

// Never destroyed: modules stay loaded while the process ends.
std::vector<Loaded>& Modules() {  // guarded by modules_lock
    static auto& modules = *new std::vector<Loaded>;
    return modules;
}

const std::shared_ptr<Module>& Executable() {
    static const auto& module = *new std::shared_ptr<Module>(Module::OpenExecutable());
    return module;
}

HMODULE HandleOf(const Module* module) {
    return reinterpret_cast<HMODULE>(const_cast<Module*>(module));
}

template <class Condition>
std::vector<Loaded>::iterator FindWhere(Condition&& condition) {
    return std::find_if(Modules().begin(), Modules().end(), [&](const Loaded& loaded) { return condition(*loaded.module); });
}

std::string Canonical(const std::string& path) {
    char resolved[PATH_MAX];
    return realpath(path.c_str(), resolved) != nullptr ? std::string(resolved) : path;
}

const link_map* MapOf(void* shared_object) {
    link_map* map = nullptr;
    return dlinfo(shared_object, RTLD_DI_LINKMAP, &map) == 0 ? map : nullptr;
}

// Where the linker has found a library that it was told to open as `file`.
std::string PathOf(void* shared_object, const std::string& file) {
    char folder[PATH_MAX] = {};
    if (file.find('/') != std::string::npos || dlinfo(shared_object, RTLD_DI_ORIGIN, folder) != 0) {
        return Canonical(file);
    }
    return Canonical(std::string(folder) + "/" + file);
}

// Why the linker refused: a file that is there and is a library for this machine wants another that is not.
DWORD ErrorOfLinker(const std::string& file) {
    const std::optional<std::vector<std::byte>> bytes = file.find('/') == std::string::npos ? std::nullopt : ReadModuleFile(file);
    if (!bytes) {
        return ERROR_MOD_NOT_FOUND;
    }
    Elf64_Ehdr header{};
    if (bytes->size() < sizeof header) {
        return ERROR_BAD_EXE_FORMAT;
    }
    std::copy_n(bytes->begin(), sizeof header, reinterpret_cast<std::byte*>(&header));
    const bool is_library = header.e_ident[EI_CLASS] == ELFCLASS64 && header.e_machine == EM_X86_64 && header.e_type == ET_DYN &&
                            header.e_shoff <= bytes->size();
    return is_library ? ERROR_MOD_NOT_FOUND : ERROR_BAD_EXE_FORMAT;
}

bool IsFoundByName(const Module& module) {
    return module.Kind() != ModuleKind::DataFile;
}

std::string ReadExecutablePath() {
    constexpr std::string_view kDeleted = " (deleted)";
    std::string path(PATH_MAX, '\0');
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    path.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    if (path.ends_with(kDeleted) && access(path.c_str(), F_OK) != 0) {  // replaced while it runs, by an update for example
        path.resize(path.size() - kDeleted.size());
    }
    return path;
}

}  // namespace

Module::~Module() {
    if (shared_object_ != nullptr) {
        dlclose(shared_object_);
    }
}

bool Module::IsNamed(std::u16string_view name) const {
    const std::size_t slash = native_path_.find_last_of('/');
    return CompareFolded(name, name_) == 0 ||
           CompareFolded(name, FromFileName(std::string_view(native_path_).substr(slash + 1))) == 0;
}

bool Module::IsSameAs(const Module& other) const noexcept {
    return kind_ == other.kind_ && shared_object_ == other.shared_object_ && served_ == other.served_ &&
           (shared_object_ != nullptr || native_path_ == other.native_path_);
}

FARPROC Module::FindFunction(const char* name) const noexcept {
    if (served_ != nullptr) {
        const std::span<const ServedFunction> functions = served_->functions();
        const auto row = std::find_if(functions.begin(), functions.end(),
                                      [name](const ServedFunction& function) { return function.name == name; });
        return row == functions.end() ? nullptr : row->function;
    }
    void* const address = shared_object_ == nullptr ? nullptr : dlsym(shared_object_, name);
    Dl_info info{};
    void* owner = nullptr;
    // The linker looks into what a library needs as well; only its own functions count.
    const bool is_own =
        address != nullptr && dladdr1(address, &info, &owner, RTLD_DL_LINKMAP) != 0 && owner == MapOf(shared_object_);
    return is_own ? reinterpret_cast<FARPROC>(address) : nullptr;
}

std::u16string Module::SystemPath() const {
    return served_ != nullptr ? name_ : ToSystemPath(native_path_);
}

const ResourceFile* Module::Resources() const {
    if (kind_ == ModuleKind::Executable) {
        std::call_once(resources_once_, [this] {
            const DWORD error = GetLastError();
            if (std::optional<std::vector<std::byte>> bytes = ReadModuleFile(native_path_ + ".res")) {
                resources_ = ResourceFile::Read(std::move(*bytes));
            }
            SetLastError(error);
        });
    }
    return resources_.get();
}

std::shared_ptr<Module> Module::OpenShared(const std::string& file, std::u16string name) {
    auto module = std::make_shared<Module>(ModuleKind::SharedObject, std::move(name));
    module->shared_object_ = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module->shared_object_ == nullptr) {
        SetLastError(ErrorOfLinker(file));
        return nullptr;
    }
    module->native_path_ = PathOf(module->shared_object_, file);
    return module;
}

std::shared_ptr<Module> Module::OpenResources(const std::string& path, std::u16string name, ModuleKind kind) {
    std::optional<std::vector<std::byte>> bytes = ReadModuleFile(path);
    if (!bytes) {
        return nullptr;
    }
    auto module = std::make_shared<Module>(kind, std::move(name));
    module->native_path_ = Canonical(path);
    module->resources_ = ResourceFile::Read(std::move(*bytes));
    if (module->resources_ == nullptr) {
        SetLastError(ERROR_BAD_EXE_FORMAT);
        return nullptr;
    }
    return module;
}

std::shared_ptr<Module> Module::OpenServed(const ServedModule& served) {
    auto module = std::make_shared<Module>(ModuleKind::Served, std::u16string(served.name));
    module->served_ = &served;
    return module;
}

std::shared_ptr<Module> Module::OpenExecutable() {
    auto module = std::make_shared<Module>(ModuleKind::Executable, std::u16string());
    module->native_path_ = ExecutablePath();
    module->shared_object_ = dlopen(nullptr, RTLD_LAZY);
    return module;
}

std::shared_ptr<const Module> FindModule(HMODULE handle) {
    if (handle == nullptr || handle == HandleOf(Executable().get())) {
        return Executable();
    }
    const std::lock_guard lock(modules_lock);
    const auto found = FindWhere([handle](const Module& module) { return HandleOf(&module) == handle; });
    if (found == Modules().end()) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }
    return found->module;
}

// `module` goes, if it was not needed, only after the lock: to unload runs foreign code.
HMODULE AddModule(std::shared_ptr<Module> module) {
    const std::lock_guard lock(modules_lock);
    const auto found = FindWhere([&module](const Module& other) { return other.IsSameAs(*module); });
    if (found != Modules().end()) {
        ++found->count;
        return HandleOf(found->module.get());
    }
    return HandleOf(Modules().emplace_back(Loaded{std::move(module), 1}).module.get());
}

bool RemoveModule(HMODULE handle) {
    std::shared_ptr<Module> removed;  // goes after the lock is left, too
    if (handle == HandleOf(Executable().get())) {
        return true;
    }
    const std::lock_guard lock(modules_lock);
    const auto found = FindWhere([handle](const Module& module) { return HandleOf(&module) == handle; });
    if (found == Modules().end()) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return false;
    }
    if (--found->count == 0) {
        removed = std::move(found->module);
        Modules().erase(found);
    }
    return true;
}

HMODULE FindLoaded(std::u16string_view name) {
    if (Executable()->IsNamed(name)) {
        return HandleOf(Executable().get());
    }
    const std::lock_guard lock(modules_lock);
    const auto found = FindWhere([name](const Module& module) { return IsFoundByName(module) && module.IsNamed(name); });
    return found == Modules().end() ? nullptr : HandleOf(found->module.get());
}

HMODULE FindLoadedFile(const std::string& native_path) {
    const std::string path = Canonical(native_path);
    if (path == Executable()->NativePath()) {
        return HandleOf(Executable().get());
    }
    const std::lock_guard lock(modules_lock);
    const auto found = FindWhere([&path](const Module& module) { return IsFoundByName(module) && module.NativePath() == path; });
    return found == Modules().end() ? nullptr : HandleOf(found->module.get());
}

HMODULE CountLoaded(std::u16string_view name) {
    const std::lock_guard lock(modules_lock);
    const auto found = FindWhere([name](const Module& module) { return IsFoundByName(module) && module.IsNamed(name); });
    if (found == Modules().end()) {
        return nullptr;
    }
    ++found->count;
    return HandleOf(found->module.get());
}

std::optional<Bytes> FindResourceBytes(const std::byte* begin) {
    const auto find_in = [begin](const Module& module) -> std::optional<Bytes> {
        const ResourceFile* const file = module.Resources();
        const std::span<const ResourceEntry> entries = file != nullptr ? file->Entries() : std::span<const ResourceEntry>();
        const auto found = std::find_if(entries.begin(), entries.end(),
                                        [begin](const ResourceEntry& entry) { return entry.data.data() == begin; });
        return found != entries.end() ? std::optional(found->data) : std::nullopt;
    };
    if (const auto found = find_in(*Executable())) {
        return found;
    }
    const std::lock_guard lock(modules_lock);
    for (const Loaded& loaded : Modules()) {
        if (const auto found = find_in(*loaded.module)) {
            return found;
        }
    }
    return std::nullopt;
}

const std::string& ExecutablePath() {
    static const auto& path = *new std::string(ReadExecutablePath());
    return path;
}

}  // namespace kawin
