// SAN tokens from game files. PGN writers spell moves in ways the engine's SAN reader
// (ChessBoard::sanToMove) does not take: check and annotation marks, castling with zeros, a
// promotion without "=", both origin hints. The token is checked against the whole SAN shape
// and rewritten in the reader's spelling, so that text the reader would not look at ("Qh4e1"
// read as Qh4, "e4xyz" as e4) never passes as a shorter move. The reader then names the
// move, once, and the legal move it means is looked up with the generator's flags. The
// reader's pick may be pinned, in which case the text means the other legal move that fits.
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

// A token in the reader's spelling (piece letter, one origin hint, "x", square, "=X"), and
// the origin hints it was written with: the reader takes only one of them.
struct ReaderText {
    char text[16];
    int fromFile = -1;
    int fromRank = -1;
};

// The origin hints and the capture mark in front of the square: "", "b", "1", "b1", with an
// optional "x" behind. A pawn's only hint is the file it captures from.
bool takeOrigin(std::string_view prefix, bool pawn, ReaderText& out) {
    if (!prefix.empty() && prefix.back() == 'x')
        prefix.remove_suffix(1);
    if (!prefix.empty() && isFileLetter(prefix[0])) {
        out.fromFile = prefix[0] - 'a';
        prefix.remove_prefix(1);
    }
    if (!prefix.empty() && isRankDigit(prefix[0]) && !pawn) {
        out.fromRank = prefix[0] - '1';
        prefix.remove_prefix(1);
    }
    return prefix.empty();
}

// False when the token is not SAN.
bool spellForReader(std::string_view token, ReaderText& out) {
    while (!token.empty() && isOneOf(token.back(), "+#!?"))
        token.remove_suffix(1);
    if (token == "O-O" || token == "0-0" || token == "O-O-O" || token == "0-0-0") {
        std::strcpy(out.text, token.size() == 3 ? "O-O" : "O-O-O");
        return true;
    }
    if (token.empty() || token.size() > 8)
        return false;
    const bool pawn = isFileLetter(token[0]);
    if (!pawn && !isOneOf(token[0], "NBRQK"))
        return false;
    char* p = out.text;
    if (!pawn) {
        *p++ = token[0];
        token.remove_prefix(1);
    }
    // The promotion at the end: "e8=Q", and "e8Q" as some writers spell it.
    char promotion = 0;
    if (!token.empty() && isOneOf(token.back(), "NBRQ")) {
        if (!pawn)
            return false;
        promotion = token.back();
        token.remove_suffix(1);
        if (!token.empty() && token.back() == '=')
            token.remove_suffix(1);
    }
    if (token.size() < 2)
        return false;
    const char file = token[token.size() - 2], rank = token.back();
    if (!isFileLetter(file) || !isRankDigit(rank) ||
        !takeOrigin(token.substr(0, token.size() - 2), pawn, out))
        return false;
    // With both hints the file goes to the reader and the rank is checked here. The "x"
    // makes the reader take the letter as a hint, capture or not.
    if (out.fromFile >= 0) {
        *p++ = char('a' + out.fromFile);
        *p++ = 'x';
    } else if (out.fromRank >= 0) {
        *p++ = char('1' + out.fromRank);
    }
    *p++ = file;
    *p++ = rank;
    if (promotion) {
        *p++ = '=';
        *p++ = promotion;
    }
    *p = 0;
    return true;
}

// Whether the generated move m is one the text can mean: the reader's move gives the piece,
// the square and the promotion, the hints narrow the origin.
bool fits(const ReaderText& spelled, Move read, Move m) {
    if (isCastle(read))
        return isCastle(m) && moveTo(m) == moveTo(read);
    return !isCastle(m) && movePiece(m) == movePiece(read) && moveTo(m) == moveTo(read) &&
           movePromotion(m) == movePromotion(read) &&
           (spelled.fromFile < 0 || fileOf(moveFrom(m)) == spelled.fromFile) &&
           (spelled.fromRank < 0 || rankOf(moveFrom(m)) == spelled.fromRank);
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
    ReaderText spelled;
    Move read;
    if (!spellForReader(token, spelled))
        return GAME_MOVE_UNREADABLE;
    if (!board.sanToMove(spelled.text, read))
        return GAME_MOVE_NO_SUCH;

    MoveEntry list[MAX_GENERATED];
    int count  = board.generateLegalMoves(list);
    int others = 0;
    Move other = NO_MOVE;
    for (int i = 0; i < count; ++i) {
        const Move m = list[i].move;
        if (!fits(spelled, read, m))
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
    // No legal move fits: the text is illegal when a piece could play it but for its king.
    count = board.generatePseudoLegalMoves(list);
    for (int i = 0; i < count; ++i)
        if (fits(spelled, read, list[i].move))
            return GAME_MOVE_ILLEGAL;
    return GAME_MOVE_NO_SUCH;
}
