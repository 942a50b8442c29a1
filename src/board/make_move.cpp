// Makes and unmakes move words in place and decides whether the mover's king is left in
// check. Everything unmake needs is in the move word or the history record. Each kind of
// move (quiet, capture, en passant, promotion, castling) has its own straight-line pair;
// makeMove and unmakeMove branch once on the kind. Generating and scoring moves live in
// movegen/.
#include "board/chess_board.h"

namespace {

// The rook's journey when castling, by side and wing.
struct RookHop {
    Square from, to;
};
constexpr RookHop rookHop(Color side, bool kingSide) {
    if (side == WHITE)
        return kingSide ? RookHop{7, 5} : RookHop{0, 3};
    return kingSide ? RookHop{63, 61} : RookHop{56, 59};
}

// The castling right that a rook standing on its corner stands for, 0 elsewhere.
constexpr int rightOfCorner(Square s) {
    switch (s) {
    case 7:
        return CASTLE_WHITE_SHORT;
    case 0:
        return CASTLE_WHITE_LONG;
    case 63:
        return CASTLE_BLACK_SHORT;
    case 56:
        return CASTLE_BLACK_LONG;
    default:
        return 0;
    }
}

constexpr int rightsOf(Color c) {
    return c == WHITE ? CASTLE_WHITE_SHORT | CASTLE_WHITE_LONG
                      : CASTLE_BLACK_SHORT | CASTLE_BLACK_LONG;
}

// Drops the rights in `rights` that are still held, with their keys.
void dropRights(ChessBoard& b, int rights) {
    rights &= b.castleRights;
    b.castleRights &= std::uint8_t(~rights);
    for (; rights; rights &= rights - 1)
        b.hashKey ^= b.castleKey[std::countr_zero(unsigned(rights))];
}

// A rook's corner stands for one right of its owner's, and a king for both: moving either,
// or losing the rook on its corner, gives them up.
void updateRights(ChessBoard& b, Color side, Piece piece, Square from, Square to, Piece captured) {
    if (captured == ROOK)
        dropRights(b, rightOfCorner(to) & rightsOf(opponent(side)));
    if (piece == KING)
        dropRights(b, rightsOf(side));
    else if (piece == ROOK)
        dropRights(b, rightOfCorner(from) & rightsOf(side));
}

// The mover's own boards, mailbox and key from one square to another; occupancy is the
// caller's, since a capture leaves the target square occupied.
void shiftPiece(ChessBoard& b, Color side, Piece piece, Square from, Square to) {
    const Bitboard both = bit(from) | bit(to);
    b.bbPiece[side][piece] ^= both;
    b.bbColorPiece[side] ^= both;
    b.pieceArray[from] = EMPTY;
    b.pieceArray[to]   = std::uint8_t(piece);
    b.hashKey ^= b.pieceKeyOf(side, piece, from) ^ b.pieceKeyOf(side, piece, to);
}

// Takes the captured piece off its square, with its material and key; the mailbox and the
// occupancy are the caller's.
void takeOff(ChessBoard& b, Color owner, Piece captured, Square s) {
    b.material[owner] -= std::int16_t(materialValue(captured));
    b.phase -= std::uint8_t(phaseWeight[captured]);
    b.pieceCount[owner][captured]--;
    b.bbPiece[owner][captured] ^= bit(s);
    b.bbColorPiece[owner] ^= bit(s);
    b.hashKey ^= b.pieceKeyOf(owner, captured, s);
}

// Puts a captured piece back: the boards and the totals; the key comes from the record.
void putBack(ChessBoard& b, Color owner, Piece captured, Square s) {
    b.material[owner] += std::int16_t(materialValue(captured));
    b.phase += std::uint8_t(phaseWeight[captured]);
    b.pieceCount[owner][captured]++;
    b.bbPiece[owner][captured] ^= bit(s);
    b.bbColorPiece[owner] ^= bit(s);
    b.pieceArray[s] = std::uint8_t(captured);
}

// A pawn reaching the last rank becomes `promotion`, taking `captured` (maybe nothing).
void makePromotion(ChessBoard& b, Color side, Move m) {
    const Square from = moveFrom(m), to = moveTo(m);
    const Piece captured = moveCaptured(m), promotion = movePromotion(m);
    b.flipBits(side, PAWN, from);
    b.hashKey ^= b.pieceKeyOf(side, PAWN, from);
    b.pieceArray[from] = EMPTY;
    if (captured)
        takeOff(b, opponent(side), captured, to);
    else
        b.flipOccupancy(to);
    b.phase += std::uint8_t(phaseWeight[promotion]);
    b.material[side] += std::int16_t(pieceValue[promotion] - 100);
    b.pieceCount[side][PAWN]--;
    b.pieceCount[side][promotion]++;
    b.bbPiece[side][promotion] ^= bit(to);
    b.bbColorPiece[side] ^= bit(to);
    b.hashKey ^= b.pieceKeyOf(side, promotion, to);
    b.pieceArray[to] = std::uint8_t(promotion);
}

void unmakePromotion(ChessBoard& b, Color side, Move m) {
    const Square from = moveFrom(m), to = moveTo(m);
    const Piece captured = moveCaptured(m), promotion = movePromotion(m);
    b.bbPiece[side][promotion] ^= bit(to);
    b.bbColorPiece[side] ^= bit(to);
    b.material[side] += std::int16_t(100 - pieceValue[promotion]);
    b.phase -= std::uint8_t(phaseWeight[promotion]);
    b.pieceCount[side][promotion]--;
    b.pieceCount[side][PAWN]++;
    if (captured) {
        putBack(b, opponent(side), captured, to);
    } else {
        b.flipOccupancy(to);
        b.pieceArray[to] = EMPTY;
    }
    b.setPiece(side, PAWN, from);
}

// The king's step and the rook's hop; the rights go in the common part.
void castle(ChessBoard& b, Color side, Square from, Square to) {
    const RookHop hop = rookHop(side, to > from);
    shiftPiece(b, side, KING, from, to);
    shiftPiece(b, side, ROOK, hop.from, hop.to);
    b.flipOccupancy(from);
    b.flipOccupancy(to);
    b.flipOccupancy(hop.from);
    b.flipOccupancy(hop.to);
}

void uncastle(ChessBoard& b, Color side, Square from, Square to) {
    const RookHop hop = rookHop(side, to > from);
    b.bbPiece[side][KING] ^= bit(from) | bit(to);
    b.bbPiece[side][ROOK] ^= bit(hop.from) | bit(hop.to);
    b.bbColorPiece[side] ^= bit(from) | bit(to) | bit(hop.from) | bit(hop.to);
    b.pieceArray[to] = b.pieceArray[hop.to] = EMPTY;
    b.pieceArray[from]                      = KING;
    b.pieceArray[hop.from]                  = ROOK;
    b.flipOccupancy(from);
    b.flipOccupancy(to);
    b.flipOccupancy(hop.from);
    b.flipOccupancy(hop.to);
    b.kingSquare[side] = std::uint8_t(from);
}

void makeEnPassant(ChessBoard& b, Color side, Square from, Square to) {
    const Square victim = enPassantVictim(side, to);
    shiftPiece(b, side, PAWN, from, to);
    takeOff(b, opponent(side), PAWN, victim);
    b.pieceArray[victim] = EMPTY;
    b.flipOccupancy(from);
    b.flipOccupancy(to);
    b.flipOccupancy(victim);
}

void unmakeEnPassant(ChessBoard& b, Color side, Square from, Square to) {
    const Square victim = enPassantVictim(side, to);
    b.bbPiece[side][PAWN] ^= bit(from) | bit(to);
    b.bbColorPiece[side] ^= bit(from) | bit(to);
    b.pieceArray[to]   = EMPTY;
    b.pieceArray[from] = PAWN;
    putBack(b, opponent(side), PAWN, victim);
    b.flipOccupancy(from);
    b.flipOccupancy(to);
    b.flipOccupancy(victim);
}

// Castling, en passant and promotions: the rarer kinds, out of the common path.
void makeSpecial(ChessBoard& b, Color side, Move m) {
    if (isCastle(m))
        castle(b, side, moveFrom(m), moveTo(m));
    else if (isEnPassant(m))
        makeEnPassant(b, side, moveFrom(m), moveTo(m));
    else
        makePromotion(b, side, m);
}

void unmakeSpecial(ChessBoard& b, Color side, Move m) {
    if (isCastle(m))
        uncastle(b, side, moveFrom(m), moveTo(m));
    else if (isEnPassant(m))
        unmakeEnPassant(b, side, moveFrom(m), moveTo(m));
    else
        unmakePromotion(b, side, m);
}

// The flags and the promotion field: what sends a move down the special path.
constexpr Move SPECIAL_MOVE = MOVE_CASTLE | MOVE_EP | makeMoveWord(0, 0, EMPTY, EMPTY, Piece(7));

} // namespace

void ChessBoard::pushHistory(Move m) {
    HistoryRecord& record = history[historyCount++];
    record.key            = hashKey;
    record.move           = m;
    record.castleRights   = castleRights;
    record.epFile         = epFile;
    record.fiftyCounter   = fiftyCounter;
}

int ChessBoard::makeMove(Move m) {
    const Color side = Color(sideToMove), opp = opponent(side);
    const Square from = moveFrom(m), to = moveTo(m);
    const Piece piece = movePiece(m), captured = moveCaptured(m);

    pushHistory(m);
    fiftyCounter = (piece == PAWN || captured) ? 0 : fiftyCounter + 1;
    if (epFile)
        hashKey ^= epKey[epFile - 1];
    epFile = 0;

    if (m & SPECIAL_MOVE) {
        makeSpecial(*this, side, m);
    } else if (captured) {
        takeOff(*this, opp, captured, to);
        shiftPiece(*this, side, piece, from, to);
        flipOccupancy(from);
    } else {
        shiftPiece(*this, side, piece, from, to);
        flipOccupancy(from);
        flipOccupancy(to);
        if (isDoubleStep(m)) {
            epFile = std::uint8_t(fileOf(to) + 1);
            hashKey ^= epKey[fileOf(to)];
        }
    }
    if (piece == KING)
        kingSquare[side] = std::uint8_t(to);
    if (castleRights)
        updateRights(*this, side, piece, from, to, captured);

    hashKey ^= sideKey;
    gameStage           = stageOfPhase(phase);
    const bool attacked = isAttacked(kingSquare[side], opp);
    sideToMove          = std::uint8_t(opp);
    return attacked ? 0 : 1;
}

int ChessBoard::unmakeMove(Move m) {
    sideToMove ^= 1;
    const Color side  = Color(sideToMove);
    const Square from = moveFrom(m), to = moveTo(m);
    const Piece piece = movePiece(m), captured = moveCaptured(m);

    if (m & SPECIAL_MOVE) {
        unmakeSpecial(*this, side, m);
    } else {
        bbPiece[side][piece] ^= bit(from) | bit(to);
        bbColorPiece[side] ^= bit(from) | bit(to);
        pieceArray[from] = std::uint8_t(piece);
        flipOccupancy(from);
        if (captured) {
            putBack(*this, opponent(side), captured, to);
        } else {
            pieceArray[to] = EMPTY;
            flipOccupancy(to);
        }
        if (piece == KING)
            kingSquare[side] = std::uint8_t(from);
    }

    const HistoryRecord& record = history[--historyCount];
    hashKey                     = record.key;
    castleRights                = record.castleRights;
    epFile                      = record.epFile;
    fiftyCounter                = record.fiftyCounter;
    gameStage                   = stageOfPhase(phase);
    return 1;
}

void ChessBoard::makeNullMove() {
    pushHistory(NO_MOVE);
    fiftyCounter++;
    if (epFile)
        hashKey ^= epKey[epFile - 1];
    epFile = 0;
    sideToMove ^= 1;
    hashKey ^= sideKey;
}

void ChessBoard::unmakeNullMove() {
    sideToMove ^= 1;
    const HistoryRecord& record = history[--historyCount];
    hashKey                     = record.key;
    epFile                      = record.epFile;
    fiftyCounter                = record.fiftyCounter;
}
