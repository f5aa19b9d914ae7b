#include <kadata/theme_util.h>

#include <new>
#include <string_view>

namespace {

constexpr LPCTSTR THEME_LIBRARY = _T("UxTheme.dll");
constexpr LPCTSTR BLEND_LIBRARY = _T("msimg32.dll");
constexpr LONG WINDOWS_XP = 0x50001;
constexpr LONG WINDOWS_VISTA = 0x60000;
constexpr int NAME_CAPACITY = 260;
constexpr int TRUE_SIZE = 1;  // THEMESIZE: without stretching

HMODULE HandleOf(const std::shared_ptr<void>& module) {
    return static_cast<HMODULE>(module.get());
}

// Null when library or function are missing.
template <class Signature>
Signature* Find(HMODULE library, LPCSTR name) {
    return library != nullptr ? reinterpret_cast<Signature*>(reinterpret_cast<void*>(GetProcAddress(library, name))) : nullptr;
}

template <class Signature, class... Args>
BOOL Call(HMODULE library, LPCSTR name, Args... args) {
    Signature* const function = Find<Signature>(library, name);
    if (function == nullptr) {
        return FALSE;
    }
    static_cast<void>(function(args...));
    return TRUE;
}

BOOL IsTrue(HMODULE library, LPCSTR question) {
    using Question = BOOL WINAPI();
    Question* const function = Find<Question>(library, question);
    return function != nullptr && function() != FALSE;
}

bool EndsWith(std::basic_string_view<TCHAR> text, std::basic_string_view<TCHAR> end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

}  // namespace

CThemeUtil::CThemeUtil() {
    FreeLibrary();
    if (IsWinXPOrHigher()) {
        m_ThemeLibrary = Load(THEME_LIBRARY);
    }
    m_BlendLibrary = Load(BLEND_LIBRARY);
}

CThemeUtil::CThemeUtil(LPCTSTR themeLibrary) : m_ThemeLibrary(Load(themeLibrary)), m_BlendLibrary(Load(BLEND_LIBRARY)) {}

CThemeUtil::CThemeUtil(const CThemeUtil& other) = default;
CThemeUtil& CThemeUtil::operator=(const CThemeUtil& other) = default;
CThemeUtil::~CThemeUtil() = default;

CThemeUtil::Module CThemeUtil::Load(LPCTSTR name) {
    const HINSTANCE library = AfxLoadLibrary(name);
    return library != nullptr ? Module(library, [](void* module) { AfxFreeLibrary(static_cast<HINSTANCE>(module)); }) : nullptr;
}

void CThemeUtil::FreeLibrary() {
    CloseThemeData();
    m_ThemeLibrary.reset();
    m_BlendLibrary.reset();
}

LONG CThemeUtil::GetWinVersion() {
    OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = sizeof(version);
    return GetVersionExW(&version) ? static_cast<LONG>(MAKELONG(version.dwMinorVersion, version.dwMajorVersion)) : 0;
}

BOOL CThemeUtil::IsWinXPOrHigher() {
    return GetWinVersion() >= WINDOWS_XP;
}

BOOL CThemeUtil::IsWinVistaOrHigher() {
    return GetWinVersion() >= WINDOWS_VISTA;
}

BOOL CThemeUtil::IsThemeActive() {
    const HMODULE library = GetModuleHandleW(THEME_LIBRARY);
    return IsTrue(library, "IsThemeActive") && IsTrue(library, "IsAppThemed");
}

BOOL CThemeUtil::OpenThemeData(HWND window, LPCWSTR classList) {
    using Open = HANDLE WINAPI(HWND, LPCWSTR);
    const HMODULE library = HandleOf(m_ThemeLibrary);
    if (window == nullptr || m_Theme != nullptr || !IsTrue(library, "IsThemeActive")) {
        return FALSE;
    }
    Open* const open = Find<Open>(library, "OpenThemeData");
    const HANDLE theme = open != nullptr ? open(window, classList) : nullptr;
    if (theme == nullptr) {
        return FALSE;
    }
    m_Theme = std::shared_ptr<void>(theme, [keeper = m_ThemeLibrary](HANDLE opened) {
        Call<HRESULT WINAPI(HANDLE)>(HandleOf(keeper), "CloseThemeData", opened);
    });
    if (!OpenStyle()) {
        CloseThemeData();
        return FALSE;
    }
    return TRUE;
}

// Which visual style it is, and its file.
BOOL CThemeUtil::OpenStyle() {
    using Name = HRESULT WINAPI(LPWSTR, int, LPWSTR, int, LPWSTR, int);
    WCHAR file[NAME_CAPACITY] = {};
    WCHAR color[NAME_CAPACITY] = {};
    WCHAR size[NAME_CAPACITY] = {};
    Name* const name = Find<Name>(HandleOf(m_ThemeLibrary), "GetCurrentThemeName");
    if (name == nullptr || name(file, NAME_CAPACITY, color, NAME_CAPACITY, size, NAME_CAPACITY) < 0) {
        return FALSE;
    }
    file[NAME_CAPACITY - 1] = 0;
    m_IsLuna = EndsWith(file, _T("\\Luna\\Luna.msstyles"));
    m_IsAero = EndsWith(file, _T("\\Aero\\Aero.msstyles"));
    const HMODULE style = LoadLibraryExW(file, nullptr, LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    if (style == nullptr) {
        return FALSE;
    }
    m_StyleFile = Module(style, [](void* module) { ::FreeLibrary(static_cast<HMODULE>(module)); });
    return TRUE;
}

void CThemeUtil::CloseThemeData() {
    m_Theme.reset();
    m_StyleFile.reset();
    m_IsLuna = FALSE;
    m_IsAero = FALSE;
}

HBITMAP CThemeUtil::LoadBitmap(LPWSTR name) const {
    if (m_StyleFile == nullptr || name == nullptr) {
        return nullptr;
    }
    try {
        CString resource(name);
        resource.Replace(_T('\\'), _T('_'));
        resource.Replace(_T('.'), _T('_'));
        return ::LoadBitmapW(HandleOf(m_StyleFile), resource);
    } catch (CMemoryException* exception) {
        exception->Delete();
    } catch (const std::bad_alloc&) {
    }
    return nullptr;
}

// With the open theme as the first argument.
template <class Signature, class... Args>
BOOL CThemeUtil::CallTheme(LPCSTR name, Args... args) const {
    return m_Theme != nullptr && Call<Signature>(HandleOf(m_ThemeLibrary), name, m_Theme.get(), args...);
}

BOOL CThemeUtil::DrawThemeParentBackground(HWND window, HDC dc, const RECT* rect) const {
    return m_Theme != nullptr &&
           Call<HRESULT WINAPI(HWND, HDC, const RECT*)>(HandleOf(m_ThemeLibrary), "DrawThemeParentBackground", window, dc, rect);
}

BOOL CThemeUtil::DrawThemeBackground(HDC dc, int part, int state, const RECT* rect) const {
    const RECT* const unclipped = nullptr;
    return CallTheme<HRESULT WINAPI(HANDLE, HDC, int, int, const RECT*, const RECT*)>("DrawThemeBackground", dc, part, state,
                                                                                      rect, unclipped);
}

BOOL CThemeUtil::GetThemeSysSize(int size) const {
    return CallTheme<int WINAPI(HANDLE, int)>("GetThemeSysSize", size);
}

BOOL CThemeUtil::GetThemeColor(int part, int state, int property, DWORD* color) const {
    return CallTheme<HRESULT WINAPI(HANDLE, int, int, int, DWORD*)>("GetThemeColor", part, state, property, color);
}

BOOL CThemeUtil::GetThemeBool(int part, int state, int property, BOOL* value) const {
    return CallTheme<HRESULT WINAPI(HANDLE, int, int, int, BOOL*)>("GetThemeBool", part, state, property, value);
}

BOOL CThemeUtil::GetThemeBitmap(int part, int state, int property, ULONG flags, HBITMAP* bitmap) const {
    return CallTheme<HRESULT WINAPI(HANDLE, int, int, int, ULONG, HBITMAP*)>("GetThemeBitmap", part, state, property, flags,
                                                                             bitmap);
}

BOOL CThemeUtil::GetThemeRect(int part, int state, int property, RECT* rect) const {
    return CallTheme<HRESULT WINAPI(HANDLE, int, int, int, RECT*)>("GetThemeRect", part, state, property, rect);
}

BOOL CThemeUtil::GetThemePosition(int part, int state, int property, POINT* position) const {
    return CallTheme<HRESULT WINAPI(HANDLE, int, int, int, POINT*)>("GetThemePosition", part, state, property, position);
}

BOOL CThemeUtil::GetThemeEnumValue(int part, int state, int property, int* value) const {
    return CallTheme<HRESULT WINAPI(HANDLE, int, int, int, int*)>("GetThemeEnumValue", part, state, property, value);
}

BOOL CThemeUtil::GetThemeInt(int part, int state, int property, int* value) const {
    return CallTheme<HRESULT WINAPI(HANDLE, int, int, int, int*)>("GetThemeInt", part, state, property, value);
}

BOOL CThemeUtil::GetThemeMargins(HDC dc, int part, int state, int property, RECT* rect, SMargins* margins) const {
    return CallTheme<HRESULT WINAPI(HANDLE, HDC, int, int, int, RECT*, SMargins*)>("GetThemeMargins", dc, part, state, property,
                                                                                   rect, margins);
}

BOOL CThemeUtil::GetThemeFilename(int part, int state, int property, LPWSTR name, int capacity) const {
    return CallTheme<HRESULT WINAPI(HANDLE, int, int, int, LPWSTR, int)>("GetThemeFilename", part, state, property, name,
                                                                         capacity);
}

BOOL CThemeUtil::IsThemeBackgroundPartiallyTransparent(int part, int state) const {
    return CallTheme<BOOL WINAPI(HANDLE, int, int)>("IsThemeBackgroundPartiallyTransparent", part, state);
}

BOOL CThemeUtil::GetCurrentThemeName(LPWSTR file, int fileCapacity, LPWSTR color, int colorCapacity, LPWSTR size,
                                     int sizeCapacity) const {
    return m_Theme != nullptr &&
           Call<HRESULT WINAPI(LPWSTR, int, LPWSTR, int, LPWSTR, int)>(HandleOf(m_ThemeLibrary), "GetCurrentThemeName", file,
                                                                       fileCapacity, color, colorCapacity, size, sizeCapacity);
}

BOOL CThemeUtil::GetThemePartSize(HDC dc, int part, int state, SIZE* size) const {
    const RECT* const anywhere = nullptr;
    return CallTheme<HRESULT WINAPI(HANDLE, HDC, int, int, const RECT*, int, SIZE*)>("GetThemePartSize", dc, part, state,
                                                                                     anywhere, TRUE_SIZE, size);
}

BOOL CThemeUtil::SetThemeAppProperties(DWORD flags) const {
    return m_Theme != nullptr && Call<void WINAPI(DWORD)>(HandleOf(m_ThemeLibrary), "SetThemeAppProperties", flags);
}

BOOL CThemeUtil::GetThemeAppProperties(DWORD& flags) const {
    using Properties = DWORD WINAPI();
    Properties* const function =
        m_Theme != nullptr ? Find<Properties>(HandleOf(m_ThemeLibrary), "GetThemeAppProperties") : nullptr;
    if (function == nullptr) {
        return FALSE;
    }
    flags = function();
    return TRUE;
}

BOOL CThemeUtil::TransparentBlt(HDC target, int x, int y, int width, int height, HDC source, int sourceX, int sourceY,
                                int sourceWidth, int sourceHeight, UINT transparent) const {
    return Call<BOOL WINAPI(HDC, int, int, int, int, HDC, int, int, int, int, UINT)>(
        HandleOf(m_BlendLibrary), "TransparentBlt", target, x, y, width, height, source, sourceX, sourceY, sourceWidth,
        sourceHeight, transparent);
}

BOOL CThemeUtil::GradientFill(HDC target, TRIVERTEX* vertices, ULONG vertexCount, void* mesh, ULONG meshCount, ULONG mode) const {
    return Call<BOOL WINAPI(HDC, TRIVERTEX*, ULONG, void*, ULONG, ULONG)>(HandleOf(m_BlendLibrary), "GradientFill", target,
                                                                          vertices, vertexCount, mesh, meshCount, mode);
}
