// The opening book. For now the engine plays without one.
#include "board/chess_board.h"

bool ChessBoard::openBook(const char*) { return false; }

Move ChessBoard::probeBook() { return NO_MOVE; }
