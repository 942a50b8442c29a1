// The configuration file "./pellix.ini": a small INI reader with the lookups the engine
// needs (an integer and a string from one section, each with its default).
#pragma once

#include <cstddef>

constexpr const char* CONFIG_FILE = "./pellix.ini";

// The integer value of `key` in `section`, or `fallback` when the file, the section or the
// key is missing. A value is read like atoi reads it: leading digits, 0 when there are none.
int configInt(const char* section, const char* key, int fallback, const char* path = CONFIG_FILE);
// Copies the string value (or `fallback`) into out, at most size - 1 characters.
void configString(const char* section, const char* key, const char* fallback, char* out,
                  std::size_t size, const char* path = CONFIG_FILE);
