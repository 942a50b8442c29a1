// Polyglot keys, move words and entries.
#include "book/polyglot.h"

namespace {

constexpr int CASTLE_OFFSET = 768, EP_OFFSET = 772, TURN_OFFSET = 780;

// Pieces are numbered black pawn 0, white pawn 1, black knight 2, ... white king 11, and
// squares a1 = 0 as in the engine.
std::uint64_t pieceRandom(Color colour, Piece piece, Square square) {
    return POLYGLOT_RANDOM[64 * (2 * (piece - 1) + colour) + square];
}

// The en-passant file counts when a pawn of the side to move could reach the square behind
// the pawn that stepped twice, were the capture legal.
bool epCounts(const Position& position) {
    if (position.epFile == 0)
        return false;
    const Color mover     = position.side();
    const int file        = position.epFile - 1;
    const int rank        = mover == WHITE ? 4 : 3; // where the pushed pawn stands
    const Bitboard beside = (file > 0 ? bit(squareAt(file - 1, rank)) : 0) |
                            (file < 7 ? bit(squareAt(file + 1, rank)) : 0);
    return (beside & position.bbPiece[mover][PAWN]) != 0;
}

std::uint64_t readBig(const std::uint8_t* bytes, int size) {
    std::uint64_t value = 0;
    for (int i = 0; i < size; ++i)
        value = value << 8 | bytes[i];
    return value;
}

void writeBig(std::uint64_t value, std::uint8_t* bytes, int size) {
    for (int i = size - 1; i >= 0; --i, value >>= 8)
        bytes[i] = std::uint8_t(value);
}

} // namespace

std::uint64_t polyglotKey(const Position& position) {
    std::uint64_t key = 0;
    for (int colour = BLACK; colour <= WHITE; ++colour)
        for (int piece = PAWN; piece <= KING; ++piece)
            for (Bitboard b = position.bbPiece[colour][piece]; b;)
                key ^= pieceRandom(Color(colour), Piece(piece), popLowest(b));
    for (int right = 0; right < 4; ++right)
        if (position.castleRights & (1 << right))
            key ^= POLYGLOT_RANDOM[CASTLE_OFFSET + right];
    if (epCounts(position))
        key ^= POLYGLOT_RANDOM[EP_OFFSET + position.epFile - 1];
    if (position.side() == WHITE)
        key ^= POLYGLOT_RANDOM[TURN_OFFSET];
    return key;
}

std::uint16_t polyglotMove(Move move) {
    const Square from = moveFrom(move);
    Square to         = moveTo(move);
    if (isCastle(move))
        to = fileOf(to) == 6 ? to + 1 : to - 2; // onto the rook: g1 to h1, c1 to a1
    const int promotion = movePromotion(move) == EMPTY ? 0 : movePromotion(move) - 1;
    return std::uint16_t(to | from << 6 | promotion << 12);
}

Move moveOfPolyglot(ChessBoard& board, std::uint16_t word) {
    MoveEntry list[MAX_GENERATED];
    const int count = board.generateLegalMoves(list);
    for (int i = 0; i < count; ++i)
        if (polyglotMove(list[i].move) == word)
            return list[i].move;
    return NO_MOVE;
}

PolyglotEntry readPolyglotEntry(const std::uint8_t* bytes) {
    return {readBig(bytes, 8), std::uint16_t(readBig(bytes + 8, 2)),
            std::uint16_t(readBig(bytes + 10, 2)), std::uint32_t(readBig(bytes + 12, 4))};
}

void writePolyglotEntry(const PolyglotEntry& entry, std::uint8_t* bytes) {
    writeBig(entry.key, bytes, 8);
    writeBig(entry.move, bytes + 8, 2);
    writeBig(entry.weight, bytes + 10, 2);
    writeBig(entry.learn, bytes + 12, 4);
}

const char* checkPolyglotImage(const std::uint8_t* data, std::size_t size, std::size_t& offset) {
    if (size % POLYGLOT_ENTRY_SIZE != 0) {
        offset = size - size % POLYGLOT_ENTRY_SIZE;
        return "a partial entry (the size is not a multiple of 16)";
    }
    for (offset = POLYGLOT_ENTRY_SIZE; offset < size; offset += POLYGLOT_ENTRY_SIZE)
        if (readBig(data + offset, 8) < readBig(data + offset - POLYGLOT_ENTRY_SIZE, 8))
            return "keys out of order";
    return nullptr;
}
