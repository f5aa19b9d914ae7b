#include "piece_cache.h"

#include <cmath>
#include <cstring>
#include <list>
#include <map>
#include <mutex>
#include <new>

namespace kawin {
namespace {

// Pieces that were drawn but once are remembered, too; so many, since they take next to nothing.
constexpr std::size_t kMostEntries = 4096;

struct Entry {
    std::uint64_t version = 0;
    std::shared_ptr<const Piece> piece;  // null: only known
    std::list<PieceKey>::iterator use;

    std::size_t Bytes() const noexcept { return piece ? piece->Bytes() : 0; }
};

class Cache {
public:
    PieceMemory Recall(const PieceKey& key, std::uint64_t version) {
        const std::lock_guard lock(mutex_);
        const auto found = entries_.find(key);
        if (found == entries_.end()) {
            Add(key, version);
            return {};
        }
        Entry& entry = found->second;
        uses_.splice(uses_.begin(), uses_, entry.use);
        if (entry.version != version) {
            bytes_ -= entry.Bytes();
            entry.version = version;
            entry.piece = nullptr;
            return {};
        }
        return {entry.piece, true};
    }

    void Keep(const PieceKey& key, std::uint64_t version, std::shared_ptr<const Piece> piece) noexcept {
        const std::lock_guard lock(mutex_);
        const auto found = entries_.find(key);
        if (found == entries_.end() || found->second.version != version || piece->Bytes() > kMostPieceBytes) {
            return;
        }
        bytes_ = bytes_ - found->second.Bytes() + piece->Bytes();
        found->second.piece = std::move(piece);
        while (bytes_ > kMostPieceBytes) {  // the newest is in front, and fits
            DropOldest();
        }
    }

    void Forget(std::uint64_t picture) noexcept {
        const std::lock_guard lock(mutex_);
        PieceKey first;
        first.picture = picture;
        first.x.start = first.x.step = first.x.low = first.x.high = -HUGE_VAL;
        for (auto entry = entries_.lower_bound(first); entry != entries_.end() && entry->first.picture == picture;) {
            entry = Drop(entry);
        }
    }

    std::size_t Bytes() noexcept {
        const std::lock_guard lock(mutex_);
        return bytes_;
    }

private:
    using Entries = std::map<PieceKey, Entry>;

    void Add(const PieceKey& key, std::uint64_t version) {
        if (entries_.size() >= kMostEntries) {
            DropOldest();
        }
        uses_.push_front(key);
        try {
            entries_.emplace(key, Entry{version, nullptr, uses_.begin()});
        } catch (const std::bad_alloc&) {
            uses_.pop_front();
            throw;
        }
    }

    Entries::iterator Drop(Entries::iterator entry) noexcept {
        bytes_ -= entry->second.Bytes();
        uses_.erase(entry->second.use);
        return entries_.erase(entry);
    }

    void DropOldest() noexcept { Drop(entries_.find(uses_.back())); }

    std::mutex mutex_;
    Entries entries_;           // guarded by mutex_
    std::list<PieceKey> uses_;  // guarded by mutex_; the latest first
    std::size_t bytes_ = 0;     // guarded by mutex_
};

// Never destroyed: pictures may end while the process ends.
Cache& TheCache() {
    static Cache* const cache = new Cache;
    return *cache;
}

}  // namespace

Piece::Piece(PieceRows& rows, int width, int height)
    : width_(static_cast<std::size_t>(width)),
      pixels_(std::make_unique_for_overwrite<Argb[]>(width_ * static_cast<std::size_t>(height))) {
    wholes_.reserve(static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        const PieceRows::Row row = rows.At(y);
        std::memcpy(&pixels_[wholes_.size() * width_], row.pixels, width_ * sizeof(Argb));
        wholes_.push_back({row.whole_begin, row.whole_end});
    }
}

PieceRows::Row Piece::At(int y) const noexcept {
    const std::size_t row = static_cast<std::size_t>(y);
    return {&pixels_[row * width_], wholes_[row].begin, wholes_[row].end};
}

std::size_t Piece::Bytes() const noexcept {
    return wholes_.size() * (width_ * sizeof(Argb) + sizeof(Whole));
}

PieceMemory RecallPiece(const PieceKey& key, std::uint64_t version) noexcept try {
    return TheCache().Recall(key, version);
} catch (const std::bad_alloc&) {
    return {};
}

void KeepPiece(const PieceKey& key, std::uint64_t version, std::shared_ptr<const Piece> piece) noexcept {
    TheCache().Keep(key, version, std::move(piece));
}

void ForgetPieces(std::uint64_t picture) noexcept {
    TheCache().Forget(picture);
}

std::size_t CountPieceBytes() noexcept {
    return TheCache().Bytes();
}

}  // namespace kawin
