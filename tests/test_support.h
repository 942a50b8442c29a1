// Shared by the tests: where the reference data lives, the perft suites read from it, and
// boards set up from a FEN.
#pragma once

#include "tools/silent_board.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

std::string dataPath(const std::string& name);

// The reference files under tests/data and the number of cases each holds. A loader that
// reads fewer (a missing, truncated or renamed file) fails the test that asked for it, so
// no test passes by looping over nothing.
// Perft suites: "id", "epd" and "perft DEPTH COUNT" lines.

struct PerftCase {
    std::string id;
    std::string fen;                   // with counters, ready for setPosition
    std::vector<std::uint64_t> counts; // counts[d - 1] = leaves at depth d
};
std::vector<PerftCase> loadPerftSuite(const std::string& name);
// The positions of an EPD file, each completed with "0 1" counters.
std::vector<std::string> loadEpdFens(const std::string& name);
// False for the suites' X-FEN positions, whose castling rights belong to rooks off the
// corners or kings off the e-file: Chess960, which the engine does not play.
bool hasStandardCastling(const std::string& fen);

// A board with its tables initialised (no transposition table) and the position set; the
// test fails if the FEN is rejected.
std::unique_ptr<SilentBoard> boardFrom(const std::string& fen);

// Every legal move of the position on the board.
std::vector<Move> legalMoves(ChessBoard& board);

extern const char* const KIWIPETE_FEN;
