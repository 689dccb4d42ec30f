#include "tools/drive_options.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <cmath>

namespace paramdb::tools {
namespace {

std::string FaultOf(std::string const& text) {
    return FiniteNumber(text) ? "" : text + " is no number";
}

// An option for a number, which is divided before it is stored.
CLI::Option* AddNumber(CLI::App& verb, std::string const& name, std::optional<float>& number, double divisor,
                       std::string const& help) {
    return verb
        .add_option_function<std::string>(
            name,
            [&number, divisor](std::string const& text) {
                number = static_cast<float>(double{FiniteNumber(text).value_or(0)} / divisor);
            },
            help)
        ->check(FaultOf);
}

} // namespace

void AddDriveOptions(CLI::App& verb, DriveOptions& options) {
    verb.add_option("-m,--mode", options.mode, "The drive train in this mode")->type_name("ID");
    verb.add_option("-r,--rotor", options.rotor, "The rotor whose turns orders count")->type_name("ID");
    verb.add_option("-g,--gear", options.gear, "The gear that H and M refer to")->type_name("ID");
    auto* const speed =
        AddNumber(verb, "-s,--speed", options.speed, 1, "The speed of the rotor")->type_name("HZ");
    AddNumber(verb, "--rpm", options.speed, 60, "The same in turns per minute")
        ->type_name("RPM")
        ->excludes(speed);
    AddNumber(verb, "-d,--line-distance", options.line_distance, 1,
              "Between two lines of the spectrum, in Hz or in orders")
        ->type_name("HZ");
}

std::optional<float> FiniteNumber(std::string const& text) {
    float number = 0;
    char const* const last = text.data() + text.size();
    auto const [end, fault] = std::from_chars(text.data(), last, number);
    bool const is_number = fault == std::errc() && end == last && std::isfinite(number);
    return is_number ? std::optional(number) : std::nullopt;
}

} // namespace paramdb::tools
