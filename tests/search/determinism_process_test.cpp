// Separate processes start from different stacks and heaps: a short bench run in each
// prints the same signature.
#include "test_process.h"

#include <gtest/gtest.h>

namespace {

// The "Nodes: N" line of a bench run's output, or an empty text.
std::string signatureLine(const std::string& output) {
    const std::size_t at = output.rfind("Nodes: ");
    return at == std::string::npos ? "" : output.substr(at, output.find('\n', at) - at);
}

} // namespace

TEST(Determinism, TwoProcessesPrintTheSameSignature) {
    const std::string command = programCommand("pellix-bench") + " search 6 0";
    const ProcessResult first = runProcess(command), second = runProcess(command);
    ASSERT_NE(signatureLine(first.output), "") << first.output;
    EXPECT_EQ(signatureLine(first.output), signatureLine(second.output));
}
