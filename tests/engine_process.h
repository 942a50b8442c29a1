// A running program for the transcript, input and self-play tests: lines go in through one
// pipe and come out through another, and every wait has a deadline, so a program that hangs
// fails its test instead of hanging it.
#pragma once

#include "test_process.h"

#include <chrono>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

using Millis = std::chrono::milliseconds;

// How long the transcript tests wait.
constexpr Millis PROMPT{2000};  // a reply that should come at once
constexpr Millis POLLED{500};   // a reply the search gives at its next poll
constexpr Millis SEARCH{20000}; // a short search, with room for a slow sanitizer build

// A small hash table keeps start-up cheap; the tests that care write their own file.
constexpr const char* SMALL_ENGINE_INI = "[Engine]\nHash=16\n";

class EngineProcess {
public:
    // Starts the command (the engine under test when left out) in a fresh scratch directory
    // holding pellix.ini = iniText (none when empty).
    explicit EngineProcess(const std::string& iniText = SMALL_ENGINE_INI,
                           const std::string& command = programCommand("pellix"));
    ~EngineProcess();
    EngineProcess(const EngineProcess&)            = delete;
    EngineProcess& operator=(const EngineProcess&) = delete;

    void send(const std::string& line) { sendRaw(line + "\n"); }
    void sendRaw(const std::string& bytes);
    void closeInput();

    // The next output line without its line end, or nothing when none is complete in time.
    std::optional<std::string> readLine(Millis timeout);
    // Reads lines until one starts with prefix; answers that line, or nothing on timeout.
    // Every line read, that one included, is appended to `seen` when it is given.
    std::optional<std::string> waitFor(const std::string& prefix, Millis timeout,
                                       std::vector<std::string>* seen = nullptr);
    // The exit status once the process has ended, or -1 if it has not within the timeout.
    int waitExit(Millis timeout);

    pid_t processId() const { return pid; }

private:
    pid_t pid  = -1;
    int input  = -1; // our end of the program's standard input
    int output = -1; // our end of its standard output
    int status = -1;
    std::string buffered;
    std::string scratch;
};

// Checks on what an engine sent, judged by the engine's own library: whether `move`
// (coordinate text, "e7e8q" for promotions) is legal after `moves` from `fen`.
bool isLegalMove(const std::string& move, const std::string& fen,
                 const std::vector<std::string>& moves = {});
// The move word of a "bestmove e2e4" or "move e2e4" line.
std::string moveOfLine(const std::string& line);
