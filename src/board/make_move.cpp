// Makes and unmakes move words in place and decides whether the mover's king is left in
// check. Everything unmake needs is in the move word or the history record. Generating and
// scoring moves live in movegen/.
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
    const Piece piece = movePiece(m), captured = moveCaptured(m), promotion = movePromotion(m);

    pushHistory(m);
    fiftyCounter = (pieceArray[from] == PAWN || captured) ? 0 : fiftyCounter + 1;

    // Lift the mover.
    flipBits(side, piece, from);
    hashKey ^= pieceKeyOf(side, piece, from);
    pieceArray[from] = EMPTY;

    if (epFile)
        hashKey ^= epKey[epFile - 1];

    if (captured) {
        material[opp] -= std::int16_t(materialValue(captured));
        phase -= std::uint8_t(phaseWeight[captured]);
        pieceCount[opp][captured]--;
        Square square = to;
        if (isEnPassant(m)) {
            square = side == WHITE ? to - 8 : to + 8;
            flipOccupancy(square);
            pieceArray[square] = EMPTY;
        }
        bbPiece[opp][captured] ^= SquareMask[square];
        bbColorPiece[opp] ^= SquareMask[square];
        hashKey ^= pieceKeyOf(opp, captured, square);
        // Taking a rook on its corner takes the owner's right with it, moved or not.
        int right = captured == ROOK ? rightOfCorner(to) : 0;
        if (right && (right & (side == WHITE ? 12 : 3)) && (castleRights & right)) {
            castleRights &= std::uint8_t(~right);
            hashKey ^= castleKey[std::countr_zero(unsigned(right))];
        }
    }
    // A plain capture leaves the target square occupied: only its owner changes.
    if (!captured || isEnPassant(m))
        flipOccupancy(to);

    Piece placed = piece;
    if (promotion) {
        placed = promotion;
        phase += std::uint8_t(phaseWeight[promotion]);
        material[side] += std::int16_t(pieceValue[promotion] - 100);
        pieceCount[side][PAWN]--;
        pieceCount[side][promotion]++;
    }
    bbPiece[side][placed] ^= SquareMask[to];
    bbColorPiece[side] ^= SquareMask[to];
    hashKey ^= pieceKeyOf(side, placed, to);
    pieceArray[to] = std::uint8_t(placed);

    if (isDoubleStep(m)) {
        epFile = std::uint8_t(fileOf(to) + 1);
        hashKey ^= epKey[fileOf(to)];
    } else {
        epFile = 0;
    }

    if (isCastle(m)) {
        RookHop hop = rookHop(side, to > from);
        flipBits(side, ROOK, hop.from);
        flipBits(side, ROOK, hop.to);
        hashKey ^= pieceKeyOf(side, ROOK, hop.from) ^ pieceKeyOf(side, ROOK, hop.to);
        pieceArray[hop.from] = EMPTY;
        pieceArray[hop.to]   = ROOK;
    }

    if (piece == KING) {
        kingSquare[side] = std::uint8_t(to);
        int rights       = side == WHITE ? CASTLE_WHITE_SHORT | CASTLE_WHITE_LONG
                                         : CASTLE_BLACK_SHORT | CASTLE_BLACK_LONG;
        for (int i = 0; i < 4; ++i)
            if ((rights & castleRights) & (1 << i))
                hashKey ^= castleKey[i];
        castleRights &= std::uint8_t(~rights);
    } else if (piece == ROOK) {
        int right = rightOfCorner(from);
        if (right && (right & (side == WHITE ? 3 : 12)) && (castleRights & right)) {
            castleRights &= std::uint8_t(~right);
            hashKey ^= castleKey[std::countr_zero(unsigned(right))];
        }
    }

    hashKey ^= sideKey;
    gameStage = stageOfPhase(phase);

    const bool attacked = isAttacked(kingSquare[side], opp);
    sideToMove          = std::uint8_t(opp);
    return attacked ? 0 : 1;
}

int ChessBoard::unmakeMove(Move m) {
    sideToMove ^= 1;
    const Color side = Color(sideToMove), opp = opponent(side);
    const Square from = moveFrom(m), to = moveTo(m);
    const Piece piece = movePiece(m), captured = moveCaptured(m), promotion = movePromotion(m);

    if (promotion) {
        bbPiece[side][promotion] ^= SquareMask[to];
        material[side] += std::int16_t(100 - pieceValue[promotion]);
        phase -= std::uint8_t(phaseWeight[promotion]);
        pieceCount[side][promotion]--;
        pieceCount[side][PAWN]++;
    } else {
        bbPiece[side][piece] ^= SquareMask[to];
    }
    bbColorPiece[side] ^= SquareMask[to];
    if (!captured || isEnPassant(m)) {
        flipOccupancy(to);
        pieceArray[to] = EMPTY;
    }

    if (captured) {
        phase += std::uint8_t(phaseWeight[captured]);
        material[opp] += std::int16_t(materialValue(captured));
        pieceCount[opp][captured]++;
        Square square = to;
        if (isEnPassant(m)) {
            square = side == WHITE ? to - 8 : to + 8;
            flipOccupancy(square);
        }
        bbPiece[opp][captured] ^= SquareMask[square];
        bbColorPiece[opp] ^= SquareMask[square];
        pieceArray[square] = std::uint8_t(captured);
    }

    setPiece(side, piece, from);

    if (isCastle(m)) {
        RookHop hop = rookHop(side, to > from);
        clearPiece(side, ROOK, hop.to);
        setPiece(side, ROOK, hop.from);
    }
    if (piece == KING)
        kingSquare[side] = std::uint8_t(from);

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
