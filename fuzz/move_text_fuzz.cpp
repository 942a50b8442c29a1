// Feeds arbitrary text to the coordinate and SAN readers in a few positions; a move they
// accept is played and taken back, and the board must come back unchanged.
#include "fuzz_board.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {
const char* const positions[] = {
    START_FEN,
    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",
    "r3k2r/Pppp1ppp/1b3nbN/nP6/BBP1P3/q4N2/Pp1P2PP/R2Q1RK1 w kq - 0 1",
    "8/8/8/1k6/3Pp3/8/8/4KQ2 b - d3 0 1",
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    SilentBoard& board = fuzzBoard();
    board.setPosition(positions[data[0] % 4]);
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
