// Starting the build's programs for the tests that talk to them: by name, with a scratch
// directory of their own. With PELLIX_TEST_WINDOWS naming a Windows build folder, the same
// tests start that build's .exe files under Wine, each through the relay, so one set of
// tests checks both builds.
#pragma once

#include <string>
#include <utility>
#include <vector>

struct ProcessResult {
    std::string output; // standard output, with Windows line ends made plain
    int status;         // exit status, -1 when the process did not exit normally
};

// The command that starts one of the build's programs: "pellix", "pellix-book",
// "pellix-bench" or "input-probe".
std::string programCommand(const std::string& name);
// True when the programs under test are the Windows build's.
bool testingWindowsBuild();

// Files for the scratch directory: name and contents.
using ScratchFiles = std::vector<std::pair<std::string, std::string>>;
// Runs `command` through the shell in a scratch directory holding `files` and nothing else
// (so no pellix.ini is found unless the test gives one), feeding `input` to its standard
// input.
ProcessResult runProcess(const std::string& command, const std::string& input = "",
                         const ScratchFiles& files = {});
// The node count of a bench run's "Nodes: N" line, or an empty text.
std::string benchSignature(const std::string& output);
