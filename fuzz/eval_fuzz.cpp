// Feeds arbitrary text to the FEN reader and, for every position it accepts (odd ones
// included: pawns on the back ranks, no kings, nine queens), runs the evaluation, the move
// scoring and the exchange evaluator on it and on each child. The evaluation must not change
// the board, and the colour-mirrored position must score the same for the side to move.
#include "fuzz_board.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

SilentBoard& mirrorBoard() {
    static SilentBoard* board = [] {
        auto* b = new SilentBoard();
        b->initTables(0);
        return b;
    }();
    return *board;
}

std::string mirroredFen(const ChessBoard& board) {
    char fen[128];
    board.toMirroredFen(fen);
    return fen;
}

// Shelter bounds are deliberately not mirror images (a3 and h3 against a6 and h6).
bool kingOnShelterBound(const ChessBoard& board) {
    const Bitboard bounds = bit(16) | bit(23) | bit(40) | bit(47);
    return board.gameStage <= 1 &&
           ((board.bbPiece[WHITE][KING] | board.bbPiece[BLACK][KING]) & bounds);
}

void checkMirror(SilentBoard& board) {
    SilentBoard& mirror   = mirrorBoard();
    const std::string fen = mirroredFen(board);
    // Nine black pawns or two black kings come back as something the reader refuses.
    if (!mirror.setPosition(fen.c_str()) || kingOnShelterBound(board) || kingOnShelterBound(mirror))
        return;
    const int score = board.evaluate(-INFINITE_SCORE, INFINITE_SCORE, 0);
    if (mirror.evaluate(-INFINITE_SCORE, INFINITE_SCORE, 0) != score)
        std::abort();
}

void exercise(SilentBoard& board, Move hashMove) {
    const Position before = board;
    EvalTerms terms;
    board.evaluateTerms(terms);
    board.evaluate(-50, 50, 1);
    MoveEntry* list = board.moveStack;
    const int count = board.generatePseudoLegalMoves(list);
    board.scoreMoves(list, count, hashMove, 2);
    board.scoreCaptures(list, count, hashMove);
    for (int i = 0; i < count; ++i)
        board.see(list[i].move);
    if (!samePosition(board, before))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    SilentBoard& board = fuzzBoard();
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (!board.setPosition(text.c_str()))
        return 0;
    checkMirror(board);
    exercise(board, NO_MOVE);
    MoveEntry moves[MAX_GENERATED];
    const int count = board.generatePseudoLegalMoves(moves);
    for (int i = 0; i < count; ++i) {
        if (board.makeMove(moves[i].move))
            exercise(board, moves[i].move);
        board.unmakeMove(moves[i].move);
    }
    return 0;
}
