# compile(directory source object flags...): compiles a source of the library that is in the directory.
function(compile directory source object)
  execute_process(COMMAND ${compiler} ${common_flags} ${flags_of_${source}} ${ARGN} -I${directory}
                          -c ${directory}/${source} -o ${object}
                  COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# object_of(variable directory source): where the object of a source goes, and beside it the list of what it includes.
function(object_of variable directory source)
  string(REPLACE / _ object ${source}.o)
  set(${variable} ${directory}/${object} PARENT_SCOPE)
endfunction()
