# Language level, warnings, sanitizers and ccache for every target, and the
# function that makes one floor of the house.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTORCC ON)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # Without the sloppiness it would cache nothing that uses a precompiled header.
    set(CMAKE_CXX_COMPILER_LAUNCHER env "CCACHE_SLOPPINESS=pch_defines,time_macros"
        "${CCACHE_PROGRAM}")
endif()

# Some seventy programs are linked for the tests: this takes a tenth of the time.
if(BUILD_TESTING)
    include(CheckLinkerFlag)
    check_linker_flag(CXX -fuse-ld=mold TAVENOR_HAS_MOLD)
    if(TAVENOR_HAS_MOLD)
        add_link_options(-fuse-ld=mold)
    endif()
endif()

add_compile_options(-Wall -Wextra -Wpedantic)
if(TAVENOR_WERROR)
    add_compile_options(-Werror)
endif()
if(TAVENOR_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
add_compile_definitions(QT_DEPRECATED_WARNINGS QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING)

# tavenor_library(NAME LIBRARIES...): a static library of the folder's own sources.
# Every .cpp of the folder but main.cpp belongs to it; it sees only LIBRARIES.
function(tavenor_library name)
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h *.ui)
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}")
    target_link_libraries(${name} PUBLIC ${ARGN})
endfunction()

# tavenor_precompile(NAME HEADERS...): parses the toolkit's headers once for the whole target.
# Only where many files are built for tests: the release build proves that every file includes
# what it uses.
function(tavenor_precompile name)
    if(TAVENOR_PCH)
        target_precompile_headers(${name} PRIVATE ${ARGN})
        target_compile_options(${name} PRIVATE -fpch-preprocess)
    endif()
endfunction()

# tavenor_precompile_as(NAME OTHER): the same with the headers that OTHER has parsed.
function(tavenor_precompile_as name other)
    if(TAVENOR_PCH)
        target_precompile_headers(${name} REUSE_FROM ${other})
        target_compile_options(${name} PRIVATE -fpch-preprocess)
    endif()
endfunction()
