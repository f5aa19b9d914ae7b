// CreateProcessW.

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

#include "../base/error_map.h"
#include "../base/path_map.h"
#include "../base/utf.h"
#include "../files/path_error.h"
#include "../text/no_throw.h"
#include "arguments.h"
#include "child_table.h"
#include "native_environment.h"
#include "process.h"
#include "process_object.h"
#include "program_path.h"

namespace kawin {
namespace {

constexpr DWORD kKnownFlags = DETACHED_PROCESS | CREATE_NEW_CONSOLE | NORMAL_PRIORITY_CLASS | CREATE_NEW_PROCESS_GROUP |
                              CREATE_UNICODE_ENVIRONMENT | CREATE_NO_WINDOW;
constexpr int kFirstOwnFile = 3;  // behind the standard streams

// The attributes of a start: default signals, and the session or process group that the flags ask for.
class SpawnAttributes {
public:
    explicit SpawnAttributes(DWORD flags) {
        posix_spawnattr_init(&attributes_);
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_setsigmask(&attributes_, &none);
        sigset_t defaults = none;
        sigaddset(&defaults, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes_, &defaults);
        const int session = (flags & DETACHED_PROCESS) != 0 ? POSIX_SPAWN_SETSID : 0;
        const int group = (flags & CREATE_NEW_PROCESS_GROUP) != 0 && session == 0 ? POSIX_SPAWN_SETPGROUP : 0;
        posix_spawnattr_setflags(&attributes_,
                                 static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | session | group));
    }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    ~SpawnAttributes() { posix_spawnattr_destroy(&attributes_); }
    const posix_spawnattr_t* get() const noexcept { return &attributes_; }

private:
    posix_spawnattr_t attributes_;
};

class SpawnActions {
public:
    explicit SpawnActions(const std::string& folder) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addclosefrom_np(&actions_, kFirstOwnFile);
        if (!folder.empty()) {
            posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str());
        }
    }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }
    const posix_spawn_file_actions_t* get() const noexcept { return &actions_; }

private:
    posix_spawn_file_actions_t actions_;
};

struct Start {
    std::string program;
    std::string folder;  // empty: the current one
    std::vector<std::string> arguments;
    std::vector<std::string> environment;
    DWORD flags;
};

std::vector<char*> PointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

// Empty with the last error set.
ObjectRef<ProcessObject> Spawn(Start& start) {
    const SpawnAttributes attributes(start.flags);
    const SpawnActions actions(start.folder);
    pid_t process = 0;
    const int error = posix_spawn(&process, start.program.c_str(), actions.get(), attributes.get(),
                                  PointersTo(start.arguments).data(), PointersTo(start.environment).data());
    if (error != 0) {
        error == ENOEXEC ? Fail(ERROR_BAD_EXE_FORMAT) : FailForPath(start.program, error);
        return {};
    }
    const int descriptor = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    if (descriptor == -1) {
        FailFromErrno();
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
        return {};
    }
    return MakeObject<ProcessObject>(process, descriptor, PROCESS_ALL_ACCESS, true);
}

std::vector<std::string> ArgumentsOf(LPCWSTR application, LPCWSTR command_line) {
    std::vector<std::string> arguments;
    for (const std::u16string& argument : SplitCommandLine(command_line != nullptr ? command_line : u"")) {
        arguments.push_back(ToFileName(argument));
    }
    if (command_line == nullptr) {
        arguments = {ToFileName(application)};
    }
    return arguments;
}

std::vector<std::string> EnvironmentOf(LPVOID block) {
    if (block == nullptr) {
        return CopyEnvironment();
    }
    std::vector<std::string> entries;
    for (std::u16string_view entry = static_cast<LPCWSTR>(block); !entry.empty(); entry = entry.data() + entry.size() + 1) {
        entries.push_back(ToFileName(entry));
    }
    return entries;
}

// Nothing with the last error set.
std::optional<std::string> FolderOf(LPCWSTR directory) {
    if (directory == nullptr) {
        return "";
    }
    std::optional<std::string> native = ToNativePath(directory);
    struct stat status {};
    if (!native || stat(native->c_str(), &status) == -1 || !S_ISDIR(status.st_mode)) {
        SetLastError(ERROR_DIRECTORY);
        return {};
    }
    return native;
}

DWORD ParameterError(DWORD flags, LPVOID environment, const STARTUPINFOW* startup) {
    if ((flags & ~kKnownFlags) != 0 || startup == nullptr || (startup->dwFlags & ~STARTF_USESHOWWINDOW) != 0) {
        return ERROR_INVALID_PARAMETER;
    }
    return environment != nullptr && (flags & CREATE_UNICODE_ENVIRONMENT) == 0 ? ERROR_NOT_SUPPORTED : ERROR_SUCCESS;
}

// One object behind both handles.
BOOL HandOut(ObjectRef<ProcessObject> process, PROCESS_INFORMATION& info) {
    const auto id = static_cast<DWORD>(process->Id());
    process->Retain();
    ObjectRef<ProcessObject> again(process.get());
    const HANDLE first = OpenHandle(std::move(process));
    const HANDLE second = first != nullptr ? OpenHandle(std::move(again)) : nullptr;
    if (second == nullptr) {
        CloseHandle(first);
        return Fail(ERROR_TOO_MANY_OPEN_FILES);
    }
    info = {first, second, id, id};
    return TRUE;
}

}  // namespace
}  // namespace kawin

BOOL CreateProcessW(LPCWSTR application, LPWSTR command_line, LPSECURITY_ATTRIBUTES /*process_security*/,
                    LPSECURITY_ATTRIBUTES /*thread_security*/, BOOL /*inherit*/, DWORD flags, LPVOID environment,
                    LPCWSTR directory, LPSTARTUPINFOW startup, LPPROCESS_INFORMATION info) noexcept {
    return kawin::NoThrow([&]() -> BOOL {
        if (const DWORD error = kawin::ParameterError(flags, environment, startup)) {
            return kawin::Fail(error);
        }
        kawin::CollectForgottenChildren();
        std::string program = kawin::FindProgram(application, command_line);
        if (program.empty()) {
            return FALSE;
        }
        std::optional<std::string> folder = kawin::FolderOf(directory);
        if (!folder) {
            return FALSE;
        }
        kawin::Start start{std::move(program), std::move(*folder), kawin::ArgumentsOf(application, command_line),
                           kawin::EnvironmentOf(environment), flags};
        auto process = kawin::Spawn(start);
        return process && kawin::HandOut(std::move(process), *info);
    });
}
