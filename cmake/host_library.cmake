# paramdb_host_library(TARGET EXPORTS DESCRIPTION): what a library for hosts needs beyond its sources: a version, and
# in a shared build the marks of paramdb/platform/core/export.h, everything unmarked kept inside, and on Windows a
# resource with version and description. EXPORTS is the macro that is defined while the library itself is compiled.
if(WIN32 AND BUILD_SHARED_LIBS)
    enable_language(RC)
endif()

# Before 1.0 each minor version may change the interface, so the name that hosts are bound to tells it.
if(PROJECT_VERSION_MAJOR EQUAL 0)
    set(PARAMDB_SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
else()
    set(PARAMDB_SOVERSION ${PROJECT_VERSION_MAJOR})
endif()

function(paramdb_host_library target exports description)
    set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PARAMDB_SOVERSION})
    get_target_property(type ${target} TYPE)
    if(NOT type STREQUAL SHARED_LIBRARY)
        return()
    endif()
    target_compile_definitions(${target} PUBLIC PARAMDB_SHARED)
    set_target_properties(${target} PROPERTIES DEFINE_SYMBOL ${exports} CXX_VISIBILITY_PRESET hidden
                                               VISIBILITY_INLINES_HIDDEN ON)
    if(WIN32)
        set_target_properties(${target} PROPERTIES PREFIX "")
        set(file ${target}.dll)
        configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
        target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
    elseif(NOT APPLE)
        # Beside one another, wherever they are installed.
        set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
        # The compiler offers every function of the standard library's templates that it has put here; the map
        # takes them back.
        set(map ${PROJECT_SOURCE_DIR}/cmake/exports.map)
        target_link_options(${target} PRIVATE LINKER:--version-script=${map})
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${map})
    endif()
endfunction()
