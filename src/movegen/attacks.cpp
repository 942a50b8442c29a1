// Attack questions beyond the plain "is this square attacked" of the position: the x-ray
// test that perft judges king steps with, and the toolkit's pin test.
#include "board/chess_board.h"

bool ChessBoard::isAttackedWithout(Square removed, Square square, Color by) const {
    Occupancy occ = occupancy();
    occ.remove(removed);
    return attackedIn(occ, square, by, bbPiece[by]);
}

// Whether the piece of `colour` on `square` shields its king from an enemy slider on the
// line through both: the line it stands on, seen from it, holds its king and such a slider.
bool ChessBoard::isPinned(Square square, Color colour) const {
    const Square king = kingSquare[colour];
    Bitboard line;
    Bitboard sliders;
    switch (direction[square][king]) {
    case NORTH:
    case SOUTH:
        line    = fileAttacks(square);
        sliders = lineSliders(opponent(colour));
        break;
    case EAST:
    case WEST:
        line    = rankAttacks(square);
        sliders = lineSliders(opponent(colour));
        break;
    case NORTH_EAST:
    case SOUTH_WEST:
        line    = diag45RAttacks(square);
        sliders = diagonalSliders(opponent(colour));
        break;
    case SOUTH_EAST:
    case NORTH_WEST:
        line    = diag45LAttacks(square);
        sliders = diagonalSliders(opponent(colour));
        break;
    default:
        return false;
    }
    return (line & bbPiece[colour][KING] & bit(king)) && (line & sliders);
}
