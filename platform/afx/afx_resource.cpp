#include "afx_resource.h"

#include <tchar.h>

#include <atomic>

namespace {

std::atomic<HINSTANCE>& ResourceModule() {
    static constinit std::atomic<HINSTANCE> module{nullptr};
    return module;
}

// The first of the modules for which `has` is true; null when it is for none.
template <class Predicate>
HINSTANCE FirstModule(Predicate has) {
    const HINSTANCE chosen = AfxGetResourceHandle();
    const HINSTANCE executable = AfxGetInstanceHandle();
    if (has(chosen)) {
        return chosen;
    }
    return executable != chosen && has(executable) ? executable : nullptr;
}

}  // namespace

HINSTANCE AfxGetInstanceHandle() {
    return GetModuleHandleW(nullptr);
}

HINSTANCE AfxGetResourceHandle() {
    const HINSTANCE module = ResourceModule().load();
    return module != nullptr ? module : AfxGetInstanceHandle();
}

void AfxSetResourceHandle(HINSTANCE module) {
    ResourceModule().store(module);
}

HINSTANCE AfxFindResourceHandle(LPCTSTR name, LPCTSTR type) {
    const HINSTANCE found = FirstModule([&](HINSTANCE module) { return FindResourceW(module, name, type) != nullptr; });
    return found != nullptr ? found : AfxGetResourceHandle();
}

HINSTANCE AfxFindStringResourceHandle(UINT id) {
    return FirstModule([id](HINSTANCE module) {
        LPTSTR text = nullptr;
        return ::LoadStringW(module, id, reinterpret_cast<LPTSTR>(&text), 0) > 0;
    });
}

int AfxLoadString(UINT id, LPTSTR text, UINT capacity) {
    if (text == nullptr || capacity == 0) {
        return 0;
    }
    text[0] = 0;
    const HINSTANCE module = AfxFindStringResourceHandle(id);
    return module != nullptr ? ::LoadStringW(module, id, text, static_cast<int>(capacity)) : 0;
}

HINSTANCE AfxLoadLibrary(LPCTSTR name) {
    return LoadLibraryW(name);
}

BOOL AfxFreeLibrary(HINSTANCE module) {
    return FreeLibrary(module);
}
