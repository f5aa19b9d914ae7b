#include "process_list.h"

#include <dirent.h>
#include <limits.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "../base/error_map.h"
#include "../base/utf.h"
#include "../modules/modules.h"
#include "../text/no_throw.h"
#include "process.h"
#include "process_object.h"
#include "stand_ins.h"

namespace kawin {
namespace {

struct CloseFolder {
    void operator()(DIR* folder) const noexcept { closedir(folder); }
};

std::string ProcessFile(DWORD id, const char* name) {
    return "/proc/" + std::to_string(id) + "/" + name;
}

std::string ReadAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// 0 for an entry that is no process.
DWORD NumberOf(std::string_view entry) {
    DWORD number = 0;
    const auto [end, error] = std::from_chars(entry.data(), entry.data() + entry.size(), number);
    return error == std::errc() && end == entry.data() + entry.size() ? number : 0;
}

// The state is the word behind the name, which stands in brackets and may hold some itself.
bool IsAlive(DWORD id) {
    constexpr std::string_view kEnded = "ZX";
    const std::string status = ReadAll(ProcessFile(id, "stat"));
    const std::size_t name_end = status.rfind(") ");
    return name_end != std::string::npos && name_end + 2 < status.size() && kEnded.find(status[name_end + 2]) == kEnded.npos;
}

std::vector<DWORD> AllProcesses() {
    std::vector<DWORD> ids;
    const std::unique_ptr<DIR, CloseFolder> folder(opendir("/proc"));
    while (const dirent* const entry = folder ? readdir(folder.get()) : nullptr) {
        const DWORD id = NumberOf(entry->d_name);
        if (id != 0 && IsAlive(id)) {
            ids.push_back(id);
        }
    }
    std::sort(ids.begin(), ids.end());
    return ids;
}

// Empty when it has ended or is not ours to look at.
std::string ProgramFile(DWORD id) {
    char path[PATH_MAX];
    const ssize_t length = readlink(ProcessFile(id, "exe").c_str(), path, sizeof path);
    std::string_view file(path, length > 0 ? static_cast<std::size_t>(length) : 0);
    constexpr std::string_view kDeleted = " (deleted)";
    file.remove_suffix(file.ends_with(kDeleted) ? kDeleted.size() : 0);
    return std::string(file.substr(file.rfind('/') + 1));
}

// What the kernel calls it. For a script that is the script's name, where the program's file is the interpreter's.
std::string CommandName(DWORD id) {
    const std::string name = ReadAll(ProcessFile(id, "comm"));
    return name.substr(0, name.find('\n'));
}

// Empty with the last error set.
std::u16string NameOf(HANDLE process) {
    DWORD id = GetCurrentProcessId();
    if (process != GetCurrentProcess()) {
        const auto object = FindObject<ProcessObject>(process);
        if (!object || !object->RequireAny(PROCESS_QUERY_INFORMATION) || !object->RequireAny(PROCESS_VM_READ)) {
            return {};
        }
        id = static_cast<DWORD>(object->Id());
    }
    const std::string file = ProgramFile(id);
    if (file.empty()) {
        SetLastError(ERROR_ACCESS_DENIED);
        return {};
    }
    for (const std::string& name : {file, CommandName(id)}) {
        if (const std::u16string_view replaced = ReplacedProgram(name); !replaced.empty()) {
            return std::u16string(replaced);
        }
    }
    return FromFileName(file);
}

HMODULE ProgramModule() {
    return GetModuleHandleW(nullptr);
}

}  // namespace
}  // namespace kawin

BOOL EnumProcesses(DWORD* ids, DWORD size, LPDWORD needed) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        if (ids == nullptr || needed == nullptr) {
            return kawin::Fail(ERROR_NOACCESS);
        }
        const std::vector<DWORD> all = kawin::AllProcesses();
        const std::size_t count = std::min<std::size_t>(all.size(), size / sizeof(DWORD));
        std::copy_n(all.begin(), count, ids);
        *needed = static_cast<DWORD>(count * sizeof(DWORD));
        return TRUE;
    });
}

BOOL EnumProcessModules(HANDLE process, HMODULE* modules, DWORD size, LPDWORD needed) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        if (kawin::NameOf(process).empty()) {
            return FALSE;
        }
        if (size >= sizeof(HMODULE)) {
            *modules = kawin::ProgramModule();
        }
        *needed = sizeof(HMODULE);
        return TRUE;
    });
}

DWORD GetModuleBaseNameW(HANDLE process, HMODULE module, LPWSTR name, DWORD capacity) noexcept {
    return kawin::NoThrow([&]() -> DWORD {
        if (name == nullptr || capacity == 0) {
            return static_cast<DWORD>(kawin::Fail(ERROR_INVALID_PARAMETER));
        }
        const std::u16string whole = kawin::NameOf(process);
        if (!whole.empty() && module != nullptr && module != kawin::ProgramModule()) {
            return static_cast<DWORD>(kawin::Fail(ERROR_INVALID_HANDLE));
        }
        const std::size_t length = whole.copy(name, capacity - 1);
        name[length] = 0;
        return static_cast<DWORD>(length);
    });
}
