# 32-bit ARM under Linux, with Debian's g++-arm-linux-gnueabihf; what it builds runs here through qemu-user.
# With fused multiply-add to hand, so that a result which differs from other processors' would show.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)   # GoogleTest asks for one
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_CXX_FLAGS_INIT "-march=armv7-a+vfpv4 -mfpu=vfpv4 -Wno-psabi")
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L /usr/arm-linux-gnueabihf)
include(${CMAKE_CURRENT_LIST_DIR}/other_machine.cmake)
set(CMAKE_FIND_ROOT_PATH /usr/arm-linux-gnueabihf)
