// Feeds arbitrary text to the FEN reader. Whatever it accepts (odd positions included: pawns
// on the back ranks, no kings, nine queens) must be consistent, and a 2-ply perft must leave
// it exactly as it was; then the evaluation, the move scoring and the exchange evaluator run
// on it and on each child, and none of them may change the board. (The colour symmetry of
// the evaluation is checked over thousands of real positions by the evaluation tests.)
#include "fuzz_board.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

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
    // A side without a king has no king square to agree with; anything else is a fault.
    for (const char* message : board.checkConsistency())
        if (std::string(message).rfind("bad king position", 0) != 0)
            std::abort();
    const Position before = board;
    board.perft(2, 0);
    if (!samePosition(board, before))
        std::abort();
    char fen[128];
    board.toFen(fen);
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
