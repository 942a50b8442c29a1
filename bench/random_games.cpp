// pellix-bench random-games N [SEED]: N games of 20 random legal plies in PGN, one a line
// with a random result. Their positions are ones no real game reaches, so a book built from
// them has as many distinct positions as plies: the worst case for the builder's memory.
#include "bench.h"
#include "board/make_engine.h"
#include "board/silent_board.h"

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

int benchRandomGames(int argc, char** argv) {
    const long games = argc > 0 ? std::atol(argv[0]) : 1000;
    std::mt19937_64 random(argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1);
    const auto engine           = makeEngine<SilentBoard>(0);
    const char* const results[] = {"1-0", "0-1", "1/2-1/2"};
    std::string line;
    for (long g = 0; g < games; ++g) {
        engine->newGame();
        line.clear();
        for (int ply = 0; ply < 20; ++ply) {
            MoveEntry list[MAX_GENERATED];
            const int count = engine->generateLegalMoves(list);
            if (count == 0)
                break;
            const Move m = list[random() % unsigned(count)].move;
            char san[16];
            engine->moveToSan(m, san, list, count);
            line += std::string(san).substr(0, std::string(san).find(' ')); // no " e.p"
            line += ' ';
            engine->playGameMove(m);
        }
        std::printf("%s%s\n", line.c_str(), results[random() % 3]);
    }
    return 0;
}
