// pellix-book run as a user runs it: what it prints, what it writes and its exit status.
#include "test_process.h"

#include <gtest/gtest.h>

namespace {

// Runs the tool in a scratch directory where `pgn` is the file g.pgn, once for each line of
// `commands`, each run followed by "status N"; then lists the files there.
std::string bookTool(const std::string& pgn, const std::string& commands) {
    std::string script = "( cat > g.pgn";
    for (std::size_t start = 0, end; start < commands.size(); start = end + 1) {
        end = std::min(commands.find('\n', start), commands.size());
        script += "; " + programCommand("pellix-book") + " " + commands.substr(start, end - start) +
                  " 2>&1; echo status $?";
    }
    return runProcess(script + "; ls *.bin *.pgn 2>/dev/null )", pgn).output;
}

} // namespace

// Written to a pipe, the build prints its summary and no progress line, however many games.
TEST(BookTool, BuildsABookAndShowsWhatItHolds) {
    std::string pgn = "1. e4 e5 2. Ke3 0-1\n";
    for (int i = 0; i < 2000; ++i)
        pgn += "1. e4 e5 2. Nf3 1-0\n";
    EXPECT_EQ(bookTool(pgn, "build g.pgn b.bin\nstats b.bin\nshow b.bin 1. e4 e7e5"),
              "game 1 skipped: no such move: ply 3 \"Ke3\"\n"
              "games 2001, positions 3, moves 3, skipped 1 (no such move 1)\n"
              "wrote b.bin: 3 positions, 3 moves\nstatus 0\n"
              "b.bin: 3 nodes, 3 moves\nstatus 0\n"
              "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq e6 0 2\n"
              "OpeningBook : found 1 moves :\nNg1-f3 : # 2000, white 100 %, black 0 %\n"
              "the engine's lookup does not reach this position: it is at an end of the book\n"
              "status 0\nb.bin\ng.pgn\n");
}

TEST(BookTool, FailsOnlyWhenNoBookCanBeWritten) {
    EXPECT_EQ(bookTool("1. Ke2 *\n", "build g.pgn b.bin"),
              "game 1 skipped: no such move: ply 1 \"Ke2\"\n"
              "games 1, positions 0, moves 0, skipped 1 (no such move 1)\n"
              "pellix-book: no book written: no game of g.pgn gave a move\nstatus 1\ng.pgn\n");
    const std::string out = bookTool("1. e4 *\n", "build missing.pgn b.bin\nbuild . b.bin\n"
                                                  "build g.pgn no-such-dir/b.bin\nshow g.pgn\n"
                                                  "build g.pgn b.bin --plies 0\nfrobnicate");
    for (const char* expected :
         {"cannot read missing.pgn\nstatus 1\n", "cannot read .\nstatus 1\n",
          "cannot write no-such-dir/b.bin\nstatus 1\n", "g.pgn is not a readable book\nstatus 1\n",
          "status 2\nusage", "status 2\ng.pgn\n"})
        EXPECT_NE(out.find(expected), std::string::npos) << expected << " in " << out;
}
