// Pseudo-legal move generation in three lists, exactly as the search consumes them:
// captures (with every promotion and en passant), quiet moves (with castling and double
// steps) and check evasions. Make has the last word on legality. Squares are walked lowest
// first, so equal-scored moves are always tried in the same order.
#include "board/chess_board.h"
#include "movegen/move_rules.h"

namespace {

// Writes the four promotions of one pawn move, queen first, then rook, knight, bishop.
inline MoveEntry* addPromotions(MoveEntry* out, Square from, Square to, Piece captured) {
    for (Piece promotion : {QUEEN, ROOK, KNIGHT, BISHOP})
        (out++)->move = makeMoveWord(from, to, PAWN, captured, promotion);
    return out;
}

inline Bitboard pieceAttacks(const Position& p, Piece piece, Square s) {
    switch (piece) {
    case KNIGHT:
        return knightAttack[s];
    case BISHOP:
        return p.bishopAttacks(s);
    case ROOK:
        return p.rookAttacks(s);
    case QUEEN:
        return p.queenAttacks(s);
    default:
        return kingAttack[s];
    }
}

// The pieces of one kind, each to the squares of `targets`. The kind is a template argument
// so that the attack lookup is chosen when compiling, not per piece.
template <Piece P>
MoveEntry* addMovesOf(const Position& p, Bitboard pieces, Bitboard targets, MoveEntry* out) {
    while (pieces) {
        const Square from = popLowest(pieces);
        for (Bitboard to = pieceAttacks(p, P, from) & targets; to;) {
            const Square t = popLowest(to);
            (out++)->move  = makeMoveWord(from, t, P, Piece(p.pieceArray[t]));
        }
    }
    return out;
}

// Knights, bishops, rooks, queens and the king, each to the squares of `targets`.
inline MoveEntry* addPieceMoves(const Position& p, Color us, Bitboard targets, MoveEntry* out) {
    out = addMovesOf<KNIGHT>(p, p.bbPiece[us][KNIGHT], targets, out);
    out = addMovesOf<BISHOP>(p, p.bbPiece[us][BISHOP], targets, out);
    out = addMovesOf<ROOK>(p, p.bbPiece[us][ROOK], targets, out);
    out = addMovesOf<QUEEN>(p, p.bbPiece[us][QUEEN], targets, out);
    return addMovesOf<KING>(p, movingKing(p, us), targets, out);
}

template <Color US> MoveEntry* addEnPassant(const Position& p, Square target, MoveEntry* out) {
    for (Bitboard pawns = pawnAttack[Side<US>::THEM][target] & p.bbPiece[US][PAWN]; pawns;)
        (out++)->move = makeMoveWord(popLowest(pawns), target, PAWN, PAWN) | MOVE_EP;
    return out;
}

template <Color US> int captures(const Position& p, MoveEntry* list) {
    using S              = Side<US>;
    const Bitboard enemy = p.bbColorPiece[S::THEM];
    MoveEntry* out       = addPieceMoves(p, US, enemy, list);

    const Bitboard pawns = p.bbPiece[US][PAWN];
    for (Bitboard to = S::advance(pawns & S::SEVENTH_RANK) & ~p.bbAllPiece; to;) {
        Square t = popLowest(to);
        out      = addPromotions(out, t - S::FORWARD, t, EMPTY);
    }
    // Only the pawns that have something to take are walked, lowest first as ever.
    for (Bitboard from = pawns & S::capturersOf(enemy); from;) {
        Square f = popLowest(from);
        for (Bitboard to = pawnAttack[US][f] & enemy; to;) {
            Square t       = popLowest(to);
            Piece captured = Piece(p.pieceArray[t]);
            if (S::onLastRank(t))
                out = addPromotions(out, f, t, captured);
            else
                (out++)->move = makeMoveWord(f, t, PAWN, captured);
        }
    }
    if (Square target = enPassantTarget<US>(p); target >= 0)
        out = addEnPassant<US>(p, target, out);
    return int(out - list);
}

template <Color US> MoveEntry* addCastling(const Position& p, MoveEntry* out) {
    forEachCastle<US>(
        p, [&](Square s) { return p.isAttacked(s, opponent(US)); },
        [&](Move m) { (out++)->move = m; });
    return out;
}

template <Color US> int quiets(const Position& p, MoveEntry* list) {
    using S              = Side<US>;
    const Bitboard empty = ~p.bbAllPiece;
    MoveEntry* out       = addPieceMoves(p, US, empty, list);
    out                  = addCastling<US>(p, out);

    const Bitboard pawns = p.bbPiece[US][PAWN];
    for (Bitboard to = S::advance(pawns & ~S::SEVENTH_RANK) & empty; to;) {
        Square t      = popLowest(to);
        (out++)->move = makeMoveWord(t - S::FORWARD, t, PAWN);
    }
    const Bitboard once = S::advance(pawns & S::SECOND_RANK) & empty;
    for (Bitboard to = S::advance(once) & empty; to;) {
        Square t      = popLowest(to);
        (out++)->move = makeMoveWord(t - 2 * S::FORWARD, t, PAWN) | MOVE_DOUBLE;
    }
    return int(out - list);
}

// Non-king moves onto the squares between a distant slider and the king.
template <Color US> MoveEntry* addBlocks(const Position& p, Bitboard between, MoveEntry* out) {
    using S              = Side<US>;
    const Bitboard pawns = p.bbPiece[US][PAWN];
    for (Bitboard to = S::advance(pawns) & between; to;) {
        Square t = popLowest(to);
        if (S::onLastRank(t))
            out = addPromotions(out, t - S::FORWARD, t, EMPTY);
        else
            (out++)->move = makeMoveWord(t - S::FORWARD, t, PAWN);
    }
    const Bitboard once = S::advance(pawns & S::SECOND_RANK) & ~p.bbAllPiece;
    for (Bitboard to = S::advance(once) & between; to;) {
        Square t      = popLowest(to);
        (out++)->move = makeMoveWord(t - 2 * S::FORWARD, t, PAWN) | MOVE_DOUBLE;
    }
    for (Piece piece : {KNIGHT, BISHOP, ROOK, QUEEN})
        for (Bitboard pieces = p.bbPiece[US][piece]; pieces;) {
            Square from = popLowest(pieces);
            for (Bitboard to = pieceAttacks(p, piece, from) & between; to;)
                (out++)->move = makeMoveWord(from, popLowest(to), piece);
        }
    // A pawn taking en passant lands on an empty square, which may be on the checking line.
    if (Square target = enPassantTarget<US>(p); target >= 0 && (between & bit(target)))
        out = addEnPassant<US>(p, target, out);
    return out;
}

// Every non-king capture of the checker on square c.
template <Color US> MoveEntry* addCheckerCaptures(const Position& p, Square c, MoveEntry* out) {
    using S              = Side<US>;
    const Piece captured = Piece(p.pieceArray[c]);
    for (Bitboard from = pawnAttack[S::THEM][c] & p.bbPiece[US][PAWN]; from;) {
        Square f = popLowest(from);
        if (S::onLastRank(c))
            out = addPromotions(out, f, c, captured);
        else
            (out++)->move = makeMoveWord(f, c, PAWN, captured);
    }
    for (Piece piece : {KNIGHT, BISHOP, ROOK, QUEEN})
        for (Bitboard from = pieceAttacks(p, piece, c) & p.bbPiece[US][piece]; from;)
            (out++)->move = makeMoveWord(popLowest(from), c, piece, captured);
    // The checker may be the pawn that has just stepped twice.
    if (Square target = enPassantTarget<US>(p); target >= 0 && target - S::FORWARD == c)
        out = addEnPassant<US>(p, target, out);
    return out;
}

template <Color US> int evasions(const Position& p, MoveEntry* list) {
    using S                 = Side<US>;
    constexpr Color THEM    = S::THEM;
    const Square king       = p.kingSquare[US];
    MoveEntry* out          = list;
    const Bitboard checkers = (pawnAttack[US][king] & p.bbPiece[THEM][PAWN]) |
                              (knightAttack[king] & p.bbPiece[THEM][KNIGHT]) |
                              (p.diagAttacks(king) & p.diagonalSliders(THEM)) |
                              (p.rookAttacks(king) & p.lineSliders(THEM));
    if (movingKing(p, US))
        for (Bitboard to = kingAttack[king] & ~p.bbColorPiece[US]; to;) {
            Square t      = popLowest(to);
            (out++)->move = makeMoveWord(king, t, KING, Piece(p.pieceArray[t]));
        }
    if (popCount(checkers) != 1)
        return int(out - list);

    const Square checker = lowestSquare(checkers);
    const Piece kind     = Piece(p.pieceArray[checker]);
    if (kind >= BISHOP && kind <= QUEEN && !(kingAttack[king] & bit(checker)))
        out = addBlocks<US>(p, betweenMask[checker][king], out);
    out = addCheckerCaptures<US>(p, checker, out);
    return int(out - list);
}

} // namespace

int ChessBoard::generateCaptures(MoveEntry* list) const {
    return sideToMove == WHITE ? captures<WHITE>(*this, list) : captures<BLACK>(*this, list);
}

int ChessBoard::generateQuiets(MoveEntry* list) const {
    return sideToMove == WHITE ? quiets<WHITE>(*this, list) : quiets<BLACK>(*this, list);
}

int ChessBoard::generateEvasions(MoveEntry* list) const {
    return sideToMove == WHITE ? evasions<WHITE>(*this, list) : evasions<BLACK>(*this, list);
}

int ChessBoard::generatePseudoLegalMoves(MoveEntry* list) const {
    if (sideToMoveInCheck())
        return generateEvasions(list);
    const int count = generateCaptures(list);
    return count + generateQuiets(list + count);
}

int ChessBoard::generateMoves(MoveEntry* list, int inCheckNow) {
    if (inCheckNow) {
        inCheck = 1;
        return generateEvasions(list);
    }
    inCheck   = 0;
    int count = generateCaptures(list);
    return count + generateQuiets(list + count);
}
