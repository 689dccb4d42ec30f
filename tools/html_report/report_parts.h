// The parts of a report that are more than rows of a table.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

class CQtParamInstance;

namespace paramdb::tools {

// The drive train in each physical mode, as of `paramdb rotors`, with one key more:
//   reference     {id, name}: the rotor whose turns the speed of the page counts. The first that tells its
//                 own speed, else the first that turns once for one turn of the reference of ratios, else the
//                 first that turns; null for none
nlohmann::ordered_json RotorsPart(CQtParamInstance const& parameters);

// The order definitions of spectral values and spectral tracks, a list in the order of parameters:
//   parameter, instrument
//   definition
//   verdict       as of `paramdb order`
//   fault         {place, reason}; null unless bad
//   intervals     a list of {lower, upper}, each position being {text, frequency, order, harmonic,
//   modulation,
//                 lines, domain}; the domain has bit 0 for a frequency, bit 1 for an order
//   drives        a list: where it is measured, once for each physical mode. First the drive that `paramdb
//                 interval` chooses, then the others in the order of physical modes
//     mode        the first one in this physical mode
//     physical_mode
//     rotor       whose turns orders count
//     gear
//     base_order  0 for none
//     ratio       {numerator, denominator, value}: turns of the gear for one of the rotor, without sign
//     turns       of the rotor for one turn of the reference of RotorsPart, without sign; 0 where not known
nlohmann::ordered_json OrdersPart(CQtParamInstance const& parameters);

// What an order interval may come to but a band, by the number of the result, in words.
nlohmann::ordered_json ResultTexts();

// As of `paramdb polygons`.
nlohmann::ordered_json PolygonsPart(CQtParamInstance const& parameters);

// The instrument parameters, a list in the order of ids:
//   parameter, instrument, trigger
//   yields        what the instrument gives, in words
//   settings      a list of lines in the language in force; null where they cannot be shown
nlohmann::ordered_json ParametersPart(CQtParamInstance& parameters);

// The keys that are measured, in the language in force. Many of them, so that they are written at once:
//   words         those of the six elements on the screen ("Test step")
//   modes         list of [id, name] of the modes that are no rows of <TMode>
//   rows          lists of the six ids and the text that operators see
void AppendKeysPart(std::string& out, CQtParamInstance const& parameters);

} // namespace paramdb::tools
