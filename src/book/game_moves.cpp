// SAN tokens from game files. The engine's SAN reader reads the text; this file adds what a
// game file needs on top: the spellings writers use ("0-0", "e8Q", "Nf3+!"), and the legal move
// the text means when the reader's first match is pinned.
#include "book/game_moves.h"

namespace {

bool isFileLetter(char c) { return c >= 'a' && c <= 'h'; }
bool isRankDigit(char c) { return c >= '1' && c <= '8'; }
bool isOneOf(char c, std::string_view set) { return set.find(c) != std::string_view::npos; }

// Copies the token in the spelling the SAN reader expects; false when it is too long to be a
// move at all.
bool normalise(std::string_view token, char* out, std::size_t capacity) {
    while (!token.empty() && isOneOf(token.back(), "+#!?")) token.remove_suffix(1);
    if (token == "0-0") token = "O-O";
    else if (token == "0-0-0") token = "O-O-O";
    if (token.empty() || token.size() + 2 > capacity) return false;
    std::size_t n = token.copy(out, token.size());
    // A pawn reaching the last rank written "e8Q" means "e8=Q".
    if (isFileLetter(token[0]) && n >= 3 && isOneOf(token[n - 1], "NBRQ") &&
        (token[n - 2] == '1' || token[n - 2] == '8')) {
        out[n]     = out[n - 1];
        out[n - 1] = '=';
        ++n;
    }
    out[n] = 0;
    return true;
}

// Whether the origin hint of the text (an origin rank, or an origin file, read the way the SAN
// reader reads it) allows a move from `from`.
bool fitsHint(const char* text, Square from) {
    const char* p = isFileLetter(text[0]) ? text : text + 1; // pawns have no piece letter
    if (isRankDigit(p[0])) return rankOf(from) == p[0] - '1';
    if (isFileLetter(p[0]) && (isFileLetter(p[1]) || p[1] == 'x'))
        return fileOf(from) == p[0] - 'a';
    return true;
}

bool sameTarget(Move a, Move b) {
    return moveTo(a) == moveTo(b) && movePiece(a) == movePiece(b) &&
           movePromotion(a) == movePromotion(b);
}

bool isLegal(ChessBoard& board, Move m) {
    const bool legal = board.makeMove(m);
    board.unmakeMove(m);
    return legal;
}

} // namespace

const char* gameMoveStatusText(GameMoveStatus status) {
    switch (status) {
    case GAME_MOVE_OK: return "legal move";
    case GAME_MOVE_UNREADABLE: return "unreadable move";
    case GAME_MOVE_ILLEGAL: return "illegal move";
    case GAME_MOVE_AMBIGUOUS: return "ambiguous move";
    }
    return "unreadable move";
}

GameMoveStatus readGameMove(ChessBoard& board, std::string_view token, Move& move) {
    move = NO_MOVE;
    char text[32];
    Move read;
    if (!normalise(token, text, sizeof text) || !board.sanToMove(text, read))
        return GAME_MOVE_UNREADABLE;

    MoveEntry list[MAX_GENERATED];
    const std::uint8_t wasInCheck = board.inCheck;
    const int count               = board.generateMoves(list, board.sideToMoveInCheck());
    board.inCheck                 = wasInCheck;
    // The reader takes the first generated match, which may be pinned; the text then means
    // the one other legal move that fits it, if there is exactly one.
    const bool castling = text[0] == 'O';
    Move other          = NO_MOVE;
    int others          = 0;
    for (int i = 0; i < count; ++i) {
        const Move m = list[i].move;
        if (!sameTarget(m, read) || (!castling && !fitsHint(text, moveFrom(m)))) continue;
        if (!isLegal(board, m)) continue;
        if (moveFrom(m) == moveFrom(read)) {
            move = m;
            return GAME_MOVE_OK;
        }
        other = m;
        ++others;
    }
    if (others == 1) move = other;
    return others == 1 ? GAME_MOVE_OK : others == 0 ? GAME_MOVE_ILLEGAL : GAME_MOVE_AMBIGUOUS;
}
