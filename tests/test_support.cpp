#include "test_support.h"

#include "board/make_engine.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

const char* const KIWIPETE_FEN =
    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1";

std::string readDataFile(const std::string& name) {
    std::ifstream in(std::string(PELLIX_DATA_DIR) + "/" + name, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    EXPECT_FALSE(text.str().empty()) << "no data in " << name;
    return text.str();
}

std::vector<PerftCase> loadPerftSuite(const std::string& name) {
    std::vector<PerftCase> suite;
    std::ifstream in(std::string(PELLIX_DATA_DIR) + "/" + name);
    for (std::string line, word, side, castle, ep; std::getline(in, line);) {
        std::istringstream words(line);
        std::size_t depth;
        if (!(words >> word) || (suite.empty() && word != "id"))
            continue;
        if (word == "id")
            words >> suite.emplace_back().id;
        else if (word == "epd" && words >> word >> side >> castle >> ep)
            suite.back().fen = word + " " + side + " " + castle + " " + ep + " 0 1";
        else if (word == "perft" && words >> depth && depth > 0) {
            suite.back().counts.resize(std::max(suite.back().counts.size(), depth));
            words >> suite.back().counts[depth - 1];
        }
    }
    EXPECT_GE(suite.size(), name == "tricky.perft" ? 19u : 6838u) << "cases read from " << name;
    return suite;
}

bool hasStandardCastling(const std::string& fen) {
    auto board = boardFrom(fen);
    // Rights K, Q, k, q: the king on e1 or e8 and the rook on its corner.
    const Square kings[] = {4, 4, 60, 60}, rooks[] = {7, 0, 63, 56};
    for (int r = 0; r < 4; ++r)
        if ((board->castleRights >> r & 1) && !(board->bbPiece[r / 2][KING] & bit(kings[r]) &&
                                                board->bbPiece[r / 2][ROOK] & bit(rooks[r])))
            return false;
    return true;
}

void expectPerftCounts(const std::string& file, std::size_t maxDepth, std::size_t stride) {
    const std::vector<PerftCase> suite = loadPerftSuite(file);
    auto board                         = boardFrom(START_FEN);
    for (std::size_t i = 0; i < suite.size(); i += stride) {
        const PerftCase& c = suite[i];
        if (!hasStandardCastling(c.fen))
            continue;
        ASSERT_EQ(board->setPosition(c.fen.c_str()), 1) << c.id << ": " << c.fen;
        for (std::size_t d = 1; d <= std::min(maxDepth, c.counts.size()); ++d)
            ASSERT_EQ(board->perft(int(d), 0), c.counts[d - 1]) << c.id << " depth " << d;
    }
}

std::unique_ptr<SilentBoard> boardFrom(const std::string& fen) {
    auto board = makeEngine<SilentBoard>(0);
    EXPECT_EQ(board->setPosition(fen.c_str()), 1) << fen;
    return board;
}

std::vector<Move> legalMoves(ChessBoard& board) {
    MoveEntry list[MAX_GENERATED];
    std::vector<Move> moves(std::size_t(board.generateLegalMoves(list)));
    for (std::size_t i = 0; i < moves.size(); ++i)
        moves[i] = list[i].move;
    return moves;
}

Move findMove(ChessBoard& board, const std::string& text) {
    char written[8];
    for (Move m : legalMoves(board)) {
        ChessBoard::moveToCoordinates(m, written);
        if (text == written || text + "q" == written)
            return m;
    }
    ADD_FAILURE() << "no legal move " << text;
    return NO_MOVE;
}
