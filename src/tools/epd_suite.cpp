// The EPD best-move suite: each position is searched for a fixed time by the engine's own
// think, which prints its console rows, and the played move is looked for in the line's
// expected text.
#include "tools/epd_suite.h"

#include "board/chess_board.h"
#include "board/trace.h"
#include "board/version.h"
#include "search/transposition_table.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

namespace {

constexpr int SUITE_LINE_SIZE = 256;

// Copies [from, to) into out, which holds 256 characters.
void copyPart(const char* from, const char* to, char* out) {
    const std::size_t length = std::min<std::size_t>(std::size_t(to - from), 255);
    std::memcpy(out, from, length);
    out[length] = 0;
}

// The end of a part: the first of `stop`, a line end or the end of the text.
const char* partEnd(const char* from, char stop) {
    while (*from && *from != stop && *from != '\n' && *from != '\r')
        ++from;
    return from;
}

struct SuiteScore {
    int tried  = 0;
    int solved = 0;
    std::vector<std::string> failedIds;
};

// The algebraic text of the move the engine just played, written against the moves of the
// position it was played in.
void playedMoveText(const ChessBoard& engine, const MoveEntry* rootMoves, int rootCount,
                    char* text) {
    const Move played = engine.gameMoveCount > 0 ? engine.lastMove : NO_MOVE;
    ChessBoard::moveToSan(played, text, rootMoves, rootCount);
}

void runPosition(ChessBoard& engine, const EpdLine& line, SuiteScore& score) {
    std::printf("%s\n", std::string(79, '-').c_str());
    std::printf("%s bm %s; id %s;\n\n", line.fen, line.expected, line.id);
    engine.hashTable->clear();
    ++score.tried;
    if (!engine.setPosition(line.fen)) {
        trace("bad FEN : %s", line.fen);
        score.failedIds.emplace_back(line.id);
        return;
    }
    MoveEntry rootMoves[MAX_GENERATED];
    const int rootCount = engine.generatePseudoLegalMoves(rootMoves);
    engine.thinking     = 1;
    std::srand(unsigned(std::time(nullptr)));
    engine.think();
    char text[32];
    playedMoveText(engine, rootMoves, rootCount, text);
    // Any text inside the expected one counts: a list of moves accepts each of them, and a
    // move written without its check mark matches the same move written with it.
    if (std::strstr(line.expected, text)) {
        trace("result => '%s' : ok", text);
        ++score.solved;
    } else {
        trace("result => '%s' : bad", text);
        score.failedIds.emplace_back(line.id);
    }
}

void printScore(const SuiteScore& score) {
    std::printf("\nScore = %d / %d\n", score.solved, score.tried);
    std::printf("\nBad results : \n\n");
    for (const std::string& id : score.failedIds)
        std::printf("%s\n", id.c_str());
}

} // namespace

bool splitEpdLine(const char* line, EpdLine& out) {
    const char* bm = std::strstr(line, "bm");
    if (!bm)
        return false;
    copyPart(line, bm, out.fen);
    // The expected text starts after "bm" and its blank.
    const char* expected  = bm[2] ? bm + 3 : bm + 2;
    const char* semicolon = partEnd(expected, ';');
    copyPart(expected, semicolon, out.expected);
    // The id sits six characters after the ";" (a blank, "id", a blank and the quote in a
    // well-formed line); a line that ends sooner has none.
    out.id[0] = 0;
    if (*semicolon == ';') {
        const char* id = semicolon;
        int step       = 0;
        while (step < 6 && *id) {
            ++id;
            ++step;
        }
        if (step == 6)
            copyPart(id, partEnd(id, '"'), out.id);
    }
    return true;
}

int runTestSuite(ChessBoard& engine, int seconds, const char* path) {
    std::FILE* file = std::fopen(path, "r");
    trace("Run testsuite : %s", path);
    SuiteScore score;
    engine.suiteMode = 1;
    // The time mode outlives the positions of the suite but not a new game: it is set after
    // the new game the engine was created with.
    engine.limits.setTimeMode(TIME_MOVETIME, std::int64_t(seconds < 0 ? 5 : seconds) * 1000000);
    std::printf("Pellix version %s\n\n", PELLIX_VERSION);
    std::printf("Test suite : %s\n\n", path);
    if (file) {
        char text[SUITE_LINE_SIZE];
        EpdLine line;
        while (std::fgets(text, sizeof text, file))
            if (splitEpdLine(text, line))
                runPosition(engine, line, score);
        std::fclose(file);
    }
    printScore(score);
    engine.suiteMode = 0;
    return file ? 1 : 0;
}
