#include <kadata/utils.h>
#include <psapi.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <vector>

namespace {

constexpr TCHAR kKeyboard[] = _T("osk.exe");
constexpr std::size_t kMostProcesses = 65'536 / sizeof(DWORD);
constexpr DWORD kRights = PROCESS_QUERY_INFORMATION | PROCESS_VM_READ | PROCESS_TERMINATE;

struct Close {
    void operator()(HANDLE handle) const noexcept { ::CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, Close>;

// Of the first module, which is the program.
CString BaseNameOf(HANDLE process) {
    HMODULE program = nullptr;
    DWORD needed = 0;
    TCHAR name[MAX_PATH] = _T("<unknown>");
    if (::EnumProcessModules(process, &program, sizeof(program), &needed)) {
        ::GetModuleBaseNameW(process, program, name, MAX_PATH);
    }
    return name;
}

// Null when it does not run, or runs where this process may not end it.
Handle FindKeyboard() {
    std::vector<DWORD> ids(kMostProcesses);
    DWORD size = 0;
    if (!::EnumProcesses(ids.data(), static_cast<DWORD>(ids.size() * sizeof(DWORD)), &size)) {
        return nullptr;
    }
    ids.resize(size / sizeof(DWORD));
    for (const DWORD id : ids) {
        Handle process(::OpenProcess(kRights, FALSE, id));
        if (process != nullptr && BaseNameOf(process.get()).Compare(kKeyboard) == 0) {
            return process;
        }
    }
    return nullptr;
}

}  // namespace

void CKalidoUtils::StartVirtualKeyboard() {
    TCHAR line[std::size(kKeyboard)];  // CreateProcessW writes into it
    std::copy(std::begin(kKeyboard), std::end(kKeyboard), line);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION info{};
    if (::CreateProcessW(nullptr, line, nullptr, nullptr, FALSE, NORMAL_PRIORITY_CLASS, nullptr, nullptr, &startup, &info)) {
        const Handle process(info.hProcess);
        const Handle thread(info.hThread);
    }
}

int CKalidoUtils::IsVirtualKeyboardRunning() {
    return FindKeyboard() != nullptr;
}

void CKalidoUtils::CloseVirtualKeyboard() {
    const Handle keyboard = FindKeyboard();
    if (keyboard != nullptr) {
        ::TerminateProcess(keyboard.get(), 0);
    }
}
