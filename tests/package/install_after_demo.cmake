# Installs the build directory `build` into the empty directory `tree` when the shared library `library` is not built,
# as script/demo leaves it, and sees that the library is built and installed.
file(REMOVE_RECURSE ${tree})
file(REMOVE ${library})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${build} --prefix ${tree} COMMAND_ERROR_IS_FATAL ANY)

cmake_path(GET library FILENAME name)
file(GLOB_RECURSE installed ${tree}/${name})
if(NOT EXISTS ${library} OR NOT installed)
  message(FATAL_ERROR "not both built and installed: ${name}")
endif()
