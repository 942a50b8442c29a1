// Search reports: the line sent after each completed iteration, in the dialect of the
// protocol in use (a UCI "info" line, an XBoard thinking line), or a console row while a
// test suite runs. FrontEnd::printSearchInfo picks the dialect by the protocol in use and
// sends the line; ChessBoardUCI only hands the report to it.
#pragma once

#include "board/chess_board.h"

#include <cstddef>
#include <cstdint>

// Room for the text of the longest line (64 moves of at most 16 characters with their
// blanks) and for a whole report around it.
constexpr std::size_t LINE_TEXT_SIZE   = 64 * 17 + 1;
constexpr std::size_t REPORT_LINE_SIZE = LINE_TEXT_SIZE + 256;

// A mate score as a number of moves, positive for both sides; other scores unchanged.
int mateInMoves(int score);

// The line in coordinates, each move followed by a blank: "e2e4 e7e5 ". A promotion is
// written without its letter, on purpose: that is this engine's report format, and the move
// line, the one an interface plays, carries the letter.
void coordinateLine(const PrincipalVariation& pv, char* out, std::size_t size);
// The line in standard algebraic text, each move followed by a blank. The moves are played
// on the board to write them, and the text stops at a move that is not legal where it
// stands; the board is left as it was.
void algebraicLine(ChessBoard& engine, const PrincipalVariation& pv, char* out, std::size_t size);

// The three dialects, written into out (REPORT_LINE_SIZE bytes). The UCI and XBoard lines
// have no line end (sendCommand adds it); the console row ends with its own.
void formatUciInfo(char* out, int depth, const PrincipalVariation& pv, std::uint64_t nodes,
                   double timeMicros);
void formatXboardThinking(char* out, int depth, const PrincipalVariation& pv, std::uint64_t nodes,
                          double timeMicros);
void formatConsoleRow(ChessBoard& engine, char* out, int depth, const PrincipalVariation& pv,
                      std::uint64_t nodes, double timeMicros);
