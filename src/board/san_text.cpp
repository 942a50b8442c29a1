// The piece letters and the SAN reader's two spellings. Both take the text apart into the
// same SanText; the readers that use it match it against the moves generated in the position.
#include "board/san_text.h"

namespace {

// By Piece.
constexpr char PIECE_LETTERS[] = "  NBRQK";

bool isOneOf(char c, std::string_view set) {
    return set.find(c) != std::string_view::npos;
}

// The piece letter, or a file letter for a pawn; false for anything else.
bool readPiece(char c, Piece& piece) {
    for (Piece p : {KNIGHT, BISHOP, ROOK, QUEEN, KING})
        if (c == PIECE_LETTERS[p]) {
            piece = p;
            return true;
        }
    piece = PAWN;
    return isFileLetter(c);
}

bool readEngineSpelling(std::string_view text, SanText& san) {
    const auto at = [&](std::size_t i) { return i < text.size() ? text[i] : '\0'; };
    if (!readPiece(at(0), san.piece))
        return false;
    std::size_t p = san.piece != PAWN;
    if (isRankDigit(at(p))) {
        san.fromRank = at(p++) - '1';
    } else if (isFileLetter(at(p)) && (isFileLetter(at(p + 1)) || at(p + 1) == 'x')) {
        san.fromFile = at(p++) - 'a';
    }
    if (at(p) == 'x')
        ++p;
    if (!isFileLetter(at(p)) || !isRankDigit(at(p + 1)))
        return false;
    san.to = squareAt(at(p) - 'a', at(p + 1) - '1');
    return at(p + 2) != '=' || (san.promotion = promotionOf(at(p + 3), true)) != EMPTY;
}

// The origin hints and the capture mark in front of the square: "", "b", "1", "b1", with an
// optional "x" behind. A pawn's only hint is the file it captures from.
bool readOrigin(std::string_view prefix, SanText& san) {
    if (!prefix.empty() && prefix.back() == 'x')
        prefix.remove_suffix(1);
    if (!prefix.empty() && isFileLetter(prefix[0])) {
        san.fromFile = prefix[0] - 'a';
        prefix.remove_prefix(1);
    }
    if (!prefix.empty() && isRankDigit(prefix[0]) && san.piece != PAWN) {
        san.fromRank = prefix[0] - '1';
        prefix.remove_prefix(1);
    }
    return prefix.empty();
}

bool readGameFileSpelling(std::string_view token, SanText& san, Color toMove) {
    while (!token.empty() && isOneOf(token.back(), "+#!?"))
        token.remove_suffix(1);
    if (token == "O-O" || token == "0-0" || token == "O-O-O" || token == "0-0-0") {
        san.castle = true;
        san.piece  = KING;
        san.to     = squareAt(token.size() == 3 ? 6 : 2, toMove == WHITE ? 0 : 7);
        return true;
    }
    if (token.empty() || token.size() > 8 || !readPiece(token[0], san.piece))
        return false;
    if (san.piece != PAWN)
        token.remove_prefix(1);
    // The promotion at the end: "e8=Q", and "e8Q" as some writers spell it.
    if (!token.empty() && isOneOf(token.back(), "NBRQ")) {
        if (san.piece != PAWN)
            return false;
        san.promotion = promotionOf(token.back(), true);
        token.remove_suffix(1);
        if (!token.empty() && token.back() == '=')
            token.remove_suffix(1);
    }
    if (token.size() < 2)
        return false;
    const char file = token[token.size() - 2], rank = token.back();
    if (!isFileLetter(file) || !isRankDigit(rank))
        return false;
    san.to = squareAt(file - 'a', rank - '1');
    return readOrigin(token.substr(0, token.size() - 2), san);
}

} // namespace

char pieceLetter(Piece p) {
    return p >= KNIGHT && p <= KING ? PIECE_LETTERS[p] : 0;
}

Piece promotionOf(char letter, bool upperCase) {
    for (Piece p : {KNIGHT, BISHOP, ROOK, QUEEN}) {
        const char upper = PIECE_LETTERS[p];
        if (letter == (upperCase ? upper : char(upper - 'A' + 'a')))
            return p;
    }
    return EMPTY;
}

bool readSan(std::string_view text, SanText& san, SanSpelling spelling, Color toMove) {
    san = SanText{};
    return spelling == SanSpelling::ENGINE ? readEngineSpelling(text, san)
                                           : readGameFileSpelling(text, san, toMove);
}
