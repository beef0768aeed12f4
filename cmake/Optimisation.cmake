# How much optimisation code is worth. Release is -O3, which takes twice as long to compile as -O1.

# morvane_runs_briefly(target [PUBLIC]): what the target compiles runs for milliseconds and takes seconds to compile, so it
# has little optimisation in a release, and none with sanitizers, whose checks are what takes the time to optimise; with
# PUBLIC so has what links it.
function(morvane_runs_briefly target)
  set(scope PRIVATE)
  if("PUBLIC" IN_LIST ARGN)
    set(scope PUBLIC)
  endif()
  target_compile_options(${target} ${scope} $<$<CONFIG:Release>:-O1>)
  if(CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
    target_compile_options(${target} ${scope} -O0)
  endif()
endfunction()
