# 64-bit Windows, with Debian's g++-mingw-w64-x86-64; what it builds runs here through Wine. The language's
# run-time library is linked in, so that QSV_3DPROCESS.dll and qsvtin.exe need no other file.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)   # GoogleTest asks for one
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
foreach(kind EXE SHARED)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static")
endforeach()
set(CMAKE_CROSSCOMPILING_EMULATOR wine)
include(${CMAKE_CURRENT_LIST_DIR}/other_machine.cmake)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
