#pragma once

// Scaled pieces of pictures that are drawn again and again, kept for all threads. See gdiplus_graphics.h for what is kept.

#include <cstddef>
#include <memory>

#include "../../kadata_export.h"
#include "axis.h"
#include "piece_rows.h"

namespace kawin {

struct PieceKey {
    std::uint64_t picture = 0;
    AxisMap x;
    AxisMap y;

    auto operator<=>(const PieceKey&) const = default;
};

class Piece {
public:
    // All rows of `rows`. May throw std::bad_alloc.
    Piece(PieceRows& rows, int width, int height);

    PieceRows::Row At(int y) const noexcept;
    std::size_t Bytes() const noexcept;

private:
    // Of a row, which of its pixels are opaque for certain.
    struct Whole {
        int begin;
        int end;
    };

    std::size_t width_;
    std::unique_ptr<Argb[]> pixels_;
    std::vector<Whole> wholes_;
};

// A piece as rows.
class KeptRows : public PieceRows {
public:
    explicit KeptRows(std::shared_ptr<const Piece> piece) noexcept : piece_(std::move(piece)) {}
    Row At(int y) override { return piece_->At(y); }

private:
    std::shared_ptr<const Piece> piece_;
};

// What is known of a piece: it itself, or that it was drawn before in this state of its picture, so that it is worth keeping.
struct PieceMemory {
    std::shared_ptr<const Piece> piece;
    bool was_drawn = false;
};

constexpr std::size_t kMostPieceBytes = std::size_t{32} << 20;

// Notes that the piece is drawn. Without memory, it is as if it had not been.
PieceMemory RecallPiece(const PieceKey& key, std::uint64_t version) noexcept;
void KeepPiece(const PieceKey& key, std::uint64_t version, std::shared_ptr<const Piece> piece) noexcept;

// Of a picture that ends.
void ForgetPieces(std::uint64_t picture) noexcept;

// What is kept now, in bytes: for tests.
KADATA_API std::size_t CountPieceBytes() noexcept;

}  // namespace kawin
