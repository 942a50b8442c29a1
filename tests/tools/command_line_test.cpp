// The command-line modes, run as a user runs them: output formats and exit status.
#include "test_process.h"
#include "test_support.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

std::string pellix(const std::string& arguments) {
    return programCommand("pellix") + " " + arguments;
}

const char* const PERFT_HEADER =
    "depth |        nodes |     captures |          e.p |        check |         mate |"
    "    promotion |       castle \n";

} // namespace

TEST(CommandLine, PerftAndDivideTables) {
    ProcessResult r = runProcess(pellix("-perft 3"));
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.output.starts_with(PERFT_HEADER) &&
                r.output.ends_with(" 3.         8902           34            0           12  "
                                   "          0            0            0\n"))
        << r.output;
    r = runProcess(pellix(std::string("-perft 4 -fen \"") + KIWIPETE_FEN + "\""));
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.output.find(" 4.      4085603       757163         1929        25523           43  "
                            "      15172       128013\n"),
              std::string::npos)
        << r.output;
    EXPECT_EQ(runProcess(pellix("-perft 0")).output, PERFT_HEADER);

    // -divide: a row per root move, in long text, counted one ply deeper than asked.
    r = runProcess(pellix("-divide 2"));
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.output.starts_with("      Nb1-a3 :          400\n")) << r.output;
    std::istringstream lines(r.output);
    std::uint64_t rows = 0, total = 0;
    for (std::string line;
         std::getline(lines, line) && line.size() == 27 && line.substr(12, 3) == " : "; ++rows)
        total += std::stoull(line.substr(15));
    EXPECT_TRUE(rows == 20 && total == 8902) << r.output;
}

// A rejected FEN prints its message and exits with 0; command lines of any other shape start
// the interactive engine, which greets first.
TEST(CommandLine, BadFenAndFallThrough) {
    ProcessResult r = runProcess(pellix("-perft 3 -fen \"8/8/8 w - - 0 1\""));
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.output, "Bad FEN string !\n");
    EXPECT_EQ(runProcess(pellix("-divide 3 -fen junk")).status, 0);
    for (const char* arguments :
         {"", "-perft", "-perft 3 -fen", "-perft 3 -xfen x", "-divide 2 3"}) {
        r = runProcess(pellix(arguments), "quit\n");
        EXPECT_EQ(r.output.rfind("Pellix 1.1b by Anselm KORVEL\n", 0), 0u) << arguments;
        EXPECT_EQ(r.status, 1) << arguments;
    }
}
