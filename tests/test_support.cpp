#include "test_support.h"

#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <sstream>

const char* const KIWIPETE_FEN =
    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1";

namespace {

void forEachLine(const std::string& name, const std::function<void(std::istringstream&)>& take) {
    std::ifstream in(std::string(PELLIX_DATA_DIR) + "/" + name);
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        take(words);
    }
}

void expectAllRead(const std::string& name, std::size_t read, std::size_t held) {
    EXPECT_GE(read, held) << "read only " << read << " cases from " << name;
}

// The four fields of an EPD position, completed with "0 1" counters; empty if there are not
// four.
std::string fenOf(std::istream& words) {
    std::string placement, side, castle, ep;
    words >> placement >> side >> castle >> ep;
    return words ? placement + " " + side + " " + castle + " " + ep + " 0 1" : "";
}

} // namespace

std::vector<PerftCase> loadPerftSuite(const std::string& name) {
    std::vector<PerftCase> suite;
    forEachLine(name, [&](std::istringstream& words) {
        std::string word;
        std::size_t depth;
        std::uint64_t count;
        if (!(words >> word) || (suite.empty() && word != "id"))
            return;
        if (word == "id")
            words >> suite.emplace_back().id;
        else if (word == "epd")
            suite.back().fen = fenOf(words);
        else if (word == "perft" && words >> depth >> count && depth > 0) {
            suite.back().counts.resize(std::max(suite.back().counts.size(), depth));
            suite.back().counts[depth - 1] = count;
        }
    });
    expectAllRead(name, suite.size(), name == "tricky.perft" ? 19 : 6838);
    return suite;
}

std::vector<std::string> loadEpdFens(const std::string& name) {
    std::vector<std::string> fens;
    forEachLine(name, [&](std::istringstream& words) {
        if (std::string fen = fenOf(words); !fen.empty())
            fens.push_back(fen);
    });
    expectAllRead(name, fens.size(), 299);
    return fens;
}

bool hasStandardCastling(const std::string& fen) {
    auto board = boardFrom(fen);
    // The king's and the rook's squares of each right: e1 h1, e1 a1, e8 h8, e8 a8.
    const Bitboard squares[4] = {bit(4) | bit(7), bit(4) | bit(0), bit(60) | bit(63),
                                 bit(60) | bit(56)};
    for (int right = 0; right < 4; ++right) {
        const Color side = right < 2 ? WHITE : BLACK;
        if ((board->castleRights >> right & 1) &&
            ((board->bbPiece[side][KING] | board->bbPiece[side][ROOK]) & squares[right]) !=
                squares[right])
            return false;
    }
    return true;
}

std::unique_ptr<SilentBoard> boardFrom(const std::string& fen) {
    auto board = std::make_unique<SilentBoard>();
    board->initTables(0);
    EXPECT_EQ(board->setPosition(fen.c_str()), 1) << fen;
    return board;
}

std::vector<Move> legalMoves(ChessBoard& board) {
    MoveEntry list[MAX_GENERATED];
    const int count = board.generateLegalMoves(list);
    std::vector<Move> moves;
    for (int i = 0; i < count; ++i)
        moves.push_back(list[i].move);
    return moves;
}

Move findMove(ChessBoard& board, const std::string& coordinates) {
    for (Move m : legalMoves(board)) {
        std::string text = {char('a' + fileOf(moveFrom(m))), char('1' + rankOf(moveFrom(m))),
                            char('a' + fileOf(moveTo(m))), char('1' + rankOf(moveTo(m)))};
        if (movePromotion(m) && (coordinates.size() == 5 || movePromotion(m) != QUEEN))
            text += "pnbrqk"[movePromotion(m) - 1];
        if (text == coordinates)
            return m;
    }
    ADD_FAILURE() << "no legal move " << coordinates;
    return NO_MOVE;
}
