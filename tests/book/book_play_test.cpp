// The engine started with a book, as a GUI starts it: book moves with no search report, and
// a search when the book is off or cannot be read.
#include "test_process.h"

#include <gtest/gtest.h>

namespace {

// Makes book.bin from one line, then runs the engine beside it. The line is long enough that
// the position asked is not at an end of the book, which the lookup never reaches.
std::string play(const std::string& ini) {
    const std::string line = "1. b3 e5 2. Bb2 Nc6 3. e3 d5 4. Bb5 Bd6 5. f4 Qh4+ 6. g3 Qe7 *";
    return runProcess("echo '" + line + "' > g.pgn && " + PELLIX_BOOK_BINARY +
                          " build g.pgn book.bin > /dev/null && " + PELLIX_BINARY,
                      "uci\nposition startpos moves b2b3\ngo depth 3\nquit\n", ini)
        .output;
}

} // namespace

TEST(BookPlay, TheEnginePlaysFromTheBookOnlyWhenItIsOnAndReadable) {
    const std::string out = play("[Engine]\nBook=1\nBookFile=book.bin\n");
    EXPECT_NE(out.find("bestmove e7e5\n"), std::string::npos) << out;
    EXPECT_EQ(out.find("info "), std::string::npos) << out;
    for (const char* ini : {"[Engine]\nBook=2\nBookFile=book.bin\n", "[Engine]\nBook=1\n"})
        EXPECT_NE(play(ini).find("info depth 1 "), std::string::npos) << ini;
}
