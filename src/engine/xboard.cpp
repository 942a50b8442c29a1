// XBoard: the feature handshake, force mode, the session move counter, the time controls
// ("level", "st", "sd", "time", "otim") and the opponent's moves, each of which the engine
// answers with a search unless it is in force mode.
#include "engine/xboard.h"

#include "board/trace.h"
#include "engine/front_end.h"
#include "engine/protocol_common.h"
#include "platform/send_command.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace {

// The commands that are accepted and do nothing: this engine always posts its thinking,
// never ponders, and plays whichever side it is asked to move for.
constexpr const char* IGNORED[] = {"white", "black", "random", "setboard", "computer",
                                   "easy",  "hard",  "post",   "nopost"};

bool isIgnored(const char* line) {
    for (const char* word : IGNORED)
        if (std::strcmp(line, word) == 0)
            return true;
    return startsWith(line, "accepted ") || startsWith(line, "analyze");
}

// A move as the interface sends it: file, rank, file, rank, perhaps a promotion letter.
bool looksLikeMove(const char* line) {
    return line[0] >= 'a' && line[0] <= 'h' && line[1] >= '1' && line[1] <= '8' && line[2] >= 'a' &&
           line[2] <= 'h' && line[3] >= '1' && line[3] <= '8';
}

void startXboard() {
    createEngine();
    forceMode = 0;
    sendCommand("feature setboard=1 myname=\"Pellix %s\" analyze=0 ping=1 draw=0 sigint=0 "
                "variants=\"normal\" done=1 colors=0",
                PELLIX_VERSION);
}

void newGame() {
    if (board)
        board->newGame();
    movesLeftInSession = movesPerSession = 40;
    if (board)
        board->movesToGo = 40;
}

void go() {
    forceMode = 0;
    if (board)
        board->startThinking();
}

// The interface sends "time" and "otim" just before the opponent's move, while the opponent
// is to move: "time" (the engine's own clock) belongs to the side not to move.
void setClock(const char* line, bool own) {
    if (!board)
        return;
    const char* value          = afterFirstBlank(line);
    const int side             = own ? board->sideToMove ^ 1 : board->sideToMove;
    board->remainingTime[side] = clockMilliseconds(std::int64_t(readNumber(value)) * 10);
}

void setTimeControl(const char* line, int mode) {
    if (!board)
        return;
    const int n = readNumber(afterFirstBlank(line));
    if (mode == TIME_MOVETIME)
        board->setTimeMode(TIME_MOVETIME, budgetMicroseconds(std::int64_t(n) * 1000000));
    else
        board->setTimeMode(TIME_DEPTH, n);
}

// The opponent's move. An illegal one is dropped without a word, and the engine still
// moves for whichever side is to move: the interface decides what an illegal move means.
void opponentMove(const char* line) {
    trace("Move : '%s'", line);
    if (!board)
        return;
    if (!board->playCoordinateMove(line))
        trace("bad move !?");
    if (forceMode)
        return;
    board->movesToGo = movesLeftInSession;
    board->startThinking();
}

void setBoard(const char* line) {
    if (board && !board->setPosition(afterFirstBlank(line)))
        trace("Bad FEN string !");
}

// Commands with a value after a blank; false when line is none of them. One whose value is
// missing is taken and does nothing.
bool valueCommand(const char* line) {
    static const char* const NAMES[] = {"protover ", "perft ", "divide ", "time ",  "otim ",
                                        "ping ",     "st ",    "sd ",     "level ", "setboard "};
    bool known                       = false;
    for (const char* name : NAMES)
        known = known || startsWith(line, name);
    if (!known)
        return false;
    if (!*afterFirstBlank(line))
        return true;
    if (startsWith(line, "protover ")) {
        protocolVersion = readNumber(afterFirstBlank(line));
    } else if (startsWith(line, "perft ")) {
        perftCommand(line);
    } else if (startsWith(line, "divide ")) {
        divideCommand(line);
    } else if (startsWith(line, "time ")) {
        setClock(line, true);
    } else if (startsWith(line, "otim ")) {
        setClock(line, false);
    } else if (startsWith(line, "ping ")) {
        sendCommand("pong %d", readNumber(afterFirstBlank(line)));
    } else if (startsWith(line, "st ")) {
        setTimeControl(line, TIME_MOVETIME);
    } else if (startsWith(line, "sd ")) {
        setTimeControl(line, TIME_DEPTH);
    } else if (startsWith(line, "level ")) {
        parseLevel(line);
    } else {
        setBoard(line);
    }
    return true;
}

} // namespace

void parseLevel(const char* line) {
    // Read the way "%d %s %d" reads it: stop at the first field that does not fit.
    int moves = 0, increment = 0, minutes = 0, seconds = 0;
    char base[64]    = "";
    const char* text = afterFirstBlank(line);
    if (scanNumber(text, moves) && scanWord(text, base, sizeof base))
        scanNumber(text, increment);
    movesPerSession = movesLeftInSession = moves;
    if (board)
        board->movesToGo = moves;
    const char* baseText = base;
    if (scanNumber(baseText, minutes) && *baseText == ':') {
        ++baseText;
        scanNumber(baseText, seconds);
    }
    trace("level : %d, %d:%d, %d", moves, minutes, seconds, increment);
    if (!board)
        return;
    const std::int64_t total                = (std::int64_t(minutes) * 60 + seconds) * 1000;
    board->remainingTime[board->sideToMove] = clockMilliseconds(total);
    const std::int64_t perMove =
        std::clamp<std::int64_t>(std::int64_t(increment) * 1000, 0, INT_MAX);
    board->increment[BLACK] = board->increment[WHITE] = int(perMove);
    board->setTimeMode(TIME_CLOCK);
}

int parseXboardCommand(char* line) {
    if (std::strcmp(line, "quit") == 0) {
        trace("quit");
        if (board && board->thinking)
            board->stopSearch = 1;
        return 0;
    }
    if (std::strcmp(line, "xboard") == 0) {
        startXboard();
    } else if (std::strcmp(line, "undo") == 0) {
        if (board)
            board->takeBackGameMove();
    } else if (std::strcmp(line, "force") == 0) {
        forceMode = 1;
        if (moveDropped && board)
            board->takeBackGameMove();
        moveDropped = 0;
    } else if (std::strcmp(line, "go") == 0) {
        go();
    } else if (std::strcmp(line, "new") == 0) {
        newGame();
    } else if (isIgnored(line) || valueCommand(line)) {
    } else if (looksLikeMove(line)) {
        opponentMove(line);
    } else {
        trace("bad move command !!! : %s", line);
    }
    return 1;
}

DuringSearch xboardDuringSearch(const char* line) {
    if (std::strcmp(line, "go") == 0)
        return DuringSearch::IGNORE;
    // "force" ends the engine's turn: xboard sends it when a game ends or the user takes over
    // (before "undo", say), and expects no move from the engine after it.
    if (std::strcmp(line, "force") == 0)
        return DuringSearch::STOP_AND_DROP;
    if (std::strcmp(line, "xboard") == 0 || std::strcmp(line, "new") == 0 ||
        std::strcmp(line, "undo") == 0 || startsWith(line, "setboard ") || looksLikeMove(line))
        return DuringSearch::STOP_AND_WAIT;
    if (startsWith(line, "time ") || startsWith(line, "otim ") || startsWith(line, "st ") ||
        startsWith(line, "sd ") || startsWith(line, "level ") || startsWith(line, "perft ") ||
        startsWith(line, "divide "))
        return DuringSearch::WAIT;
    return DuringSearch::RUN_NOW;
}
