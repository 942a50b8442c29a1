// Static evaluation: the endgame draw, the lazy exit and the order of the term groups. The
// terms themselves live in development.cpp, pawns.cpp, pieces.cpp and king_safety.cpp.
#include "board/chess_board.h"
#include "eval/eval_tables.h"
#include "eval/eval_terms.h"

// Too little to mate with: no pawn, rook or queen, and at most two knights or one bishop.
bool ChessBoard::cannotWin(Color colour) const {
    const Bitboard* own = bbPiece[colour];
    if (own[PAWN] || own[ROOK] || own[QUEEN])
        return false;
    const int bishops = popCount(own[BISHOP]), knights = popCount(own[KNIGHT]);
    return bishops <= 1 && knights <= 2 && !(bishops && knights);
}

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
    EvalTerms terms;
    return fromSideToMove(*this, scoreAllTerms(*this, pawnCache, evalInfo, terms));
}

int ChessBoard::evaluateTerms(EvalTerms& terms) {
    terms = {};
    if (endgameDraw(*this))
        return 0;
    return fromSideToMove(*this, scoreAllTerms(*this, pawnCache, evalInfo, terms));
}
