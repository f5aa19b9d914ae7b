#include <kadata/utils.h>

#include <algorithm>

namespace {

constexpr int kBytesOfLine = 16;
constexpr TCHAR kDigits[] = _T("0123456789abcdef");

}  // namespace

CString CHexDump::ToLine(const void* data, int count, DWORD /*flags*/) {
    const auto* const bytes = static_cast<const BYTE*>(data);
    CString line;
    for (int i = 0; i < count; ++i) {
        line += i == 0 ? _T("") : _T(", ");
        line += kDigits[bytes[i] >> 4];
        line += kDigits[bytes[i] & 0xF];
    }
    return line;
}

CString CHexDump::ToString(const void* data, int count, DWORD flags) {
    const auto* const bytes = static_cast<const BYTE*>(data);
    CString text;
    int length = 0;
    for (int done = 0; done < count; done += length) {
        length = std::min(kBytesOfLine, count - done);
        text += done == 0 ? _T("") : _T("\n");
        text += ToLine(bytes + done, length, flags);
    }
    return text;
}
