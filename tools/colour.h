// Colour in what the command prints, on a terminal that shows it.
//
//     out << Painted(Tone::Error, "error") << " P201 ...\n";
//
// Whether a stream shows colours is kept by the stream itself, so that those who write need not be told.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

namespace paramdb::tools {

// What is coloured, by its meaning.
enum class Tone {
    Error,
    Warning,
    Note,
    Mark, // the caret under a source line
    Added,
    Removed,
    Changed,
};

// A piece of text for a stream that may show colours; on one that does not the text stands alone. A line end
// behind the text stays behind the colour. Widths of the stream do not apply.
class Painted {
public:
    Painted(Tone tone, std::string_view text) : m_tone(tone), m_text(text) {}

private:
    friend std::ostream& operator<<(std::ostream& stream, Painted const& painted);

    Tone m_tone;
    std::string m_text;
};

std::ostream& operator<<(std::ostream& stream, Painted const& painted);

// Whether the stream shows colours; it does not unless it was told to.
bool IsColoured(std::ostream& stream);
void SetColoured(std::ostream& stream, bool is_coloured);

enum class ColourChoice { Auto, Always, Never };

// What a choice means for a stream, a terminal or not. Auto asks the variables NO_COLOR (no colour if it is
// there and not empty) and TERM ("dumb" shows none); both are null where they are missing.
bool WantsColour(ColourChoice choice, bool is_terminal, char const* no_color, char const* terminal_name);

} // namespace paramdb::tools
