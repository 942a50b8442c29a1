// XBoard: the feature handshake, force mode, the session move counter, the time controls
// ("level", "st", "sd", "time", "otim") and the opponent's moves, each of which the engine
// answers with a search unless it is in force mode.
#include "engine/xboard.h"

#include "board/trace.h"
#include "board/version.h"
#include "engine/front_end.h"
#include "engine/protocol_common.h"
#include "platform/send_command.h"

#include <algorithm>
#include <climits>

namespace {

void quit(FrontEnd& frontEnd, const char* line) {
    trace("quit");
    quitCommand(frontEnd, line);
}

void xboard(FrontEnd& frontEnd, const char*) {
    frontEnd.createEngine();
    frontEnd.openConfiguredBook();
    frontEnd.forceMode = 0;
    sendCommand("feature setboard=1 myname=\"Pellix %s\" analyze=0 ping=1 draw=0 sigint=0 "
                "variants=\"normal\" done=1 colors=0",
                PELLIX_VERSION);
}

void undo(FrontEnd& frontEnd, const char*) {
    frontEnd.board->takeBackGameMove();
}

// xboard sends "force" when a game ends or the user takes over. A move the search played
// but was not allowed to send is taken back: the interface never saw it.
void force(FrontEnd& frontEnd, const char*) {
    frontEnd.forceMode = 1;
    if (frontEnd.moveDropped)
        frontEnd.board->takeBackGameMove();
    frontEnd.moveDropped = 0;
}

void go(FrontEnd& frontEnd, const char*) {
    frontEnd.forceMode = 0;
    frontEnd.board->startThinking();
}

void newGame(FrontEnd& frontEnd, const char*) {
    frontEnd.board->newGame();
    frontEnd.movesLeftInSession = frontEnd.movesPerSession = 40;
}

void protover(FrontEnd& frontEnd, const char* line) {
    frontEnd.protocolVersion = readNumber(afterFirstBlank(line));
}

void ping(FrontEnd&, const char* line) {
    sendCommand("pong %d", readNumber(afterFirstBlank(line)));
}

// The interface sends "time" and "otim" just before the opponent's move, while the opponent
// is to move. So "time" (the engine's own clock) lands on the side not to move and "otim" on
// the side to move, deliberately: when the engine's search starts, after that move, its own
// clock is the one the budget reads. The value is in centiseconds.
void setClock(FrontEnd& frontEnd, const char* line, bool own) {
    const Color toMove = frontEnd.board->side();
    const Color side   = own ? opponent(toMove) : toMove;
    frontEnd.board->limits.remainingTime[side] =
        clockMilliseconds(std::int64_t(readNumber(afterFirstBlank(line))) * 10);
}

void time(FrontEnd& frontEnd, const char* line) {
    setClock(frontEnd, line, true);
}

void otim(FrontEnd& frontEnd, const char* line) {
    setClock(frontEnd, line, false);
}

void st(FrontEnd& frontEnd, const char* line) {
    const std::int64_t seconds = readNumber(afterFirstBlank(line));
    frontEnd.board->limits.setTimeMode(TIME_MOVETIME, budgetMicroseconds(seconds * 1000000));
}

void sd(FrontEnd& frontEnd, const char* line) {
    frontEnd.board->limits.setTimeMode(TIME_DEPTH, readNumber(afterFirstBlank(line)));
}

void setBoard(FrontEnd& frontEnd, const char* line) {
    if (!frontEnd.board->setPosition(afterFirstBlank(line)))
        trace("Bad FEN string !");
}

// The opponent's move. An illegal one is dropped without a word, and the engine still
// moves for whichever side is to move: the interface decides what an illegal move means.
void opponentMove(FrontEnd& frontEnd, const char* line) {
    trace("Move : '%s'", line);
    if (!frontEnd.board->playCoordinateMove(line))
        trace("bad move !?");
    if (frontEnd.forceMode)
        return;
    frontEnd.board->limits.movesToGo = frontEnd.movesLeftInSession;
    frontEnd.board->startThinking();
}

void badCommand(FrontEnd&, const char* line) {
    trace("bad move command !!! : %s", line);
}

// Tested in this order. During a search: the commands that change the board stop the search
// and run after its move; "force" stops it and keeps its move back; the time controls,
// perft and divide wait for it; a second "go" is ignored. This engine always posts its
// thinking, never ponders, and plays whichever side it is asked to move for, so several
// commands are accepted and do nothing.
constexpr CommandRow XBOARD_COMMANDS[] = {
    {"quit", Match::EXACT, quit, DuringSearch::ANSWER},
    {"xboard", Match::EXACT, xboard, DuringSearch::STOP},
    {"undo", Match::EXACT, undo, DuringSearch::STOP},
    {"white", Match::EXACT, ignoreCommand, DuringSearch::ANSWER},
    {"black", Match::EXACT, ignoreCommand, DuringSearch::ANSWER},
    {"force", Match::EXACT, force, DuringSearch::STOP_SILENT},
    {"random", Match::EXACT, ignoreCommand, DuringSearch::ANSWER},
    {"setboard", Match::EXACT, ignoreCommand, DuringSearch::ANSWER},
    {"go", Match::EXACT, go, DuringSearch::IGNORE},
    {"new", Match::EXACT, newGame, DuringSearch::STOP},
    {"computer", Match::EXACT, ignoreCommand, DuringSearch::ANSWER},
    {"easy", Match::EXACT, ignoreCommand, DuringSearch::ANSWER},
    {"hard", Match::EXACT, ignoreCommand, DuringSearch::ANSWER},
    {"post", Match::EXACT, ignoreCommand, DuringSearch::ANSWER},
    {"nopost", Match::EXACT, ignoreCommand, DuringSearch::ANSWER},
    {"accepted ", Match::PREFIX, ignoreCommand, DuringSearch::ANSWER},
    {"analyze", Match::PREFIX, ignoreCommand, DuringSearch::ANSWER},
    {"protover ", Match::VALUE, protover, DuringSearch::ANSWER},
    {"perft ", Match::VALUE, perftCommand, DuringSearch::QUEUE},
    {"divide ", Match::VALUE, divideCommand, DuringSearch::QUEUE},
    {"time ", Match::VALUE, time, DuringSearch::QUEUE},
    {"otim ", Match::VALUE, otim, DuringSearch::QUEUE},
    {"ping ", Match::VALUE, ping, DuringSearch::ANSWER},
    {"st ", Match::VALUE, st, DuringSearch::QUEUE},
    {"sd ", Match::VALUE, sd, DuringSearch::QUEUE},
    {"level ", Match::VALUE, parseLevel, DuringSearch::QUEUE},
    {"setboard ", Match::VALUE, setBoard, DuringSearch::STOP},
    {"", Match::MOVE, opponentMove, DuringSearch::STOP},
    {"", Match::ANY, badCommand, DuringSearch::ANSWER},
};

} // namespace

CommandTable xboardCommands() {
    return XBOARD_COMMANDS;
}

void parseLevel(FrontEnd& frontEnd, const char* line) {
    // Read the way "%d %s %d" reads it: stop at the first field that does not fit.
    int moves = 0, increment = 0, minutes = 0, seconds = 0;
    char base[64]    = "";
    const char* text = afterFirstBlank(line);
    if (scanNumber(text, moves) && scanWord(text, base, sizeof base))
        scanNumber(text, increment);
    frontEnd.movesPerSession = frontEnd.movesLeftInSession = moves;
    SearchLimits& limits                                   = frontEnd.board->limits;
    limits.movesToGo                                       = moves;
    const char* baseText                                   = base;
    if (scanNumber(baseText, minutes) && *baseText == ':') {
        ++baseText;
        scanNumber(baseText, seconds);
    }
    trace("level : %d, %d:%d, %d", moves, minutes, seconds, increment);
    const std::int64_t total                     = (std::int64_t(minutes) * 60 + seconds) * 1000;
    limits.remainingTime[frontEnd.board->side()] = clockMilliseconds(total);
    const std::int64_t perMove =
        std::clamp<std::int64_t>(std::int64_t(increment) * 1000, 0, INT_MAX);
    limits.increment[BLACK] = limits.increment[WHITE] = int(perMove);
    limits.setTimeMode(TIME_CLOCK);
}
