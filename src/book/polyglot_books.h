// Books of the polyglot format made from the engine's books and the other way round. Both
// walk from the initial position along book moves, so that what they carry over is what a
// game can reach.
#pragma once

#include "board/chess_board.h"
#include "book/opening_book.h"
#include "book/polyglot.h"

#include <cstdint>
#include <functional>
#include <vector>

// Calls `visit` once for each position reachable from the initial position within `plies`
// plies along the moves that `visit` puts into `follow` (legal moves of the board), the
// nearest first; positions the engine keys alike are visited once.
void walkBook(ChessBoard& board, int plies,
              const std::function<void(ChessBoard& board, std::vector<Move>& follow)>& visit);

enum class ExportWeight {
    COUNT, // in proportion to the games, so that a GUI picks as the engine does
    SCORE, // polyglot's own rule: 2 x wins + draws for the side to move
};

struct ExportTally {
    std::uint64_t positions = 0; // book positions reached
    std::uint64_t keys      = 0; // polyglot keys written (positions that differ only in an
                                 // en-passant file polyglot ignores share one)
};

// The polyglot entries of the book's positions within `plies` plies, sorted by key and, for
// one key, by weight, highest first. Weights are scaled per position into 1..65535.
std::vector<PolyglotEntry> exportPolyglot(ChessBoard& board, const OpeningBook& book, int plies,
                                          ExportWeight weight, ExportTally& tally);

struct ImportTally {
    std::uint64_t positions = 0, moves = 0;
    std::uint64_t unreached  = 0; // entries the walk never came to
    std::uint64_t zeroWeight = 0; // entries reached but of weight 0, skipped as polyglot does
    std::uint64_t illegal    = 0; // entries reached whose move is not legal there
};

// Fills `book` from polyglot entries sorted by key: each reached position keeps its 16
// heaviest moves, with the weight as count and the percentages unknown (0).
void importPolyglot(ChessBoard& board, const std::vector<PolyglotEntry>& entries, int plies,
                    OpeningBook& book, ImportTally& tally);
