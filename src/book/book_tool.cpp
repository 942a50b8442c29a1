// pellix-book: makes the engine's opening book from PGN games and looks inside books. Problems
// with the input go to standard error, listings and progress to standard output.
#include "board/make_engine.h"
#include "board/silent_board.h"
#include "book/book_builder.h"
#include "book/game_moves.h"
#include "platform/terminal.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

const char* const USAGE =
    "usage: pellix-book build GAMES.pgn BOOK.bin [--plies N] [--min-games N]\n"
    "       pellix-book show BOOK.bin [FEN | moves]\n"
    "       pellix-book stats BOOK.bin\n";

// On a terminal the progress line is redrawn in place every so many games: often enough to
// see a large file move, rarely enough to cost nothing. A file or a pipe gets only the
// summary at the end.
constexpr int PROGRESS_EVERY = 1000;

int usage() {
    std::fputs(USAGE, stderr);
    return 2;
}

// A directory opens like a file on POSIX systems; only reading it fails.
bool readTextFile(const char* path, std::string& text) {
    std::FILE* in = std::fopen(path, "rb");
    if (!in)
        return false;
    char chunk[65536];
    std::size_t n;
    while ((n = std::fread(chunk, 1, sizeof chunk, in)) > 0)
        text.append(chunk, n);
    const bool read = !std::ferror(in);
    std::fclose(in);
    return read;
}

// A whole number of at least `least`, and nothing else.
bool parseCount(const char* text, long least, long& value) {
    char* end;
    value = std::strtol(text, &end, 10);
    return end != text && *end == 0 && value >= least && value <= 100000;
}

struct BuildTally {
    int gamesRead             = 0;
    int skipped[SKIP_REASONS] = {};
    bool progressShown        = false; // a progress line without its newline is on screen
    int skippedTotal() const {
        int total = 0;
        for (int n : skipped)
            total += n;
        return total;
    }
};

// The tally without a newline. Its numbers only grow, so each line is at least as long as
// the one it is drawn over.
void printTally(const BuildTally& tally, const BookBuilder& builder) {
    std::printf("games %d, positions %zu, moves %zu, skipped %d", tally.gamesRead,
                builder.positions(), builder.moves(), tally.skippedTotal());
    const char* separator = " (";
    for (int r = SKIP_NONE + 1; r < SKIP_REASONS; ++r)
        if (tally.skipped[r]) {
            std::printf("%s%s %d", separator, skipReasonText(SkipReason(r)), tally.skipped[r]);
            separator = ", ";
        }
    std::printf("%s", separator[0] == ',' ? ")" : "");
}

void showProgress(BuildTally& tally, const BookBuilder& builder) {
    std::printf("\r");
    printTally(tally, builder);
    std::fflush(stdout);
    tally.progressShown = true;
}

// Ends a progress line on screen, so that what comes next starts a line of its own.
void endProgress(BuildTally& tally) {
    if (!tally.progressShown)
        return;
    std::printf("\n");
    std::fflush(stdout);
    tally.progressShown = false;
}

bool parseBuildOptions(int argc, char** argv, BookBuildOptions& options) {
    for (int i = 4; i < argc; i += 2) {
        long value;
        if (i + 1 >= argc || !parseCount(argv[i + 1], 1, value))
            return false;
        if (std::strcmp(argv[i], "--plies") == 0)
            options.plies = int(value);
        else if (std::strcmp(argv[i], "--min-games") == 0)
            options.minGames = std::uint32_t(value);
        else
            return false;
    }
    return true;
}

int runBuild(int argc, char** argv) {
    BookBuildOptions options;
    if (argc < 4 || !parseBuildOptions(argc, argv, options))
        return usage();
    const char* pgnPath  = argv[2];
    const char* bookPath = argv[3];
    std::string text;
    if (!readTextFile(pgnPath, text)) {
        std::fprintf(stderr, "pellix-book: cannot read %s\n", pgnPath);
        return 1;
    }
    const auto engine  = makeEngine<SilentBoard>(0);
    SilentBoard& board = *engine;
    BookBuilder builder(board, options);
    BuildTally tally;
    PgnReader reader(text);
    PgnGame game;
    std::string detail;
    const bool terminal = isTerminal(stdout);
    while (reader.next(game)) {
        ++tally.gamesRead;
        if (const SkipReason reason = builder.addGame(game, detail); reason != SKIP_NONE) {
            ++tally.skipped[reason];
            endProgress(tally);
            std::fprintf(stderr, "game %d skipped: %s: %s\n", game.number, skipReasonText(reason),
                         detail.c_str());
        }
        if (terminal && tally.gamesRead % PROGRESS_EVERY == 0)
            showProgress(tally, builder);
    }
    // The summary takes the progress line's place.
    std::printf("%s", tally.progressShown ? "\r" : "");
    printTally(tally, builder);
    std::printf("\n");
    std::fflush(stdout);

    OpeningBook book;
    if (const std::size_t dropped = builder.fillBook(book))
        std::printf("%zu moves left out: their positions already had %d moves\n", dropped,
                    BOOK_NODE_MOVES);
    // An empty book would only make the engine search from the first move while looking as
    // if it had a book: the build failed.
    if (book.nodes().empty()) {
        std::fprintf(stderr, "pellix-book: no book written: no game of %s gave a move\n", pgnPath);
        return 1;
    }
    if (!book.saveBook(bookPath)) {
        std::fprintf(stderr, "pellix-book: cannot write %s\n", bookPath);
        return 1;
    }
    std::printf("wrote %s: %zu positions, %zu moves\n", bookPath, book.nodes().size(),
                book.moveTotal());
    return 0;
}

// The position to show: a FEN, or moves from the initial position in SAN or coordinate text
// (move numbers allowed), or the initial position when nothing is given.
bool setUpPosition(ChessBoard& board, const std::string& text) {
    board.newGame();
    if (text.find('/') != std::string::npos) {
        if (board.setPosition(text.c_str()))
            return true;
        std::fprintf(stderr, "pellix-book: not a position: %s\n", text.c_str());
        return false;
    }
    PgnReader reader(text);
    PgnGame line;
    if (!reader.next(line))
        return true;
    for (const std::string& token : line.moves) {
        Move move;
        if (board.playCoordinateMove(token.c_str()))
            continue;
        const GameMoveStatus status = readGameMove(board, token, move);
        if (status != GAME_MOVE_OK || !board.playGameMove(move)) {
            std::fprintf(stderr, "pellix-book: %s: %s\n", token.c_str(),
                         gameMoveStatusText(status));
            return false;
        }
    }
    return true;
}

int runShow(int argc, char** argv) {
    if (argc < 3)
        return usage();
    const auto engine  = makeEngine<SilentBoard>(0);
    SilentBoard& board = *engine;
    if (!board.openBook(argv[2])) {
        std::fprintf(stderr, "pellix-book: %s is not a readable book\n", argv[2]);
        return 1;
    }
    std::string position;
    for (int i = 3; i < argc; ++i)
        position += std::string(i > 3 ? " " : "") + argv[i];
    if (!setUpPosition(board, position))
        return 1;
    char fen[128];
    board.toFen(fen);
    std::printf("%s\n", fen);
    const std::uint64_t key = board.hashKey;
    board.openingBook().printBookMoves(std::uint32_t(key), std::uint32_t(key >> 32), stdout);
    if (board.openingBook().findNode(key) && !lookupBookNode(board.openingBook(), key))
        std::printf("the engine's lookup does not reach this position: it is at an end of the "
                    "book\n");
    return 0;
}

int runStats(int argc, char** argv) {
    if (argc != 3)
        return usage();
    OpeningBook book;
    if (!book.loadBook(argv[2])) {
        std::fprintf(stderr, "pellix-book: %s is not a readable book\n", argv[2]);
        return 1;
    }
    std::printf("%s: %zu nodes, %zu moves\n", argv[2], book.nodes().size(), book.moveTotal());
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2)
        return usage();
    const char* command = argv[1];
    if (std::strcmp(command, "build") == 0)
        return runBuild(argc, argv);
    if (std::strcmp(command, "show") == 0)
        return runShow(argc, argv);
    if (std::strcmp(command, "stats") == 0)
        return runStats(argc, argv);
    return usage();
}
