// The search depends on nothing but its position and limits, not on what the stack held
// before it ran. The bench signature rests on this (signature_slow_test.cpp checks it in two
// processes, and the emulated builds' checks against the native count in others).
#include "search_test_board.h"
#include "test_support.h"

#include <gtest/gtest.h>
#include <iterator>

namespace {

struct Outcome {
    std::uint64_t nodes;
    Move move;
};

// Fills the stack below the caller's frame with one word: the frames of the caller's next
// call are laid out on it.
Move junk;
[[gnu::noinline]] void soilStack(RecordingBoard&) {
    volatile Move area[256];
    for (std::size_t i = 0; i < std::size(area); ++i)
        area[i] = junk;
}

// A fixed-depth search that soils the stack at every node: each node polls for input, and
// the poll's command handler writes the junk just where the node's own frames go next. A
// search that reads a word it never wrote sees the junk.
Outcome searchOverJunk(const char* fen, Move with) {
    auto board          = searchBoard(fen);
    junk                = with;
    board->pollInterval = 1;
    board->inputPoll    = [] { return 1; };
    board->onCommand    = soilStack;
    thinkToDepth(*board, 6);
    return {board->nodeCount, board->lastMove};
}

} // namespace

// Junk that looks like the position's own moves is what a stale word really holds, and a
// stale move read as a hash move changes the ordering and so the node count.
TEST(Determinism, SearchIgnoresWhatTheStackHeldBefore) {
    for (const char* fen :
         {KIWIPETE_FEN, "r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N1PN2/PP3PPP/R2QKB1R b KQ - 0 8"}) {
        const Outcome clean           = searchOverJunk(fen, NO_MOVE);
        const std::vector<Move> moves = legalMoves(*boardFrom(fen));
        for (std::size_t i = 0; i < moves.size(); i += 9) {
            const Outcome soiled = searchOverJunk(fen, moves[i]);
            EXPECT_EQ(soiled.nodes, clean.nodes) << fen << " over junk " << moves[i];
            EXPECT_EQ(soiled.move, clean.move) << fen << " over junk " << moves[i];
        }
    }
}
