// The polyglot book format's side of the engine: the key it gives a position, its 16-bit move
// words, and its 16-byte big-endian entries. Everything that reads or writes .bin books of
// other programs goes through here.
#pragma once

#include "board/chess_board.h"

#include <cstddef>
#include <cstdint>

constexpr int POLYGLOT_RANDOM_COUNT       = 781;
constexpr std::size_t POLYGLOT_ENTRY_SIZE = 16;
extern const std::uint64_t POLYGLOT_RANDOM[POLYGLOT_RANDOM_COUNT];

struct PolyglotEntry {
    std::uint64_t key;
    std::uint16_t move;
    std::uint16_t weight;
    std::uint32_t learn;
};

// The position's key as polyglot computes it. Unlike the engine's key it counts the
// en-passant file only when a pawn of the side to move stands beside the pawn that has just
// stepped twice, whether or not taking it would be legal.
std::uint64_t polyglotKey(const Position& position);
// The move word: destination, origin, promotion piece; castling is the king taking its rook.
std::uint16_t polyglotMove(Move move);
// The legal move of the board that the word stands for, or NO_MOVE.
Move moveOfPolyglot(ChessBoard& board, std::uint16_t word);

PolyglotEntry readPolyglotEntry(const std::uint8_t* bytes);
void writePolyglotEntry(const PolyglotEntry& entry, std::uint8_t* bytes);
// Null when the image is a polyglot book: whole entries, keys in ascending order. Otherwise
// what is wrong, with `offset` at the byte where it shows.
const char* checkPolyglotImage(const std::uint8_t* data, std::size_t size, std::size_t& offset);
