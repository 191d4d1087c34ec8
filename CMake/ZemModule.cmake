# How a module is built: its library, its tests, the check of its headers. Every module is built alike.

add_custom_target(AllTests)
add_custom_target(HeaderCheck)

# zem_add_module(NAME [DEPENDS target...] [PRIVATE_DEPENDS target...] [TEST_DEPENDS target...])
# A static library whose users see its Public folder and that of its DEPENDS, and nothing else. A module that has no
# source yet is its headers alone.
function(zem_add_module NAME)
    cmake_parse_arguments(MODULE "" "" "DEPENDS;PRIVATE_DEPENDS;TEST_DEPENDS" ${ARGN})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS Private/*.cpp)
    if(sources)
        set(scope PUBLIC)
        add_library(${NAME} STATIC ${sources})
        target_include_directories(${NAME} PRIVATE Private)
        target_link_libraries(${NAME} PRIVATE ${MODULE_PRIVATE_DEPENDS})
        zem_use_precompiled_headers(${NAME} ProductHeaders)
    else()
        set(scope INTERFACE)
        add_library(${NAME} INTERFACE)
    endif()
    target_include_directories(${NAME} ${scope} $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/Public>)
    foreach(dependency IN LISTS MODULE_DEPENDS)
        target_link_libraries(${NAME} ${scope} $<BUILD_INTERFACE:${dependency}>)
    endforeach()
    zem_add_header_check(${NAME})
    zem_add_module_tests(${NAME} DEPENDS ${MODULE_TEST_DEPENDS})
endfunction()

# zem_add_module_tests(NAME [DEPENDS target...])
# One executable and one ctest entry for a module's tests, which may look into its Private folder. Suites named `Slow*`,
# in files named *SlowTest.cpp, get an entry of their own with the label `slow`.
function(zem_add_module_tests NAME)
    cmake_parse_arguments(TESTS "" "" "DEPENDS" ${ARGN})
    zem_add_must_not_compile_tests(${NAME})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS Tests/*.cpp)
    list(FILTER sources EXCLUDE REGEX "/Tests/MustNotCompile/")
    if(NOT sources)
        return()
    endif()
    add_executable(${NAME}Tests ${sources})
    target_include_directories(${NAME}Tests PRIVATE Private Tests)
    target_link_libraries(${NAME}Tests PRIVATE ${NAME} TestMain ${TESTS_DEPENDS})
    zem_use_precompiled_headers(${NAME}Tests TestHeaders)
    add_dependencies(AllTests ${NAME}Tests)

    add_test(NAME ${NAME}Tests COMMAND ${NAME}Tests --gtest_brief=1 --gtest_filter=-Slow*)
    set_tests_properties(${NAME}Tests PROPERTIES LABELS fast TIMEOUT 900)
    list(FILTER sources INCLUDE REGEX "SlowTest\\.cpp$")
    if(sources)
        add_test(NAME ${NAME}SlowTests COMMAND ${NAME}Tests --gtest_brief=1 --gtest_filter=Slow*)
        set_tests_properties(${NAME}SlowTests PROPERTIES LABELS slow TIMEOUT 1800)
    endif()
endfunction()

# Each file in Tests/MustNotCompile is a ctest entry that sees what a user of the module sees.
function(zem_add_must_not_compile_tests NAME)
    file(GLOB sources CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}/Tests/MustNotCompile"
         Tests/MustNotCompile/*.cpp)
    foreach(source IN LISTS sources)
        cmake_path(GET source STEM stem)
        set(test MustNotCompile.${NAME}.${stem})
        add_test(NAME ${test}
                 COMMAND ${CMAKE_COMMAND} -D COMPILER=${CMAKE_CXX_COMPILER}
                         -D "INCLUDE_DIRS=$<TARGET_PROPERTY:${NAME},INTERFACE_INCLUDE_DIRECTORIES>"
                         -D SOURCE=${CMAKE_CURRENT_SOURCE_DIR}/Tests/MustNotCompile/${source}
                         -P ${CMAKE_SOURCE_DIR}/CMake/RunMustNotCompile.cmake)
        set_tests_properties(${test} PROPERTIES LABELS compile)
    endforeach()
endfunction()

# Compiles each public header by itself, included twice, with what a user of the module sees.
function(zem_add_header_check NAME)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}/Public" Public/*.h)
    if(NOT headers)
        return()
    endif()
    set(sources)
    foreach(header IN LISTS headers)
        set(source "${CMAKE_BINARY_DIR}/HeaderCheck/${NAME}/${header}.cpp")
        file(CONFIGURE OUTPUT "${source}" CONTENT "#include \"${header}\"\n#include \"${header}\"\n")
        list(APPEND sources "${source}")
    endforeach()
    add_library(${NAME}HeaderCheck OBJECT EXCLUDE_FROM_ALL ${sources})
    target_compile_options(${NAME}HeaderCheck PRIVATE -O0 -g0)
    target_link_libraries(${NAME}HeaderCheck PRIVATE ${NAME})
    add_dependencies(HeaderCheck ${NAME}HeaderCheck)
endfunction()
