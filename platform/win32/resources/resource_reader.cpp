#include "resource_reader.h"

#include <algorithm>

#include "../text/case_fold.h"
#include "byte_view.h"

namespace kawin {
namespace {

constexpr std::size_t kUnitSize = 2;

// "#123" names a number; anything after "#" that is none names nothing that a compiler makes.
std::optional<WORD> NumberAfterHash(std::u16string_view text) {
    unsigned value = 0;
    if (text.size() < 2 || text.front() != u'#') {
        return std::nullopt;
    }
    for (const char16_t digit : text.substr(1)) {
        if (digit < u'0' || digit > u'9') {
            return std::nullopt;
        }
        value = value * 10 + static_cast<unsigned>(digit - u'0');
        if (value > 0xFFFF) {
            return std::nullopt;
        }
    }
    return static_cast<WORD>(value);
}

bool IsBefore(const ResourceEntry& a, const ResourceEntry& b) {
    return a.type.Rank() != b.type.Rank() ? a.type.Rank() < b.type.Rank() : a.name.Rank() < b.name.Rank();
}

template <class RankOf>
std::span<const ResourceEntry> WithRank(std::span<const ResourceEntry> entries, DWORD rank, RankOf&& rank_of) {
    const auto first =
        std::partition_point(entries.begin(), entries.end(), [&](const ResourceEntry& e) { return rank_of(e) < rank; });
    const auto last = std::partition_point(first, entries.end(), [&](const ResourceEntry& e) { return rank_of(e) == rank; });
    return {first, last};
}

}  // namespace

bool ResourceKey::IsText(std::u16string_view text) const noexcept {
    if (id_ != kText || text_.size() != text.size() * kUnitSize) {
        return false;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (FoldSimple(*Word(text_, i * kUnitSize)) != FoldSimple(text[i])) {
            return false;
        }
    }
    return true;
}

ResourceName::ResourceName(LPCWSTR name) {
    if (IS_INTRESOURCE(name)) {
        id_ = static_cast<WORD>(reinterpret_cast<ULONG_PTR>(name));
    } else {
        text_ = name;
        id_ = NumberAfterHash(text_);
    }
}

DWORD ResourceName::Rank() const noexcept {
    return id_ ? DWORD{*id_} : ResourceKey::kText;
}

bool ResourceName::Matches(const ResourceKey& key) const noexcept {
    return id_ ? key.Rank() == *id_ : key.IsText(text_);
}

std::span<const ResourceEntry> ResourceFile::OfType(std::span<const ResourceEntry> entries, const ResourceName& type) noexcept {
    return WithRank(entries, type.Rank(), [](const ResourceEntry& entry) { return entry.type.Rank(); });
}

std::span<const ResourceEntry> ResourceFile::OfName(std::span<const ResourceEntry> one_type, const ResourceName& name) noexcept {
    return WithRank(one_type, name.Rank(), [](const ResourceEntry& entry) { return entry.name.Rank(); });
}

std::unique_ptr<const ResourceFile> ResourceFile::Read(std::vector<std::byte> bytes) {
    auto file = std::make_unique<ResourceFile>();
    file->bytes_ = std::move(bytes);
    std::optional<std::vector<ResourceEntry>> entries = ReadPeResources(file->bytes_);
    if (!entries) {
        entries = ReadCompiledResources(file->bytes_);
    }
    if (!entries) {
        return nullptr;
    }
    file->entries_ = std::move(*entries);
    std::stable_sort(file->entries_.begin(), file->entries_.end(), IsBefore);
    return file;
}

std::optional<Bytes> FindInStringBlock(Bytes block, UINT id) {
    constexpr UINT kIndexMask = 15;
    std::size_t offset = 0;
    for (UINT index = 0;; ++index) {
        const std::optional<WORD> length = Word(block, offset);
        const auto text = length ? Slice(block, offset + kUnitSize, *length * kUnitSize) : std::nullopt;
        if (!text || index == (id & kIndexMask)) {
            return text;
        }
        offset += kUnitSize + text->size();
    }
}

}  // namespace kawin
