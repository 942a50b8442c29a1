// The root of one iteration: every legal move searched, the first with the full window and
// the others with a null window first; no draw test, no pruning and no reduction here.
#include "board/chess_board.h"
#include "movegen/ordering.h"
#include "search/search_node.h"

int ChessBoard::searchRoot(int depth, int alpha, int beta, PrincipalVariation& pv) {
    singleMove                  = false;
    const std::uint8_t wasCheck = inCheck; // the generator overwrites it
    const bool checked          = sideToMoveInCheck();
    HistoryRecord& record       = currentRecord(*this);
    record.inCheck              = checked;
    record.nodeType             = PV_NODE;

    MoveEntry* list        = moveStack;
    const int count        = std::min(generateMoves(list, checked), MOVE_STRIDE);
    gameStatus             = checked ? STATUS_CHECK : STATUS_NORMAL;
    const HashEntry* entry = hashTable->probe(hashKey);
    scoreMoves(list, count, entry ? entry->move : NO_MOVE, 0);

    const SearchNode root{depth, 0, alpha, beta, 0, PV_NODE, checked};
    PrincipalVariation childPv;
    childPv.clear();
    BoundType bound = BOUND_UPPER;
    int legal       = 0;
    for (int i = 0; i < count; ++i) {
        pickMove(list, i, count);
        const Move m = list[i].move;
        if (!makeMove(m)) {
            unmakeMove(m);
            continue;
        }
        const int score = searchRootChild(m, depth, alpha, beta, legal == 0, childPv);
        ++legal;
        unmakeMove(m);
        if (stopSearch)
            break;
        if (score >= beta) {
            rememberCutoff(root, list[i], score);
            inCheck = wasCheck;
            return beta;
        }
        if (score > alpha) {
            extendLine(pv, m, score, childPv);
            alpha = score;
            bound = BOUND_EXACT;
        }
    }
    inCheck = wasCheck;
    if (stopSearch)
        return alpha;
    singleMove = legal == 1;
    if (legal > 0) {
        hashTable->store(hashKey, pv.moves[0], bound, depth, alpha);
        return alpha;
    }
    // Mate or stalemate on the board: no line, and the score goes with the empty line so
    // the report shows it.
    pv.clear();
    const int score = checked ? -MATE_SCORE : 0;
    pv.scores[0]    = std::int16_t(score);
    gameStatus      = checked ? STATUS_MATE : STATUS_STALEMATE;
    return score;
}

// The score of the root move just made: extended like any move but never for a mate
// threat, the first with the full window, the others proven better before a full search.
int ChessBoard::searchRootChild(Move m, int depth, int alpha, int beta, bool first,
                                PrincipalVariation& childPv) {
    const bool givesCheck = sideToMoveInCheck();
    HistoryRecord& child  = currentRecord(*this);
    child.inCheck         = givesCheck;
    child.nodeType        = first ? PV_NODE : RE_SEARCH_NODE;
    const int childDepth  = depth - ONE_PLY + moveExtension(m, givesCheck, false);
    if (first)
        return -search(childDepth, MOVE_STRIDE, -beta, -alpha, childPv, true, 1);
    int score = -search(childDepth, MOVE_STRIDE, -alpha - 1, -alpha, childPv, true, 1);
    if (score > alpha && score < beta) {
        child.nodeType = PV_NODE;
        score          = -search(childDepth, MOVE_STRIDE, -beta, -alpha, childPv, true, 1);
    }
    return score;
}
