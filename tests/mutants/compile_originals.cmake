# Compiles the library as it is, for the mutants to take what their mistake cannot have changed.
cmake_minimum_required(VERSION 3.25)
include(${compilation})
include(${CMAKE_CURRENT_LIST_DIR}/compile.cmake)

file(REMOVE_RECURSE ${originals})
file(MAKE_DIRECTORY ${originals})
foreach(source ${sources})
  object_of(object ${originals} ${source})
  compile(${library} ${source} ${object})
endforeach()
