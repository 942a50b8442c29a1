// Static evaluation. For now the material balance alone, from the side to move's view.
#include "board/chess_board.h"

int ChessBoard::evaluate(int, int, int) {
    const int score = material[WHITE] - material[BLACK];
    return sideToMove == WHITE ? score : -score;
}
