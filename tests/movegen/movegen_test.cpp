// Ordering. Perft counts, the strongest check of generation, make and unmake together, are the
// deep perft tests' (every suite position against its reference counts) and the command line's
// (the initial position and Kiwipete); the seven counters of the statistics walk are held to
// the make-every-leaf walk in perft_stats_test.cpp. Here: the static exchange evaluator on
// classic exchanges, the order the scores put the moves of the main and the capture search in,
// and the toolkit's pin test and slice sort.
#include "movegen/move_rules.h"
#include "test_support.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <tuple>

namespace {

const char* const WINNING = "4k3/8/8/3q4/4P3/8/8/4K3 w - - 0 1";   // e4xd5 takes a queen
const char* const EVEN    = "4k3/8/2p5/3n4/8/2N5/8/4K3 w - - 0 1"; // c3xd5, retaken
const char* const LOSING  = "4k3/8/4p3/3p4/8/8/8/3QK3 w - - 0 1";  // d1xd5, retaken
const char* const PROMOTE = "8/4P3/8/8/8/8/k7/4K3 w - - 0 1";      // e7e8, free

// The ordering score of a move at ply 2: the main search's, or the capture search's.
int scoreOf(ChessBoard& board, const char* move, bool captureSearch = false,
            bool isHashMove = false) {
    MoveEntry entry{findMove(board, move), 0};
    const Move hashMove = isHashMove ? entry.move : NO_MOVE;
    if (captureSearch)
        board.scoreCaptures(&entry, 1, hashMove);
    else
        board.scoreMoves(&entry, 1, hashMove, 2);
    return entry.score;
}

int scoreOf(const char* fen, const char* move, bool captureSearch = false, bool isHash = false) {
    return scoreOf(*boardFrom(fen), move, captureSearch, isHash);
}

} // namespace

TEST(StaticExchange, ClassicExchanges) {
    const std::tuple<const char*, const char*, int> cases[] = {
        {LOSING, "d1d5", -875},                                    // a defended pawn
        {"4r1k1/8/8/4n3/8/8/4R3/4Q1K1 w - - 0 1", "e2e5", 325},    // the queen behind decides
        {"4r1k1/4r3/8/4n3/8/8/4R3/4Q1K1 w - - 0 1", "e2e5", -175}, // so do Black's rooks
        {"4k3/8/8/4p3/8/2B5/8/b3K3 w - - 0 1", "c3e5", -225},      // a slider behind the taker
        {"3rk3/8/8/3pP3/8/8/8/3RK3 w - d6 0 1", "e5d6", 100},      // en passant uncovers a rook
        {"rk6/1P6/8/8/8/8/8/4K3 w - - 0 1", "b7a8q", 400},         // the king retakes the queen
        {"rk6/1P6/8/8/8/8/8/R3K3 w - - 0 1", "b7a8q", 1375},       // it may not retake
    };
    for (const auto& [fen, move, expected] : cases) {
        auto board = boardFrom(fen);
        EXPECT_EQ(board->see(findMove(*board, move)), expected) << fen;
    }
}

// In the main search: the hash move first, then the mate killer, winning captures and queen
// promotions, the two killers of the ply, even captures, the killers of two plies back, quiet
// moves by history (under-promotions among them), and losing captures last. The capture
// search keeps winning and even captures and queen promotions, its hash move first; losing
// captures, under-promotions and quiet moves score below zero and are cut off.
TEST(MoveOrdering, OrderOfTheKindsOfMoveInTheMainAndTheCaptureSearch) {
    auto board = boardFrom(START_FEN);
    for (auto [killer, move] : {std::pair{&board->mateKiller[2], "b1c3"},
                                {&board->killerMove1[2], "e2e4"},
                                {&board->killerMove2[2], "d2d4"},
                                {&board->killerMove1[0], "c2c4"},
                                {&board->killerMove2[0], "f2f4"}})
        *killer = findMove(*board, move);
    board->historyTable[WHITE][8][16] = 77; // a2a3
    auto quiet                        = [&](const char* move) { return scoreOf(*board, move); };
    // clang-format off
    const std::vector<std::vector<int>> bands = {
        {scoreOf(*board, "g1f3", false, true)}, {quiet("b1c3")},
        {scoreOf(WINNING, "e4d5"), scoreOf(PROMOTE, "e7e8q")}, {quiet("e2e4")}, {quiet("d2d4")},
        {scoreOf(EVEN, "c3d5")}, {quiet("c2c4")}, {quiet("f2f4")}, {quiet("a2a3")},
        {quiet("h2h3"), scoreOf(PROMOTE, "e7e8n")}, {scoreOf(LOSING, "d1d5")},
    };
    // clang-format on
    for (std::size_t i = 1; i < bands.size(); ++i)
        EXPECT_GT(*std::min_element(bands[i - 1].begin(), bands[i - 1].end()),
                  *std::max_element(bands[i].begin(), bands[i].end()))
            << "band " << i;
    EXPECT_GT(scoreOf(WINNING, "e4d5", true, true), scoreOf(WINNING, "e4d5", true));
    EXPECT_GT(scoreOf(WINNING, "e4d5", true), scoreOf(EVEN, "c3d5", true));
    EXPECT_GE(std::min(scoreOf(EVEN, "c3d5", true), scoreOf(PROMOTE, "e7e8q", true)), 0);
    EXPECT_LT(std::max({scoreOf(LOSING, "d1d5", true, true), scoreOf(PROMOTE, "e7e8r", true),
                        scoreOf(START_FEN, "g1f3", true, true)}),
              0);
}

// The toolkit's pin test, which looks outward from the piece, against the lone-blocker scan
// that perft's pins come from, which looks inward from the king's sliders.
TEST(Toolkit, PinTestAgreesWithTheSlidersOnTheKingsLines) {
    std::vector<PerftCase> suite        = loadPerftSuite("tricky.perft");
    const std::vector<PerftCase> random = loadPerftSuite("random.perft");
    for (std::size_t i = 0; i < random.size(); i += 20)
        suite.push_back(random[i]);
    int pins = 0;
    for (const PerftCase& c : suite) {
        auto board = boardFrom(c.fen);
        for (Color us : {WHITE, BLACK}) {
            const Square king       = board->kingSquare[us];
            const Bitboard blockers = loneBlockers(*board, king, opponent(us), us);
            for (Bitboard own = board->bbColorPiece[us] & ~bit(king); own;) {
                const Square s    = popLowest(own);
                const bool pinned = blockers & bit(s);
                EXPECT_EQ(board->isPinned(s, us), pinned) << c.fen << " square " << s;
                pins += pinned;
            }
        }
    }
    EXPECT_GT(pins, 50) << "the positions hold pins to test";
}

// Distinct scores make the sorted slice unique; the entries around it stay where they are.
TEST(Toolkit, SortMovesOrdersTheSliceByDescendingScore) {
    MoveEntry list[40], expected[40];
    for (int i = 0; i < 40; ++i)
        list[i] = expected[i] = {Move(i + 1), i * 6 % 41 - 20};
    ChessBoard::sortMoves(list, 5, 30);
    std::sort(expected + 5, expected + 35, [](auto& a, auto& b) { return a.score > b.score; });
    for (int i = 0; i < 40; ++i)
        EXPECT_TRUE(list[i].move == expected[i].move && list[i].score == expected[i].score) << i;
}
