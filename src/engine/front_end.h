// The front end: the one object between the interface and the engine. It owns the engine
// object, the protocol in use with its settings, the command buffer, the commands that wait
// for a search to end, and the source commands come from. main() makes one for the
// interactive engine and one for a test mode; the tests and the fuzzer make a fresh one for
// every session, which resets everything.
#pragma once

#include "engine/chess_board_uci.h"
#include "engine/command_table.h"
#include "platform/input.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <string>

constexpr int COMMAND_BUFFER_SIZE = 4096;

enum Protocol : int { PROTOCOL_NONE = 0, PROTOCOL_UCI = 1, PROTOCOL_XBOARD = 2 };

// Where command lines come from: the non-blocking test the search polls, and the line
// reader. The engine reads its standard input; tests and the fuzzer may bring their own.
// A source without a test never interrupts a search.
struct CommandSource {
    int (*available)()                           = inputAvailable;
    int (*readLine)(char* out, std::size_t size) = readInputLine;
};

class FrontEnd : public Console {
public:
    explicit FrontEnd(CommandSource commands = {});
    virtual ~FrontEnd();
    FrontEnd(const FrontEnd&)            = delete;
    FrontEnd& operator=(const FrontEnd&) = delete;

    // --- The command reader (engine/command_reader.cpp) --------------------------------------
    // The interactive engine: banner, command loop until quitRequested, shutdown. Returns
    // the exit status: 1, or 0 when the command buffer cannot be had.
    int run();
    // Reads one line and dispatches it: 1 when a line was read, 0 at the end of input or on
    // a read error. At the outermost level it then runs the commands that waited for a search.
    int readCommand() override;
    // One line as the reader dispatches it: to the protocol's table, or, during a search,
    // as the command's row says.
    void dispatch(const char* line);
    // Runs the commands kept back during the last search, in the order they arrived.
    void runWaitingCommands();

    // --- The engine (engine/front_end.cpp) ---------------------------------------------------
    // The engine object as "uci", "xboard", the test modes and the suite start it: the hash
    // size from the configuration file, the tables, a new game. One made earlier goes first.
    // The protocol's first command makes it, so every handler after it has an engine.
    void createEngine();
    void createEngine(int hashMegabytes);
    // Opens the book the configuration file names, when it turns the book on (after
    // createEngine).
    void openConfiguredBook();
    // Stops a search that is still marked as running, frees the tables, deletes the engine.
    void destroyEngine();
    bool searchRunning() const { return board && board->thinking; }

    // --- The console adapter's hooks (engine/front_end.cpp, engine/search_report.cpp) --------
    void sendMove(ChessBoard& engine) override;
    void printSearchInfo(ChessBoard& engine, int depth, const PrincipalVariation& pv,
                         std::uint64_t nodes, double timeMicros) override;

    std::unique_ptr<ChessBoardUCI> board; // null until the protocol's first command creates it
    std::unique_ptr<char[]> commandBuffer;
    int quitRequested      = 0;
    int protocol           = PROTOCOL_NONE;
    int movesPerSession    = 0; // XBoard moves per time control
    int movesLeftInSession = 0;
    int forceMode          = 0;
    int debugMode          = 0; // set by UCI "debug"; nothing reads it
    int protocolVersion    = 0; // from XBoard "protover"; nothing reads it
    // Set when a command ends the engine's turn during a search: the search's move is not
    // sent, and moveDropped tells the command that it is still on the board, to be taken back.
    int dropSearchMove = 0;
    int moveDropped    = 0;
    // Commands kept back while a search runs, in the order they arrived.
    std::deque<std::string> waiting;
    CommandSource source;

private:
    void runProtocolCommand(const char* line);
    void dispatchDuringSearch(const char* line);
    void keepForLater(const char* line);
};

// The command table of the protocol in use (engine/command_reader.cpp); empty before the
// first line has chosen one.
CommandTable commandsOf(int protocol);
