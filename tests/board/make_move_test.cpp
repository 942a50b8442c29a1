// Make and unmake: every field restored and the incremental key equal to a key computed from
// scratch along random games, the game record taken back to the start, the side effects of
// the special moves and of captures and pawn moves on the fifty-move counter, and the keys of
// two known positions.
#include "test_support.h"

#include <gtest/gtest.h>
#include <random>
#include <tuple>
#include <utility>

namespace {

// Plays random games from a position, making and unmaking every pseudo-legal move and a null
// move (which passes the turn and forgets the en-passant file) on the way, then takes each
// game back to its first position.
void walkRandomGames(const std::string& fen, std::mt19937& random, int games, int plies) {
    auto board = boardFrom(fen);
    for (int game = 0; game < games; ++game) {
        for (int ply = 0; ply < plies; ++ply) {
            MoveEntry list[MAX_GENERATED];
            const int count = board->generatePseudoLegalMoves(list);
            for (int i = 0; i < count; ++i) {
                const Position before = *board;
                board->makeMove(list[i].move);
                ASSERT_EQ(board->hashKey, board->computeKey()) << fen;
                ASSERT_TRUE(board->checkConsistency().empty()) << fen;
                board->unmakeMove(list[i].move);
                ASSERT_TRUE(samePosition(*board, before)) << fen;
            }
            const Position before = *board;
            board->makeNullMove();
            ASSERT_TRUE(board->hashKey == board->computeKey() && board->epFile == 0) << fen;
            board->unmakeNullMove();
            ASSERT_TRUE(samePosition(*board, before)) << fen;
            const std::vector<Move> legal = legalMoves(*board);
            if (legal.empty())
                break;
            ASSERT_EQ(board->playGameMove(legal[random() % legal.size()]), 1);
        }
        for (int n = board->gameMoveCount; n > 0; --n)
            ASSERT_EQ(board->takeBackGameMove(), 1) << fen;
        ASSERT_TRUE(samePosition(*board, *boardFrom(fen))) << fen;
        ASSERT_EQ(board->takenCount[WHITE] + board->takenCount[BLACK], 0) << fen;
    }
}

} // namespace

TEST(MakeUnmake, RandomGamesKeepTheKeyAndRestoreEveryField) {
    std::mt19937 random(3);
    walkRandomGames(START_FEN, random, 30, 120);
    for (const PerftCase& c : loadPerftSuite("tricky.perft"))
        walkRandomGames(c.fen, random, 5, 60);
    const std::vector<PerftCase> randomSuite = loadPerftSuite("random.perft");
    for (std::size_t i = 0; i < randomSuite.size(); i += 97)
        walkRandomGames(randomSuite[i].fen, random, 1, 40);
}

// A king move clears both of its side's rights, castling included; taking a rook on its
// corner takes the right of its owner (Black has none for a8 here); the key holds the file of
// a double step whether or not a pawn can take; a capturing promotion moves the phase. (The
// material totals are checked along the random games.)
TEST(MakeUnmake, SpecialMovesSetRightsFileAndPhase) {
    const char* const rooks = "r3k2r/8/8/8/8/8/8/R3K2R w KQk - 0 1";
    const std::tuple<const char*, Move, int, int, int> cases[] = {
        {rooks, WHITE_SHORT_CASTLE, 4, 0, 8},
        {rooks, makeMoveWord(0, 56, ROOK, ROOK), 1 | 4, 0, 6},
        {rooks, makeMoveWord(7, 63, ROOK, ROOK), 2, 0, 6},
        {START_FEN, makeMoveWord(12, 28, PAWN) | MOVE_DOUBLE, 15, 5, 24},
        {"1n2k3/P7/8/8/8/8/8/4K3 w - - 0 1", makeMoveWord(48, 57, PAWN, KNIGHT, QUEEN), 0, 0, 4},
    };
    for (const auto& [fen, move, rights, epFile, phase] : cases) {
        auto board = boardFrom(fen);
        ASSERT_EQ(board->makeMove(move), 1) << fen;
        EXPECT_EQ(board->castleRights, rights) << fen;
        EXPECT_EQ(board->epFile, epFile) << fen;
        EXPECT_EQ(board->phase, phase) << fen;
    }
}

// The fifty-move counter starts again after a capture (by a piece or en passant)
// and after a pawn move, counts one up after any other move, and unmake puts it back.
TEST(MakeUnmake, FiftyMoveCounterStartsAgainOnCapturesAndPawnMoves) {
    const char* const fen              = "4k3/8/8/3pP3/8/2n5/8/RN2K3 w - d6 17 40";
    const std::pair<Move, int> cases[] = {
        {makeMoveWord(1, 16, KNIGHT), 18},               // Nb1-a3
        {makeMoveWord(4, 13, KING), 18},                 // Ke1-f2
        {makeMoveWord(1, 18, KNIGHT, KNIGHT), 0},        // Nb1xc3
        {makeMoveWord(36, 44, PAWN), 0},                 // e5-e6
        {makeMoveWord(36, 43, PAWN, PAWN) | MOVE_EP, 0}, // e5xd6 en passant
    };
    auto board = boardFrom(fen);
    for (const auto& [move, counter] : cases) {
        ASSERT_EQ(board->makeMove(move), 1) << move;
        EXPECT_EQ(board->fiftyCounter, counter) << move;
        board->unmakeMove(move);
        EXPECT_EQ(board->fiftyCounter, 17) << move;
    }
}

// Written down once: every book file is keyed by these keys, so a change to the generator,
// its seed, the order of the draws or the layout shows here. The second position has Black
// to move, every castling right, an en-passant file, and the white bishop and knight whose
// keys are drawn a second time.
TEST(Zobrist, KnownPositionsHaveTheirKnownKeys) {
    for (const auto& [fen, key] :
         {std::pair{START_FEN, 0xbd29f4e08de3216aull},
          {"r3k2r/8/8/B7/3Pp3/1N6/8/R3K2R b KQkq d3 0 1", 0x7e17c8ab4e706ba4ull}}) {
        const std::uint64_t made = boardFrom(fen)->hashKey;
        EXPECT_EQ(made, key) << fen << " 0x" << std::hex << made;
    }
}
