#pragma once

// The system's visual styles and blending functions, where they are there.
//
// Both libraries ("UxTheme.dll", "msimg32.dll") are loaded at run time, and each function is looked up when it is called. Where a
// library, a function or an open theme is missing, the answer is FALSE or null; nothing is reported, and nothing throws. There
// are no visual styles on Linux, and no blending library is missing there.
//
// Of the thread of the user interface.

#include <afxwin.h>
#include <kadata/export.h>

#include <memory>

// Copies share what the object has loaded and opened; the last one frees it. Closing the theme of one leaves it open in the
// others.
class KADATA_API CThemeUtil {
public:
    // As the visual styles have them, in pixels.
    struct SMargins {
        int left;
        int right;
        int top;
        int bottom;
    };

    // Visual styles are looked for on Windows 5.1 and later.
    CThemeUtil();
    CThemeUtil(const CThemeUtil& other);
    CThemeUtil& operator=(const CThemeUtil& other);
    virtual ~CThemeUtil();

    // The major version of Windows in the upper 16 bits, the minor one in the lower; 0 where it cannot be had, as on Linux.
    static LONG GetWinVersion();
    static BOOL IsWinXPOrHigher();
    static BOOL IsWinVistaOrHigher();

    // Whether the process is drawn in a visual style. FALSE as long as nobody has loaded the library.
    static BOOL IsThemeActive();

    // Opens the theme of a window for classes ("BUTTON;STATIC"), and the file of the visual style for LoadBitmap. FALSE, and
    // nothing is open, when there is no visual style or no theme for these classes; FALSE, and all stays as it is, when a theme
    // is open already.
    BOOL OpenThemeData(HWND window, LPCWSTR classList);
    void CloseThemeData();
    // By the end of the style's file name, case included: "\Luna\Luna.msstyles", "\Aero\Aero.msstyles". FALSE without an open
    // theme.
    BOOL IsLunaTheme() const { return m_IsLuna; }
    BOOL IsAeroTheme() const { return m_IsAero; }
    // A bitmap of the visual style's file, the caller's to delete. In the name "\" and "." stand for "_". Null when there is
    // none.
    HBITMAP LoadBitmap(LPWSTR name) const;

    // The functions of the system's that have these names, with the open theme. Deliberate: TRUE when the function was called,
    // whatever it returned; results are in the output arguments, and those that the function only returns (GetThemeSysSize,
    // IsThemeBackgroundPartiallyTransparent) are not to be had.
    BOOL DrawThemeParentBackground(HWND window, HDC dc, const RECT* rect) const;
    BOOL DrawThemeBackground(HDC dc, int part, int state, const RECT* rect) const;
    BOOL GetThemeSysSize(int size) const;
    BOOL GetThemeColor(int part, int state, int property, DWORD* color) const;
    BOOL GetThemeBool(int part, int state, int property, BOOL* value) const;
    BOOL GetThemeBitmap(int part, int state, int property, ULONG flags, HBITMAP* bitmap) const;
    BOOL GetThemeRect(int part, int state, int property, RECT* rect) const;
    BOOL GetThemePosition(int part, int state, int property, POINT* position) const;
    BOOL GetThemeEnumValue(int part, int state, int property, int* value) const;
    BOOL GetThemeInt(int part, int state, int property, int* value) const;
    BOOL GetThemeMargins(HDC dc, int part, int state, int property, RECT* rect, SMargins* margins) const;
    BOOL GetThemeFilename(int part, int state, int property, LPWSTR name, int capacity) const;
    BOOL IsThemeBackgroundPartiallyTransparent(int part, int state) const;
    BOOL GetCurrentThemeName(LPWSTR file, int fileCapacity, LPWSTR color, int colorCapacity, LPWSTR size, int sizeCapacity) const;
    // The size without stretching.
    BOOL GetThemePartSize(HDC dc, int part, int state, SIZE* size) const;
    BOOL SetThemeAppProperties(DWORD flags) const;
    BOOL GetThemeAppProperties(DWORD& flags) const;

    // Of the blending library; no theme is needed. The same holds for their results.
    BOOL TransparentBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, int sourceWidth,
                        int sourceHeight, UINT transparent) const;
    BOOL GradientFill(HDC target, TRIVERTEX* vertices, ULONG vertexCount, void* mesh, ULONG meshCount, ULONG mode) const;

protected:
    // Another library with the functions of UxTheme.dll, on any system: for hosts that bring their own visual styles.
    explicit CThemeUtil(LPCTSTR themeLibrary);

    // Closes the theme and gives the libraries up.
    void FreeLibrary();

private:
    using Module = std::shared_ptr<void>;  // its get() is the HMODULE

    static Module Load(LPCTSTR name);
    BOOL OpenStyle();
    template <class Signature, class... Args>
    BOOL CallTheme(LPCSTR name, Args... args) const;

    Module m_ThemeLibrary;
    Module m_StyleFile;
    Module m_BlendLibrary;
    std::shared_ptr<void> m_Theme;
    BOOL m_IsLuna = FALSE;
    BOOL m_IsAero = FALSE;
};
