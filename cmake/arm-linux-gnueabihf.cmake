# Cross-compiling for 32-bit ARM Linux (the 32-bit Raspberry Pi OS on a Pi 2, 3, 4 or 5, and
# Debian's armhf) with Debian's g++-arm-linux-gnueabihf, which targets ARMv7 with hardware
# floating point: the Pi 1 and the Zero (ARMv6) cannot run these programs. The programs link
# the target's C and C++ libraries dynamically, as Debian's own armhf packages do. On the
# build machine they run under qemu-arm, which finds the target's loader and libraries under
# the sysroot.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_FIND_ROOT_PATH /usr/arm-linux-gnueabihf)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L /usr/arm-linux-gnueabihf)
