// Searches whatever position the FEN reader accepts, with a node limit taken from the input,
// and feeds the same text to the EPD line reader: nothing may crash, and the board must be
// as it was once the played move is taken back.
#include "board/make_engine.h"
#include "board/silent_board.h"
#include "tools/epd_suite.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1)
        return 0;
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    EpdLine line;
    splitEpdLine(text.substr(0, 255).c_str(), line);

    // One board for all inputs, with a small table so that the search meets stored entries.
    static SilentBoard& board = *makeEngine<SilentBoard>(2).release();
    if (!board.setPosition(text.c_str()))
        return 0;
    const Position before = board;
    const int repetitions = board.repetitionTop;
    // Up to 16,000 nodes: deep enough for extensions and the table, quick enough to fuzz.
    board.limits.setTimeMode(TIME_NODES, 500 + 60 * std::int64_t(data[0]));
    board.think();
    if (board.gameMoveCount)
        board.takeBackGameMove();
    if (!samePosition(board, before) || board.repetitionTop != repetitions)
        std::abort();
    return 0;
}
