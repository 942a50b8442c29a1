# Thin wrapper around CMake for the README's commands and CI's checks.
BUILD_DIR    ?= build/release
SANITIZE_DIR ?= build/sanitize
FUZZ_DIR     ?= build/fuzz
PGO_DIR      ?= build/pgo
PACKAGE_DIR  ?= build/packages
WINDOWS_DIR  ?= build/windows
WASM_DIR     ?= build/wasm
ARM64_DIR    ?= build/arm64
# How the build machine runs the arm64 programs, and x86-64 ones on a processor without POPCNT.
QEMU_ARM64   ?= qemu-aarch64 -L /usr/aarch64-linux-gnu
QEMU_CORE2   ?= qemu-x86_64 -cpu core2duo
JOBS         ?= $(shell nproc 2>/dev/null || echo 2)
PREFIX       ?= /usr/local
# WERROR=ON turns compiler warnings into errors (CI builds this way).
WERROR       ?= OFF
# Seconds each fuzz target runs in `make fuzz`.
FUZZ_SECONDS ?= 20
# Fuzz targets running at once in `make fuzz`.
FUZZ_JOBS    ?= 2
# PGO=ON makes the Linux packages from the profile-guided build of `make pgo`, PGO=OFF from
# the plain Release build. Off: on the search bench the profile-guided build was only about
# 3 % faster (median of nine alternated runs, by wall clock and by processor time alike),
# short of the 5 % that would pay for its two builds and training run in CI.
PGO          ?= OFF
# Runs of each build that `make pgo-speed` alternates.
SPEED_RUNS   ?= 5

CONFIGURE    = cmake -DPELLIX_WERROR=$(WERROR)
FORMATTED    = $(shell git ls-files 'src/*.cpp' 'src/*.h' 'bench/*.cpp' 'bench/*.h' \
                   'tests/*.cpp' 'tests/*.h' 'fuzz/*.cpp' 'fuzz/*.h')

.PHONY: all run test test-release test-sanitize bench valgrind fuzz format format-check \
        install pgo pgo-speed package package-linux package-windows test-package windows \
        test-windows arm64 test-arm64 package-arm64 test-core2 wasm web-dist npm serve test-web \
        clean

all:
	$(CONFIGURE) -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=Release
	cmake --build $(BUILD_DIR) -j $(JOBS)

# Builds the engine and its opening book (not the tests, nor the bench), then starts it in
# $(BUILD_DIR)/run, whose pellix.ini (written by CMake) turns the book on. The engine exits
# with the status 1 after "quit" (GUIs ignore it): not a failure of make.
run:
	$(CONFIGURE) -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=Release
	cmake --build $(BUILD_DIR) -j $(JOBS) --target pellix pellix-openbook
	cd $(BUILD_DIR)/run && ../pellix || test $$? -eq 1

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
# never written fails. The engine exits with status 1 after "quit" and after -perft, hence 99
# for errors.
VALGRIND = valgrind -q --error-exitcode=99
valgrind: all
	$(VALGRIND) $(BUILD_DIR)/pellix-bench search 5 0 >/dev/null
	$(VALGRIND) $(BUILD_DIR)/pellix -perft 4 >/dev/null; test $$? -eq 1
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

# Profile-guided build in $(PGO_DIR): an instrumented pellix-bench runs the search bench to
# collect counters, then everything is rebuilt from them in the same directory (GCC finds
# each object's counters by its path). Both the training run and the final bench must print
# the recorded signature: profile data changes code layout, never search results. Rebuilt
# only when a source changes.
PGO_INPUTS = $(shell git ls-files --cached --others --exclude-standard src bench books cmake \
                 CMakeLists.txt 2>/dev/null)
pgo: $(PGO_DIR)/pgo.stamp

$(PGO_DIR)/pgo.stamp: $(PGO_INPUTS)
	rm -f $@
	$(CONFIGURE) -S . -B $(PGO_DIR) -DCMAKE_BUILD_TYPE=Release -DPELLIX_TESTS=OFF \
	    -DPELLIX_PGO=GENERATE
	cmake --build $(PGO_DIR) -j $(JOBS) --target pellix-bench
	rm -rf $(PGO_DIR)/profile
	$(PGO_DIR)/pellix-bench search 0 0 >$(PGO_DIR)/training.txt
	packaging/check-signature.sh $(PGO_DIR)/training.txt
	$(CONFIGURE) -S . -B $(PGO_DIR) -DPELLIX_PGO=USE
	cmake --build $(PGO_DIR) -j $(JOBS)
	$(PGO_DIR)/pellix-bench search 0 0 >$(PGO_DIR)/bench.txt
	packaging/check-signature.sh $(PGO_DIR)/bench.txt
	touch $@

# Search speed of the profile-guided build against the plain Release build, runs of the two
# alternated so that both see the same load on a shared machine.
pgo-speed: pgo all
	packaging/pgo-speed.sh $(BUILD_DIR)/pellix-bench $(PGO_DIR)/pellix-bench $(SPEED_RUNS)

# The 64-bit Windows programs, cross-compiled with MinGW-w64 into $(WINDOWS_DIR); the
# opening book is made by the build machine's own pellix-book.
windows: all
	$(CONFIGURE) -S . -B $(WINDOWS_DIR) -DCMAKE_BUILD_TYPE=Release \
	    -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake \
	    -DPELLIX_BOOK_TOOL=$(abspath $(BUILD_DIR))/pellix-book
	cmake --build $(WINDOWS_DIR) -j $(JOBS)

# The Windows build under Wine: its in-process tests, then every test that starts the
# programs, run by the Linux build against the Windows programs (each through the relay,
# which gives it a real Windows pipe), and the bench's node count against the native one.
# The Wine prefix is made on first use.
test-windows: windows
	WINEDEBUG=-all wine $(WINDOWS_DIR)/pellix_tests.exe --gtest_brief=1
	PELLIX_TEST_WINDOWS=$(abspath $(WINDOWS_DIR)) $(BUILD_DIR)/pellix_process_tests --gtest_brief=1
	$(call SAME_SIGNATURE,WINEDEBUG=-all wine $(WINDOWS_DIR)/pellix-bench.exe)

# A bench program, run through its emulator, must count the nodes of a depth-6 search bench
# as the native build does.
SAME_SIGNATURE = test "$$($(1) search 6 0 | tr -d '\r' | tail -1)" = "$$($(BUILD_DIR)/pellix-bench search 6 0 | tail -1)"

# The x86-64 engine on a processor without POPCNT (qemu's Core 2 model), where it must count
# bits without the instruction: the command-line modes and the UCI sessions (the perft rows, the
# handshake, a search to a depth, "quit"), and the bench. The timed commands during a search
# are left to the arm64 run: emulated twice over on a busy machine they miss their waits.
test-core2: all
	PELLIX_TEST_RUNNER="$(QEMU_CORE2)" $(BUILD_DIR)/pellix_process_tests --gtest_brief=1 \
	    --gtest_filter='CommandLine.*:UciSession.*'
	$(call SAME_SIGNATURE,$(QEMU_CORE2) $(BUILD_DIR)/pellix-bench)

# The 64-bit ARM Linux programs, cross-compiled into $(ARM64_DIR); the opening book is made
# by the build machine's own pellix-book, as for Windows.
arm64: all
	$(CONFIGURE) -S . -B $(ARM64_DIR) -DCMAKE_BUILD_TYPE=Release \
	    -DCMAKE_TOOLCHAIN_FILE=cmake/aarch64-linux-gnu.cmake \
	    -DPELLIX_BOOK_TOOL=$(abspath $(BUILD_DIR))/pellix-book
	cmake --build $(ARM64_DIR) -j $(JOBS)

# The arm64 build under qemu: its in-process tests (the long loops sampled), then the program
# tests, run by the build machine's test program against the arm64 programs.
test-arm64: arm64
	$(QEMU_ARM64) $(ARM64_DIR)/pellix_tests --gtest_brief=1
	PELLIX_TEST_PROGRAMS=$(abspath $(ARM64_DIR)) PELLIX_TEST_RUNNER="$(QEMU_ARM64)" \
	    $(BUILD_DIR)/pellix_process_tests --gtest_brief=1
	$(call SAME_SIGNATURE,$(QEMU_ARM64) $(ARM64_DIR)/pellix-bench)

# The engine and the bench as WebAssembly in $(WASM_DIR) (pellix.js and .wasm,
# pellix-bench.js and .wasm), with the opening book the page preloads, made by the native
# pellix-book; the native engine is what test-web compares with. Debian's emscripten finds
# its optimiser's parser (acorn) only through NODE_PATH.
WASM_ENV = NODE_PATH=/usr/share/nodejs
wasm:
	$(CONFIGURE) -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=Release
	cmake --build $(BUILD_DIR) -j $(JOBS) --target pellix pellix-openbook
	$(WASM_ENV) emcmake $(CONFIGURE) -S . -B $(WASM_DIR) -DCMAKE_BUILD_TYPE=Release \
	    -DPELLIX_TESTS=OFF
	$(WASM_ENV) cmake --build $(WASM_DIR) -j $(JOBS) --target pellix pellix-bench
	cp $(BUILD_DIR)/pellixopenbook.bin $(WASM_DIR)/

# The page as one static folder in $(WEB_DIST) (web/make-dist.sh): the page, the engine and
# its book, the pinned libraries. It needs no special headers; copy it to any static host.
WEB_DIST ?= build/web-dist
web-dist: wasm web/node_modules
	web/make-dist.sh $(WASM_DIR) $(WEB_DIST)

# The npm package (web/npm with the engine of `make wasm`), staged in build/npm and packed
# into build/pellix-VERSION.tgz.
npm: wasm
	rm -rf build/npm build/pellix-*.tgz
	mkdir -p build/npm
	cp web/npm/* $(WASM_DIR)/pellix.js $(WASM_DIR)/pellix.wasm build/npm/
	cd build && npm pack ./npm --silent

# The page of `make web-dist` on http://localhost:$(PORT)/.
PORT ?= 8080
serve: web-dist
	PORT=$(PORT) node web/server.mjs $(WEB_DIST)

web/node_modules: web/package.json web/package-lock.json
	cd web && npm ci --no-audit --no-fund
	touch $@

# The page's own logic under node --test; the module under Node against the native build
# (perft rows, bench signature, commands during a search); the packed npm package installed
# into an empty folder; then the web-dist folder under a sub-path in headless Chromium,
# without cross-origin isolation. Leaves screenshots in build/web/.
test-web: web-dist npm
	cd web && node --test test/*.test.mjs
	@echo "screenshots: $(abspath build/web)"

# CPack from the build folder $(1) into $(PACKAGE_DIR), after removing that build's older
# packages (the file patterns $(2)); CPack's staging tree is removed.
define CPACK_FROM
	mkdir -p $(PACKAGE_DIR)
	rm -f $(addprefix $(PACKAGE_DIR)/,$(2))
	cd $(1) && cpack -B $(abspath $(PACKAGE_DIR))
	rm -rf $(PACKAGE_DIR)/_CPack_Packages
endef

# Every package into $(PACKAGE_DIR): the Debian package and a .tar.gz of the same files
# (package-linux), the same two for arm64 (package-arm64) and armhf (package-armhf), and the
# Windows zip (package-windows).
package: package-linux package-windows package-arm64 package-armhf

ifeq ($(PGO),ON)
PACKAGE_BUILD = $(PGO_DIR)
package-linux: pgo
else
PACKAGE_BUILD = $(BUILD_DIR)
package-linux: all
endif
package-linux:
	$(call CPACK_FROM,$(PACKAGE_BUILD),pellix_*_amd64.deb pellix-*-linux-x86_64.tar.gz)

package-windows: windows
	$(call CPACK_FROM,$(WINDOWS_DIR),pellix-*-windows-*.zip)

package-arm64: arm64
	$(call CPACK_FROM,$(ARM64_DIR),pellix_*_arm64.deb pellix-*-linux-arm64.tar.gz)

# The 32-bit ARM Linux programs (armhf: the 32-bit Raspberry Pi OS on a Pi 2 or later),
# cross-compiled into $(ARMHF_DIR) with the book made by the build machine, as for arm64. Its
# tests are the build machine's, so the cross build makes none.
ARMHF_DIR    ?= build/armhf
QEMU_ARMHF   ?= qemu-arm -L /usr/arm-linux-gnueabihf
.PHONY: armhf test-armhf package-armhf test-games soak
armhf: all
	$(CONFIGURE) -S . -B $(ARMHF_DIR) -DCMAKE_BUILD_TYPE=Release -DPELLIX_TESTS=OFF \
	    -DCMAKE_TOOLCHAIN_FILE=cmake/arm-linux-gnueabihf.cmake \
	    -DPELLIX_BOOK_TOOL=$(abspath $(BUILD_DIR))/pellix-book
	cmake --build $(ARMHF_DIR) -j $(JOBS)

# The armhf engine under qemu-arm: the command-line modes and the UCI sessions of the program
# tests, and the bench's node count against the native one.
test-armhf: armhf
	PELLIX_TEST_PROGRAMS=$(abspath $(ARMHF_DIR)) PELLIX_TEST_RUNNER="$(QEMU_ARMHF)" \
	    $(BUILD_DIR)/pellix_process_tests --gtest_brief=1 --gtest_filter='CommandLine.*:UciSession.*'
	$(call SAME_SIGNATURE,$(QEMU_ARMHF) $(ARMHF_DIR)/pellix-bench)

package-armhf: armhf
	$(call CPACK_FROM,$(ARMHF_DIR),pellix_*_armhf.deb pellix-*-linux-armhf.tar.gz)

# Games through programs from outside the project (tests/games/referee.mjs): xboard under
# Xvfb against Debian's engines and through polyglot, and UCI games refereed over the npm
# node-uci client at every time control, the native engine against itself and stockfish,
# plus a few with the sanitizer build, the Windows build under Wine (through the relay) and
# the armhf build under qemu. The builds are those of `make test`, `make test-windows` and
# `make armhf`, brought up to date here. PGNs and summary.txt land in $(GAMES_DIR); any fault
# of Pellix fails. `make soak GAMES=500` plays the same mix until that many games, appending
# to soak.pgn and soak-summary.txt.
GAMES_DIR    ?= build/games
GAMES_JOBS   ?= 2
GAMES        ?= 500
GAME_BUILDS   = --pellix $(BUILD_DIR) --asan $(SANITIZE_DIR) --windows $(WINDOWS_DIR) --armhf $(ARMHF_DIR)
test-games: tests/games/node_modules game-builds
	node tests/games/referee.mjs --out $(GAMES_DIR) --jobs $(GAMES_JOBS) $(GAME_BUILDS)

soak: tests/games/node_modules game-builds
	node tests/games/referee.mjs --out $(GAMES_DIR) --jobs $(GAMES_JOBS) $(GAME_BUILDS) --soak $(GAMES)

.PHONY: game-builds
game-builds: windows armhf
	$(CONFIGURE) -S . -B $(SANITIZE_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DPELLIX_SANITIZE=ON
	cmake --build $(SANITIZE_DIR) -j $(JOBS) --target pellix

tests/games/node_modules: tests/games/package.json tests/games/package-lock.json
	cd tests/games && npm ci --no-audit --no-fund
	touch $@

# Unpacks the .deb and checks the installed tree: the engine answers both protocols, plays
# from the packaged book, and the manual pages and xboard entry are where they belong.
test-package:
	packaging/test-package.sh $(PACKAGE_DIR)

clean:
	rm -rf build
