// What KaData.dll does when a process loads it: nothing but this.

#include <windows.h>

// The compiler's runtime takes 72 KB for exceptions without memory when it is loaded and does not give them back when it is
// unloaded. Kept in the process, it costs them once, however often a host loads and unloads this library.
extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void* /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        HMODULE runtime = nullptr;
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN, L"libstdc++-6.dll", &runtime);  // failing, it is not that compiler's
        DisableThreadLibraryCalls(library);
    }
    return TRUE;
}
