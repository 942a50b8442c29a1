// Building a book from a stream of PGN text. The reading thread cuts the text into blocks that
// each begin with a game, the workers replay the games of a block and count their moves in
// tables of their own, and what the blocks report (games read, games skipped and why) is
// handed to the listener in the order of the text, whichever worker finished first. At the
// end the tables and the runs spilled from them are merged into the book file.
#include "book/book_builder.h"

#include "book/book_io.h"
#include "book/game_moves.h"
#include "book/move_counts.h"
#include "book/opening_book.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <thread>

namespace {

constexpr std::size_t BLOCK_SIZE  = 1 << 20;
constexpr std::size_t MERGE_WIDTH = 48; // runs open at once while merging
constexpr auto PROGRESS_INTERVAL  = std::chrono::milliseconds(250);

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

struct Block {
    std::uint64_t sequence;
    std::string text;
};

struct Skip {
    std::uint64_t game; // within its block, from 1
    SkipReason reason;
    std::string detail;
};

struct BlockReport {
    std::uint64_t games = 0, plies = 0;
    std::vector<Skip> skips;
};

// What the reading thread and the workers share, under the one mutex.
struct Pipeline {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Block> queue;
    std::size_t queueLimit = 0;
    bool closed            = false;
    std::map<std::uint64_t, BlockReport> reports; // finished blocks not yet handed on
    std::uint64_t nextReport  = 0;
    std::uint64_t gamesBefore = 0; // games of the blocks handed on
    std::vector<std::unique_ptr<CountRun>> runs;
    bool spillFailed = false;
};

class Worker {
public:
    Worker(Pipeline& shared, const BookBuildOptions& buildOptions, std::unique_ptr<ChessBoard> b,
           std::size_t capacity)
        : pipeline(shared), options(buildOptions), board(std::move(b)), table(capacity) {}

    void run() {
        for (;;) {
            Block block;
            {
                std::unique_lock lock(pipeline.mutex);
                pipeline.changed.wait(lock,
                                      [&] { return !pipeline.queue.empty() || pipeline.closed; });
                if (pipeline.queue.empty())
                    return;
                block = std::move(pipeline.queue.front());
                pipeline.queue.pop_front();
            }
            pipeline.changed.notify_all(); // room in the queue
            BlockReport report = replayBlock(block.text);
            std::lock_guard lock(pipeline.mutex);
            pipeline.reports.emplace(block.sequence, std::move(report));
            pipeline.changed.notify_all();
        }
    }

    CountTable& counts() { return table; }

private:
    BlockReport replayBlock(std::string_view text) {
        BlockReport report;
        PgnReader reader(text);
        PgnGame game;
        std::string detail;
        while (reader.next(game)) {
            ++report.games;
            SkipReason reason = SKIP_MALFORMED;
            detail            = game.error;
            if (game.error.empty())
                reason = replayGame(*board, game, options.plies, line, detail);
            if (reason != SKIP_NONE) {
                report.skips.push_back({report.games, reason, detail});
                continue;
            }
            report.plies += line.size();
            for (const PlayedMove& played : line) {
                table.add(played.key, played.move, game.result);
                if (table.full())
                    spill();
            }
        }
        return report;
    }

    void spill() {
        auto run           = std::make_unique<CountRun>();
        const MoveCount* c = table.sorted();
        bool written       = run->create();
        for (std::size_t i = 0; written && i < table.size(); ++i)
            written = run->append(c[i]);
        written = written && run->finish();
        table.clear();
        std::lock_guard lock(pipeline.mutex);
        pipeline.spillFailed |= !written;
        pipeline.runs.push_back(std::move(run));
    }

    Pipeline& pipeline;
    const BookBuildOptions& options;
    std::unique_ptr<ChessBoard> board;
    CountTable table;
    std::vector<PlayedMove> line;
};

// Turns the merged counts, which come grouped by key, into node records.
class NodeWriter {
public:
    NodeWriter(AtomicFile& output, const BookBuildOptions& buildOptions, BuildTally& buildTally)
        : file(output), options(buildOptions), tally(buildTally) {
        bytes.assign(BOOK_HEADER_SIZE, 0); // the header is written last, with the node count
    }

    void add(const MoveCount& count) {
        if (!group.empty() && group.front().key != count.key)
            flush();
        group.push_back(count);
    }

    bool finish() {
        flush();
        file.write(bytes.data(), bytes.size());
        std::uint8_t header[BOOK_HEADER_SIZE];
        writeBookHeader(header, std::uint32_t(tally.bookPositions));
        return file.file() && std::fseek(file.file(), 0, SEEK_SET) == 0 &&
               file.write(header, sizeof header);
    }

private:
    void flush() {
        if (group.empty())
            return;
        ++tally.positions;
        tally.moves += group.size();
        BookNode node{
            std::uint32_t(group.front().key), std::uint32_t(group.front().key >> 32), 0, {}};
        std::erase_if(group, [&](const MoveCount& c) { return c.games < options.minGames; });
        // Most played first, ties by move word, so that a crowded position keeps its main
        // moves and the choice among equals never depends on the order of the games.
        std::sort(group.begin(), group.end(), [](const MoveCount& a, const MoveCount& b) {
            return a.games != b.games ? a.games > b.games : a.move < b.move;
        });
        for (const MoveCount& c : group) {
            if (node.moveCount == BOOK_NODE_MOVES) {
                ++tally.leftOut;
                continue;
            }
            node.moves[node.moveCount++] = {c.move, c.games, percentOf(c.whiteWins, c.games),
                                            percentOf(c.blackWins, c.games)};
        }
        group.clear();
        if (node.moveCount == 0)
            return;
        ++tally.bookPositions;
        tally.bookMoves += node.moveCount;
        appendBookNode(bytes, node);
        if (bytes.size() >= BLOCK_SIZE) {
            file.write(bytes.data(), bytes.size());
            bytes.clear();
        }
    }

    AtomicFile& file;
    const BookBuildOptions& options;
    BuildTally& tally;
    std::vector<MoveCount> group;
    std::vector<std::uint8_t> bytes;
};

// Hands on the reports of finished blocks in the order of the text. Called with the lock held.
void handOnReports(Pipeline& pipeline, BuildListener& listener, BuildTally& tally) {
    for (auto at = pipeline.reports.find(pipeline.nextReport); at != pipeline.reports.end();
         at      = pipeline.reports.find(++pipeline.nextReport)) {
        const BlockReport& report = at->second;
        for (const Skip& skip : report.skips) {
            ++tally.skipped[skip.reason];
            listener.skipped(pipeline.gamesBefore + skip.game, skip.reason, skip.detail);
        }
        pipeline.gamesBefore += report.games;
        tally.games += report.games;
        tally.plies += report.plies;
        pipeline.reports.erase(at);
    }
}

// Reads the stream block by block into the queue. False on a read error.
bool readBlocks(std::FILE* in, Pipeline& pipeline, BuildListener& listener, BuildTally& tally) {
    std::string pending;
    std::uint64_t sequence = 0;
    auto lastProgress      = std::chrono::steady_clock::now();
    for (bool end = false; !end;) {
        const std::size_t had = pending.size();
        pending.resize(had + BLOCK_SIZE);
        const std::size_t got = std::fread(pending.data() + had, 1, BLOCK_SIZE, in);
        pending.resize(had + got);
        end                   = got < BLOCK_SIZE;
        const std::size_t cut = end ? pending.size() : lastGameStart(pending);
        if (cut == 0 && !end)
            continue; // one game longer than a block: read on
        Block block{sequence++, pending.substr(0, cut)};
        pending.erase(0, cut);
        std::unique_lock lock(pipeline.mutex);
        pipeline.changed.wait(lock, [&] {
            handOnReports(pipeline, listener, tally);
            return pipeline.queue.size() < pipeline.queueLimit;
        });
        pipeline.queue.push_back(std::move(block));
        pipeline.changed.notify_all();
        if (const auto now = std::chrono::steady_clock::now();
            now - lastProgress > PROGRESS_INTERVAL) {
            lastProgress = now;
            listener.progress(tally);
        }
    }
    return !std::ferror(in);
}

// Merges runs in groups until few enough are left to merge at once.
bool narrowRuns(std::vector<std::unique_ptr<CountRun>>& runs) {
    while (runs.size() > MERGE_WIDTH) {
        std::vector<std::unique_ptr<CountRun>> merged;
        for (std::size_t first = 0; first < runs.size(); first += MERGE_WIDTH) {
            std::vector<CountSource*> group;
            for (std::size_t i = first; i < std::min(runs.size(), first + MERGE_WIDTH); ++i)
                group.push_back(runs[i].get());
            auto run     = std::make_unique<CountRun>();
            bool written = run->create();
            mergeCounts(group, [&](const MoveCount& c) { written = written && run->append(c); });
            if (!written || !run->finish())
                return false;
            merged.push_back(std::move(run));
        }
        runs = std::move(merged);
    }
    return true;
}

// Merges the workers' tables and the spilled runs into the book file.
bool writeBook(std::vector<std::unique_ptr<Worker>>& workers,
               std::vector<std::unique_ptr<CountRun>>& runs, const char* bookPath,
               const BookBuildOptions& options, BuildTally& tally, std::string& error) {
    std::vector<std::unique_ptr<CountSource>> memory;
    std::vector<CountSource*> sources;
    for (auto& worker : workers) {
        CountTable& table = worker->counts();
        memory.push_back(std::make_unique<MemoryCounts>(table.sorted(), table.size()));
        sources.push_back(memory.back().get());
    }
    for (auto& run : runs)
        sources.push_back(run.get());
    AtomicFile output(bookPath);
    NodeWriter writer(output, options, tally);
    mergeCounts(sources, [&](const MoveCount& c) { writer.add(c); });
    const bool written = writer.finish();
    if (tally.bookPositions == 0) {
        error = "no game gave a move";
        return false;
    }
    if (!written || !output.commit()) {
        error = "cannot write the book";
        return false;
    }
    return true;
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

std::uint64_t BuildTally::skippedTotal() const {
    std::uint64_t total = 0;
    for (std::uint64_t n : skipped)
        total += n;
    return total;
}

// Only the plies the book keeps are replayed: a transcription error further on does not
// spoil a game's opening.
SkipReason replayGame(ChessBoard& board, const PgnGame& game, int plies,
                      std::vector<PlayedMove>& line, std::string& detail) {
    line.clear();
    detail.clear();
    if (!board.setPosition(game.fen.empty() ? START_FEN : game.fen.c_str())) {
        detail = "the FEN tag is not a position the engine accepts";
        return SKIP_BAD_FEN;
    }
    const std::size_t last = std::min(game.moves.size(), std::size_t(std::max(plies, 0)));
    for (std::size_t ply = 0; ply < last; ++ply) {
        Move move;
        const GameMoveStatus status = readGameMove(board, game.moves[ply], move);
        if (status != GAME_MOVE_OK) {
            char text[48];
            std::snprintf(text, sizeof text, "ply %zu \"%.16s\"", ply + 1, game.moves[ply].c_str());
            detail = text;
            line.clear();
            return skipFor(status);
        }
        const PlayedMove played{board.hashKey, move};
        if (std::none_of(line.begin(), line.end(), [&](const PlayedMove& p) {
                return p.key == played.key && p.move == played.move;
            }))
            line.push_back(played);
        if (!board.playGameMove(move))
            break;
    }
    return SKIP_NONE;
}

bool buildBook(std::FILE* in, const char* bookPath, const BookBuildOptions& options,
               const std::function<std::unique_ptr<ChessBoard>()>& makeBoard,
               BuildListener& listener, BuildTally& tally, std::string& error) {
    const int threads = options.threads > 0
                            ? options.threads
                            : int(std::max(1u, std::thread::hardware_concurrency()));
    // Three quarters of the limit for the tables; the rest is the blocks, boards and buffers.
    const std::size_t tableBytes = options.memoryMegabytes * (std::size_t(3) << 20) / 4;
    Pipeline pipeline;
    pipeline.queueLimit = std::size_t(threads);
    std::vector<std::unique_ptr<Worker>> workers;
    for (int i = 0; i < threads; ++i) {
        const std::size_t entries = options.tableEntries
                                        ? options.tableEntries
                                        : CountTable::capacityFor(tableBytes / threads);
        workers.push_back(std::make_unique<Worker>(pipeline, options, makeBoard(), entries));
        if (!workers.back()->counts().allocated()) {
            error = "not enough memory for the counts";
            return false;
        }
    }
    std::vector<std::thread> running;
    for (auto& worker : workers)
        running.emplace_back([&worker] { worker->run(); });
    const bool read = readBlocks(in, pipeline, listener, tally);
    {
        std::lock_guard lock(pipeline.mutex);
        pipeline.closed = true;
    }
    pipeline.changed.notify_all();
    for (std::thread& t : running)
        t.join();
    handOnReports(pipeline, listener, tally);
    listener.progress(tally);
    tally.runs = int(pipeline.runs.size());
    if (!read || pipeline.spillFailed || !narrowRuns(pipeline.runs)) {
        error = read ? "cannot write a temporary file" : "cannot read the games";
        return false;
    }
    return writeBook(workers, pipeline.runs, bookPath, options, tally, error);
}
