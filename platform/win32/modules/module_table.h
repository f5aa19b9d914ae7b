#pragma once

// The loaded modules. Safe from every thread; a module in use by one thread outlives the FreeLibrary of another.

#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "../resources/resource_reader.h"
#include "modules.h"
#include "served_modules.h"

namespace kawin {

enum class ModuleKind {
    Executable,
    SharedObject,
    Resources,  // a file that was loaded as a library but holds only resources for us
    DataFile,   // a file that was opened for its resources
    Served,
};

class Module {
public:
    Module(ModuleKind kind, std::u16string name) : kind_(kind), name_(std::move(name)) {}
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    ~Module();

    ModuleKind Kind() const noexcept { return kind_; }
    const std::string& NativePath() const noexcept { return native_path_; }  // empty for a served module
    bool IsNamed(std::u16string_view name) const;                            // as asked for, or the file's own name
    bool IsSameAs(const Module& other) const noexcept;
    FARPROC FindFunction(const char* name) const noexcept;
    std::u16string SystemPath() const;  // of a served module its name

    // Null when it has none. Those of the executable are read at the first call.
    const ResourceFile* Resources() const;

    // The makers; null with the last error set.
    static std::shared_ptr<Module> OpenShared(const std::string& file, std::u16string name);  // a path, or a name for the linker
    static std::shared_ptr<Module> OpenResources(const std::string& path, std::u16string name, ModuleKind kind);
    static std::shared_ptr<Module> OpenServed(const ServedModule& served);
    static std::shared_ptr<Module> OpenExecutable();

private:
    ModuleKind kind_;
    std::u16string name_;
    std::string native_path_;
    void* shared_object_ = nullptr;  // the linker's handle; owned
    const ServedModule* served_ = nullptr;
    mutable std::once_flag resources_once_;  // guards resources_ of the executable
    mutable std::unique_ptr<const ResourceFile> resources_;
};

// The module behind a handle, the executable for null; empty with ERROR_MOD_NOT_FOUND.
std::shared_ptr<const Module> FindModule(HMODULE handle);

// Counts a module once more, or adds it; one that is loaded already takes the place of `module`. Returns its handle.
HMODULE AddModule(std::shared_ptr<Module> module);

// Counts one down; the last removes it. False with ERROR_MOD_NOT_FOUND.
bool RemoveModule(HMODULE handle);

// A loaded module by its bare name or by its native path; null when there is none. Files opened as data are not found.
HMODULE FindLoaded(std::u16string_view name);
HMODULE FindLoadedFile(const std::string& native_path);

// FindLoaded with one more count.
HMODULE CountLoaded(std::u16string_view name);

// The resource of a loaded module whose bytes begin at that address; nothing for any other.
std::optional<Bytes> FindResourceBytes(const std::byte* begin);

// The native path of the running program.
const std::string& ExecutablePath();

}  // namespace kawin
