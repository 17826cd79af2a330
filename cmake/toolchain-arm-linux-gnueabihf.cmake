# 32-bit little-endian ARM, by Debian's cross compiler.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(triplet arm-linux-gnueabihf)
set(emulator qemu-arm-static)
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-debian.cmake)
