// SAN tokens of game files read into the legal move they mean, with the generator's flags.
#include "book/game_moves.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace {

struct Case {
    const char* fen;
    const char* token;
    GameMoveStatus status;
    const char* from; // expected origin and target when the status is GAME_MOVE_OK
    const char* to;
    Move flags; // flags the move must carry
    Piece promotion;
};

Square squareOf(const char* text) {
    return squareAt(text[0] - 'a', text[1] - '1');
}

// The c3 knight is pinned on the diagonal to the king; in the second position the g5 knight is.
const char* const PIN_C3       = "4k3/8/8/6N1/1b6/2N5/8/4K3 w - - 0 1";
const char* const PIN_G5       = "4k3/8/7K/6N1/8/2N1b3/8/8 w - - 0 1";
const char* const THREE_QUEENS = "4k3/8/8/8/4Q2Q/8/8/K6Q w - - 0 1";

const Case CASES[] = {
    {START_FEN, "Nf3", GAME_MOVE_OK, "g1", "f3", 0, EMPTY},
    {START_FEN, "e4!?", GAME_MOVE_OK, "e2", "e4", MOVE_DOUBLE, EMPTY},
    // An unhinted text whose first match is pinned means the other knight.
    {PIN_C3, "Ne4", GAME_MOVE_OK, "g5", "e4", 0, EMPTY},
    {PIN_G5, "Ne4+", GAME_MOVE_OK, "c3", "e4", 0, EMPTY},
    {PIN_C3, "Nce4", GAME_MOVE_ILLEGAL, nullptr, nullptr, 0, EMPTY},
    // Both hints, which the engine's reader cannot take at once.
    {THREE_QUEENS, "Qh4e1", GAME_MOVE_OK, "h4", "e1", 0, EMPTY},
    {THREE_QUEENS, "Qg4e1", GAME_MOVE_NO_SUCH, nullptr, nullptr, 0, EMPTY},
    {THREE_QUEENS, "Qh1e1", GAME_MOVE_OK, "h1", "e1", 0, EMPTY},
    {THREE_QUEENS, "Qe4e1", GAME_MOVE_OK, "e4", "e1", 0, EMPTY},
    {"r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1", "O-O", GAME_MOVE_OK, "e1", "g1", MOVE_CASTLE, EMPTY},
    {"r3k2r/8/8/8/8/8/8/R3K2R b KQkq - 0 1", "0-0-0", GAME_MOVE_OK, "e8", "c8", MOVE_CASTLE, EMPTY},
    // A king next to its rook without the right to castle does not castle by stepping there.
    {"4k3/8/8/8/8/8/8/5K1R w - - 0 1", "O-O", GAME_MOVE_NO_SUCH, nullptr, nullptr, 0, EMPTY},
    {"4k3/8/8/8/8/8/8/5K1R w - - 0 1", "Kg1", GAME_MOVE_OK, "f1", "g1", 0, EMPTY},
    {"4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1", "exd6", GAME_MOVE_OK, "e5", "d6", MOVE_EP, EMPTY},
    {"5n2/4P3/8/8/8/8/8/k3K3 w - - 0 1", "e8Q", GAME_MOVE_OK, "e7", "e8", 0, QUEEN},
    {"5n2/4P3/8/8/8/8/8/k3K3 w - - 0 1", "exf8=N+", GAME_MOVE_OK, "e7", "f8", 0, KNIGHT},
    {"5n2/4P3/8/8/8/8/8/k3K3 w - - 0 1", "e8", GAME_MOVE_NO_SUCH, nullptr, nullptr, 0, EMPTY},
    {"4k3/8/8/8/8/8/3r4/4K3 w - - 0 1", "Ke2", GAME_MOVE_ILLEGAL, nullptr, nullptr, 0, EMPTY},
    {START_FEN, "Nf6", GAME_MOVE_NO_SUCH, nullptr, nullptr, 0, EMPTY},
    {START_FEN, "Ke2", GAME_MOVE_NO_SUCH, nullptr, nullptr, 0, EMPTY},
};

const char* const UNREADABLE[] = {"",    "e2e4", "e4xyz",   "Zf3", "Nf",     "Ne4Q",
                                  "xe4", "e9",   "O-O-O-O", "1-0", "Nbb1d2", "P"};

} // namespace

TEST(GameMoves, TextMeansTheLegalMoveWithTheGeneratorsFlags) {
    for (const Case& c : CASES) {
        auto board                 = boardFrom(c.fen);
        const Position before      = *board;
        Move move                  = 0xDEAD;
        const GameMoveStatus found = readGameMove(*board, c.token, move);
        EXPECT_EQ(found, c.status) << c.fen << " " << c.token;
        EXPECT_TRUE(samePosition(*board, before)) << c.token;
        if (c.status != GAME_MOVE_OK) {
            EXPECT_EQ(move, NO_MOVE) << c.token;
            continue;
        }
        EXPECT_EQ(moveFrom(move), squareOf(c.from)) << c.token;
        EXPECT_EQ(moveTo(move), squareOf(c.to)) << c.token;
        EXPECT_EQ(move & c.flags, c.flags) << c.token;
        EXPECT_EQ(movePromotion(move), c.promotion) << c.token;
        const std::vector<Move> legal = legalMoves(*board);
        EXPECT_NE(std::find(legal.begin(), legal.end(), move), legal.end()) << c.token;
    }
}

TEST(GameMoves, TextThatIsNotSanIsUnreadable) {
    auto board = boardFrom(START_FEN);
    for (const char* token : UNREADABLE) {
        Move move;
        EXPECT_EQ(readGameMove(*board, token, move), GAME_MOVE_UNREADABLE) << token;
    }
}
