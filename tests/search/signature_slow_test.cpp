// The default bench run, in two processes at once, prints the signature recorded in
// bench/signature. A change of search behaviour records its new signature there.
#include "test_process.h"

#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

namespace {

std::string readAll(std::FILE* pipe) {
    std::string text;
    char buffer[4096];
    std::size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0)
        text.append(buffer, n);
    return text;
}

std::string signatureOf(const std::string& output) {
    const std::size_t at = output.rfind("Nodes: ");
    return at == std::string::npos ? "" : output.substr(at + 7, output.find('\n', at) - at - 7);
}

} // namespace

TEST(BenchSignature, TwoProcessesPrintTheRecordedSignature) {
    std::string recorded;
    std::ifstream(PELLIX_SIGNATURE_FILE) >> recorded;
    ASSERT_FALSE(recorded.empty()) << "no signature in " << PELLIX_SIGNATURE_FILE;
    // Depth 0 is the bench's default depth; 0 milliseconds leaves out the reference engines.
    const std::string command = programCommand("pellix-bench") + " search 0 0";
    std::FILE* first          = popen(command.c_str(), "r");
    std::FILE* second         = popen(command.c_str(), "r");
    ASSERT_TRUE(first && second);
    const std::string a = readAll(first), b = readAll(second);
    pclose(first);
    pclose(second);
    EXPECT_EQ(signatureOf(a), recorded) << a;
    EXPECT_EQ(signatureOf(b), recorded) << b;
}
