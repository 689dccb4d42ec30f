# paramdb_compile_settings(TARGET): language level, warnings, floating-point rules and protections of every target
# here.
function(paramdb_compile_settings target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    if(MSVC)
        target_compile_options(${target} PRIVATE /W4 /utf-8 /fp:precise $<$<BOOL:${PARAMDB_WERROR}>:/WX>)
    else()
        # No contraction: a fused multiply-add rounds differently, and results must agree on every machine.
        target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
                               -ffp-contract=off $<$<BOOL:${PARAMDB_WERROR}>:-Werror>)
        # Releases do not tell where they were built.
        target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>)
        paramdb_harden(${target})
        if(MINGW)
            # To g++ 12 the copy of an empty text of 16-bit characters looks like an overrun.
            target_compile_options(${target} PRIVATE -Wno-array-bounds -Wno-stringop-overread)
        endif()
    endif()
endfunction()
