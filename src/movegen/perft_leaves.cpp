// The last ply of perft's statistics walk. Outside check the moves are counted straight from
// each piece's attack set, without a move list: legality from pins and x-rays, captures from
// the enemy's squares, checks from the gives-check squares. Only the moves that give check
// are made, to look for one legal reply, and the captures en passant, whose legality make
// decides. In check, or in a position the shortcuts cannot trust, the generated list is
// walked move by move instead. The counts must be those of the generators in generate.cpp,
// whose rules both take from move_rules.h, and which the tests hold them to.
#include "movegen/perft_leaves.h"

#include "movegen/gives_check.h"
#include "movegen/move_rules.h"

namespace {

// The mover's pieces pinned to his king, each with the squares it may still move to: the
// line between king and pinner, the pinner's square included.
struct Pins {
    Bitboard pinned = 0;
    int count       = 0;
    Square square[8];
    Bitboard ray[8];

    Pins(const Position& p, Color us) {
        const Square king = p.kingSquare[us];
        forEachLoneBlocker(p, king, opponent(us), us, [&](Square slider, Bitboard blocker) {
            pinned |= blocker;
            square[count] = lowestSquare(blocker);
            ray[count++]  = betweenMask[slider][king] | bit(slider);
        });
    }
    Bitboard rayOf(Square s) const {
        for (int i = 0; i < count; ++i)
            if (square[i] == s)
                return ray[i];
        return 0;
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

// The counters a legal move adds to from its move word alone.
inline void tallyMoveWord(PerftCounters& c, Move m) {
    ++c.nodes;
    c.captures += moveCaptured(m) != EMPTY;
    c.enPassant += isEnPassant(m);
    c.promotions += movePromotion(m) != EMPTY;
    c.castles += isCastle(m);
}

// The check and mate counters of a legal move known to give check.
void tallyCheck(ChessBoard& b, PerftCounters& c, Move m, MoveEntry* spare) {
    b.makeMove(m);
    ++c.checks;
    c.mates += !hasLegalReply(b, spare);
    b.unmakeMove(m);
}

// Every counter of a move whose legality only make can tell.
void tallyByMake(ChessBoard& b, PerftCounters& c, Move m, MoveEntry* spare) {
    if (b.makeMove(m)) {
        tallyMoveWord(c, m);
        if (b.sideToMoveInCheck()) {
            ++c.checks;
            c.mates += !hasLegalReply(b, spare);
        }
    }
    b.unmakeMove(m);
}

// The generated list, move by move: in check, and where the shortcuts do not hold.
void countListed(ChessBoard& b, MoveEntry* list, bool checked, PerftCounters& c) {
    const int count  = b.generateMoves(list, checked);
    MoveEntry* spare = list + count;
    const LegalityTest legality(b);
    const CheckSquares checks = checkSquaresOf(b);
    for (int i = 0; i < count; ++i) {
        const Move m    = list[i].move;
        const Verdict v = checks.reliable ? legality.of(b, m) : ASK_MAKE;
        if (v == ASK_MAKE) {
            tallyByMake(b, c, m, spare);
        } else if (v == LEGAL) {
            tallyMoveWord(c, m);
            if (givesCheck(b, checks, m))
                tallyCheck(b, c, m, spare);
        }
    }
}

// Check squares that match no move, for the count without checks.
constexpr CheckSquares NO_CHECKS = {};

// The legal moves of a position not in check, counted piece by piece from attack sets. The
// pieces move as the generators move them: knights, bishops, rooks, queens, the tracked
// king, castling, pawn pushes and captures with every promotion, en passant. Without
// WITH_CHECKS it reads no check squares and counts the moves and captures only, for the plain
// perft.
template <Color US, bool WITH_CHECKS> class BulkCount {
public:
    BulkCount(ChessBoard& board, const CheckSquares& checks, PerftCounters& counters,
              MoveEntry* spareList)
        : b(board), cs(checks), c(counters), spare(spareList), pins(board, US),
          own(board.bbColorPiece[US]), enemy(board.bbColorPiece[THEM]), empty(~board.bbAllPiece) {}

    void count() {
        for (Bitboard n = b.bbPiece[US][KNIGHT]; n;) {
            const Square from = popLowest(n);
            addTargets(KNIGHT, from, knightAttack[from] & ~own);
        }
        for (Bitboard s = b.bbPiece[US][BISHOP]; s;) {
            const Square from = popLowest(s);
            addTargets(BISHOP, from, b.bishopAttacks(from) & ~own);
        }
        for (Bitboard s = b.bbPiece[US][ROOK]; s;) {
            const Square from = popLowest(s);
            addTargets(ROOK, from, b.rookAttacks(from) & ~own);
        }
        for (Bitboard s = b.bbPiece[US][QUEEN]; s;) {
            const Square from = popLowest(s);
            addTargets(QUEEN, from, b.queenAttacks(from) & ~own);
        }
        kingMoves();
        pawnMoves();
        enPassant();
    }

private:
    using S                      = Side<US>;
    static constexpr Color THEM  = S::THEM;
    static constexpr int FORWARD = S::FORWARD;

    // One piece's legal moves to the squares of `targets`, none of them a promotion.
    void addTargets(Piece piece, Square from, Bitboard targets) {
        if (pins.pinned & bit(from))
            targets &= pins.rayOf(from);
        c.nodes += popCount(targets);
        c.captures += popCount(targets & enemy);
        if constexpr (WITH_CHECKS)
            tallyChecks(piece, from, targets);
    }

    void tallyChecks(Piece piece, Square from, Bitboard targets) {
        Bitboard checking = targets & cs.fromSquares[piece];
        if (cs.discoverers & bit(from))
            for (Bitboard t = targets & ~checking; t;) {
                const Square to = popLowest(t);
                if (direction[from][cs.king] != direction[to][cs.king])
                    checking |= bit(to);
            }
        while (checking) {
            const Square to = popLowest(checking);
            Move m          = makeMoveWord(from, to, piece, Piece(b.pieceArray[to]));
            if (piece == PAWN && (to - from == 2 * FORWARD))
                m |= MOVE_DOUBLE;
            tallyCheck(b, c, m, spare);
        }
    }

    // The king's steps are judged with the king lifted off the board, so that a slider's
    // line through its square counts.
    void kingMoves() {
        const Square king = b.kingSquare[US];
        Bitboard safe     = 0;
        if (Bitboard t = kingAttack[king] & ~own) {
            Occupancy lifted = b.occupancy();
            lifted.remove(king);
            while (t) {
                const Square to = popLowest(t);
                if (!attackedIn(lifted, to, THEM, b.bbPiece[THEM]))
                    safe |= bit(to);
            }
        }
        addTargets(KING, king, safe);
        castling(safe);
    }

    // The king is not in check, and the safety of the squares next to it is known from its
    // steps.
    void castling(Bitboard safe) {
        forEachCastle<US>(
            b,
            [&](Square s) {
                return s != b.kingSquare[US] && !(safe & bit(s)) && b.isAttacked(s, THEM);
            },
            [&](Move m) { addCastle(m); });
    }

    void addCastle(Move m) {
        tallyMoveWord(c, m);
        if (WITH_CHECKS && castleGivesCheck(m))
            tallyCheck(b, c, m, spare);
    }

    // Pawns that are pinned, may uncover a check or promote go one by one; the others, the
    // most of them, go all at once by shifts.
    void pawnMoves() {
        const Bitboard pawns   = b.bbPiece[US][PAWN];
        const Bitboard special = pawns & (S::SEVENTH_RANK | pins.pinned | cs.discoverers);
        for (Bitboard p = special; p;)
            pawnMoves(popLowest(p));
        const Bitboard plain = pawns & ~special;
        const Bitboard one   = S::advance(plain) & empty;
        const Bitboard two   = S::advance(S::advance(plain & S::SECOND_RANK) & empty) & empty;
        const Bitboard west  = S::template shift<S::WEST_CAPTURE>(plain & ~FILE_A) & enemy;
        const Bitboard east  = S::template shift<S::EAST_CAPTURE>(plain & ~FILE_H) & enemy;
        c.nodes += popCount(one) + popCount(two) + popCount(west) + popCount(east);
        c.captures += popCount(west) + popCount(east);
        if constexpr (WITH_CHECKS) {
            const Bitboard direct = cs.fromSquares[PAWN];
            pawnChecks(one & direct, FORWARD, 0);
            pawnChecks(two & direct, 2 * FORWARD, MOVE_DOUBLE);
            pawnChecks(west & direct, S::WEST_CAPTURE, 0);
            pawnChecks(east & direct, S::EAST_CAPTURE, 0);
        }
    }

    void pawnChecks(Bitboard targets, int step, Move flag) {
        while (targets) {
            const Square to = popLowest(targets);
            const Move m    = makeMoveWord(to - step, to, PAWN, Piece(b.pieceArray[to])) | flag;
            tallyCheck(b, c, m, spare);
        }
    }

    // Only the rook can check: the king lands on a square the enemy king does not touch, as
    // castling is never into check, and it uncovers no line, as nothing of the mover stands
    // behind its home square. The rook sees along its rank with the king gone from it.
    bool castleGivesCheck(Move m) const {
        const Square from = moveFrom(m), to = moveTo(m);
        const Square rook = to > from ? from + 1 : from - 1;
        const Bitboard onRank =
            (b.bbAllPiece ^ bit(from) ^ bit(to) ^ bit(to > from ? from + 3 : from - 4)) | bit(rook);
        return (slidingAttack[rook].rank[(onRank >> (8 * rankOf(rook) + 1)) & 63] |
                b.fileAttacks(rook)) &
               bit(cs.king);
    }

    void pawnMoves(Square from) {
        Bitboard push = S::advance(bit(from)) & empty;
        if (bit(from) & S::SECOND_RANK)
            push |= S::advance(push) & empty;
        const Bitboard targets = push | (pawnAttack[US][from] & enemy);
        if (bit(from) & S::SEVENTH_RANK)
            promotions(from, targets);
        else
            addTargets(PAWN, from, targets);
    }

    // Four moves a target square, each promotion's check tested on its own.
    void promotions(Square from, Bitboard targets) {
        if (pins.pinned & bit(from))
            targets &= pins.rayOf(from);
        while (targets) {
            const Square to      = popLowest(targets);
            const Piece captured = Piece(b.pieceArray[to]);
            c.nodes += 4;
            c.promotions += 4;
            c.captures += captured != EMPTY ? 4 : 0;
            for (Piece promotion : {QUEEN, ROOK, KNIGHT, BISHOP}) {
                const Move m = makeMoveWord(from, to, PAWN, captured, promotion);
                if (WITH_CHECKS && givesCheckSpecial(b, cs.king, m))
                    tallyCheck(b, c, m, spare);
            }
        }
    }

    // Make judges each capture en passant, as it may uncover the king.
    void enPassant() {
        const Square target = enPassantTarget<US>(b);
        if (target < 0)
            return;
        for (Bitboard p = pawnAttack[THEM][target] & b.bbPiece[US][PAWN]; p;) {
            const Move m = makeMoveWord(popLowest(p), target, PAWN, PAWN) | MOVE_EP;
            if (WITH_CHECKS) {
                tallyByMake(b, c, m, spare);
            } else {
                c.nodes += b.makeMove(m);
                b.unmakeMove(m);
            }
        }
    }

    ChessBoard& b;
    const CheckSquares& cs;
    PerftCounters& c;
    MoveEntry* spare;
    const Pins pins;
    const Bitboard own, enemy, empty;
};

} // namespace

LegalityTest::LegalityTest(const Position& p)
    : pinned(Pins(p, p.side()).pinned), king(p.kingSquare[p.side()]), them(opponent(p.side())),
      usable((p.bbPiece[p.side()][KING] & bit(king)) &&
             !(kingAttack[king] & p.bbPiece[them][KING])) {}

void countLeafMoves(ChessBoard& b, int listStart, PerftCounters& c, bool afterLegalMove) {
    MoveEntry* list    = b.moveStack + listStart;
    const bool checked = b.sideToMoveInCheck();
    const Color us     = b.side();
    if (!checked && (b.bbPiece[us][KING] & bit(b.kingSquare[us]))) {
        const CheckSquares checks = checkSquaresOf(b, afterLegalMove);
        if (checks.reliable) {
            b.inCheck = 0;
            if (us == WHITE)
                BulkCount<WHITE, true>(b, checks, c, list).count();
            else
                BulkCount<BLACK, true>(b, checks, c, list).count();
            return;
        }
    }
    countListed(b, list, checked, c);
}

std::uint64_t countLegalLeaves(ChessBoard& b) {
    const Color us = b.side();
    PerftCounters c{};
    b.inCheck = 0;
    if (us == WHITE)
        BulkCount<WHITE, false>(b, NO_CHECKS, c, nullptr).count();
    else
        BulkCount<BLACK, false>(b, NO_CHECKS, c, nullptr).count();
    return c.nodes;
}
