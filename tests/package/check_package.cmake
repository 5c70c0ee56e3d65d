# Installs the build into a fresh prefix and builds two tiny hosts against it, one
# with find_package(qt_halvo) and one with pkg-config, then runs both.
#   cmake -DBUILD_DIR=... -DWORK_DIR=... -DCONSUMER_DIR=... -DGENERATOR=... -DCXX_COMPILER=...
#         -DPROBE=<log_probe> [-DSANITIZE_FLAGS=...] -P check_package.cmake

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        string(REPLACE ";" " " command "${ARGN}")
        message(FATAL_ERROR "Failed (${result}): ${command}\n${output}")
    endif()
    set(last_output "${output}" PARENT_SCOPE)
endfunction()

set(prefix ${WORK_DIR}/prefix)
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR})

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
foreach(private qt_halvo/qt_halvo_global_p.h qt_halvo/utilities/logging_p.h)
    if(EXISTS ${prefix}/include/${private})
        message(FATAL_ERROR "Private header installed: ${private}")
    endif()
endforeach()

# The host's environment: only the prefix, no trace of the build tree.
set(ENV{QT_QPA_PLATFORM} offscreen)
unset(ENV{QT_HALVO_LOG_LIBRARY})
unset(ENV{QT_HALVO_LOG_FILE})

run(${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${WORK_DIR}/cmake-host -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
    "-DCMAKE_CXX_FLAGS=${SANITIZE_FLAGS}" "-DCMAKE_EXE_LINKER_FLAGS=${SANITIZE_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/cmake-host)
run(${WORK_DIR}/cmake-host/consumer)
message(STATUS "find_package host: ${last_output}")

file(GLOB_RECURSE pc_files ${prefix}/*/qt_halvo.pc)
list(GET pc_files 0 pc_file)
get_filename_component(pc_dir ${pc_file} DIRECTORY)
set(ENV{PKG_CONFIG_PATH} ${pc_dir})
run(pkg-config --cflags --libs qt_halvo)
string(STRIP "${last_output}" flags)
separate_arguments(flags UNIX_COMMAND "${flags}")
get_filename_component(lib_dir ${pc_dir} DIRECTORY)
run(${CXX_COMPILER} -std=c++17 -fPIC ${SANITIZE_FLAGS} ${CONSUMER_DIR}/main.cpp -o ${WORK_DIR}/pkg-config-host ${flags} -Wl,-rpath,${lib_dir})
run(${WORK_DIR}/pkg-config-host)
message(STATUS "pkg-config host: ${last_output}")

# An installed qt_halvo finds the installed default logging library beside itself.
set(ENV{LD_LIBRARY_PATH} ${lib_dir})
run(${PROBE} 1 1)
if(NOT last_output MATCHES "INFO \\[qt_halvo.utilities.logging:[0-9]+ [^]]*\\] Logging through ${lib_dir}/libqt_halvo_logging")
    message(FATAL_ERROR "The installed library did not log through the installed logging library:\n${last_output}")
endif()
message(STATUS "installed logging: ${last_output}")
