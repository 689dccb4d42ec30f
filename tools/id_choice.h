// The id that a word of the command line means: an id as it is, or a name.
//
//     auto const trigger = ChooseId("trigger", "Speed", parameters, err);
//     if (!trigger)
//         return ExitCode::Findings;
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

class CQtParamInstance;

namespace paramdb::tools {

// The id of a kind (kinds.h). A word that is an id counts as that, any other as a name. Where there is none,
// or several of that name, `err` is told so, with what may have been meant.
std::optional<int> ChooseId(std::string_view kind, std::string const& word,
                            CQtParamInstance const& parameters, std::ostream& err);

// The same for an instrument parameter, of which an instrument may have to decide.
std::optional<int> ChooseParameter(std::string const& word, std::optional<int> instrument,
                                   CQtParamInstance const& parameters, std::ostream& err);

} // namespace paramdb::tools
