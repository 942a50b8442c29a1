#!/bin/sh
# Checks the Linux packages made by `make package` as a user would meet them: the .deb is
# unpacked with dpkg-deb (no root needed), and the tree it installs must hold a working
# engine, its book, manual page and xboard entry; the .tar.gz must hold the same files. The
# arm64 .deb must hold an aarch64 engine that answers under qemu, and lintian (when
# installed) must find nothing to report in any .deb; the armhf .deb likewise, with an ARMv7
# engine.
# Usage: test-package.sh [PACKAGE_DIR]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
packages=$(cd "${1:-build/packages}" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

fail() {
    echo "FAIL: $*" >&2
    failures=$((failures + 1))
}

# The one file matching a pattern in the package directory.
one() {
    set -- "$packages"/$1
    [ $# -eq 1 ] && [ -f "$1" ] || { echo "FAIL: no single $(basename "$1") in $packages" >&2; exit 1; }
    echo "$1"
}
deb=$(one 'pellix_*_amd64.deb')
tgz=$(one 'pellix-*-linux-x86_64.tar.gz')
arm64_deb=$(one 'pellix_*_arm64.deb')
arm64_tgz=$(one 'pellix-*-linux-arm64.tar.gz')
armhf_deb=$(one 'pellix_*_armhf.deb')
armhf_tgz=$(one 'pellix-*-linux-armhf.tar.gz')
echo "checking $(basename "$deb") and $(basename "$tgz")"

field() { dpkg-deb -f "$deb" "$1"; }
version=$(field Version)
[ "$(field Package)" = pellix ] || fail "package name is '$(field Package)'"
[ "$(field Section)" = games ] || fail "section is '$(field Section)'"
case "$(field Depends)" in
*libc6*) ;;
*) fail "Depends does not name the C library: '$(field Depends)'" ;;
esac

root=$work/root
dpkg-deb -x "$deb" "$root"
bin=$root/usr/games
share=$root/usr/share
for tool in pellix pellix-book pellix-bench; do
    [ -x "$bin/$tool" ] || fail "usr/games/$tool missing or not executable"
done
[ -s "$share/games/pellix/pellixopenbook.bin" ] || fail "opening book missing"
[ -s "$share/doc/pellix/copyright" ] || fail "copyright file missing"
gzip -dc "$share/man/man6/pellix.6.gz" 2>/dev/null | grep -q '^\.TH PELLIX 6' ||
    fail "manual page share/man/man6/pellix.6.gz missing or damaged"
# xboard runs the engine-list entry's second line as a command, found on the PATH.
eng=$share/games/plugins/xboard/pellix.eng
if [ -f "$eng" ]; then
    command=$(sed -n 2p "$eng")
    [ -x "$bin/$command" ] || fail "pellix.eng starts '$command', which the package lacks"
else
    fail "xboard engine-list entry missing"
fi

# Talks to the installed engine from an empty directory (no pellix.ini: book off).
session() {
    printf "$1" | (cd "$2" && timeout 30 "$bin/pellix") >"$work/out" 2>&1 && status=0 || status=$?
    [ "$status" -eq 1 ] || fail "engine exit status $status after quit, expected 1"
}
mkdir "$work/plain"
session 'uci\nisready\nquit\n' "$work/plain"
grep -qx "id name Pellix $version" "$work/out" || fail "engine does not call itself Pellix $version"
grep -qx uciok "$work/out" || fail "no uciok in answer to uci"
grep -qx readyok "$work/out" || fail "no readyok in answer to isready"
session 'xboard\nprotover 2\nquit\n' "$work/plain"
grep -q '^feature .*done=1' "$work/out" || fail "no feature list ending the protover handshake"

# The packaged book with the sample Windows settings (CR LF lines, Book=1): the first move
# comes from the book, so no search report precedes it.
if [ -s "$share/games/pellix/pellixopenbook.bin" ]; then
    mkdir "$work/book"
    cp "$here/windows/pellix.ini" "$share/games/pellix/pellixopenbook.bin" "$work/book/"
    session 'uci\nposition startpos\ngo depth 4\nisready\nquit\n' "$work/book"
    grep -q '^bestmove ' "$work/out" || fail "no bestmove from the book session"
    ! grep -q '^info ' "$work/out" || fail "the engine searched instead of playing from the book"
fi

# The tarball: one top directory holding the same files the .deb puts under /usr, with the
# programs in bin/ rather than Debian's games/.
tar -tzf "$tgz" | grep -v '/$' | sed 's|^[^/]*/||' | sort >"$work/tgz-files"
dpkg-deb -c "$deb" | awk '$1 !~ /^d/ { print $NF }' | sed 's|^\./usr/||; s|^games/|bin/|' |
    sort >"$work/deb-files"
cmp -s "$work/tgz-files" "$work/deb-files" ||
    fail "the .tar.gz and the .deb hold different files: $(diff "$work/deb-files" "$work/tgz-files" | grep '^[<>]' | tr '\n' ' ')"

# The arm64 package: the same files as the amd64 one, and an engine built for aarch64 that
# answers the UCI handshake when qemu runs it.
arm64=$work/arm64
dpkg-deb -x "$arm64_deb" "$arm64"
dpkg-deb -c "$arm64_deb" | awk '$1 !~ /^d/ { print $NF }' | sed 's|^\./usr/||; s|^games/|bin/|' |
    sort >"$work/arm64-files"
cmp -s "$work/arm64-files" "$work/deb-files" || fail "the arm64 and amd64 .debs hold different files"
tar -tzf "$arm64_tgz" | grep -v '/$' | sed 's|^[^/]*/||' | sort | cmp -s - "$work/deb-files" ||
    fail "the arm64 .tar.gz and the .deb hold different files"
file -b "$arm64/usr/games/pellix" | grep -q 'ARM aarch64' || fail "the arm64 engine is not an aarch64 program"
printf 'uci\nquit\n' | (cd "$work/plain" && timeout 60 ${QEMU_ARM64:-qemu-aarch64 -L /usr/aarch64-linux-gnu} \
    "$arm64/usr/games/pellix") >"$work/out" 2>&1 && status=0 || status=$?
grep -qx uciok "$work/out" && [ "$status" -eq 1 ] ||
    fail "the arm64 engine under qemu gave no uciok (exit status $status)"

# The armhf package likewise, with an ARMv7 engine under qemu-arm, and a description that
# says which Raspberry Pi it is for.
armhf=$work/armhf
dpkg-deb -x "$armhf_deb" "$armhf"
dpkg-deb -c "$armhf_deb" | awk '$1 !~ /^d/ { print $NF }' | sed 's|^\./usr/||; s|^games/|bin/|' |
    sort | cmp -s - "$work/deb-files" || fail "the armhf and amd64 .debs hold different files"
tar -tzf "$armhf_tgz" | grep -v '/$' | sed 's|^[^/]*/||' | sort | cmp -s - "$work/deb-files" ||
    fail "the armhf .tar.gz and the .deb hold different files"
file -b "$armhf/usr/games/pellix" | grep -q 'ARM, EABI5' || fail "the armhf engine is not a 32-bit ARM program"
dpkg-deb -f "$armhf_deb" Description | grep -q 'ARMv7' || fail "the armhf description does not say ARMv7"
printf 'uci\nquit\n' | (cd "$work/plain" && timeout 60 ${QEMU_ARMHF:-qemu-arm -L /usr/arm-linux-gnueabihf} \
    "$armhf/usr/games/pellix") >"$work/out" 2>&1 && status=0 || status=$?
grep -qx uciok "$work/out" && [ "$status" -eq 1 ] ||
    fail "the armhf engine under qemu gave no uciok (exit status $status)"

if command -v lintian >/dev/null; then
    for package in "$deb" "$arm64_deb" "$armhf_deb"; do
        lintian --fail-on error,warning "$package" >"$work/lintian" 2>&1 ||
            fail "lintian on $(basename "$package"): $(cat "$work/lintian")"
    done
else
    echo "lintian not installed: the .debs are not checked against Debian's policy"
fi

if [ "$failures" -gt 0 ]; then
    echo "$failures package check(s) failed" >&2
    exit 1
fi
echo "package checks passed: $(wc -l <"$work/deb-files") files, engine Pellix $version"
