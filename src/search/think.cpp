// Deciding the engine's move: the book, then iterative deepening inside an aspiration
// window with the stop rules of each time mode, then the move played on the board and
// handed to the front end. The budget itself is computed in time_control.cpp.
#include "board/chess_board.h"
#include "board/trace.h"
#include "platform/clock.h"
#include "search/search_node.h"

#include <cstdlib>
#include <ctime>

namespace {

// Forty centipawns around the last score: most iterations land inside, and one that does
// not is searched again with the full window.
constexpr int ASPIRATION = 40;

struct Iterations {
    int depth     = 1;
    int low       = -INFINITE_SCORE;
    int high      = INFINITE_SCORE;
    int mateCount = 0;
    int previous  = 0;
    bool failed   = false;
    double total  = 0; // microseconds
};

double microsSince(std::int64_t start) {
    return double(performanceCounter() - start) * 1e6 / double(performanceFrequency());
}

// The clock-mode stop rules after a completed iteration, with what each decision does to the
// board; true to stop. With one legal move
// the first iteration's move is played.
bool stopAfterIteration(ChessBoard& board, Iterations& it, int score, double iterationTime) {
    const IterationClock clock = {board.singleMove, score,         it.depth,
                                  board.timeLimit,  iterationTime, it.total};
    switch (clockRuleStops(clock, it.mateCount)) {
    case ClockStop::SINGLE_MOVE:
        trace("only one move possible");
        board.bestMove = board.principalVariation.moves[0];
        return true;
    case ClockStop::MATE_SCORES:
        trace("2 successive mate found");
        return true;
    case ClockStop::NO_TIME_FOR_NEXT:
        return true;
    case ClockStop::NONE:
        break;
    }
    return false;
}

// One pass at it.depth; false when the deepening is over.
bool iterate(ChessBoard& board, Iterations& it, int depthLimit) {
    PrincipalVariation& pv = board.principalVariation;
    if (it.depth > 1 && !it.failed)
        board.seedTable(it.depth);
    pv.clear();
    const std::int64_t start   = performanceCounter();
    int score                  = board.searchRoot(it.depth * ONE_PLY, it.low, it.high, pv);
    const double iterationTime = microsSince(start);
    it.total += iterationTime;
    if (board.stopSearch)
        return false; // an interrupted iteration counts for nothing
    const bool inside = it.low < score && score < it.high;
    if (inside) {
        // A line that ran into a draw can end in moves of another branch: cut it there.
        pv.count = std::uint32_t(board.validPrefix(pv));
        board.printSearchInfo(it.depth, pv, board.nodeCount, it.total);
        it.low  = score - ASPIRATION;
        it.high = score + ASPIRATION;
        ++it.depth;
    } else {
        it.low  = -INFINITE_SCORE;
        it.high = INFINITE_SCORE;
        score   = it.previous;
    }
    it.failed = !inside;
    // A limit reached here ends the deepening through the same flag as any other stop, but
    // only after this completed iteration has given its move.
    if (depthLimit < it.depth) {
        trace("max depth reached");
        board.stopSearch = 1;
    }
    if (board.limits.timeMode == TIME_CLOCK && stopAfterIteration(board, it, score, iterationTime))
        board.stopSearch = 1;
    if (!it.failed)
        board.bestMove = pv.moves[0];
    it.previous = score;
    return !board.stopSearch;
}

} // namespace

void ChessBoard::resetSearchTables() {
    clearOrderingTables();
    pollCounter = 0;
    stopSearch  = 0;
}

int ChessBoard::validPrefix(const PrincipalVariation& pv) {
    const int count = int(std::min<std::uint32_t>(pv.count, MAX_PLY));
    int valid       = 0;
    while (valid < count && isMoveValid(pv.moves[valid]))
        makeMove(pv.moves[valid++]);
    for (int i = valid - 1; i >= 0; --i)
        unmakeMove(pv.moves[i]);
    return valid;
}

// The last line goes into the table as exact entries, so the next iteration searches it
// first even where an entry was overwritten meanwhile.
void ChessBoard::seedTable(int depth) {
    const PrincipalVariation& pv = principalVariation;
    const int count              = int(std::min<std::uint32_t>(pv.count, MAX_PLY));
    int made                     = 0;
    for (; made < count && isMoveValid(pv.moves[made]); ++made) {
        hashTable->store(hashKey, pv.moves[made], BOUND_EXACT, depth * ONE_PLY - ONE_PLY * made,
                         pv.scores[made]);
        makeMove(pv.moves[made]);
    }
    while (made > 0)
        unmakeMove(pv.moves[--made]);
}

bool ChessBoard::think() {
    principalVariation.clear();
    hookThinkStarted();
    bestMove = NO_MOVE;
    if (bookEnabled && gameMoveCount < 20)
        bestMove = probeBook();
    nodeCount = 0;
    hookSearchStarted();
    if (!bestMove) {
        resetSearchTables();
        computeTimeLimit();
        // Deeper than the search's plies there is nothing more to find.
        const int depthLimit = std::min(
            limits.timeMode == TIME_DEPTH ? limits.depthOnlyLimit : maxDepth, int(MAX_PLY));
        Iterations it;
        while (!stopSearch && iterate(*this, it, depthLimit)) {
        }
        // A depth-only search plays the line it ends with, which after a stop is the best
        // root move so far of the interrupted iteration when it has one.
        if (limits.timeMode == TIME_DEPTH && principalVariation.moves[0])
            bestMove = principalVariation.moves[0];
        if (it.depth == 2 && !bestMove) {
            trace("no result was found ? (depth = 1)");
            principalVariation.clear();
            searchRoot(ONE_PLY, -INFINITE_SCORE, INFINITE_SCORE, principalVariation);
            printSearchInfo(1, principalVariation, nodeCount, it.total);
        }
    }
    playChosenMove();
    return true;
}

void ChessBoard::playChosenMove() {
    if (!bestMove) {
        traceAt(TRACE_ERROR, "No move found ??");
        clockRunning[WHITE] = clockRunning[BLACK] = false;
    } else if (!playGameMove(bestMove)) {
        traceAt(TRACE_ERROR, "the game record is full");
    }
    sendMove();
    hookThinkEnded();
    thinking = 0;
}

bool ChessBoard::startThinking() {
    thinking = 1;
    std::srand(unsigned(std::time(nullptr)));
    return think();
}

// The step every node takes first (nodeMustStop), beside the iterations rather than with
// the clock, whose poll the step calls.
bool ChessBoard::checkTime() {
    return !nodeMustStop(*this);
}

unsigned long ChessBoard::startThinkingThread(void* engine) {
    std::srand(unsigned(std::time(nullptr)));
    static_cast<ChessBoard*>(engine)->think();
    return 0;
}
