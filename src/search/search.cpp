// The searches. For now a placeholder that plays the first legal move.
#include "board/chess_board.h"

int ChessBoard::search(int, int, int, int, PrincipalVariation& pv, bool, int) {
    pv.clear();
    return 0;
}

int ChessBoard::searchRoot(int, int, int, PrincipalVariation& pv) {
    pv.clear();
    return 0;
}

int ChessBoard::quiesce(int, int, int, int, bool) { return 0; }

bool ChessBoard::think() {
    hookThinkStarted();
    bestMove        = NO_MOVE;
    const int count = generateMoves(moveStack, sideToMoveInCheck());
    for (int i = 0; i < count && !bestMove; ++i) {
        if (makeMove(moveStack[i].move)) bestMove = moveStack[i].move;
        unmakeMove(moveStack[i].move);
    }
    if (bestMove) playGameMove(bestMove);
    sendMove();
    hookThinkEnded();
    thinking = 0;
    return true;
}

bool ChessBoard::startThinking() {
    thinking = 1;
    return think();
}

bool ChessBoard::checkTime() { return true; }

void ChessBoard::setTimeMode(int mode, std::int64_t value) {
    switch (mode) {
    case TIME_DEPTH: depthOnlyLimit = int(value); break;
    case TIME_NODES: nodeLimit = value; break;
    case TIME_MOVETIME: moveTime = std::uint32_t(value); break;
    case TIME_CLOCK:
    case TIME_INFINITE: break;
    default: return;
    }
    timeMode = mode;
}
