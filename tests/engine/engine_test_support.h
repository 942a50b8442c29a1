// Checks shared by the engine's process tests: whether a move text the engine sent is legal
// in a position, judged by the engine's own library.
#pragma once

#include <string>
#include <vector>

// The moves (coordinate text, "e7e8q" for promotions) legal after `moves` from `fen`.
std::vector<std::string> legalMoveTexts(const std::string& fen,
                                        const std::vector<std::string>& moves = {});
bool isLegalMove(const std::string& move, const std::string& fen,
                 const std::vector<std::string>& moves = {});
// The move word of a "bestmove e2e4" or "move e2e4" line.
std::string moveOfLine(const std::string& line);
