#pragma once

// CString: a UTF-16 text value.
//
// Lengths and positions are int and count UTF-16 units. Zeros inside the text are kept by every operation; only what reads
// it through a bare pointer stops at them. A null LPCTSTR counts as an empty text unless said otherwise.
// Out of memory is std::bad_alloc; an argument that is said to be invalid throws CInvalidArgException
// (AfxThrowInvalidArgException). Like any value: different objects may be used by different threads, one object by several only
// for reading.

#include <kadata_export.h>
#include <windows.h>

#include <compare>
#include <string>
#include <string_view>

#include "afx_format.h"

[[noreturn]] KADATA_API void AfxThrowInvalidArgException();

class KADATA_API CString final {
public:
    CString() noexcept = default;
    CString(const CString&) = default;
    CString(CString&& other) noexcept : text_(std::move(other.text_)) { other.text_.clear(); }
    CString(LPCTSTR text) : text_(ViewOf(text)) {}
    CString(std::nullptr_t) noexcept {}
    // The first `length` units, zeros included. Invalid: length < 0, or a null text with a length other than 0.
    CString(LPCTSTR text, int length);
    // A negative count gives the empty text.
    explicit CString(TCHAR c, int repeat = 1);
    // Converted from the ANSI code page.
    explicit CString(const char* text);
    explicit CString(std::basic_string_view<TCHAR> text) : text_(text) {}
    ~CString() = default;

    CString& operator=(const CString&) = default;
    CString& operator=(CString&& other) noexcept;
    CString& operator=(LPCTSTR text);
    CString& operator=(TCHAR c);

    // Zero-terminated; valid until the text is next changed.
    operator LPCTSTR() const noexcept { return text_.c_str(); }
    LPCTSTR GetString() const noexcept { return text_.c_str(); }
    std::basic_string_view<TCHAR> View() const noexcept { return text_; }

    int GetLength() const noexcept { return static_cast<int>(text_.size()); }
    bool IsEmpty() const noexcept { return text_.empty(); }
    void Empty() noexcept { text_.clear(); }

    // Index 0 to GetLength(), where the terminating zero stands; any other is invalid.
    TCHAR GetAt(int index) const;
    TCHAR operator[](int index) const { return GetAt(index); }
    // Index 0 to GetLength() - 1; any other is invalid.
    void SetAt(int index, TCHAR c);

    CString& operator+=(const CString& text) { return Add(text.View()); }
    CString& operator+=(LPCTSTR text) { return Add(ViewOf(text)); }
    CString& operator+=(TCHAR c);
    void Append(LPCTSTR text) { Add(ViewOf(text)); }
    void Append(LPCTSTR text, int length) { *this += CString(text, length); }
    void Append(const CString& text) { Add(text.View()); }
    void AppendChar(TCHAR c) { *this += c; }
    void SetString(LPCTSTR text) { *this = text; }
    void SetString(LPCTSTR text, int length) { *this = CString(text, length); }

    // Less than, equal to or greater than 0. Compare goes by units; CompareNoCase by units too, each folded to upper case by
    // the simple mapping that no locale changes. The collating ones use the order of the user's locale.
    int Compare(LPCTSTR other) const noexcept;
    int CompareNoCase(LPCTSTR other) const noexcept;
    int Collate(LPCTSTR other) const noexcept;
    int CollateNoCase(LPCTSTR other) const noexcept;

    // Parts. A count or a position outside the text is cut to it, a negative one is 0.
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Left(int count) const;
    CString Right(int count) const;

    // The leading part that has only units of the set, or none of them.
    CString SpanIncluding(LPCTSTR set) const;
    CString SpanExcluding(LPCTSTR set) const;

    // The next run of units that are none of the separators, from `start` on, which moves behind the separator that ended
    // it. When there is none left the result is empty and start becomes -1. A negative start is invalid. Without
    // separators the rest of the text is the one token.
    CString Tokenize(LPCTSTR separators, int& start) const;

    // The position of the first hit at or behind start, or -1. A start outside the text, or a null text, is no hit; an empty
    // text is found at start.
    int Find(TCHAR c, int start = 0) const noexcept;
    int Find(LPCTSTR text, int start = 0) const noexcept;
    int FindOneOf(LPCTSTR set) const noexcept;
    int ReverseFind(TCHAR c) const noexcept;

    // How many were replaced or removed. An empty text to be replaced is found nowhere; a null replacement removes.
    int Replace(TCHAR from, TCHAR to) noexcept;
    int Replace(LPCTSTR from, LPCTSTR to);
    int Remove(TCHAR c) noexcept;

    // The new length. Positions and counts are cut to the text, as in Mid.
    int Insert(int index, TCHAR c);
    int Insert(int index, LPCTSTR text);
    int Delete(int index, int count = 1);

    // Without an argument white space goes: U+0009 to U+000D, and what Unicode calls a space or a separator: U+0020, U+0085,
    // U+00A0, U+1680, U+2000 to U+200A, U+2028, U+2029, U+202F, U+205F, U+3000. Otherwise the one unit, or every unit of the set.
    CString& Trim();
    CString& Trim(TCHAR c);
    CString& Trim(LPCTSTR set);
    CString& TrimLeft();
    CString& TrimLeft(TCHAR c);
    CString& TrimLeft(LPCTSTR set);
    CString& TrimRight();
    CString& TrimRight(TCHAR c);
    CString& TrimRight(LPCTSTR set);

    // Unit for unit, the length never changes.
    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();  // surrogate pairs stay in order

    // afx_format.h has the rules. The text itself may be among the arguments. The UINT is FromResource's.
    template <class... Args>
    void Format(afx::FormatString<std::type_identity_t<Args>...> format, const Args&... args) {
        const auto list = afx::MakeFormatArgs(args...);
        FormatList(format.Text(), list.data(), list.size());
    }
    template <afx::RunTimeFormat Text, class... Args>
    void Format(const Text& format, const Args&... args) {
        const auto list = afx::MakeFormatArgs(args...);
        FormatList(format, list.data(), list.size());
    }
    template <class... Args>
    void Format(UINT formatId, const Args&... args) {
        const CString format = FromResource(formatId);
        Format(format, args...);
    }
    template <class... Args>
    void AppendFormat(afx::FormatString<std::type_identity_t<Args>...> format, const Args&... args) {
        const auto list = afx::MakeFormatArgs(args...);
        AppendFormatList(format.Text(), list.data(), list.size());
    }
    template <afx::RunTimeFormat Text, class... Args>
    void AppendFormat(const Text& format, const Args&... args) {
        const auto list = afx::MakeFormatArgs(args...);
        AppendFormatList(format, list.data(), list.size());
    }
    void FormatList(LPCTSTR format, const afx::FormatArg* args, std::size_t count);
    void AppendFormatList(LPCTSTR format, const afx::FormatArg* args, std::size_t count);

    // The string of that number in a module's resources, without a module where AfxFindStringResourceHandle finds it. FALSE, and
    // the text unchanged, when there is none or it is empty.
    BOOL LoadString(UINT id);
    BOOL LoadString(HINSTANCE module, UINT id);
    // The same where the string is needed: a number without one is invalid.
    static CString FromResource(UINT id);

    // Room for writing `minimum` units and a zero behind them. Until ReleaseBuffer is called the object may only be destroyed.
    // A negative minimum is invalid.
    LPTSTR GetBuffer(int minimum = 0);
    LPTSTR GetBufferSetLength(int length);
    // The new length; -1: up to the first zero. Invalid: more than the buffer has room for.
    void ReleaseBuffer(int length = -1);
    void ReleaseBufferSetLength(int length);

    void Preallocate(int length);
    // Invalid: a negative length. A length that the text does not have leaves it as it is.
    void Truncate(int length);
    void FreeExtra() { text_.shrink_to_fit(); }

    friend bool operator==(const CString& a, const CString& b) noexcept { return a.text_ == b.text_; }
    friend bool operator==(const CString& a, LPCTSTR b) noexcept { return a.View() == ViewOf(b); }
    friend bool operator==(const CString& a, TCHAR b) noexcept { return a.text_.size() == 1 && a.text_[0] == b; }
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) noexcept { return a.text_ <=> b.text_; }
    friend std::strong_ordering operator<=>(const CString& a, LPCTSTR b) noexcept { return a.View() <=> ViewOf(b); }

    friend CString operator+(const CString& a, const CString& b) { return Join(a.View(), b.View()); }
    friend CString operator+(CString&& a, const CString& b) { return std::move(a += b); }
    friend CString operator+(const CString& a, LPCTSTR b) { return Join(a.View(), ViewOf(b)); }
    friend CString operator+(CString&& a, LPCTSTR b) { return std::move(a += b); }
    friend CString operator+(LPCTSTR a, const CString& b) { return Join(ViewOf(a), b.View()); }
    friend CString operator+(const CString& a, TCHAR b) { return Join(a.View(), {&b, 1}); }
    friend CString operator+(CString&& a, TCHAR b) { return std::move(a += b); }
    friend CString operator+(TCHAR a, const CString& b) { return Join({&a, 1}, b.View()); }

private:
    static std::basic_string_view<TCHAR> ViewOf(LPCTSTR text) noexcept { return text == nullptr ? _T("") : text; }
    static CString Join(std::basic_string_view<TCHAR> a, std::basic_string_view<TCHAR> b);

    CString& Add(std::basic_string_view<TCHAR> text);
    template <class Predicate>
    CString& TrimLeftWhile(Predicate drop);
    template <class Predicate>
    CString& TrimRightWhile(Predicate drop);

    std::basic_string<TCHAR> text_;
};

using CStringW = CString;
