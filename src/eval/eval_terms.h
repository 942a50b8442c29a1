// The evaluation's term groups, one function per concern, each adding its White and Black
// sums into the accumulators. evaluate.cpp calls them in a fixed order: pawns before pieces
// (safe mobility needs the pawn attacks), pieces before kings (ring attacks need the maps).
#pragma once

#include "board/position.h"
#include "eval/eval_info.h"
#include "eval/pawn_cache.h"

// Blocked centre pawns, trapped bishops and rooks shut in by their own king.
void scoreDevelopment(const Position& p, EvalTerms& terms);
// Fills the pawn data of `info` and scores pawn structure and passed pawns, taking what
// depends on the pawns alone from `cache`.
void scorePawns(const Position& p, PawnCache& cache, EvalInfo& info, EvalTerms& terms);
// Knights, bishops, rooks and queens; fills the attack maps of `info`.
void scorePieces(const Position& p, EvalInfo& info, EvalTerms& terms);
// Early queen, king tables, shelter and attacks next to the king.
void scoreKings(const Position& p, const EvalInfo& info, EvalTerms& terms);
