// SAN tokens from game files, read by the engine's one SAN reader in its game-file spelling
// (check and annotation marks, castling with zeros, a promotion without "=", both origin
// hints, and nothing after the move). The move the text means is the legal move the
// engine's own reader would pick; when that one is pinned, the one other legal move that
// fits, if there is exactly one.
#include "book/game_moves.h"

#include "board/san_text.h"

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

namespace {

// The origin of the first generated move the engine's reader takes for the text, or -1.
Square pickedOrigin(const SanText& san, const MoveEntry* list, int count) {
    for (int i = 0; i < count; ++i)
        if (san.picks(list[i].move))
            return moveFrom(list[i].move);
    return -1;
}

} // namespace

GameMoveStatus readGameMove(ChessBoard& board, std::string_view token, Move& move) {
    move = NO_MOVE;
    SanText san;
    if (!readSan(token, san, SanSpelling::GAME_FILE, board.side()))
        return GAME_MOVE_UNREADABLE;
    MoveEntry list[MAX_GENERATED];
    const int count     = board.generatePseudoLegalMoves(list);
    const Square picked = san.castle ? -1 : pickedOrigin(san, list, count);
    if (!san.castle && picked < 0)
        return GAME_MOVE_NO_SUCH;

    // Only the moves the text can mean are tried for legality: one make instead of one per
    // move of the position, which is most of the time a book build takes.
    int others = 0, meant = 0;
    Move other = NO_MOVE;
    for (int i = 0; i < count; ++i) {
        const Move m = list[i].move;
        if (!san.means(m))
            continue;
        ++meant;
        const bool legal = board.makeMove(m);
        board.unmakeMove(m);
        if (!legal)
            continue;
        // The reader's own pick, when it is legal, is what the text means.
        if (san.castle || moveFrom(m) == picked) {
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
    return meant ? GAME_MOVE_ILLEGAL : GAME_MOVE_NO_SUCH;
}
