# The backends of the library, for the build and for the tests that compile them once more.
#
# After morvane_finish_backends the global property MORVANE_BACKENDS lists their tags, and for each of them
# MORVANE_BACKEND_<tag>_FLAGS its flags; MORVANE_BACKEND_DEFINITIONS are the definitions that all of the library is
# compiled with.

# morvane_sanitizer_flags(variable): what a unit of intrinsics is compiled with beside the sanitizers of the build. Each
# intrinsic is a function with parameters of its own, so their checks made a unit twenty times as large and took minutes to
# compile. Addresses are checked by calls instead of inline. Checks for null pointers and for accesses beyond an object are
# left out, because the check of addresses reports those too; that of alignment, because vectors are moved by instructions
# for any address, and the portable unit, where the rules of the same kernels run, keeps it. With g++ locals are not watched
# after their scope, which alone takes longer than the rest; clang, which compiles the fuzzers, still watches them.
function(morvane_sanitizer_flags variable)
  set(flags)
  if(CMAKE_CXX_FLAGS MATCHES "-fsanitize=[a-z,-]*undefined")
    list(APPEND flags -fno-sanitize=null,alignment,object-size)
  endif()
  if(CMAKE_CXX_FLAGS MATCHES "-fsanitize=[a-z,-]*address")
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
      list(APPEND flags -mllvm -asan-instrumentation-with-call-threshold=0)
    else()
      list(APPEND flags --param=asan-instrumentation-with-call-threshold=0 -fno-sanitize-address-use-after-scope)
    endif()
  endif()
  set(${variable} ${flags} PARENT_SCOPE)
endfunction()

# morvane_backend(tag flags...): adds the backend whose translation unit is backend/<tag>.cpp, compiled with the flags. A
# compiler that cannot build it leaves it out.
function(morvane_backend tag)
  string(TOUPPER ${tag} TAG)
  set(unit backend/${tag}.cpp)
  if(ARGN)
    string(REPLACE ";" " " CMAKE_REQUIRED_FLAGS "-std=c++20 ${ARGN}")
    set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
    check_cxx_source_compiles("#include <immintrin.h>" MORVANE_COMPILES_${TAG})
    if(NOT MORVANE_COMPILES_${TAG})
      message(STATUS "Without the backend ${tag}, which this compiler cannot build")
      return()
    endif()
  endif()
  target_sources(morvane_objects PRIVATE ${unit})
  set(watched)
  if(ARGN)
    morvane_sanitizer_flags(watched)
  endif()
  set_source_files_properties(${unit} PROPERTIES COMPILE_OPTIONS "${ARGN};${watched}")
  set_property(GLOBAL APPEND PROPERTY MORVANE_BACKENDS ${tag})
  set_property(GLOBAL PROPERTY MORVANE_BACKEND_${tag}_FLAGS ${ARGN})
  set_property(GLOBAL APPEND PROPERTY MORVANE_BACKEND_DEFINITIONS MORVANE_WITH_${TAG})
endfunction()

function(morvane_finish_backends)
  get_property(tags GLOBAL PROPERTY MORVANE_BACKENDS)
  list(LENGTH tags count)
  if(count EQUAL 1)
    set_property(GLOBAL APPEND PROPERTY MORVANE_BACKEND_DEFINITIONS 
                 MORVANE_ONLY_BACKEND=${tags} MORVANE_ONLY_BACKEND_HEADER="../vector/${tags}.h")
  endif()
  get_property(definitions GLOBAL PROPERTY MORVANE_BACKEND_DEFINITIONS)
  target_compile_definitions(morvane_objects PRIVATE ${definitions})
endfunction()
