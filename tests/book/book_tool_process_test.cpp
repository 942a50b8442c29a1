// pellix-book run as a user runs it: what it prints, what it writes and its exit status.
#include "test_process.h"

#include <gtest/gtest.h>

// In a scratch directory where the games are g.pgn, each run is followed by its exit status
// and the last by the files there. Written to a pipe, the build prints its summary and no
// progress line, however many games.
TEST(BookTool, BuildsABookAndShowsWhatItHolds) {
    std::string pgn = "1. e4 e5 2. Ke3 0-1\n", script = "( cat > g.pgn";
    for (int i = 0; i < 2000; ++i)
        pgn += "1. e4 e5 2. Nf3 1-0\n";
    for (const char* arguments : {"build g.pgn b.bin", "stats b.bin", "show b.bin 1. e4 e7e5"})
        script += "; " + programCommand("pellix-book") + " " + arguments + " 2>&1; echo status $?";
    EXPECT_EQ(runProcess(script + "; ls *.bin *.pgn 2>/dev/null )", pgn).output,
              "game 1 skipped: no such move: ply 3 \"Ke3\"\n"
              "games 2001, positions 3, moves 3, skipped 1 (no such move 1)\n"
              "wrote b.bin: 3 positions, 3 moves\nstatus 0\n"
              "b.bin: 3 nodes, 3 moves\nstatus 0\n"
              "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq e6 0 2\n"
              "polyglot key 0844931a6ef4b9a0\n"
              "OpeningBook : found 1 moves :\nNg1-f3 : # 2000, white 100 %, black 0 %\n"
              "counts add up to 2000; the draw uses 31-bit random numbers on every system\n"
              "the engine's lookup does not reach this position: it is at an end of the book\n"
              "status 0\nb.bin\ng.pgn\n");
}
