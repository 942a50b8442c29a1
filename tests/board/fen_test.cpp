// FEN acceptance and rejection by the engine's own rules, and what an accepted FEN sets.
#include "test_support.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>

TEST(Fen, StartPositionEqualsNewGame) {
    auto fromFen = boardFrom(START_FEN);
    auto fresh   = std::make_unique<SilentBoard>();
    fresh->initTables(0);
    fresh->newGame();
    EXPECT_TRUE(samePosition(*fromFen, *fresh));
    EXPECT_EQ(fresh->hashKey, fresh->computeKey());
    EXPECT_EQ(fresh->material[WHITE], 4075);
    EXPECT_EQ(fresh->phase, 24);
    EXPECT_EQ(fresh->gameStage, 0);
    EXPECT_EQ(fresh->castleRights, 15);
    EXPECT_EQ(fresh->rootMoveCount, 20);
    EXPECT_TRUE(fresh->checkConsistency().empty());
}

TEST(Fen, AcceptsAndRejectsByTheEngineRules) {
    struct Case {
        const char* fen;
        bool accepted;
    };
    const Case cases[] = {
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -", false}, // cut after e.p.
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - ", true},
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0", true},
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR x KQkq - 0 1", false},
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR wKQkq - 0 1", false},
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkx - 0 1", false},
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w qkQK-q - 0 1", true},
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq e 0 1", true},
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq e9 0 1", false},
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq 3 0 1", false},
        {"rnbqkbnr/pppppppp/7/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", false},  // 7 squares
        {"rnbqkbnr/ppppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", false}, // 9 squares
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBN w KQkq - 0 1", false},
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP w KQkq - 0 1", false},
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR/8 w KQkq - 0 1", false},
        {"rnbqkbnr/pppppppp/p7/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", false}, // nine black pawns
        {"rnbqkbnr/pppppppp/8/8/8/P7/PPPPPPPP/RNBQKBNR w KQkq - 0 1", true},  // nine white pawns
        {"4k3/8/8/8/8/8/8/QQQQQQQQ w - - 0 1", true},
        {"4k3/8/8/8/8/8/Q7/QQQQQQQQ w - - 0 1", true},   // nine queens
        {"4k3/8/8/8/8/Q7/Q7/QQQQQQQQ w - - 0 1", false}, // ten
        {"4k2k/8/8/8/8/8/8/4K3 w - - 0 1", false},       // two black kings
        {"4k3/8/8/8/8/8/8/3KK3 w - - 0 1", true},        // two white kings
        {"8/8/8/8/8/8/8/8 w - - 0 1", true},             // no kings at all
        {"P3k3/8/8/8/8/8/8/4K2p b - - 0 1", true},       // pawns on the edges
        {"", false},
        {"rnbqkbnr", false},
        {"4k3/8/8/8/8/8/8/4K3 w - - 0 1 moves e2e4", true},
    };
    for (const Case& c : cases) {
        auto board = std::make_unique<SilentBoard>();
        board->initTables(0);
        EXPECT_EQ(board->setPosition(c.fen), c.accepted ? 1 : 0) << '"' << c.fen << '"';
    }
}

TEST(Fen, FieldsEndUpOnTheBoard) {
    auto board = boardFrom("4k3/8/8/3pP3/8/8/8/4K3 w - d6 12 40");
    EXPECT_EQ(board->fiftyCounter, 12);
    EXPECT_EQ(board->epFile, 4);
    EXPECT_EQ(board->hashKey, board->computeKey());
    board = boardFrom("4k3/8/8/8/8/8/8/4K3 b Kq e 300 1");
    EXPECT_EQ(board->epFile, 5); // a file letter alone is enough
    EXPECT_EQ(board->fiftyCounter, 300 & 255);
    EXPECT_EQ(board->castleRights, 1 | 8); // taken as written, whatever the pieces say
    EXPECT_EQ(board->sideToMove, BLACK);
    board = boardFrom("4k3/8/8/8/8/8/8/4K3 w - - 7x 1"); // a non-digit ends the FEN: clock 0
    EXPECT_EQ(board->fiftyCounter, 0);
    board = boardFrom("4k3/8/8/8/8/8/4r3/4K3 w - - 0 1");
    EXPECT_EQ(board->inCheck, 1);
    EXPECT_EQ(board->rootMoveCount, 5); // evasions: the five king steps, e2 taken included
}

TEST(Fen, RejectionLeavesTheBoardAlone) {
    auto board         = boardFrom(KIWIPETE_FEN);
    const Position was = *board;
    EXPECT_EQ(board->setPosition("r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq"),
              0);
    EXPECT_TRUE(samePosition(*board, was));
}

TEST(Fen, WriterRoundTrips) {
    for (const PerftCase& c : loadPerftSuite("tricky.perft")) {
        auto board = boardFrom(c.fen);
        char text[128];
        board->toFen(text);
        auto again = boardFrom(text);
        EXPECT_TRUE(samePosition(*board, *again)) << c.fen << " wrote " << text;
        // Mirrored twice, the pieces and the side to move come back where they were.
        board->toMirroredFen(text);
        auto mirrored = boardFrom(text);
        mirrored->toMirroredFen(text);
        auto twice = boardFrom(text);
        EXPECT_EQ(0, std::memcmp(twice->pieceArray, board->pieceArray, 64)) << c.fen;
        EXPECT_EQ(twice->bbColorPiece[WHITE], board->bbColorPiece[WHITE]) << c.fen;
        EXPECT_EQ(twice->sideToMove, board->sideToMove) << c.fen;
        EXPECT_EQ(mirrored->material[BLACK], board->material[WHITE]) << c.fen;
    }
}

// Junk, truncations and random mutations of real FENs never crash the reader, and whatever
// it accepts is a consistent position that perft can walk.
TEST(Fen, BadTextNeverCorruptsTheBoard) {
    std::mt19937 random(11);
    const std::string alphabet = "pnbrqkPNBRQK12345678/ wb-KQkqacdefgh09x";
    auto board                 = std::make_unique<SilentBoard>();
    board->initTables(0);
    std::vector<std::string> seeds = {START_FEN, KIWIPETE_FEN};
    for (const PerftCase& c : loadPerftSuite("tricky.perft"))
        seeds.push_back(c.fen);
    for (int trial = 0; trial < 20000; ++trial) {
        std::string text = seeds[random() % seeds.size()];
        switch (trial % 4) {
        case 0:
            text.resize(random() % (text.size() + 1));
            break;
        case 1:
            text[random() % text.size()] = alphabet[random() % alphabet.size()];
            break;
        case 2:
            text.insert(random() % text.size(), 1, alphabet[random() % alphabet.size()]);
            break;
        default:
            text.clear();
            for (int i = int(random() % 80); i > 0; --i)
                text += alphabet[random() % alphabet.size()];
        }
        if (!board->setPosition(text.c_str()))
            continue;
        // A position without a king keeps the default king square; nothing else may differ.
        for (const char* message : board->checkConsistency())
            ASSERT_EQ(std::string(message).rfind("bad king position", 0), 0u)
                << text << ": " << message;
        const Position before = *board;
        board->perft(2, 0);
        ASSERT_TRUE(samePosition(*board, before)) << text;
    }
}
