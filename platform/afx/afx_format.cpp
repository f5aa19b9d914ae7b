#include "afx_format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace afx {
namespace {

using View = std::basic_string_view<TCHAR>;

constexpr View kMismatch = _T("(?)");
constexpr View kNullText = _T("(null)");

// Takes what is printed. A full buffer is emptied into the target, or, without a target, is the end: the rest is dropped.
class Output {
public:
    Output(TCHAR* buffer, std::size_t size, std::basic_string<TCHAR>* target) noexcept
        : begin_(buffer), next_(buffer), end_(buffer + size), target_(target) {}

    void Put(TCHAR c) { Put(View(&c, 1)); }

    void Put(View text) {
        while (static_cast<std::size_t>(end_ - next_) < text.size()) {
            const std::size_t fits = static_cast<std::size_t>(end_ - next_);
            next_ = std::copy_n(text.data(), fits, next_);
            text.remove_prefix(fits);
            if (!Empty())
                return;
        }
        next_ = std::copy(text.begin(), text.end(), next_);
    }

    void Fill(TCHAR c, std::size_t count) {
        for (; count > 0; --count) {
            if (next_ == end_ && !Empty())
                return;
            *next_++ = c;
        }
    }

    void Flush() {
        target_->append(begin_, next_);
        next_ = begin_;
    }

    // Ends a text without target, which has room for one more unit, and returns its length.
    std::size_t Terminate() noexcept {
        if (cut_ && next_ != begin_ && (next_[-1] & 0xFC00) == 0xD800)
            --next_;
        *next_ = 0;
        return static_cast<std::size_t>(next_ - begin_);
    }

private:
    bool Empty() {
        if (target_ == nullptr) {
            cut_ = true;
            return false;
        }
        Flush();
        return true;
    }

    TCHAR* begin_;
    TCHAR* next_;
    TCHAR* end_;
    std::basic_string<TCHAR>* target_;
    bool cut_ = false;
};

class ArgReader {
public:
    ArgReader(const FormatArg* args, std::size_t count) noexcept : next_(args), end_(args + count) {}

    const FormatArg* Next() noexcept { return next_ == end_ ? nullptr : next_++; }

    // The value for a '*'; false when there is none.
    bool NextInt(int& value) noexcept {
        const FormatArg* arg = Next();
        if (arg == nullptr || !IsIntegerKind(arg->Kind()))
            return false;
        value = static_cast<int>(arg->Bits());
        return true;
    }

private:
    const FormatArg* next_;
    const FormatArg* end_;
};

void SetWidth(Conversion& conversion, int width) noexcept {
    const bool negative = width < 0;
    conversion.left = conversion.left || negative;
    conversion.width = negative ? -std::max(width, -kMaxFieldWidth) : width;
}

// Fetches the values of stars and cuts the width.
bool Complete(Conversion& conversion, ArgReader& args) noexcept {
    bool complete = true;
    if (conversion.widthFromArgument) {
        int width = 0;
        complete = args.NextInt(width);
        SetWidth(conversion, width);
    }
    if (conversion.precisionFromArgument)
        complete = args.NextInt(conversion.precision) && complete;
    conversion.width = std::min(conversion.width, kMaxFieldWidth);
    return complete;
}

// Blanks, prefix (a sign or "0x"), zeros, body, blanks.
void PutField(Output& out, const Conversion& conversion, View prefix, std::size_t zeros, View body) {
    const std::size_t length = prefix.size() + zeros + body.size();
    const std::size_t width = static_cast<std::size_t>(conversion.width);
    const std::size_t padding = width > length ? width - length : 0;
    if (!conversion.left && !conversion.zero)
        out.Fill(' ', padding);
    out.Put(prefix);
    out.Fill('0', zeros + (conversion.zero && !conversion.left ? padding : 0));
    out.Put(body);
    if (conversion.left)
        out.Fill(' ', padding);
}

View SignOf(const Conversion& conversion, bool negative) noexcept {
    if (negative)
        return _T("-");
    if (conversion.plus)
        return _T("+");
    return conversion.blank ? View(_T(" ")) : View();
}

constexpr std::size_t kMaxDigits = 22;  // of 64 bits, octal

TCHAR* WriteDecimal(std::uint64_t value, TCHAR* end) noexcept {
    static constexpr char kPairs[] =
        "0001020304050607080910111213141516171819202122232425262728293031323334353637383940414243444546474849"
        "5051525354555657585960616263646566676869707172737475767778798081828384858687888990919293949596979899";
    for (; value >= 100; value /= 100) {
        const char* pair = kPairs + value % 100 * 2;
        *--end = static_cast<TCHAR>(pair[1]);
        *--end = static_cast<TCHAR>(pair[0]);
    }
    if (value >= 10)
        *--end = static_cast<TCHAR>(kPairs[value * 2 + 1]);
    *--end = static_cast<TCHAR>(value >= 10 ? kPairs[value * 2] : '0' + static_cast<char>(value));
    return end;
}

TCHAR* WriteDigits(std::uint64_t value, TCHAR letter, TCHAR* end) noexcept {
    if (letter != 'x' && letter != 'X' && letter != 'o')
        return WriteDecimal(value, end);
    const char* digits = letter == 'X' ? "0123456789ABCDEF" : "0123456789abcdef";
    const unsigned shift = letter == 'o' ? 3 : 4;
    do {
        *--end = static_cast<TCHAR>(digits[value & ((1u << shift) - 1)]);
        value >>= shift;
    } while (value != 0);
    return end;
}

// A number without its sign, which the prefix has. A precision is the least number of digits, and then zeros do not pad.
void PutNumber(Output& out, Conversion conversion, View prefix, std::uint64_t value) {
    TCHAR buffer[kMaxDigits];
    TCHAR* const end = buffer + kMaxDigits;
    TCHAR* const begin = value == 0 && conversion.precision == 0 ? end : WriteDigits(value, conversion.letter, end);
    const View digits(begin, static_cast<std::size_t>(end - begin));
    std::size_t zeros = 0;
    if (conversion.precision >= 0) {
        const std::size_t least = static_cast<std::size_t>(std::min(conversion.precision, kMaxFieldWidth));
        zeros = least > digits.size() ? least - digits.size() : 0;
        conversion.zero = false;
    }
    if (conversion.alternate && conversion.letter == 'o' && zeros == 0 && (digits.empty() || digits[0] != '0'))
        zeros = 1;
    PutField(out, conversion, prefix, zeros, digits);
}

template <class Int>
void PutSized(Output& out, const Conversion& conversion, std::uint64_t bits) {
    if (conversion.letter == 'd' || conversion.letter == 'i') {
        const bool negative = static_cast<Int>(bits) < 0;
        const std::uint64_t value = static_cast<std::uint64_t>(static_cast<Int>(bits));
        PutNumber(out, conversion, SignOf(conversion, negative), negative ? 0 - value : value);
        return;
    }
    const std::uint64_t value = static_cast<std::make_unsigned_t<Int>>(bits);
    const bool marked = conversion.alternate && value != 0;
    const View prefix = conversion.letter == 'x' ? View(_T("0x")) : conversion.letter == 'X' ? View(_T("0X")) : View();
    PutNumber(out, conversion, marked ? prefix : View(), value);
}

void PutInteger(Output& out, const Conversion& conversion, const FormatArg& arg) {
    switch (conversion.prefix) {
        case SizePrefix::Byte:
            return PutSized<std::int8_t>(out, conversion, arg.Bits());
        case SizePrefix::Short:
            return PutSized<std::int16_t>(out, conversion, arg.Bits());
        case SizePrefix::Bits64:
            return PutSized<std::int64_t>(out, conversion, arg.Bits());
        default:
            return PutSized<std::int32_t>(out, conversion, arg.Bits());
    }
}

void PutPointer(Output& out, Conversion conversion, const void* pointer) {
    conversion.letter = 'X';
    conversion.precision = 2 * sizeof(pointer);
    PutSized<std::int64_t>(out, conversion, reinterpret_cast<std::uintptr_t>(pointer));
}

// Narrow text, made wide. No ANSI code page has a character of fewer bytes than it has units.
class WideCopy {
public:
    explicit WideCopy(std::string_view text) {
        if (text.size() > std::size(local_))
            heap_.resize(text.size());
        TCHAR* const target = heap_.empty() ? local_ : heap_.data();
        const auto ascii = std::find_if(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
        const TCHAR* const end = std::copy(text.begin(), ascii, target);
        const std::size_t done = static_cast<std::size_t>(end - target);
        const int rest = static_cast<int>(text.size() - done);
        const int made = rest == 0 ? 0 : MultiByteToWideChar(CP_ACP, 0, text.data() + done, rest, target + done, rest);
        view_ = View(target, done + static_cast<std::size_t>(made));
    }
    WideCopy(const WideCopy&) = delete;
    WideCopy& operator=(const WideCopy&) = delete;

    View Text() const noexcept { return view_; }

private:
    TCHAR local_[256];
    std::basic_string<TCHAR> heap_;
    View view_;
};

// A text that has a precision need not be terminated.
template <class Char>
std::basic_string_view<Char> Bounded(const Char* text, int precision) noexcept {
    using Traits = std::char_traits<Char>;
    if (precision < 0)
        return {text, Traits::length(text)};
    std::size_t length = 0;
    while (length < static_cast<std::size_t>(precision) && text[length] != 0)
        ++length;
    return {text, length};
}

void PutText(Output& out, const Conversion& conversion, const FormatArg& arg) {
    if (arg.Pointer() == nullptr)
        PutField(out, conversion, {}, 0, Bounded(kNullText.data(), conversion.precision));
    else if (IsNarrow(conversion))
        PutField(out, conversion, {}, 0, WideCopy(Bounded(arg.NarrowText(), conversion.precision)).Text());
    else
        PutField(out, conversion, {}, 0, Bounded(arg.WideText(), conversion.precision));
}

void PutCharacter(Output& out, const Conversion& conversion, const FormatArg& arg) {
    const std::uint64_t code = arg.Bits();
    if (IsNarrow(conversion) || arg.Kind() == ArgKind::NarrowChar) {
        const char c = static_cast<char>(code);
        return PutField(out, conversion, {}, 0, WideCopy({&c, 1}).Text());
    }
    const TCHAR unit = static_cast<TCHAR>(code);
    if (arg.Kind() != ArgKind::WideChar || code < 0x10000 || code > 0x10FFFF)
        return PutField(out, conversion, {}, 0, {&unit, 1});
    const TCHAR pair[] = {static_cast<TCHAR>(0xD7C0 + (code >> 10)), static_cast<TCHAR>(0xDC00 + (code & 0x3FF))};
    PutField(out, conversion, {}, 0, {pair, 2});
}

// The digits of a finite real that is not negative, as the C run-time prints them in the "C" locale.
class RealDigits {
public:
    RealDigits(double value, TCHAR letter, int precision, bool keepPoint) noexcept : value_(value) {
        if (letter == 'f')
            Print(std::chars_format::fixed, precision);
        else if (letter == 'e')
            Print(std::chars_format::scientific, precision);
        else if (keepPoint)
            PrintGeneralWithZeros(std::max(precision, 1));
        else
            Print(std::chars_format::general, precision);
        if (keepPoint)
            AddPoint();
    }

    std::string_view Text() const noexcept { return {text_, static_cast<std::size_t>(end_ - text_)}; }

private:
    static constexpr std::size_t kSize = 309 + 1 + kMaxRealPrecision + 8;  // before the point, the point, behind it, exponent

    void Print(std::chars_format format, int precision) noexcept {
        end_ = std::to_chars(text_, text_ + kSize, value_, format, precision).ptr;
    }

    // As %g, which is scientific for exponents below -4 and from the precision on, but with the zeros at the end.
    void PrintGeneralWithZeros(int precision) noexcept {
        Print(std::chars_format::scientific, precision - 1);
        *end_ = 0;
        const int exponent = std::atoi(text_ + Text().find('e') + 1);
        if (exponent >= -4 && exponent < precision)
            Print(std::chars_format::fixed, precision - 1 - exponent);
    }

    void AddPoint() noexcept {
        if (Text().find('.') != std::string_view::npos)
            return;
        char* const at = std::find(text_, end_, 'e');
        std::copy_backward(at, end_, end_ + 1);
        *at = '.';
        ++end_;
    }

    double value_;
    char* end_ = text_;
    char text_[kSize];
};

TCHAR LowerLetter(TCHAR c) noexcept {
    return static_cast<TCHAR>(c | 0x20);
}

void PutReal(Output& out, Conversion conversion, double value) {
    const View sign = SignOf(conversion, std::signbit(value));
    const TCHAR letter = LowerLetter(conversion.letter);
    const bool upper = letter != conversion.letter;
    if (!std::isfinite(value)) {
        conversion.zero = false;
        const View word = std::isnan(value) ? (upper ? _T("NAN") : _T("nan")) : (upper ? _T("INF") : _T("inf"));
        return PutField(out, conversion, sign, 0, word);
    }
    const int precision = conversion.precision < 0 ? 6 : std::min(conversion.precision, kMaxRealPrecision);
    const RealDigits digits(std::fabs(value), letter, precision, conversion.alternate);
    TCHAR wide[sizeof(digits)];
    TCHAR* end = wide;
    for (const char c : digits.Text())
        *end++ = static_cast<TCHAR>(upper && c == 'e' ? 'E' : c);
    PutField(out, conversion, sign, 0, {wide, static_cast<std::size_t>(end - wide)});
}

void PutArgument(Output& out, Conversion conversion, ArgReader& args) {
    const bool complete = Complete(conversion, args);
    const FormatArg* arg = args.Next();
    if (!complete || arg == nullptr || !AcceptsKind(conversion, arg->Kind()))
        out.Put(kMismatch);
    else if (detail::IsInteger(conversion.letter))
        PutInteger(out, conversion, *arg);
    else if (detail::IsText(conversion.letter))
        PutText(out, conversion, *arg);
    else if (detail::IsCharacter(conversion.letter))
        PutCharacter(out, conversion, *arg);
    else if (detail::IsReal(conversion.letter))
        PutReal(out, conversion, arg->Real());
    else
        PutPointer(out, conversion, arg->Pointer());
}

void Print(Output& out, LPCTSTR at, ArgReader args) {
    while (true) {
        LPCTSTR start = at;
        while (*at != 0 && *at != '%')
            ++at;
        out.Put(View(start, static_cast<std::size_t>(at - start)));
        if (*at == 0)
            return;
        start = at++;
        const Conversion conversion = ReadConversion(at);
        if (conversion.letter == 0)
            out.Put(View(start, static_cast<std::size_t>(at - start)));
        else if (conversion.letter == '%')
            out.Put('%');
        else
            PutArgument(out, conversion, args);
    }
}

}  // namespace

std::size_t FormatInto(TCHAR* buffer, std::size_t capacity, LPCTSTR format, const FormatArg* args, std::size_t count) {
    if (capacity == 0)
        return 0;
    Output out(buffer, capacity - 1, nullptr);
    Print(out, format == nullptr ? _T("") : format, ArgReader(args, count));
    return out.Terminate();
}

void AppendFormat(std::basic_string<TCHAR>& target, LPCTSTR format, const FormatArg* args, std::size_t count) {
    TCHAR buffer[512];
    Output out(buffer, std::size(buffer), &target);
    Print(out, format == nullptr ? _T("") : format, ArgReader(args, count));
    out.Flush();
}

}  // namespace afx
