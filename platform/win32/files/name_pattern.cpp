#include "name_pattern.h"

#include <algorithm>
#include <vector>

#include "../base/utf.h"
#include "../text/case_fold.h"

namespace kawin {
namespace {

constexpr char16_t kDosStar = u'<';
constexpr char16_t kDosQuestion = u'>';
constexpr char16_t kDosDot = u'"';

// The same as FoldSimple, which is out of line.
char16_t FoldAscii(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

char16_t Fold(char16_t unit) {
    return unit < 0x80 ? FoldAscii(unit) : FoldSimple(unit);
}

char16_t Fold(char byte) {
    return FoldAscii(static_cast<unsigned char>(byte));
}

bool IsAscii(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
}

// What a caller's wildcards mean to the system: "?" never takes a dot, a dot before a wildcard may be missing at the end of a
// name, and the star of a last "*." leaves the last dot to the dot.
std::u16string Translate(std::u16string_view pattern) {
    if (pattern == u"*.*") {
        return u"*";
    }
    std::u16string out(pattern);
    for (std::size_t i = 0; i < out.size(); ++i) {
        const char16_t next = i + 1 < pattern.size() ? pattern[i + 1] : u'\0';
        if (pattern[i] == u'?') {
            out[i] = kDosQuestion;
        } else if (pattern[i] == u'.' && (next == u'?' || next == u'*')) {
            out[i] = kDosDot;
        } else if (pattern[i] == u'*' && next == u'.' && i + 2 == pattern.size()) {
            out[i] = kDosStar;
            out[i + 1] = kDosDot;
        }
    }
    std::transform(out.begin(), out.end(), out.begin(), [](char16_t unit) { return Fold(unit); });
    return out;
}

// Stars only: on a mismatch the latest star takes one more character. Most patterns are of this kind.
template <class Name>
bool MatchStars(std::u16string_view pattern, Name name) {
    std::size_t p = 0;
    std::size_t n = 0;
    std::size_t after_star = pattern.npos;
    std::size_t retry = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            after_star = ++p;
            retry = n;
        } else if (p < pattern.size() && pattern[p] == Fold(name[n])) {
            ++p;
            ++n;
        } else if (after_star != pattern.npos) {
            p = after_star;
            n = ++retry;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', p) == pattern.npos;
}

// All wildcards: works backwards through the pattern and keeps for each place of the name whether the rest fits there, so
// that no pattern takes more than pattern times name.
template <class Name>
bool MatchAll(std::u16string_view pattern, Name name) {
    const std::size_t size = name.size();
    const std::size_t last_dot = name.rfind(static_cast<typename Name::value_type>('.'));
    std::vector<char> fits(size + 1, 0);
    fits[size] = 1;
    for (std::size_t p = pattern.size(); p-- > 0;) {
        const std::vector<char> rest = fits;
        const char16_t mark = pattern[p];
        for (std::size_t n = size + 1; n-- > 0;) {
            const bool end = n == size;
            const bool dot = !end && name[n] == '.';
            if (mark == u'*' || mark == kDosStar) {
                fits[n] = rest[n] || (!end && (mark == u'*' || n != last_dot) && fits[n + 1]);
            } else if (mark == kDosQuestion) {
                fits[n] = end || dot ? rest[n] : rest[n + 1];
            } else if (mark == kDosDot) {
                fits[n] = end ? rest[n] : dot && rest[n + 1];
            } else {
                fits[n] = !end && Fold(name[n]) == mark && rest[n + 1];
            }
        }
    }
    return fits[0] != 0;
}

}  // namespace

NamePattern::NamePattern(std::u16string_view pattern)
    : pattern_(Translate(pattern)), only_stars_(pattern_.find_first_of(u"<>\"") == pattern_.npos) {}

bool NamePattern::Matches(std::string_view name) const {
    if (pattern_ == u"*") {
        return true;
    }
    if (IsAscii(name)) {
        return only_stars_ ? MatchStars(pattern_, name) : MatchAll(pattern_, name);
    }
    const std::u16string wide = FromFileName(name);
    return only_stars_ ? MatchStars(pattern_, std::u16string_view(wide)) : MatchAll(pattern_, std::u16string_view(wide));
}

}  // namespace kawin
