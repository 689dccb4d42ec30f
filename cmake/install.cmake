# Installs the libraries with their headers, a CMake package and a pkg-config file; of the command the manual page and
# the completion in shells.
include(CMakePackageConfigHelpers)

if(BUILD_SHARED_LIBS AND UNIX)
    # The installed programs find the libraries of their own prefix.
    file(RELATIVE_PATH library_dir ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set(CMAKE_INSTALL_RPATH "$ORIGIN/${library_dir}")
endif()

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/paramdb)

install(TARGETS paramdb paramdb_controls EXPORT paramdbTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY paramdb DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h" PATTERN "*.def"
        PATTERN "views" EXCLUDE PATTERN "database" EXCLUDE PATTERN "database.h" EXCLUDE)
if(TARGET paramdb_qt)
    # Exported apart: a host without Qt finds the rest all the same.
    install(TARGETS paramdb_qt EXPORT paramdbQtTargets
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
            RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(DIRECTORY paramdb/views/qt DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/paramdb/views
            FILES_MATCHING PATTERN "*.h")
    install(EXPORT paramdbQtTargets NAMESPACE paramdb:: DESTINATION ${package_dir})
endif()
if(TARGET paramdb_win32)
    # Exported apart: the package tells it as a component.
    install(TARGETS paramdb_win32 EXPORT paramdbWin32Targets
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
            RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(DIRECTORY paramdb/views/win32 DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/paramdb/views
            FILES_MATCHING PATTERN "*.h")
    install(EXPORT paramdbWin32Targets NAMESPACE paramdb:: DESTINATION ${package_dir})
endif()
if(TARGET paramdb_database)
    # Exported apart: a host without SOCI finds the rest all the same.
    install(TARGETS paramdb_database EXPORT paramdbDatabaseTargets
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
            RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(FILES paramdb/database.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/paramdb)
    install(FILES paramdb/database/connection_text.h paramdb/database/export.h paramdb/database/export_tables.h
                  paramdb/database/import_tables.h paramdb/database/revision.h
            DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/paramdb/database)
    install(FILES cmake/FindSOCI.cmake DESTINATION ${package_dir})
    install(EXPORT paramdbDatabaseTargets NAMESPACE paramdb:: DESTINATION ${package_dir})
endif()
install(EXPORT paramdbTargets NAMESPACE paramdb:: DESTINATION ${package_dir})

configure_package_config_file(cmake/paramdbConfig.cmake.in ${PROJECT_BINARY_DIR}/paramdbConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/paramdbConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/paramdbConfig.cmake ${PROJECT_BINARY_DIR}/paramdbConfigVersion.cmake
        DESTINATION ${package_dir})

if(BUILD_SHARED_LIBS)
    set(pc_cflags " -DPARAMDB_SHARED")
endif()
configure_file(cmake/paramdb.pc.in ${PROJECT_BINARY_DIR}/paramdb.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/paramdb.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
install(FILES LICENSE README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})

if((PARAMDB_BUILD_TOOLS OR PARAMDB_BUILD_TESTS) AND UNIX AND NOT CMAKE_CROSSCOMPILING)
    # The command itself makes its manual page and its completion in shells.
    set(made_dir ${PROJECT_BINARY_DIR}/made_by_command)
    file(MAKE_DIRECTORY ${made_dir})
    function(install_made name destination)
        add_custom_command(OUTPUT ${made_dir}/${name}
            COMMAND paramdb_command ${ARGN} > ${made_dir}/${name}
            DEPENDS paramdb_command VERBATIM)
        install(FILES ${made_dir}/${name} DESTINATION ${destination})
    endfunction()
    install_made(paramdb.1 ${CMAKE_INSTALL_MANDIR}/man1 man)
    install_made(paramdb ${CMAKE_INSTALL_DATADIR}/bash-completion/completions completion bash)
    install_made(_paramdb ${CMAKE_INSTALL_DATADIR}/zsh/site-functions completion zsh)
    install_made(paramdb.fish ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d completion fish)
    add_custom_target(paramdb_made_by_command ALL
        DEPENDS ${made_dir}/paramdb.1 ${made_dir}/paramdb ${made_dir}/_paramdb ${made_dir}/paramdb.fish)
endif()
