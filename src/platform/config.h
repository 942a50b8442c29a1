// The configuration file, pellix.ini in the directory the engine runs in: an integer or a
// string from one section, each with its default. A missing or unreadable file is no error.
// One implementation file per system.
#pragma once

#include <cstddef>

// The integer value of `key` in `section`, or `fallback` when the file, the section or the
// key is missing. A value is read like atoi reads it: leading digits, 0 when there are none.
int configInt(const char* section, const char* key, int fallback);
// Copies the string value (or `fallback`) into out, at most size - 1 characters.
void configString(const char* section, const char* key, const char* fallback, char* out,
                  std::size_t size);
