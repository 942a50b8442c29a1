// Whether a stream is an interactive terminal, so that a tool can redraw a progress line in
// place there and keep files and pipes free of it. One implementation file per system.
#pragma once

#include <cstdio>

bool isTerminal(std::FILE* stream);
