# 64-bit Windows: the build whose tests run under wine64.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(QT_HALVO_MINGW_TRIPLET x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-common.cmake)
