// Separate processes start from different stacks and heaps: a short bench run in each
// prints the same signature.
#include "test_process.h"

#include <gtest/gtest.h>

TEST(Determinism, TwoProcessesPrintTheSameSignature) {
    const std::string command = programCommand("pellix-bench") + " search 6 0";
    const ProcessResult first = runProcess(command), second = runProcess(command);
    ASSERT_NE(benchSignature(first.output), "") << first.output;
    EXPECT_EQ(benchSignature(first.output), benchSignature(second.output));
}
