// The options of verbs that place spectral intervals: which mode, rotor and gear, which speed, which
// spectrum.
#pragma once

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace paramdb::tools {

struct DriveOptions {
    std::optional<int> mode = {};
    std::optional<int> rotor = {}; // whose turns orders count
    std::optional<int> gear = {};
    std::optional<float> speed = {};         // of the rotor, in Hz
    std::optional<float> line_distance = {}; // in Hz or orders, as the spectrum has them
};

// Adds --mode, --rotor, --gear, --speed, --rpm and --line-distance. The options are stored at `options`.
void AddDriveOptions(CLI::App& verb, DriveOptions& options);

// The number that a whole text is, such as "-1.5e3"; a comma is no point. None for any other text, for what
// is not finite and beyond float.
std::optional<float> FiniteNumber(std::string const& text);

} // namespace paramdb::tools
