# Finds SOCI, which brings no CMake package of its own in many installations: SOCI::core, and SOCI::sqlite3 and
# SOCI::postgresql where these backends are there with the libraries under them. Any other backend is loaded by its
# name when it is asked for. SOCI's headers include those of Boost.
find_path(SOCI_INCLUDE_DIR soci/soci.h)
find_library(SOCI_CORE_LIBRARY soci_core)
find_library(SOCI_SQLITE3_LIBRARY soci_sqlite3)
find_library(SOCI_POSTGRESQL_LIBRARY soci_postgresql)
mark_as_advanced(SOCI_INCLUDE_DIR SOCI_CORE_LIBRARY SOCI_SQLITE3_LIBRARY SOCI_POSTGRESQL_LIBRARY)
find_package(SQLite3 QUIET)
find_package(PostgreSQL QUIET)
find_package(Boost QUIET)

if(SOCI_SQLITE3_LIBRARY AND TARGET SQLite::SQLite3)
    set(SOCI_sqlite3_FOUND TRUE)
endif()
if(SOCI_POSTGRESQL_LIBRARY AND TARGET PostgreSQL::PostgreSQL)
    set(SOCI_postgresql_FOUND TRUE)
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(SOCI REQUIRED_VARS SOCI_CORE_LIBRARY SOCI_INCLUDE_DIR Boost_FOUND
                                  HANDLE_COMPONENTS)

if(SOCI_FOUND AND NOT TARGET SOCI::core)
    add_library(SOCI::core UNKNOWN IMPORTED)
    set_target_properties(SOCI::core PROPERTIES IMPORTED_LOCATION ${SOCI_CORE_LIBRARY}
                                                INTERFACE_INCLUDE_DIRECTORIES ${SOCI_INCLUDE_DIR}
                                                INTERFACE_LINK_LIBRARIES Boost::headers)
    if(SOCI_sqlite3_FOUND)
        add_library(SOCI::sqlite3 UNKNOWN IMPORTED)
        set_target_properties(SOCI::sqlite3 PROPERTIES IMPORTED_LOCATION ${SOCI_SQLITE3_LIBRARY}
                                                       INTERFACE_LINK_LIBRARIES "SOCI::core;SQLite::SQLite3")
    endif()
    if(SOCI_postgresql_FOUND)
        add_library(SOCI::postgresql UNKNOWN IMPORTED)
        set_target_properties(SOCI::postgresql PROPERTIES IMPORTED_LOCATION ${SOCI_POSTGRESQL_LIBRARY}
                                                          INTERFACE_LINK_LIBRARIES "SOCI::core;PostgreSQL::PostgreSQL")
    endif()
endif()
