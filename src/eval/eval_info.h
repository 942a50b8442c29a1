// What one evaluation leaves behind for later readers in the same node: the attack maps of
// both colours and the pawn data.
#pragma once

#include "board/types.h"

struct EvalInfo {
    Bitboard attackMap[2];     // squares attacked by each colour's knights, bishops, rooks, queens
    Bitboard pawnAttackMap[2]; // squares attacked by each colour's pawns
};
