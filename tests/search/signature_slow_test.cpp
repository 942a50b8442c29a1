// The default bench run, in two processes, prints the signature recorded in bench/signature.
// A change of search behaviour records its new signature there.
#include "test_process.h"

#include <fstream>
#include <gtest/gtest.h>

TEST(BenchSignature, TwoProcessesPrintTheRecordedSignature) {
    std::string recorded;
    std::ifstream(PELLIX_SIGNATURE_FILE) >> recorded;
    ASSERT_FALSE(recorded.empty()) << "no signature in " << PELLIX_SIGNATURE_FILE;
    // Depth 0 is the bench's default depth; 0 milliseconds leaves out the reference engines.
    const std::string command = programCommand("pellix-bench") + " search 0 0";
    for (int run = 0; run < 2; ++run) {
        const ProcessResult r = runProcess(command);
        EXPECT_EQ(benchSignature(r.output), recorded) << r.output;
    }
}
