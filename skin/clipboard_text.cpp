#include "clipboard_text.h"

#include <cstring>

namespace kadata {
namespace {

class OpenedClipboard {
public:
    explicit OpenedClipboard(HWND owner) : open_(::OpenClipboard(owner)) {}
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
    ~OpenedClipboard() {
        if (open_) {
            ::CloseClipboard();
        }
    }
    explicit operator bool() const { return open_ != FALSE; }

private:
    BOOL open_;
};

HGLOBAL BlockOf(const CString& text) {
    const std::size_t size = (static_cast<std::size_t>(text.GetLength()) + 1) * sizeof(TCHAR);
    const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, size);
    if (block != nullptr) {
        std::memcpy(::GlobalLock(block), text.GetString(), size);
        ::GlobalUnlock(block);
    }
    return block;
}

}  // namespace

BOOL CopyTextToClipboard(HWND owner, const CString& text) {
    const HGLOBAL block = BlockOf(text);
    const OpenedClipboard clipboard(owner);
    if (block != nullptr && clipboard && ::EmptyClipboard() && ::SetClipboardData(CF_UNICODETEXT, block) != nullptr) {
        return TRUE;  // the block is the clipboard's
    }
    ::GlobalFree(block);
    return FALSE;
}

CString WithReturns(const CString& text) {
    CString result = text;
    result.Replace(_T("\r\n"), _T("\n"));
    result.Replace(_T("\n"), _T("\r\n"));
    return result;
}

CString WithoutMnemonic(const CString& caption) {
    CString result;
    for (int i = 0; i < caption.GetLength(); ++i) {
        if (caption[i] == _T('&') && ++i == caption.GetLength()) {
            break;
        }
        result += caption[i];
    }
    return result;
}

}  // namespace kadata
