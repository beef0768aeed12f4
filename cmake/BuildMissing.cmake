# The first step of an installation. A build of some targets alone, which is what script/demo makes, leaves files missing;
# this builds them. Where all are there it builds nothing, so that root, who may install, leaves no files of its own in
# the build directory.
foreach(file IN LISTS installed_files)
  if(NOT EXISTS "${file}")
    execute_process(
      COMMAND "${CMAKE_COMMAND}" --build "${build_directory}" --config "${CMAKE_INSTALL_CONFIG_NAME}"
              --target ${installed_targets}
      COMMAND_ERROR_IS_FATAL ANY)
    break()
  endif()
endforeach()
