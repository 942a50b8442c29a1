// Makes opening books from games. Reading goes block by block, each block cut at a game's
// start, and worker threads replay the games of a block on their own engine boards: every
// move of a game's first plies is counted with the game's result under the key of the
// position it was played from. The counts gather in one table per thread; a table that
// fills its share of the memory limit is sorted and spilled to a temporary file, and the
// sorted runs are merged into the book file, which is written node by node in key order.
// Memory therefore stays within the limit whatever the size of the input, and the file is
// the same byte for byte for any limit and any number of threads.
#pragma once

#include "board/chess_board.h"
#include "book/pgn_reader.h"

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
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

constexpr int DEFAULT_BUILD_MEMORY_MB = 24;

struct BookBuildOptions {
    int plies                   = 20; // moves recorded from the start of each game
    std::uint32_t minGames      = 1;  // moves played in fewer games stay out of the book
    std::size_t memoryMegabytes = DEFAULT_BUILD_MEMORY_MB;
    int threads                 = 0; // 0: one per processor core
    std::size_t tableEntries    = 0; // entries per thread's table; 0: from the memory limit
};

// One recorded ply: the key of the position and the move played from it.
struct PlayedMove {
    std::uint64_t key;
    Move move;
};

// Replays the game's first `plies` plies on the board into `line`, each (position, move)
// once however often the game comes back to it, so that counts are numbers of games. A game
// that cannot be replayed that far records nothing, and `detail` says where it went wrong.
SkipReason replayGame(ChessBoard& board, const PgnGame& game, int plies,
                      std::vector<PlayedMove>& line, std::string& detail);

struct BuildTally {
    std::uint64_t games                 = 0;
    std::uint64_t plies                 = 0; // positions replayed and counted
    std::uint64_t skipped[SKIP_REASONS] = {};
    // Known once the counts are merged: distinct positions and moves of the games, what the
    // book keeps of them, and the moves left out because their position had 16 already.
    std::uint64_t positions = 0, moves = 0;
    std::uint64_t bookPositions = 0, bookMoves = 0, leftOut = 0;
    int runs = 0; // sorted runs spilled to temporary files
    std::uint64_t skippedTotal() const;
};

class BuildListener {
public:
    virtual ~BuildListener() = default;
    // In the order of the games, numbered from 1.
    virtual void skipped(std::uint64_t gameNumber, SkipReason reason,
                         const std::string& detail) = 0;
    // Now and then while games are read.
    virtual void progress(const BuildTally& tally) = 0;
};

// Builds the book of the games read from `in` and writes it to `bookPath` (through a
// temporary file). False, with `error` set and no book written, when reading or writing
// failed or no game gave a move.
// `makeBoard` gives each worker thread its engine board.
bool buildBook(std::FILE* in, const char* bookPath, const BookBuildOptions& options,
               const std::function<std::unique_ptr<ChessBoard>()>& makeBoard,
               BuildListener& listener, BuildTally& tally, std::string& error);
