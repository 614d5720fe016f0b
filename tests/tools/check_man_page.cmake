# Fails unless PAGE names every verb, option and variable of PROGRAM's help.
cmake_minimum_required(VERSION 3.25)

function(help_of variable)
  execute_process(COMMAND ${PROGRAM} ${ARGN} --help
    OUTPUT_VARIABLE help COMMAND_ERROR_IS_FATAL ANY)
  set(${variable} "${help}" PARENT_SCOPE)
endfunction()

file(READ ${PAGE} page)
# The marks of emphasis in the page.
string(REGEX REPLACE "[*]" "" page "${page}")

help_of(help)
string(REGEX MATCH "Subcommands:\n(.*)\n\nExit" found "${help}")
string(REGEX MATCHALL "\n  [a-z]+" verbs "\n${CMAKE_MATCH_1}")
list(TRANSFORM verbs STRIP)
list(LENGTH verbs count)
if(count EQUAL 0)
  message(FATAL_ERROR "the help names no verb:\n${help}")
endif()

set(names "${verbs}")
foreach(verb IN LISTS verbs)
  help_of(text ${verb})
  string(REGEX MATCHALL "--[a-z][a-z-]+" options "${text}")
  string(REGEX MATCHALL "[A-Z]+_[A-Z_]+=" variables "${text}")
  list(APPEND names ${options} ${variables})
endforeach()
list(REMOVE_DUPLICATES names)
list(TRANSFORM names REPLACE "=$" "")
foreach(name IN LISTS names)
  string(FIND "${page}" "${name}" place)
  if(place EQUAL -1)
    message(SEND_ERROR "${PAGE} does not name ${name}")
  endif()
endforeach()
