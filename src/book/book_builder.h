// Makes opening books from games: each game is replayed on an engine board, and every move of
// its first plies is counted with the game's result under the key of the position it was
// played from. Reading the PGN text is pgn_reader's job, writing the file the book's.
#pragma once

#include "board/chess_board.h"
#include "book/opening_book.h"
#include "book/pgn_reader.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

// Why a game was left out, for the tool's tally.
enum SkipReason {
    SKIP_NONE,
    SKIP_MALFORMED,
    SKIP_BAD_FEN,
    SKIP_UNREADABLE_MOVE,
    SKIP_NO_SUCH_MOVE,
    SKIP_ILLEGAL_MOVE,
    SKIP_AMBIGUOUS_MOVE,
    SKIP_REASONS
};
const char* skipReasonText(SkipReason reason);

struct BookBuildOptions {
    int plies              = 20; // moves recorded from the start of each game
    std::uint32_t minGames = 1;  // moves played in fewer games stay out of the book
};

class BookBuilder {
public:
    BookBuilder(ChessBoard& replayBoard, BookBuildOptions buildOptions)
        : board(replayBoard), options(buildOptions) {}

    // Replays the game and records its first moves. A game that cannot be replayed to its end
    // is skipped whole: nothing of it is recorded, and `detail` says where it went wrong.
    SkipReason addGame(const PgnGame& game, std::string& detail);
    // Inserts every recorded move played in at least minGames games, the most played first
    // in each node; returns the number of moves left out because their node was full.
    std::size_t fillBook(OpeningBook& book) const;

    std::size_t positions() const { return table.size(); }
    std::size_t moves() const { return moveCount; }

private:
    struct MoveStats {
        Move move;
        std::uint32_t games, whiteWins, blackWins;
    };
    struct Played {
        std::uint64_t key;
        Move move;
    };

    SkipReason replay(const PgnGame& game, std::string& detail);
    void record(const Played& played, GameResult result);

    ChessBoard& board;
    BookBuildOptions options;
    std::unordered_map<std::uint64_t, std::vector<MoveStats>> table;
    std::size_t moveCount = 0;
    std::vector<Played> line; // the recorded plies of the game being added
};
