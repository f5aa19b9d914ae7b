#pragma once

// Windows that wear the skin without being derived from anything: an object is attached to a window that somebody else has made,
// and sees its messages before the window's own procedure does.
//
//     CSkinStubWnd skin(CSkinStubWnd::SkinFrame | CSkinStubWnd::SkinBackground);
//     skin.Apply(&window);  // until Apply(nullptr), the end of `skin`, or the end of the window
//
// Everything here belongs to the thread of the user interface, which owns the windows. No lock is taken.
//
// Coordinates are pixels: of the screen, of a window (from its upper left corner, frame included, as a window's device context
// has them), or of its client area.

#include <afxcoll.h>
#include <afxwin.h>
#include <kadata/export.h>
#include <kadata/skin.h>
#include <kadata/skin_info.h>

#include <memory>

namespace kadata {
class HandlerWatch;
struct SkinCall;
class SkinFrame;
}  // namespace kadata

// A handler of messages, attached to one window or to none. Several may be attached to one window; the last attached is asked
// first. The handler belongs to whoever made it.
//
// While a message is handled, handlers may be attached, detached and deleted, and the window may be destroyed:
//   - a handler that is detached, even by itself, still passes on what it is in the middle of: to the handlers behind it that
//     are attached still, then to the window's procedure, each of which sees the message once;
//   - a handler that is attached meanwhile sees the next message;
//   - no procedure is called for a window that does not exist any more: passing on gives 0 then.
//
// The window ends: WM_DESTROY and WM_NCDESTROY detach all handlers and then go to the window's procedure; handlers do not see
// them.
//
// Others may replace the window's procedure as well, before, after or between. When the last handler goes while somebody else's
// procedure lies above ours, ours stays in the window and passes everything on; it is used again for the next handler. So whoever
// remembers a procedure and puts it back later finds a working one. Whoever replaced it before the first handler, and puts back
// what he found while there are handlers, cuts them off from the window: they see no messages, its end included, until another
// handler is attached.
//
// A CException that a handler lets out goes to CWinThread::ProcessWndProcException, as it does from a CWnd.
class KADATA_API CSkinSubclassWnd : public CObject {
    DECLARE_DYNAMIC(CSkinSubclassWnd)

public:
    CSkinSubclassWnd() = default;
    CSkinSubclassWnd(const CSkinSubclassWnd&) = delete;
    CSkinSubclassWnd& operator=(const CSkinSubclassWnd&) = delete;
    // Detaches.
    ~CSkinSubclassWnd() override;

    // Sees a message of the window; what it returns is the message's result. The default passes it on: to the handler behind this
    // one, else to the procedure that the window had before. 0 when the handler is not attached.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);

    // Attaches, and returns TRUE; FALSE, and nothing is changed, when the handler is attached already, or there is no window to
    // be had behind `wnd`. Null detaches, if there is something to detach, and is TRUE in any case.
    BOOL HookWindow(CWnd* wnd);
    // Whether the handler is attached to that window; null: to any window.
    BOOL IsHooked(CWnd* wnd) const;
    // The window's object: the one that was attached, as long as that lives. Null when detached.
    CWnd* GetHookedWnd() const { return CWnd::FromHandle(m_Window); }
    HWND GetHookedHwnd() const { return m_Window; }

    // Passes on the message that the thread is handling (AfxGetThreadState()->m_lastSentMsg).
    LRESULT Default();

protected:
    // The window's end has detached the handler. It may be attached again, or delete itself.
    virtual void OnWindowEnded() {}

private:
    friend class CSkinSubclassWndMap;

    HWND m_Window = nullptr;
    CSkinSubclassWnd* m_Next = nullptr;  // attached before this one, to the same window
    WNDPROC m_Procedure = nullptr;       // behind all handlers of the window
};

// Which windows have handlers: for each the one that is asked first. There is one map for the process.
class KADATA_API CSkinSubclassWndMap : private CMapPtrToPtr {
public:
    // Made at the first use. When the process ends, it detaches what is attached still.
    static CSkinSubclassWndMap& GetHookMap();

    CSkinSubclassWndMap(const CSkinSubclassWndMap&) = delete;
    CSkinSubclassWndMap& operator=(const CSkinSubclassWndMap&) = delete;

    // FALSE, and nothing is changed, for null, a handler that is attached already, or a window whose procedure cannot be
    // replaced.
    BOOL Add(HWND window, CSkinSubclassWnd* handler);
    // FALSE for a handler that is not attached.
    BOOL Remove(CSkinSubclassWnd* handler);
    void RemoveAll(HWND window);
    // The handler that is asked first; null when there is none.
    CSkinSubclassWnd* Lookup(HWND window) const;

    // Windows, not handlers.
    using CMapPtrToPtr::GetCount;
    using CMapPtrToPtr::IsEmpty;

private:
    friend class CSkinSubclassWnd;
    friend class kadata::HandlerWatch;

    CSkinSubclassWndMap() = default;
    ~CSkinSubclassWndMap() override;

    static LRESULT CALLBACK HookProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    WNDPROC LeftIn(HWND window) const;
    WNDPROC Hook(HWND window);
    WNDPROC Rehook(HWND window, CSkinSubclassWnd& first);
    void Unhook(HWND window, WNDPROC procedure);
    static LRESULT Call(HWND window, CSkinSubclassWnd* handler, WNDPROC procedure, const MSG& message);
    static kadata::SkinCall WayFrom(CSkinSubclassWnd& handler);
    static LRESULT PassOn(CSkinSubclassWnd& handler, const MSG& message);
    static void Forget(const CSkinSubclassWnd& handler);
    LRESULT Dispatch(const MSG& message);
    LRESULT EndWindow(const MSG& message);
    void DetachEnded(HWND window);
    void Unlink(CSkinSubclassWnd& handler);

    // Procedures to pass messages on to, by window: while ours lies in a window without any handler.
    CMapPtrToPtr m_Left;
    static kadata::SkinCall* m_Innermost;  // the messages that are being handled, the last one first
};

// Where the parts of a window's frame are. A value; it asks the window at each call, and must not be used after the window's end
// other than to be copied or destroyed.
//
// The parts are those of the system's frame, as the window's styles give it: the borders of the window's kind (with
// WS_THICKFRAME the sizing frame and its padding, with WS_DLGFRAME or WS_EX_DLGMODALFRAME the dialog frame, with WS_BORDER a
// line, with WS_EX_STATICEDGE one more), and the caption. The top and the bottom border are as wide as the window, the left and
// the right one lie between them. The edge of WS_EX_CLIENTEDGE, scroll bars and menus belong to none of the parts. A window that
// has taken its frame into its client area (WM_NCCALCSIZE) has no borders, by as much as it has taken.
//
// `screen`: other than 0 for coordinates of the screen, 0 for those of the window.
class KADATA_API CSkinWndInfo {
public:
    explicit CSkinWndInfo(CWnd* wnd);
    CSkinWndInfo(const CSkinWndInfo& other) = default;
    CSkinWndInfo& operator=(const CSkinWndInfo& other) = default;
    virtual ~CSkinWndInfo() = default;

    // By the styles that the window had when the object was made.
    virtual BOOL HasInitialSysMenu() const;
    virtual BOOL HasInitialCaption() const;
    virtual BOOL HasInitialMaximizeBox() const;
    virtual BOOL HasInitialMinimizeBox() const;
    // By those that it has now.
    virtual BOOL HasSysMenu() const;
    // Deliberate: TRUE for every window; without border styles the borders are empty.
    virtual BOOL HasBorder() const;
    // Deliberate: any of the two bits of WS_CAPTION; so a window with WS_BORDER or WS_DLGFRAME alone has one here, though the
    // system gives it none.
    virtual BOOL HasCaption() const;
    virtual BOOL HasMaximizeBox() const;
    virtual BOOL HasMinimizeBox() const;
    virtual BOOL HasThickFrame() const;

    // The whole of the borders' bounds.
    virtual CRect GetBorderRect(int screen = FALSE) const;
    virtual CRect GetClientRect(int screen = FALSE) const;
    // Between the left and the right border, below the top one, as high as the system's caption: SM_CYSMCAPTION with
    // WS_EX_TOOLWINDOW, else SM_CYCAPTION. Empty without a caption.
    virtual CRect GetCaptionRect(int screen = FALSE) const;
    virtual CRect GetLeftBorderRect(int screen = FALSE) const;
    virtual CRect GetRightBorderRect(int screen = FALSE) const;
    virtual CRect GetTopBorderRect(int screen = FALSE) const;
    virtual CRect GetBottomBorderRect(int screen = FALSE) const;

    // The caller's to delete (DeleteObject). GetClipRGN is what a skinned frame covers: borders and caption, as far as they are
    // outside of the client area.
    virtual HRGN GetClipRGN(int screen = FALSE) const;
    virtual HRGN GetCaptionRGN(int screen = FALSE) const;
    virtual HRGN GetClientRGN(int screen = FALSE) const;
    virtual HRGN GetBorderRGN(int screen = FALSE) const;
    virtual HRGN GetCaptionAndBorderRGN(int screen = FALSE) const;

private:
    DWORD Style() const;
    DWORD ExStyle() const;
    CRect WindowRect(int screen) const;
    CRect BorderWidths() const;

    HWND m_Window;
    DWORD m_InitialStyle;
};

// Skins a window: its frame, its background, or both. Static controls on a skinned background show it, as if they were of glass.
//
// The skin is that of CSkinManager, or one that SetSkinInfo was given; GDI+ has to be started while anything is attached.
class KADATA_API CSkinStubWnd : public CSkinSubclassWnd {
    DECLARE_DYNAMIC(CSkinStubWnd)

public:
    // Single bits. Others are kept and do nothing here: they are for derived classes.
    enum EFlags : UINT {
        NoFlags = 0,
        // Borders, caption and the boxes in it are drawn from the skin: windowFrame, captionButton, closeGlyph, minimizeGlyph and
        // the measures of the boxes. Sizes stay the system's. The boxes do what the system's do; there is no icon in the caption.
        SkinFrame = 0x1,
        // The client area shows the skin's window background, stretched over it.
        SkinBackground = 0x2,
    };

    explicit CSkinStubWnd(EFlags flags = NoFlags);
    // Detaches.
    ~CSkinStubWnd() override;

    // Attaches the skin to a window and draws it anew. FALSE, and nothing is changed, when the skin is attached already, no flag
    // is set, OnInitSkinBitmapInfos fails, or HookWindow does. A bitmap that cannot be loaded is told in the log; the background
    // is then of the system's colour (COLOR_3DFACE), the frame the system's. Null takes the skin off, and is TRUE in any case.
    BOOL Apply(CWnd* wnd);
    // FALSE, and nothing is changed, when no window is attached and `force` is FALSE. An attached window is drawn anew.
    BOOL SetFlags(EFlags flags, BOOL force);
    EFlags GetFlags() const { return m_Flags; }
    BOOL IsFlagSet(EFlags flags) const { return (m_Flags & flags) == flags; }
    BOOL IsNoFlagSet() const { return m_Flags == NoFlags; }

    // Another skin than the manager's, to be set before Apply. FALSE when it is not complete.
    BOOL SetSkinInfo(const SkinInfo& info);
    const SkinInfo& GetSkinInfo() const { return m_SkinInfo; }
    // Which bitmap Apply loads for the background, and what draws it.
    SkinBitmapInfo& GetInitSkinBackgroundBitmapInfo() { return m_InitBackground; }
    CSkin& GetSkinBackground() { return m_SkinBackground; }
    // Font and colours of the caption's text; by default the system's caption font, and its colours of button texts. The font
    // stays the caller's and has to last as long as the skin is attached; null is the system's.
    void SetCaptionLook(CFont* font, COLORREF active, COLORREF inactive);

    // Makes the background anew at the next use, and draws the attached window anew.
    void Refresh();
    // The background in the size of the client area, kept until that changes, and the brush for static controls. FALSE when
    // there is none to be had, as for an empty client area.
    BOOL CreateBackground();
    void DestroyBackground();
    // Null when there is no background.
    CBitmap* GetBackgroundBitmap() { return m_Background.GetSafeHandle() != nullptr ? &m_Background : nullptr; }

    // Beside painting: WM_SIZE invalidates the whole window, controls included, without erasing, and the next WM_PAINT draws the
    // background of the new size before anything else; WM_ERASEBKGND does not reach the window.
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    // Whether there is a complete skin with a background. The skin's copy is taken here, once.
    virtual BOOL OnInitSkinBitmapInfos();
    // The window ends, or WM_DESTROY came directly: gives up what was cached for it.
    virtual void OnDestroySkin();
    // Answers WM_ERASEBKGND; the default is OnEraseBackgroundSkin.
    virtual BOOL OnEraseBackground(HDC dc);
    // Draws the background. TRUE, even when there is none.
    virtual BOOL OnEraseBackgroundSkin(HDC dc);
    // While WM_NCPAINT is handled: lets the system draw what the skin does not cover (GetClipRGN) of `updateRgn`, in coordinates
    // of the screen; 0 and 1 are the whole window.
    virtual LRESULT DefaultRgn(HRGN updateRgn);

protected:
    void OnWindowEnded() override;

private:
    friend class kadata::SkinFrame;

    void LoadSkin();
    void FlagsChanged(EFlags before);
    void Redraw();
    LRESULT HandleBackground(UINT message, WPARAM wParam, LPARAM lParam);
    void BackgroundResized();
    void AlignPattern(HDC dc, HWND control);
    BOOL DrawBackground(HDC like);
    BOOL MakePattern(HDC like);

    EFlags m_Flags;
    SkinInfo m_SkinInfo;
    SkinBitmapInfo m_InitBackground;
    CSkin m_SkinBackground;
    CBitmap m_Background;
    CSize m_BackgroundSize;
    CBrush m_Pattern;
    bool m_PaintsBackground = false;  // at the next WM_PAINT: the window has another size
    std::unique_ptr<kadata::SkinFrame> m_Frame;
};

constexpr CSkinStubWnd::EFlags operator|(CSkinStubWnd::EFlags a, CSkinStubWnd::EFlags b) {
    return static_cast<CSkinStubWnd::EFlags>(UINT{a} | UINT{b});
}

// A rectangle that is filled when it is made; empty for null.
class CSkinClientRect : public CRect {
public:
    explicit CSkinClientRect(HWND window) { ::GetClientRect(window, this); }
    explicit CSkinClientRect(const CWnd* wnd) : CSkinClientRect(wnd != nullptr ? wnd->GetSafeHwnd() : nullptr) {}
};

// In coordinates of the screen.
class CSkinWindowRect : public CRect {
public:
    explicit CSkinWindowRect(HWND window) { ::GetWindowRect(window, this); }
    explicit CSkinWindowRect(const CWnd* wnd) : CSkinWindowRect(wnd != nullptr ? wnd->GetSafeHwnd() : nullptr) {}
};

// The smallest rectangle around what can be drawn on, in the context's coordinates.
class CSkinClipRect : public CRect {
public:
    explicit CSkinClipRect(HDC dc) { ::GetClipBox(dc, this); }
    explicit CSkinClipRect(const CDC* dc) : CSkinClipRect(dc != nullptr ? dc->GetSafeHdc() : nullptr) {}
};
