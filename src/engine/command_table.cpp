#include "engine/command_table.h"

#include <cstring>

namespace {

bool looksLikeMove(const char* line) {
    return line[0] >= 'a' && line[0] <= 'h' && line[1] >= '1' && line[1] <= '8' && line[2] >= 'a' &&
           line[2] <= 'h' && line[3] >= '1' && line[3] <= '8';
}

bool matches(const CommandRow& row, const char* line) {
    switch (row.match) {
    case Match::EXACT:
        return std::strcmp(line, row.text) == 0;
    case Match::PREFIX:
    case Match::VALUE:
        return std::strncmp(line, row.text, std::strlen(row.text)) == 0;
    case Match::MOVE:
        return looksLikeMove(line);
    case Match::ANY:
        return true;
    }
    return false;
}

} // namespace

const CommandRow& findCommand(CommandTable table, const char* line) {
    for (const CommandRow& row : table)
        if (matches(row, line))
            return row;
    return table.back();
}

void runCommand(FrontEnd& frontEnd, const CommandRow& row, const char* line) {
    if (row.match == Match::VALUE && line[std::strlen(row.text)] == 0)
        return;
    row.handler(frontEnd, line);
}
