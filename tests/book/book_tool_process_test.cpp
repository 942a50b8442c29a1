// pellix-book run as a user runs it: what it prints, what it writes and its exit status, and
// the polyglot books it writes and reads, checked with Debian's polyglot.
#include "book/polyglot.h"
#include "test_process.h"
#include "test_support.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

// In a scratch directory where the games are g.pgn, each run is followed by its exit status
// and the last by the files there. Written to a pipe, the build prints its summary and no
// progress line, however many games.
TEST(BookTool, BuildsABookAndShowsWhatItHolds) {
    std::string pgn = "1. e4 e5 2. Ke3 0-1\n", script = "( cat > g.pgn";
    for (int i = 0; i < 2000; ++i)
        pgn += "1. e4 e5 2. Nf3 1-0\n";
    for (const char* arguments : {"build g.pgn b.bin", "stats b.bin", "show b.bin 1. e4 e7e5"})
        script += "; " + programCommand("pellix-book") + " " + arguments + " 2>&1; echo status $?";
    EXPECT_EQ(runProcess(script + "; ls *.bin *.pgn 2>/dev/null )", pgn).output,
              "game 1 skipped: no such move: ply 3 \"Ke3\"\n"
              "games 2001, positions 3, moves 3, skipped 1 (no such move 1)\n"
              "wrote b.bin: 3 positions, 3 moves\nstatus 0\n"
              "b.bin: 3 nodes, 3 moves\nstatus 0\n"
              "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq e6 0 2\n"
              "polyglot key 0844931a6ef4b9a0\n"
              "OpeningBook : found 1 moves :\nNg1-f3 : # 2000, white 100 %, black 0 %\n"
              "counts add up to 2000; the draw uses 31-bit random numbers on every system\n"
              "the engine's lookup does not reach this position: it is at an end of the book\n"
              "status 0\nb.bin\ng.pgn\n");
}

namespace {

const std::string POLYGLOT = "/usr/games/polyglot";

std::string tool(const std::string& arguments) {
    return programCommand("pellix-book") + " " + arguments;
}

// Polyglot entries from the hex dump of a file (od -An -tx1 -v), up to the line "end".
std::vector<PolyglotEntry> entriesOfDump(std::istringstream& dump) {
    std::vector<std::uint8_t> bytes;
    for (std::string word; dump >> word && word != "end";)
        bytes.push_back(std::uint8_t(std::stoul(word, nullptr, 16)));
    std::vector<PolyglotEntry> entries;
    for (std::size_t at = 0; at + POLYGLOT_ENTRY_SIZE <= bytes.size(); at += POLYGLOT_ENTRY_SIZE)
        entries.push_back(readPolyglotEntry(bytes.data() + at));
    return entries;
}

using Weights = std::map<std::uint64_t, std::map<std::uint16_t, double>>;
Weights byPosition(const std::vector<PolyglotEntry>& entries) {
    Weights weights;
    for (const PolyglotEntry& e : entries)
        weights[e.key][e.move] = e.weight;
    return weights;
}

bool polyglotInstalled() {
    const bool installed = std::filesystem::exists(POLYGLOT);
    EXPECT_TRUE(installed) << "these tests read books with Debian's polyglot: apt-get install "
                              "polyglot";
    return installed;
}

} // namespace

// A polyglot file that is not whole, or a damaged book of the engine's, is refused with the
// byte where it goes wrong and status 1, and no output appears; a book that is written
// replaces an old file of the same name.
TEST(BookTool, RefusesDamagedBooksAndWritesOnlyWholeOnes) {
    const std::string entry =
        "\\001\\002\\003\\004\\005\\006\\007\\010\\000\\034\\000\\001\\000\\000\\000\\000";
    const std::string lower =
        "\\001\\002\\003\\004\\005\\006\\007\\007\\000\\034\\000\\001\\000\\000\\000\\000";
    std::string script = "( printf '" + entry + "x' > partial.bin; printf '" + entry + lower +
                         "' > unsorted.bin; " + tool("build g.pgn b.bin") +
                         " > /dev/null; head -c 30 b.bin > cut.bin; echo old > old.bin";
    for (const char* arguments :
         {"import partial.bin out.bin", "import unsorted.bin out.bin", "show cut.bin",
          "stats cut.bin", "export cut.bin out.bin", "export b.bin old.bin"})
        script += "; " + tool(arguments) + " 2>&1; echo status $?";
    const ProcessResult result = runProcess(script + "; ls; od -An -tx1 old.bin | head -1 )", "",
                                            {{"g.pgn", "1. e4 e5 2. Nf3 *\n"}});
    EXPECT_EQ(result.output,
              "pellix-book: partial.bin: a partial entry (the size is not a multiple of 16) at "
              "byte offset 16\nstatus 1\n"
              "pellix-book: unsorted.bin: keys out of order at byte offset 16\nstatus 1\n"
              "pellix-book: cut.bin: the file ends inside a position at byte offset 12\nstatus 1\n"
              "pellix-book: cut.bin: the file ends inside a position at byte offset 12\nstatus 1\n"
              "pellix-book: cut.bin: the file ends inside a position at byte offset 12\nstatus 1\n"
              "wrote old.bin: 3 positions reached, 3 polyglot keys, 3 entries\nstatus 0\n"
              "b.bin\ncut.bin\ng.pgn\ninput.txt\nold.bin\npartial.bin\nunsorted.bin\n"
              " 08 44 93 1a 6e f4 b9 a0 01 95 00 01 00 00 00 00\n"); // Nf3 after 1. e4 e5
}

// The same real games made into a book by polyglot and by pellix-book, exported with polyglot's
// own weights: the same positions and moves, but for the moves polyglot drops because they
// never won or drew for the mover (weight 1 in the export, the least there is), with weights
// in the same proportions within each position (polyglot scales over the whole book, the
// export per position). Then polyglot reads the export by game counts: its first line
// follows the most played moves, with their share of the games.
TEST(BookTool, PolyglotReadsTheExportAndAgreesWithIt) {
    if (!polyglotInstalled())
        return;
    const std::string script =
        "( " + POLYGLOT +
        " make-book -pgn g.pgn -bin poly.bin -max-ply 20 -min-game 1 "
        ">/dev/null 2>&1; " +
        tool("build g.pgn b.bin >/dev/null") + "; " +
        tool("export b.bin score.bin --weight score >/dev/null") + "; " +
        tool("export b.bin count.bin >/dev/null") +
        "; od -An -tx1 -v poly.bin; echo end; "
        "od -An -tx1 -v score.bin; echo end; " +
        POLYGLOT +
        " dump-book -bin count.bin -color white -out lines.txt >/dev/null 2>&1; "
        "sed -n 2p lines.txt; " +
        tool("show b.bin") + " )";
    std::istringstream output(
        runProcess(script, "", {{"g.pgn", readDataFile("gnuchess-300.pgn")}}).output);
    const Weights theirs = byPosition(entriesOfDump(output));
    const Weights ours   = byPosition(entriesOfDump(output));
    ASSERT_GT(theirs.size(), 2000u);
    for (const auto& [key, moves] : ours) {
        const auto other = theirs.find(key);
        const std::map<std::uint16_t, double> none;
        const auto& polyglotMoves = other == theirs.end() ? none : other->second;
        const double scale        = polyglotMoves.empty() ? 0
                                                          : polyglotMoves.begin()->second /
                                                         moves.at(polyglotMoves.begin()->first);
        for (const auto& [move, weight] : moves) {
            const auto found = polyglotMoves.find(move);
            if (found == polyglotMoves.end())
                EXPECT_EQ(weight, 1) << std::hex << key << " " << move;
            else // both rounded: polyglot's to its coarser scale
                EXPECT_NEAR(found->second, weight * scale, 1 + found->second * 0.02)
                    << std::hex << key << " " << move;
        }
        EXPECT_EQ(polyglotMoves.size(),
                  std::size_t(std::count_if(moves.begin(), moves.end(), [&](const auto& m) {
                      return polyglotMoves.count(m.first);
                  })));
    }
    for (const auto& [key, moves] : theirs)
        EXPECT_TRUE(ours.count(key)) << std::hex << key;

    // "1: 1. e4{39%} ..." and the book's start position: e2-e4 : # 116, ...
    std::string line, token;
    std::getline(output >> std::ws, line);
    std::vector<std::pair<std::string, double>> start; // from-to, games
    for (std::string listing; std::getline(output, listing);)
        if (listing.find(" : # ") != std::string::npos)
            start.push_back({listing.substr(0, listing.find(' ')),
                             std::stod(listing.substr(listing.find('#') + 1))});
    ASSERT_FALSE(start.empty());
    double games = 0;
    for (const auto& s : start)
        games += s.second;
    const std::string first  = start.front().first; // "e2-e4" or "Ng1-f3"
    const std::string square = first.substr(first.size() - 2);
    EXPECT_EQ(
        line.find("1. " + (first.size() > 5 ? first.substr(0, 1) : std::string()) + square + "{"),
        3u)
        << line;
    const int percent = std::stoi(line.substr(line.find('{') + 1));
    EXPECT_NEAR(percent, 100 * start.front().second / games, 1) << line;
}

// Debian's gnuchess book, when installed, imports (10 plies deep, enough for ten thousand
// positions); at the start the imported book lists the file's heaviest moves with their
// weights as counts.
TEST(BookTool, ImportsDebiansGnuchessBook) {
    const std::string gnuchess = "/usr/share/games/gnuchess/book.bin";
    if (!std::filesystem::exists(gnuchess))
        GTEST_SKIP() << "gnuchess-book is not installed";
    std::ifstream in(gnuchess, std::ios::binary);
    std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(in)), {});
    std::vector<std::uint16_t> weights;
    for (std::size_t at = 0; at + 16 <= bytes.size(); at += 16)
        if (const PolyglotEntry e = readPolyglotEntry(&bytes[at]);
            e.key == 0x463b96181691fc9c && e.weight)
            weights.push_back(e.weight);
    std::sort(weights.rbegin(), weights.rend());
    weights.resize(std::min<std::size_t>(weights.size(), 16));
    ASSERT_GT(weights.size(), 4u);

    std::istringstream output(runProcess("( " + tool("import " + gnuchess + " g.bin --plies 10") +
                                         "; " + tool("show g.bin") + " )")
                                  .output);
    std::string line;
    std::getline(output, line);
    EXPECT_EQ(line.rfind("wrote g.bin: ", 0), 0u) << line;
    EXPECT_GT(std::stoul(line.substr(13)), 10000u) << line;
    std::vector<std::uint16_t> shown;
    while (std::getline(output, line))
        if (line.find(", white 0 %, black 0 %") != std::string::npos)
            shown.push_back(std::uint16_t(std::stoul(line.substr(line.find('#') + 1))));
    EXPECT_EQ(shown, weights);
}
