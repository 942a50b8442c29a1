// A forgiving reader of PGN text. It never looks back and every step consumes at least one
// character, so any input ends; nesting of variations is a counter, not recursion, so deep
// nesting cannot exhaust the stack.
#include "book/pgn_reader.h"

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
// A NUL byte is an ordinary character here: it must not end a token without consuming it.
bool endsToken(char c) {
    return isBlank(c) || std::string_view("{}()[];$").find(c) != std::string_view::npos;
}

bool isTerminationMarker(std::string_view token) {
    return token == "*" || token == "1-0" || token == "0-1" || token == "1/2-1/2";
}

bool isAnnotation(std::string_view token) {
    return token.find_first_not_of("!?") == std::string_view::npos;
}

// "12." and "12..." number moves; "12.e4" carries its move behind the number. Castling
// written with zeros starts with a digit too and is a move.
std::string_view stripMoveNumber(std::string_view token) {
    if (token.starts_with("0-0"))
        return token;
    std::size_t i = 0;
    while (i < token.size() && isDigit(token[i]))
        ++i;
    const bool numbered = i > 0;
    while (i < token.size() && token[i] == '.')
        ++i;
    return numbered || i > 0 ? token.substr(i) : token;
}

} // namespace

GameResult parseResult(std::string_view text) {
    if (text == "1-0")
        return RESULT_WHITE_WINS;
    if (text == "0-1")
        return RESULT_BLACK_WINS;
    if (text == "1/2-1/2")
        return RESULT_DRAW;
    return RESULT_UNKNOWN;
}

std::size_t lastGameStart(std::string_view text) {
    for (std::size_t at = text.rfind("\n["); at != std::string_view::npos && at > 0;
         at             = text.rfind("\n[", at - 1)) {
        std::size_t end = at; // the end of the line before
        while (end > 0 && text[end - 1] == '\r')
            --end;
        if (end > 0 && text[end - 1] == '\n')
            return at + 1;
    }
    for (std::size_t end = text.rfind('\n'); end != std::string_view::npos && end > 0;
         end             = text.rfind('\n', end - 1)) {
        std::size_t last = end;
        while (last > 0 && isBlank(text[last - 1]))
            --last;
        std::size_t first = last;
        while (first > 0 && !isBlank(text[first - 1]))
            --first;
        if (isTerminationMarker(text.substr(first, last - first)))
            return end + 1;
    }
    return 0;
}

bool PgnReader::next(PgnGame& game) {
    game = PgnGame{};
    skipBlanks();
    if (at >= text.size())
        return false;
    game.number = ++gamesRead;
    readTags(game);
    readMoveText(game);
    return true;
}

void PgnReader::fail(PgnGame& game, const char* reason) {
    if (game.error.empty())
        game.error = reason;
}

void PgnReader::skipBlanks() {
    // A byte-order mark is not part of the text: the first line begins after it.
    const std::size_t firstLine = text.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    if (at < firstLine)
        at = firstLine;
    while (at < text.size()) {
        if (isBlank(text[at]))
            ++at;
        else if (text[at] == '%' && (at == firstLine || text[at - 1] == '\n'))
            skipLine(); // escape line
        else
            break;
    }
}

void PgnReader::skipLine() {
    const std::size_t end = text.find('\n', at);
    at                    = end == std::string_view::npos ? text.size() : end + 1;
}

void PgnReader::readTags(PgnGame& game) {
    for (skipBlanks(); at < text.size() && text[at] == '['; skipBlanks())
        readTag(game);
}

// [Name "value"] on one line; a tag that does not parse spoils the game and the rest of its
// line is dropped.
void PgnReader::readTag(PgnGame& game) {
    ++at;
    auto skipSpaces = [&] {
        while (at < text.size() && (text[at] == ' ' || text[at] == '\t'))
            ++at;
    };
    skipSpaces();
    const std::size_t nameStart = at;
    while (at < text.size() && !isBlank(text[at]) && text[at] != '"' && text[at] != ']')
        ++at;
    const std::string_view name = text.substr(nameStart, at - nameStart);
    skipSpaces();
    std::string value;
    bool closed = false;
    if (!name.empty() && at < text.size() && text[at] == '"') {
        for (++at; at < text.size() && text[at] != '\n'; ++at) {
            if (text[at] == '\\' && at + 1 < text.size() && text[at + 1] != '\n')
                ++at;
            else if (text[at] == '"')
                break;
            value += text[at];
        }
        if (at < text.size() && text[at] == '"') {
            ++at;
            skipSpaces();
            closed = at < text.size() && text[at] == ']';
        }
    }
    if (!closed) {
        fail(game, "malformed tag pair");
        skipLine();
        return;
    }
    ++at;
    if (name == "FEN")
        game.fen = value;
    else if (name == "Result")
        game.result = parseResult(value);
}

void PgnReader::skipBraceComment(PgnGame& game) {
    const std::size_t end = text.find('}', at + 1);
    if (end == std::string_view::npos) {
        fail(game, "comment without its closing brace");
        at = text.size();
        return;
    }
    at = end + 1;
}

std::string_view PgnReader::readToken() {
    const std::size_t start = at;
    while (at < text.size() && !endsToken(text[at]))
        ++at;
    return text.substr(start, at - start);
}

// Reads the move text up to its termination marker, or up to the tags of the next game when
// the marker is missing (the Result tag then stands for the result).
void PgnReader::readMoveText(PgnGame& game) {
    int depth = 0; // variations open around the current token
    for (;;) {
        skipBlanks();
        if (at >= text.size() || text[at] == '[') {
            if (depth > 0)
                fail(game, "variation without its closing parenthesis");
            return;
        }
        const char c = text[at];
        if (c == '{')
            skipBraceComment(game);
        else if (c == ';')
            skipLine();
        else if (c == '(')
            ++depth, ++at;
        else if (c == ')') {
            if (depth == 0)
                fail(game, "')' without its '('");
            else
                --depth;
            ++at;
        } else if (c == '$') {
            for (++at; at < text.size() && isDigit(text[at]);)
                ++at;
        } else if (c == '}' || c == ']') {
            fail(game, c == '}' ? "'}' outside a comment" : "']' outside a tag");
            ++at;
        } else {
            const std::string_view token = readToken();
            // Variations are read past: only the main line is the game.
            if (depth > 0)
                continue;
            if (isTerminationMarker(token)) {
                game.result = parseResult(token);
                return;
            }
            const std::string_view move = stripMoveNumber(token);
            if (!move.empty() && !isAnnotation(move))
                game.moves.emplace_back(move);
        }
    }
}
