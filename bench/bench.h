// The benchmark program's parts: each runs one benchmark and returns the exit status.
#pragma once

int benchPerft(int argc, char** argv);
int benchEval(int argc, char** argv);
int benchSearch(int argc, char** argv);
int benchRandomGames(int argc, char** argv);

// Seconds since an arbitrary start, from the steady clock.
double benchSeconds();
