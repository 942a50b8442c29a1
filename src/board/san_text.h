// The pieces of move text every reader and writer shares: the one table of piece letters and
// the one SAN reader, which takes a text apart for matching against generated moves. It
// reads two spellings: the engine's own (the text as sanToMove takes it) and the looser one
// of game files.
#pragma once

#include "board/types.h"

#include <string_view>

// A square's file letter and rank digit, as the text of every move and FEN names them.
constexpr bool isFileLetter(char c) {
    return c >= 'a' && c <= 'h';
}
constexpr bool isRankDigit(char c) {
    return c >= '1' && c <= '8';
}

// Upper case in algebraic text, lower case for a promotion in coordinates; pawns have none.
char pieceLetter(Piece p);
// The piece a pawn becomes for its letter (upper case in SAN, lower in coordinates), or EMPTY.
Piece promotionOf(char letter, bool upperCase);

enum class SanSpelling {
    // A piece letter or a pawn's file, one origin hint, "x", the square and "=X"; whatever
    // follows is not looked at. Castling is the caller's ("O-O" and "O-O-O" exactly).
    ENGINE,
    // A whole game-file token: check and annotation marks after it, castling with zeros, a
    // promotion with or without "=", both origin hints; nothing else may follow the move.
    GAME_FILE,
};

struct SanText {
    bool castle     = false;
    Piece piece     = PAWN;
    int fromFile    = -1;
    int fromRank    = -1;
    Square to       = 0; // for castling, the king's square on the long or short side
    Piece promotion = EMPTY;

    // The generated move the engine's reader takes for the text, the first that passes: the
    // piece and square, and one hint (the file when there are both).
    bool picks(Move m) const {
        return movePiece(m) == piece && moveTo(m) == to &&
               (fromFile >= 0 ? fileOf(moveFrom(m)) == fromFile
                              : fromRank < 0 || rankOf(moveFrom(m)) == fromRank);
    }
    // Every move the text can mean: castling for castling, else the piece, the square, the
    // promotion and both hints.
    bool means(Move m) const {
        if (castle)
            return isCastle(m) && moveTo(m) == to;
        return !isCastle(m) && movePiece(m) == piece && moveTo(m) == to &&
               movePromotion(m) == promotion && (fromFile < 0 || fileOf(moveFrom(m)) == fromFile) &&
               (fromRank < 0 || rankOf(moveFrom(m)) == fromRank);
    }
};

// False when the text is not SAN in that spelling. A castling text needs the side to move.
bool readSan(std::string_view text, SanText& san, SanSpelling spelling, Color toMove);
