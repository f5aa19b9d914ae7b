#include "afx_string.h"

#include <algorithm>

#include "afx_resource.h"

namespace {

using TextView = std::basic_string_view<TCHAR>;

constexpr std::size_t kNowhere = TextView::npos;

int IndexOf(std::size_t position) noexcept {
    return position == kNowhere ? -1 : static_cast<int>(position);
}

// As many units as asked for, if there are so many.
std::size_t Cut(int count, std::size_t available) noexcept {
    return std::min(static_cast<std::size_t>(std::max(count, 0)), available);
}

std::size_t RequireLength(int length) {
    if (length < 0)
        AfxThrowInvalidArgException();
    return static_cast<std::size_t>(length);
}

bool IsWhiteSpace(TCHAR c) noexcept {
    if (c < 0x80)
        return c == ' ' || (c >= 0x09 && c <= 0x0D);
    if (c >= 0x2000 && c <= 0x200A)
        return true;
    return TextView(_T("\u0085\u00A0\u1680\u2028\u2029\u202F\u205F\u3000")).find(c) != kNowhere;
}

bool IsSurrogate(TCHAR c, unsigned first) noexcept {
    return (c & 0xFC00u) == first;
}

int OrderOf(int comparison) noexcept {
    return comparison - CSTR_EQUAL;
}

int LengthOf(TextView text) noexcept {
    return static_cast<int>(text.size());
}

int CompareInLocale(TextView a, TextView b, DWORD flags) noexcept {
    return OrderOf(CompareStringW(LOCALE_USER_DEFAULT, flags, a.data(), LengthOf(a), b.data(), LengthOf(b)));
}

std::basic_string<TCHAR> FromAnsi(const char* text) {
    const std::size_t bytes = text == nullptr ? 0 : std::char_traits<char>::length(text);
    std::basic_string<TCHAR> wide(bytes, TCHAR());  // never more units than bytes
    if (bytes == 0)
        return wide;
    const int size = static_cast<int>(bytes);
    wide.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, text, size, wide.data(), size)));
    return wide;
}

}  // namespace

CString::CString(LPCTSTR text, int length) {
    const std::size_t units = RequireLength(length);
    if (text == nullptr && units != 0)
        AfxThrowInvalidArgException();
    if (units != 0)
        text_.assign(text, units);
}

CString::CString(TCHAR c, int repeat) : text_(static_cast<std::size_t>(std::max(repeat, 0)), c) {}

CString::CString(const char* text) : text_(FromAnsi(text)) {}

CString& CString::operator=(CString&& other) noexcept {
    text_ = std::move(other.text_);
    other.text_.clear();
    return *this;
}

CString& CString::operator=(LPCTSTR text) {
    text_.assign(ViewOf(text));
    return *this;
}

CString& CString::operator=(TCHAR c) {
    text_.assign(1, c);
    return *this;
}

TCHAR CString::GetAt(int index) const {
    if (index < 0 || index > GetLength())
        AfxThrowInvalidArgException();
    return text_[static_cast<std::size_t>(index)];
}

void CString::SetAt(int index, TCHAR c) {
    if (index < 0 || index >= GetLength())
        AfxThrowInvalidArgException();
    text_[static_cast<std::size_t>(index)] = c;
}

CString& CString::operator+=(TCHAR c) {
    text_.push_back(c);
    return *this;
}

CString& CString::Add(TextView text) {
    text_.append(text);
    return *this;
}

CString CString::Join(TextView a, TextView b) {
    CString joined;
    joined.text_.reserve(a.size() + b.size());
    joined.text_.append(a).append(b);
    return joined;
}

int CString::Compare(LPCTSTR other) const noexcept {
    const std::strong_ordering order = *this <=> other;
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

int CString::CompareNoCase(LPCTSTR other) const noexcept {
    const TextView text = ViewOf(other);
    return OrderOf(CompareStringOrdinal(GetString(), GetLength(), text.data(), LengthOf(text), TRUE));
}

int CString::Collate(LPCTSTR other) const noexcept {
    return CompareInLocale(View(), ViewOf(other), 0);
}

int CString::CollateNoCase(LPCTSTR other) const noexcept {
    return CompareInLocale(View(), ViewOf(other), NORM_IGNORECASE);
}

CString CString::Mid(int first) const {
    return CString(View().substr(Cut(first, text_.size())));
}

CString CString::Mid(int first, int count) const {
    const TextView rest = View().substr(Cut(first, text_.size()));
    return CString(rest.substr(0, Cut(count, rest.size())));
}

CString CString::Left(int count) const {
    return CString(View().substr(0, Cut(count, text_.size())));
}

CString CString::Right(int count) const {
    return CString(View().substr(text_.size() - Cut(count, text_.size())));
}

CString CString::SpanIncluding(LPCTSTR set) const {
    return CString(View().substr(0, View().find_first_not_of(ViewOf(set))));
}

CString CString::SpanExcluding(LPCTSTR set) const {
    return CString(View().substr(0, View().find_first_of(ViewOf(set))));
}

CString CString::Tokenize(LPCTSTR separators, int& start) const {
    const TextView set = ViewOf(separators);
    const std::size_t first = View().find_first_not_of(set, RequireLength(start));
    if (first == kNowhere) {
        start = -1;
        return {};
    }
    const std::size_t end = std::min(View().find_first_of(set, first), text_.size());
    start = static_cast<int>(std::min(end + 1, text_.size()));
    return CString(View().substr(first, end - first));
}

int CString::Find(TCHAR c, int start) const noexcept {
    return start < 0 ? -1 : IndexOf(text_.find(c, static_cast<std::size_t>(start)));
}

int CString::Find(LPCTSTR text, int start) const noexcept {
    if (text == nullptr || start < 0)
        return -1;
    return IndexOf(text_.find(text, static_cast<std::size_t>(start)));
}

int CString::FindOneOf(LPCTSTR set) const noexcept {
    return IndexOf(View().find_first_of(ViewOf(set)));
}

int CString::ReverseFind(TCHAR c) const noexcept {
    return IndexOf(text_.rfind(c));
}

int CString::Replace(TCHAR from, TCHAR to) noexcept {
    if (from == to)
        return 0;
    const auto count = std::count(text_.begin(), text_.end(), from);
    std::replace(text_.begin(), text_.end(), from, to);
    return static_cast<int>(count);
}

int CString::Replace(LPCTSTR from, LPCTSTR to) {
    const TextView old = ViewOf(from);
    if (old.empty())
        return 0;
    std::basic_string<TCHAR> replaced;
    std::size_t done = 0;
    int count = 0;
    for (std::size_t hit; (hit = text_.find(old, done)) != kNowhere; ++count) {
        replaced.append(View().substr(done, hit - done)).append(ViewOf(to));
        done = hit + old.size();
    }
    if (count != 0)
        text_ = std::move(replaced.append(View().substr(done)));
    return count;
}

int CString::Remove(TCHAR c) noexcept {
    return static_cast<int>(std::erase(text_, c));
}

int CString::Insert(int index, TCHAR c) {
    text_.insert(Cut(index, text_.size()), 1, c);
    return GetLength();
}

int CString::Insert(int index, LPCTSTR text) {
    text_.insert(Cut(index, text_.size()), ViewOf(text));
    return GetLength();
}

int CString::Delete(int index, int count) {
    const std::size_t first = Cut(index, text_.size());
    text_.erase(first, Cut(count, text_.size() - first));
    return GetLength();
}

template <class Predicate>
CString& CString::TrimLeftWhile(Predicate drop) {
    text_.erase(text_.begin(), std::find_if_not(text_.begin(), text_.end(), drop));
    return *this;
}

template <class Predicate>
CString& CString::TrimRightWhile(Predicate drop) {
    text_.erase(std::find_if_not(text_.rbegin(), text_.rend(), drop).base(), text_.end());
    return *this;
}

CString& CString::Trim() {
    return TrimRight().TrimLeft();
}

CString& CString::Trim(TCHAR c) {
    return TrimRight(c).TrimLeft(c);
}

CString& CString::Trim(LPCTSTR set) {
    return TrimRight(set).TrimLeft(set);
}

CString& CString::TrimLeft() {
    return TrimLeftWhile(IsWhiteSpace);
}

CString& CString::TrimLeft(TCHAR c) {
    return TrimLeftWhile([c](TCHAR unit) { return unit == c; });
}

CString& CString::TrimLeft(LPCTSTR set) {
    return TrimLeftWhile([units = ViewOf(set)](TCHAR unit) { return units.find(unit) != kNowhere; });
}

CString& CString::TrimRight() {
    return TrimRightWhile(IsWhiteSpace);
}

CString& CString::TrimRight(TCHAR c) {
    return TrimRightWhile([c](TCHAR unit) { return unit == c; });
}

CString& CString::TrimRight(LPCTSTR set) {
    return TrimRightWhile([units = ViewOf(set)](TCHAR unit) { return units.find(unit) != kNowhere; });
}

CString& CString::MakeUpper() {
    CharUpperBuffW(text_.data(), static_cast<DWORD>(text_.size()));
    return *this;
}

CString& CString::MakeLower() {
    CharLowerBuffW(text_.data(), static_cast<DWORD>(text_.size()));
    return *this;
}

CString& CString::MakeReverse() {
    std::reverse(text_.begin(), text_.end());
    for (std::size_t i = 1; i < text_.size(); ++i) {
        if (IsSurrogate(text_[i - 1], 0xDC00) && IsSurrogate(text_[i], 0xD800)) {
            std::swap(text_[i - 1], text_[i]);
            ++i;
        }
    }
    return *this;
}

void CString::FormatList(LPCTSTR format, const afx::FormatArg* args, std::size_t count) {
    std::basic_string<TCHAR> made;  // the old text may be among the arguments
    afx::AppendFormat(made, format, args, count);
    text_ = std::move(made);
}

void CString::AppendFormatList(LPCTSTR format, const afx::FormatArg* args, std::size_t count) {
    CString made;
    made.FormatList(format, args, count);
    *this += made;
}

CString CString::FromResource(UINT id) {
    CString text;
    if (!text.LoadString(id))
        AfxThrowInvalidArgException();
    return text;
}

BOOL CString::LoadString(UINT id) {
    const HINSTANCE module = AfxFindStringResourceHandle(id);
    return module != nullptr && LoadString(module, id);
}

BOOL CString::LoadString(HINSTANCE module, UINT id) {
    LPCTSTR text = nullptr;
    const int length = ::LoadStringW(module, id, reinterpret_cast<LPTSTR>(&text), 0);
    if (length <= 0)
        return FALSE;
    text_.assign(text, static_cast<std::size_t>(length));
    return TRUE;
}

LPTSTR CString::GetBuffer(int minimum) {
    text_.resize(std::max(text_.size(), RequireLength(minimum)));
    return text_.data();
}

LPTSTR CString::GetBufferSetLength(int length) {
    text_.resize(RequireLength(length));
    return text_.data();
}

void CString::ReleaseBuffer(int length) {
    ReleaseBufferSetLength(length == -1 ? IndexOf(std::min(text_.find(TCHAR()), text_.size())) : length);
}

void CString::ReleaseBufferSetLength(int length) {
    if (RequireLength(length) > text_.size())
        AfxThrowInvalidArgException();
    text_.resize(static_cast<std::size_t>(length));
}

void CString::Preallocate(int length) {
    text_.reserve(RequireLength(length));
}

void CString::Truncate(int length) {
    text_.resize(std::min(RequireLength(length), text_.size()));
}
