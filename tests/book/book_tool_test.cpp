// pellix-book run as a user runs it: what it prints, what it writes and its exit status.
#include "test_process.h"

#include <gtest/gtest.h>

namespace {

// Runs the tool in a scratch directory where `pgn` is the file g.pgn; the exit status of the
// last command is printed as "status N".
ProcessResult bookTool(const std::string& pgn, const std::string& commands) {
    const std::string tool = PELLIX_BOOK_BINARY;
    std::string script     = "( cat > g.pgn";
    std::size_t start      = 0;
    // Every line of `commands` is one run of the tool, with its arguments.
    while (start < commands.size()) {
        std::size_t end = commands.find('\n', start);
        if (end == std::string::npos)
            end = commands.size();
        script += "; " + tool + " " + commands.substr(start, end - start) + " 2>&1";
        script += "; echo status $?";
        start = end + 1;
    }
    return runProcess(script + "; ls *.bin *.pgn 2>/dev/null )", pgn);
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

} // namespace

TEST(BookTool, BuildsABookAndShowsWhatItHolds) {
    const ProcessResult r = bookTool("1. e4 e5 2. Nf3 1-0\n"
                                     "1. e4 e5 2. Ke3 0-1\n"
                                     "1. d4 1/2-1/2\n",
                                     "build g.pgn b.bin\n"
                                     "stats b.bin\n"
                                     "show b.bin 1. e4\n"
                                     "show b.bin e2e4 e7e5\n"
                                     "show b.bin rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w "
                                     "KQkq e6 0 2");
    EXPECT_EQ(r.output, "game 2 skipped: no such move: ply 3 \"Ke3\"\n"
                        "games 3, positions 3, moves 4, skipped 1 (no such move 1)\n"
                        "wrote b.bin: 3 positions, 4 moves\n"
                        "status 0\n"
                        "b.bin: 3 nodes, 4 moves\n"
                        "status 0\n"
                        "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq e3 0 1\n"
                        "OpeningBook : found 1 moves :\n"
                        "e7-e5 : # 1, white 100 %, black 0 %\n"
                        "the engine's lookup does not reach this position: it is at an end of "
                        "the book\n"
                        "status 0\n"
                        "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq e6 0 2\n"
                        "OpeningBook : found 1 moves :\n"
                        "Ng1-f3 : # 1, white 100 %, black 0 %\n"
                        "the engine's lookup does not reach this position: it is at an end of "
                        "the book\n"
                        "status 0\n"
                        "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq e6 0 1\n"
                        "OpeningBook : found 1 moves :\n"
                        "Ng1-f3 : # 1, white 100 %, black 0 %\n"
                        "the engine's lookup does not reach this position: it is at an end of "
                        "the book\n"
                        "status 0\n"
                        "b.bin\ng.pgn\n");
}

TEST(BookTool, FailsOnlyWhenNoBookCanBeWritten) {
    // Nothing usable: no book is written.
    ProcessResult r = bookTool("1. e4 e5 2. Ke3 0-1\n", "build g.pgn b.bin");
    EXPECT_TRUE(contains(r.output, "game 1 skipped")) << r.output;
    EXPECT_TRUE(contains(r.output, "status 1\ng.pgn\n")) << r.output;

    r = bookTool("1. e4 *\n", "build missing.pgn b.bin\n"
                              "build . b.bin\n"
                              "build g.pgn no-such-dir/b.bin\n"
                              "stats missing.bin\n"
                              "show g.pgn\n"
                              "show\n"
                              "build g.pgn b.bin --plies 0\n"
                              "build g.pgn b.bin --depth 3\n"
                              "frobnicate");
    EXPECT_TRUE(contains(r.output, "cannot read missing.pgn\nstatus 1\n")) << r.output;
    EXPECT_TRUE(contains(r.output, "cannot read .\nstatus 1\n")) << r.output;
    EXPECT_TRUE(contains(r.output, "cannot write no-such-dir/b.bin\nstatus 1\n")) << r.output;
    EXPECT_TRUE(contains(r.output, "missing.bin is not a readable book\nstatus 1\n")) << r.output;
    EXPECT_TRUE(contains(r.output, "g.pgn is not a readable book\nstatus 1\n")) << r.output;
    EXPECT_TRUE(contains(r.output, "status 2\nusage")) << r.output;
    EXPECT_TRUE(contains(r.output, "status 2\ng.pgn\n")) << r.output;
}
