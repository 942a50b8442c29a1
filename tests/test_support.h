// Shared by the tests: the reference data under tests/data, boards set up from a FEN, and
// the legal moves of a position.
#pragma once

#include "board/silent_board.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

extern const char* const KIWIPETE_FEN;

struct PerftCase {
    std::string id;
    std::string fen;                   // with counters, ready for setPosition
    std::vector<std::uint64_t> counts; // counts[d - 1] = leaves at depth d
};
// A perft suite of "id", "epd" and "perft DEPTH COUNT" lines. The test that loads it fails
// when fewer cases are read than the file holds (a missing, truncated or renamed file), so
// no test passes by looping over nothing.
std::vector<PerftCase> loadPerftSuite(const std::string& name);
// False for the suites' Chess960 positions (rights for a rook off its corner or a king off
// the e-file), which the engine does not play.
bool hasStandardCastling(const std::string& fen);
// Every stride-th standard position of a perft suite against its counts up to maxDepth.
void expectPerftCounts(const std::string& suite, std::size_t maxDepth, std::size_t stride);

// The whole of a file under tests/data; the test fails when it is missing or empty.
std::string readDataFile(const std::string& name);

// A board with its tables (no transposition table) and the position set; the test fails if
// the FEN is rejected.
std::unique_ptr<SilentBoard> boardFrom(const std::string& fen);
std::vector<Move> legalMoves(ChessBoard& board);
// The legal move in coordinates ("e7e8n"; without a letter, a queen promotion or no
// promotion), or NO_MOVE and a test failure.
Move findMove(ChessBoard& board, const std::string& coordinates);
