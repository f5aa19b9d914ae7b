#pragma once

// What was read from a hive, for as long as nobody has written to it. Internal to the layer. Not safe by itself: Hive guards it.

#include <array>
#include <string>
#include <string_view>
#include <unordered_map>

#include "hive_tables.h"

namespace kawin {

// The state of a database's write-ahead log, which every commit of any process changes: the first of the two headers of the log's
// index (sqlite.org/walformat.html, 2.1), which all processes share in memory. A commit that has returned to its caller is in it,
// and so equal marks mean equal contents.
class CommitMark {
public:
    CommitMark() = default;
    explicit CommitMark(const std::uint32_t* index) noexcept {
        for (std::size_t i = 0; i < words_.size(); ++i) {
            words_[i] = __atomic_load_n(index + i, __ATOMIC_ACQUIRE);
        }
    }
    bool operator==(const CommitMark&) const = default;

    // Whether the index still says this; without a copy of it.
    bool IsStill(const std::uint32_t* index) const noexcept {
        bool same = true;
        for (std::size_t i = 0; i < words_.size(); ++i) {
            same &= __atomic_load_n(index + i, __ATOMIC_ACQUIRE) == words_[i];
        }
        return same;
    }

    // Whether exactly one commit lies between `before` and this.
    bool IsNextAfter(const CommitMark& before) const noexcept { return words_[2] == before.words_[2] + 1; }

    // False while the index is being made.
    bool IsUsable() const noexcept { return words_[0] != 0 && (words_[3] & 0xFF) == 1; }

private:
    std::array<std::uint32_t, 12> words_{};
};

struct CachedAnswer {
    LSTATUS status = ERROR_SUCCESS;
    KeyId key = kRootKey;  // of a look-up of a key
    DWORD type = REG_NONE;
    std::string bytes;
};

// A question as it was asked: names in another case are another question. `value` without name is the key's default value, no
// `value` at all is the key itself.
struct CacheQuestion {
    KeyId from;
    std::u16string_view path;
    std::u16string_view name;
    bool value;
};

class HiveCache {
public:
    // Null when the answer is not known, or not known to be right any more by the database's shared index.
    const CachedAnswer* Find(const std::uint32_t* index, const CacheQuestion& question) const;

    // An answer that was true when the mark was `then`. Answers of another mark are forgotten, and all of them when they are
    // many.
    void Keep(const CommitMark& then, const CacheQuestion& question, CachedAnswer answer);

    // This process has written a value and nobody else anything: what is known of keys stays.
    void ForgetValues(const CommitMark& before, const CommitMark& after);

    void Clear() noexcept;

private:
    struct Key {
        KeyId from;
        std::u16string path;
        std::u16string name;
        bool value;
        operator CacheQuestion() const noexcept { return {from, path, name, value}; }
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(const CacheQuestion& question) const noexcept;
    };
    struct Same {
        using is_transparent = void;
        bool operator()(const CacheQuestion& a, const CacheQuestion& b) const noexcept;
    };
    // The way to an answer without a walk through the map.
    struct Recent {
        std::size_t hash = 0;
        const Key* question = nullptr;
        const CachedAnswer* answer = nullptr;
    };
    static constexpr std::size_t kRecent = 512;

    CommitMark mark_;
    std::unordered_map<Key, CachedAnswer, Hash, Same> answers_;
    std::array<Recent, kRecent> recent_{};
};

}  // namespace kawin
