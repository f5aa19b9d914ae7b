#include "dialog_template.h"

#include <algorithm>
#include <charconv>

#include "../gdi/fonts.h"
#include "../resources/byte_view.h"

namespace kawin {
namespace {

constexpr WORD kOrdinal = 0xFFFF;  // before a number where a text may stand
constexpr WORD kExtendedSignature = 0xFFFF;
constexpr WORD kExtendedVersion = 1;
constexpr std::size_t kItemAlignment = 4;

struct EndsTooEarly {};

class Reader {
public:
    explicit Reader(std::span<const std::byte> bytes) noexcept : bytes_(bytes) {}

    WORD NextWord() const { return *kawin::Word(bytes_, Require(2)); }
    BYTE Byte() { return std::to_integer<BYTE>(Take(1)[0]); }
    WORD Word() {
        const WORD word = *kawin::Word(bytes_, Require(2));
        at_ += 2;
        return word;
    }
    DWORD Dword() {
        const DWORD dword = *kawin::Dword(bytes_, Require(4));
        at_ += 4;
        return dword;
    }
    TemplateRect Rect() {
        TemplateRect rect;
        for (SHORT* side : {&rect.x, &rect.y, &rect.width, &rect.height}) {
            *side = static_cast<SHORT>(Word());
        }
        return rect;
    }
    std::u16string Text() {
        std::u16string text;
        for (WORD unit = Word(); unit != 0; unit = Word()) {
            text.push_back(static_cast<char16_t>(unit));
        }
        return text;
    }
    TemplateName Name() {
        if (NextWord() == kOrdinal) {
            at_ += 2;
            return {Word(), {}};
        }
        return {std::nullopt, Text()};
    }
    std::span<const std::byte> Take(std::size_t count) {
        const auto taken = bytes_.subspan(Require(count), count);
        at_ += count;
        return taken;
    }
    void Align() { at_ = (at_ + kItemAlignment - 1) / kItemAlignment * kItemAlignment; }

private:
    std::size_t Require(std::size_t count) const {
        if (!Slice(bytes_, at_, count)) {
            throw EndsTooEarly();
        }
        return at_;
    }

    std::span<const std::byte> bytes_;
    std::size_t at_ = 0;
};

// A word with a size and that many bytes; of the plain kind the size counts the word itself.
std::span<const std::byte> ReadData(Reader& reader, bool extended) {
    const std::size_t size = reader.NextWord() + (extended ? sizeof(WORD) : 0);
    const auto data = reader.Take(std::max(size, sizeof(WORD)));
    return data.size() > sizeof(WORD) ? data : std::span<const std::byte>();
}

TemplateItem ReadItem(Reader& reader, bool extended) {
    TemplateItem item;
    reader.Align();
    if (extended) {
        reader.Dword();  // help
        item.extended_style = reader.Dword();
        item.style = reader.Dword();
    } else {
        item.style = reader.Dword();
        item.extended_style = reader.Dword();
    }
    item.rect = reader.Rect();
    item.id = extended ? reader.Dword() : reader.Word();
    item.window_class = reader.Name();
    item.title = reader.Name();
    item.data = ReadData(reader, extended);
    return item;
}

TemplateFont ReadFont(Reader& reader, bool extended) {
    TemplateFont font = {reader.Word(), FW_NORMAL, false, DEFAULT_CHARSET, {}};
    if (font.points == kMessageFont) {
        return font;
    }
    if (extended) {
        font.weight = reader.Word();
        font.italic = reader.Byte() != 0;
        font.charset = reader.Byte();
    }
    font.face = reader.Text();
    return font;
}

DialogTemplate Read(Reader reader, bool extended) {
    DialogTemplate dialog;
    if (extended) {
        reader.Take(8);  // version, signature, help
        dialog.extended_style = reader.Dword();
        dialog.style = reader.Dword();
    } else {
        dialog.style = reader.Dword();
        dialog.extended_style = reader.Dword();
    }
    const WORD count = reader.Word();
    dialog.rect = reader.Rect();
    dialog.menu = reader.Name();
    dialog.window_class = reader.Name();
    dialog.title = reader.Text();
    if ((dialog.style & DS_SETFONT) != 0) {
        dialog.font = ReadFont(reader, extended);
    }
    for (WORD i = 0; i < count; ++i) {
        dialog.items.push_back(ReadItem(reader, extended));
    }
    return dialog;
}

}  // namespace

std::u16string TemplateName::AsText() const {
    if (!number) {
        return text;
    }
    char digits[8];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), *number).ptr;
    return u"#" + std::u16string(digits, end);
}

std::optional<DialogTemplate> ReadDialogTemplate(std::span<const std::byte> bytes) try {
    const bool extended = Word(bytes, 0) == kExtendedVersion && Word(bytes, 2) == kExtendedSignature;
    return Read(Reader(bytes), extended);
} catch (const EndsTooEarly&) {
    return std::nullopt;
}

}  // namespace kawin
