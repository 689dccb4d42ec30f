#include "tools/colour.h"

#include <ostream>

namespace paramdb::tools {
namespace {

int ColourPlace() {
    static int const place = std::ios_base::xalloc();
    return place;
}

// The parameters of the sequence that sets the colour: 1 is bold, 31 to 36 are the colours.
char const* Codes(Tone tone) {
    switch (tone) {
    case Tone::Error:
        return "1;31";
    case Tone::Warning:
        return "1;35";
    case Tone::Note:
        return "1;36";
    case Tone::Mark:
        return "1;32";
    case Tone::Added:
        return "32";
    case Tone::Removed:
        return "31";
    case Tone::Changed:
        return "33";
    }
    return "0";
}

} // namespace

std::ostream& operator<<(std::ostream& stream, Painted const& painted) {
    std::string_view text = painted.m_text;
    std::size_t const end = text.find_last_not_of('\n') + 1;
    if (!IsColoured(stream) || end == 0)
        return stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    stream << "\x1B[" << Codes(painted.m_tone) << 'm' << text.substr(0, end) << "\x1B[0m";
    return stream << text.substr(end);
}

bool IsColoured(std::ostream& stream) {
    return stream.iword(ColourPlace()) != 0;
}

void SetColoured(std::ostream& stream, bool is_coloured) {
    stream.iword(ColourPlace()) = is_coloured ? 1 : 0;
}

bool WantsColour(ColourChoice choice, bool is_terminal, char const* no_color, char const* terminal_name) {
    if (choice != ColourChoice::Auto)
        return choice == ColourChoice::Always;
    bool const is_refused = no_color != nullptr && *no_color != '\0';
    bool const is_dumb = terminal_name != nullptr && std::string_view(terminal_name) == "dumb";
    return is_terminal && !is_refused && !is_dumb;
}

} // namespace paramdb::tools
