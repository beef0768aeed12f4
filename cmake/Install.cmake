# What `cmake --install` puts in place beside the command: both libraries, the public header, and the files through
# which CMake and pkg-config find them.
include(CMakePackageConfigHelpers)

set(installed_targets morvane_static morvane_shared)
if(MORVANE_BUILD_TOOL)
  list(APPEND installed_targets morvane_tool)
endif()
if(MORVANE_WITH_GSTREAMER)
  list(APPEND installed_targets gstmorvane)
endif()
list(TRANSFORM installed_targets REPLACE "(.+)" "$<TARGET_FILE:\\1>" OUTPUT_VARIABLE installed_files)
install(CODE "set(build_directory \"${CMAKE_BINARY_DIR}\")
  set(installed_targets \"${installed_targets}\")
  set(installed_files \"${installed_files}\")")
install(SCRIPT cmake/BuildMissing.cmake)

set(MORVANE_HEADER_DIR ${CMAKE_INSTALL_INCLUDEDIR}/Processing/Morvane)
set(MORVANE_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Morvane)

install(TARGETS morvane_static morvane_shared EXPORT MorvaneTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${MORVANE_HEADER_DIR})
install(FILES Processing/Morvane/Processing.Morvane.h Processing/Morvane/morvane.h Processing/Morvane/morvane.hpp
        DESTINATION ${MORVANE_HEADER_DIR})

install(EXPORT MorvaneTargets NAMESPACE Morvane:: DESTINATION ${MORVANE_PACKAGE_DIR})
configure_package_config_file(cmake/MorvaneConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/MorvaneConfig.cmake
                              INSTALL_DESTINATION ${MORVANE_PACKAGE_DIR})
# Before 1.0 a minor version may change the interface.
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/MorvaneConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/MorvaneConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/MorvaneConfigVersion.cmake
        DESTINATION ${MORVANE_PACKAGE_DIR})

# The pkg-config file finds its prefix from its own place, so that an installed tree may be moved.
file(RELATIVE_PATH MORVANE_PREFIX_FROM_PC ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" MORVANE_PREFIX_FROM_PC ${MORVANE_PREFIX_FROM_PC})
if(APPLE)
  set(MORVANE_PRIVATE_LIBS "-lc++ -framework Accelerate")
else()
  set(MORVANE_PRIVATE_LIBS -lstdc++)
endif()
configure_file(cmake/morvane.pc.in ${CMAKE_CURRENT_BINARY_DIR}/morvane.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/morvane.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
