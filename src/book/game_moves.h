// Moves of game files: a SAN token, as PGN writers spell it, turned into the legal move of the
// position on the board, with the flags the generator gives it.
#pragma once

#include "board/chess_board.h"

#include <string_view>

enum GameMoveStatus {
    GAME_MOVE_OK,
    GAME_MOVE_UNREADABLE, // not SAN
    GAME_MOVE_NO_SUCH,    // SAN, but no piece of the position can play it
    GAME_MOVE_ILLEGAL,    // every move the text can mean leaves the king in check
    GAME_MOVE_AMBIGUOUS,  // more than one legal move fits the text
};

const char* gameMoveStatusText(GameMoveStatus status);

// Finds the move; the board is left as it was.
GameMoveStatus readGameMove(ChessBoard& board, std::string_view token, Move& move);
