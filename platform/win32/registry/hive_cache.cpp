#include "hive_cache.h"

#include <cstring>

namespace kawin {
namespace {

constexpr std::size_t kMostAnswers = 4096;
constexpr std::size_t kLongestValue = 4096;  // bytes; longer ones are read from the database each time

// Eight bytes at a time: paths are long and questions frequent.
std::uint64_t Mix(std::uint64_t hash, std::u16string_view text) noexcept {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;
    const auto* bytes = reinterpret_cast<const char*>(text.data());
    std::size_t left = text.size() * sizeof(char16_t);
    hash = (hash ^ left) * kFactor;
    for (std::uint64_t word = 0; left >= sizeof word; bytes += sizeof word, left -= sizeof word) {
        memcpy(&word, bytes, sizeof word);
        hash = (hash ^ word) * kFactor;
        hash ^= hash >> 32;
    }
    std::uint64_t rest = 0;
    memcpy(&rest, bytes, left);
    hash = (hash ^ rest) * kFactor;
    return hash ^ (hash >> 32);
}

bool Equal(std::u16string_view a, std::u16string_view b) noexcept {
    return a.size() == b.size() && memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0;
}

}  // namespace

std::size_t HiveCache::Hash::operator()(const CacheQuestion& question) const noexcept {
    return Mix(Mix(static_cast<std::uint64_t>(question.from) + question.value, question.path), question.name);
}

bool HiveCache::Same::operator()(const CacheQuestion& a, const CacheQuestion& b) const noexcept {
    return a.from == b.from && a.value == b.value && Equal(a.name, b.name) && Equal(a.path, b.path);
}

const CachedAnswer* HiveCache::Find(const CommitMark& now, const CacheQuestion& question) const {
    if (!(now == mark_)) {
        return nullptr;
    }
    const auto found = answers_.find(question);
    return found != answers_.end() ? &found->second : nullptr;
}

void HiveCache::Keep(const CommitMark& then, const CacheQuestion& question, CachedAnswer answer) {
    if (!then.IsUsable() || answer.bytes.size() > kLongestValue) {
        return;
    }
    if (!(then == mark_) || answers_.size() >= kMostAnswers) {
        answers_.clear();
        mark_ = then;
    }
    answers_.insert_or_assign(Key{question.from, std::u16string(question.path), std::u16string(question.name), question.value},
                              std::move(answer));
}

}  // namespace kawin
