# morvane_warnings(target): the warnings that every target of the project builds under.
function(morvane_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wconversion -Wshadow
                         $<$<BOOL:${MORVANE_WARNINGS_AS_ERRORS}>:-Werror>)
endfunction()
