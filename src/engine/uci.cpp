// The Universal Chess Interface: handshake, positions, "go" and its time controls, and the
// perft and divide diagnostics. Replies leave through sendCommand; the move itself is sent
// by the console adapter when the search has played it.
#include "engine/uci.h"

#include "board/trace.h"
#include "board/version.h"
#include "engine/front_end.h"
#include "engine/protocol_common.h"
#include "platform/send_command.h"

#include <cstring>

namespace {

// Plays each blank-separated word of text as a move; a word that is not a legal move is
// skipped and the words after it are still tried.
void playMoveWords(ChessBoard& engine, const char* text) {
    char word[16];
    while (*text) {
        while (*text == ' ')
            ++text;
        const std::size_t length = std::strcspn(text, " ");
        if (length == 0)
            break;
        if (length < sizeof word) {
            std::memcpy(word, text, length);
            word[length] = 0;
            trace("Move : '%s'", word);
            if (!engine.playCoordinateMove(word))
                trace("bad move !?");
        } else {
            trace("bad move !?");
        }
        text += length;
    }
}

void positionFromFen(ChessBoard& engine, const char* fenText) {
    if (!engine.setPosition(fenText)) {
        trace("Bad FEN string !");
        return;
    }
    trace("FEN : %s", fenText);
    // The FEN's own fields after the placement and the word "moves" are not moves and are
    // skipped like any other word that is not one.
    if (std::strstr(fenText, "moves ")) {
        if (const char* rest = afterFirstBlank(fenText))
            playMoveWords(engine, rest);
    }
}

// Reads the value of a keyword: the word at text. Answers the text after it, or null when
// the value is missing.
const char* keywordValue(const char* text, int& value) {
    if (!*text || *text == ' ')
        return nullptr;
    value = readNumber(text);
    return text + std::strcspn(text, " ");
}

enum GoValue { DEPTH, NODES, MOVETIME, MOVESTOGO, WTIME, BTIME, WINC, BINC };

void applyGoValue(SearchLimits& limits, GoValue keyword, int value) {
    switch (keyword) {
    case DEPTH:
        limits.setTimeMode(TIME_DEPTH, value);
        break;
    case NODES:
        limits.setTimeMode(TIME_NODES, value);
        break;
    case MOVETIME:
        limits.setTimeMode(TIME_MOVETIME, budgetMicroseconds(std::int64_t(value) * 1000));
        break;
    case MOVESTOGO:
        limits.movesToGo = value;
        limits.setTimeMode(TIME_CLOCK);
        break;
    case WTIME:
    case BTIME:
        limits.remainingTime[keyword == WTIME ? WHITE : BLACK] = clockMilliseconds(value);
        limits.setTimeMode(TIME_CLOCK);
        break;
    case WINC:
        limits.increment[WHITE] = value;
        trace("white inc = %d", value);
        break;
    case BINC:
        limits.increment[BLACK] = value;
        trace("black inc = %d", value);
        break;
    }
}

// One keyword of "go" at text; answers where the parse goes on, or null to end it.
const char* goKeyword(SearchLimits& limits, const char* text) {
    static const struct {
        const char* name;
        GoValue keyword;
    } KEYWORDS[] = {{"depth ", DEPTH},         {"nodes ", NODES}, {"movetime ", MOVETIME},
                    {"movestogo ", MOVESTOGO}, {"wtime ", WTIME}, {"btime ", BTIME},
                    {"winc ", WINC},           {"binc ", BINC}};
    if (startsWith(text, "infinite")) {
        limits.setTimeMode(TIME_INFINITE, 0);
        return text + std::strcspn(text, " ");
    }
    for (const auto& k : KEYWORDS) {
        if (!startsWith(text, k.name))
            continue;
        int value        = 0;
        const char* next = keywordValue(text + std::strlen(k.name), value);
        if (next)
            applyGoValue(limits, k.keyword, value);
        return next;
    }
    return text + std::strcspn(text, " "); // an unknown word
}

void uci(FrontEnd& frontEnd, const char*) {
    sendCommand("id name Pellix %s", PELLIX_VERSION);
    sendCommand("id author Anselm KORVEL");
    frontEnd.createEngine();
    frontEnd.openConfiguredBook();
    sendCommand("uciok");
}

void isReady(FrontEnd&, const char*) {
    sendCommand("readyok");
}

void newGame(FrontEnd& frontEnd, const char*) {
    frontEnd.board->newGame();
}

void stop(FrontEnd& frontEnd, const char*) {
    if (frontEnd.searchRunning()) {
        trace("stop thinking");
        frontEnd.board->stopSearch = 1;
    }
}

void go(FrontEnd& frontEnd, const char* line) {
    parseGo(frontEnd.board->limits, line);
    trace(frontEnd.board->sideToMove == WHITE ? "WHITE to play" : "BLACK to play");
    frontEnd.board->startThinking();
}

// "debug on" clears the mode and anything else sets it. The inverted reading is this
// engine's answer to the command, and costs nothing: nothing looks at the mode.
void debug(FrontEnd& frontEnd, const char* line) {
    const char* word = afterFirstBlank(line);
    frontEnd.debugMode =
        std::strncmp(word, "on", 2) == 0 && (word[2] == 0 || word[2] == ' ') ? 0 : 1;
}

void position(FrontEnd& frontEnd, const char* line) {
    parsePosition(*frontEnd.board, line);
}

// Tested in this order. During a search: "uci", "ucinewgame" and "position" change the
// board, so they stop the search and run after its move; perft and divide wait for it; a
// second "go" is ignored.
constexpr CommandRow UCI_COMMANDS[] = {
    {"quit", Match::EXACT, quitCommand, DuringSearch::ANSWER},
    {"uci", Match::EXACT, uci, DuringSearch::STOP},
    {"isready", Match::EXACT, isReady, DuringSearch::ANSWER},
    {"ucinewgame", Match::EXACT, newGame, DuringSearch::STOP},
    {"stop", Match::EXACT, stop, DuringSearch::ANSWER},
    {"perft", Match::PREFIX, perftCommand, DuringSearch::QUEUE},
    {"divide", Match::PREFIX, divideCommand, DuringSearch::QUEUE},
    {"go ", Match::PREFIX, go, DuringSearch::IGNORE},
    {"debug ", Match::PREFIX, debug, DuringSearch::ANSWER},
    {"position ", Match::PREFIX, position, DuringSearch::STOP},
    // Options, registration, ponder hits and a bare "go" are ignored.
    {"", Match::ANY, ignoreCommand, DuringSearch::ANSWER},
};

} // namespace

CommandTable uciCommands() {
    return UCI_COMMANDS;
}

void parseGo(SearchLimits& limits, const char* line) {
    limits.movesToGo = 0;
    const char* text = afterFirstBlank(line);
    while (text && *text) {
        while (*text == ' ')
            ++text;
        if (*text)
            text = goKeyword(limits, text);
    }
}

void parsePosition(ChessBoard& engine, const char* line) {
    const char* text = afterFirstBlank(line);
    if (!text)
        return;
    if (startsWith(text, "fen ")) {
        positionFromFen(engine, afterFirstBlank(text));
    } else if (startsWith(text, "startpos ")) {
        engine.setPosition(START_FEN);
        const char* rest = afterFirstBlank(text);
        if (startsWith(rest, "moves "))
            playMoveWords(engine, rest + 6);
        trace("ok");
    }
}
