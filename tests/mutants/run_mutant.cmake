# Builds a test program with one mistake in the library and expects it to fail; without a mistake, to pass.
#
# Variables: compilation (the file that says how the library is compiled), scratch, file, from and to (in the files
# scratch.from and scratch.to), backend, kernels (their list, where the mistake is in no others), rows, apple (the
# directory of the stand-in for vImage, where the code for Apple systems is wanted), emulator (the command that runs the
# program on another processor), test (a source of the tests that includes what is mistaken), objects (of the program,
# without the library and that test).
cmake_minimum_required(VERSION 3.25)
include(${compilation})
include(${CMAKE_CURRENT_LIST_DIR}/compile.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/expect_once.cmake)

foreach(name from to)
  file(READ ${scratch}.${name} ${name}_text)
endforeach()
file(REMOVE_RECURSE ${scratch})
file(COPY ${library}/ DESTINATION ${scratch}/library)

file(READ ${scratch}/library/${file} text)
expect_once("${text}" "${from_text}" ${file})
string(REPLACE "${from_text}" "${to_text}" text "${text}")
file(WRITE ${scratch}/library/${file} "${text}")

# Whether a source may have changed: it includes the file, and it is no unit of a backend that is left as it is.
function(is_concerned variable source)
  set(${variable} FALSE PARENT_SCOPE)
  if(source MATCHES "^backend/(.*)\\.cpp$" AND CMAKE_MATCH_1 IN_LIST backends AND NOT CMAKE_MATCH_1 STREQUAL backend)
    return()
  endif()
  object_of(object ${originals} ${source})
  string(REGEX REPLACE "\\.o$" ".d" list_of_files ${object})
  file(READ ${list_of_files} included)
  string(FIND "${included}" "/${file}" found)
  if(found GREATER -1)
    set(${variable} TRUE PARENT_SCOPE)
  endif()
endfunction()

# A unit of one list of kernels. The linker takes each line function from the first object that has it, so this one comes
# before the library's own unit with all kernels, which takes ten times as long to compile.
if(kernels)
  set(unit backend/${backend}_mistaken.cpp)
  set(flags_of_${unit} ${flags_of_backend/${backend}.cpp})
  configure_file(${CMAKE_CURRENT_LIST_DIR}/mistaken_unit.cpp.in ${scratch}/library/${unit} @ONLY)
  object_of(mistaken ${scratch} ${unit})
  compile(${scratch}/library ${unit} ${mistaken})
  list(APPEND objects ${mistaken})
endif()

set(library_objects)
foreach(source ${sources})
  is_concerned(concerned ${source})
  if(concerned AND NOT kernels AND NOT test)
    object_of(object ${scratch} ${source})
    compile(${scratch}/library ${source} ${object})
  else()
    object_of(object ${originals} ${source})
  endif()
  list(APPEND library_objects ${object})
endforeach()
if(apple)
  object_of(object ${scratch} format_conversion_main_apple.cpp)
  compile(${scratch}/library format_conversion_main_apple.cpp ${object} -D__APPLE__ -I${apple})
  list(FILTER library_objects EXCLUDE REGEX "format_conversion_main_opaque_rgb")
  list(APPEND library_objects ${object})
endif()
if(test)
  get_filename_component(tests ${CMAKE_CURRENT_LIST_DIR} DIRECTORY)
  list(LENGTH backends number_of_backends)
  execute_process(COMMAND ${compiler} ${common_flags} -DMORVANE_NUMBER_OF_BACKENDS=${number_of_backends}
                          -I${scratch}/library -I${tests} -c ${test} -o ${scratch}/test.o
                  COMMAND_ERROR_IS_FATAL ANY)
  list(PREPEND objects ${scratch}/test.o)
endif()
execute_process(COMMAND ${compiler} ${objects} ${library_objects} -pthread -o ${scratch}/program
                COMMAND_ERROR_IS_FATAL ANY)

execute_process(COMMAND ${emulator} ${scratch}/program --thin --gtest_fail_fast --gtest_filter=${rows}
                OUTPUT_VARIABLE output RESULT_VARIABLE result)
if(NOT output MATCHES "backends:[^\n]* ${backend}[ \n]")
  message("This processor cannot run ${backend}.")
  return()
endif()
if(from_text STREQUAL to_text)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "There is no mistake, and the program fails (${result}):\n${output}")
  endif()
  return()
endif()
if(NOT output MATCHES "\\[  FAILED  \\]")
  message(FATAL_ERROR "The program did not notice (${result}):\n${output}")
endif()
string(REGEX MATCH "[^\n]*backend [a-z0-9]+\n[^\n]*" report "${output}")
message("Reported:\n${report}")
