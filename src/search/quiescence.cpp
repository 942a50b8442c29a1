// The capture search at the horizon: stand pat, the table without a depth test, and the
// captures that do not lose material by the ordering's reckoning. It stores nothing; the
// full-width node that called it keeps the result.
#include "board/chess_board.h"
#include "movegen/ordering.h"
#include "search/search_node.h"

int ChessBoard::quiesce(int ply, int moveBase, int alpha, int beta, bool exactEval) {
    if (nodeMustStop(*this))
        return 0;
    hashTable->prefetch(hashKey);
    if (ply >= DEEPEST_QUIESCENCE_PLY)
        return evaluate(alpha, beta, !exactEval);
    ++nodeCount;
    const int standPat = evaluate(alpha, beta, !exactEval);
    if (standPat >= beta)
        return beta;
    alpha         = std::max(standPat, alpha);
    Move hashMove = NO_MOVE;
    if (const HashEntry* entry = hashTable->probe(hashKey)) {
        const int cutoff = tableCutoff(entry->info, alpha, beta);
        if (cutoff != NO_CUTOFF)
            return cutoff;
        hashMove = entry->move;
    }
    return searchCaptures(ply, moveBase, alpha, beta, exactEval, hashMove);
}

int ChessBoard::searchCaptures(int ply, int moveBase, int alpha, int beta, bool exactEval,
                               Move hashMove) {
    MoveEntry* list = moveStack + moveBase;
    const int count = std::min(generateCaptures(list), MOVE_STRIDE);
    scoreCapturesDeferred(list, count, hashMove);
    for (int i = 0; i < count; ++i) {
        pickMove(list, i, count);
        // Losing captures score below zero and sort last: the rest of the list is skipped.
        if (list[i].score < 0)
            break;
        const Move m = list[i].move;
        hashTable->prefetch(keyAfter(*this, m));
        if (!makeMove(m)) {
            unmakeMove(m);
            continue;
        }
        const int score = -quiesce(ply + 1, moveBase + MOVE_STRIDE, -beta, -alpha, exactEval);
        unmakeMove(m);
        if (stopSearch)
            return 0;
        if (score >= beta)
            return beta;
        if (score > alpha)
            alpha = score;
    }
    return alpha;
}
