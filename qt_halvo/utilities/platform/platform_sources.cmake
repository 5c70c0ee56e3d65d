# The operating-system units of this platform, and the Qt-free code shared by all
# platforms; used by the library and by the units' own tests.
set(QT_HALVO_PLATFORM_SOURCES ${CMAKE_CURRENT_LIST_DIR}/display_info.cpp)
if(WIN32)
    list(APPEND QT_HALVO_PLATFORM_SOURCES
        ${CMAKE_CURRENT_LIST_DIR}/display_info_win.cpp
        ${CMAKE_CURRENT_LIST_DIR}/frameless_window_win.cpp
        ${CMAKE_CURRENT_LIST_DIR}/named_event_win.cpp
        ${CMAKE_CURRENT_LIST_DIR}/shared_library_win.cpp
        ${CMAKE_CURRENT_LIST_DIR}/window_activation_win.cpp)
    set(QT_HALVO_PLATFORM_LIBRARIES user32 gdi32)
else()
    find_package(X11 REQUIRED)
    list(APPEND QT_HALVO_PLATFORM_SOURCES
        ${CMAKE_CURRENT_LIST_DIR}/display_info_linux.cpp
        ${CMAKE_CURRENT_LIST_DIR}/frameless_window_linux.cpp
        ${CMAKE_CURRENT_LIST_DIR}/named_event_linux.cpp
        ${CMAKE_CURRENT_LIST_DIR}/shared_library_linux.cpp
        ${CMAKE_CURRENT_LIST_DIR}/window_activation_linux.cpp)
    set(QT_HALVO_PLATFORM_LIBRARIES X11::X11 X11::Xrandr ${CMAKE_DL_LIBS} rt Threads::Threads)
endif()
