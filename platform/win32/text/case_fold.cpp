#include "case_fold.h"

#include <unicode/uchar.h>

#include <algorithm>

namespace kawin {
namespace {

constexpr char16_t kFirstBeyondAscii = 0x80;

}  // namespace

char16_t FoldSimple(char16_t unit) noexcept {
    if (unit < kFirstBeyondAscii) {
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
    }
    return static_cast<char16_t>(u_foldCase(unit, U_FOLD_CASE_DEFAULT));
}

int CompareFolded(std::u16string_view a, std::u16string_view b) noexcept {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (a[i] == b[i]) {
            continue;
        }
        const int difference = FoldSimple(a[i]) - FoldSimple(b[i]);
        if (difference != 0) {
            return difference;
        }
    }
    return static_cast<int>(a.size() > b.size()) - static_cast<int>(a.size() < b.size());
}

}  // namespace kawin
