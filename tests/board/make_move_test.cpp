// Make and unmake: every field restored, the incremental key equal to a key computed from
// scratch, and the special moves' side effects.
#include "test_support.h"

#include <gtest/gtest.h>
#include <random>

namespace {

// Walks random games from a position, checking after every make and unmake.
void walkRandomGames(const std::string& fen, std::mt19937& random, int games, int plies) {
    auto board = boardFrom(fen);
    for (int game = 0; game < games; ++game) {
        ASSERT_EQ(board->setPosition(fen.c_str()), 1);
        std::vector<Move> played;
        for (int ply = 0; ply < plies; ++ply) {
            MoveEntry list[MAX_GENERATED];
            const int count = board->generateMoves(list, board->sideToMoveInCheck());
            // Every pseudo-legal move, legal or not, is undone exactly.
            for (int i = 0; i < count; ++i) {
                const Position before = *board;
                board->makeMove(list[i].move);
                ASSERT_EQ(board->hashKey, board->computeKey()) << fen;
                ASSERT_TRUE(board->checkConsistency().empty()) << fen;
                board->unmakeMove(list[i].move);
                ASSERT_TRUE(samePosition(*board, before)) << fen;
            }
            const std::vector<Move> legal = legalMoves(*board);
            if (legal.empty())
                break;
            const Move m = legal[random() % legal.size()];
            ASSERT_EQ(board->makeMove(m), 1);
            played.push_back(m);
        }
        for (auto it = played.rbegin(); it != played.rend(); ++it)
            board->unmakeMove(*it);
        board->inCheck = board->sideToMoveInCheck(); // generation wrote the last node's flag
        auto fresh     = boardFrom(fen);
        ASSERT_TRUE(samePosition(*board, *fresh)) << fen;
    }
}

} // namespace

TEST(MakeUnmake, RandomGamesRestoreEveryField) {
    std::mt19937 random(3);
    walkRandomGames(START_FEN, random, 30, 120);
    for (const PerftCase& c : loadPerftSuite("tricky.perft"))
        walkRandomGames(c.fen, random, 5, 60);
    const std::vector<PerftCase> randomSuite = loadPerftSuite("random.perft");
    for (std::size_t i = 0; i < randomSuite.size(); i += 97)
        walkRandomGames(randomSuite[i].fen, random, 1, 40);
}

TEST(MakeUnmake, IllegalMoveIsMadeAndUndoneExactly) {
    auto board         = boardFrom("4k3/8/8/8/8/8/4R3/4K2r w - - 0 1"); // the rook on e2 is pinned
    const Position was = *board;
    const Move m       = makeMoveWord(12, 11, ROOK);
    EXPECT_EQ(board->makeMove(m), 0);
    EXPECT_EQ(board->sideToMove, BLACK);
    EXPECT_EQ(board->pieceArray[11], ROOK);
    board->unmakeMove(m);
    EXPECT_TRUE(samePosition(*board, was));
}

TEST(MakeUnmake, CastlingRightsLeaveWithKingsAndRooks) {
    auto board = boardFrom("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1");
    // A king move clears both of the mover's rights, castling included.
    board->makeMove(WHITE_SHORT_CASTLE);
    EXPECT_EQ(board->castleRights, 4 | 8);
    EXPECT_EQ(board->pieceArray[5], ROOK);
    EXPECT_EQ(board->pieceArray[7], EMPTY);
    EXPECT_EQ(board->hashKey, board->computeKey());
    board->unmakeMove(WHITE_SHORT_CASTLE);

    // Taking a rook on its corner takes the right away; the key changes only if it was set.
    board             = boardFrom("r3k2r/8/8/8/8/8/8/R3K2R w KQk - 0 1");
    const Move takeA8 = makeMoveWord(0, 56, ROOK, ROOK);
    board->makeMove(takeA8);
    EXPECT_EQ(board->castleRights, 1 | 4); // White's a1 right left with the rook; Black had no q
    EXPECT_EQ(board->hashKey, board->computeKey());
    board->unmakeMove(takeA8);
    const Move takeH8 = makeMoveWord(7, 63, ROOK, ROOK);
    board->makeMove(takeH8);
    EXPECT_EQ(board->castleRights, 2);
    EXPECT_EQ(board->hashKey, board->computeKey());
}

TEST(MakeUnmake, DoubleStepKeepsTheFileInTheKey) {
    auto board   = boardFrom(START_FEN);
    const Move m = makeMoveWord(12, 28, PAWN) | MOVE_DOUBLE;
    board->makeMove(m);
    EXPECT_EQ(board->epFile, 5);
    EXPECT_EQ(board->hashKey, board->computeKey()); // no black pawn can take, the key has it
    board->unmakeMove(m);
}

TEST(MakeUnmake, PromotionWithCaptureUpdatesEveryTotal) {
    auto board   = boardFrom("1n2k3/P7/8/8/8/8/8/4K3 w - - 0 1");
    const Move m = makeMoveWord(48, 57, PAWN, KNIGHT, QUEEN);
    board->makeMove(m);
    EXPECT_EQ(board->material[WHITE], 975);
    EXPECT_EQ(board->material[BLACK], 0);
    EXPECT_EQ(board->pieceCount[WHITE][PAWN], 0);
    EXPECT_EQ(board->pieceCount[WHITE][QUEEN], 1);
    EXPECT_EQ(board->pieceCount[BLACK][KNIGHT], 0);
    EXPECT_EQ(board->phase, 4);
    EXPECT_EQ(board->fiftyCounter, 0);
    EXPECT_TRUE(board->checkConsistency().empty());
}

TEST(MakeUnmake, NullMoveRestoresKeyAndEnPassant) {
    auto board         = boardFrom("4k3/8/8/3pP3/8/8/8/4K3 w - d6 3 1");
    const Position was = *board;
    board->makeNullMove();
    EXPECT_EQ(board->epFile, 0);
    EXPECT_EQ(board->sideToMove, BLACK);
    EXPECT_EQ(board->hashKey, board->computeKey());
    EXPECT_EQ(board->fiftyCounter, 4);
    board->unmakeNullMove();
    EXPECT_TRUE(samePosition(*board, was));
}

TEST(GameRecord, PlayedMovesCanBeTakenBack) {
    auto board = boardFrom(START_FEN);
    EXPECT_EQ(board->playCoordinateMove("e2e4"), 1);
    EXPECT_EQ(board->playCoordinateMove("d7d5"), 1);
    EXPECT_EQ(board->playCoordinateMove("e4d5"), 1);
    EXPECT_EQ(board->gameMoveCount, 3);
    EXPECT_EQ(board->repetitionTop, 4);
    EXPECT_TRUE(board->repetitionStack[3].irreversible);
    EXPECT_EQ(board->takenCount[BLACK], 1);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(board->takeBackGameMove(), 1);
    EXPECT_EQ(board->takeBackGameMove(), 0);
    auto fresh = boardFrom(START_FEN);
    EXPECT_TRUE(samePosition(*board, *fresh));
    EXPECT_EQ(board->takenCount[BLACK], 0);
}
