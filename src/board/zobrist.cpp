// The Zobrist keys: 781 keys from MT19937 with a fixed seed, so every run and every board
// hashes a position to the same key; and the key of a position computed from scratch.
#include "board/zobrist.h"

#include "board/mt19937.h"
#include "board/trace.h"

#include <cstring>

int ZobristKeys::initZobrist() {
    if (keysReady)
        return 1;
    constexpr int KEY_COUNT           = 781;
    static const std::uint32_t seed[] = {1620, 1347, 1074, 801};
    Mt19937 generator;
    generator.seedArray(seed, 4);
    std::uint64_t keys[KEY_COUNT];
    for (std::uint64_t& key : keys)
        key = generator.next64();
    // Two keys are drawn again after the first pass. Every book file written so far is keyed
    // by the keys this sequence gives, so changing a draw would lose those books' positions.
    keys[544] = generator.next64();
    keys[465] = generator.next64();

    // Generated in order colour (Black first), piece, square; stored by row colour + 2 * type.
    for (int colour = 0; colour < 2; ++colour)
        for (int piece = PAWN; piece <= KING; ++piece)
            for (Square s = 0; s < 64; ++s)
                pieceKey[(colour + 2 * (piece - 1)) * 64 + s] =
                    keys[(colour * 6 + piece - 1) * 64 + s];
    std::memcpy(epKey, keys + 768, sizeof epKey);
    std::memcpy(castleKey, keys + 776, sizeof castleKey);
    sideKey   = keys[780];
    keysReady = true;
    trace("Zobrist keys count = %d", KEY_COUNT);
    return 1;
}

std::uint64_t ZobristKeys::keyOf(const Position& position) const {
    std::uint64_t key = 0;
    for (Color c : {WHITE, BLACK})
        for (Bitboard b = position.bbColorPiece[c]; b;) {
            const Square s  = popLowest(b);
            const int piece = position.pieceArray[s];
            if (piece >= PAWN && piece <= KING)
                key ^= pieceKeyOf(c, Piece(piece), s);
        }
    if (position.epFile)
        key ^= epKey[position.epFile - 1];
    for (int i = 0; i < 4; ++i)
        if (position.castleRights & (1 << i))
            key ^= castleKey[i];
    if (position.sideToMove == BLACK)
        key ^= sideKey;
    return key;
}
