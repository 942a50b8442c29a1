// What the generators produce beyond the counts perft checks: which list each kind of move
// comes in, the order of promotions, and evasions that lose no legal move.
#include "test_support.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

std::vector<Move> generated(ChessBoard& board, int (ChessBoard::*generator)(MoveEntry*) const,
                            bool legalOnly = false) {
    MoveEntry list[MAX_GENERATED];
    std::vector<Move> moves;
    for (int i = 0, count = (board.*generator)(list); i < count; ++i) {
        if (!legalOnly || board.makeMove(list[i].move))
            moves.push_back(list[i].move);
        if (legalOnly)
            board.unmakeMove(list[i].move);
    }
    return moves;
}

} // namespace

TEST(Generate, EachListHoldsItsOwnKindOfMove) {
    std::vector<std::string> fens = {
        "1n1n1k2/2P5/8/8/8/8/8/4K3 w - - 0 1", "4k3/8/8/2PpP3/8/8/8/4K3 w - d6 0 1",
        "K5r1/1P6/8/8/8/8/8/6k1 w - - 0 1", "8/8/8/2k5/3Pp3/8/8/4K3 b - d3 0 1"};
    for (const PerftCase& c : loadPerftSuite("tricky.perft"))
        fens.push_back(c.fen);
    for (const std::string& fen : fens) {
        auto board                       = boardFrom(fen);
        const std::vector<Move> captures = generated(*board, &ChessBoard::generateCaptures);
        for (Move m : generated(*board, &ChessBoard::generateQuiets))
            EXPECT_TRUE(!moveCaptured(m) && !movePromotion(m)) << fen;
        for (std::size_t i = 0; i < captures.size(); ++i) {
            const Move m = captures[i];
            EXPECT_TRUE(moveCaptured(m) || movePromotion(m)) << fen;
            // Promotions come as four, queen first, then rook, knight, bishop.
            if (movePromotion(m) == QUEEN) {
                ASSERT_LT(i + 3, captures.size()) << fen;
                for (Piece next : {ROOK, KNIGHT, BISHOP}) {
                    const Move p = captures[++i];
                    EXPECT_TRUE(movePromotion(p) == next && moveFrom(p) == moveFrom(m) &&
                                moveTo(p) == moveTo(m))
                        << fen;
                }
            }
        }
        // In check, the evasions keep every legal move of the full lists, and no other.
        if (board->sideToMoveInCheck()) {
            std::vector<Move> full     = generated(*board, &ChessBoard::generateCaptures, true);
            std::vector<Move> evasions = generated(*board, &ChessBoard::generateEvasions, true);
            for (Move m : generated(*board, &ChessBoard::generateQuiets, true))
                full.push_back(m);
            std::sort(full.begin(), full.end());
            std::sort(evasions.begin(), evasions.end());
            EXPECT_EQ(evasions, full) << fen;
        }
    }
    // A FEN's en-passant file with no pawn behind the target is not believed.
    auto board = boardFrom("4k3/8/8/2P5/8/8/8/4K3 w - d6 0 1");
    EXPECT_TRUE(generated(*board, &ChessBoard::generateCaptures).empty());
}
