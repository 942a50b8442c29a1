// Moves of game files: a SAN token, as PGN writers spell it, turned into the legal move of the
// position on the board, with the flags the generator gives it.
#pragma once

#include <string_view>

#include "board/chess_board.h"

enum GameMoveStatus {
    GAME_MOVE_OK,
    GAME_MOVE_UNREADABLE, // not SAN, or no piece of that kind reaches the square
    GAME_MOVE_ILLEGAL,    // every move the text can mean leaves the king in check
    GAME_MOVE_AMBIGUOUS,  // more than one legal move fits the text
};

const char* gameMoveStatusText(GameMoveStatus status);

// Finds the move; the board is left as it was.
GameMoveStatus readGameMove(ChessBoard& board, std::string_view token, Move& move);
