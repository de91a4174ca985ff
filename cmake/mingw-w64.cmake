# Toolchain file: builds for 64-bit Windows on Debian with mingw-w64 and POSIX threads.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_VERSION 10)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(kelvara_target x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${kelvara_target}-gcc-posix)
set(CMAKE_CXX_COMPILER ${kelvara_target}-g++-posix)
set(CMAKE_RC_COMPILER ${kelvara_target}-windres)
# The compiler's libraries are linked in, so that a program runs without DLLs of its own.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

# Libraries and headers come from the target and the folders in CMAKE_FIND_ROOT_PATH, never from the
# machine that builds; programs come only from that machine.
list(APPEND CMAKE_FIND_ROOT_PATH /usr/${kelvara_target})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

# Qt's code generators run on the machine that builds. They are those of its own Qt.
execute_process(COMMAND gcc -print-multiarch
  OUTPUT_VARIABLE kelvara_host OUTPUT_STRIP_TRAILING_WHITESPACE)
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/${kelvara_host}/cmake)

find_program(kelvara_wine NAMES wine64 PATHS /usr/lib/wine NO_CMAKE_FIND_ROOT_PATH)
if(kelvara_wine)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${kelvara_wine})
endif()
