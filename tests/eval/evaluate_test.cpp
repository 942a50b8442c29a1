// The evaluation as a whole: colour symmetry over many positions, the endgame draw, the lazy
// exit, what stays behind in evalInfo, and the term breakdown printed by pellix-bench.
#include "test_process.h"
#include "test_support.h"

#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sstream>

namespace {

std::string mirroredFen(const ChessBoard& board) {
    char fen[128];
    board.toMirroredFen(fen);
    return fen;
}

// Shelter is counted for White's king below square 23 and Black's above 40: a king on a3,
// h3, a6 or h6 has no mirror image on the other side of those bounds.
bool kingOnShelterBound(const ChessBoard& board) {
    if (board.gameStage > 1)
        return false;
    const Bitboard bounds = bit(16) | bit(23) | bit(40) | bit(47);
    return (board.bbPiece[WHITE][KING] | board.bbPiece[BLACK][KING]) & bounds;
}

// Positions from random games, the shared suites and a few odd set-ups the FEN reader lets
// through (pawns on the back ranks, no kings, nine queens).
std::vector<std::string> symmetryPositions() {
    std::vector<std::string> fens = loadEpdFens("wac.epd");
    for (const char* suite : {"tricky.perft", "random.perft"})
        for (const PerftCase& c : loadPerftSuite(suite))
            fens.push_back(c.fen);
    fens.insert(fens.end(), {
                                "P3k2p/8/8/8/8/8/8/p3K2P w - - 0 1",
                                "8/8/3pp3/8/8/3PP3/8/8 w - - 0 1",
                                "QQQQQQQQ/Q7/8/8/8/8/8/k6K b - - 0 1",
                                "4k3/8/8/8/8/8/8/1K1BR3 w - - 0 1",
                            });
    auto board = std::make_unique<SilentBoard>();
    board->initTables(0);
    std::mt19937 random(2024);
    char fen[128];
    for (int game = 0; game < 40; ++game) {
        board->setPosition(START_FEN);
        for (int ply = 0; ply < 120; ++ply) {
            const std::vector<Move> moves = legalMoves(*board);
            if (moves.empty())
                break;
            board->makeMove(moves[random() % moves.size()]);
            board->toFen(fen);
            fens.push_back(fen);
        }
    }
    return fens;
}

int fullEval(ChessBoard& board) {
    return board.evaluate(-INFINITE_SCORE, INFINITE_SCORE, 0);
}

} // namespace

// Every term is computed per colour: the mirrored position must swap the White and Black
// sums of every group and give the side to move the same score. A sign or table error on
// one colour breaks this for most positions.
TEST(Evaluate, MirroredPositionScoresTheSame) {
    auto board  = std::make_unique<SilentBoard>();
    auto mirror = std::make_unique<SilentBoard>();
    board->initTables(0);
    mirror->initTables(0);
    int compared = 0;
    for (const std::string& fen : symmetryPositions()) {
        ASSERT_EQ(board->setPosition(fen.c_str()), 1) << fen;
        const std::string flipped = mirroredFen(*board);
        ASSERT_EQ(mirror->setPosition(flipped.c_str()), 1) << flipped;
        if (kingOnShelterBound(*board) || kingOnShelterBound(*mirror))
            continue;
        EvalTerms terms, mirroredTerms;
        const int score = board->evaluateTerms(terms);
        ASSERT_EQ(mirror->evaluateTerms(mirroredTerms), score) << fen << " / " << flipped;
        for (int g = 0; g < GROUP_COUNT; ++g) {
            ASSERT_EQ(terms.sum[g][WHITE], mirroredTerms.sum[g][BLACK])
                << evalGroupNames[g] << " in " << fen;
            ASSERT_EQ(terms.sum[g][BLACK], mirroredTerms.sum[g][WHITE])
                << evalGroupNames[g] << " in " << fen;
        }
        ASSERT_EQ(fullEval(*board), score) << fen;
        ++compared;
    }
    EXPECT_GT(compared, 5000);
}

TEST(Evaluate, SumsTheGroupsWithSafeMobilityTwice) {
    // Endgame tables. White: knight 325, knight on a1 -32, king on e1 0, mobility 2 (b3, c2),
    // safe mobility 1 (c4 covers b3). Black: pawn 100, passed on its fifth rank 100 but
    // isolated -20, king on e8 0. White 325 - 32 + 2 + 2 * 1 = 297 against 180, Black to move.
    auto board = boardFrom("4k3/8/8/8/2p5/8/8/N3K3 b - - 0 1");
    EXPECT_EQ(fullEval(*board), -117);
}

TEST(Evaluate, ShelterBoundsAreNotMirrorImages) {
    // White's king on h3 is past its bound, Black's on h6 is inside it: with both h-pawns
    // gone only Black pays for the bare file (30). Each king also has one square of its ring
    // attacked by the enemy knight on f3 or f6 (10).
    auto board = boardFrom("r2q1b1r/pppbppp1/2n2n1k/8/8/2N2N1K/PPPBPPP1/R2Q1B1R w - - 0 1");
    EvalTerms terms;
    board->evaluateTerms(terms);
    EXPECT_EQ(terms.sum[GROUP_SHELTER][WHITE], -10);
    EXPECT_EQ(terms.sum[GROUP_SHELTER][BLACK], -40);
}

TEST(Evaluate, EndgameDrawForTheSideThatCannotWin) {
    // King and bishop against king and rook: the bishop side to move scores a draw at once,
    // lazy or not; the rook side is evaluated normally.
    auto board = boardFrom("4k3/8/8/8/8/8/8/1KB1r3 w - - 0 1");
    EXPECT_EQ(fullEval(*board), 0);
    EXPECT_EQ(board->evaluate(-100, 100, 1), 0);
    board = boardFrom("4k3/8/8/8/8/8/8/1KB1r3 b - - 0 1");
    EXPECT_GT(fullEval(*board), 100);
    // Before the endgame the rule does not apply (two queens and a bishop: phase 9).
    board = boardFrom("qq2k3/8/8/8/8/8/8/1KB5 w - - 0 1");
    EXPECT_LT(fullEval(*board), -1500);
}

TEST(Evaluate, LazyExitReturnsMaterialOnly) {
    // White is a rook up; the position has plenty of positional terms besides.
    auto board = boardFrom("r1bqkbn1/pppp1ppp/2n5/4p3/2B1P3/5N2/PPPP1PPP/RNBQK2R w KQq - 0 1");
    const int material   = board->material[WHITE] - board->material[BLACK];
    const int positional = fullEval(*board);
    ASSERT_EQ(material, 500);
    ASSERT_NE(positional, material);
    EXPECT_EQ(board->evaluate(0, 300, 1), material);   // material - 200 >= beta
    EXPECT_EQ(board->evaluate(700, 900, 1), material); // material + 200 <= alpha
    EXPECT_EQ(board->evaluate(0, 301, 1), positional); // inside the margin: full evaluation
    EXPECT_EQ(board->evaluate(0, 300, 0), positional); // only lazy = 1 allows the exit
    EXPECT_EQ(board->evaluate(0, 300, 2), positional);
    board->setPosition("r1bqkbn1/pppp1ppp/2n5/4p3/2B1P3/5N2/PPPP1PPP/RNBQK2R b KQq - 0 1");
    EXPECT_EQ(board->evaluate(-300, 0, 1), -material);
}

TEST(Evaluate, LeavesAttackMapsAndPawnDataBehind) {
    auto board = boardFrom("4k3/8/8/8/8/8/P1P5/1N2K3 w - - 0 1");
    fullEval(*board);
    const EvalInfo& info = board->evalInfo;
    EXPECT_EQ(info.attackMap[WHITE], bit(11) | bit(16) | bit(18)); // knight b1: d2 a3 c3
    EXPECT_EQ(info.attackMap[BLACK], 0u);                          // kings do not count
    EXPECT_EQ(info.pawnAttackMap[WHITE], bit(17) | bit(19));
    EXPECT_EQ(info.pawnRank[WHITE][1], 1); // file a, behind the sentinel
    EXPECT_EQ(info.pawnRank[WHITE][2], NO_WHITE_PAWN);
    EXPECT_EQ(info.pawnRank[WHITE][0], NO_WHITE_PAWN);
    EXPECT_EQ(info.pawnRank[BLACK][1], NO_BLACK_PAWN);
}

TEST(Evaluate, BenchPrintsEachPositionsTerms) {
    const std::string start = START_FEN;
    const ProcessResult r   = runProcess(std::string(PELLIX_BENCH_BINARY) + " eval '" + start +
                                         "' 'not a fen' '4k3/8/8/8/8/8/8/1KB1r3 w - - 0 1'");
    EXPECT_EQ(r.output, "material 4125 4125\n"
                        "placement -66 -66\n"
                        "mobility 4 4\n"
                        "safe-mobility 4 4\n"
                        "tropism 0 0\n"
                        "shelter 0 0\n"
                        "development 0 0\n"
                        "pawns 0 0\n"
                        "total 0\n"
                        "\n"
                        "Bad FEN string !\n"
                        "\n"
                        "material 0 0\n"
                        "placement 0 0\n"
                        "mobility 0 0\n"
                        "safe-mobility 0 0\n"
                        "tropism 0 0\n"
                        "shelter 0 0\n"
                        "development 0 0\n"
                        "pawns 0 0\n"
                        "total 0\n");
}
