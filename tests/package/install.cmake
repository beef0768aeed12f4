# Installs the build directory `build` into the empty directory `tree`, and sees that the public header is the only one.
file(REMOVE_RECURSE ${tree})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${build} --prefix ${tree} COMMAND_ERROR_IS_FATAL ANY)

file(GLOB_RECURSE headers RELATIVE ${tree} ${tree}/include/*)
if(NOT headers STREQUAL "include/Processing/Morvane/Processing.Morvane.h")
  message(FATAL_ERROR "installed headers: ${headers}")
endif()
