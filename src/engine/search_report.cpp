// The three dialects of the search report and the mate count they share.
#include "engine/search_report.h"

#include "engine/front_end.h"
#include "platform/send_command.h"

#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

// Scores from here on are shown as mates; between MATE_BOUND and here they stay numbers.
constexpr int MATE_SHOWN = 31800;

// A rate or a time as a whole number. What does not fit (a rate over a time of zero) becomes
// the integer minimum, the value x86 processors give for such a conversion; it keeps such a
// report the same on every build, where a plain cast would be undefined.
std::int64_t toInt64(double value) {
    if (!(value >= -9.2e18 && value <= 9.2e18))
        return INT64_MIN;
    return std::int64_t(value);
}
int toInt32(double value) {
    if (!(value >= -2147483648.0 && value <= 2147483647.0))
        return INT32_MIN;
    return int(value);
}

int reportedScore(const PrincipalVariation& pv) {
    return pv.scores[0];
}
int lineLength(const PrincipalVariation& pv) {
    return int(std::min<std::uint32_t>(pv.count, MAX_PLY));
}

} // namespace

int mateInMoves(int score) {
    if (score <= -MATE_BOUND) {
        const int plies = score + MATE_SCORE;
        return plies - plies / 2;
    }
    if (score >= MATE_BOUND) {
        const int plies = MATE_SCORE - score;
        return plies - plies / 2;
    }
    return score;
}

void coordinateLine(const PrincipalVariation& pv, char* out, std::size_t size) {
    std::size_t used = 0;
    out[0]           = 0;
    for (int i = 0; i < lineLength(pv) && used + 6 <= size; ++i) {
        ChessBoard::moveToCoordinates(pv.moves[i], out + used, false);
        used += 4;
        out[used++] = ' ';
        out[used]   = 0;
    }
}

void algebraicLine(ChessBoard& engine, const PrincipalVariation& pv, char* out, std::size_t size) {
    MoveEntry list[MAX_GENERATED];
    const int valid  = engine.validPrefix(pv);
    std::size_t used = 0;
    int made         = 0;
    out[0]           = 0;
    for (; made < valid; ++made) {
        char text[32];
        ChessBoard::moveToSan(pv.moves[made], text, list, engine.generatePseudoLegalMoves(list));
        const std::size_t length = std::strlen(text);
        if (used + length + 2 > size)
            break;
        std::memcpy(out + used, text, length);
        used += length;
        out[used++] = ' ';
        out[used]   = 0;
        engine.makeMove(pv.moves[made]);
    }
    while (made > 0)
        engine.unmakeMove(pv.moves[--made]);
}

void formatUciInfo(char* out, int depth, const PrincipalVariation& pv, std::uint64_t nodes,
                   double timeMicros) {
    char line[LINE_TEXT_SIZE];
    coordinateLine(pv, line, sizeof line);
    const int milliseconds = toInt32(timeMicros * 0.001);
    // A search that took no measurable time has no rate: report 0 rather than a conversion
    // of infinity.
    const int nps   = timeMicros > 0 ? int(toInt64(double(nodes) * 1000000.0 / timeMicros)) : 0;
    const int score = reportedScore(pv);
    // Being mated puts the minus sign on the depth, and the mate count stays positive: that
    // is where this engine's reports carry the sign.
    if (score <= -MATE_SHOWN)
        std::snprintf(out, REPORT_LINE_SIZE,
                      "info depth -%d score mate %d time %d nodes %" PRId64 " nps %d pv %s", depth,
                      mateInMoves(score), milliseconds, std::int64_t(nodes), nps, line);
    else if (score >= MATE_SHOWN)
        std::snprintf(out, REPORT_LINE_SIZE,
                      "info depth %d score mate %d time %d nodes %" PRId64 " nps %d pv %s", depth,
                      mateInMoves(score), milliseconds, std::int64_t(nodes), nps, line);
    else
        std::snprintf(out, REPORT_LINE_SIZE,
                      "info depth %d score cp %d time %d nodes %" PRId64 " nps %d pv %s", depth,
                      score, milliseconds, std::int64_t(nodes), nps, line);
}

void formatXboardThinking(char* out, int depth, const PrincipalVariation& pv, std::uint64_t nodes,
                          double timeMicros) {
    char line[LINE_TEXT_SIZE];
    coordinateLine(pv, line, sizeof line);
    std::snprintf(out, REPORT_LINE_SIZE, "%d %d %d %" PRId64 " %s", depth, reportedScore(pv),
                  toInt32(timeMicros * 0.0001), std::int64_t(nodes), line);
}

void formatConsoleRow(ChessBoard& engine, char* out, int depth, const PrincipalVariation& pv,
                      std::uint64_t nodes, double timeMicros) {
    char line[LINE_TEXT_SIZE];
    algebraicLine(engine, pv, line, sizeof line);
    const std::int64_t ms = toInt64(timeMicros * 0.001);
    char clock[48];
    std::snprintf(clock, sizeof clock, "%02d:%02d:%03d", int(ms / 60000), int(ms % 60000 / 1000),
                  int(ms % 1000));
    const double knps    = float(double(nodes) * 1000.0 / timeMicros);
    const int score      = reportedScore(pv);
    const std::int64_t n = std::int64_t(nodes);
    if (score <= -MATE_SHOWN)
        std::snprintf(out, REPORT_LINE_SIZE, "%2d -M%d %s %8" PRId64 " %.2f %s\n", depth,
                      mateInMoves(score), clock, n, knps, line);
    else if (score >= MATE_SHOWN)
        std::snprintf(out, REPORT_LINE_SIZE, "%2d +M%d %s %8" PRId64 " %.2f %s\n", depth,
                      mateInMoves(score), clock, n, knps, line);
    else if (score < 0)
        std::snprintf(out, REPORT_LINE_SIZE, "%2d %.2f %s %8" PRId64 " %.2f %s\n", depth,
                      score * 0.01, clock, n, knps, line);
    else
        std::snprintf(out, REPORT_LINE_SIZE, "%2d +%.2f %s %8" PRId64 " %.2f %s\n", depth,
                      score * 0.01, clock, n, knps, line);
}

void FrontEnd::printSearchInfo(ChessBoard& engine, int depth, const PrincipalVariation& pv,
                               std::uint64_t nodes, double timeMicros) {
    char out[REPORT_LINE_SIZE];
    if (engine.suiteMode) {
        formatConsoleRow(engine, out, depth, pv, nodes, timeMicros);
        std::fputs(out, stdout);
    } else if (protocol == PROTOCOL_UCI) {
        formatUciInfo(out, depth, pv, nodes, timeMicros);
        sendCommand("%s", out);
    } else if (protocol == PROTOCOL_XBOARD) {
        formatXboardThinking(out, depth, pv, nodes, timeMicros);
        sendCommand("%s", out);
    }
}
