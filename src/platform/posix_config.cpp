// The configuration file on POSIX systems: a small INI reader for "./pellix.ini". It reads
// "[section]" headers, "key=value" lines, ";" and "#" comments, names compared without
// regard to case, blanks around names and values ignored. Any line that is none of these is
// skipped, so a damaged file only loses its bad lines.
#include "platform/config.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <strings.h>

namespace {

constexpr const char* CONFIG_FILE = "./pellix.ini";

char* trim(char* s) {
    while (*s && std::isspace(static_cast<unsigned char>(*s)))
        ++s;
    char* end = s + std::strlen(s);
    while (end > s && std::isspace(static_cast<unsigned char>(end[-1])))
        --end;
    *end = 0;
    return s;
}

// Finds the value of section/key; writes it into value (size bytes) and answers true.
bool lookup(const char* section, const char* key, char* value, std::size_t size) {
    std::FILE* file = std::fopen(CONFIG_FILE, "r");
    if (!file)
        return false;
    char line[1024];
    bool inSection = false, found = false;
    while (!found && std::fgets(line, sizeof line, file)) {
        // A line longer than the buffer is read on in pieces; skip the rest of it.
        if (!std::strchr(line, '\n') && !std::feof(file)) {
            int c;
            while ((c = std::fgetc(file)) != EOF && c != '\n') {
            }
            continue;
        }
        char* text = trim(line);
        if (*text == ';' || *text == '#' || *text == 0)
            continue;
        if (*text == '[') {
            char* close = std::strchr(text, ']');
            if (!close)
                continue;
            *close    = 0;
            inSection = strcasecmp(trim(text + 1), section) == 0;
            continue;
        }
        char* equals = std::strchr(text, '=');
        if (!inSection || !equals)
            continue;
        *equals = 0;
        if (strcasecmp(trim(text), key) != 0)
            continue;
        std::snprintf(value, size, "%s", trim(equals + 1));
        found = true;
    }
    std::fclose(file);
    return found;
}

} // namespace

int configInt(const char* section, const char* key, int fallback) {
    char value[64];
    if (!lookup(section, key, value, sizeof value))
        return fallback;
    return int(std::strtol(value, nullptr, 10));
}

void configString(const char* section, const char* key, const char* fallback, char* out,
                  std::size_t size) {
    if (size == 0)
        return;
    char value[1024];
    const char* chosen = lookup(section, key, value, sizeof value) ? value : fallback;
    std::snprintf(out, size, "%s", chosen);
}
