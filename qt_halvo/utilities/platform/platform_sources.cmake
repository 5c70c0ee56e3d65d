# The operating-system units of this platform; shared by the library and its tests.
if(WIN32)
    set(QT_HALVO_PLATFORM_SOURCES ${CMAKE_CURRENT_LIST_DIR}/shared_library_win.cpp)
else()
    set(QT_HALVO_PLATFORM_SOURCES ${CMAKE_CURRENT_LIST_DIR}/shared_library_linux.cpp)
endif()
