#include "case_map.h"

#include <unicode/uchar.h>

namespace kawin {
namespace {

constexpr WCHAR kFirstBeyondAscii = 0x80;
constexpr WCHAR kMicroSign = 0x00B5;
constexpr WCHAR kCaseBit = 0x20;

// Deliberate: the dotless and the dotted i, the long s and the Kelvin sign stay, so that no name beyond ASCII can turn into an
// ASCII one; so the system's own tables have it.
WCHAR KeepApart(WCHAR unit, UChar32 mapped) {
    return mapped < kFirstBeyondAscii ? unit : static_cast<WCHAR>(mapped);
}

}  // namespace

WCHAR UpperUnit(WCHAR unit) noexcept {
    if (unit < kFirstBeyondAscii) {
        return unit >= u'a' && unit <= u'z' ? static_cast<WCHAR>(unit ^ kCaseBit) : unit;
    }
    return unit == kMicroSign ? unit : KeepApart(unit, u_toupper(unit));
}

WCHAR LowerUnit(WCHAR unit) noexcept {
    if (unit < kFirstBeyondAscii) {
        return unit >= u'A' && unit <= u'Z' ? static_cast<WCHAR>(unit ^ kCaseBit) : unit;
    }
    return KeepApart(unit, u_tolower(unit));
}

}  // namespace kawin
