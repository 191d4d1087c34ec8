# What every target of the tree is compiled with. Third-party headers come from imported targets, which are SYSTEM,
# so that the warnings are about our own code alone.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Debug CACHE STRING "Debug or Release" FORCE)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # With optimisation, g++ 12 takes `"text" + std::string` for an overlapping copy, and the move of a small_vector of
    # fixed room for a read past its end.
    add_compile_options(-Wno-restrict -Wno-stringop-overread)
endif()

# Assertions print __FILE__: it shall name a file of this tree, whatever machine and folder it was built in. The second
# form is what the compiler sees when the compiler cache has made the paths relative.
cmake_path(RELATIVE_PATH CMAKE_SOURCE_DIR BASE_DIRECTORY "${CMAKE_BINARY_DIR}" OUTPUT_VARIABLE relativeSourceDir)
add_compile_options("-ffile-prefix-map=${CMAKE_SOURCE_DIR}/=" "-ffile-prefix-map=${relativeSourceDir}/=")

if(DOMCOLLABORATION_SANITIZERS)
    add_compile_options(-fsanitize=${DOMCOLLABORATION_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${DOMCOLLABORATION_SANITIZERS})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        add_compile_options("-fsanitize-ignorelist=${CMAKE_CURRENT_LIST_DIR}/SanitizerIgnore.txt")
    endif()
endif()
if(DOMCOLLABORATION_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(DOMCOLLABORATION_COVERAGE)
    add_compile_options(-fprofile-instr-generate -fcoverage-mapping)
    add_link_options(-fprofile-instr-generate)
endif()

# The cache is asked with relative paths, and whatever the build folder is, so that all builds of the tree share it.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND (NOT CMAKE_CXX_COMPILER_LAUNCHER OR CMAKE_CXX_COMPILER_LAUNCHER STREQUAL "ccache"))
    # The ignore list shapes sanitized objects, and the cache doesn't know that by itself. The sloppiness is what it
    # needs to handle precompiled headers.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
        CCACHE_EXTRAFILES=${CMAKE_CURRENT_LIST_DIR}/SanitizerIgnore.txt
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime "${CCACHE_PROGRAM}")
endif()

# Test programs link in a fraction of the time with mold.
find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM AND NOT CMAKE_BUILD_TYPE STREQUAL "Release")
    add_link_options(-fuse-ld=mold)
endif()

find_package(Boost 1.74 REQUIRED COMPONENTS regex)
find_package(cereal 1.3 REQUIRED)
find_package(RapidJSON REQUIRED)
find_package(GTest REQUIRED)
find_package(rapidcheck REQUIRED)
find_package(ZLIB REQUIRED)
