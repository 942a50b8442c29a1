#include "test_support.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

const char* const KIWIPETE_FEN =
    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1";

std::string dataPath(const std::string& name) {
    return std::string(PELLIX_DATA_DIR) + "/" + name;
}

namespace {

std::size_t casesHeldBy(const std::string& name) {
    struct DataFile {
        const char* name;
        std::size_t cases;
    };
    constexpr DataFile files[] = {{"tricky.perft", 19}, {"random.perft", 6838}, {"wac.epd", 299}};
    for (const DataFile& f : files)
        if (name == f.name)
            return f.cases;
    ADD_FAILURE() << name << " is not one of the reference files";
    return 1;
}

void expectAllCasesRead(const std::string& name, std::size_t read) {
    EXPECT_GE(read, casesHeldBy(name)) << "read only " << read << " cases from " << dataPath(name);
}

} // namespace

std::vector<PerftCase> loadPerftSuite(const std::string& name) {
    std::ifstream in(dataPath(name));
    std::vector<PerftCase> suite;
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream words(line);
        std::string word;
        words >> word;
        if (word == "id") {
            suite.push_back({});
            words >> suite.back().id;
        } else if (word == "epd" && !suite.empty()) {
            std::string rest;
            std::getline(words, rest);
            const std::size_t first = rest.find_first_not_of(" \t");
            const std::size_t last  = rest.find_last_not_of(" \t\r");
            suite.back().fen        = rest.substr(first, last - first + 1) + " 0 1";
        } else if (word == "perft" && !suite.empty()) {
            std::size_t depth;
            std::uint64_t count;
            words >> depth >> count;
            suite.back().counts.resize(std::max(suite.back().counts.size(), depth));
            suite.back().counts[depth - 1] = count;
        }
    }
    expectAllCasesRead(name, suite.size());
    return suite;
}

std::vector<std::string> loadEpdFens(const std::string& name) {
    std::ifstream in(dataPath(name));
    std::vector<std::string> fens;
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream words(line);
        std::string placement, side, castle, ep;
        if (words >> placement >> side >> castle >> ep)
            fens.push_back(placement + " " + side + " " + castle + " " + ep + " 0 1");
    }
    expectAllCasesRead(name, fens.size());
    return fens;
}

bool hasStandardCastling(const std::string& fen) {
    auto board = boardFrom(fen);
    struct Right {
        int bit;
        Color colour;
        Square king, rook;
    };
    constexpr Right rights[] = {{CASTLE_WHITE_SHORT, WHITE, 4, 7},
                                {CASTLE_WHITE_LONG, WHITE, 4, 0},
                                {CASTLE_BLACK_SHORT, BLACK, 60, 63},
                                {CASTLE_BLACK_LONG, BLACK, 60, 56}};
    for (const Right& r : rights)
        if ((board->castleRights & r.bit) && (!(board->bbPiece[r.colour][KING] & bit(r.king)) ||
                                              !(board->bbPiece[r.colour][ROOK] & bit(r.rook))))
            return false;
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
    const std::uint8_t wasInCheck = board.inCheck;
    const int count               = board.generateMoves(list, board.sideToMoveInCheck());
    board.inCheck                 = wasInCheck;
    std::vector<Move> moves;
    for (int i = 0; i < count; ++i) {
        if (board.makeMove(list[i].move))
            moves.push_back(list[i].move);
        board.unmakeMove(list[i].move);
    }
    return moves;
}
