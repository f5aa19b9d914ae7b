#include "code_page_tables.h"

#include <unicode/ucnv.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <mutex>
#include <new>
#include <string>

namespace kawin {
namespace {

constexpr UINT kLatin1 = 28591;  // the ISO 8859 family: 28590 + the part
constexpr UINT kLatin9 = 28605;

constexpr UINT kSevenBit = 20127;
constexpr std::size_t kFirstUpper = 0x80;
constexpr std::size_t kFirstGraphic = 0xA0;  // of the upper half; control characters come before

struct DoubleBytePage {
    UINT number;
    char16_t unreadable;
    std::array<BYTE, 4> leads;  // two ranges, first and last
};
constexpr DoubleBytePage kDoubleBytePages[] = {
    {932, 0x30FB, {0x81, 0x9F, 0xE0, 0xFC}},
    {936, u'?', {0x81, 0xFE, 0, 0}},
    {949, u'?', {0x81, 0xFE, 0, 0}},
    {950, u'?', {0x81, 0xFE, 0, 0}},
};

// Bytes that the system reads otherwise than ICU does.
struct OtherUnit {
    UINT page;
    BYTE byte;
    char16_t unit;
};
constexpr OtherUnit kOtherUnits[] = {
    {437, 0xE6, 0x00B5},   {852, 0xAA, 0x00AC},   {860, 0xE6, 0x00B5},   {861, 0xE6, 0x00B5},   {862, 0xE6, 0x00B5},
    {863, 0xE6, 0x00B5},   {864, 0x9F, 0x009F},   {864, 0xD7, 0xFEC1},   {864, 0xD8, 0xFEC5},   {864, 0xF1, 0x0651},
    {865, 0xE6, 0x00B5},   {869, 0x88, 0x00B7},   {869, 0xEF, 0x0384},   {1253, 0xAA, 0xF8F9},  {1255, 0xCA, 0x05BA},
    {21866, 0xAE, 0x045E}, {21866, 0xBE, 0x040E}, {28597, 0xA1, 0x02BD}, {28597, 0xA2, 0x02BC}, {28597, 0xA4, 0xF7C2},
    {28597, 0xA5, 0xF7C3}, {28597, 0xAA, 0xF7C4}, {28598, 0xAF, 0x203E}, {28598, 0xFD, 0xF7BF}, {28598, 0xFE, 0xF7C0},
    {28598, 0xFF, 0xF7C1},
};

// Graphic bytes without a character are private units, which rise from this one with the bytes.
struct PrivateUnits {
    UINT page;
    char16_t first;
};
constexpr PrivateUnits kPrivateUnits[] = {
    {857, 0xF8BB},  {864, 0xF8BE},   {932, 0xF8F0},   {1253, 0xF8FA},  {1255, 0xF88D},
    {1257, 0xF8FC}, {28593, 0xF7F5}, {28596, 0xF7C8}, {28597, 0xF7C5}, {28598, 0xF79C},
};

struct CloseConverter {
    void operator()(UConverter* converter) const noexcept { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, CloseConverter>;

Converter OpenByName(const std::string& name) {
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(name.c_str(), &status));
    if (status == U_MEMORY_ALLOCATION_ERROR) {
        throw std::bad_alloc();
    }
    return U_SUCCESS(status) ? std::move(converter) : nullptr;
}

Converter OpenByNumber(UINT number) {
    if (number >= kLatin1 && number <= kLatin9) {
        return OpenByName("iso-8859-" + std::to_string(number - kLatin1 + 1));
    }
    for (const char* const family : {"windows-", "cp", "ibm-"}) {
        if (Converter converter = OpenByName(family + std::to_string(number))) {
            return converter;
        }
    }
    return nullptr;
}

char16_t Decode(UConverter* converter, std::string_view bytes) {
    UErrorCode status = U_ZERO_ERROR;
    char16_t units[8];
    const int count = ucnv_toUChars(converter, units, 8, bytes.data(), static_cast<int>(bytes.size()), &status);
    return U_SUCCESS(status) && count == 1 ? units[0] : kReplacementUnit;
}

// What the converter itself writes for a character that several codes stand for; `first` when it has no opinion.
std::uint16_t PreferredCode(UConverter* converter, char16_t unit, std::uint16_t first) {
    UErrorCode status = U_ZERO_ERROR;
    char bytes[8] = {};
    const int count = ucnv_fromUChars(converter, bytes, 8, &unit, 1, &status);
    const auto byte = [&bytes](int i) { return static_cast<std::uint16_t>(static_cast<unsigned char>(bytes[i])); };
    if (U_FAILURE(status) || count < 1 || count > 2) {
        return first;
    }
    return count == 2 ? static_cast<std::uint16_t>((byte(0) << 8) | byte(1)) : byte(0);
}

// ICU exchanges three control characters in the old code pages, as a printer wants them; the system does not.
void MakeAscii(CodePage& page) {
    if (page.single['A'] != u'A') {
        return;
    }
    for (std::size_t byte = 0; byte < 0x80; ++byte) {
        page.single[byte] = static_cast<char16_t>(byte);
    }
}

// Bytes of the upper half that ICU knows no character for: control characters, then private units.
void FillUnassigned(CodePage& page) {
    constexpr char16_t kIcusSubstitute = 0x1A;
    const auto row = std::find_if(std::begin(kPrivateUnits), std::end(kPrivateUnits),
                                  [&page](const PrivateUnits& units) { return units.page == page.number; });
    char16_t next_private = row == std::end(kPrivateUnits) ? u'\0' : row->first;
    for (std::size_t byte = kFirstUpper; byte < page.single.size(); ++byte) {
        char16_t& unit = page.single[byte];
        unit = unit == kIcusSubstitute ? kReplacementUnit : unit;
        if (unit != kReplacementUnit || page.lead[byte]) {
            continue;
        }
        if (byte < kFirstGraphic) {
            unit = static_cast<char16_t>(byte);
        } else if (next_private != 0) {
            unit = next_private++;
        }
    }
}

void MendSingle(CodePage& page) {
    MakeAscii(page);
    for (const OtherUnit& other : kOtherUnits) {
        if (other.page == page.number) {
            page.single[other.byte] = other.unit;
        }
    }
    FillUnassigned(page);
    if (page.number == kSevenBit) {  // the system drops the eighth bit
        std::copy_n(page.single.begin(), kFirstUpper, page.single.begin() + kFirstUpper);
    }
}

void FillSingle(CodePage& page, UConverter* converter) {
    for (std::size_t byte = 0; byte < 256; ++byte) {
        const char text = static_cast<char>(byte);
        page.single[byte] = page.lead[byte] ? kReplacementUnit : Decode(converter, {&text, 1});
    }
    MendSingle(page);
    for (std::size_t byte = 1; byte < 256; ++byte) {
        std::uint16_t& code = page.encode[page.single[byte]];
        if (page.single[byte] != 0 && page.single[byte] != kReplacementUnit && code == 0) {
            code = static_cast<std::uint16_t>(byte);
        }
    }
}

void FillPairs(CodePage& page, UConverter* converter) {
    page.pairs.assign(std::size_t{256} * 256, kReplacementUnit);
    for (unsigned code = 0x8001; code <= 0xFFFF; ++code) {
        const char bytes[] = {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)};
        if (!page.lead[code >> 8] || bytes[1] == 0) {
            continue;
        }
        const char16_t unit = Decode(converter, {bytes, 2});
        page.pairs[code] = unit;
        if (unit != kReplacementUnit) {
            page.encode[unit] =
                page.Has(unit) ? PreferredCode(converter, unit, page.encode[unit]) : static_cast<std::uint16_t>(code);
        }
    }
}

std::unique_ptr<CodePage> MakePage(UINT number) {
    const Converter converter = OpenByNumber(number);
    const auto row = std::find_if(std::begin(kDoubleBytePages), std::end(kDoubleBytePages),
                                  [number](const DoubleBytePage& page) { return page.number == number; });
    const bool double_byte = row != std::end(kDoubleBytePages);
    if (!converter || ucnv_getMaxCharSize(converter.get()) != (double_byte ? 2 : 1)) {
        return nullptr;
    }
    ucnv_setFallback(converter.get(), false);
    auto page = std::make_unique<CodePage>();
    page->number = number;
    page->encode.assign(std::size_t{0x10000}, 0);
    page->unreadable = double_byte ? row->unreadable : kReplacementUnit;
    for (std::size_t i = 0; double_byte && i < row->leads.size() && row->leads[i] != 0; i += 2) {
        std::fill(page->lead.begin() + row->leads[i], page->lead.begin() + row->leads[i + 1] + 1, true);
    }
    FillSingle(*page, converter.get());
    if (double_byte) {
        FillPairs(*page, converter.get());
    }
    return page;
}

struct Node {
    std::unique_ptr<const CodePage> page;
    const Node* next;
};
constinit std::atomic<const Node*> known{nullptr};  // grows at the front only, under `growth`
constinit std::mutex growth;

const CodePage* FindKnown(UINT number) noexcept {
    for (const Node* node = known.load(std::memory_order_acquire); node != nullptr; node = node->next) {
        if (node->page->number == number) {
            return node->page.get();
        }
    }
    return nullptr;
}

}  // namespace

const CodePage* FindCodePage(UINT number) {
    if (const CodePage* const page = FindKnown(number)) {
        return page;
    }
    const std::lock_guard lock(growth);
    const CodePage* page = FindKnown(number);
    if (page == nullptr) {
        if (std::unique_ptr<const CodePage> made = MakePage(number)) {
            page = made.get();
            known.store(new Node{std::move(made), known.load(std::memory_order_relaxed)}, std::memory_order_release);
        }
    }
    return page;
}

}  // namespace kawin
