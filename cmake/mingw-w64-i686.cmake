# 32-bit Windows, the original target: compiled only, since wine64 runs the 64-bit build.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(QT_HALVO_MINGW_TRIPLET i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-common.cmake)
