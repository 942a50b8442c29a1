// The Universal Chess Interface: handshake, positions, "go" and its time controls, and the
// perft and divide diagnostics. Replies leave through sendCommand; the move itself is sent
// by the console adapter when the search has played it.
#include "engine/uci.h"

#include "board/trace.h"
#include "engine/front_end.h"
#include "engine/protocol_common.h"
#include "platform/send_command.h"

#include <cstring>

namespace {

constexpr const char* START_POSITION = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";

// Plays each blank-separated word of text as a move; a word that is not a legal move is
// skipped and the words after it are still tried.
void playMoveWords(const char* text) {
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
            if (!board->playCoordinateMove(word))
                trace("bad move !?");
        } else {
            trace("bad move !?");
        }
        text += length;
    }
}

void positionFromFen(const char* fenText) {
    if (!board->setPosition(fenText)) {
        trace("Bad FEN string !");
        return;
    }
    trace("FEN : %s", fenText);
    // The FEN's own fields after the placement and the word "moves" are not moves and are
    // skipped like any other word that is not one.
    if (std::strstr(fenText, "moves ")) {
        if (const char* rest = afterFirstBlank(fenText))
            playMoveWords(rest);
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

void applyGoValue(GoValue keyword, int value) {
    switch (keyword) {
    case DEPTH:
        board->setTimeMode(TIME_DEPTH, value);
        break;
    case NODES:
        board->setTimeMode(TIME_NODES, value);
        break;
    case MOVETIME:
        board->setTimeMode(TIME_MOVETIME, budgetMicroseconds(std::int64_t(value) * 1000));
        break;
    case MOVESTOGO:
        board->movesToGo = value;
        board->setTimeMode(TIME_CLOCK);
        break;
    case WTIME:
    case BTIME:
        board->remainingTime[keyword == WTIME ? WHITE : BLACK] = clockMilliseconds(value);
        board->setTimeMode(TIME_CLOCK);
        break;
    case WINC:
        board->increment[WHITE] = value;
        trace("white inc = %d", value);
        break;
    case BINC:
        board->increment[BLACK] = value;
        trace("black inc = %d", value);
        break;
    }
}

// One keyword of "go" at text; answers where the parse goes on, or null to end it.
const char* goKeyword(const char* text) {
    static const struct {
        const char* name;
        GoValue keyword;
    } KEYWORDS[] = {{"depth ", DEPTH},         {"nodes ", NODES}, {"movetime ", MOVETIME},
                    {"movestogo ", MOVESTOGO}, {"wtime ", WTIME}, {"btime ", BTIME},
                    {"winc ", WINC},           {"binc ", BINC}};
    if (startsWith(text, "infinite")) {
        board->setTimeMode(TIME_INFINITE, 0);
        return text + std::strcspn(text, " ");
    }
    for (const auto& k : KEYWORDS) {
        if (!startsWith(text, k.name))
            continue;
        int value        = 0;
        const char* next = keywordValue(text + std::strlen(k.name), value);
        if (next)
            applyGoValue(k.keyword, value);
        return next;
    }
    return text + std::strcspn(text, " "); // an unknown word
}

void sendIdentity() {
    sendCommand("id name Pellix %s", PELLIX_VERSION);
    sendCommand("id author Anselm KORVEL");
    createEngine();
    sendCommand("uciok");
}

// "debug on" clears the mode and anything else sets it: the engine has always read it this
// way round, and nothing looks at the mode.
void setDebugMode(const char* line) {
    const char* word = afterFirstBlank(line);
    debugMode        = std::strncmp(word, "on", 2) == 0 && (word[2] == 0 || word[2] == ' ') ? 0 : 1;
}

void go(const char* line) {
    if (!board)
        return;
    parseGo(line);
    trace(board->sideToMove == WHITE ? "WHITE to play" : "BLACK to play");
    board->startThinking();
}

} // namespace

void parseGo(const char* line) {
    board->movesToGo = 0;
    const char* text = afterFirstBlank(line);
    while (text && *text) {
        while (*text == ' ')
            ++text;
        if (*text)
            text = goKeyword(text);
    }
}

void parsePosition(const char* line) {
    const char* text = afterFirstBlank(line);
    if (!text || !board)
        return;
    if (startsWith(text, "fen ")) {
        positionFromFen(afterFirstBlank(text));
    } else if (startsWith(text, "startpos ")) {
        board->setPosition(START_POSITION);
        const char* rest = afterFirstBlank(text);
        if (startsWith(rest, "moves "))
            playMoveWords(rest + 6);
        trace("ok");
    }
}

int parseUciCommand(char* line) {
    if (std::strcmp(line, "quit") == 0) {
        if (board && board->thinking)
            board->stopSearch = 1;
        return 0;
    }
    if (std::strcmp(line, "uci") == 0) {
        sendIdentity();
    } else if (std::strcmp(line, "isready") == 0) {
        sendCommand("readyok");
    } else if (std::strcmp(line, "ucinewgame") == 0) {
        if (board)
            board->newGame();
    } else if (std::strcmp(line, "stop") == 0) {
        if (board && board->thinking) {
            trace("stop thinking");
            board->stopSearch = 1;
        }
    } else if (startsWith(line, "perft")) {
        perftCommand(line);
    } else if (startsWith(line, "divide")) {
        divideCommand(line);
    } else if (startsWith(line, "go ")) {
        go(line);
    } else if (startsWith(line, "debug ")) {
        setDebugMode(line);
    } else if (startsWith(line, "position ")) {
        parsePosition(line);
    }
    return 1;
}

DuringSearch uciDuringSearch(const char* line) {
    if (startsWith(line, "go "))
        return DuringSearch::IGNORE;
    if (std::strcmp(line, "uci") == 0 || std::strcmp(line, "ucinewgame") == 0 ||
        startsWith(line, "position "))
        return DuringSearch::STOP_AND_WAIT;
    if (startsWith(line, "perft") || startsWith(line, "divide"))
        return DuringSearch::WAIT;
    return DuringSearch::RUN_NOW;
}
