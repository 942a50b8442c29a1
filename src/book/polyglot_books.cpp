#include "book/polyglot_books.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <map>
#include <unordered_set>

namespace {

struct Candidate {
    std::uint16_t move;
    std::uint64_t games = 0;
    double score        = 0; // 2 x wins + draws of the side to move, in games
};

std::uint16_t scaledWeight(double raw, double heaviest, bool keepRaw) {
    if (keepRaw)
        return std::uint16_t(std::max(raw, 1.0));
    const double scaled = heaviest > 0 ? std::round(raw * 65535.0 / heaviest) : 1.0;
    return std::uint16_t(std::clamp(scaled, 1.0, 65535.0));
}

} // namespace

void walkBook(ChessBoard& board, int plies,
              const std::function<void(ChessBoard& board, std::vector<Move>& follow)>& visit) {
    std::deque<std::vector<Move>> lines{{}};
    std::unordered_set<std::uint64_t> seen;
    std::vector<Move> follow;
    for (; !lines.empty(); lines.pop_front()) {
        const std::vector<Move>& line = lines.front();
        board.newGame();
        for (Move m : line)
            board.playGameMove(m);
        if (!seen.insert(board.hashKey).second)
            continue;
        follow.clear();
        visit(board, follow);
        if (int(line.size()) + 1 >= plies)
            continue;
        for (Move m : follow) {
            lines.push_back(line);
            lines.back().push_back(m);
        }
    }
}

std::vector<PolyglotEntry> exportPolyglot(ChessBoard& board, const OpeningBook& book, int plies,
                                          ExportWeight weight, ExportTally& tally) {
    std::map<std::uint64_t, std::vector<Candidate>> positions;
    walkBook(board, plies, [&](ChessBoard& b, std::vector<Move>& follow) {
        const BookNode* node = book.findNode(b.hashKey);
        if (!node)
            return;
        ++tally.positions;
        std::vector<Candidate>& candidates = positions[polyglotKey(b)];
        for (std::uint32_t i = 0; i < node->moveCount; ++i) {
            const BookMove& entry = node->moves[i];
            const Move legal      = legalBookMove(b, entry.move);
            if (legal == NO_MOVE)
                continue;
            follow.push_back(legal);
            const std::uint16_t word = polyglotMove(legal);
            auto at                  = std::find_if(candidates.begin(), candidates.end(),
                                                    [&](const Candidate& c) { return c.move == word; });
            if (at == candidates.end())
                at = candidates.insert(candidates.end(), Candidate{word});
            const int wins  = b.side() == WHITE ? entry.whitePercent : entry.blackPercent;
            const int draws = std::max(0, 100 - entry.whitePercent - entry.blackPercent);
            at->games += entry.count;
            at->score += entry.count * (2.0 * wins + draws) / 100.0;
        }
    });

    std::vector<PolyglotEntry> entries;
    for (auto& [key, candidates] : positions) {
        if (candidates.empty())
            continue;
        ++tally.keys;
        const bool byGames = weight == ExportWeight::COUNT;
        double heaviest    = 0;
        for (const Candidate& c : candidates)
            heaviest = std::max(heaviest, byGames ? double(c.games) : c.score);
        const std::size_t first = entries.size();
        for (const Candidate& c : candidates)
            entries.push_back({key, c.move,
                               scaledWeight(byGames ? double(c.games) : c.score, heaviest,
                                            byGames && heaviest <= 65535),
                               0});
        std::sort(entries.begin() + std::ptrdiff_t(first), entries.end(),
                  [](const PolyglotEntry& a, const PolyglotEntry& b) {
                      return a.weight != b.weight ? a.weight > b.weight : a.move < b.move;
                  });
    }
    return entries;
}

void importPolyglot(ChessBoard& board, const std::vector<PolyglotEntry>& entries, int plies,
                    OpeningBook& book, ImportTally& tally) {
    std::vector<bool> reached(entries.size());
    struct Choice {
        std::uint16_t weight;
        Move move;
    };
    std::vector<Choice> choices;
    walkBook(board, plies, [&](ChessBoard& b, std::vector<Move>& follow) {
        const std::uint64_t key = polyglotKey(b);
        auto first =
            std::lower_bound(entries.begin(), entries.end(), key,
                             [](const PolyglotEntry& e, std::uint64_t k) { return e.key < k; });
        choices.clear();
        for (auto at = first; at != entries.end() && at->key == key; ++at) {
            const Move move = at->weight ? moveOfPolyglot(b, at->move) : NO_MOVE;
            if (!reached[std::size_t(at - entries.begin())]) {
                reached[std::size_t(at - entries.begin())] = true;
                tally.zeroWeight += at->weight == 0;
                tally.illegal += at->weight && move == NO_MOVE;
            }
            if (move != NO_MOVE)
                choices.push_back({at->weight, move});
        }
        std::sort(choices.begin(), choices.end(), [](const Choice& x, const Choice& y) {
            return x.weight != y.weight ? x.weight > y.weight : x.move < y.move;
        });
        if (choices.size() > std::size_t(BOOK_NODE_MOVES))
            choices.resize(BOOK_NODE_MOVES);
        for (const Choice& c : choices)
            if (book.insertBookMove(std::uint32_t(b.hashKey), std::uint32_t(b.hashKey >> 32),
                                    c.move, c.weight, 0, 0))
                follow.push_back(c.move);
        tally.positions += !choices.empty();
        tally.moves += choices.size();
    });
    tally.unreached = std::uint64_t(std::count(reached.begin(), reached.end(), false));
}
