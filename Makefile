# Thin wrapper around CMake for the README's commands.
BUILD_DIR    ?= build/release
SANITIZE_DIR ?= build/sanitize
JOBS         ?= $(shell nproc 2>/dev/null || echo 2)
PREFIX       ?= /usr/local

.PHONY: all run test test-release test-sanitize bench install clean

all:
	cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=Release
	cmake --build $(BUILD_DIR) -j $(JOBS)

run: all
	$(BUILD_DIR)/pellix

# Every test in the release build, then the fast ones again under AddressSanitizer and
# UndefinedBehaviorSanitizer.
test: test-release test-sanitize

test-release: all
	cd $(BUILD_DIR) && ctest --output-on-failure -j $(JOBS)

test-sanitize:
	cmake -S . -B $(SANITIZE_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DPELLIX_SANITIZE=ON
	cmake --build $(SANITIZE_DIR) -j $(JOBS)
	cd $(SANITIZE_DIR) && ctest --output-on-failure -j $(JOBS) -L fast

bench: all
	$(BUILD_DIR)/pellix-bench perft

# Installs under $(PREFIX) (bin, share/man/man6, share/games/plugins/xboard); DESTDIR, when
# given, is put in front of every path, as packaging tools expect.
install: all
	DESTDIR="$(DESTDIR)" cmake --install $(BUILD_DIR) --prefix "$(PREFIX)"

clean:
	rm -rf build
