// The engine started with a book, as a GUI starts it: book moves under both protocols with no
// search report, and a search when the book is off or cannot be read.
#include "test_process.h"

#include <gtest/gtest.h>

namespace {

// One line, so that every position of it has exactly one book move.
const char* const LINE = "1. b3 e5 2. Bb2 Nc6 3. e3 d5 4. Bb5 Bd6 5. f4 Qh4+ 6. g3 Qe7 *";

// Makes book.bin from the line in the scratch directory, then runs the engine there.
ProcessResult play(const std::string& input, const std::string& ini) {
    const std::string command = std::string("printf '%s\\n' '") + LINE + "' > g.pgn && " +
                                PELLIX_BOOK_BINARY + " build g.pgn book.bin > /dev/null && " +
                                PELLIX_BINARY;
    return runProcess(command, input, ini);
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

const char* const UCI_GAME = "uci\n"
                             "position startpos\n"
                             "go depth 3\n"
                             "position startpos moves b2b3\n"
                             "go depth 3\n"
                             "quit\n";

} // namespace

TEST(BookPlay, TheEnginePlaysBookMovesWithoutSearching) {
    ProcessResult r = play(UCI_GAME, "[Engine]\nBook=1\nBookFile=book.bin\n");
    if (!contains(r.output, "uciok"))
        GTEST_SKIP() << "this engine build does not speak UCI";
    EXPECT_TRUE(contains(r.output, "bestmove b2b3\n")) << r.output;
    EXPECT_TRUE(contains(r.output, "bestmove e7e5\n")) << r.output;
    EXPECT_FALSE(contains(r.output, "info ")) << r.output;

    // XBoard: the engine moves first, then answers the opponent's book move from the book.
    r = play("xboard\nnew\nsd 3\ngo\ne7e5\nquit\n", "[Engine]\nBook=1\nBookFile=book.bin\n");
    EXPECT_TRUE(contains(r.output, "move b2b3\n")) << r.output;
    EXPECT_TRUE(contains(r.output, "move c1b2\n")) << r.output;
}

TEST(BookPlay, WithoutAUsableBookTheEngineSearches) {
    const char* const inis[] = {
        "[Engine]\nBook=2\nBookFile=book.bin\n",
        "[Engine]\nBook=1\nBookFile=missing.bin\n",
        "[Engine]\nBook=1\nBookFile=g.pgn\n",
    };
    for (const char* ini : inis) {
        const ProcessResult r = play(UCI_GAME, ini);
        if (!contains(r.output, "uciok"))
            GTEST_SKIP() << "this engine build does not speak UCI";
        EXPECT_TRUE(contains(r.output, "info depth 1 ")) << ini << r.output;
        EXPECT_TRUE(contains(r.output, "bestmove ")) << ini << r.output;
    }
}
