# PARAMDB_HARDEN: a fault in memory, should there be one, is harder to misuse. Checked calls of the C library, guarded
# stack frames, stack growth page by page, return addresses that the processor checks where it can, programs at random
# addresses, and tables of addresses that are read-only once a program runs. A load takes about 1 % more instructions,
# queries 7 %, all of them for the guarded stack frames.
#
# Marked targets of indirect jumps (-fcf-protection=full) are left out: one more instruction at the start of each
# function, for a check that Linux does not turn on for programs.
option(PARAMDB_HARDEN "Build with the compiler's and linker's protections (ELF systems)" OFF)

include(CheckCXXCompilerFlag)
set(paramdb_hardening_flags "")
if(PARAMDB_HARDEN AND UNIX AND NOT APPLE)
    foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection=return)
        string(MAKE_C_IDENTIFIER "has${flag}" known)
        check_cxx_compiler_flag(${flag} ${known})
        if(${known})
            list(APPEND paramdb_hardening_flags ${flag})
        endif()
    endforeach()
endif()

# Called for every target here by paramdb_compile_settings.
function(paramdb_harden target)
    if(NOT PARAMDB_HARDEN OR NOT UNIX OR APPLE)
        return()
    endif()
    # Checked calls need the optimiser; the C library warns where it is off.
    get_target_property(type ${target} TYPE)
    target_compile_options(${target} PRIVATE ${paramdb_hardening_flags}
                           "$<$<CONFIG:Release>:SHELL:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3>")
    target_link_options(${target} PRIVATE LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
    if(NOT type MATCHES "SHARED|MODULE")
        # What has to be independent of its position for another reason, such as Qt, has its own flags for that.
        set(own_flags $<BOOL:$<TARGET_PROPERTY:POSITION_INDEPENDENT_CODE>>)
        target_compile_options(${target} PRIVATE $<$<NOT:${own_flags}>:-fPIE>)
    endif()
    if(type STREQUAL "EXECUTABLE")
        target_link_options(${target} PRIVATE -pie)
    endif()
endfunction()
