// SAN tokens from game files. The token is checked against the whole SAN shape first, so that
// trailing text the engine's SAN reader would not look at ("Qh4e1", "e4xyz") is never read as
// a shorter move. The reader then names the move, and the generated legal move it means is
// looked up, with the generator's flags; its first match may be pinned, in which case the
// text means the other legal move that fits it.
#include "book/game_moves.h"

#include <cstring>

namespace {

bool isFileLetter(char c) {
    return c >= 'a' && c <= 'h';
}
bool isRankDigit(char c) {
    return c >= '1' && c <= '8';
}
bool isOneOf(char c, std::string_view set) {
    return set.find(c) != std::string_view::npos;
}

Piece pieceOfLetter(char c) {
    switch (c) {
    case 'N':
        return KNIGHT;
    case 'B':
        return BISHOP;
    case 'R':
        return ROOK;
    case 'Q':
        return QUEEN;
    case 'K':
        return KING;
    default:
        return EMPTY;
    }
}

// What a SAN token says, and the spelling of it the engine's reader expects.
struct SanText {
    bool castle   = false;
    Piece piece   = EMPTY;
    int fromFile  = -1;
    int fromRank  = -1;
    Square to     = 0;
    Piece promote = EMPTY;
    char reader[16]; // piece letter, one origin hint, 'x', square, "=X"
};

// Takes the promotion off the end: "e8=Q", and "e8Q" as some writers spell it.
bool takePromotion(std::string_view& body, SanText& san) {
    if (body.empty() || !isOneOf(body.back(), "NBRQ"))
        return true;
    if (san.piece != PAWN)
        return false;
    san.promote = pieceOfLetter(body.back());
    body.remove_suffix(1);
    if (!body.empty() && body.back() == '=')
        body.remove_suffix(1);
    return true;
}

// The origin hints and the capture mark in front of the square: "", "b", "1", "b1", with an
// optional "x" behind. A pawn's only hint is the file it captures from.
bool takeOrigin(std::string_view prefix, SanText& san) {
    if (!prefix.empty() && prefix.back() == 'x')
        prefix.remove_suffix(1);
    if (!prefix.empty() && isFileLetter(prefix[0])) {
        san.fromFile = prefix[0] - 'a';
        prefix.remove_prefix(1);
    }
    if (!prefix.empty() && isRankDigit(prefix[0]) && san.piece != PAWN) {
        san.fromRank = prefix[0] - '1';
        prefix.remove_prefix(1);
    }
    return prefix.empty();
}

void writeReaderText(SanText& san) {
    char* out = san.reader;
    if (san.piece != PAWN)
        *out++ = "  NBRQK"[san.piece];
    // The reader takes one hint; with both, the file goes to the reader and the rank is
    // checked here. The "x" makes the reader take the letter as a hint, capture or not.
    if (san.fromFile >= 0) {
        *out++ = char('a' + san.fromFile);
        *out++ = 'x';
    } else if (san.fromRank >= 0) {
        *out++ = char('1' + san.fromRank);
    }
    *out++ = char('a' + fileOf(san.to));
    *out++ = char('1' + rankOf(san.to));
    if (san.promote) {
        *out++ = '=';
        *out++ = "  NBRQK"[san.promote];
    }
    *out = 0;
}

bool parseSan(std::string_view token, SanText& san) {
    while (!token.empty() && isOneOf(token.back(), "+#!?"))
        token.remove_suffix(1);
    if (token == "O-O" || token == "0-0" || token == "O-O-O" || token == "0-0-0") {
        san.castle = true;
        std::strcpy(san.reader, token.size() == 3 ? "O-O" : "O-O-O");
        return true;
    }
    if (token.empty() || token.size() > 8)
        return false;
    san.piece = isFileLetter(token[0]) ? PAWN : pieceOfLetter(token[0]);
    if (san.piece == EMPTY)
        return false;
    if (san.piece != PAWN)
        token.remove_prefix(1);
    if (!takePromotion(token, san) || token.size() < 2)
        return false;
    const char file = token[token.size() - 2], rank = token.back();
    if (!isFileLetter(file) || !isRankDigit(rank))
        return false;
    san.to = squareAt(file - 'a', rank - '1');
    if (!takeOrigin(token.substr(0, token.size() - 2), san))
        return false;
    writeReaderText(san);
    return true;
}

bool fits(const SanText& san, Move read, Move m) {
    if (san.castle)
        return isCastle(m) && moveTo(m) == moveTo(read);
    if (isCastle(m) || movePiece(m) != san.piece || moveTo(m) != san.to ||
        movePromotion(m) != san.promote)
        return false;
    return (san.fromFile < 0 || fileOf(moveFrom(m)) == san.fromFile) &&
           (san.fromRank < 0 || rankOf(moveFrom(m)) == san.fromRank);
}

bool isLegal(ChessBoard& board, Move m) {
    const bool legal = board.makeMove(m);
    board.unmakeMove(m);
    return legal;
}

} // namespace

const char* gameMoveStatusText(GameMoveStatus status) {
    switch (status) {
    case GAME_MOVE_OK:
        return "legal move";
    case GAME_MOVE_UNREADABLE:
        return "unreadable move";
    case GAME_MOVE_NO_SUCH:
        return "no such move";
    case GAME_MOVE_ILLEGAL:
        return "illegal move";
    case GAME_MOVE_AMBIGUOUS:
        return "ambiguous move";
    }
    return "unreadable move";
}

GameMoveStatus readGameMove(ChessBoard& board, std::string_view token, Move& move) {
    move = NO_MOVE;
    SanText san;
    Move read;
    if (!parseSan(token, san))
        return GAME_MOVE_UNREADABLE;
    if (!board.sanToMove(san.reader, read))
        return GAME_MOVE_NO_SUCH;

    MoveEntry list[MAX_GENERATED];
    const std::uint8_t wasInCheck = board.inCheck;
    const int count               = board.generateMoves(list, board.sideToMoveInCheck());
    board.inCheck                 = wasInCheck;
    int candidates = 0, others = 0;
    Move other = NO_MOVE;
    for (int i = 0; i < count; ++i) {
        const Move m = list[i].move;
        if (!fits(san, read, m))
            continue;
        ++candidates;
        if (!isLegal(board, m))
            continue;
        // The reader's own pick, when it is legal, is what the text means.
        if (moveFrom(m) == moveFrom(read)) {
            move = m;
            return GAME_MOVE_OK;
        }
        other = m;
        ++others;
    }
    if (others == 1) {
        move = other;
        return GAME_MOVE_OK;
    }
    if (others > 1)
        return GAME_MOVE_AMBIGUOUS;
    return candidates ? GAME_MOVE_ILLEGAL : GAME_MOVE_NO_SUCH;
}
