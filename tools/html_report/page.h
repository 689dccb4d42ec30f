// The page of a report: one HTML file that needs nothing beside it, neither other files nor a network.
//
// Its parts are written in tools/html_report/page: page.html, the styles and the scripts. The build puts them
// together (page.cmake), with the data of the report still missing; that stands between the two halves. The
// page carries a policy under which a browser runs no other script than this one and loads nothing at all.
#pragma once

#include <string_view>

namespace paramdb::tools {

// Everything before the data and behind it. The data is JSON as of script_json.h.
std::string_view PageHead();
std::string_view PageTail();

} // namespace paramdb::tools
