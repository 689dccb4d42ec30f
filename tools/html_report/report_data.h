// The data of a report: everything that its page shows, as one JSON object.
//
// The keys stay; new ones may be added. Where something has id and name it is an object of both, or null. The
// same files give the same text.
//
//   program       "paramdb 0.1.0"
//   language      of the words of keys and of settings, such as "de"
//   rpm           the speed at which the page opens, in turns of the reference rotor in a minute
//   sources       list of {file, bytes, lines, sections}, in the order of merging; bytes is null for a pipe
//   version       {major, minor}
//   result        "complete" or "incomplete" (what is derived from the tables is missing)
//   texts         {learn_file, calib_file, base_type, alias_type}
//   totals        {bytes, lines, sections, tables, all_tables, rows}; tables are those with a row
//   findings      of `paramdb check`, a list of
//     severity    "error", "warning" or "note"
//     code, title of the kind of finding
//     file, line, column, length
//                 where, in characters and counted from 1; all but the file are null for it as a whole
//     message
//     hint        null for none
//     source      the line; null without one
//     related     list of {file, line, text}
//   rotors, orders, polygons, keys, parameters
//                 see report_parts.h
//   tables        list of all tables
//     tag         such as "<TMode>"
//     instrument_class
//                 of a table in a family; null for any other
//     key, row    lists of [column, type]
//     rows        lists of the fields of key and row, in key order; see AppendScriptField
#pragma once

#include "tools/loading.h"

#include <string>
#include <vector>

namespace paramdb::tools {

// Texts are UTF-8.
struct ReportFinding {
    struct Place {
        std::string file;
        std::size_t line = 0; // from 1; 0 for the file as a whole
        std::size_t column = 0;
        std::size_t length = 0;
    };
    struct Related {
        Place place;
        std::string text;
    };

    std::string severity;
    std::string code;
    std::string title;
    Place place;
    std::string message;
    std::string hint = {};   // may be empty
    std::string source = {}; // the line
    std::vector<Related> related = {};
};

struct ReportSubject {
    Load const& load; // not refused; the process-wide tables still hold it
    std::vector<ReportFinding> findings;
    float rpm;
};

// The data as AppendScriptJson writes it, in the language in force. Gives no messages of the library.
std::string ReportData(ReportSubject const& subject);

} // namespace paramdb::tools
