// Counting the moves of games per position. A game counts once for a move even when the move
// comes back in it (a repeated position), so counts are numbers of games, as the book says.
#include "book/book_builder.h"

#include "book/game_moves.h"

#include <algorithm>
#include <cstdio>

namespace {

std::uint8_t percentOf(std::uint32_t part, std::uint32_t whole) {
    return std::uint8_t(std::uint64_t(part) * 100 / whole); // rounded down
}

SkipReason skipFor(GameMoveStatus status) {
    switch (status) {
    case GAME_MOVE_OK:
        return SKIP_NONE;
    case GAME_MOVE_UNREADABLE:
        return SKIP_UNREADABLE_MOVE;
    case GAME_MOVE_NO_SUCH:
        return SKIP_NO_SUCH_MOVE;
    case GAME_MOVE_ILLEGAL:
        return SKIP_ILLEGAL_MOVE;
    case GAME_MOVE_AMBIGUOUS:
        return SKIP_AMBIGUOUS_MOVE;
    }
    return SKIP_UNREADABLE_MOVE;
}

} // namespace

const char* skipReasonText(SkipReason reason) {
    switch (reason) {
    case SKIP_MALFORMED:
        return "malformed PGN";
    case SKIP_BAD_FEN:
        return "bad FEN tag";
    case SKIP_UNREADABLE_MOVE:
        return "unreadable move";
    case SKIP_NO_SUCH_MOVE:
        return "no such move";
    case SKIP_ILLEGAL_MOVE:
        return "illegal move";
    case SKIP_AMBIGUOUS_MOVE:
        return "ambiguous move";
    default:
        return "none";
    }
}

SkipReason BookBuilder::addGame(const PgnGame& game, std::string& detail) {
    detail.clear();
    if (!game.error.empty()) {
        detail = game.error;
        return SKIP_MALFORMED;
    }
    line.clear();
    if (const SkipReason reason = replay(game, detail); reason != SKIP_NONE)
        return reason;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const bool seen = std::any_of(line.begin(), line.begin() + i, [&](const Played& p) {
            return p.key == line[i].key && p.move == line[i].move;
        });
        if (!seen)
            record(line[i], game.result);
    }
    return SKIP_NONE;
}

// Plays the whole game, so that a transcription error anywhere in it is caught, and keeps the
// first plies in `line`.
SkipReason BookBuilder::replay(const PgnGame& game, std::string& detail) {
    if (!board.setPosition(game.fen.empty() ? START_FEN : game.fen.c_str())) {
        detail = "the FEN tag is not a position the engine accepts";
        return SKIP_BAD_FEN;
    }
    for (std::size_t ply = 0; ply < game.moves.size(); ++ply) {
        Move move;
        const GameMoveStatus status = readGameMove(board, game.moves[ply], move);
        if (status != GAME_MOVE_OK) {
            char text[48];
            std::snprintf(text, sizeof text, "ply %zu \"%.16s\"", ply + 1, game.moves[ply].c_str());
            detail = text;
            return skipFor(status);
        }
        if (ply < std::size_t(options.plies))
            line.push_back({board.hashKey, move});
        // A legal move is refused only when the game record is full, thousands of plies past
        // anything a book keeps.
        if (!board.playGameMove(move))
            break;
    }
    return SKIP_NONE;
}

void BookBuilder::record(const Played& played, GameResult result) {
    std::vector<MoveStats>& moves = table[played.key];
    auto stats                    = std::find_if(moves.begin(), moves.end(),
                                                 [&](const MoveStats& s) { return s.move == played.move; });
    if (stats == moves.end()) {
        moves.push_back({played.move, 0, 0, 0});
        stats = moves.end() - 1;
        ++moveCount;
    }
    ++stats->games;
    stats->whiteWins += result == RESULT_WHITE_WINS;
    stats->blackWins += result == RESULT_BLACK_WINS;
}

std::size_t BookBuilder::fillBook(OpeningBook& book) const {
    std::size_t dropped = 0;
    std::vector<MoveStats> kept;
    for (const auto& [key, moves] : table) {
        kept.clear();
        for (const MoveStats& s : moves)
            if (s.games >= options.minGames)
                kept.push_back(s);
        // Most played first, so that a node with more than sixteen moves keeps the main ones;
        // ties keep the order the moves first appeared in.
        std::stable_sort(kept.begin(), kept.end(),
                         [](const MoveStats& a, const MoveStats& b) { return a.games > b.games; });
        for (const MoveStats& s : kept)
            if (!book.insertBookMove(std::uint32_t(key), std::uint32_t(key >> 32), s.move, s.games,
                                     percentOf(s.whiteWins, s.games),
                                     percentOf(s.blackWins, s.games)))
                ++dropped;
    }
    return dropped;
}
