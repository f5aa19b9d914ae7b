#include <unicode/uchar.h>
#include <unicode/unorm2.h>

#include <algorithm>
#include <iterator>

#include "code_page_tables.h"

namespace kawin {
namespace {

struct Likeness {
    char16_t from;
    char16_t to;
};

// What looks alike but does not decompose, in ascending order.
constexpr Likeness kLikenesses[] = {
    {0x00D7, u'x'}, {0x00D8, u'O'}, {0x00F8, u'o'}, {0x0110, u'D'},  {0x0111, u'd'},  {0x0126, u'H'},  {0x0127, u'h'},
    {0x0131, u'i'}, {0x0141, u'L'}, {0x0142, u'l'}, {0x0166, u'T'},  {0x0167, u't'},  {0x2010, u'-'},  {0x2011, u'-'},
    {0x2012, u'-'}, {0x2013, u'-'}, {0x2014, u'-'}, {0x2015, u'-'},  {0x2018, u'\''}, {0x2019, u'\''}, {0x201A, u'\''},
    {0x201C, u'"'}, {0x201D, u'"'}, {0x201E, u'"'}, {0x2032, u'\''}, {0x2033, u'"'},  {0x2039, u'<'},  {0x203A, u'>'},
    {0x2044, u'/'}, {0x2212, u'-'}, {0x2215, u'/'},
};

char16_t Lookalike(char16_t unit) noexcept {
    const auto row = std::lower_bound(std::begin(kLikenesses), std::end(kLikenesses), unit,
                                      [](const Likeness& likeness, char16_t value) { return likeness.from < value; });
    return row != std::end(kLikenesses) && row->from == unit ? row->to : u'\0';
}

// One step of decomposition: the base, when nothing but accents is taken off; 0 otherwise.
char16_t Base(char16_t unit) noexcept {
    constexpr int kRoom = 20;  // the longest decomposition has 18 units
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* const forms = unorm2_getNFKCInstance(&status);
    char16_t parts[kRoom];
    const int count = U_SUCCESS(status) ? unorm2_getRawDecomposition(forms, unit, parts, kRoom, &status) : 0;
    if (U_FAILURE(status) || count < 1 || (count > 1 && parts[0] == u' ')) {
        return 0;
    }
    const bool only_accents =
        std::all_of(parts + 1, parts + count, [](char16_t part) { return u_charType(part) == U_NON_SPACING_MARK; });
    return only_accents ? parts[0] : u'\0';
}

}  // namespace

char16_t BestFit(const CodePage& page, char16_t unit) noexcept {
    while (unit != 0 && !page.Has(unit)) {
        const char16_t alike = Lookalike(unit);
        unit = alike != 0 ? alike : Base(unit);
    }
    return unit;
}

}  // namespace kawin
