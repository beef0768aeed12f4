# Installs the build directory `build` into the empty directory `tree`, and sees that the public headers are the only ones.
file(REMOVE_RECURSE ${tree})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${build} --prefix ${tree} COMMAND_ERROR_IS_FATAL ANY)

file(GLOB_RECURSE headers RELATIVE ${tree} ${tree}/include/*)
set(public Processing.Morvane.h morvane.h morvane.hpp)
list(TRANSFORM public PREPEND include/Processing/Morvane/)
if(NOT headers STREQUAL public)
  message(FATAL_ERROR "installed headers: ${headers}")
endif()
