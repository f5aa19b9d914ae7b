/* A host that knows nothing of the library but its file and one function's name: loads it, calls the function, unloads it, again and
   again. Nothing stays behind: no module, no handle, no memory that grows. Ends with 0, else with the number of what is wrong. */

#include <windows.h>
/* after it */
#include <psapi.h>
#include <wchar.h>

#define ROUNDS 100
#define WARM_UP 20
#define GROWTH_LIMIT (64 * 1024) /* bytes; one kilobyte lost in each round is more */

/* CDirectory::Compare(file, file, &equal): opens both files, reads them, closes them. */
typedef int (*Compare)(const wchar_t*, const wchar_t*, int*);

static SIZE_T Memory(void) {
    PROCESS_MEMORY_COUNTERS counters;
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}

/* The next free handle value: the same again when no handle was left open in between. */
static HANDLE NextHandle(void) {
    const HANDLE next = CreateEventW(NULL, TRUE, FALSE, NULL);
    CloseHandle(next);
    return next;
}

int main(void) {
    wchar_t self[MAX_PATH];
    HANDLE handle_before = NULL;
    SIZE_T memory_before = 0;
    int round;
    GetModuleFileNameW(NULL, self, MAX_PATH);
    for (round = 0; round < ROUNDS; ++round) {
        int equal = 0;
        HMODULE library = LoadLibraryW(L"KaData.dll");
        Compare compare;
        if (library == NULL) return 1;
        compare = (Compare)(void*)GetProcAddress(library, "_ZN10CDirectory7CompareEPKwS1_Pi");
        if (compare == NULL) return 2;
        if (!compare(self, self, &equal) || !equal) return 3;
        if (compare(self, L"no such file", &equal) || equal) return 4;
        if (!FreeLibrary(library)) return 5;
        if (GetModuleHandleW(L"KaData.dll") != NULL) return 6;
        if (round == WARM_UP) {
            handle_before = NextHandle();
            memory_before = Memory();
        }
    }
    if (NextHandle() != handle_before) return 7;
    return Memory() > memory_before + GROWTH_LIMIT ? 8 : 0;
}
