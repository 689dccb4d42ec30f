# Makes a source file that holds the page of the report, from the files of the folder page.
#
# Included, it adds the making of the file to the build and stores its name in the variable report_page_source.
# Run as a script (cmake -D PAGE=folder -D OUTPUT=file -P page.cmake) it makes the file.

set(page_styles page.css overview.css tables.css drawings.css paper.css)
# The scripts share one scope; what a file uses at once stands in one before it.
set(page_scripts dom.js names.js data_table.js item_list.js speed.js drive_train.js bands.js bands_view.js plot.js
    polygons.js limits.js overview.js findings.js tables.js keys.js parameters.js main.js)

if(NOT CMAKE_SCRIPT_MODE_FILE)
    set(page_folder ${CMAKE_CURRENT_LIST_DIR}/page)
    set(report_page_source ${CMAKE_CURRENT_BINARY_DIR}/report_page.cpp)
    set(page_files page.html ${page_styles} ${page_scripts})
    list(TRANSFORM page_files PREPEND ${page_folder}/)
    add_custom_command(OUTPUT ${report_page_source}
        COMMAND ${CMAKE_COMMAND} -D PAGE=${page_folder} -D OUTPUT=${report_page_source} -P ${CMAKE_CURRENT_LIST_FILE}
        DEPENDS ${page_files} ${CMAKE_CURRENT_LIST_FILE}
        COMMENT "Embedding the page of the report" VERBATIM)
    return()
endif()

# A file as text with LF at the ends of its lines, as a browser sees it.
function(read_text name result)
    file(READ ${PAGE}/${name} text)
    string(REPLACE "\r\n" "\n" text "${text}")
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

# The SHA-256 of a text in Base64: the form in which a page's policy names a script.
function(policy_hash text result)
    set(letters ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/)
    string(SHA256 digest "${text}")
    string(APPEND digest 00) # 33 bytes are 44 letters, the last of which is filling
    set(base64 "")
    foreach(place RANGE 0 63 3)
        string(SUBSTRING ${digest} ${place} 3 digits)
        math(EXPR first "0x${digits} >> 6")
        math(EXPR second "0x${digits} & 63")
        foreach(number ${first} ${second})
            string(SUBSTRING ${letters} ${number} 1 letter)
            string(APPEND base64 ${letter})
        endforeach()
    endforeach()
    string(SUBSTRING ${base64} 0 43 base64)
    set(${result} "sha256-${base64}=" PARENT_SCOPE)
endfunction()

# The text as a list of characters between braces. The compiler takes strings of some length only.
function(character_list text result)
    string(HEX "${text}" bytes)
    string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
    string(REGEX REPLACE "(......................................................................),"
           "\\1,\n" bytes "${bytes}")
    set(${result} "{\n${bytes}}" PARENT_SCOPE)
endfunction()

read_text(page.html page)
set(style "\n")
foreach(name ${page_styles})
    read_text(${name} text)
    string(APPEND style "${text}\n")
endforeach()
set(script "\n(() => {\n\"use strict\";\n\n")
foreach(name ${page_scripts})
    read_text(${name} text)
    string(APPEND script "${text}\n")
endforeach()
string(APPEND script "})();\n")

policy_hash("${style}" style_hash)
policy_hash("${script}" script_hash)
string(REPLACE "@STYLE_HASH@" "${style_hash}" page "${page}")
string(REPLACE "@SCRIPT_HASH@" "${script_hash}" page "${page}")
string(REPLACE "@STYLE@" "${style}" page "${page}")
string(REPLACE "@SCRIPT@" "${script}" page "${page}")

string(FIND "${page}" "@DATA@" place)
string(SUBSTRING "${page}" 0 ${place} head)
math(EXPR place "${place} + 6")
string(SUBSTRING "${page}" ${place} -1 tail)
character_list("${head}" head)
character_list("${tail}" tail)

file(WRITE ${OUTPUT} "// Made from the files in tools/html_report/page.
#include \"tools/html_report/page.h\"

namespace paramdb::tools {
namespace {

constexpr char Head[] = ${head};
constexpr char Tail[] = ${tail};

} // namespace

std::string_view PageHead() {
    return {Head, sizeof Head};
}

std::string_view PageTail() {
    return {Tail, sizeof Tail};
}

} // namespace paramdb::tools
")
