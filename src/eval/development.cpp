// Development penalties: centre pawns blocked on their home squares, bishops trapped behind
// an enemy pawn on the edge, and rooks shut in by their own uncastled king.
#include "eval/eval_tables.h"
#include "eval/eval_terms.h"

namespace {

// Squares named from White's side; Black reads them with the rank flipped.
constexpr Square A1 = 0, B1 = 1, C1 = 2, F1 = 5, G1 = 6, H1 = 7;
constexpr Square D2 = 11, E2 = 12, D3 = 19, E3 = 20;
constexpr Square B6 = 41, G6 = 46, A7 = 48, H7 = 55;

template <Color Us> int developmentPenalty(const Position& p) {
    constexpr Color THEM = opponent(Us);
    auto has             = [](Bitboard b, Square whiteSquare) {
        return (b & bit(relativeSquare(Us, whiteSquare))) != 0;
    };
    const Bitboard pawns = p.bbPiece[Us][PAWN], bishops = p.bbPiece[Us][BISHOP];
    const Bitboard enemyPawns = p.bbPiece[THEM][PAWN];
    int penalty               = 0;

    if (has(pawns, D2) && has(p.bbAllPiece, D3))
        penalty += BLOCKED_CENTRE_PAWN;
    if (has(pawns, E2) && has(p.bbAllPiece, E3))
        penalty += BLOCKED_CENTRE_PAWN;

    // Only one bishop a side is counted trapped.
    if (has(bishops, A7) && has(enemyPawns, B6))
        penalty += TRAPPED_BISHOP;
    else if (has(bishops, H7) && has(enemyPawns, G6))
        penalty += TRAPPED_BISHOP;

    // Once the game opens up the king walks out and the rook is free again.
    if (p.gameStage <= 1) {
        const Bitboard king = p.bbPiece[Us][KING], rooks = p.bbPiece[Us][ROOK];
        if ((has(king, F1) || has(king, G1) || has(king, H1)) && (has(rooks, G1) || has(rooks, H1)))
            penalty += SHUT_IN_ROOK;
        else if ((has(king, A1) || has(king, B1) || has(king, C1)) &&
                 (has(rooks, A1) || has(rooks, B1)))
            penalty += SHUT_IN_ROOK;
    }
    return penalty;
}

} // namespace

void scoreDevelopment(const Position& p, EvalTerms& terms) {
    terms.add(GROUP_DEVELOPMENT, WHITE, -developmentPenalty<WHITE>(p));
    terms.add(GROUP_DEVELOPMENT, BLACK, -developmentPenalty<BLACK>(p));
}
