# Thin wrapper around CMake for the README's commands and CI's checks.
BUILD_DIR    ?= build/release
SANITIZE_DIR ?= build/sanitize
FUZZ_DIR     ?= build/fuzz
JOBS         ?= $(shell nproc 2>/dev/null || echo 2)
PREFIX       ?= /usr/local
# WERROR=ON turns compiler warnings into errors (CI builds this way).
WERROR       ?= OFF
# Seconds each fuzz target runs in `make fuzz`.
FUZZ_SECONDS ?= 20
# Fuzz targets running at once in `make fuzz`.
FUZZ_JOBS    ?= 2

CONFIGURE    = cmake -DPELLIX_WERROR=$(WERROR)
FORMATTED    = $(shell git ls-files 'src/*.cpp' 'src/*.h' 'bench/*.cpp' 'bench/*.h' \
                   'tests/*.cpp' 'tests/*.h' 'fuzz/*.cpp' 'fuzz/*.h')

.PHONY: all run test test-release test-sanitize bench valgrind fuzz format format-check \
        install clean

all:
	$(CONFIGURE) -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=Release
	cmake --build $(BUILD_DIR) -j $(JOBS)

run: all
	$(BUILD_DIR)/pellix

# Every test in the release build, then the fast ones again under AddressSanitizer and
# UndefinedBehaviorSanitizer.
test: test-release test-sanitize

test-release: all
	cd $(BUILD_DIR) && ctest --output-on-failure -j $(JOBS)

test-sanitize:
	$(CONFIGURE) -S . -B $(SANITIZE_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DPELLIX_SANITIZE=ON
	cmake --build $(SANITIZE_DIR) -j $(JOBS)
	cd $(SANITIZE_DIR) && ctest --output-on-failure -j $(JOBS) -L fast

bench: all
	$(BUILD_DIR)/pellix-bench perft

# memcheck over a short search bench, a perft and a UCI game: any read of memory that was
# never written fails. The engine's own exit status after "quit" is 1, hence 99 for errors.
VALGRIND = valgrind -q --error-exitcode=99
valgrind: all
	$(VALGRIND) $(BUILD_DIR)/pellix-bench search 5 0 >/dev/null
	$(VALGRIND) $(BUILD_DIR)/pellix -perft 4 >/dev/null
	printf 'uci\nposition startpos moves e2e4 c7c5\ngo depth 6\nisready\nquit\n' | \
	    $(VALGRIND) $(BUILD_DIR)/pellix >/dev/null; test $$? -eq 1

# The whole tree under clang with the fuzz targets (so clang's warnings are checked too), then
# each target for FUZZ_SECONDS on its seeds in fuzz/corpus, FUZZ_JOBS at a time; anything a target
# reports fails. What the runs find stays under $(FUZZ_DIR)/fuzz-runs.
fuzz:
	$(CONFIGURE) -S . -B $(FUZZ_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DPELLIX_FUZZ=ON \
	    -DCMAKE_CXX_COMPILER=clang++
	cmake --build $(FUZZ_DIR) -j $(JOBS)
	fuzz/run-all $(FUZZ_DIR) $(FUZZ_SECONDS) $(FUZZ_JOBS)

format:
	clang-format -i $(FORMATTED)

format-check:
	clang-format --dry-run --Werror $(FORMATTED)

# Installs under $(PREFIX) (bin, share/man/man6, share/games/plugins/xboard); DESTDIR, when
# given, is put in front of every path, as packaging tools expect.
install: all
	DESTDIR="$(DESTDIR)" cmake --install $(BUILD_DIR) --prefix "$(PREFIX)"

clean:
	rm -rf build
