#include "profile_text.h"

#include <algorithm>

#include "../text/case_fold.h"
#include "../text/code_pages.h"

namespace kawin {
namespace {

constexpr std::string_view kByteOrderMark = "\xFF\xFE";
constexpr std::u16string_view kBlanks = u" \t\r\n\v\f";
constexpr std::u16string_view kLineEnd = u"\r\n";

std::u16string_view Trimmed(std::u16string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(kBlanks), text.size());
    text.remove_prefix(begin);
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::u16string DecodeWide(std::string_view bytes) {
    std::u16string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) | static_cast<unsigned char>(bytes[i + 1]) << 8);
    }
    return text;
}

std::u16string DecodeAnsi(std::string_view bytes) {
    std::u16string text(bytes.size(), u'\0');  // no code page has more characters than bytes
    const int length = static_cast<int>(bytes.size());
    const int decoded = MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, text.data(), length);
    text.resize(static_cast<std::size_t>(decoded));
    return text;
}

std::string EncodeAnsi(std::u16string_view text) {
    const int length = static_cast<int>(text.size());
    std::string bytes(static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr)),
                      '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), length, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
    return bytes;
}

// Length of the first line with its end; 0 for no bytes.
std::size_t LineLength(std::string_view bytes, bool wide) {
    std::size_t at = bytes.find('\n');
    while (wide && at != bytes.npos && (at % 2 != 0 || at + 1 >= bytes.size() || bytes[at + 1] != '\0')) {
        at = bytes.find('\n', at + 1);
    }
    return at == bytes.npos ? bytes.size() : at + (wide ? 2 : 1);
}

// The name of a section whose line this is.
std::optional<std::u16string_view> SectionName(std::u16string_view line) {
    const std::size_t end = line.starts_with(u'[') ? line.rfind(u']') : line.npos;
    return end != line.npos ? std::optional(Trimmed(line.substr(1, end - 1))) : std::nullopt;
}

std::u16string_view Unquoted(std::u16string_view value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() && (value.front() == u'"' || value.front() == u'\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

// Nothing for a comment or an empty line.
std::optional<ProfileText::Entry> EntryOf(std::u16string_view line) {
    if (line.empty() || line.front() == u';') {
        return {};
    }
    const std::size_t equals = line.find(u'=');
    const std::u16string_view whole = equals != line.npos ? Trimmed(line.substr(equals + 1)) : std::u16string_view();
    return ProfileText::Entry{Trimmed(line.substr(0, equals)), Unquoted(whole), whole, equals != line.npos};
}

}  // namespace

// Half a unit at the end is no text, and nothing could be written behind it.
ProfileText::ProfileText(std::string_view bytes) : wide_(bytes.starts_with(kByteOrderMark)) {
    AddLines(wide_ ? bytes.substr(0, bytes.size() - bytes.size() % 2).substr(kByteOrderMark.size()) : bytes);
}

void ProfileText::AddLines(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::string_view line = bytes.substr(0, LineLength(bytes, wide_));
        const std::u16string text = wide_ ? DecodeWide(line) : DecodeAnsi(line);
        lines_.push_back({std::string(line), std::u16string(Trimmed(text))});
        bytes.remove_prefix(line.size());
    }
}

std::string ProfileText::Bytes() const {
    std::string bytes(wide_ ? kByteOrderMark : std::string_view());
    for (const Line& line : lines_) {
        bytes += line.bytes;
    }
    return bytes;
}

std::string ProfileText::Encode(std::u16string_view text) const {
    if (!wide_) {
        return EncodeAnsi(text);
    }
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

ProfileText::Line ProfileText::MakeLine(std::u16string_view text) const {
    return {Encode(text) + Encode(kLineEnd), std::u16string(Trimmed(text))};
}

std::vector<std::u16string_view> ProfileText::SectionNames() const {
    std::vector<std::u16string_view> names;
    for (const Line& line : lines_) {
        if (const auto name = SectionName(line.text); name && !name->empty()) {
            names.push_back(*name);
        }
    }
    return names;
}

std::optional<ProfileText::Range> ProfileText::Find(std::u16string_view section) const {
    const auto is_header = [](const Line& line) { return SectionName(line.text).has_value(); };
    const auto begin = std::find_if(lines_.begin(), lines_.end(), [section](const Line& line) {
        const auto name = SectionName(line.text);
        return name && CompareFolded(*name, Trimmed(section)) == 0;
    });
    if (begin == lines_.end()) {
        return {};
    }
    const auto end = std::find_if(begin + 1, lines_.end(), is_header);
    return Range{static_cast<std::size_t>(begin - lines_.begin()), static_cast<std::size_t>(end - lines_.begin())};
}

std::optional<std::vector<ProfileText::Entry>> ProfileText::Entries(std::u16string_view section) const {
    const std::optional<Range> range = Find(section);
    if (!range) {
        return {};
    }
    std::vector<Entry> entries;
    for (std::size_t i = range->begin + 1; i < range->end; ++i) {
        if (const auto entry = EntryOf(lines_[i].text)) {
            entries.push_back(*entry);
        }
    }
    return entries;
}

std::optional<std::u16string_view> ProfileText::Value(std::u16string_view section, std::u16string_view key) const {
    const std::optional<Range> range = Find(section);
    const std::size_t line = range ? FindKey(*range, key) : 0;
    return range && line != range->end ? std::optional(EntryOf(lines_[line].text)->value) : std::nullopt;
}

// The end of the range when there is none.
std::size_t ProfileText::FindKey(const Range& range, std::u16string_view key) const {
    for (std::size_t i = range.begin + 1; i < range.end; ++i) {
        const auto entry = EntryOf(lines_[i].text);
        if (entry && entry->has_value && CompareFolded(entry->key, Trimmed(key)) == 0) {
            return i;
        }
    }
    return range.end;
}

// So that another one can follow.
void ProfileText::EndLastLine() {
    const std::string end = Encode(u"\n");
    if (!lines_.empty() && !lines_.back().bytes.ends_with(end)) {
        lines_.back().bytes += Encode(kLineEnd);
    }
}

void ProfileText::Set(std::u16string_view section, std::u16string_view key, std::u16string_view value) {
    if (!Find(section)) {
        EndLastLine();
        lines_.push_back(MakeLine(u"[" + std::u16string(section) + u"]"));
    }
    const Range range = *Find(section);
    const std::size_t known = FindKey(range, key);
    if (known != range.end) {
        const std::u16string name(EntryOf(lines_[known].text)->key);  // as first written
        lines_[known] = MakeLine(name + u"=" + std::u16string(value));
        return;
    }
    EndLastLine();
    std::size_t behind = range.end;  // the last line that is not empty
    while (lines_[behind - 1].text.empty()) {
        --behind;
    }
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(behind),
                  MakeLine(std::u16string(key) + u"=" + std::u16string(value)));
}

void ProfileText::Remove(std::u16string_view section, std::u16string_view key) {
    const std::optional<Range> range = Find(section);
    const std::size_t known = range ? FindKey(*range, key) : 0;
    if (range && known != range->end) {
        lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(known));
    }
}

void ProfileText::Remove(std::u16string_view section) {
    if (const std::optional<Range> range = Find(section)) {
        lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(range->begin),
                     lines_.begin() + static_cast<std::ptrdiff_t>(range->end));
    }
}

}  // namespace kawin
