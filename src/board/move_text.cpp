// Moves as text: the coordinate, long algebraic and standard algebraic writers, and the two
// readers (coordinate text from the protocols, SAN). Both readers look the move up among
// those generated in the position. The coordinate reader plays the generated move; the SAN
// reader (its text taken apart in san_text.cpp) takes only its origin and builds the word
// from the text and the board, so its moves never carry the en-passant bit and promote only
// when the text says "=".
#include "board/chess_board.h"
#include "board/san_text.h"
#include "board/trace.h"

#include <cstdio>
#include <cstring>

namespace {

char* writeSquare(char* out, Square s) {
    *out++ = char('a' + fileOf(s));
    *out++ = char('1' + rankOf(s));
    return out;
}

// The endings both writers share: en passant, promotion and the check mark.
void writeEnding(char* out, Move m) {
    if (isEnPassant(m))
        out += std::sprintf(out, " e.p");
    if (char letter = pieceLetter(movePromotion(m))) {
        *out++ = '=';
        *out++ = letter;
    }
    if (moveCheck(m) == 1)
        out += std::sprintf(out, " +");
    else if (moveCheck(m) == 2)
        out += std::sprintf(out, " #");
    *out = 0;
}

} // namespace

void ChessBoard::moveToCoordinates(Move m, char* out, bool withPromotion) {
    out = writeSquare(writeSquare(out, moveFrom(m)), moveTo(m));
    if (const char letter = pieceLetter(movePromotion(m)); letter && withPromotion)
        *out++ = char(letter - 'A' + 'a');
    *out = 0;
}

void ChessBoard::moveToLongText(Move m, char* out) {
    if (m == NO_MOVE) {
        std::strcpy(out, "empty");
        return;
    }
    if (isCastle(m)) {
        std::strcpy(out, fileOf(moveTo(m)) <= fileOf(moveFrom(m)) ? "O-O-O" : "O-O");
        return;
    }
    if (char letter = pieceLetter(movePiece(m)); letter && movePiece(m) != PAWN)
        *out++ = letter;
    out    = writeSquare(out, moveFrom(m));
    *out++ = moveCaptured(m) ? 'x' : '-';
    out    = writeSquare(out, moveTo(m));
    writeEnding(out, m);
}

void ChessBoard::moveToSan(Move m, char* out, const MoveEntry* list, int count) {
    if (m == NO_MOVE) {
        std::strcpy(out, "empty");
        return;
    }
    if (isCastle(m)) {
        std::strcpy(out, fileOf(moveTo(m)) > fileOf(moveFrom(m)) ? "O-O" : "O-O-O");
        return;
    }
    const Square from = moveFrom(m), to = moveTo(m);
    const Piece piece = movePiece(m);
    bool needFile = false, needRank = false;
    if (piece != PAWN)
        for (int i = 0; i < count; ++i) {
            const Move other = list[i].move;
            if (movePiece(other) != piece || moveTo(other) != to || moveFrom(other) == from)
                continue;
            if (fileOf(moveFrom(other)) == fileOf(from))
                needRank = true;
            else
                needFile = true; // on the same rank, or on neither line
        }
    if (char letter = pieceLetter(piece))
        *out++ = letter;
    if (needFile)
        *out++ = char('a' + fileOf(from));
    if (needRank)
        *out++ = char('1' + rankOf(from));
    if (moveCaptured(m)) {
        if (piece == PAWN)
            *out++ = char('a' + fileOf(from));
        *out++ = 'x';
    }
    out = writeSquare(out, to);
    writeEnding(out, m);
}

int ChessBoard::sanToMove(const char* text, Move& move) {
    move = NO_MOVE;
    if (!text)
        return 0;
    if (std::strcmp(text, "O-O") == 0 || std::strcmp(text, "O-O-O") == 0) {
        const bool shortSide = text[3] == 0;
        if (sideToMove == WHITE)
            move = shortSide ? WHITE_SHORT_CASTLE : WHITE_LONG_CASTLE;
        else
            move = shortSide ? BLACK_SHORT_CASTLE : BLACK_LONG_CASTLE;
        return 1;
    }
    SanText san;
    if (!readSan(text, san, SanSpelling::ENGINE, side()))
        return 0;
    MoveEntry list[MAX_GENERATED];
    const int count   = generatePseudoLegalMoves(list);
    const Move* found = nullptr;
    for (int i = 0; i < count && !found; ++i)
        if (san.picks(list[i].move))
            found = &list[i].move;
    if (!found)
        return 0;
    // Built from the text: the en-passant bit is never set, and a promotion needs its "=".
    const Square from = moveFrom(*found), to = san.to;
    move = makeMoveWord(from, to, san.piece, Piece(pieceArray[to] <= KING ? pieceArray[to] : 0),
                        san.promotion);
    if (san.piece == PAWN && (to - from == 16 || from - to == 16))
        move |= MOVE_DOUBLE;
    return 1;
}

int ChessBoard::playCoordinateMove(const char* text) {
    if (!text)
        return 0;
    const std::size_t length = std::strlen(text);
    if (length > 5) {
        trace("bad size");
        return 0;
    }
    if (length < 4 || !isFileLetter(text[0]) || !isRankDigit(text[1]) || !isFileLetter(text[2]) ||
        !isRankDigit(text[3])) {
        trace("error : %d,%d -> %d,%d");
        return 0;
    }
    const Piece promotion = length == 5 ? promotionOf(text[4], false) : EMPTY;
    if (length == 5 && promotion == EMPTY) {
        trace("bad promotion piece");
        return 0;
    }
    const Square from = squareAt(text[0] - 'a', text[1] - '1');
    const Square to   = squareAt(text[2] - 'a', text[3] - '1');

    MoveEntry list[MAX_GENERATED];
    const int count = generateMoves(list, sideToMoveInCheck());
    for (int i = 0; i < count; ++i) {
        const Move m = list[i].move;
        if (moveFrom(m) != from || moveTo(m) != to)
            continue;
        if (promotion && movePromotion(m) != promotion)
            continue;
        if (playGameMove(m))
            return 1;
        trace("error");
        return 0;
    }
    return 0;
}
