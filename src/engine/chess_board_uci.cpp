// The console adapter's hooks that send moves and read commands.
#include "engine/chess_board_uci.h"

void ChessBoardUCI::sendMove() {}

int ChessBoardUCI::readCommand() { return 0; }
