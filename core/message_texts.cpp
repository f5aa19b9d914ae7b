#include "message_texts.h"

#include <kadata/tarvo_exception.h>

#include <algorithm>

namespace message_texts {
namespace {

bool IsHighSurrogate(TCHAR unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

std::basic_string_view<TCHAR> Part(const CString& text, UINT size) {
    const std::basic_string_view<TCHAR> whole = text.View();
    std::size_t length = std::min<std::size_t>(whole.size(), size - 1);
    if (length < whole.size() && length > 0 && IsHighSurrogate(whole[length - 1])) {
        --length;
    }
    return whole.substr(0, length);
}

}  // namespace

CString Load(UINT id) {
    CString text;
    text.LoadString(id);
    return text;
}

CString Resolve(UINT id, LPCTSTR suffix) {
    if (id == CTarvoException::NO_MESSAGE) {
        return _T("No Message Text");
    }
    CString text;
    CString rest;
    bool loaded = text.LoadString(id);
    if (id == kTwoPartMessage) {
        loaded = loaded && rest.LoadString(kTwoPartMessageRest);
        text += _T(" ") + rest + suffix;
    }
    return loaded ? text : CString(_T("Unknown Message ID"));
}

void Copy(const CString& text, LPTSTR buffer, UINT size) {
    if (buffer == nullptr || size == 0) {
        return;
    }
    const std::basic_string_view<TCHAR> part = Part(text, size);
    buffer[part.copy(buffer, part.size())] = 0;
}

CString Cut(const CString& text, UINT size) {
    return CString(Part(text, size));
}

}  // namespace message_texts
