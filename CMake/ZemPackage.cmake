# What is shipped: libDOMCollaboration.so, libCollaborationSession.a on top of it, the public headers of all modules,
# and the files by which CMake and pkg-config find them.

include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(productModules Utility NodeAddressing CollaborationUtils CollaborationEngine DOM DOMCollaboration)
set(headerDir "${CMAKE_INSTALL_INCLUDEDIR}/DOMCollaboration")
set(packageDir "${CMAKE_INSTALL_LIBDIR}/cmake/DOMCollaboration")

# One shared library of all objects of the product's modules. The modules hide what isn't ZEM_EXPORT; the version script
# hides the instantiations of other libraries' templates.
add_library(DOMCollaborationShared SHARED)
foreach(module IN LISTS productModules)
    get_target_property(type ${module} TYPE)
    if(type STREQUAL "STATIC_LIBRARY")
        target_sources(DOMCollaborationShared PRIVATE $<TARGET_OBJECTS:${module}>)
    endif()
endforeach()
set(versionScript "${CMAKE_CURRENT_LIST_DIR}/DOMCollaboration.map")
target_link_options(DOMCollaborationShared PRIVATE -Wl,--no-undefined "-Wl,--version-script=${versionScript}")
target_link_libraries(DOMCollaborationShared PRIVATE Boost::regex INTERFACE Boost::headers cereal::cereal)
target_include_directories(DOMCollaborationShared INTERFACE $<INSTALL_INTERFACE:${headerDir}>)
target_compile_features(DOMCollaborationShared INTERFACE cxx_std_20)
# Below 1.0 each minor version may break its users.
set_target_properties(DOMCollaborationShared PROPERTIES
                      OUTPUT_NAME DOMCollaboration
                      EXPORT_NAME DOMCollaboration
                      LINKER_LANGUAGE CXX
                      LINK_DEPENDS "${versionScript}"
                      VERSION ${PROJECT_VERSION}
                      SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})

# In this tree CollaborationSession stands on the archives; where it is installed, on the shared library.
target_link_libraries(CollaborationSession INTERFACE $<INSTALL_INTERFACE:DOMCollaborationShared>)

install(TARGETS DOMCollaborationShared CollaborationSession EXPORT DOMCollaboration)
foreach(module IN LISTS productModules ITEMS CollaborationSession)
    install(DIRECTORY "${CMAKE_SOURCE_DIR}/${module}/Public/" DESTINATION "${headerDir}"
            FILES_MATCHING PATTERN "*.h")
endforeach()

install(EXPORT DOMCollaboration NAMESPACE DOMCollaboration:: FILE DOMCollaborationTargets.cmake
        DESTINATION "${packageDir}")
configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/DOMCollaborationConfig.cmake.in"
                              "${CMAKE_BINARY_DIR}/DOMCollaborationConfig.cmake" INSTALL_DESTINATION "${packageDir}")
write_basic_package_version_file("${CMAKE_BINARY_DIR}/DOMCollaborationConfigVersion.cmake"
                                 COMPATIBILITY SameMinorVersion)
install(FILES "${CMAKE_BINARY_DIR}/DOMCollaborationConfig.cmake"
              "${CMAKE_BINARY_DIR}/DOMCollaborationConfigVersion.cmake"
        DESTINATION "${packageDir}")

# The prefix is found from the place of the .pc file, so that `cmake --install --prefix` may choose any.
set(pkgConfigDir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH pkgConfigToPrefix "/${pkgConfigDir}" "/")
foreach(name DOMCollaboration CollaborationSession)
    configure_file("${CMAKE_CURRENT_LIST_DIR}/${name}.pc.in" "${CMAKE_BINARY_DIR}/${name}.pc" @ONLY)
    install(FILES "${CMAKE_BINARY_DIR}/${name}.pc" DESTINATION "${pkgConfigDir}")
endforeach()

add_test(NAME ExportedSymbols
         COMMAND "${CMAKE_SOURCE_DIR}/Scripts/check-exports" $<TARGET_FILE:DOMCollaborationShared>)
set_tests_properties(ExportedSymbols PROPERTIES LABELS package)
