# Builds the checker with one mistake in the library and expects it to fail.
#
# Variables: library (its directory), sources (relative to it), catalogue, scratch, file, from and to (files that hold
# the two texts), rows, compiler, apple (the directory of the stand-in for vImage, where the code for Apple systems is
# wanted), objects (of the checker, without the library).
foreach(name from to)
  file(READ ${${name}} ${name}_text)
endforeach()
file(REMOVE_RECURSE ${scratch})
file(COPY ${library}/ DESTINATION ${scratch}/library)

file(READ ${scratch}/library/${file} text)
string(FIND "${text}" "${from_text}" first)
string(FIND "${text}" "${from_text}" last REVERSE)
if(first EQUAL -1 OR NOT first EQUAL last)
  message(FATAL_ERROR "${file} does not hold this text exactly once: ${from_text}")
endif()
string(REPLACE "${from_text}" "${to_text}" text "${text}")
file(WRITE ${scratch}/library/${file} "${text}")

set(library_objects)
foreach(source ${sources})
  string(REPLACE / _ object ${source}.o)
  set(flags -std=c++20 -O1 -I${scratch}/library)
  if(source MATCHES avx2)
    list(APPEND flags -mavx2)
  elseif(apple AND source MATCHES apple)
    list(APPEND flags -D__APPLE__ -I${apple})
  endif()
  execute_process(COMMAND ${compiler} ${flags} -c ${scratch}/library/${source} -o ${scratch}/${object}
                  COMMAND_ERROR_IS_FATAL ANY)
  list(APPEND library_objects ${scratch}/${object})
endforeach()
execute_process(COMMAND ${compiler} ${objects} ${library_objects} -pthread -o ${scratch}/checker
                COMMAND_ERROR_IS_FATAL ANY)

execute_process(COMMAND ${scratch}/checker --thin --gtest_filter=${rows} OUTPUT_VARIABLE output RESULT_VARIABLE result)
if(NOT output MATCHES "\\[  FAILED  \\]")
  message(FATAL_ERROR "The checker did not notice (${result}):\n${output}")
endif()
string(REGEX MATCH "[^\n]*backend [a-z0-9]+\n[^\n]*" report "${output}")
message("Reported:\n${report}")
