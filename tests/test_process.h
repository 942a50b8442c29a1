// Runs the engine's executables for the command-line and transcript tests.
#pragma once

#include <string>

struct ProcessResult {
    std::string output; // standard output
    int status;         // exit status, -1 when the process did not exit normally
};

// Runs `command` through the shell in an empty scratch directory (so no pellix.ini is found
// unless the test writes one there), feeding `input` to its standard input.
ProcessResult runProcess(const std::string& command, const std::string& input = "",
                         const std::string& iniText = "");
