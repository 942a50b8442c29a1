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
    for (Move m : legalMoves(*board)) {
        std::string text = {char('a' + fileOf(moveFrom(m))), char('1' + rankOf(moveFrom(m))),
                            char('a' + fileOf(moveTo(m))), char('1' + rankOf(moveTo(m)))};
        if (movePromotion(m))
            text += "pnbrqk"[movePromotion(m) - 1];
        texts.push_back(text);
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
