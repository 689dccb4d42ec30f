# Installs the libraries with their headers, a CMake package and a pkg-config file.
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
        PATTERN "views" EXCLUDE PATTERN "database" EXCLUDE)
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
