// Splits PGN text into games: the tags the book builder needs and the move tokens of the main
// line, with comments, variations, NAGs, move numbers and annotation marks left out. Turning
// a token into a move of a position is game_moves.h's concern.
#pragma once

#include <string>
#include <string_view>
#include <vector>

enum GameResult { RESULT_UNKNOWN, RESULT_WHITE_WINS, RESULT_BLACK_WINS, RESULT_DRAW };

struct PgnGame {
    int number = 0;                 // 1 for the first game of the text
    std::string fen;                // the FEN tag; empty for the initial position
    std::vector<std::string> moves; // move tokens of the main line, as written
    GameResult result = RESULT_UNKNOWN;
    std::string error; // why the text of this game is malformed; empty when it is not
};

class PgnReader {
public:
    explicit PgnReader(std::string_view pgnText) : text(pgnText) {}
    // Reads the next game; false when only blanks remain. A malformed game still comes back,
    // with its error set, and reading goes on with the game after it.
    bool next(PgnGame& game);

private:
    void readTags(PgnGame& game);
    void readTag(PgnGame& game);
    void readMoveText(PgnGame& game);
    void skipBraceComment(PgnGame& game);
    void skipLine();
    void skipBlanks();
    std::string_view readToken();
    void fail(PgnGame& game, const char* reason);

    std::string_view text;
    std::size_t at = 0;
    int gamesRead  = 0;
};

GameResult parseResult(std::string_view text);

// Where the text can be cut so that a game begins behind the cut: at the last tag line that
// follows a blank line, or else behind the last line that ends with a termination marker
// (game files without tags); 0 when there is no such place. Reading the two parts one after
// the other gives the games of the whole text.
std::size_t lastGameStart(std::string_view text); // "1-0", "0-1", "1/2-1/2"; otherwise unknown
