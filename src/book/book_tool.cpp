// pellix-book: makes the engine's opening book from PGN games, looks inside books, and carries
// books over to and from the polyglot format. Listings and summaries go to standard output;
// problems with the input, and the progress of a long build, to standard error. Every book
// is written under a temporary name and moved into place only when it is whole.
#include "board/make_engine.h"
#include "board/silent_board.h"
#include "book/book_builder.h"
#include "book/book_io.h"
#include "book/game_moves.h"
#include "book/polyglot_books.h"
#include "platform/terminal.h"

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

const char* const USAGE =
    "usage: pellix-book build GAMES.pgn|- BOOK.bin [--plies N] [--min-games N] [--memory MB]\n"
    "                         [--threads N] [--quiet]\n"
    "       pellix-book show BOOK.bin [FEN | moves]\n"
    "       pellix-book stats BOOK.bin\n"
    "       pellix-book export BOOK.bin POLYGLOT.bin [--plies N] [--weight count|score]\n"
    "       pellix-book import POLYGLOT.bin BOOK.bin [--plies N]\n";

int usage() {
    std::fputs(USAGE, stderr);
    return 2;
}

// A whole number from `least` to `most`, and nothing else.
bool parseCount(const char* text, long least, long most, long& value) {
    char* end;
    value = std::strtol(text, &end, 10);
    return end != text && *end == 0 && value >= least && value <= most;
}

struct Options {
    BookBuildOptions build;
    bool quiet          = false;
    ExportWeight weight = ExportWeight::COUNT;
};

// The options after the two file names; `allowed` lists the ones the command takes.
bool parseOptions(int argc, char** argv, const char* allowed, Options& options) {
    for (int i = 4; i < argc; ++i) {
        const std::string name = argv[i];
        if (std::string(allowed).find(name + " ") == std::string::npos)
            return false;
        if (name == "--quiet") {
            options.quiet = true;
            continue;
        }
        if (++i >= argc)
            return false;
        long value;
        if (name == "--weight" && std::strcmp(argv[i], "count") == 0)
            options.weight = ExportWeight::COUNT;
        else if (name == "--weight" && std::strcmp(argv[i], "score") == 0)
            options.weight = ExportWeight::SCORE;
        else if (name == "--plies" && parseCount(argv[i], 1, 1000, value))
            options.build.plies = int(value);
        else if (name == "--min-games" && parseCount(argv[i], 1, 1000000000, value))
            options.build.minGames = std::uint32_t(value);
        else if (name == "--memory" && parseCount(argv[i], 8, 1 << 20, value))
            options.build.memoryMegabytes = std::size_t(value);
        else if (name == "--threads" && parseCount(argv[i], 1, 256, value))
            options.build.threads = int(value);
        else
            return false;
    }
    return true;
}

int refuse(const char* path, const char* problem, std::size_t offset) {
    std::fprintf(stderr, "pellix-book: %s: %s at byte offset %zu\n", path, problem, offset);
    return 1;
}

// Reads a book of the engine's own format, refusing one that is not whole.
int loadWholeBook(const char* path, OpeningBook& book) {
    std::vector<std::uint8_t> bytes;
    if (!readWholeFile(path, bytes)) {
        std::fprintf(stderr, "pellix-book: cannot read %s\n", path);
        return 1;
    }
    std::size_t offset;
    if (const char* problem = checkBookImage(bytes.data(), bytes.size(), offset))
        return refuse(path, problem, offset);
    book.readBook(bytes.data(), bytes.size());
    if (!book.isSortedByKey())
        book.sortByKey();
    return 0;
}

// The progress line on a terminal, and the game-by-game reports of skipped games.
class BuildOutput : public BuildListener {
public:
    explicit BuildOutput(bool showProgress) : shown(showProgress) {}

    void skipped(std::uint64_t game, SkipReason reason, const std::string& detail) override {
        endLine();
        std::fprintf(stderr, "game %" PRIu64 " skipped: %s: %s\n", game, skipReasonText(reason),
                     detail.c_str());
    }
    void progress(const BuildTally& tally) override {
        if (!shown)
            return;
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        std::fprintf(stderr,
                     "\rgames %" PRIu64 " (%.0f/s), positions %" PRIu64 ", skipped %" PRIu64,
                     tally.games, seconds > 0 ? double(tally.games) / seconds : 0.0, tally.plies,
                     tally.skippedTotal());
        std::fflush(stderr);
        open = true;
    }
    void endLine() {
        if (open)
            std::fputc('\n', stderr);
        open = false;
    }

private:
    using Clock = std::chrono::steady_clock;
    bool shown;
    bool open               = false;
    Clock::time_point start = Clock::now();
};

void printTally(const BuildTally& tally) {
    std::printf("games %" PRIu64 ", positions %" PRIu64 ", moves %" PRIu64 ", skipped %" PRIu64,
                tally.games, tally.positions, tally.moves, tally.skippedTotal());
    const char* separator = " (";
    for (int r = SKIP_NONE + 1; r < SKIP_REASONS; ++r)
        if (tally.skipped[r]) {
            std::printf("%s%s %" PRIu64, separator, skipReasonText(SkipReason(r)),
                        tally.skipped[r]);
            separator = ", ";
        }
    std::printf("%s\n", separator[0] == ',' ? ")" : "");
}

int runBuild(int argc, char** argv) {
    Options options;
    if (argc < 4 ||
        !parseOptions(argc, argv, "--plies --min-games --memory --threads --quiet ", options))
        return usage();
    const char* pgnPath  = argv[2];
    const char* bookPath = argv[3];
    const bool fromInput = std::strcmp(pgnPath, "-") == 0;
    std::FILE* in        = fromInput ? stdin : std::fopen(pgnPath, "rb");
    if (!in) {
        std::fprintf(stderr, "pellix-book: cannot read %s\n", pgnPath);
        return 1;
    }
    BuildOutput output(!options.quiet && isTerminal(stderr));
    BuildTally tally;
    std::string error;
    const bool built = buildBook(
        in, bookPath, options.build,
        [] { return std::unique_ptr<ChessBoard>(makeEngine<SilentBoard>(0)); }, output, tally,
        error);
    if (!fromInput)
        std::fclose(in);
    output.endLine();
    printTally(tally);
    if (tally.leftOut)
        std::printf("%" PRIu64 " moves left out: their positions already had %d moves\n",
                    tally.leftOut, BOOK_NODE_MOVES);
    if (!built) {
        std::fprintf(stderr, "pellix-book: no book written: %s\n", error.c_str());
        return 1;
    }
    std::printf("wrote %s: %" PRIu64 " positions, %" PRIu64 " moves\n", bookPath,
                tally.bookPositions, tally.bookMoves);
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
    if (const int refused = loadWholeBook(argv[2], board.openingBook()))
        return refused;
    std::string position;
    for (int i = 3; i < argc; ++i)
        position += std::string(i > 3 ? " " : "") + argv[i];
    if (!setUpPosition(board, position))
        return 1;
    char fen[128];
    board.toFen(fen);
    std::printf("%s\npolyglot key %016" PRIx64 "\n", fen, polyglotKey(board));
    const std::uint64_t key = board.hashKey;
    const OpeningBook& book = board.openingBook();
    book.printBookMoves(std::uint32_t(key), std::uint32_t(key >> 32), stdout);
    if (const BookNode* node = book.findNode(key)) {
        std::uint64_t sum = 0;
        for (std::uint32_t i = 0; i < node->moveCount; ++i)
            sum += node->moves[i].count;
        // The engine widens its random numbers to 31 bits on every system, so that the draw
        // reaches every count; the counts themselves are the games, unscaled.
        std::printf("counts add up to %" PRIu64 "; the draw uses 31-bit random numbers on every "
                    "system\n",
                    sum);
        if (!lookupBookNode(book, key))
            std::printf("the engine's lookup does not reach this position: it is at an end of "
                        "the book\n");
    }
    return 0;
}

int runStats(int argc, char** argv) {
    if (argc != 3)
        return usage();
    OpeningBook book;
    if (const int refused = loadWholeBook(argv[2], book))
        return refused;
    std::printf("%s: %zu nodes, %zu moves\n", argv[2], book.nodes().size(), book.moveTotal());
    return 0;
}

bool writeEntries(const char* path, const std::vector<PolyglotEntry>& entries) {
    std::vector<std::uint8_t> bytes(entries.size() * POLYGLOT_ENTRY_SIZE);
    for (std::size_t i = 0; i < entries.size(); ++i)
        writePolyglotEntry(entries[i], bytes.data() + i * POLYGLOT_ENTRY_SIZE);
    AtomicFile file(path);
    return file.write(bytes.data(), bytes.size()) && file.commit();
}

int runExport(int argc, char** argv) {
    Options options;
    if (argc < 4 || !parseOptions(argc, argv, "--plies --weight ", options))
        return usage();
    OpeningBook book;
    if (const int refused = loadWholeBook(argv[2], book))
        return refused;
    const auto engine = makeEngine<SilentBoard>(0);
    ExportTally tally;
    const std::vector<PolyglotEntry> entries =
        exportPolyglot(*engine, book, options.build.plies, options.weight, tally);
    if (!writeEntries(argv[3], entries)) {
        std::fprintf(stderr, "pellix-book: cannot write %s\n", argv[3]);
        return 1;
    }
    std::printf("wrote %s: %" PRIu64 " positions reached, %" PRIu64 " polyglot keys, %zu entries\n",
                argv[3], tally.positions, tally.keys, entries.size());
    return 0;
}

int runImport(int argc, char** argv) {
    Options options;
    if (argc < 4 || !parseOptions(argc, argv, "--plies ", options))
        return usage();
    std::vector<std::uint8_t> bytes;
    if (!readWholeFile(argv[2], bytes)) {
        std::fprintf(stderr, "pellix-book: cannot read %s\n", argv[2]);
        return 1;
    }
    std::size_t offset;
    if (const char* problem = checkPolyglotImage(bytes.data(), bytes.size(), offset))
        return refuse(argv[2], problem, offset);
    std::vector<PolyglotEntry> entries(bytes.size() / POLYGLOT_ENTRY_SIZE);
    for (std::size_t i = 0; i < entries.size(); ++i)
        entries[i] = readPolyglotEntry(bytes.data() + i * POLYGLOT_ENTRY_SIZE);
    const auto engine = makeEngine<SilentBoard>(0);
    OpeningBook book;
    ImportTally tally;
    importPolyglot(*engine, entries, options.build.plies, book, tally);
    if (book.nodes().empty()) {
        std::fprintf(stderr,
                     "pellix-book: no book written: no entry of %s is reached from the "
                     "initial position\n",
                     argv[2]);
        return 1;
    }
    if (!book.saveBook(argv[3])) {
        std::fprintf(stderr, "pellix-book: cannot write %s\n", argv[3]);
        return 1;
    }
    std::printf("wrote %s: %" PRIu64 " positions, %" PRIu64 " moves (percentages unknown: 0)\n"
                "%zu entries: %" PRIu64 " never reached, %" PRIu64 " of weight 0, %" PRIu64
                " not legal\n",
                argv[3], tally.positions, tally.moves, entries.size(), tally.unreached,
                tally.zeroWeight, tally.illegal);
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
    if (std::strcmp(command, "export") == 0)
        return runExport(argc, argv);
    if (std::strcmp(command, "import") == 0)
        return runImport(argc, argv);
    return usage();
}
