// The command-line modes, run as a user runs them: output formats and exit status.
#include "test_process.h"
#include "test_support.h"

#include <gtest/gtest.h>
#include <sstream>

namespace {

std::string pellix(const std::string& arguments) {
    return std::string(PELLIX_BINARY) + " " + arguments;
}

const char* const PERFT_HEADER =
    "depth |        nodes |     captures |          e.p |        check |         mate |"
    "    promotion |       castle \n";

} // namespace

TEST(CommandLine, PerftTableFromTheStart) {
    const ProcessResult r = runProcess(pellix("-perft 5"));
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.output, std::string(PERFT_HEADER) +
                            " 1.           20            0            0            0            0  "
                            "          0            0\n"
                            " 2.          400            0            0            0            0  "
                            "          0            0\n"
                            " 3.         8902           34            0           12            0  "
                            "          0            0\n"
                            " 4.       197281         1576            0          469            8  "
                            "          0            0\n"
                            " 5.      4865609        82719          258        27351          347  "
                            "          0            0\n");
}

TEST(CommandLine, PerftTableFromAFen) {
    const ProcessResult r =
        runProcess(pellix(std::string("-perft 4 -fen \"") + KIWIPETE_FEN + "\""));
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.output.find(" 4.      4085603       757163         1929        25523           43  "
                            "      15172       128013\n"),
              std::string::npos)
        << r.output;
}

TEST(CommandLine, DivideListsRootMoves) {
    const ProcessResult r = runProcess(pellix("-divide 2"));
    EXPECT_EQ(r.status, 1);
    std::istringstream lines(r.output);
    std::string line;
    int rows            = 0;
    std::uint64_t total = 0;
    while (std::getline(lines, line)) {
        ASSERT_EQ(line.size(), 27u) << line;
        EXPECT_EQ(line.substr(12, 3), " : ");
        total += std::stoull(line.substr(15));
        ++rows;
    }
    EXPECT_EQ(rows, 20);
    EXPECT_EQ(total, 8902u);
    EXPECT_EQ(r.output.substr(0, 27), "      Nb1-a3 :          400");
}

TEST(CommandLine, BadFenAndFallThrough) {
    ProcessResult r = runProcess(pellix("-perft 3 -fen \"8/8/8 w - - 0 1\""));
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.output, "Bad FEN string !\n");
    r = runProcess(pellix("-divide 3 -fen junk"));
    EXPECT_EQ(r.status, 0);

    // Wrong shapes start the interactive engine, which greets first.
    for (const char* arguments :
         {"", "-perft", "-perft 3 -fen", "-perft 3 -xfen x", "-divide 2 3"}) {
        r = runProcess(pellix(arguments), "quit\n");
        EXPECT_EQ(r.output.rfind("Pellix 1.1b by Anselm KORVEL\n", 0), 0u) << arguments;
        EXPECT_EQ(r.status, 1) << arguments;
    }
    r = runProcess(pellix("-perft 0"));
    EXPECT_EQ(r.output, PERFT_HEADER);
}
