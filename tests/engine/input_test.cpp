// The input reader on a pipe in place of standard input: whole lines only, never blocking,
// and the end of input reported at once.
#include "platform/input.h"

#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace {

// Puts the read end of a fresh pipe on descriptor 0 for the test's lifetime.
class PipedInput : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(pipe(ends), 0);
        saved = dup(0);
        dup2(ends[0], 0);
        close(ends[0]);
        resetInput();
    }
    void TearDown() override {
        if (writer() >= 0)
            close(writer());
        dup2(saved, 0);
        close(saved);
        resetInput();
    }
    int writer() const { return ends[1]; }
    void write(const std::string& text) {
        ASSERT_EQ(::write(writer(), text.data(), text.size()), ssize_t(text.size()));
    }
    void endInput() {
        close(ends[1]);
        ends[1] = -1;
    }
    std::string line() {
        char buffer[4096];
        return readInputLine(buffer, sizeof buffer) ? buffer : "<none>";
    }

private:
    int ends[2] = {-1, -1};
    int saved   = -1;
};

} // namespace

TEST_F(PipedInput, AnswersOnlyForWholeLines) {
    EXPECT_EQ(inputAvailable(), 0);
    write("isre");
    EXPECT_EQ(inputAvailable(), 0);
    write("ady\r\nstop\n\n");
    EXPECT_EQ(inputAvailable(), 1);
    EXPECT_EQ(line(), "isready");
    EXPECT_EQ(inputAvailable(), 1);
    EXPECT_EQ(line(), "stop");
    EXPECT_EQ(line(), "");
    EXPECT_EQ(inputAvailable(), 0);
}

// A line longer than the command buffer is dropped whole, even when it arrives in pieces.
TEST_F(PipedInput, DropsOverlongLines) {
    write("go " + std::string(3000, '1'));
    EXPECT_EQ(inputAvailable(), 0);
    write(std::string(3000, '2'));
    EXPECT_EQ(inputAvailable(), 0);
    write(std::string(3000, '3') + "\nquit\n");
    EXPECT_EQ(inputAvailable(), 1);
    EXPECT_EQ(line(), "quit");
    write(std::string(4095, 'x') + "\n");
    EXPECT_EQ(line().size(), 4095u);
}

// The end of input: a last line without its line feed still counts, then every test says
// "input" and every read fails at once, without blocking.
TEST_F(PipedInput, EndOfInputIsReportedAtOnce) {
    write("ping 1\nping 2");
    endInput();
    EXPECT_EQ(line(), "ping 1");
    EXPECT_EQ(inputAvailable(), 1);
    EXPECT_EQ(line(), "ping 2");
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(inputAvailable(), 1);
        EXPECT_EQ(line(), "<none>");
    }
}
