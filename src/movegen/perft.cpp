// Perft, its statistics variant and divide: counting the leaves of the legal move tree to
// check generation, make and unmake. Each level writes its move list behind its parent's.
// The last ply is counted without making its moves wherever the position allows: legality
// from pins and x-rays, checks from the gives-check test, and only checking moves made, to
// look for a reply.
#include "board/chess_board.h"
#include "movegen/gives_check.h"

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

enum Verdict { ILLEGAL, LEGAL, ASK_MAKE };

// Legality of the generated moves of the side to move, decided without make where that is
// safe. A king step is legal when its target is safe with the king lifted; castling was
// fully tested by its generator. Outside check, a move of an unpinned piece other than en
// passant cannot expose the king; in check the generator offers such a piece only blocks
// and captures of a lone checker, which end the check. Pinned pieces and en passant go to
// make. A position whose tracked king is missing or touches the enemy king goes to make
// whole.
struct LegalityTest {
    Bitboard pinned;
    Square king;
    Color them;
    bool usable;

    explicit LegalityTest(const Position& p)
        : pinned(pinnedPieces(p, p.side())), king(p.kingSquare[p.side()]), them(opponent(p.side())),
          usable((p.bbPiece[p.side()][KING] & bit(king)) &&
                 !(kingAttack[king] & p.bbPiece[them][KING])) {}

    Verdict of(const ChessBoard& b, Move m) const {
        if (!usable)
            return ASK_MAKE;
        if (movePiece(m) == KING)
            return isCastle(m) || !b.isAttackedWithout(king, moveTo(m), them) ? LEGAL : ILLEGAL;
        return isEnPassant(m) || (pinned & bit(moveFrom(m))) ? ASK_MAKE : LEGAL;
    }
};

// Whether the side to move, in check, has a legal reply; stops at the first. `spare` has
// room for one list.
bool hasLegalReply(ChessBoard& b, MoveEntry* spare) {
    const int count = b.generateMoves(spare, 1);
    const LegalityTest legality(b);
    for (int i = 0; i < count; ++i) {
        const Move m    = spare[i].move;
        const Verdict v = legality.of(b, m);
        if (v == LEGAL)
            return true;
        if (v == ASK_MAKE) {
            const bool legal = b.makeMove(m);
            b.unmakeMove(m);
            if (legal)
                return true;
        }
    }
    return false;
}

// The counters every legal leaf move adds to from its move word alone.
inline void tallyMoveWord(PerftCounters& c, Move m) {
    ++c.nodes;
    c.captures += moveCaptured(m) != EMPTY;
    c.enPassant += isEnPassant(m);
    c.promotions += movePromotion(m) != EMPTY;
    c.castles += isCastle(m);
}

// The check and mate counters of a legal move; the move is made here only when it checks.
void tallyCheck(ChessBoard& b, PerftCounters& c, Move m, MoveEntry* spare) {
    b.makeMove(m);
    ++c.checks;
    c.mates += !hasLegalReply(b, spare);
    b.unmakeMove(m);
}

// The seven counters of the legal moves in `list`, the last ply of a statistics walk.
void countLeaves(ChessBoard& b, const MoveEntry* list, int count, PerftCounters& c) {
    MoveEntry* spare = const_cast<MoveEntry*>(list) + count;
    const LegalityTest legality(b);
    const CheckSquares checks = checkSquaresOf(b);
    const bool quick          = checks.reliable;
    for (int i = 0; i < count; ++i) {
        const Move m    = list[i].move;
        const Verdict v = quick ? legality.of(b, m) : ASK_MAKE;
        if (v == LEGAL) {
            tallyMoveWord(c, m);
            if (givesCheck(b, checks, m))
                tallyCheck(b, c, m, spare);
        } else if (v == ASK_MAKE) {
            if (b.makeMove(m)) {
                tallyMoveWord(c, m);
                if (b.sideToMoveInCheck()) {
                    ++c.checks;
                    c.mates += !hasLegalReply(b, spare);
                }
            }
            b.unmakeMove(m);
        }
    }
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
    std::uint64_t total = 0;

    // At the last ply only the number of legal moves matters.
    if (depth == 1 && !checked) {
        const LegalityTest legality(*this);
        for (int i = 0; i < count; ++i) {
            const Move m    = list[i].move;
            const Verdict v = legality.of(*this, m);
            if (v == ASK_MAKE) {
                total += makeMove(m);
                unmakeMove(m);
            } else {
                total += v == LEGAL;
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
    if (depth == 1) {
        countLeaves(*this, list, count, perftCounters);
    } else {
        for (int i = 0; i < count; ++i) {
            const Move m = list[i].move;
            if (makeMove(m))
                perftStats(depth - 1, listStart + count);
            unmakeMove(m);
        }
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
