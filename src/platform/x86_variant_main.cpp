// Entry of the x86-64 programs. The engine is linked in twice, for every x86-64 processor and
// for those with POPCNT, which most of its population counts run faster on; the processor
// chooses, here and once, which copy runs. Each copy's main is renamed when it is linked.
extern "C" int pellix_main_baseline(int argc, char** argv);
extern "C" int pellix_main_popcnt(int argc, char** argv);

int main(int argc, char** argv) {
    __builtin_cpu_init();
    if (__builtin_cpu_supports("popcnt"))
        return pellix_main_popcnt(argc, argv);
    return pellix_main_baseline(argc, argv);
}
