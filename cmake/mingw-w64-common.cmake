# Cross-compiles the Qt-free Win32 units with Debian's mingw-w64 for the processor the
# including toolchain file names in QT_HALVO_MINGW_TRIPLET; their tests run under wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_CXX_COMPILER ${QT_HALVO_MINGW_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${QT_HALVO_MINGW_TRIPLET}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${QT_HALVO_MINGW_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# Static runtime: the executables then run under wine without copying mingw's DLLs around.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tests/support/with_wine.sh)
