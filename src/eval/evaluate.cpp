// Static evaluation: the endgame draw, the lazy exit and the order of the term groups. The
// terms themselves live in development.cpp, pawns.cpp, pieces.cpp and king_safety.cpp.
#include "board/chess_board.h"
#include "eval/eval_tables.h"
#include "eval/eval_terms.h"

#include <cstdint>

namespace {

int fromSideToMove(const Position& p, int whiteScore) {
    return p.sideToMove == WHITE ? whiteScore : -whiteScore;
}

// In the endgame a side to move that has too little to mate scores a draw. Only the side to
// move is asked: its opponent may still be winning, but the search finds that out itself.
bool endgameDraw(const ChessBoard& board) {
    return board.gameStage > 1 && board.cannotWin(board.side());
}

// Every term group from White's view. The order matters: the pawn data feeds the pieces'
// safe mobility, and the pieces' attack maps feed the king-ring term.
int scoreAllTerms(const Position& p, PawnCache& cache, EvalInfo& info, EvalTerms& terms) {
    terms                            = {};
    terms.sum[GROUP_MATERIAL][WHITE] = p.material[WHITE];
    terms.sum[GROUP_MATERIAL][BLACK] = p.material[BLACK];
    scoreDevelopment(p, terms);
    scorePawns(p, cache, info, terms);
    scorePieces(p, info, terms);
    scoreKings(p, info, terms);
    return terms.whiteScore();
}

} // namespace

int ChessBoard::evaluate(int alpha, int beta, int lazy) {
    if (endgameDraw(*this))
        return 0;
    if (lazy == 1) {
        const int balance = fromSideToMove(*this, material[WHITE] - material[BLACK]);
        if (balance - LAZY_MARGIN >= beta || balance + LAZY_MARGIN <= alpha)
            return balance;
    }
    return fullScore();
}

// The full score depends on nothing the key leaves out, so a position met again (by another
// move order, or by the quiescence search below a futility test) takes it from the cache.
int ChessBoard::fullScore() {
    const std::uint32_t low = std::uint32_t(hashKey), high = std::uint32_t(hashKey >> 32);
    int score;
    if (evalCache.probe(low, high, score) == 0)
        return score;
    EvalTerms terms;
    score = fromSideToMove(*this, scoreAllTerms(*this, pawnCache, evalInfo, terms));
    // An entry holds 16 bits; a score beyond them, which only contrived boards reach, is
    // simply computed again next time.
    if (score >= INT16_MIN && score <= INT16_MAX)
        evalCache.store(low, high, score);
    return score;
}

int ChessBoard::evaluateTerms(EvalTerms& terms) {
    terms = {};
    if (endgameDraw(*this))
        return 0;
    return fromSideToMove(*this, scoreAllTerms(*this, pawnCache, evalInfo, terms));
}
