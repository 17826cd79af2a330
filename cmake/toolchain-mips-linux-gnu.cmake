# 32-bit big-endian MIPS, by Debian's cross compiler.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR mips)
set(triplet mips-linux-gnu)
set(emulator qemu-mips-static)
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-debian.cmake)
