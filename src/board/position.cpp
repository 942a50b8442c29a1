// The position's own diagnostics: the consistency check of its redundant forms and the
// whole-position comparison the tests use.
#include "board/position.h"

#include "board/trace.h"

#include <cstring>

namespace {

using Report = std::vector<const char*>;

// The mailbox against the occupancy, colour and piece boards.
void checkMailbox(const Position& pos, Report& report) {
    bool badValue = false, badOccupancy = false, badColor = false, badPieceBoard = false;
    for (Square s = 0; s < 64; ++s) {
        const int v = pos.pieceArray[s];
        if (v > KING) {
            badValue = true;
            continue;
        }
        if (v == EMPTY)
            continue;
        if (!(pos.bbAllPiece & bit(s)))
            badOccupancy = true;
        if (pos.bbColorPiece[WHITE] & bit(s)) {
            if (!(pos.bbPiece[WHITE][v] & bit(s)))
                badPieceBoard = true;
        } else if (pos.bbColorPiece[BLACK] & bit(s)) {
            if (!(pos.bbPiece[BLACK][v] & bit(s)))
                badPieceBoard = true;
        } else {
            badColor = true;
        }
    }
    if (badValue)
        report.push_back("wrong value in piece array");
    if (badOccupancy)
        report.push_back("piece array different than bbAllPiece");
    if (badColor)
        report.push_back("piece array different than bbColorPiece");
    if (badPieceBoard)
        report.push_back("piece array different than bbPiece");
}

// The three rotated occupancies against the plain one.
void checkRotated(const Position& pos, Report& report) {
    bool bad90 = false, bad45R = false, bad45L = false;
    for (Bitboard b = pos.bbAllPiece; b;) {
        const Square s = popLowest(b);
        bad90 |= !(pos.bbAllPiece90R & bit(rot90[s]));
        bad45R |= !(pos.bbAllPiece45R & bit(rot45R[s]));
        bad45L |= !(pos.bbAllPiece45L & bit(rot45L[s]));
    }
    if (bad90)
        report.push_back("bitboard 90R is wrong");
    if (bad45R)
        report.push_back("bitboard 45R is wrong");
    if (bad45L)
        report.push_back("bitboard 45L is wrong");
}

// The piece counts, the material sums and the king squares against the boards.
void checkCounts(const Position& pos, Report& report) {
    static const char* const countMessages[2][5] = {
        {"bad number of black pawn", "bad number of black knight", "bad number of black bishop",
         "bad number of black rook", "bad number of black queen"},
        {"bad number of white pawn", "bad number of white knight", "bad number of white bishop",
         "bad number of white rook", "bad number of white queen"}};
    for (Color c : {WHITE, BLACK})
        for (int p = PAWN; p <= QUEEN; ++p)
            if (popCount(pos.bbPiece[c][p]) != pos.pieceCount[c][p])
                report.push_back(countMessages[c][p - PAWN]);

    static const char* const materialMessages[2] = {"bad black material value",
                                                    "bad white material value"};
    for (Color c : {WHITE, BLACK}) {
        int sum = 0;
        for (Bitboard b = pos.bbColorPiece[c]; b;) {
            const int v = pos.pieceArray[popLowest(b)];
            if (v <= KING)
                sum += materialValue(Piece(v));
        }
        if (sum != pos.material[c])
            report.push_back(materialMessages[c]);
    }

    static const char* const kingMessages[2] = {"bad king position for black",
                                                "bad king position for white"};
    for (Color c : {WHITE, BLACK})
        if (pos.kingSquare[c] > 63 || !(pos.bbPiece[c][KING] & bit(pos.kingSquare[c])))
            report.push_back(kingMessages[c]);
}

} // namespace

std::vector<const char*> Position::checkConsistency() const {
    Report report;
    checkMailbox(*this, report);
    checkRotated(*this, report);
    checkCounts(*this, report);
    for (const char* message : report)
        trace(message);
    return report;
}

bool samePosition(const Position& a, const Position& b) {
    bool same =
        a.bbAllPiece == b.bbAllPiece && a.bbAllPiece90R == b.bbAllPiece90R &&
        a.bbAllPiece45R == b.bbAllPiece45R && a.bbAllPiece45L == b.bbAllPiece45L &&
        std::memcmp(a.bbColorPiece, b.bbColorPiece, sizeof a.bbColorPiece) == 0 &&
        std::memcmp(a.bbPiece, b.bbPiece, sizeof a.bbPiece) == 0 && a.hashKey == b.hashKey &&
        std::memcmp(a.pieceArray, b.pieceArray, sizeof a.pieceArray) == 0 &&
        a.kingSquare[0] == b.kingSquare[0] && a.kingSquare[1] == b.kingSquare[1] &&
        a.castleRights == b.castleRights && a.sideToMove == b.sideToMove && a.epFile == b.epFile &&
        a.fiftyCounter == b.fiftyCounter && a.inCheck == b.inCheck &&
        a.material[0] == b.material[0] && a.material[1] == b.material[1] &&
        std::memcmp(a.pieceCount, b.pieceCount, sizeof a.pieceCount) == 0 &&
        a.gameStage == b.gameStage && a.phase == b.phase && a.historyCount == b.historyCount;
    if (!same)
        return false;
    if (a.history == b.history)
        return true;
    for (std::uint32_t i = 0; i < a.historyCount; ++i) {
        const HistoryRecord &x = a.history[i], &y = b.history[i];
        if (x.key != y.key || x.move != y.move || x.castleRights != y.castleRights ||
            x.epFile != y.epFile || x.fiftyCounter != y.fiftyCounter)
            return false;
    }
    return true;
}
