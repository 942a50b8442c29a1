// The EPD best-move suite run as a user starts it: a block per position, the score, and what
// becomes of positions and files it cannot use.
#include "test_process.h"

#include <gtest/gtest.h>

namespace {

// The suite run on `suite`, with a small table so that clearing it for every position costs
// nothing.
ProcessResult runSuite(const std::string& suite, const std::string& arguments = "suite.epd 0") {
    return runProcess(programCommand("pellix") + " -testsuite " + arguments, "",
                      {{"suite.epd", suite}, {"pellix.ini", "[Engine]\nHash=2\n"}});
}

} // namespace

// A block per position with console rows and no move lines, the score and the failed ids. A
// line without "bm" is neither counted nor shown; a position the engine cannot load counts as
// tried and failed (the reader takes 255 characters at a time, so the tail of an overlong line
// is a broken line of its own). A file that cannot be opened gives an empty score and the
// exit status 0.
TEST(EpdSuite, ScoresAWholeRunAndSurvivesBadFiles) {
    ProcessResult r = runSuite("6k1/5ppp/8/8/8/8/8/R5K1 w - - bm Ra8#; id \"mate\";\n"
                               "a comment line\n"
                               "6k1/5ppp/8/8/8/8/8/R5K1 w - - bm Kf1; id \"wrong\";\n"
                               "8/8/8 w - - bm Ka1; id \"bad\";\n" +
                               std::string(300, '8') + " w - - bm Ka1; id \"long\";\n");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.output.rfind("Pellix version 1.1b\n\nTest suite : suite.epd\n\n" +
                                 std::string(79, '-') +
                                 "\n6k1/5ppp/8/8/8/8/8/R5K1 w - -  bm Ra8#; id mate;\n\n 1 +M1 ",
                             0),
              0u)
        << r.output;
    EXPECT_EQ(r.output.find("bestmove"), std::string::npos);
    EXPECT_EQ(r.output.find("comment"), std::string::npos);
    EXPECT_TRUE(r.output.ends_with("\nScore = 1 / 4\n\nBad results : \n\nwrong\nbad\nlong\n"))
        << r.output;
    r = runSuite("", "missing.epd 1");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.output, "Pellix version 1.1b\n\nTest suite : missing.epd\n\n"
                        "\nScore = 0 / 0\n\nBad results : \n\n");
}
