// The platform's input test and line reader, seen through the input probe on a pipe: the test
// answers 0 on an empty pipe and 1 once a whole line is in it; the reader gives whole lines
// without their CR LF, drops a line too long for any command, and reports the end of input.
// Against the Windows build this runs under Wine through the relay's anonymous pipe.
#include "engine_process.h"

#include <gtest/gtest.h>

TEST(Input, WholeLinesAndTheEndOfInput) {
    EngineProcess probe("", programCommand("input-probe"));
    EXPECT_EQ(probe.readLine(PROMPT), "available 0");
    probe.send("isready");
    EXPECT_EQ(probe.readLine(PROMPT), "available 1");
    EXPECT_EQ(probe.readLine(PROMPT), "line isready");
    EXPECT_EQ(probe.readLine(PROMPT), "available 0");

    probe.sendRaw("stop\r\n" + std::string(9000, 'x') + "\nquit\n");
    std::vector<std::string> seen;
    EXPECT_TRUE(probe.waitFor("line quit", PROMPT, &seen));
    std::vector<std::string> lines;
    for (const std::string& line : seen)
        if (line.rfind("line ", 0) == 0)
            lines.push_back(line);
    EXPECT_EQ(lines, (std::vector<std::string>{"line stop", "line quit"}));

    // A last line without its line feed still counts; then the end is reported at once.
    probe.sendRaw("ping 2");
    probe.closeInput();
    EXPECT_TRUE(probe.waitFor("line ping 2", PROMPT));
    EXPECT_TRUE(probe.waitFor("end", PROMPT));
    EXPECT_EQ(probe.waitExit(PROMPT), 0);
}
