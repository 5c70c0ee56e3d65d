# Installation: the two libraries, the public headers, a CMake package giving
# qt_halvo::qt_halvo, and a pkg-config file.

include(CMakePackageConfigHelpers)

set(QT_HALVO_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/qt_halvo)

install(TARGETS qt_halvo qt_halvo_logging
    EXPORT qt_halvoTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})

install(DIRECTORY ${PROJECT_SOURCE_DIR}/qt_halvo/
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qt_halvo
    FILES_MATCHING PATTERN "*.h"
    PATTERN "*_p.h" EXCLUDE
    PATTERN "platform" EXCLUDE
    PATTERN "resources" EXCLUDE)
install(FILES
    ${PROJECT_BINARY_DIR}/include/qt_halvo/qt_halvo_version.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qt_halvo)
install(FILES ${PROJECT_SOURCE_DIR}/logging/qt_halvo_logging.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(EXPORT qt_halvoTargets NAMESPACE qt_halvo:: DESTINATION ${QT_HALVO_CMAKE_DIR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/qt_halvoConfig.cmake.in
    ${PROJECT_BINARY_DIR}/qt_halvoConfig.cmake
    INSTALL_DESTINATION ${QT_HALVO_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/qt_halvoConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/qt_halvoConfig.cmake
    ${PROJECT_BINARY_DIR}/qt_halvoConfigVersion.cmake
    DESTINATION ${QT_HALVO_CMAKE_DIR})

# Relocatable: the prefix is found from where the .pc file lies.
file(RELATIVE_PATH QT_HALVO_PC_TO_PREFIX /root/${CMAKE_INSTALL_LIBDIR}/pkgconfig /root)
configure_file(${CMAKE_CURRENT_LIST_DIR}/qt_halvo.pc.in ${PROJECT_BINARY_DIR}/qt_halvo.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/qt_halvo.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
