// Reading and writing FEN. The reader is one pass with a state per field and the engine's
// own acceptance rules (nine white pawns pass, nine black pawns do not, the counters are
// optional); nothing is written to the board until the whole text has been accepted.
#include "board/chess_board.h"

#include <cstdio>
#include <cstring>

namespace {

enum FenField { PLACEMENT, SIDE, SIDE_END, CASTLING, EN_PASSANT, HALF_MOVES, FULL_MOVES };

struct ParsedFen {
    std::uint8_t piece[64] = {};
    std::uint8_t white[64] = {};
    int count[2][7]        = {};
    Color side             = WHITE;
    int castle             = 0;
    int epFile             = 0;
    int halfMoves          = 0;
};

// The per-colour limits on piece letters: a black pawn count above 8 or a black king count
// above 1 rejects, everything else stops at 9 (also white pawns and kings).
bool withinLimits(const ParsedFen& fen, Color c, Piece p) {
    int n = fen.count[c][p];
    if (c == BLACK && p == PAWN)
        return n <= 8;
    if (c == BLACK && p == KING)
        return n <= 1;
    return n <= 9;
}

// What one character does to the reading: it goes on, or the text is settled either way.
enum class Step { GO_ON, ACCEPT, REJECT };

// The reader's state between characters, and one step per field.
struct FenReader {
    ParsedFen& fen;
    FenField field = PLACEMENT;
    int rank = 7, file = 0, digits = 0, value = 0, epChars = 0;

    Step placement(char c);
    Step side(char c);
    Step castling(char c);
    Step enPassant(char c);
    Step counter(char c);

    Step read(char c) {
        switch (field) {
        case PLACEMENT:
            return placement(c);
        case SIDE:
            return side(c);
        case SIDE_END:
            field = CASTLING;
            return c == ' ' ? Step::GO_ON : Step::REJECT;
        case CASTLING:
            return castling(c);
        case EN_PASSANT:
            return enPassant(c);
        case HALF_MOVES:
        case FULL_MOVES:
            return counter(c);
        }
        return Step::REJECT;
    }
};

Step FenReader::placement(char c) {
    if (file == 8) {
        if (c == '/' && rank > 0) {
            --rank;
            file = 0;
            return Step::GO_ON;
        }
        if (c == ' ' && rank == 0) {
            field = SIDE;
            return Step::GO_ON;
        }
        return Step::REJECT;
    }
    if (const char* at = std::strchr("pnbrqkPNBRQK", c)) {
        const int index   = int(at - "pnbrqkPNBRQK");
        const Color color = index < 6 ? BLACK : WHITE;
        const Piece piece = Piece(index % 6 + 1);
        fen.count[color][piece]++;
        if (!withinLimits(fen, color, piece))
            return Step::REJECT;
        const Square s = squareAt(file, rank);
        fen.piece[s]   = std::uint8_t(piece);
        fen.white[s]   = color == WHITE;
        file += 1;
        return Step::GO_ON;
    }
    if (c >= '1' && c <= '8') {
        file += c - '0';
        return file > 8 ? Step::REJECT : Step::GO_ON;
    }
    return Step::REJECT;
}

Step FenReader::side(char c) {
    if (c != 'w' && c != 'b')
        return Step::REJECT;
    fen.side = c == 'w' ? WHITE : BLACK;
    field    = SIDE_END;
    return Step::GO_ON;
}

Step FenReader::castling(char c) {
    if (c == 'K')
        fen.castle |= CASTLE_WHITE_SHORT;
    else if (c == 'Q')
        fen.castle |= CASTLE_WHITE_LONG;
    else if (c == 'k')
        fen.castle |= CASTLE_BLACK_SHORT;
    else if (c == 'q')
        fen.castle |= CASTLE_BLACK_LONG;
    else if (c == ' ')
        field = EN_PASSANT;
    else if (c != '-')
        return Step::REJECT;
    return Step::GO_ON;
}

// "-", or a file letter optionally followed by a rank digit that is not checked.
Step FenReader::enPassant(char c) {
    if (c == ' ') {
        field = HALF_MOVES;
        return Step::GO_ON;
    }
    if (c == '-' && epChars == 0)
        fen.epFile = 0;
    else if (c >= 'a' && c <= 'h' && epChars == 0)
        fen.epFile = c - 'a' + 1;
    else if (!(c >= '1' && c <= '8' && epChars == 1 && fen.epFile))
        return Step::REJECT;
    ++epChars;
    return Step::GO_ON;
}

Step FenReader::counter(char c) {
    if (c >= '0' && c <= '9') {
        if (++digits > 30)
            return Step::REJECT;
        value = (value * 10 + (c - '0')) & 0xFF; // only the low 8 bits are kept
        return Step::GO_ON;
    }
    if (c != ' ')
        return Step::ACCEPT; // anything else ends the text; a clock not closed by a blank stays 0
    if (field == FULL_MOVES)
        return Step::ACCEPT; // the move number is not kept
    fen.halfMoves = value;
    field         = FULL_MOVES;
    digits = value = 0;
    return Step::GO_ON;
}

bool parseFen(const char* text, ParsedFen& fen) {
    FenReader reader{fen};
    for (const char* p = text; *p; ++p)
        if (const Step step = reader.read(*p); step != Step::GO_ON)
            return step == Step::ACCEPT;
    return reader.field >= HALF_MOVES;
}

} // namespace

int ChessBoard::setPosition(const char* text) {
    ParsedFen fen;
    if (!text || !parseFen(text, fen))
        return 0;

    for (Color c : {WHITE, BLACK})
        for (int p = EMPTY; p <= KING; ++p)
            pieceCount[c][p] = std::uint8_t(p == KING ? 0 : fen.count[c][p]);
    std::memset(bbPiece, 0, sizeof bbPiece);
    std::memset(bbColorPiece, 0, sizeof bbColorPiece);
    std::memset(pieceArray, 0, sizeof pieceArray);
    bbAllPiece = bbAllPiece90R = bbAllPiece45R = bbAllPiece45L = 0;
    kingSquare[BLACK]                                          = 60;
    kingSquare[WHITE]                                          = 4;
    historyCount                                               = 0;
    clearOrderingTables();

    material[WHITE] = material[BLACK] = 0;
    int totalPhase                    = 0;
    for (Square s = 0; s < 64; ++s) {
        if (!fen.piece[s])
            continue;
        Color c = fen.white[s] ? WHITE : BLACK;
        Piece p = Piece(fen.piece[s]);
        setPiece(c, p, s);
        if (p == KING)
            kingSquare[c] = std::uint8_t(s);
        material[c] += std::int16_t(materialValue(p));
        totalPhase += phaseWeight[p];
    }
    phase        = std::uint8_t(totalPhase);
    sideToMove   = std::uint8_t(fen.side);
    castleRights = std::uint8_t(fen.castle);
    epFile       = std::uint8_t(fen.epFile);
    fiftyCounter = std::uint8_t(fen.halfMoves);
    gameStage    = stageOfPhase(phase);

    inCheck = sideToMoveInCheck() ? 1 : 0;
    hashKey = computeKey();
    resetGameRecord();
    hookBoardEvent();
    return 1;
}

namespace {

// The placement field, rank 8 first; mirrored, rank 1 comes first and colours swap.
char* writePlacement(const ChessBoard& board, char* p, bool mirrored) {
    for (int row = 0; row < 8; ++row) {
        const int rank = mirrored ? row : 7 - row;
        int empty      = 0;
        for (int file = 0; file < 8; ++file) {
            Square s = squareAt(file, rank);
            if (!board.pieceArray[s] || board.pieceArray[s] > KING) {
                ++empty;
                continue;
            }
            if (empty)
                *p++ = char('0' + empty);
            empty            = 0;
            const bool white = (board.bbColorPiece[WHITE] & bit(s)) != 0;
            *p++ = pieceLetters[white != mirrored ? WHITE : BLACK][board.pieceArray[s] - 1];
        }
        if (empty)
            *p++ = char('0' + empty);
        if (row < 7)
            *p++ = '/';
    }
    return p;
}

} // namespace

void ChessBoard::toMirroredFen(char* out) const {
    char* p = writePlacement(*this, out, true);
    std::sprintf(p, sideToMove == WHITE ? " b - - 0 1" : " w - - 0 1");
}

void ChessBoard::toFen(char* out) const {
    char* p = writePlacement(*this, out, false);
    *p++    = ' ';
    *p++    = sideToMove == WHITE ? 'w' : 'b';
    *p++    = ' ';
    if (!castleRights)
        *p++ = '-';
    if (castleRights & CASTLE_WHITE_SHORT)
        *p++ = 'K';
    if (castleRights & CASTLE_WHITE_LONG)
        *p++ = 'Q';
    if (castleRights & CASTLE_BLACK_SHORT)
        *p++ = 'k';
    if (castleRights & CASTLE_BLACK_LONG)
        *p++ = 'q';
    *p++ = ' ';
    if (epFile) {
        *p++ = char('a' + epFile - 1);
        *p++ = sideToMove == WHITE ? '6' : '3';
    } else {
        *p++ = '-';
    }
    std::sprintf(p, " %d %d", fiftyCounter, gameMoveCount / 2 + 1);
}
