#include "lua_api.h"

#include <kadata/directory.h>

namespace kadata::lua {
namespace {

constexpr LPCTSTR RUNTIME = _T("lua5.1.dll");
constexpr DWORD LONGEST_PATH = 32768;

constinit SApi api = {};

template <class Function>
bool Find(HMODULE library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    return function != nullptr;
}

// Of the module that this function belongs to; empty when that cannot be told.
CString OwnFolder() {
    HMODULE module = nullptr;
    if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCTSTR>(&OwnFolder), &module) == FALSE) {
        return {};
    }
    CString path;
    const DWORD length = GetModuleFileNameW(module, path.GetBuffer(LONGEST_PATH), LONGEST_PATH);
    path.ReleaseBuffer(static_cast<int>(length));
    FreeLibrary(module);
    return CDirectory::SplitPathFromFileNameWithPath(path);
}

}  // namespace

const SApi& Api() {
    return api;
}

bool FindFunctions(HMODULE library) {
    bool complete = true;
#define KADATA_LUA_FIND(result, name, parameters) complete = Find(library, #name, api.name) && complete;
    KADATA_LUA_FUNCTIONS(KADATA_LUA_FIND)
#undef KADATA_LUA_FIND
#define KADATA_LUA_TRY(result, name, parameters) Find(library, #name, api.name);
    KADATA_LUA_MEMORY_FUNCTIONS(KADATA_LUA_TRY)
#undef KADATA_LUA_TRY
    return complete;
}

HMODULE LoadRuntime() {
    const CString folder = OwnFolder();
    const HMODULE beside = folder.IsEmpty() ? nullptr : LoadLibraryW(CDirectory::Concat(folder, RUNTIME));
    return beside != nullptr ? beside : LoadLibraryExW(RUNTIME, nullptr, LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
}

}  // namespace kadata::lua
