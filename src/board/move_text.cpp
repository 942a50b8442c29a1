// Moves as text: the coordinate, long algebraic and standard algebraic writers, and the two
// readers (coordinate text from the protocols, SAN from game files). Both readers look the move up
// among those generated in the position. The coordinate reader plays the generated move;
// the SAN reader takes only its origin and builds the word from the text and the board, so
// its moves never carry the en-passant bit and promote only when the text says "=".
#include "board/chess_board.h"
#include "board/trace.h"

#include <cstdio>
#include <cstring>

namespace {

// The one table of piece letters in move text, by Piece: upper case in algebraic text, lower
// case for a promotion in coordinates. Pawns have none there.
constexpr char PIECE_LETTERS[] = "  NBRQK";

char pieceLetter(Piece p) {
    return p >= KNIGHT && p <= KING ? PIECE_LETTERS[p] : 0;
}

// The piece a pawn becomes for its letter (upper case in SAN, lower in coordinates), or EMPTY.
Piece promotionOf(char letter, bool upperCase) {
    for (Piece p : {KNIGHT, BISHOP, ROOK, QUEEN}) {
        const char upper = PIECE_LETTERS[p];
        if (letter == (upperCase ? upper : char(upper - 'A' + 'a')))
            return p;
    }
    return EMPTY;
}

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

bool isFileLetter(char c) {
    return c >= 'a' && c <= 'h';
}
bool isRankDigit(char c) {
    return c >= '1' && c <= '8';
}

// A SAN text as the reader takes it: the piece, one origin hint, the destination and the
// promotion after "=". Whatever follows is not looked at.
struct SanText {
    Piece piece     = PAWN;
    int hintRank    = -1;
    int hintFile    = -1;
    Square to       = 0;
    Piece promotion = EMPTY;

    // Whether a generated move is one the text names (the first such is taken).
    bool fits(Move m) const {
        return movePiece(m) == piece && moveTo(m) == to &&
               (hintRank < 0 || rankOf(moveFrom(m)) == hintRank) &&
               (hintFile < 0 || fileOf(moveFrom(m)) == hintFile);
    }
};

// The piece letter, or a file letter for a pawn; false for anything else.
bool readSanPiece(char c, Piece& piece) {
    for (Piece p : {KNIGHT, BISHOP, ROOK, QUEEN, KING})
        if (c == PIECE_LETTERS[p]) {
            piece = p;
            return true;
        }
    piece = PAWN;
    return isFileLetter(c);
}

bool readSanText(const char* p, SanText& san) {
    if (!readSanPiece(*p, san.piece))
        return false;
    if (san.piece != PAWN)
        ++p;
    if (isRankDigit(p[0])) {
        san.hintRank = p[0] - '1';
        ++p;
    } else if (isFileLetter(p[0]) && (isFileLetter(p[1]) || p[1] == 'x')) {
        san.hintFile = p[0] - 'a';
        ++p;
    }
    if (*p == 'x')
        ++p;
    if (!isFileLetter(p[0]) || !isRankDigit(p[1]))
        return false;
    san.to = squareAt(p[0] - 'a', p[1] - '1');
    p += 2;
    return *p != '=' || (san.promotion = promotionOf(p[1], true)) != EMPTY;
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
    if (!readSanText(text, san))
        return 0;
    MoveEntry list[MAX_GENERATED];
    const int count   = generatePseudoLegalMoves(list);
    const Move* found = nullptr;
    for (int i = 0; i < count && !found; ++i)
        if (san.fits(list[i].move))
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
