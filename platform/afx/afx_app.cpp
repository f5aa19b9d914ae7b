#include "afx_app.h"

#include <atomic>
#include <cstdlib>
#include <cstring>

#include "afx_resource.h"

IMPLEMENT_DYNAMIC(CWinApp, CWinThread)

namespace {

std::atomic<CWinApp*>& TheApp() {
    static constinit std::atomic<CWinApp*> app{nullptr};
    return app;
}

LPCTSTR Duplicate(const CString& text) {
    const std::size_t bytes = (text.View().size() + 1) * sizeof(TCHAR);
    void* const copy = std::malloc(bytes);
    if (copy == nullptr) {
        AfxThrowMemoryException();
    }
    std::memcpy(copy, text.GetString(), bytes);
    return static_cast<LPCTSTR>(copy);
}

void Replace(LPCTSTR& text, const CString& by) {
    const LPCTSTR copy = Duplicate(by);
    std::free(const_cast<LPTSTR>(text));
    text = copy;
}

// Without folder and extension.
CString ExecutableName() {
    TCHAR path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH - 1);
    const CString file(path);
    const CString name = file.Mid(file.ReverseFind('\\') + 1);
    const int dot = name.ReverseFind('.');
    return dot > 0 ? name.Left(dot) : name;
}

}  // namespace

CWinApp::CWinApp(LPCTSTR name) {
    CWinApp* none = nullptr;
    if (!TheApp().compare_exchange_strong(none, this)) {
        AfxThrowNotSupportedException();
    }
    TakeNames(name);
}

CWinApp::~CWinApp() {
    TheApp().store(nullptr);
    for (const LPCTSTR text : {m_pszAppName, m_pszExeName, m_pszProfileName, m_pszRegistryKey}) {
        std::free(const_cast<LPTSTR>(text));
    }
}

void CWinApp::TakeNames(LPCTSTR name) {
    const CString executable = ExecutableName();
    m_hInstance = AfxGetInstanceHandle();
    m_pszExeName = Duplicate(executable);
    m_pszAppName = Duplicate(name != nullptr ? CString(name) : executable);
    m_pszProfileName = Duplicate(executable + _T(".INI"));
}

int CWinApp::Run() {
    if (GetMainWnd() == nullptr) {
        ::PostQuitMessage(0);
    }
    return CWinThread::Run();
}

HICON CWinApp::LoadIcon(LPCTSTR name) const {
    return ::LoadIconW(AfxFindResourceHandle(name, RT_GROUP_ICON), name);
}

HCURSOR CWinApp::LoadCursor(LPCTSTR name) const {
    return ::LoadCursorW(AfxFindResourceHandle(name, RT_GROUP_CURSOR), name);
}

void CWinApp::SetRegistryKey(LPCTSTR key) {
    Replace(m_pszRegistryKey, key);
    Replace(m_pszProfileName, m_pszAppName);
}

void CWinApp::SetRegistryKey(UINT stringId) {
    SetRegistryKey(CString::FromResource(stringId));
}

CWinApp* AfxGetApp() {
    return TheApp().load();
}

CWinThread* AfxGetThread() {
    CWinThread* const thread = AfxGetThreadState()->m_pCurrentWinThread;
    CWinApp* const app = AfxGetApp();
    return thread != nullptr || app == nullptr || app->m_nThreadID != ::GetCurrentThreadId() ? thread : app;
}

CWnd* AfxGetMainWnd() {
    CWinThread* const thread = AfxGetThread();
    return thread != nullptr ? thread->GetMainWnd() : nullptr;
}

LPCTSTR AfxGetAppName() {
    const CWinApp* const app = AfxGetApp();
    return app != nullptr ? app->m_pszAppName : _T("");
}

BOOL AfxWinInit(HINSTANCE instance, HINSTANCE /*previous*/, LPTSTR commandLine, int show) {
    CWinApp* const app = AfxGetApp();
    if (app == nullptr) {
        return FALSE;
    }
    app->m_hInstance = instance != nullptr ? instance : AfxGetInstanceHandle();
    app->m_lpCmdLine = commandLine;
    app->m_nCmdShow = show;
    return TRUE;
}

int AfxWinMain(HINSTANCE instance, HINSTANCE previous, LPTSTR commandLine, int show) {
    if (!AfxWinInit(instance, previous, commandLine, show)) {
        return -1;
    }
    CWinApp& app = *AfxGetApp();
    if (!app.InitApplication()) {
        return -1;
    }
    if (app.InitInstance()) {
        return app.Run();
    }
    if (app.m_pMainWnd != nullptr) {
        app.m_pMainWnd->DestroyWindow();
    }
    return app.ExitInstance();
}
