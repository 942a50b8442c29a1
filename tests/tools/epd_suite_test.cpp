// The EPD best-move suite: its line reader, and whole runs as a user starts them.
#include "test_process.h"
#include "tools/epd_suite.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace {

// A suite file of its own for one test, removed when the test ends.
struct SuiteFile {
    explicit SuiteFile(const std::string& text) {
        char name[]  = "/tmp/pellix-suite-XXXXXX";
        const int fd = mkstemp(name);
        if (fd >= 0)
            close(fd);
        path = name;
        std::ofstream(path) << text;
    }
    ~SuiteFile() { std::remove(path.c_str()); }
    std::string path;
};

// A small table so that clearing it for every position costs nothing.
const char* const SMALL_HASH = "[Engine]\nHash=2\n";

std::string suiteCommand(const std::string& arguments) {
    return programCommand("pellix") + " -testsuite " + arguments;
}

} // namespace

// A well-formed line splits into its position, its expected moves and its id; a line
// without "bm" is not a suite line. (The fuzzers feed broken lines to the same reader.)
TEST(EpdSuite, SplitsWellFormedLines) {
    EpdLine line;
    ASSERT_TRUE(splitEpdLine(
        "2rr3k/pp3pp1/1nnqbN1p/3pN3/2pP4/2P3Q1/PPB4P/R4RK1 w - - bm Qg6; id \"WAC.001\";\n", line));
    EXPECT_STREQ(line.fen, "2rr3k/pp3pp1/1nnqbN1p/3pN3/2pP4/2P3Q1/PPB4P/R4RK1 w - - ");
    EXPECT_STREQ(line.expected, "Qg6");
    EXPECT_STREQ(line.id, "WAC.001");
    ASSERT_TRUE(splitEpdLine("8/8/8/8/8/8/8/K6k w - - bm Ka2 Kb2; id \"two\";", line));
    EXPECT_STREQ(line.expected, "Ka2 Kb2");
    EXPECT_FALSE(splitEpdLine("8/8/8/8/8/8/8/K6k w - - am Ka2; id \"x\";\n", line));
}

// Two positions, one solved: a block per position with console rows and no move lines, the
// score and the failed id. A line without "bm" is neither counted nor shown.
TEST(EpdSuite, ScoresAWholeRun) {
    SuiteFile suite("6k1/5ppp/8/8/8/8/8/R5K1 w - - bm Ra8#; id \"mate\";\n"
                    "a comment line\n"
                    "6k1/5ppp/8/8/8/8/8/R5K1 w - - bm Kf1; id \"wrong\";\n");
    const ProcessResult r = runProcess(suiteCommand(suite.path + " 0"), "", SMALL_HASH);
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.output.rfind("Pellix version 1.1b\n\nTest suite : " + suite.path + "\n\n", 0), 0u)
        << r.output;
    EXPECT_NE(r.output.find(std::string(79, '-') +
                            "\n6k1/5ppp/8/8/8/8/8/R5K1 w - -  bm Ra8#; id mate;\n\n 1 +M1 "),
              std::string::npos)
        << r.output;
    EXPECT_EQ(r.output.find("bestmove"), std::string::npos);
    EXPECT_EQ(r.output.find("comment"), std::string::npos);
    const std::string ending = "\nScore = 1 / 2\n\nBad results : \n\nwrong\n";
    ASSERT_GE(r.output.size(), ending.size());
    EXPECT_EQ(r.output.substr(r.output.size() - ending.size()), ending) << r.output;
}

// A position the engine cannot load counts as tried and failed; a file that cannot be
// opened gives an empty score and the exit status 0.
TEST(EpdSuite, BadPositionsAndMissingFiles) {
    // The reader takes 255 characters at a time: the tail of an overlong line is a line of
    // its own, here a broken position.
    SuiteFile suite("8/8/8 w - - bm Ka1; id \"bad\";\n" + std::string(300, '8') +
                    " w - - bm Ka1; id \"long\";\n");
    ProcessResult r = runProcess(suiteCommand(suite.path + " 0"), "", SMALL_HASH);
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.output.find("\nScore = 0 / 2\n\nBad results : \n\nbad\nlong\n"), std::string::npos)
        << r.output;

    r = runProcess(suiteCommand("/nonexistent/suite.epd 1"), "", SMALL_HASH);
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.output, "Pellix version 1.1b\n\nTest suite : /nonexistent/suite.epd\n\n"
                        "\nScore = 0 / 0\n\nBad results : \n\n");
}
