// The engine's side of the book: opening the file the configuration names, and turning the
// book's choice into a move of the position on the board. A book move that is not a legal
// move here (a damaged file, or a key shared by two positions) is never played.
#include "board/chess_board.h"
#include "book/opening_book.h"

OpeningBook& ChessBoard::openingBook() {
    if (!book)
        book = {new OpeningBook(), [](OpeningBook* b) { delete b; }};
    return *book;
}

bool ChessBoard::openBook(const char* path) {
    if (!openingBook().loadBook(path))
        return false;
    // A book written by the builder is sorted already; any other order would hide nodes from
    // the binary search.
    if (!book->isSortedByKey())
        book->sortByKey();
    bookEnabled = true;
    return true;
}

Move ChessBoard::probeBook() {
    if (!book)
        return NO_MOVE;
    const Move wanted = chooseBookMove(*book, std::uint32_t(hashKey), std::uint32_t(hashKey >> 32));
    if (wanted == NO_MOVE)
        return NO_MOVE;
    return legalBookMove(*this, wanted);
}

Move legalBookMove(ChessBoard& board, Move wanted) {
    MoveEntry list[MAX_GENERATED];
    const int count = board.generateLegalMoves(list);
    for (int i = 0; i < count; ++i) {
        const Move m = list[i].move;
        if (moveFrom(m) == moveFrom(wanted) && moveTo(m) == moveTo(wanted) &&
            movePiece(m) == movePiece(wanted) && movePromotion(m) == movePromotion(wanted))
            return m;
    }
    return NO_MOVE;
}
