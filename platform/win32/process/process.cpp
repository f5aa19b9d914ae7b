#include "process.h"

#include <stdlib.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

#include "../base/error_map.h"
#include "../base/utf.h"
#include "../text/no_throw.h"
#include "arguments.h"
#include "process_object.h"

namespace kawin {
namespace {

constexpr DWORD kQueryRights = PROCESS_QUERY_INFORMATION | PROCESS_QUERY_LIMITED_INFORMATION;

std::u16string OwnCommandLine() {
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    std::vector<std::u16string> arguments;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\0', start), text.size());
        arguments.push_back(FromFileName(std::string_view(text).substr(start, end - start)));
        start = end + 1;
    }
    return JoinCommandLine(arguments);
}

BOOL ExitCodeOf(const ProcessObject& process, DWORD& exit_code) {
    if (!process.RequireAny(kQueryRights)) {
        return FALSE;
    }
    const bool ended = process.HasEnded();
    const std::optional<DWORD> code = ended ? process.ExitCode() : STILL_ACTIVE;
    if (!code) {
        return Fail(ERROR_NOT_SUPPORTED);
    }
    exit_code = *code;
    return TRUE;
}

BOOL Terminate(ProcessObject& process, DWORD exit_code) {
    if (!process.RequireAny(PROCESS_TERMINATE)) {
        return FALSE;
    }
    const DWORD error = process.Kill(exit_code);
    return error == ERROR_SUCCESS || Fail(error);
}

}  // namespace
}  // namespace kawin

LPWSTR GetCommandLineW() noexcept {
    static std::u16string& line = *new std::u16string(kawin::OwnCommandLine());  // valid while static objects end, too
    return line.data();
}

void ExitProcess(UINT exit_code) noexcept {
    exit(static_cast<int>(exit_code));
}

HANDLE OpenProcess(DWORD access, BOOL /*inherit*/, DWORD process_id) noexcept {
    return kawin::NoThrow([&]() -> HANDLE {
        auto process = kawin::FindProcess(process_id, access);
        return process ? kawin::OpenHandle(std::move(process)) : nullptr;
    });
}

BOOL GetExitCodeProcess(HANDLE process, LPDWORD exit_code) noexcept {
    if (process == GetCurrentProcess()) {
        *exit_code = STILL_ACTIVE;
        return TRUE;
    }
    const auto object = kawin::FindObject<kawin::ProcessObject>(process);
    return object && kawin::ExitCodeOf(*object, *exit_code);
}

BOOL TerminateProcess(HANDLE process, UINT exit_code) noexcept {
    if (process == GetCurrentProcess()) {
        _exit(static_cast<int>(exit_code));
    }
    const auto object = kawin::FindObject<kawin::ProcessObject>(process);
    return object && kawin::Terminate(*object, exit_code);
}

DWORD GetProcessId(HANDLE process) noexcept {
    if (process == GetCurrentProcess()) {
        return GetCurrentProcessId();
    }
    const auto object = kawin::FindObject<kawin::ProcessObject>(process);
    return object ? static_cast<DWORD>(object->Id()) : 0;
}
