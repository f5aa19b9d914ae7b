#include "hive_cache.h"

#include <cstring>

namespace kawin {
namespace {

constexpr std::size_t kMostAnswers = 4096;
constexpr std::size_t kLongestValue = 4096;  // bytes; longer ones are read from the database each time

std::uint64_t Word(const char* bytes) noexcept {
    std::uint64_t word = 0;
    memcpy(&word, bytes, sizeof word);
    return word;
}

// Both halves of the product: every bit of the one word meets every bit of the other.
std::uint64_t Fold(std::uint64_t a, std::uint64_t b) noexcept {
    __extension__ using Product = unsigned __int128;
    const Product product = Product{a} * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

// Sixteen bytes at a time, and no product waits for another: paths are long and questions frequent.
std::uint64_t Mix(std::uint64_t hash, std::u16string_view text) noexcept {
    constexpr std::uint64_t kOdd1 = 0x9E3779B97F4A7C15, kOdd2 = 0xD1B54A32D192ED03;  // near the golden ratio, and its like
    const auto* bytes = reinterpret_cast<const char*>(text.data());
    std::size_t left = text.size() * sizeof(char16_t);
    std::uint64_t sum = hash ^ left;
    for (std::uint64_t step = kOdd1; left >= 16; bytes += 16, left -= 16, step += kOdd2) {
        sum += Fold(Word(bytes) ^ step, Word(bytes + 8) ^ kOdd2);
    }
    char rest[16] = {};
    if (left != 0) {  // an empty view may be null
        memcpy(rest, bytes, left);
    }
    return Fold(sum ^ Word(rest) ^ kOdd1, Word(rest + 8) ^ kOdd2);
}

bool Equal(std::u16string_view a, std::u16string_view b) noexcept {
    return a.size() == b.size() && (a.empty() || memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0);
}

}  // namespace

std::size_t HiveCache::Hash::operator()(const CacheQuestion& question) const noexcept {
    return Mix(Mix(static_cast<std::uint64_t>(question.from) + question.value, question.path), question.name);
}

bool HiveCache::Same::operator()(const CacheQuestion& a, const CacheQuestion& b) const noexcept {
    return a.from == b.from && a.value == b.value && Equal(a.name, b.name) && Equal(a.path, b.path);
}

const CachedAnswer* HiveCache::Find(const std::uint32_t* index, const CacheQuestion& question) const {
    if (!mark_.IsStill(index)) {
        return nullptr;
    }
    const std::size_t hash = Hash()(question);
    const Recent& recent = recent_[hash % kRecent];
    if (recent.hash == hash && recent.answer != nullptr && Same()(*recent.question, question)) {
        return recent.answer;
    }
    const auto found = answers_.find(question);
    return found != answers_.end() ? &found->second : nullptr;
}

void HiveCache::ForgetValues(const CommitMark& before, const CommitMark& after) {
    if (!(before == mark_) || !after.IsUsable() || !after.IsNextAfter(before)) {
        return;
    }
    mark_ = after;
    recent_.fill({});
    std::erase_if(answers_, [](const auto& entry) { return entry.first.value; });
    for (const auto& [question, answer] : answers_) {
        const std::size_t hash = Hash()(question);
        recent_[hash % kRecent] = {hash, &question, &answer};
    }
}

void HiveCache::Clear() noexcept {
    recent_.fill({});
    answers_.clear();
}

void HiveCache::Keep(const CommitMark& then, const CacheQuestion& question, CachedAnswer answer) {
    if (!then.IsUsable() || answer.bytes.size() > kLongestValue) {
        return;
    }
    if (!(then == mark_) || answers_.size() >= kMostAnswers) {
        Clear();
        mark_ = then;
    }
    const auto kept = answers_.insert_or_assign(
        Key{question.from, std::u16string(question.path), std::u16string(question.name), question.value}, std::move(answer));
    const std::size_t hash = Hash()(question);
    recent_[hash % kRecent] = {hash, &kept.first->first, &kept.first->second};
}

}  // namespace kawin
