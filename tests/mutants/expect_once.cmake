# expect_once(text part file): fails where the text of the file does not hold the part exactly once.
function(expect_once text part file)
  string(FIND "${text}" "${part}" first)
  string(FIND "${text}" "${part}" last REVERSE)
  if(first EQUAL -1 OR NOT first EQUAL last)
    message(FATAL_ERROR "${file} does not hold this text exactly once: ${part}")
  endif()
endfunction()
