#include "message_text.h"

#include <algorithm>
#include <cstdio>

#include "../base/utf.h"
#include "code_pages.h"

namespace kawin {
namespace {

using Text = std::u16string;
using View = std::u16string_view;

constexpr std::size_t kMostWidth = 65535;  // an insert never makes more of a short argument
constexpr View kLineBreak = u"\r\n";

bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

bool Take(View& text, View prefix) {
    const bool found = text.starts_with(prefix);
    text.remove_prefix(found ? prefix.size() : 0);
    return found;
}

std::size_t TakeNumber(View& text, std::size_t most_digits) {
    std::size_t value = 0;
    for (; most_digits > 0 && !text.empty() && IsDigit(text.front()); --most_digits) {
        value = value * 10 + static_cast<std::size_t>(text.front() - u'0');
        text.remove_prefix(1);
    }
    return value;
}

struct InsertFormat {
    std::string flags;
    std::size_t width = 0;
    std::optional<std::size_t> precision;
    enum class Size { Default, Half, Long, Quad } size = Size::Default;
    char16_t conversion = u's';
};

constexpr std::size_t kMostWidthDigits = 6;

// What stands between the exclamation marks.
std::optional<InsertFormat> ParseFormat(View text) {
    InsertFormat format;
    while (!text.empty() && View(u"-+ #0").find(text.front()) != View::npos) {
        format.flags.push_back(static_cast<char>(text.front()));
        text.remove_prefix(1);
    }
    format.width = TakeNumber(text, kMostWidthDigits);
    if (Take(text, u".")) {
        format.precision = TakeNumber(text, kMostWidthDigits);
    }
    if (Take(text, u"I64") || Take(text, u"ll")) {
        format.size = InsertFormat::Size::Quad;
    } else if (Take(text, u"l") || Take(text, u"w")) {
        format.size = InsertFormat::Size::Long;
    } else if (Take(text, u"h")) {
        format.size = InsertFormat::Size::Half;
    }
    const bool known = text.size() == 1 && View(u"sSdciuoxX").find(text.front()) != View::npos;
    if (!known || format.width > kMostWidth || format.precision.value_or(0) > kMostWidth) {
        return std::nullopt;
    }
    format.conversion = text.front();
    return format;
}

Text FromAnsi(const char* text) {
    const int needed = MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    Text wide(static_cast<std::size_t>(std::max(needed, 1)), u'\0');
    MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), needed);
    wide.pop_back();
    return wide;
}

Text Pad(Text text, const InsertFormat& format) {
    const std::size_t missing = format.width > text.size() ? format.width - text.size() : 0;
    const bool left = format.flags.find('-') != std::string::npos;
    return text.insert(left ? text.size() : 0, missing, u' ');
}

Text WriteString(DWORD_PTR argument, const InsertFormat& format) {
    const bool narrow = format.conversion == u'S' || format.size == InsertFormat::Size::Half;
    const auto* const wide = reinterpret_cast<LPCWSTR>(argument);
    Text text = argument == 0 ? Text(u"(null)") : narrow ? FromAnsi(reinterpret_cast<LPCSTR>(argument)) : Text(wide);
    text.resize(std::min(text.size(), format.precision.value_or(text.size())));
    return Pad(std::move(text), format);
}

Text WriteInteger(DWORD_PTR argument, const InsertFormat& format) {
    const bool is_signed = format.conversion == u'd' || format.conversion == u'i';
    auto value = static_cast<LONGLONG>(argument);
    if (format.size == InsertFormat::Size::Half) {
        value = is_signed ? static_cast<LONGLONG>(static_cast<SHORT>(argument)) : static_cast<WORD>(argument);
    } else if (format.size != InsertFormat::Size::Quad) {
        value = is_signed ? static_cast<LONGLONG>(static_cast<LONG>(argument)) : static_cast<DWORD>(argument);
    }
    const std::string pattern = "%" + format.flags + (format.width != 0 ? std::to_string(format.width) : "") +
                                (format.precision ? "." + std::to_string(*format.precision) : "") + "ll" +
                                static_cast<char>(format.conversion);
    std::string digits(std::max(format.width, format.precision.value_or(0)) + 32, '\0');
    digits.resize(static_cast<std::size_t>(std::snprintf(digits.data(), digits.size(), pattern.c_str(), value)));
    return FromUtf8(digits);
}

Text WriteInsert(DWORD_PTR argument, const InsertFormat& format) {
    switch (format.conversion) {
        case u's':
        case u'S':
            return WriteString(argument, format);
        case u'c':
            return Pad(Text(1, static_cast<char16_t>(argument)), format);
        default:
            return WriteInteger(argument, format);
    }
}

// One pass over a message.
class Expander {
public:
    Expander(View text, MessageArguments& arguments, Inserts inserts, LineBreaks breaks)
        : rest_(text), arguments_(arguments), inserts_(inserts), breaks_(breaks) {}

    std::optional<Text> Run() {
        while (!rest_.empty()) {
            if (Take(rest_, u"\r\n") || Take(rest_, u"\n") || Take(rest_, u"\r")) {
                result_ += breaks_ == LineBreaks::Keep ? kLineBreak : View(u" ");
            } else if (!Take(rest_, u"%")) {
                result_.push_back(rest_.front());
                rest_.remove_prefix(1);
            } else if (!Escape()) {
                return std::nullopt;
            }
        }
        return std::move(result_);
    }

private:
    // What follows a percent sign. False for an insert that cannot be put in.
    bool Escape() {
        if (rest_.empty()) {
            return false;
        }
        if (rest_.front() >= u'1' && rest_.front() <= u'9') {
            if (inserts_ == Inserts::Replace) {
                return Insert();
            }
            result_.push_back(u'%');
            return true;
        }
        const char16_t escape = rest_.front();
        rest_.remove_prefix(1);
        switch (escape) {
            case u'0':
                rest_ = {};
                break;
            case u'n':
                result_ += kLineBreak;
                break;
            case u'r':
                result_.push_back(u'\r');
                break;
            case u't':
                result_.push_back(u'\t');
                break;
            case u'b':
                result_.push_back(u' ');
                break;
            default:
                result_.push_back(escape);
        }
        return true;
    }

    bool Insert() {
        constexpr std::size_t kMostDigits = 2;
        const std::optional<DWORD_PTR> argument = arguments_.At(TakeNumber(rest_, kMostDigits));
        std::optional<InsertFormat> format = InsertFormat();
        if (Take(rest_, u"!")) {
            const std::size_t end = rest_.find(u'!');
            format = end == View::npos ? std::nullopt : ParseFormat(rest_.substr(0, end));
            rest_.remove_prefix(format ? end + 1 : 0);
        }
        if (!argument || !format) {
            return false;
        }
        result_ += WriteInsert(*argument, *format);
        return true;
    }

    View rest_;
    MessageArguments& arguments_;
    Inserts inserts_;
    LineBreaks breaks_;
    Text result_;
};

}  // namespace

std::optional<DWORD_PTR> MessageArguments::At(std::size_t number) {
    if (arguments_ == nullptr || number == 0) {
        return std::nullopt;
    }
    if (is_array_) {
        return reinterpret_cast<const DWORD_PTR*>(arguments_)[number - 1];
    }
    while (read_.size() < number) {
        read_.push_back(va_arg(*arguments_, DWORD_PTR));
    }
    return read_[number - 1];
}

std::optional<Text> ExpandMessage(View text, MessageArguments& arguments, Inserts inserts, LineBreaks breaks) {
    return Expander(text, arguments, inserts, breaks).Run();
}

}  // namespace kawin
