#pragma once

// The resources of a file: one list of (type, name, language, bytes), read from a PE image or from a compiled .res.
//
// Nothing of the file is trusted: every read is bounded, every node of a PE resource directory is visited once, and texts stay
// where they are in the file. What cannot be read is left out; the rest is found.

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "../base/types.h"

namespace kawin {

using Bytes = std::span<const std::byte>;

// A type or a name: a number, or text inside the file (UTF-16, little-endian, at any address).
class ResourceKey {
public:
    explicit ResourceKey(WORD id) : id_(id) {}
    explicit ResourceKey(Bytes text) : id_(kText), text_(text) {}

    // Orders numbers first; all texts are alike.
    static constexpr DWORD kText = 0x10000;
    DWORD Rank() const noexcept { return id_; }
    bool IsText(std::u16string_view text) const noexcept;  // without regard to case

private:
    DWORD id_;
    Bytes text_;
};

// A type or a name as a caller gives it: a number, "#" and a number, or text.
class ResourceName {
public:
    explicit ResourceName(LPCWSTR name);
    DWORD Rank() const noexcept;  // of the keys that it may match
    bool Matches(const ResourceKey& key) const noexcept;

private:
    std::optional<WORD> id_;
    std::u16string_view text_;  // the caller's
};

struct ResourceEntry {
    ResourceKey type;
    ResourceKey name;
    LANGID language;
    Bytes data;
};

class ResourceFile {
public:
    // Takes over the bytes of a whole file. Null when they are neither a PE image nor a compiled .res.
    static std::unique_ptr<const ResourceFile> Read(std::vector<std::byte> bytes);

    // In order of type and name, numbers first; the order of the file within.
    std::span<const ResourceEntry> Entries() const noexcept { return entries_; }

    // Those of one type; of these, those of one name. Texts are to be looked at still.
    static std::span<const ResourceEntry> OfType(std::span<const ResourceEntry> entries, const ResourceName& type) noexcept;
    static std::span<const ResourceEntry> OfName(std::span<const ResourceEntry> one_type, const ResourceName& name) noexcept;

private:
    std::vector<std::byte> bytes_;
    std::vector<ResourceEntry> entries_;  // into bytes_
};

// Both return nothing when the bytes are not of their kind.
std::optional<std::vector<ResourceEntry>> ReadPeResources(Bytes file);
std::optional<std::vector<ResourceEntry>> ReadCompiledResources(Bytes file);

// The string `id & 15` in a string table block; nothing when the block ends before it. At any address.
std::optional<Bytes> FindInStringBlock(Bytes block, UINT id);

}  // namespace kawin
