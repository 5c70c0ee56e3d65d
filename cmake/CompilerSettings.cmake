# Warnings, sanitizers and compiler cache for every target of the project.

if(QT_HALVO_USE_CCACHE)
    find_program(QT_HALVO_CCACHE ccache)
    if(QT_HALVO_CCACHE)
        set(CMAKE_CXX_COMPILER_LAUNCHER ${QT_HALVO_CCACHE})
    endif()
endif()

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    add_compile_options(-Wall -Wextra)
    if(QT_HALVO_WARNINGS_AS_ERRORS)
        add_compile_options(-Werror)
    endif()
    # Log tags name a source by its path within the tree, so __FILE__ must not carry
    # the checkout's location.
    add_compile_options(-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)
endif()

if(QT_HALVO_SANITIZE)
    if("thread" IN_LIST QT_HALVO_SANITIZE AND "address" IN_LIST QT_HALVO_SANITIZE)
        message(FATAL_ERROR "ThreadSanitizer cannot be combined with AddressSanitizer")
    endif()
    list(JOIN QT_HALVO_SANITIZE "," _qt_halvo_sanitizers)
    # Also what a program linking the instrumented library needs (the package test's hosts).
    set(QT_HALVO_SANITIZE_FLAGS -fsanitize=${_qt_halvo_sanitizers})
    add_compile_options(${QT_HALVO_SANITIZE_FLAGS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(${QT_HALVO_SANITIZE_FLAGS})
endif()

if(QT_HALVO_BUILD_FUZZERS)
    # Coverage for libFuzzer in everything the fuzz targets reach.
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
