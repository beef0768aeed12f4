# Gathers the library as it is, for the mutants to take what their mistake cannot have changed: the objects of this build,
# and beside each the list of what its source includes.
cmake_minimum_required(VERSION 3.25)
include(${compilation})
include(${CMAKE_CURRENT_LIST_DIR}/compile.cmake)
include(${built})

file(REMOVE_RECURSE ${originals})
file(MAKE_DIRECTORY ${originals})
foreach(source ${sources})
  object_of(object ${originals} ${source})
  set(built_object ${built_objects})
  list(FILTER built_object INCLUDE REGEX "/morvane_objects[.]dir/([.]/)?${source}[.]o(bj)?$")
  if(NOT EXISTS "${built_object}")
    message(FATAL_ERROR "This build has no single object of ${source}: ${built_object}")
  endif()
  file(CREATE_LINK ${built_object} ${object} SYMBOLIC)
  string(REGEX REPLACE "\\.o$" ".d" list_of_files ${object})
  execute_process(COMMAND ${compiler} ${common_flags} ${flags_of_${source}} -I${library} -MM -MF ${list_of_files}
                          ${library}/${source}
                  COMMAND_ERROR_IS_FATAL ANY)
endforeach()
