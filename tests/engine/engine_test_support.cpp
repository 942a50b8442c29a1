#include "engine_test_support.h"

#include "test_support.h"

#include <algorithm>

std::vector<std::string> legalMoveTexts(const std::string& fen,
                                        const std::vector<std::string>& moves) {
    std::unique_ptr<SilentBoard> board = boardFrom(fen);
    for (const std::string& m : moves)
        if (!board->playCoordinateMove(m.c_str()))
            return {};
    std::vector<std::string> texts;
    char text[8];
    for (Move m : legalMoves(*board)) {
        ChessBoard::moveToCoordinates(m, text);
        texts.emplace_back(text);
    }
    return texts;
}

bool isLegalMove(const std::string& move, const std::string& fen,
                 const std::vector<std::string>& moves) {
    const std::vector<std::string> legal = legalMoveTexts(fen, moves);
    return std::find(legal.begin(), legal.end(), move) != legal.end();
}

std::string moveOfLine(const std::string& line) {
    const std::size_t blank = line.find(' ');
    // Without a second blank the length is past the end, and the rest of the line is taken.
    return blank == std::string::npos
               ? ""
               : line.substr(blank + 1, line.find(' ', blank + 1) - blank - 1);
}
