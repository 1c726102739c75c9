# SPDX-FileCopyrightText: 2026 The ovparser authors
# SPDX-License-Identifier: MIT

# Runs the code of a page beside a copy of the sample files and compares what it prints: first the
# programs, then the commands.
#   cmake -DNAME=FILES [-DPROGRAM=FILE] [-DPYTHON=FILE] [-DSHELL=FILE] -DEXAMPLES=FOLDER -P RunSnippets.cmake
set(folder ${NAME}.run)
file(REMOVE_RECURSE ${folder})
file(COPY ${EXAMPLES} DESTINATION ${folder})

# Neither this machine's instrument nor its language and time zone.
set(ENV{XDG_DATA_DIRS} ${folder}/share)
set(ENV{XDG_CONFIG_DIRS} ${folder}/etc)
set(ENV{LC_ALL} C.UTF-8)
set(ENV{TZ} UTC)

function(run expected)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${folder}
    OUTPUT_VARIABLE printed ERROR_VARIABLE printed RESULT_VARIABLE result)
  file(READ ${expected} shown)
  if(NOT result EQUAL 0 OR NOT printed STREQUAL shown)
    message(FATAL_ERROR "Exit code ${result}.\nThe page shows:\n${shown}\nPrinted was:\n${printed}")
  endif()
endfunction()

# A sanitizer that is loaded into Python is not for programs, which have their own.
set(preloaded "$ENV{LD_PRELOAD}")
unset(ENV{LD_PRELOAD})
if(PROGRAM)
  run(${NAME}.cpp.txt ${PROGRAM})
endif()
if(PYTHON)
  run(${NAME}.py.txt ${CMAKE_COMMAND} -E env "LD_PRELOAD=${preloaded}" ${PYTHON} ${NAME}.py)
endif()
if(SHELL)
  run(${NAME}.sh.txt ${SHELL} ${NAME}.sh)
endif()
