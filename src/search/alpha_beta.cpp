// The full-width principal-variation search below the root: draws, the table, null move,
// internal iterative deepening, futility, extensions, late-move reductions and the move
// loop. The root lives in root.cpp and the capture search in quiescence.cpp.
#include "board/chess_board.h"
#include "movegen/ordering.h"
#include "search/search_node.h"

#include <cstdlib>

namespace {

// History counters stop here, far above anything a search of normal length reaches, so that
// days of analysis cannot overflow them or the ordering score built on them.
constexpr std::int32_t HISTORY_CEILING = 1 << 30;

// Futility margins by remaining depth: a pawn and a bit one ply from the horizon, a minor
// piece and a half at two plies, a queen at three.
int futilityMargin(int depth) {
    return depth < 2 * ONE_PLY ? 200 : depth < 3 * ONE_PLY ? 500 : 975;
}

// Pushes the node's key and tells whether the position occurred before since the last
// irreversible move. The look back includes the entry that ends it.
bool pushRepetition(ChessBoard& board, Move reachedBy) {
    const bool irreversible = moveCaptured(reachedBy) != EMPTY || movePiece(reachedBy) == PAWN;
    const std::uint64_t key = board.hashKey;
    board.repetitionStack[board.repetitionTop++] = {key, irreversible};
    int seen                                     = 0;
    for (int i = board.repetitionTop - 1; i >= 0; --i) {
        if (board.repetitionStack[i].key == key && ++seen > 1)
            return true;
        if (board.repetitionStack[i].irreversible)
            break;
    }
    return false;
}

} // namespace

int ChessBoard::search(int depth, int moveBase, int alpha, int beta, PrincipalVariation& pv,
                       bool nullAllowed, int ply) {
    if (nodeMustStop(*this))
        return 0;
    hashTable->prefetch(hashKey);
    ++nodeCount;
    const HistoryRecord& record = currentRecord(*this);
    SearchNode node{depth, moveBase, alpha, beta, ply, record.nodeType, record.inCheck != 0};
    if (ply > DEEPEST_SEARCH_PLY)
        return evaluate(alpha, beta, node.type != PV_NODE);
    if (fiftyCounter > 99)
        return 0;
    // Every return below pops this node's entry, so the stack holds one entry a node on the
    // current line: at most two a ply (a node and its internal deepening), inside its room.
    const bool repeated = pushRepetition(*this, record.move);
    const int score     = repeated ? 0 : searchNode(node, pv, nullAllowed);
    --repetitionTop;
    return score;
}

int ChessBoard::searchNode(SearchNode& node, PrincipalVariation& pv, bool nullAllowed) {
    // PV nodes never take their move or a cut-off from this probe.
    if (node.depth >= ONE_PLY && node.type != PV_NODE) {
        const int cutoff = probeTable(node);
        if (cutoff != NO_CUTOFF)
            return cutoff;
    }
    if (node.depth < ONE_PLY)
        return quiesceLeaf(node, pv);

    // The children's line buffer, for null move and IID too. It starts empty: a null-move
    // child that fails low stores its buffer's first move as the position's hash move.
    PrincipalVariation local;
    if (!node.inCheck && nullAllowed && gameStage < 3 && material[sideToMove] > 400 &&
        node.type != PV_NODE) {
        const int cutoff = tryNullMove(node, local);
        if (cutoff != NO_CUTOFF)
            return cutoff;
    }
    if (!node.hashMove && node.depth > 3 * ONE_PLY && nullAllowed && node.type == PV_NODE) {
        internalDeepening(node, local);
        if (stopSearch)
            return 0;
    }
    node.futile = isFutile(node);
    return searchMoves(node, pv, local);
}

int ChessBoard::probeTable(SearchNode& node) {
    const HashEntry* entry = hashTable->probe(hashKey);
    if (!entry)
        return NO_CUTOFF;
    node.hashMove = entry->move;
    if (infoDepth(entry->info) < node.depth)
        return NO_CUTOFF;
    return tableCutoff(entry->info, node.alpha, node.beta);
}

// Below one ply the node is a quiescence search whose result the table keeps. Check and PV
// nodes ask the evaluation for its full score, never its lazy estimate.
int ChessBoard::quiesceLeaf(const SearchNode& node, PrincipalVariation& pv) {
    pv.clear();
    const int score = quiesce(node.ply, node.moveBase, node.alpha, node.beta,
                              node.inCheck || node.type == PV_NODE);
    if (stopSearch)
        return 0;
    const BoundType bound = score >= node.beta    ? BOUND_LOWER
                            : score <= node.alpha ? BOUND_UPPER
                                                  : BOUND_EXACT;
    hashTable->store(hashKey, NO_MOVE, bound, node.depth, score);
    return score;
}

// Passing: if the opponent still cannot reach beta with a free move, this node fails high.
// The search behind the pass is three plies shallower, four from depth 7 on; a pass that
// gets mated marks a threat that extends every move of the node.
int ChessBoard::tryNullMove(SearchNode& node, PrincipalVariation& local) {
    const int reduction = node.depth > 6 * ONE_PLY ? ONE_PLY : 0;
    makeNullMove();
    HistoryRecord& child = currentRecord(*this);
    child.inCheck        = 0;
    child.nodeType       = childNodeType[node.type];
    const int score      = node.depth > reduction + 3 * ONE_PLY
                               ? -search(node.depth - reduction - 3 * ONE_PLY, node.moveBase, -node.beta,
                                         -node.beta + 1, local, false, node.ply + 1)
                               : -quiesce(node.ply, node.moveBase, -node.beta, -node.beta + 1, false);
    unmakeNullMove();
    if (stopSearch)
        return 0;
    if (score >= node.beta) {
        hashTable->store(hashKey, NO_MOVE, BOUND_LOWER, node.depth, node.beta);
        return node.beta;
    }
    node.mateThreat = score <= -MATE_BOUND;
    return NO_CUTOFF;
}

// A PV node without a move to try first searches itself two plies shallower and takes the
// move that search left in the table.
void ChessBoard::internalDeepening(SearchNode& node, PrincipalVariation& local) {
    search(node.depth - 2 * ONE_PLY, node.moveBase, node.alpha, node.beta, local, false, node.ply);
    const HashEntry* entry = hashTable->probe(hashKey);
    node.hashMove          = entry ? entry->move : NO_MOVE;
}

bool ChessBoard::isFutile(const SearchNode& node) {
    if (node.inCheck || node.depth >= 4 * ONE_PLY || node.type == PV_NODE || gameStage >= 2)
        return false;
    return evaluate(node.alpha, node.beta, 1) + futilityMargin(node.depth) <= node.alpha;
}

int ChessBoard::searchMoves(SearchNode& node, PrincipalVariation& pv, PrincipalVariation& childPv) {
    MoveEntry* list = moveStack + node.moveBase;
    // Only contrived positions have more than a stride of moves; the rest would be
    // overwritten by the child's list.
    const int count = std::min(generateMoves(list, node.inCheck), MOVE_STRIDE);
    gameStatus      = node.inCheck ? STATUS_CHECK : STATUS_NORMAL;
    scoreMovesDeferred(list, count, node.hashMove, node.ply);
    BoundType bound = BOUND_UPPER;
    int searched    = 0;
    childPv.clear();
    for (int i = 0; i < count; ++i) {
        pickMove(list, i, count);
        const Move m = list[i].move;
        hashTable->prefetch(keyAfter(*this, m));
        if (!makeMove(m)) {
            unmakeMove(m);
            continue;
        }
        const bool givesCheck        = sideToMoveInCheck();
        currentRecord(*this).inCheck = givesCheck;
        const int extension          = moveExtension(m, givesCheck, node.mateThreat);
        if (node.futile && searched > 0 && !givesCheck && extension == 0 && !moveCaptured(m) &&
            !movePromotion(m)) {
            unmakeMove(m);
            ++searched;
            continue;
        }
        const int score = searchChild(node, list[i], extension, givesCheck, searched, childPv);
        ++searched;
        unmakeMove(m);
        if (stopSearch)
            return 0;
        if (score >= node.beta) {
            rememberCutoff(node, list[i], score);
            return node.beta;
        }
        if (score > node.alpha) {
            bound = BOUND_EXACT;
            extendLine(pv, m, score, childPv);
            node.alpha = score;
        }
    }
    if (searched > 0) {
        // pv belongs to the caller and is not cleared per child: a node that failed low
        // stores whatever first move the buffer last held.
        hashTable->store(hashKey, pv.moves[0], bound, node.depth, node.alpha);
        return node.alpha;
    }
    pv.count   = 0;
    gameStatus = node.inCheck ? STATUS_MATE : STATUS_STALEMATE;
    return node.inCheck ? node.ply - MATE_SCORE : 0;
}

// One move's score: the first with the full window, the others with a null window (first
// reduced by a ply when nothing marks them as special), searched again when they may be
// better.
int ChessBoard::searchChild(const SearchNode& node, const MoveEntry& entry, int extension,
                            bool givesCheck, int searched, PrincipalVariation& childPv) {
    HistoryRecord& child = currentRecord(*this);
    const int next = node.moveBase + MOVE_STRIDE, ply = node.ply + 1;
    const int depth = node.depth - ONE_PLY + extension, alpha = node.alpha, beta = node.beta;
    if (searched == 0) {
        child.nodeType = childNodeType[node.type];
        return -search(depth, next, -beta, -alpha, childPv, true, ply);
    }
    int score       = alpha + 1;
    const Move m    = entry.move;
    const bool late = node.depth >= 3 * ONE_PLY && !givesCheck && extension == 0 && searched >= 2 &&
                      node.type != PV_NODE && !moveCaptured(m) && !movePromotion(m) &&
                      !hasKillerMark(entry.score);
    if (late) {
        child.nodeType = childNodeType[node.type];
        score          = -search(depth - ONE_PLY, next, -alpha - 1, -alpha, childPv, true, ply);
    }
    if (score > alpha) {
        child.nodeType = RE_SEARCH_NODE;
        score          = -search(depth, next, -alpha - 1, -alpha, childPv, true, ply);
        if (score > alpha && score < beta) {
            child.nodeType = PV_NODE;
            score          = -search(depth, next, -beta, -alpha, childPv, true, ply);
        }
    }
    return score;
}

// A move that reached beta: the table keeps it, and a move ordered below the winning
// captures that does not promote becomes a killer and gains history by the square of the
// remaining plies.
void ChessBoard::rememberCutoff(const SearchNode& node, const MoveEntry& entry, int score) {
    const Move m = entry.move;
    hashTable->store(hashKey, m, BOUND_LOWER, node.depth, node.beta);
    if (std::abs(score) > MATE_BOUND)
        mateKiller[node.ply] = m;
    if (entry.score >= WINNING_CAPTURE || movePromotion(m))
        return;
    if (killerMove1[node.ply] != m) {
        killerMove2[node.ply] = killerMove1[node.ply];
        killerMove1[node.ply] = m;
    }
    const int plies      = node.depth / ONE_PLY;
    std::int32_t& record = historyTable[sideToMove][moveFrom(m)][moveTo(m)];
    record               = std::min(record + plies * plies, HISTORY_CEILING);
}
