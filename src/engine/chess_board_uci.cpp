// The console adapter's hooks.
#include "engine/chess_board_uci.h"

void ChessBoardUCI::sendMove() {}

void ChessBoardUCI::printSearchInfo(int, const PrincipalVariation&, std::uint64_t, double) {}

int ChessBoardUCI::readCommand() { return 0; }
