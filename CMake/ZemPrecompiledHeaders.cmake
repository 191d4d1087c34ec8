# Most of what a source makes the compiler read is other libraries' headers, and always the same ones. They are compiled
# once for each kind of target. Our own headers aren't among them, so that a change of one rebuilds its users alone.
#
# A source that relies on them instead of including what it uses is found by a build without them.

option(DOMCOLLABORATION_PRECOMPILED_HEADERS "Compile the headers of other libraries once for all sources" ON)

# zem_add_precompiled_headers(NAME HEADERS header... [DEPENDS target...] [OPTIONS option...])
# NAME stands for the compiled headers; nothing is linked with it.
function(zem_add_precompiled_headers NAME)
    cmake_parse_arguments(PRECOMPILED "" "" "HEADERS;DEPENDS;OPTIONS" ${ARGN})
    set(source "${CMAKE_BINARY_DIR}/PrecompiledHeaders/${NAME}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "")
    add_library(${NAME} OBJECT EXCLUDE_FROM_ALL "${source}")
    target_link_libraries(${NAME} PRIVATE ${PRECOMPILED_DEPENDS})
    target_compile_options(${NAME} PRIVATE ${PRECOMPILED_OPTIONS})
    list(TRANSFORM PRECOMPILED_HEADERS REPLACE "^(.+)$" "<\\1>")
    target_precompile_headers(${NAME} PRIVATE ${PRECOMPILED_HEADERS})
endfunction()

# zem_use_precompiled_headers(TARGET NAME)
function(zem_use_precompiled_headers TARGET NAME)
    if(DOMCOLLABORATION_PRECOMPILED_HEADERS)
        target_precompile_headers(${TARGET} REUSE_FROM ${NAME})
    endif()
endfunction()

set(productHeaders
    algorithm array deque functional map memory optional set sstream stdexcept string string_view tuple type_traits
    unordered_map utility variant vector
    boost/container/flat_map.hpp
    boost/container/small_vector.hpp
    boost/functional/hash.hpp
    boost/optional.hpp
    boost/smart_ptr/intrusive_ptr.hpp
    boost/smart_ptr/intrusive_ref_counter.hpp
    boost/variant.hpp)

if(DOMCOLLABORATION_PRECOMPILED_HEADERS)
    # The compiler cache may hand out what doesn't depend on the time of day, and what it can preprocess.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
    elseif(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        add_compile_options(-fpch-preprocess)
    endif()

    zem_add_precompiled_headers(ProductHeaders HEADERS ${productHeaders} DEPENDS Boost::headers)

    # Programs aren't compiled like archives: what is compiled for the ones is refused by the others.
    zem_add_precompiled_headers(TestHeaders HEADERS ${productHeaders} gtest/gtest.h
                                DEPENDS Boost::headers GTest::gtest
                                OPTIONS ${CMAKE_CXX_COMPILE_OPTIONS_PIE})
    set_target_properties(TestHeaders PROPERTIES POSITION_INDEPENDENT_CODE OFF)
endif()
