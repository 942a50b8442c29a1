// The command reader and the engine's creation, seen from outside: the first line chooses
// the protocol, and pellix.ini is read each time "uci" or "xboard" creates the engine.
#include "engine_process.h"
#include "test_process.h"

#include <fstream>
#include <gtest/gtest.h>

namespace {

constexpr Millis PROMPT{2000};

// The engine's address space in megabytes: the transposition table is its largest part.
long virtualMegabytes(const EngineProcess& engine) {
    std::ifstream status("/proc/" + std::to_string(engine.processId()) + "/status");
    std::string key;
    long kilobytes = 0;
    while (status >> key)
        if (key == "VmSize:" && status >> kilobytes)
            break;
    return kilobytes / 1024;
}

// The engine's size after "uci" with the given configuration file.
long sizeWithConfig(const std::string& ini) {
    EngineProcess engine(ini);
    engine.send("uci");
    engine.send("isready");
    EXPECT_TRUE(engine.waitFor("readyok", PROMPT)) << ini;
    return virtualMegabytes(engine);
}

} // namespace

TEST(CommandReader, FirstLineChoosesTheProtocol) {
    // Anything but "uci" or "xboard" first ends the program after the banner.
    for (const char* first : {"hello\nuci\n", "isready\n", "uci \n", "XBOARD\n"}) {
        const ProcessResult r = runProcess(programCommand("pellix"), first);
        EXPECT_EQ(r.output, "Pellix 1.1b by Anselm KORVEL\n") << first;
        EXPECT_EQ(r.status, 1) << first;
    }
    // Empty lines do not decide; once XBoard is chosen, "uci" is just an unknown command.
    const ProcessResult r =
        runProcess(programCommand("pellix"), "\n\nxboard\nuci\nping 3\nquit\n", SMALL_ENGINE_INI);
    EXPECT_NE(r.output.find("feature "), std::string::npos);
    EXPECT_NE(r.output.find("\npong 3\n"), std::string::npos) << r.output;
    EXPECT_EQ(r.output.find("uciok"), std::string::npos);
    EXPECT_EQ(r.status, 1);
}

// "Hash" sizes the table; a missing file or key, a book that is not there and a file of junk
// all leave a working engine with the defaults. A second "uci" replaces the engine instead
// of keeping the first one's table too.
TEST(CommandReader, ConfigurationFile) {
    if (testingWindowsBuild())
        GTEST_SKIP() << "the engine's size is read from /proc, where Wine shows the relay";
    const long small = sizeWithConfig("[Engine]\nHash=1\n");
    EXPECT_GT(sizeWithConfig("[Engine]\nHash=256\n") - small, 200);
    const long byDefault = sizeWithConfig("") - small; // 128 MB
    EXPECT_GT(byDefault, 100);
    EXPECT_LT(byDefault, 200);
    EXPECT_LT(sizeWithConfig("[Other]\nHash=256\n") - small, 200);
    sizeWithConfig("[Engine]\nBook=1\nBookFile=/nonexistent/book.bin\n");
    const char junk[] = "[Engine\n\xff\xfe=\n=\nHash\nHash==3\n[[]]\n\0\0";
    sizeWithConfig(std::string(junk, sizeof junk - 1) + std::string(3000, 'x'));

    EngineProcess engine("[Engine]\nHash=256\n");
    long sizes[2];
    for (long& size : sizes) {
        engine.send("uci");
        engine.send("isready");
        ASSERT_TRUE(engine.waitFor("readyok", PROMPT));
        size = virtualMegabytes(engine);
    }
    EXPECT_LT(sizes[1] - sizes[0], 100);
}
