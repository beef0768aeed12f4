# Sees that the library still holds the texts that the mutants change. `mutants` lists a file of the library and the file
# that holds the text, in turn.
cmake_minimum_required(VERSION 3.25)
include(${compilation})
include(${CMAKE_CURRENT_LIST_DIR}/expect_once.cmake)

while(mutants)
  list(POP_FRONT mutants file from)
  file(READ ${library}/${file} text)
  file(READ ${from} from_text)
  expect_once("${text}" "${from_text}" ${file})
endwhile()
