#pragma once

// The lines of a profile. Internal to the layer.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kawin {

class ProfileText {
public:
    struct Entry {
        std::u16string_view key;
        std::u16string_view value;  // without its quotation marks
        std::u16string_view whole;  // of the value, with them
        bool has_value;             // the line has a '='; without it there is no key
    };

    explicit ProfileText(std::string_view bytes);

    // The file's new bytes. Lines that nobody changed are as they were.
    std::string Bytes() const;

    std::vector<std::u16string_view> SectionNames() const;
    // Of the first section of that name; nothing when there is none.
    std::optional<std::vector<Entry>> Entries(std::u16string_view section) const;

    // Of the first key of that name in it.
    std::optional<std::u16string_view> Value(std::u16string_view section, std::u16string_view key) const;

    void Set(std::u16string_view section, std::u16string_view key, std::u16string_view value);
    void Remove(std::u16string_view section, std::u16string_view key);
    void Remove(std::u16string_view section);

private:
    struct Line {
        std::string bytes;    // with the line end
        std::u16string text;  // without, and without blanks around it
    };
    struct Range {
        std::size_t begin;  // the section's own line
        std::size_t end;
    };

    void AddLines(std::string_view bytes);
    Line MakeLine(std::u16string_view text) const;
    std::string Encode(std::u16string_view text) const;
    std::optional<Range> Find(std::u16string_view section) const;
    std::size_t FindKey(const Range& range, std::u16string_view key) const;
    void EndLastLine();

    bool wide_;  // UTF-16LE
    std::vector<Line> lines_;
};

}  // namespace kawin
