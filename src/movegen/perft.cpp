// Perft, its statistics variant and divide: counting the leaves of the legal move tree to
// check generation, make and unmake. Each level writes its move list behind its parent's.
#include "board/chess_board.h"

namespace {

// Pieces of `us` that stand alone between their king and an enemy slider on the same line.
Bitboard pinnedPieces(const Position& p, Color us) {
    const Color them  = opponent(us);
    const Square king = p.kingSquare[us];
    Bitboard snipers =
        ((rankAttack[king][0] | fileAttack[king][0]) & p.lineSliders(them)) |
        ((diagAttack45R[king][0] | diagAttack45L[king][0]) & p.diagonalSliders(them));
    Bitboard pinned = 0;
    while (snipers) {
        Bitboard between = betweenMask[popLowest(snipers)][king] & p.bbAllPiece;
        if (between && !(between & (between - 1)) && (between & p.bbColorPiece[us]))
            pinned |= between;
    }
    return pinned;
}

} // namespace

std::uint64_t ChessBoard::perft(int depth, int listStart) {
    if (depth <= 0)
        return 1;
    if (listStart + MAX_GENERATED > MOVE_STACK_SIZE)
        return 0; // deeper than any run can reach
    MoveEntry* list     = moveStack + listStart;
    const bool checked  = sideToMoveInCheck();
    const int count     = generateMoves(list, checked);
    const Color us      = side();
    const Square king   = kingSquare[us];
    std::uint64_t total = 0;

    // At the last ply only the number of legal moves matters. Outside check, a move of an
    // unpinned piece other than the king and en passant cannot expose the king, and a king
    // step is legal when its target is safe with the king lifted; the rest go through make.
    if (depth == 1 && !checked && (bbPiece[us][KING] & bit(king))) {
        const Bitboard pinned = pinnedPieces(*this, us);
        for (int i = 0; i < count; ++i) {
            const Move m = list[i].move;
            if (movePiece(m) == KING) {
                total += isCastle(m) || !isAttackedWithout(king, moveTo(m), opponent(us));
            } else if (!isEnPassant(m) && !(pinned & bit(moveFrom(m)))) {
                ++total;
            } else {
                total += makeMove(m);
                unmakeMove(m);
            }
        }
        return total;
    }
    for (int i = 0; i < count; ++i) {
        const Move m = list[i].move;
        if (makeMove(m))
            total += perft(depth - 1, listStart + count);
        unmakeMove(m);
    }
    inCheck = checked; // the children's generation wrote their own
    return total;
}

void ChessBoard::perftStats(int depth, int listStart) {
    if (depth <= 0) {
        ++perftCounters.nodes;
        return;
    }
    if (listStart + 2 * MAX_GENERATED > MOVE_STACK_SIZE)
        return;
    MoveEntry* list    = moveStack + listStart;
    const bool checked = sideToMoveInCheck();
    const int count    = generateMoves(list, checked);
    for (int i = 0; i < count; ++i) {
        const Move m = list[i].move;
        if (makeMove(m)) {
            if (depth > 1) {
                perftStats(depth - 1, listStart + count);
            } else {
                PerftCounters& c = perftCounters;
                ++c.nodes;
                if (moveCaptured(m))
                    ++c.captures;
                if (isEnPassant(m))
                    ++c.enPassant;
                if (movePromotion(m))
                    ++c.promotions;
                if (isCastle(m))
                    ++c.castles;
                if (sideToMoveInCheck()) {
                    ++c.checks;
                    MoveEntry* replies   = list + count;
                    const int replyCount = generateMoves(replies, 1);
                    bool escaped         = false;
                    for (int r = 0; r < replyCount && !escaped; ++r) {
                        escaped = makeMove(replies[r].move);
                        unmakeMove(replies[r].move);
                    }
                    if (!escaped)
                        ++c.mates;
                }
            }
        }
        unmakeMove(m);
    }
    inCheck = checked;
}

int ChessBoard::divide(int depth) {
    MoveEntry* list    = moveStack;
    const bool checked = sideToMoveInCheck();
    const int count    = generateMoves(list, checked);
    divideCount        = 0;
    for (int i = 0; i < count && divideCount < MAX_GENERATED; ++i) {
        const Move m = list[i].move;
        // A root move that make rejects is left out of the listing.
        if (makeMove(m)) {
            DivideRow& row = divideRows[divideCount++];
            row.count      = perft(depth - 1, count);
            moveToLongText(m, row.text);
        }
        unmakeMove(m);
    }
    inCheck = checked;
    return divideCount;
}
