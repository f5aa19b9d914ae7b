#include <kadata/call_stack.h>

#include <algorithm>
#include <iterator>
#include <string>

#include "symbol_names.h"

namespace {

using Text = std::basic_string<TCHAR>;

// By hand, because it is done for every frame of every exception.
void AppendNumber(Text& text, DWORD number) {
    TCHAR digits[10];
    std::size_t at = std::size(digits);
    do {
        digits[--at] = static_cast<TCHAR>(_T('0') + number % 10);
        number /= 10;
    } while (number != 0);
    text.append(digits + at, std::size(digits) - at);
}

void AppendAddress(Text& text, const void* address) {
    text += _T("0x");
    for (int shift = 60; shift >= 0; shift -= 4) {
        text += _T("0123456789ABCDEF")[(reinterpret_cast<ULONG_PTR>(address) >> shift) & 0xF];
    }
}

void AppendPlace(Text& text, CSymbolNames& names, const void* address) {
    const CSymbolNames::SLine line = names.FindLine(address);
    if (line.m_file.empty()) {
        AppendAddress(text, address);
        text += _T(" (File and line number not available): ");
    } else {
        text += line.m_file;
        text += _T(" (");
        AppendNumber(text, line.m_dwLine);
        text += _T("): ");
    }
}

}  // namespace

CCallStack::CCallStack(DWORD skip) noexcept {
    const DWORD count = RtlCaptureStackBackTrace(skip + 1, MAX_FRAMES, m_pFrames, nullptr);  // without this constructor
    const auto end = std::find(m_pFrames, m_pFrames + count, nullptr);  // what some systems find behind a thread's first function
    m_dwCount = static_cast<DWORD>(end - m_pFrames);
}

const void* CCallStack::GetFrame(DWORD index) const noexcept {
    return index < m_dwCount ? m_pFrames[index] : nullptr;
}

CString CCallStack::GetText(int most) const {
    Text text;
    AppendText(text, static_cast<std::size_t>(std::max(most, 0)));
    return CString(text);
}

void CCallStack::AppendText(Text& text, std::size_t size) const {
    if (m_dwCount == 0) {
        text += _T("(No stack trace availabe)");  // Deliberate: the spelling, which readers of logs look for
        return;
    }
    CSymbolNames names;
    bool inMain = false;
    for (DWORD i = 0; i < m_dwCount && !inMain; ++i) {
        const std::size_t length = text.size();
        AppendPlace(text, names, m_pFrames[i]);
        const std::basic_string_view<TCHAR> function = names.FindFunction(m_pFrames[i]);
        text += function.empty() ? _T("(Function name unavailable)") : function;
        text += _T("\r\n");
        if (text.size() > size) {
            text.resize(length);
            return;
        }
        inMain = function == _T("main");
    }
}
