# paramdb_compile_together(TARGET): where PARAMDB_UNITY_BUILD is on, up to ten sources of a folder make one
# compilation, which parses their headers once. Sources are added to the target before the call, and keep the names
# that they do not share with others apart from those of their folder.
function(paramdb_compile_together target)
    if(NOT PARAMDB_UNITY_BUILD)
        return()
    endif()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # g++ takes a source that is compiled with others for a header, where an unnamed namespace is no good.
        target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
    endif()
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources EXCLUDE REGEX "^\\$<") # objects of another target
    foreach(source IN LISTS sources)
        # Names of objects do not tell where they were built.
        cmake_path(GET source PARENT_PATH folder)
        cmake_path(ABSOLUTE_PATH folder NORMALIZE)
        cmake_path(RELATIVE_PATH folder BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
        string(MAKE_C_IDENTIFIER "${folder}" group)
        math(EXPR count "0${count_${group}} + 1")
        set(count_${group} ${count})
        math(EXPR part "(${count} - 1) / 10")
        set_property(SOURCE ${source} PROPERTY UNITY_GROUP ${group}_${part})
    endforeach()
endfunction()
