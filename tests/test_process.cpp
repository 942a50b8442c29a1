#include "test_process.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const char* windowsBuild() {
    const char* folder = std::getenv("PELLIX_TEST_WINDOWS");
    return folder && *folder ? folder : nullptr;
}

} // namespace

bool testingWindowsBuild() {
    return windowsBuild() != nullptr;
}

// PELLIX_TEST_PROGRAMS names another build's folder (arm64), PELLIX_TEST_RUNNER the command
// that runs its programs here (qemu-aarch64, or qemu-x86_64 with an old processor's model).
std::string programCommand(const std::string& name) {
    if (const char* folder = windowsBuild())
        return std::string("env WINEDEBUG=-all wine ") + folder + "/relay.exe " + folder + "/" +
               name + ".exe";
    const char* runner = std::getenv("PELLIX_TEST_RUNNER");
    const char* folder = std::getenv("PELLIX_TEST_PROGRAMS");
    const std::string program =
        std::string(folder && *folder ? folder : PELLIX_PROGRAM_DIR) + "/" + name;
    return runner && *runner ? std::string(runner) + " " + program : program;
}

std::string benchSignature(const std::string& output) {
    const std::size_t at = output.rfind("Nodes: ");
    return at == std::string::npos ? "" : output.substr(at + 7, output.find('\n', at) - at - 7);
}

ProcessResult runProcess(const std::string& command, const std::string& input,
                         const ScratchFiles& files) {
    char dir[] = "/tmp/pellix-test-XXXXXX";
    if (!mkdtemp(dir))
        return {"", -1};
    const std::string scratch = dir;
    for (const auto& [name, text] : files)
        std::ofstream(scratch + "/" + name, std::ios::binary) << text;
    std::ofstream(scratch + "/input.txt") << input;
    const std::string full = "cd " + scratch + " && " + command + " < input.txt";
    ProcessResult result{"", -1};
    if (std::FILE* pipe = popen(full.c_str(), "r")) {
        char buffer[4096];
        std::size_t n;
        while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0)
            result.output.append(buffer, n);
        const int status = pclose(pipe);
        if (WIFEXITED(status))
            result.status = WEXITSTATUS(status);
    }
    std::system(("rm -rf " + scratch).c_str());
    // Windows line ends made plain; a stray carriage return stays for the test to see.
    for (std::size_t at = 0; (at = result.output.find("\r\n", at)) != std::string::npos;)
        result.output.erase(at, 1);
    return result;
}
