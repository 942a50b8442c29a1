// What the three searches share: one node's working state, the node-type alternation, the
// move picker, the extension rule and the cheap part of the stop-and-poll step that every
// node takes first.
#pragma once

#include "board/chess_board.h"
#include "search/transposition_table.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

// A full-width node deeper than this only evaluates; quiescence stops one ply later. Both
// keep every per-ply array (PV, killers, move stack) inside its MAX_PLY rows.
constexpr int DEEPEST_SEARCH_PLY     = MAX_PLY - 2;
constexpr int DEEPEST_QUIESCENCE_PLY = MAX_PLY - 1;

// Node types: 0 on the principal variation, 1 and 2 the two kinds of null-window node that
// alternate down the tree. The first move of a node inherits the other kind.
constexpr std::uint8_t PV_NODE          = 0;
constexpr std::uint8_t RE_SEARCH_NODE   = 1;
constexpr std::uint8_t childNodeType[3] = {0, 2, 1};

struct SearchNode {
    int depth; // eighths of a ply
    int moveBase;
    int alpha, beta;
    int ply;
    int type;
    bool inCheck;
    bool mateThreat = false;
    bool futile     = false;
    Move hashMove   = NO_MOVE;
};

// The record of the move that led to the current node: the parent writes the node's
// in-check flag and type into it before searching the node. At a root without moves it is
// the spare record in front of the first, hence the signed index.
inline HistoryRecord& currentRecord(ChessBoard& board) {
    return board.history[std::ptrdiff_t(board.historyCount) - 1];
}

// Extra depth for a move, in eighths: a check, a mate threat against the mover, a pawn
// reaching the seventh rank and a like-for-like exchange of pieces; never more than a ply.
inline int moveExtension(Move m, bool givesCheck, bool mateThreat) {
    int extension = givesCheck ? ONE_PLY : 0;
    if (mateThreat)
        extension += 4;
    if (movePiece(m) == PAWN && (rankOf(moveTo(m)) == 6 || rankOf(moveTo(m)) == 1))
        extension += ONE_PLY;
    if (moveCaptured(m) >= KNIGHT && moveCaptured(m) == movePiece(m))
        extension += 6;
    return std::min(extension, ONE_PLY);
}

// The key a move leads to, to ask for its table slot before the move is made. Changes of
// castling rights are left out: the guess then only asks for a slot not needed.
inline std::uint64_t keyAfter(const ChessBoard& b, Move m) {
    const Color side = b.side(), opp = opponent(side);
    const Square from = moveFrom(m), to = moveTo(m);
    const Piece piece = movePiece(m), promotion = movePromotion(m), captured = moveCaptured(m);
    std::uint64_t key = b.hashKey ^ b.sideKey ^ b.pieceKeyOf(side, piece, from) ^
                        b.pieceKeyOf(side, promotion ? promotion : piece, to);
    if (captured)
        key ^= b.pieceKeyOf(opp, captured, isEnPassant(m) ? enPassantVictim(side, to) : to);
    if (b.epFile)
        key ^= b.epKey[b.epFile - 1];
    return key;
}

// The move followed by the child's line becomes this node's line.
inline void extendLine(PrincipalVariation& pv, Move m, int score, const PrincipalVariation& child) {
    const std::uint32_t tail = std::min<std::uint32_t>(child.count, MAX_PLY - 1);
    pv.moves[0]              = m;
    pv.scores[0]             = std::int16_t(score);
    std::memcpy(pv.moves + 1, child.moves, tail * sizeof(Move));
    std::memcpy(pv.scores + 1, child.scores, tail * sizeof(std::int16_t));
    pv.count = tail + 1;
}

// The stop-and-poll step, taken first by every node: true when the node must return at
// once. The node limit is counted at every node; the clock and the input only every
// pollInterval nodes, in pollStopsSearch.
inline bool nodeMustStop(ChessBoard& board) {
    if (board.stopSearch)
        return true;
    bool pollNode = false;
    if (++board.pollCounter >= board.pollInterval) {
        board.pollCounter -= board.pollInterval;
        pollNode = true;
    }
    if (board.limits.timeMode == TIME_NODES &&
        std::uint64_t(board.limits.nodeLimit) <= board.nodeCount) {
        board.stopSearch = 1;
        return true;
    }
    return pollNode && board.pollStopsSearch();
}
