// What is kept for each screen resolution.

#include <kadata/registry.h>

#include <algorithm>

#include "registry_values.h"

using namespace kadata::settings;

namespace {

constexpr LPCTSTR kMainFrame = _T("MainFrame");
constexpr LPCTSTR kPlacement = _T("Placement");
constexpr LPCTSTR kShowCmd = _T("ShowCmd");
constexpr LPCTSTR kShow = _T("Show");
constexpr LPCTSTR kShowStatusBar = _T("ShowStatusBar");
constexpr LPCTSTR kShowProgressBar = _T("ShowProgressBar");
constexpr LPCTSTR kShowSplittedProgressBar = _T("ShowSplittedProgressBar");
constexpr LPCTSTR kShowProgressBarCaption = _T("ShowProgressBarCaption");
constexpr LPCTSTR kStyle = _T("Style");
constexpr LPCTSTR kPosition = _T("Position");
constexpr int kMaximised = 3;
constexpr int kProgressBarDefault = 2;

CString ToText(const CRect& rect) {
    CString text;
    text.Format(_T("%u,%u,%u,%u"), static_cast<UINT>(rect.left), static_cast<UINT>(rect.top), static_cast<UINT>(rect.right),
                static_cast<UINT>(rect.bottom));
    return text;
}

// Takes one edge off the front: an unsigned number, or a signed one where somebody wrote it by hand. Nothing for what does not
// fit 32 bits.
std::optional<LONG> TakeEdge(TextView& text) {
    text.remove_prefix(std::min(text.find_first_not_of(_T(' ')), text.size()));
    const bool negative = text.starts_with(_T('-'));
    text.remove_prefix(negative);
    LONGLONG number = 0;
    std::size_t digits = 0;
    for (; digits < text.size() && text[digits] >= _T('0') && text[digits] <= _T('9') && number <= MAXDWORD; ++digits)
        number = number * 10 + (text[digits] - _T('0'));
    text.remove_prefix(digits);
    constexpr LONGLONG kLowest = -0x80000000LL;
    if (digits == 0 || number > MAXDWORD || (negative && -number < kLowest))
        return std::nullopt;
    return static_cast<LONG>(static_cast<DWORD>(negative ? -number : number));
}

std::optional<CRect> ToRect(TextView text) {
    LONG edges[4] = {};
    for (LONG& edge : edges) {
        const bool separated = &edge == edges || text.starts_with(_T(','));
        text.remove_prefix(&edge != edges && separated);
        const std::optional<LONG> taken = separated ? TakeEdge(text) : std::nullopt;
        if (!taken)
            return std::nullopt;
        edge = *taken;
    }
    return text.empty() ? std::optional(CRect(edges[0], edges[1], edges[2], edges[3])) : std::nullopt;
}

}  // namespace

CString CKalidoRegistry::GetScreenResolutionString() const {
    CString text;
    text.Format(_T("%ux%u"), static_cast<UINT>(GetSystemMetrics(SM_CXSCREEN)), static_cast<UINT>(GetSystemMetrics(SM_CYSCREEN)));
    return text;
}

CString CKalidoRegistry::ScreenSection(LPCTSTR section) const {
    return _T("ScreenPos\\") + GetScreenResolutionString() + _T("\\") + section;
}

CRect CKalidoRegistry::GetProfileRect(LPCTSTR section, LPCTSTR name, const CRect& defaultRect) const {
    const CString text = GetProfileStringW(section, name, nullptr, HKEY_CURRENT_USER);
    return ToRect(View(text)).value_or(defaultRect);
}

BOOL CKalidoRegistry::WriteProfileRect(LPCTSTR section, LPCTSTR name, const CRect& rect) const {
    return WriteProfileStringW(section, name != nullptr ? name : _T(""), ToText(rect), HKEY_CURRENT_USER);
}

CRect CKalidoRegistry::GetScreenProfileRect(LPCTSTR section, LPCTSTR name, const CRect& defaultRect) const {
    return GetProfileRect(ScreenSection(section), name, defaultRect);
}

BOOL CKalidoRegistry::WriteScreenProfileRect(LPCTSTR section, LPCTSTR name, const CRect& rect) const {
    return WriteProfileRect(ScreenSection(section), name, rect);
}

int CKalidoRegistry::GetScreenProfileInt(LPCTSTR section, LPCTSTR name, int defaultValue) const {
    return GetProfileIntW(ScreenSection(section), name, defaultValue, HKEY_CURRENT_USER);
}

BOOL CKalidoRegistry::WriteScreenProfileInt(LPCTSTR section, LPCTSTR name, int value) const {
    return WriteProfileInt(ScreenSection(section), name, value, HKEY_CURRENT_USER);
}

BOOL CKalidoRegistry::ClearScreenProfileEntry(LPCTSTR section, LPCTSTR name) const {
    return WriteProfileStringW(ScreenSection(section), name, nullptr, HKEY_CURRENT_USER);
}

int CKalidoRegistry::GetMainFrameShowCmd() const {
    return GetScreenProfileInt(kMainFrame, kShowCmd, kMaximised);
}

BOOL CKalidoRegistry::WriteMainFrameShowCmd(int showCmd) {
    return WriteScreenProfileInt(kMainFrame, kShowCmd, showCmd);
}

CRect CKalidoRegistry::GetMainFramePos(const CRect& defaultPos) const {
    return GetScreenProfileRect(kMainFrame, kPlacement, defaultPos);
}

BOOL CKalidoRegistry::WriteMainFramePos(const CRect& pos) {
    return WriteScreenProfileRect(kMainFrame, kPlacement, pos);
}

int CKalidoRegistry::GetShowStatusBar() const {
    return GetScreenProfileInt(kMainFrame, kShowStatusBar, TRUE);
}

BOOL CKalidoRegistry::WriteShowStatusBar(int show) {
    return WriteScreenProfileInt(kMainFrame, kShowStatusBar, show);
}

int CKalidoRegistry::GetShowProgressBar() const {
    return GetScreenProfileInt(kMainFrame, kShowProgressBar, kProgressBarDefault);
}

BOOL CKalidoRegistry::WriteShowProgressBar(int show) {
    return WriteScreenProfileInt(kMainFrame, kShowProgressBar, show);
}

int CKalidoRegistry::GetShowSplittedProgressBar() const {
    return GetScreenProfileInt(kMainFrame, kShowSplittedProgressBar, TRUE);
}

BOOL CKalidoRegistry::WriteShowSplittedProgressBar(int show) {
    return WriteScreenProfileInt(kMainFrame, kShowSplittedProgressBar, show);
}

int CKalidoRegistry::GetShowProgressBarCaption() const {
    return GetScreenProfileInt(kMainFrame, kShowProgressBarCaption, TRUE);
}

BOOL CKalidoRegistry::WriteShowProgressBarCaption(int show) {
    return WriteScreenProfileInt(kMainFrame, kShowProgressBarCaption, show);
}

BOOL CKalidoRegistry::WriteWindowPos(const CString& window, const CRect& pos) {
    return WriteScreenProfileRect(window, kPlacement, pos);
}

CRect CKalidoRegistry::GetWindowPos(const CString& window, const CRect& defaultPos) const {
    return GetScreenProfileRect(window, kPlacement, defaultPos);
}

BOOL CKalidoRegistry::ClearWindowPos(const CString& window) {
    return ClearScreenProfileEntry(window, kPlacement);
}

BOOL CKalidoRegistry::WriteShowWindow(const CString& window, int show) {
    return WriteScreenProfileInt(window, kShow, show);
}

int CKalidoRegistry::GetShowWindow(const CString& window, int defaultShow) const {
    return GetScreenProfileInt(window, kShow, defaultShow);
}

int CKalidoRegistry::GetToolbarStyle(const CString& toolbar, int defaultStyle) const {
    return GetScreenProfileInt(kMainFrame, toolbar + kStyle, defaultStyle);
}

BOOL CKalidoRegistry::WriteToolbarStyle(const CString& toolbar, int style) {
    return WriteScreenProfileInt(kMainFrame, toolbar + kStyle, style);
}

CRect CKalidoRegistry::GetToolbarPos(const CString& toolbar) const {
    return GetScreenProfileRect(kMainFrame, toolbar + kPosition, CRect());
}

BOOL CKalidoRegistry::WriteToolbarPos(const CString& toolbar, const CRect& pos) {
    return WriteScreenProfileRect(kMainFrame, toolbar + kPosition, pos);
}
