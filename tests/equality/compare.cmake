# Runs two builds of paramdb_answers over the same seeds and compares what they write, byte for byte.
#   cmake -D ANSWERS=[EMULATOR;]PROGRAM -D REFERENCE=PROGRAM -D WORK_DIR= -P compare.cmake
# Both must be of the same sources. Without the reference the program has to give the same answers twice.
cmake_minimum_required(VERSION 3.25)

set(seeds 1 2 3 5 8 13 21 34)

function(run)
    execute_process(COMMAND ${ARGV} WORKING_DIRECTORY ${WORK_DIR} OUTPUT_VARIABLE output ERROR_VARIABLE output
                    RESULT_VARIABLE result)
    if(result)
        message(FATAL_ERROR "failed (${result}): ${ARGV}\n${output}")
    endif()
endfunction()

# The first line that differs, of both.
function(report seed first second)
    file(STRINGS ${WORK_DIR}/${first} ours ENCODING UTF-8)
    file(STRINGS ${WORK_DIR}/${second} theirs ENCODING UTF-8)
    foreach(our their IN ZIP_LISTS ours theirs)
        if(NOT "${our}" STREQUAL "${their}")
            message(FATAL_ERROR "seed ${seed}: the answers differ (${WORK_DIR}/${first}, ${second})\n${our}\n${their}")
        endif()
    endforeach()
    message(FATAL_ERROR "seed ${seed}: the answers differ (${WORK_DIR}/${first}, ${second})")
endfunction()

list(REMOVE_ITEM ANSWERS "")
if(NOT EXISTS ${REFERENCE})
    message(STATUS "There is no ${REFERENCE} to compare with")
    set(REFERENCE ${ANSWERS})
endif()
foreach(seed ${seeds})
    run(${ANSWERS} ${seed} answers-${seed}.txt)
    run(${REFERENCE} ${seed} reference-${seed}.txt)
    file(SIZE ${WORK_DIR}/answers-${seed}.txt size)
    if(size LESS 1000000)
        message(FATAL_ERROR "seed ${seed}: there are hardly any answers (${size} bytes)")
    endif()
    execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files answers-${seed}.txt reference-${seed}.txt
                    WORKING_DIRECTORY ${WORK_DIR} RESULT_VARIABLE differs ERROR_QUIET)
    if(differs)
        report(${seed} answers-${seed}.txt reference-${seed}.txt)
    endif()
    file(REMOVE ${WORK_DIR}/answers-${seed}.txt ${WORK_DIR}/reference-${seed}.txt
         ${WORK_DIR}/answers-${seed}.lake ${WORK_DIR}/reference-${seed}.lake)
endforeach()
