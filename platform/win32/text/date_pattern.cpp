#include "date_pattern.h"

#include <algorithm>

namespace kawin {
namespace {

constexpr WCHAR kQuote = u'\'';
constexpr std::u16string_view kIcuLetters = u"GyYuMLdEecabBhHkKmsSzZvVXxOQqwWDFgAjJ";

bool IsNoBreakSpace(WCHAR unit) {
    return unit == 0x00A0 || unit == 0x202F || unit == 0x2009;
}

void TakeQuoted(std::u16string_view& pattern, std::u16string& text) {
    pattern.remove_prefix(1);
    while (!pattern.empty()) {
        const bool doubled = pattern.starts_with(u"''");
        const bool closing = pattern.front() == kQuote && !doubled;
        if (!closing) {
            text.push_back(pattern.front());
        }
        pattern.remove_prefix(doubled ? 2 : 1);
        if (closing) {
            return;
        }
    }
}

void TakeLiteral(std::u16string_view& pattern, std::u16string_view letters, std::u16string& text) {
    while (!pattern.empty() && letters.find(pattern.front()) == std::u16string_view::npos) {
        if (pattern.front() == kQuote) {
            TakeQuoted(pattern, text);
        } else {
            text.push_back(pattern.front());
            pattern.remove_prefix(1);
        }
    }
}

// ICU's narrow names (five letters) have no counterpart; the abbreviated ones stand in.
std::u16string Name(WCHAR letter, std::size_t count) {
    return std::u16string(count == 4 ? 4 : 3, letter);
}

std::u16string ToSystemRun(const PatternPart& part) {
    const auto number = [&part](WCHAR letter) { return std::u16string(std::min<std::size_t>(part.count, 2), letter); };
    switch (part.letter) {
        case u'y':
        case u'Y':
        case u'u':
            return u"yyyy";
        case u'M':
        case u'L':
            return part.count > 2 ? Name(u'M', part.count) : number(u'M');
        case u'E':
        case u'e':
        case u'c':
            return Name(u'd', part.count);
        case u'G':
            return u"gg";
        case u'a':
        case u'b':
        case u'B':
            return u"tt";
        case u'h':
        case u'K':
            return number(u'h');
        case u'H':
        case u'k':
            return number(u'H');
        case u'd':
        case u'm':
        case u's':
            return number(part.letter);
        default:
            return {};
    }
}

std::u16string Quoted(std::u16string_view text) {
    const auto is_letter = [](WCHAR c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == kQuote; };
    if (std::none_of(text.begin(), text.end(), is_letter)) {
        return std::u16string(text);
    }
    std::u16string quoted(1, kQuote);
    for (const WCHAR unit : text) {
        quoted.append(unit == kQuote ? 2 : 1, unit);
    }
    return quoted + kQuote;
}

}  // namespace

bool TakePart(std::u16string_view& pattern, std::u16string_view letters, PatternPart& part) {
    part = {};
    if (pattern.empty()) {
        return false;
    }
    if (letters.find(pattern.front()) == std::u16string_view::npos) {
        TakeLiteral(pattern, letters, part.text);
        return true;
    }
    part.letter = pattern.front();
    part.count = std::min(pattern.find_first_not_of(part.letter), pattern.size());
    pattern.remove_prefix(part.count);
    return true;
}

std::u16string ToSystemPattern(std::u16string_view icu_pattern) {
    std::u16string result;
    PatternPart part;
    while (TakePart(icu_pattern, kIcuLetters, part)) {
        result += part.letter != 0 ? ToSystemRun(part) : Quoted(WithPlainSpaces(part.text));
    }
    return result;
}

std::u16string WithPlainSpaces(std::u16string_view text) {
    std::u16string plain(text);
    std::replace_if(plain.begin(), plain.end(), IsNoBreakSpace, u' ');
    return plain;
}

}  // namespace kawin
