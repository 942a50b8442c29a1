#include "engine_process.h"

#include "test_support.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

Millis leftUntil(std::chrono::steady_clock::time_point deadline) {
    return std::max(
        Millis(0), std::chrono::duration_cast<Millis>(deadline - std::chrono::steady_clock::now()));
}

} // namespace

EngineProcess::EngineProcess(const std::string& iniText, const std::string& command) {
    std::signal(SIGPIPE, SIG_IGN); // writing to a program that has quit must not kill the test
    char dir[] = "/tmp/pellix-engine-XXXXXX";
    int toEngine[2], fromEngine[2];
    if (!mkdtemp(dir) || pipe(toEngine) != 0 || pipe(fromEngine) != 0)
        return;
    scratch = dir;
    if (!iniText.empty())
        std::ofstream(scratch + "/pellix.ini") << iniText;
    pid = fork();
    if (pid == 0) {
        dup2(toEngine[0], 0);
        dup2(fromEngine[1], 1);
        close(toEngine[1]);
        close(fromEngine[0]);
        // Through the shell, which execs the command: the child is the program itself.
        const std::string line = "exec " + command;
        if (chdir(scratch.c_str()) == 0)
            execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
        _exit(127);
    }
    close(toEngine[0]);
    close(fromEngine[1]);
    input  = toEngine[1];
    output = fromEngine[0];
    fcntl(input, F_SETFD, FD_CLOEXEC);
    fcntl(output, F_SETFD, FD_CLOEXEC);
}

EngineProcess::~EngineProcess() {
    closeInput();
    if (pid > 0 && waitExit(Millis(0)) < 0) {
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
    }
    if (output >= 0)
        close(output);
    if (!scratch.empty())
        std::system(("rm -rf " + scratch).c_str());
}

void EngineProcess::sendRaw(const std::string& bytes) {
    for (std::size_t done = 0; input >= 0 && done < bytes.size();) {
        const ssize_t n = write(input, bytes.data() + done, bytes.size() - done);
        if (n <= 0)
            break;
        done += std::size_t(n);
    }
}

void EngineProcess::closeInput() {
    if (input >= 0)
        close(input);
    input = -1;
}

std::optional<std::string> EngineProcess::readLine(Millis timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    for (;;) {
        const std::size_t feed = buffered.find('\n');
        if (feed != std::string::npos) {
            std::string line = buffered.substr(0, feed);
            buffered.erase(0, feed + 1);
            if (!line.empty() && line.back() == '\r')
                line.pop_back(); // a Windows line end
            return line;
        }
        pollfd fd{output, POLLIN, 0};
        char chunk[4096];
        ssize_t n = 0;
        if (output < 0 || poll(&fd, 1, int(leftUntil(deadline).count())) <= 0 ||
            (n = read(output, chunk, sizeof chunk)) <= 0)
            return std::nullopt;
        buffered.append(chunk, std::size_t(n));
    }
}

std::optional<std::string> EngineProcess::waitFor(const std::string& prefix, Millis timeout,
                                                  std::vector<std::string>* seen) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (std::optional<std::string> line = readLine(leftUntil(deadline))) {
        if (seen)
            seen->push_back(*line);
        if (line->rfind(prefix, 0) == 0)
            return line;
    }
    return std::nullopt;
}

int EngineProcess::waitExit(Millis timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (pid > 0) {
        int raw = 0;
        if (waitpid(pid, &raw, WNOHANG) == pid) {
            status = WIFEXITED(raw) ? WEXITSTATUS(raw) : 128 + WTERMSIG(raw);
            pid    = -1;
        } else if (std::chrono::steady_clock::now() >= deadline) {
            return -1;
        } else {
            std::this_thread::sleep_for(Millis(5));
        }
    }
    return status;
}

bool isLegalMove(const std::string& move, const std::string& fen,
                 const std::vector<std::string>& moves) {
    std::unique_ptr<SilentBoard> board = boardFrom(fen);
    for (const std::string& m : moves)
        if (!board->playCoordinateMove(m.c_str()))
            return false;
    char text[8];
    for (Move m : legalMoves(*board)) {
        ChessBoard::moveToCoordinates(m, text);
        if (move == text)
            return true;
    }
    return false;
}

std::string moveOfLine(const std::string& line) {
    const std::size_t blank = line.find(' ');
    // Without a second blank the length is past the end, and the rest of the line is taken.
    return blank == std::string::npos
               ? ""
               : line.substr(blank + 1, line.find(' ', blank + 1) - blank - 1);
}
