#include "utf.h"

#include <string.h>

namespace kawin {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kByteEscape = 0xDC00;  // + the byte, 0x80 to 0xFF

struct Decoded {
    char32_t point;
    std::size_t length;  // bytes consumed; 0 for an ill-formed byte
};

// One code point of well-formed UTF-8 (Unicode Standard, table 3-7), no overlong form and no surrogate.
Decoded Decode(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(0);
    if (lead < 0x80) {
        return {lead, 1};
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
        return {0, 0};
    }
    char32_t point = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) {
            return {0, 0};
        }
        point = (point << 6) | (byte(i) & 0x3FU);
    }
    const bool overlong = (length == 3 && point < 0x800) || (length == 4 && point < 0x10000);
    const bool surrogate = point >= 0xD800 && point <= 0xDFFF;
    if (overlong || surrogate || point > 0x10FFFF) {
        return {0, 0};
    }
    return {point, length};
}

template <class Sink>
void PutUtf16(char32_t point, Sink&& sink) {
    if (point < 0x10000) {
        sink(static_cast<char16_t>(point));
        return;
    }
    sink(static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)));
    sink(static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF)));
}

void PutUtf8(char32_t point, std::string& out) {
    const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
    if (point < 0x80) {
        put(point);
    } else if (point < 0x800) {
        put(0xC0 | (point >> 6));
        put(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        put(0xE0 | (point >> 12));
        put(0x80 | ((point >> 6) & 0x3F));
        put(0x80 | (point & 0x3F));
    } else {
        put(0xF0 | (point >> 18));
        put(0x80 | ((point >> 12) & 0x3F));
        put(0x80 | ((point >> 6) & 0x3F));
        put(0x80 | (point & 0x3F));
    }
}

template <class Sink>
void DecodeAll(std::string_view text, bool keep_bytes, Sink&& sink) {
    while (!text.empty()) {
        const Decoded decoded = Decode(text);
        if (decoded.length != 0) {
            PutUtf16(decoded.point, sink);
            text.remove_prefix(decoded.length);
        } else {
            PutUtf16(keep_bytes ? kByteEscape + static_cast<unsigned char>(text[0]) : kReplacement, sink);
            text.remove_prefix(1);
        }
    }
}

bool IsLead(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}
bool IsTrail(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

std::string Encode(std::u16string_view text, bool restore_bytes) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (IsLead(unit) && i + 1 < text.size() && IsTrail(text[i + 1])) {
            PutUtf8(0x10000 + ((static_cast<char32_t>(unit) - 0xD800) << 10) + (text[i + 1] - 0xDC00U), out);
            ++i;
        } else if (restore_bytes && unit >= kByteEscape + 0x80 && unit <= kByteEscape + 0xFF) {
            out.push_back(static_cast<char>(unit - kByteEscape));
        } else {
            PutUtf8(IsLead(unit) || IsTrail(unit) ? kReplacement : unit, out);
        }
    }
    return out;
}

}  // namespace

std::u16string FromUtf8(std::string_view text) {
    std::u16string out;
    out.reserve(text.size());
    DecodeAll(text, false, [&out](char16_t unit) { out.push_back(unit); });
    return out;
}

std::string ToUtf8(std::u16string_view text) {
    return Encode(text, false);
}

std::u16string FromFileName(std::string_view name) {
    std::u16string out;
    out.reserve(name.size());
    DecodeAll(name, true, [&out](char16_t unit) { out.push_back(unit); });
    return out;
}

std::string ToFileName(std::u16string_view name) {
    return Encode(name, true);
}

bool FromFileName(std::string_view name, WCHAR* target, std::size_t capacity) {
    if (name.size() >= capacity) {  // a name has never more units than bytes, so only then the length is in doubt
        const std::u16string wide = FromFileName(name);
        if (wide.size() >= capacity) {
            return false;
        }
        memcpy(target, wide.c_str(), (wide.size() + 1) * sizeof(WCHAR));
        return true;
    }
    WCHAR* end = target;
    DecodeAll(name, true, [&end](char16_t unit) { *end++ = unit; });
    *end = 0;
    return true;
}

}  // namespace kawin
