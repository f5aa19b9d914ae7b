#pragma once

// CWnd: an object for a window, which sees the window's messages before the window's own procedure does.
//
// A window of a class that AfxRegisterWndClass made has its object from its first message on. A window of any other class
// ("Button", a dialog, ...) is subclassed as soon as it exists: its object does not see WM_NCCREATE and WM_CREATE; what is to be
// done at once belongs into PreSubclassWindow.
//
// The object and its window end separately: destroying the object destroys the window, and the window's end (WM_NCDESTROY) takes
// the handle from the object and calls PostNcDestroy, the place for `delete this`. An object may be deleted while it handles a
// message. Windows are used by the thread that made them, and so are their objects; a handle may go to other threads.
//
// Functions without a comment do what the system's function of the same name does, and return what it returns; those that return
// a CWnd* return FromHandle of it.
//
// A CException that a handler lets out is given to CWinThread::ProcessWndProcException and does not go through the system;
// std::bad_alloc becomes a CMemoryException there. Any other exception ends the program, as nobody would catch it.

#include "afx_cmd_target.h"
#include "afx_exception.h"
#include "afx_menu.h"
#include "afx_thread_state.h"
#include "afx_window_dc.h"

struct AfxModalLoop;
struct AfxWindowCall;

// The numbers of RunModalLoop's flags.
constexpr DWORD MLF_NOIDLEMSG = 0x0001;   // the owner gets no WM_ENTERIDLE
constexpr DWORD MLF_NOKICKIDLE = 0x0002;  // accepted: there is no such message
constexpr DWORD MLF_SHOWONIDLE = 0x0004;  // the window is shown when its messages have all been handled

// A window class of that look, for this process; its windows are to be made by CWnd. The name stays valid; the same arguments
// give the same class. Throws CResourceException* when the system refuses. AfxRegisterClass returns FALSE then, and TRUE when
// there is such a class already.
KADATA_API LPCTSTR AfxRegisterWndClass(UINT style, HCURSOR cursor = nullptr, HBRUSH background = nullptr, HICON icon = nullptr);
KADATA_API BOOL AfxRegisterClass(WNDCLASSW* description);

// The procedure of all windows with objects; for windows without one it is the system's default procedure. AfxCallWndProc calls
// the object's WindowProc, with the thread's last message set.
KADATA_API LRESULT CALLBACK AfxWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
KADATA_API LRESULT AfxCallWndProc(CWnd* object, HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

class KADATA_API CWnd : public CCmdTarget {
    DECLARE_DYNCREATE(CWnd)

public:
    CWnd() = default;
    ~CWnd() override;

    HWND m_hWnd = nullptr;
    HWND GetSafeHwnd() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; }

    // The object attached to the window, whatever thread asks; FromHandle makes a temporary one where there is none. A temporary
    // object stays valid until its thread is idle, and sees no messages. Null for null.
    static CWnd* FromHandle(HWND window);
    static CWnd* FromHandlePermanent(HWND window);
    static void DeleteTempMap();
    // Without seeing the messages. FALSE for null, and when the object has a window or the window an object already.
    BOOL Attach(HWND window);
    HWND Detach();
    // With the messages, from now on. SubclassDlgItem does it to a control of `parent`.
    BOOL SubclassWindow(HWND window);
    BOOL SubclassDlgItem(UINT id, CWnd* parent);
    // Null, nothing changed, when somebody else has subclassed the window since.
    HWND UnsubclassWindow();
    virtual void PreSubclassWindow() {}

    // FALSE when the window could not be made; PostNcDestroy has been called then. A null class is a plain one for children.
    virtual BOOL Create(LPCTSTR className, LPCTSTR title, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                        LPVOID parameter = nullptr);
    BOOL CreateEx(DWORD exStyle, LPCTSTR className, LPCTSTR title, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                  LPVOID parameter = nullptr);
    BOOL CreateEx(DWORD exStyle, LPCTSTR className, LPCTSTR title, DWORD style, int x, int y, int width, int height, HWND parent,
                  HMENU menuOrId, LPVOID parameter = nullptr);
    // The place to change what the window is made with. FALSE: it is not made.
    virtual BOOL PreCreateWindow(CREATESTRUCT& description);
    // FALSE without a window. Ends an attached window only.
    virtual BOOL DestroyWindow();

    // Sees messages that are about to be dispatched to this window or to one inside of it. TRUE: it is not to be.
    virtual BOOL PreTranslateMessage(MSG* message);
    // Asks the windows from `window` up to `stop`.
    static BOOL WalkPreTranslateTree(HWND stop, MSG* message);

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::SendMessageW(m_hWnd, message, wParam, lParam);
    }
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::PostMessageW(m_hWnd, message, wParam, lParam);
    }
    // To all children and their children.
    void SendMessageToDescendants(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

    DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLongW(m_hWnd, GWL_STYLE)); }
    DWORD GetExStyle() const { return static_cast<DWORD>(::GetWindowLongW(m_hWnd, GWL_EXSTYLE)); }
    // FALSE when nothing changes. `flags` other than 0 are for SetWindowPos, which is called with them to show the change.
    BOOL ModifyStyle(DWORD remove, DWORD add, UINT flags = 0) { return ChangeStyle(GWL_STYLE, remove, add, flags); }
    BOOL ModifyStyleEx(DWORD remove, DWORD add, UINT flags = 0) { return ChangeStyle(GWL_EXSTYLE, remove, add, flags); }
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    int SetDlgCtrlID(int id) { return static_cast<int>(::SetWindowLongW(m_hWnd, GWL_ID, id)); }

    void SetWindowText(LPCTSTR text) { ::SetWindowTextW(m_hWnd, text); }
    int GetWindowText(LPTSTR text, int capacity) const { return ::GetWindowTextW(m_hWnd, text, capacity); }
    void GetWindowText(CString& text) const;
    int GetWindowTextLength() const { return ::GetWindowTextLengthW(m_hWnd); }
    void SetFont(CFont* font, BOOL redraw = TRUE);
    CFont* GetFont() const { return CFont::FromHandle(reinterpret_cast<HFONT>(SendMessage(WM_GETFONT))); }
    HICON SetIcon(HICON icon, BOOL big) {
        return reinterpret_cast<HICON>(SendMessage(WM_SETICON, static_cast<WPARAM>(big), reinterpret_cast<LPARAM>(icon)));
    }
    HICON GetIcon(BOOL big) const { return reinterpret_cast<HICON>(SendMessage(WM_GETICON, static_cast<WPARAM>(big))); }
    CMenu* GetSystemMenu(BOOL revert) const { return CMenu::FromHandle(::GetSystemMenu(m_hWnd, revert)); }

    void GetWindowRect(LPRECT rect) const { ::GetWindowRect(m_hWnd, rect); }
    void GetClientRect(LPRECT rect) const { ::GetClientRect(m_hWnd, rect); }
    void ClientToScreen(LPPOINT point) const { ::ClientToScreen(m_hWnd, point); }
    void ClientToScreen(LPRECT rect) const { ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<LPPOINT>(rect), 2); }
    void ScreenToClient(LPPOINT point) const { ::ScreenToClient(m_hWnd, point); }
    void ScreenToClient(LPRECT rect) const { ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<LPPOINT>(rect), 2); }
    // To the client coordinates of `to`, of the screen when that is null.
    void MapWindowPoints(CWnd* to, LPPOINT points, UINT count) const { ::MapWindowPoints(m_hWnd, HandleOf(to), points, count); }
    void MapWindowPoints(CWnd* to, LPRECT rect) const { MapWindowPoints(to, reinterpret_cast<LPPOINT>(rect), 2); }
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE) {
        ::MoveWindow(m_hWnd, x, y, width, height, repaint);
    }
    void MoveWindow(LPCRECT rect, BOOL repaint = TRUE) {
        MoveWindow(rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, repaint);
    }
    BOOL SetWindowPos(const CWnd* after, int x, int y, int width, int height, UINT flags) {
        return ::SetWindowPos(m_hWnd, HandleOf(after), x, y, width, height, flags);
    }
    void BringWindowToTop() { ::BringWindowToTop(m_hWnd); }
    // Onto the middle of `other`: by default the parent of a child, else the owner, else the desktop's work area. A window that
    // is no child stays inside the work area.
    void CenterWindow(CWnd* other = nullptr);
    // Makes a rectangle for the client area one for the window.
    enum AdjustType { adjustBorder = 0, adjustOutside = 1 };
    virtual void CalcWindowRect(LPRECT rect, UINT adjust = adjustBorder);
    BOOL GetWindowPlacement(WINDOWPLACEMENT* placement) const;
    BOOL SetWindowPlacement(const WINDOWPLACEMENT* placement) { return ::SetWindowPlacement(m_hWnd, placement); }
    int SetWindowRgn(HRGN region, BOOL redraw) { return ::SetWindowRgn(m_hWnd, region, redraw); }
    int GetWindowRgn(HRGN region) const { return ::GetWindowRgn(m_hWnd, region); }
    BOOL IsIconic() const { return ::IsIconic(m_hWnd); }
    BOOL IsZoomed() const { return ::IsZoomed(m_hWnd); }

    BOOL ShowWindow(int command) { return ::ShowWindow(m_hWnd, command); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    BOOL EnableWindow(BOOL enable = TRUE) { return ::EnableWindow(m_hWnd, enable); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* GetFocus() { return FromHandle(::GetFocus()); }
    CWnd* SetActiveWindow() { return FromHandle(::SetActiveWindow(m_hWnd)); }
    static CWnd* GetActiveWindow() { return FromHandle(::GetActiveWindow()); }
    BOOL SetForegroundWindow() { return ::SetForegroundWindow(m_hWnd); }
    static CWnd* GetForegroundWindow() { return FromHandle(::GetForegroundWindow()); }
    CWnd* SetCapture() { return FromHandle(::SetCapture(m_hWnd)); }
    static CWnd* GetCapture() { return FromHandle(::GetCapture()); }
    UINT_PTR SetTimer(UINT_PTR id, UINT milliseconds, TIMERPROC procedure = nullptr) {
        return ::SetTimer(m_hWnd, id, milliseconds, procedure);
    }
    BOOL KillTimer(UINT_PTR id) { return ::KillTimer(m_hWnd, id); }

    CDC* GetDC() { return CDC::FromHandle(::GetDC(m_hWnd)); }
    CDC* GetWindowDC() { return CDC::FromHandle(::GetWindowDC(m_hWnd)); }
    int ReleaseDC(CDC* dc) { return ::ReleaseDC(m_hWnd, dc->m_hDC); }
    CDC* BeginPaint(PAINTSTRUCT* paint) { return CDC::FromHandle(::BeginPaint(m_hWnd, paint)); }
    void EndPaint(PAINTSTRUCT* paint) { ::EndPaint(m_hWnd, paint); }
    // Sends WM_PRINT and WM_PRINTCLIENT.
    void Print(CDC* dc, DWORD flags) const;
    void PrintClient(CDC* dc, DWORD flags) const;
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }
    void SetRedraw(BOOL redraw = TRUE) { SendMessage(WM_SETREDRAW, static_cast<WPARAM>(redraw)); }
    void Invalidate(BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, erase); }
    void InvalidateRect(LPCRECT rect, BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, rect, erase); }
    void InvalidateRgn(CRgn* region, BOOL erase = TRUE) { ::InvalidateRgn(m_hWnd, RegionOf(region), erase); }
    void ValidateRect(LPCRECT rect) { ::ValidateRect(m_hWnd, rect); }
    void ValidateRgn(CRgn* region) { ::ValidateRgn(m_hWnd, RegionOf(region)); }
    BOOL GetUpdateRect(LPRECT rect, BOOL erase = FALSE) { return ::GetUpdateRect(m_hWnd, rect, erase); }
    int GetUpdateRgn(CRgn* region, BOOL erase = FALSE) { return ::GetUpdateRgn(m_hWnd, RegionOf(region), erase); }
    BOOL RedrawWindow(LPCRECT rect = nullptr, CRgn* region = nullptr, UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE) {
        return ::RedrawWindow(m_hWnd, rect, RegionOf(region), flags);
    }

    CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
    CWnd* SetParent(CWnd* parent) { return FromHandle(::SetParent(m_hWnd, HandleOf(parent))); }
    // Null for a child.
    CWnd* GetOwner() const { return FromHandle(::GetWindow(m_hWnd, GW_OWNER)); }
    // The window itself when it is no child, else the first above it that is none.
    CWnd* GetTopLevelParent() const { return FromHandle(::GetAncestor(m_hWnd, GA_ROOT)); }
    CWnd* GetAncestor(UINT which) const { return FromHandle(::GetAncestor(m_hWnd, which)); }
    CWnd* GetWindow(UINT which) const { return FromHandle(::GetWindow(m_hWnd, which)); }
    CWnd* GetTopWindow() const { return FromHandle(::GetTopWindow(m_hWnd)); }
    CWnd* GetLastActivePopup() const { return FromHandle(::GetLastActivePopup(m_hWnd)); }
    BOOL IsChild(const CWnd* window) const { return ::IsChild(m_hWnd, HandleOf(window)); }
    CWnd* ChildWindowFromPoint(POINT point) const { return FromHandle(::ChildWindowFromPoint(m_hWnd, point)); }
    static CWnd* WindowFromPoint(POINT point) { return FromHandle(::WindowFromPoint(point)); }
    static CWnd* GetDesktopWindow() { return FromHandle(::GetDesktopWindow()); }
    static CWnd* FindWindow(LPCTSTR className, LPCTSTR title) { return FromHandle(::FindWindowW(className, title)); }

    CWnd* GetDlgItem(int id) const { return FromHandle(::GetDlgItem(m_hWnd, id)); }
    void GetDlgItem(int id, HWND* window) const { *window = ::GetDlgItem(m_hWnd, id); }
    int GetDlgItemText(int id, CString& text) const;
    void SetDlgItemText(int id, LPCTSTR text) { ::SetDlgItemTextW(m_hWnd, id, text); }
    UINT GetDlgItemInt(int id, BOOL* translated = nullptr, BOOL isSigned = TRUE) const {
        return ::GetDlgItemInt(m_hWnd, id, translated, isSigned);
    }
    void SetDlgItemInt(int id, UINT value, BOOL isSigned = TRUE) { ::SetDlgItemInt(m_hWnd, id, value, isSigned); }
    LRESULT SendDlgItemMessage(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendDlgItemMessageW(m_hWnd, id, message, wParam, lParam);
    }
    void CheckDlgButton(int id, UINT check) { ::CheckDlgButton(m_hWnd, id, check); }
    UINT IsDlgButtonChecked(int id) const { return ::IsDlgButtonChecked(m_hWnd, id); }
    CWnd* GetNextDlgTabItem(CWnd* control, BOOL previous = FALSE) const {
        return FromHandle(::GetNextDlgTabItem(m_hWnd, HandleOf(control), previous));
    }
    CWnd* GetNextDlgGroupItem(CWnd* control, BOOL previous = FALSE) const {
        return FromHandle(::GetNextDlgGroupItem(m_hWnd, HandleOf(control), previous));
    }

    // Handles the thread's messages until EndModalLoop is called, or the window ends. EndModalLoop's result; -1 when the loop
    // ended otherwise, the thread's WM_QUIT included, which is posted again. The owner is neither disabled nor enabled here.
    int RunModalLoop(DWORD flags = 0);
    virtual void EndModalLoop(int result);
    // Whether a modal loop is to go on.
    virtual BOOL ContinueModal();

protected:
    // What comes to the window, before any map is looked at. The default asks OnWndMsg, and DefWindowProc where that is FALSE.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // The window's own procedure; the system's default for classes of AfxRegisterWndClass.
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // DefWindowProc of the message being handled, with the parameters that it came with.
    LRESULT Default();
    // TRUE when a handler took it; its result is in `result`.
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    // WM_COMMAND and WM_NOTIFY: the control that sent it is asked first, then OnCmdMsg. TRUE when it was taken.
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    // What a control has sent to its parent, given back to the control first. TRUE: the parent does not handle it.
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    // The window's end; the handle is gone already. Nothing by default.
    virtual void PostNcDestroy() {}

    // What messages do where no handler takes them; for handlers of derived classes to call. A handler is led to by the macro of
    // its name in a message map (ON_WM_SIZE: OnSize), and has the signature that stands here.
    afx_msg void OnActivate(UINT /*state*/, CWnd* /*other*/, BOOL /*minimized*/) { Default(); }
    afx_msg void OnActivateApp(BOOL /*active*/, DWORD /*thread*/) { Default(); }
    afx_msg void OnCancelMode() { Default(); }
    afx_msg void OnCaptureChanged(CWnd* /*gaining*/) { Default(); }
    afx_msg void OnChar(UINT /*character*/, UINT /*repeat*/, UINT /*flags*/) { Default(); }
    afx_msg void OnClose() { Default(); }
    afx_msg void OnContextMenu(CWnd* /*window*/, CPoint /*screen*/) { Default(); }
    afx_msg int OnCreate(LPCREATESTRUCT /*description*/) { return static_cast<int>(Default()); }
    // The kind is CTLCOLOR_STATIC and the like: the message's distance from WM_CTLCOLORMSGBOX.
    afx_msg HBRUSH OnCtlColor(CDC* dc, CWnd* control, UINT kind);
    afx_msg void OnDestroy() { Default(); }
    afx_msg void OnDrawItem(int control, LPDRAWITEMSTRUCT item);
    afx_msg void OnEnable(BOOL /*enabled*/) { Default(); }
    afx_msg BOOL OnEraseBkgnd(CDC* /*dc*/) { return Default() != 0; }
    afx_msg UINT OnGetDlgCode() { return static_cast<UINT>(Default()); }
    afx_msg void OnGetMinMaxInfo(MINMAXINFO* /*info*/) { Default(); }
    afx_msg BOOL OnHelpInfo(HELPINFO* /*info*/) { return Default() != 0; }
    afx_msg void OnKeyDown(UINT /*key*/, UINT /*repeat*/, UINT /*flags*/) { Default(); }
    afx_msg void OnKeyUp(UINT /*key*/, UINT /*repeat*/, UINT /*flags*/) { Default(); }
    afx_msg void OnKillFocus(CWnd* /*gaining*/) { Default(); }
    afx_msg void OnLButtonDblClk(UINT /*keys*/, CPoint /*point*/) { Default(); }
    afx_msg void OnLButtonDown(UINT /*keys*/, CPoint /*point*/) { Default(); }
    afx_msg void OnLButtonUp(UINT /*keys*/, CPoint /*point*/) { Default(); }
    afx_msg void OnMButtonDown(UINT /*keys*/, CPoint /*point*/) { Default(); }
    afx_msg void OnMButtonUp(UINT /*keys*/, CPoint /*point*/) { Default(); }
    afx_msg int OnMouseActivate(CWnd* /*topLevel*/, UINT /*hitTest*/, UINT /*message*/) { return static_cast<int>(Default()); }
    afx_msg void OnMouseHover(UINT /*keys*/, CPoint /*point*/) { Default(); }
    afx_msg void OnMouseLeave() { Default(); }
    afx_msg void OnMouseMove(UINT /*keys*/, CPoint /*point*/) { Default(); }
    afx_msg BOOL OnMouseWheel(UINT /*keys*/, short /*delta*/, CPoint /*screen*/) { return Default() != 0; }
    afx_msg void OnMove(int /*x*/, int /*y*/) { Default(); }
    afx_msg void OnMoving(UINT /*side*/, LPRECT /*rect*/) { Default(); }
    afx_msg BOOL OnNcActivate(BOOL /*active*/) { return Default() != 0; }
    afx_msg void OnNcCalcSize(BOOL /*valid*/, NCCALCSIZE_PARAMS* /*rects*/) { Default(); }
    afx_msg BOOL OnNcCreate(LPCREATESTRUCT /*description*/) { return Default() != 0; }
    afx_msg void OnNcDestroy();
    afx_msg LRESULT OnNcHitTest(CPoint /*screen*/) { return Default(); }
    afx_msg void OnNcLButtonDblClk(UINT /*hitTest*/, CPoint /*screen*/) { Default(); }
    afx_msg void OnNcLButtonDown(UINT /*hitTest*/, CPoint /*screen*/) { Default(); }
    afx_msg void OnNcLButtonUp(UINT /*hitTest*/, CPoint /*screen*/) { Default(); }
    afx_msg void OnNcMouseLeave() { Default(); }
    afx_msg void OnNcMouseMove(UINT /*hitTest*/, CPoint /*screen*/) { Default(); }
    afx_msg void OnNcPaint() { Default(); }
    afx_msg void OnNcRButtonDown(UINT /*hitTest*/, CPoint /*screen*/) { Default(); }
    afx_msg void OnNcRButtonUp(UINT /*hitTest*/, CPoint /*screen*/) { Default(); }
    afx_msg void OnPaint() { Default(); }
    afx_msg BOOL OnQueryEndSession() { return Default() != 0; }
    afx_msg BOOL OnQueryOpen() { return Default() != 0; }
    afx_msg void OnRButtonDown(UINT /*keys*/, CPoint /*point*/) { Default(); }
    afx_msg void OnRButtonUp(UINT /*keys*/, CPoint /*point*/) { Default(); }
    afx_msg BOOL OnSetCursor(CWnd* /*window*/, UINT /*hitTest*/, UINT /*message*/) { return Default() != 0; }
    afx_msg void OnSetFocus(CWnd* /*losing*/) { Default(); }
    afx_msg void OnSettingChange(UINT /*action*/, LPCTSTR /*section*/) { Default(); }
    afx_msg void OnShowWindow(BOOL /*shown*/, UINT /*reason*/) { Default(); }
    afx_msg void OnSize(UINT /*type*/, int /*width*/, int /*height*/) { Default(); }
    afx_msg void OnSizing(UINT /*side*/, LPRECT /*rect*/) { Default(); }
    afx_msg void OnStyleChanged(int /*which*/, STYLESTRUCT* /*style*/) { Default(); }
    afx_msg void OnStyleChanging(int /*which*/, STYLESTRUCT* /*style*/) { Default(); }
    afx_msg void OnSysColorChange() { Default(); }
    afx_msg void OnSysCommand(UINT /*command*/, LPARAM /*position*/) { Default(); }
    afx_msg void OnSysKeyDown(UINT /*key*/, UINT /*repeat*/, UINT /*flags*/) { Default(); }
    afx_msg void OnSysKeyUp(UINT /*key*/, UINT /*repeat*/, UINT /*flags*/) { Default(); }
    afx_msg void OnTimer(UINT_PTR /*id*/) { Default(); }
    afx_msg void OnWindowPosChanged(WINDOWPOS* /*position*/) { Default(); }
    afx_msg void OnWindowPosChanging(WINDOWPOS* /*position*/) { Default(); }

    DECLARE_MESSAGE_MAP()

private:
    friend class CDialog;
    friend struct AfxWindowCall;

    static HWND HandleOf(const CWnd* window) { return window != nullptr ? window->m_hWnd : nullptr; }
    static HRGN RegionOf(const CRgn* region) { return region != nullptr ? HRGN(*region) : nullptr; }
    BOOL CreateAs(const CREATESTRUCT& description);
    BOOL ChangeStyle(int index, DWORD remove, DWORD add, UINT flags);
    BOOL ReflectLastMessage(HWND control, LRESULT* result);
    LRESULT ReflectOrDefault(HWND control);
    void LoseModalLoop();
    void LeaveThread();

    WNDPROC m_pfnSuper = nullptr;         // the procedure that ours replaced
    AfxModalLoop* m_modalLoop = nullptr;  // the running one; lives on the stack of who runs it
};

// The application's main window; null when there is no application or no window.
KADATA_API CWnd* AfxGetMainWnd();
