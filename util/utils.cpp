#include <kadata/utils.h>

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <new>

namespace {

using TextView = std::basic_string_view<TCHAR>;

TextView View(const CString& text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

// Ordered as the floats are, with both zeros in one place.
std::int64_t PlaceOf(float value) {
    const auto pattern = std::bit_cast<std::int32_t>(value);
    return pattern < 0 ? std::int64_t{std::numeric_limits<std::int32_t>::min()} - pattern : pattern;
}

// A system function takes at most that many characters or bytes.
int LengthOf(std::size_t size) {
    if (size > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw std::bad_alloc();
    }
    return static_cast<int>(size);
}

// Takes the element at the text's begin, and the point behind it. `more` becomes false with the last one.
TextView TakeElement(TextView& rest, bool& more) {
    const std::size_t end = rest.find(_T('.'));
    const TextView element = rest.substr(0, end);
    more = end != TextView::npos;
    rest.remove_prefix(more ? end + 1 : rest.size());
    return element;
}

bool MatchesElement(TextView pattern, TextView element) {
    return pattern.ends_with(_T('*')) ? element.starts_with(pattern.substr(0, pattern.size() - 1)) : element == pattern;
}

bool Matches(TextView pattern, TextView text) {
    bool more_pattern = true;
    bool more_text = true;
    while (more_pattern && more_text) {
        const TextView wanted = TakeElement(pattern, more_pattern);
        if (!MatchesElement(wanted, TakeElement(text, more_text))) {
            return false;
        }
    }
    return more_pattern == more_text;
}

}  // namespace

CString CKalidoUtils::LoadStringW(UINT id) {
    CString text;
    text.LoadString(id);
    return text;
}

CString CKalidoUtils::FilterMnemonic(CString text) {
    const int mark = text.Find(_T('&'));
    if (mark >= 0) {
        text.Delete(mark);
    }
    return text;
}

CString CKalidoUtils::LoadStringFilterMnemonic(UINT id) {
    return FilterMnemonic(LoadStringW(id));
}

CString CKalidoUtils::FormatDWord(ULONGLONG value) {
    TCHAR point[] = _T(".");
    TCHAR comma[] = _T(",");
    const NUMBERFMTW format = {0, 0, 3, comma, point, 1};
    CString digits;
    digits.Format(_T("%u"), static_cast<DWORD>(value));
    TCHAR text[32];
    const int length = ::GetNumberFormatW(LOCALE_USER_DEFAULT, 0, digits, &format, text, static_cast<int>(std::size(text)));
    return length <= 1 ? digits : CString(text);  // some systems leave nothing of a lone zero
}

int CKalidoUtils::FloatAlmostEqual(float a, float b, int maxUlps) {
    return std::abs(PlaceOf(a) - PlaceOf(b)) <= maxUlps;
}

void CKalidoUtils::StringTokenizer(CString text, TCHAR separator, CStringArray& out) {
    int start = 0;
    for (int end = text.Find(separator); end >= 0; end = text.Find(separator, start)) {
        out.Add(text.Mid(start, end - start));
        start = end + 1;
    }
    if (start < text.GetLength()) {
        out.Add(text.Mid(start));
    }
}

std::string CKalidoUtils::WC2MB(const CString& text) {
    constexpr int kMostBytes = 3;  // for one unit
    std::string bytes;
    if (!text.IsEmpty()) {
        const int room = LengthOf(View(text).size() * kMostBytes);
        bytes.resize(static_cast<std::size_t>(room));
        const int size = WideCharToMultiByte(CP_UTF8, 0, text, text.GetLength(), bytes.data(), room, nullptr, nullptr);
        bytes.resize(static_cast<std::size_t>(size));
    }
    return bytes;
}

CString CKalidoUtils::MB2WC(std::string_view bytes) {
    CString text;
    const int size = LengthOf(bytes.size());
    if (size != 0) {
        TCHAR* const target = text.GetBuffer(size);  // no code page makes more units than bytes
        int units = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(), size, target, size);
        if (units == 0) {
            units = MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, target, size);
        }
        text.ReleaseBuffer(units);
    }
    return text;
}

BOOL CStringArrayEx::ContainsStringWithWildcards(const CString& text) const {
    for (INT_PTR i = 0; i < GetSize(); ++i) {
        if (Matches(View(GetAt(i)), View(text))) {
            return TRUE;
        }
    }
    return FALSE;
}
