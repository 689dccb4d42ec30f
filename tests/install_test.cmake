# Installs the build into a fresh prefix, builds the embedding example against it as a host would, with CMake and
# with pkg-config, and runs it on the example gearbox.
#   cmake -D BUILD_DIR= -D SOURCE_DIR= -D WORK_DIR= -D CXX= -D CXX_FLAGS= -P install_test.cmake
function(run)
    execute_process(COMMAND ${ARGV} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
    if(result)
        message(FATAL_ERROR "failed (${result}): ${ARGV}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect_loaded program)
    run(${program} ${SOURCE_DIR}/examples/gearbox/gearbox.lake)
    if(NOT output MATCHES "^loaded: base type '[^']+', alias '[^']+'\n$")
        message(FATAL_ERROR "unexpected output of ${program}: ${output}")
    endif()
endfunction()

# The README shows the example as it is.
file(READ ${SOURCE_DIR}/README.md readme)
file(READ ${SOURCE_DIR}/examples/embed/main.cpp embed)
string(FIND "${readme}" "${embed}" position)
if(position EQUAL -1)
    message(FATAL_ERROR "README.md does not show examples/embed/main.cpp as it is")
endif()

file(REMOVE_RECURSE ${WORK_DIR})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix)

# What the command makes itself.
foreach(file share/man/man1/paramdb.1 share/bash-completion/completions/paramdb
             share/zsh/site-functions/_paramdb share/fish/vendor_completions.d/paramdb.fish)
    file(READ ${WORK_DIR}/prefix/${file} made LIMIT 1000)
    if(NOT made MATCHES "paramdb")
        message(FATAL_ERROR "${file} is not what the command prints")
    endif()
endforeach()

run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/examples/embed -B ${WORK_DIR}/embed -G Ninja
    -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_FLAGS=${CXX_FLAGS})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/embed)
expect_loaded(${WORK_DIR}/embed/embed)

# A host of databases, where the build has them.
file(GLOB_RECURSE database_targets ${WORK_DIR}/prefix/*/paramdbDatabaseTargets.cmake)
if(database_targets)
    file(READ ${SOURCE_DIR}/docs/database.md page)
    file(READ ${SOURCE_DIR}/examples/database/main.cpp host)
    string(FIND "${page}" "${host}" position)
    if(position EQUAL -1)
        message(FATAL_ERROR "docs/database.md does not show examples/database/main.cpp as it is")
    endif()
    run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/examples/database -B ${WORK_DIR}/database -G Ninja
        -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_FLAGS=${CXX_FLAGS})
    run(${CMAKE_COMMAND} --build ${WORK_DIR}/database)
    set(connection sqlite3:${WORK_DIR}/bench.db\#gearbox)
    run(${WORK_DIR}/prefix/bin/paramdb db export ${SOURCE_DIR}/examples/gearbox/gearbox.lake ${connection})
    run(${WORK_DIR}/database/embed_database ${connection} ${WORK_DIR}/gearbox.copy)
    if(NOT output MATCHES "^loaded: revision 1 of 'gearbox', base type 'TG-6031'\n$")
        message(FATAL_ERROR "unexpected output of embed_database: ${output}")
    endif()
    file(REMOVE ${WORK_DIR}/bench.db)
    run(${WORK_DIR}/database/embed_database ${connection} ${WORK_DIR}/gearbox.copy)
    if(NOT output MATCHES "failed: there is no such file\\. The local copy .*\nloaded: revision 1 of 'gearbox' from the local copy, ")
        message(FATAL_ERROR "unexpected output of embed_database: ${output}")
    endif()
endif()

find_program(pkg_config pkg-config)
if(pkg_config)
    file(GLOB_RECURSE pc ${WORK_DIR}/prefix/*/paramdb.pc)
    get_filename_component(pc_dir ${pc} DIRECTORY)
    set(ENV{PKG_CONFIG_PATH} ${pc_dir})
    run(${pkg_config} --define-variable=prefix=${WORK_DIR}/prefix --cflags --libs paramdb)
    separate_arguments(flags UNIX_COMMAND "${CXX_FLAGS} ${output}")
    run(${CXX} ${SOURCE_DIR}/examples/embed/main.cpp ${flags} -o ${WORK_DIR}/embed_pkg_config)
    expect_loaded(${WORK_DIR}/embed_pkg_config)
endif()
