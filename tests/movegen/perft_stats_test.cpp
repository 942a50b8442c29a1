// The counting statistics walk against the make-every-leaf walk it replaced: the seven
// counters must agree at every depth, on positions chosen for the moves whose checks are
// hardest to see from the move word, and over the random suite.
#include "movegen/perft_oracle.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace {

// clang-format off
const char* const SPECIAL_CHECKS[] = {
    "8/8/8/8/8/8/8/R3K2k w Q - 0 1",          // the rook of O-O-O checks through e1
    "8/8/8/8/8/8/8/k3K2R w K - 0 1",          // and of O-O, through e1 the other way
    "3k4/8/8/8/8/8/8/R3K2R w KQ - 0 1",       // O-O-O checks up the d-file
    "8/8/8/R2pP2k/8/8/8/K7 w - d6 0 1",       // e.p. lifts both pawns off the rook's rank
    "8/6k1/8/3pP3/8/8/1B6/K7 w - d6 0 1",     // e.p. uncovers the bishop
    "8/4k3/8/3pP3/8/8/8/K7 w - d6 0 1",       // the pawn taking e.p. checks itself
    "8/8/8/8/k2Pp2Q/8/8/3K4 b - d3 0 1",      // e.p. that would expose Black's own king
    "8/4P3/8/8/8/4k3/8/K7 w - - 0 1",         // a promoted queen checks through e7
    "4r3/3P4/2k5/8/8/8/8/K7 w - - 0 1",       // so does a promotion taking, through d7
    "8/RPk5/8/8/8/8/8/K7 w - - 0 1",          // the promoting pawn uncovers the rook
    "8/8/8/8/R2K3k/8/8/8 w - - 0 1",          // the king uncovers the rook, off the line only
    "6rk/6pp/8/6N1/8/8/1B6/K7 w - - 0 1",     // smothered mate and discovered checks
    "6k1/5ppp/8/8/8/8/5PPP/R3K2R w KQ - 0 1", // back-rank mates, castling
    "r3k2r/1P4P1/8/2pP4/8/8/6p1/R3K2R w KQkq c6 0 1", // promotions, e.p., castling, both sides
    "4k3/8/8/8/8/8/8/4R1K1 w - - 0 1",        // the king not to move already attacked
    "8/8/8/8/8/8/1k6/K1K5 w - - 0 1",         // a second white king beside the black one
};
// clang-format on

} // namespace

TEST(PerftStats, AgreeWithTheMakeEveryLeafWalkWhereChecksAreHardToSee) {
    auto board = boardFrom(START_FEN);
    for (const char* fen : SPECIAL_CHECKS)
        expectStatsMatchOracle(*board, fen, 4);
    for (const PerftCase& c : loadPerftSuite("tricky.perft"))
        if (hasStandardCastling(c.fen))
            expectStatsMatchOracle(*board, c.fen, 3);
}

TEST(PerftStats, AgreeWithTheMakeEveryLeafWalkOverTheRandomSuiteToTwoPlies) {
    const std::vector<PerftCase> suite = loadPerftSuite("random.perft");
    auto board                         = boardFrom(START_FEN);
    for (std::size_t i = 0; i < suite.size(); i += PELLIX_SAMPLE_STRIDE)
        if (hasStandardCastling(suite[i].fen))
            expectStatsMatchOracle(*board, suite[i].fen, 2);
}
