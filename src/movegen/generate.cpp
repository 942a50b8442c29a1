// Pseudo-legal move generation in three lists, exactly as the search consumes them:
// captures (with every promotion and en passant), quiet moves (with castling and double
// steps) and check evasions. Make has the last word on legality. Squares are walked lowest
// first, so equal-scored moves are always tried in the same order.
#include "board/chess_board.h"

namespace {

constexpr Bitboard RANK_2 = 0x000000000000FF00ULL, RANK_7 = 0x00FF000000000000ULL;

// Everything a generator needs to know about the side it generates for.
template <Color US> struct Side {
    static constexpr Color THEM           = opponent(US);
    static constexpr Bitboard seventhRank = US == WHITE ? RANK_7 : RANK_2; // promotes from here
    static constexpr Bitboard secondRank  = US == WHITE ? RANK_2 : RANK_7; // double steps from here
    static constexpr int forward          = US == WHITE ? 8 : -8;
    static Bitboard advance(Bitboard b) { return US == WHITE ? b << 8 : b >> 8; }
    static bool onLastRank(Square s) { return US == WHITE ? s >= 56 : s < 8; }
};

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

// The king the position tracks. A FEN may place more than one: the others never move, so
// unmake can always put the tracked one back on its square.
inline Bitboard movingKing(const Position& p, Color us) {
    return p.bbPiece[us][KING] & bit(p.kingSquare[us]);
}

// Knights, bishops, rooks, queens and the king, each to the squares of `targets`.
inline MoveEntry* addPieceMoves(const Position& p, Color us, Bitboard targets, MoveEntry* out) {
    for (Piece piece : {KNIGHT, BISHOP, ROOK, QUEEN, KING})
        for (Bitboard pieces = piece == KING ? movingKing(p, us) : p.bbPiece[us][piece]; pieces;) {
            Square from = popLowest(pieces);
            for (Bitboard to = pieceAttacks(p, piece, from) & targets; to;) {
                Square t      = popLowest(to);
                (out++)->move = makeMoveWord(from, t, piece, Piece(p.pieceArray[t]));
            }
        }
    return out;
}

// The en-passant target, or -1 when no capture en passant can be made: the file must name
// an enemy pawn that really stands beside the target on an empty square, whatever a FEN said.
template <Color US> Square enPassantTarget(const Position& p) {
    if (!p.epFile || !p.bbPiece[US][PAWN])
        return -1;
    Square target = squareAt(p.epFile - 1, US == WHITE ? 5 : 2);
    Square victim = target - Side<US>::forward;
    if ((p.bbAllPiece & bit(target)) || !(p.bbPiece[Side<US>::THEM][PAWN] & bit(victim)))
        return -1;
    return target;
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
    for (Bitboard to = S::advance(pawns & S::seventhRank) & ~p.bbAllPiece; to;) {
        Square t = popLowest(to);
        out      = addPromotions(out, t - S::forward, t, EMPTY);
    }
    for (Bitboard from = pawns; from;) {
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

// Castling needs the right, an empty path, and the king's square and the two squares it
// crosses free of attack. King and rook must stand on their squares too: a FEN may grant
// rights that its pieces cannot use.
template <Color US> MoveEntry* addCastling(const Position& p, MoveEntry* out) {
    constexpr Square home        = US == WHITE ? 4 : 60;
    constexpr int shortRight     = US == WHITE ? CASTLE_WHITE_SHORT : CASTLE_BLACK_SHORT;
    constexpr int longRight      = US == WHITE ? CASTLE_WHITE_LONG : CASTLE_BLACK_LONG;
    constexpr Bitboard shortPath = US == WHITE ? castlePathWhiteShort : castlePathBlackShort;
    constexpr Bitboard longPath  = US == WHITE ? castlePathWhiteLong : castlePathBlackLong;
    constexpr Color THEM         = opponent(US);
    if (!(p.castleRights & (shortRight | longRight)) || !(movingKing(p, US) & bit(home)))
        return out;
    const Bitboard rooks = p.bbPiece[US][ROOK];
    if ((p.castleRights & shortRight) && !(p.bbAllPiece & shortPath) && (rooks & bit(home + 3)) &&
        !p.isAttacked(home, THEM) && !p.isAttacked(home + 1, THEM) && !p.isAttacked(home + 2, THEM))
        (out++)->move = US == WHITE ? WHITE_SHORT_CASTLE : BLACK_SHORT_CASTLE;
    if ((p.castleRights & longRight) && !(p.bbAllPiece & longPath) && (rooks & bit(home - 4)) &&
        !p.isAttacked(home, THEM) && !p.isAttacked(home - 1, THEM) && !p.isAttacked(home - 2, THEM))
        (out++)->move = US == WHITE ? WHITE_LONG_CASTLE : BLACK_LONG_CASTLE;
    return out;
}

template <Color US> int quiets(const Position& p, MoveEntry* list) {
    using S              = Side<US>;
    const Bitboard empty = ~p.bbAllPiece;
    MoveEntry* out       = addPieceMoves(p, US, empty, list);
    out                  = addCastling<US>(p, out);

    const Bitboard pawns = p.bbPiece[US][PAWN];
    for (Bitboard to = S::advance(pawns & ~S::seventhRank) & empty; to;) {
        Square t      = popLowest(to);
        (out++)->move = makeMoveWord(t - S::forward, t, PAWN);
    }
    const Bitboard once = S::advance(pawns & S::secondRank) & empty;
    for (Bitboard to = S::advance(once) & empty; to;) {
        Square t      = popLowest(to);
        (out++)->move = makeMoveWord(t - 2 * S::forward, t, PAWN) | MOVE_DOUBLE;
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
            out = addPromotions(out, t - S::forward, t, EMPTY);
        else
            (out++)->move = makeMoveWord(t - S::forward, t, PAWN);
    }
    const Bitboard once = S::advance(pawns & S::secondRank) & ~p.bbAllPiece;
    for (Bitboard to = S::advance(once) & between; to;) {
        Square t      = popLowest(to);
        (out++)->move = makeMoveWord(t - 2 * S::forward, t, PAWN) | MOVE_DOUBLE;
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
    if (Square target = enPassantTarget<US>(p); target >= 0 && target - S::forward == c)
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
