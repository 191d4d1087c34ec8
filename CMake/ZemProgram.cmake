# The programs around the library. They are linked with the static archives, and are never installed.

# zem_add_program(NAME SOURCES file... [DEPENDS target...]): an executable over CollaborationSession.
function(zem_add_program NAME)
    cmake_parse_arguments(PROGRAM "" "" "SOURCES;DEPENDS" ${ARGN})
    add_executable(${NAME} ${PROGRAM_SOURCES})
    target_link_libraries(${NAME} PRIVATE CollaborationSession ${PROGRAM_DEPENDS})
endfunction()

# zem_add_programs([PREFIX text] [DEPENDS target...]): one program for each source of the current folder.
function(zem_add_programs)
    cmake_parse_arguments(PROGRAMS "" "PREFIX" "DEPENDS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS *.cpp)
    foreach(source IN LISTS sources)
        cmake_path(GET source STEM stem)
        zem_add_program(${PROGRAMS_PREFIX}${stem} SOURCES ${source} DEPENDS ${PROGRAMS_DEPENDS})
    endforeach()
endfunction()
