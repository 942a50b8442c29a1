# Cross-compiling for 64-bit ARM Linux (Raspberry Pi 3/4/5 under a 64-bit system, ARM servers
# and laptops) with Debian's g++-aarch64-linux-gnu. The programs link the target's C and C++
# libraries dynamically, as Debian's own arm64 packages do. On the build machine they run
# under qemu-aarch64, which finds the target's loader and libraries under the sysroot.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_FIND_ROOT_PATH /usr/aarch64-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L /usr/aarch64-linux-gnu)
