#pragma once

// The application and its message loop.
//
// A host has one object of a class derived from CWinApp, at namespace scope or at the beginning of main(); it makes itself known
// when it is constructed. Its main() starts it:
//     CWorkstationApp app;
//     int main() {
//         return AfxWinMain(GetModuleHandle(nullptr), nullptr, nullptr, SW_SHOWNORMAL);
//     }
// A host with a loop of its own calls AfxWinInit once, and then what it needs.

#include "afx_wnd.h"

// The messages of one thread.
class KADATA_API CWinThread : public CCmdTarget {
    DECLARE_DYNCREATE(CWinThread)

public:
    CWinThread();
    // No window and no message of the thread may need the object any more.
    ~CWinThread() override;

    // FALSE: Run is not to be called.
    virtual BOOL InitInstance() { return FALSE; }
    // Handles messages until WM_QUIT, and calls OnIdle whenever there is none; the result is ExitInstance's.
    virtual int Run();
    // The result is that of the thread: what PostQuitMessage was given.
    virtual int ExitInstance() { return static_cast<int>(m_msgCur.wParam); }
    // Waits for a message and handles it. FALSE for WM_QUIT.
    virtual BOOL PumpMessage();
    // TRUE: the message has been handled. Asks the windows from the message's up to the main window, then the main window.
    virtual BOOL PreTranslateMessage(MSG* message);
    // Called with 0, 1, ... while there are no messages, until it returns FALSE. From 1 on, temporary objects are deleted.
    virtual BOOL OnIdle(LONG count);
    // FALSE for a message after which there is no new idle work: repainting, and a mouse that has not moved.
    virtual BOOL IsIdleMessage(MSG* message);
    // An exception that came out of a message's handler; the caller deletes it. Returns the message's result. The default tells
    // the standard error stream, but of a CUserException, and then AnswerFailedMessage.
    virtual LRESULT ProcessWndProcException(CException* exception, const MSG* message);
    // What keeps the system from asking again: -1 for WM_CREATE, a valid window for WM_PAINT, else 0.
    static LRESULT AnswerFailedMessage(CException* exception, const MSG* message);
    virtual CWnd* GetMainWnd() { return m_pMainWnd; }

    CWnd* m_pMainWnd = nullptr;  // its end posts WM_QUIT. Owned by whoever made it
    MSG m_msgCur = {};           // the last one that was retrieved
    DWORD m_nThreadID;
};

class KADATA_API CWinApp : public CWinThread {
    DECLARE_DYNAMIC(CWinApp)

public:
    // Without a name, the application is called as its executable, without extension. A second object while one lives throws
    // CNotSupportedException*.
    explicit CWinApp(LPCTSTR name = nullptr);
    ~CWinApp() override;

    virtual BOOL InitApplication() { return TRUE; }
    BOOL InitInstance() override { return TRUE; }
    // Without a main window it ends at once.
    int Run() override;

    // From the module that AfxFindResourceHandle tells, or the system's own (IDI_HAND, IDC_WAIT). Null when there is none.
    HICON LoadIcon(LPCTSTR name) const;
    HICON LoadIcon(UINT id) const { return LoadIcon(MAKEINTRESOURCEW(static_cast<WORD>(id))); }
    HICON LoadStandardIcon(LPCTSTR name) const { return ::LoadIconW(nullptr, name); }
    HCURSOR LoadCursor(LPCTSTR name) const;
    HCURSOR LoadCursor(UINT id) const { return LoadCursor(MAKEINTRESOURCEW(static_cast<WORD>(id))); }
    HCURSOR LoadStandardCursor(LPCTSTR name) const { return ::LoadCursorW(nullptr, name); }

    // The application profile: values by section and entry. They lie in the registry, under
    // HKEY_CURRENT_USER\Software\<registry key>\<profile name>\<section>, once SetRegistryKey was called; else in the file of the
    // profile name, "<executable>.INI", where Get- and WritePrivateProfileString put it. Reading gives the default where there is
    // no value, or one of another kind. Writing returns FALSE on failure.
    void SetRegistryKey(LPCTSTR key);
    void SetRegistryKey(UINT stringId);
    virtual UINT GetProfileInt(LPCTSTR section, LPCTSTR entry, int defaultValue);
    virtual BOOL WriteProfileInt(LPCTSTR section, LPCTSTR entry, int value);
    virtual CString GetProfileString(LPCTSTR section, LPCTSTR entry, LPCTSTR defaultValue = nullptr);
    // A null value deletes the entry, a null entry the section with all that is below it.
    virtual BOOL WriteProfileString(LPCTSTR section, LPCTSTR entry, LPCTSTR value);
    // TRUE with bytes that the caller deletes by delete[]. In a file they are written as letters.
    virtual BOOL GetProfileBinary(LPCTSTR section, LPCTSTR entry, LPBYTE* data, UINT* size);
    virtual BOOL WriteProfileBinary(LPCTSTR section, LPCTSTR entry, LPBYTE data, UINT size);
    // The keys of the profile and of a section, made where there were none; the caller closes them. Null without a registry key,
    // and on failure.
    HKEY GetAppRegistryKey() const;
    HKEY GetSectionKey(LPCTSTR section) const;
    // Deletes a key with all below it; the system's error number.
    static LONG DelRegTree(HKEY parent, const CString& key);

    HINSTANCE m_hInstance = nullptr;
    LPTSTR m_lpCmdLine = nullptr;  // AfxWinInit's
    int m_nCmdShow = 0;
    // Allocated by malloc, freed by the destructor; a host that puts another text there does the same.
    LPCTSTR m_pszAppName = nullptr;
    LPCTSTR m_pszExeName = nullptr;  // without folder and extension
    LPCTSTR m_pszProfileName = nullptr;
    LPCTSTR m_pszRegistryKey = nullptr;  // null until SetRegistryKey

private:
    void TakeNames(LPCTSTR name);
};

// The application, and the calling thread's object; null when there is none.
KADATA_API CWinApp* AfxGetApp();
KADATA_API CWinThread* AfxGetThread();
// Empty without an application.
KADATA_API LPCTSTR AfxGetAppName();

// Tells the application what it was started with; FALSE when there is none.
KADATA_API BOOL AfxWinInit(HINSTANCE instance, HINSTANCE previous, LPTSTR commandLine, int show);
// AfxWinInit, InitApplication, InitInstance and Run; the program's result. -1 without an application. Where InitInstance returns
// FALSE, the main window is destroyed and the result is ExitInstance's.
KADATA_API int AfxWinMain(HINSTANCE instance, HINSTANCE previous, LPTSTR commandLine, int show);

// PumpMessage of the thread's object; the same without one.
KADATA_API BOOL AfxPumpMessage();
KADATA_API void AfxPostQuitMessage(int exitCode);
