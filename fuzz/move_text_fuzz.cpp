// Feeds arbitrary text to the coordinate and SAN readers in a few positions; a move they
// accept is played and taken back, and the board must come back unchanged.
#include "fuzz_board.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    SilentBoard& board = fuzzBoard();
    board.setPosition(FUZZ_POSITIONS[data[0] % 4]);
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    const Position before = board;
    Move m;
    if (board.sanToMove(text.c_str(), m)) {
        char written[32];
        ChessBoard::moveToSan(m, written, nullptr, 0);
        ChessBoard::moveToLongText(m, written);
    }
    if (board.playCoordinateMove(text.c_str()) && !board.takeBackGameMove())
        std::abort();
    if (!samePosition(board, before))
        std::abort();
    return 0;
}
