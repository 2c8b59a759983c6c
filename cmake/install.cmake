# What `cmake --install` puts under the prefix: the module with its versioned soname, the
# public headers, a CMake package and a pkg-config file for callers, and the two tools.
include(CMakePackageConfigHelpers)

set(CORVELLE_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Corvelle)

target_include_directories(corvelle INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
install(TARGETS corvelle EXPORT CorvelleTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS corvelle_tool corvelle-host RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/corvelle ${PROJECT_BINARY_DIR}/include/corvelle
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")

install(EXPORT CorvelleTargets NAMESPACE Corvelle:: DESTINATION ${CORVELLE_CMAKE_DIR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/CorvelleConfig.cmake.in
  ${PROJECT_BINARY_DIR}/CorvelleConfig.cmake INSTALL_DESTINATION ${CORVELLE_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/CorvelleConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/CorvelleConfig.cmake
              ${PROJECT_BINARY_DIR}/CorvelleConfigVersion.cmake
        DESTINATION ${CORVELLE_CMAKE_DIR})

# The prefix is found from the file's own place, so a moved or copied tree keeps working.
file(RELATIVE_PATH CORVELLE_PC_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" CORVELLE_PC_TO_PREFIX "${CORVELLE_PC_TO_PREFIX}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/corvelle.pc.in ${PROJECT_BINARY_DIR}/corvelle.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/corvelle.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
