#include "tools/manual.h"

#include <paramdb/platform/core/utf8.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace paramdb::tools {
namespace {

constexpr char Surroundings[] = R"(.SH ENVIRONMENT
.TP
.B NO_COLOR
If it is there and not empty, colours are used with
.B \-\-color=always
alone.
.TP
.B TERM
A terminal named
.I dumb
gets no colours.
.TP
.BR LC_ALL ", " LC_MESSAGES ", " LANG
The first that is there chooses the language of words in answers, where
.B \-\-lang
does not.
)";

// The code units U+D83D U+DE00 are one character.
char32_t TakeCharacter(std::wstring_view& text) {
    auto const first = static_cast<char32_t>(text.front());
    text.remove_prefix(1);
    if (first < 0xD800 || first > 0xDBFF || text.empty())
        return first;
    auto const second = static_cast<char32_t>(text.front());
    if (second < 0xDC00 || second > 0xDFFF)
        return first;
    text.remove_prefix(1);
    return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
}

// A text that shows each character as it is.
std::string Plain(std::string const& text) {
    std::wstring const wide = FromUtf8(text);
    std::string plain;
    for (std::wstring_view rest = wide; !rest.empty();) {
        char32_t const character = TakeCharacter(rest);
        switch (character) {
        case U'\\':
            plain += "\\e";
            break;
        case U'-':
            plain += "\\-";
            break;
        case U'\'':
            plain += "\\(aq";
            break;
        case U'`':
            plain += "\\(ga";
            break;
        case U'^':
            plain += "\\(ha";
            break;
        case U'~':
            plain += "\\(ti";
            break;
        case U'"':
            plain += "\\(dq";
            break;
        case U'\n':
            plain += ' ';
            break;
        default:
            if (character < 0x80) {
                plain += static_cast<char>(character);
            } else {
                std::array<char, 8> digits{};
                auto* const end =
                    std::to_chars(digits.data(), digits.data() + digits.size(), std::uint32_t{character}, 16)
                        .ptr;
                std::string number(digits.data(), end);
                for (char& digit : number)
                    if (digit >= 'a')
                        digit = static_cast<char>(digit - 'a' + 'A');
                plain += "\\[u" + std::string(number.size() < 4 ? 4 - number.size() : 0, '0') + number + ']';
            }
        }
    }
    return plain;
}

// A line of text; a point at its begin would make it a request.
std::string Line(std::string const& text) {
    std::string const plain = Plain(text);
    return (plain.starts_with('.') ? "\\&" + plain : plain) + '\n';
}

// Lines that stay as they are.
std::string Verbatim(std::vector<std::string> const& lines) {
    std::string page = ".RS\n.nf\n";
    for (std::string const& line : lines)
        page += Line(line);
    return page + ".fi\n.RE\n";
}

// Lines that begin with a blank stay as they are, the others are one text.
std::string Paragraph(std::vector<std::string> const& lines) {
    std::string page = ".PP\n";
    for (auto line = lines.begin(); line != lines.end();) {
        if (!line->starts_with(' ')) {
            page += Line(*line++);
            continue;
        }
        std::vector<std::string> block;
        for (; line != lines.end() && line->starts_with(' '); ++line)
            block.push_back(line->substr(std::min<std::size_t>(2, line->find_first_not_of(' '))));
        page += Verbatim(block);
    }
    return page;
}

std::string Sentence(std::string const& text) {
    return Line(text.ends_with('.') ? text : text + '.');
}

std::string WordText(CommandOption const& word) {
    return ".TP\n\\fI" + Plain(word.names[0]) + "\\fR\n" + Sentence(word.help);
}

std::string OptionText(CommandOption const& option) {
    std::string names;
    for (std::string const& name : option.names)
        names += (names.empty() ? "\\fB" : ", \\fB") + Plain(name) + "\\fR";
    if (!option.is_flag)
        names += " \\fI" + Plain(option.label.empty() ? "VALUE" : option.label) + "\\fR";
    std::string text = ".TP\n" + names + '\n' + Sentence(option.help);
    constexpr std::size_t most = 20; // names of tables are told elsewhere
    if (!option.values.empty() && option.values.size() < most)
        text += Line("One of " + Joined(option.values, ", ") + '.');
    if (option.is_repeated)
        text += "May be given more than once.\n";
    return text;
}

std::string Examples(std::vector<std::string> const& examples) {
    return examples.empty() ? "" : ".PP\nExamples:\n" + Verbatim(examples);
}

std::string VerbText(CommandNode const& node) {
    std::string page = ".SS " + Plain("paramdb " + node.path) + '\n';
    for (std::string const& usage : node.usage)
        page += (&usage == node.usage.data() ? "" : ".br\n") + ("\\fB" + Plain(usage)) + "\\fR\n";
    page += ".PP\n" + Sentence(node.about);
    for (CommandOption const& word : node.words)
        page += WordText(word);
    for (CommandOption const& option : node.options)
        if (option.names.back() != "--help")
            page += OptionText(option);
    for (auto const& paragraph : node.notes.paragraphs)
        page += Paragraph(paragraph);
    page += Examples(node.notes.examples);
    if (!node.notes.exit_codes.empty())
        page += ".PP\nExit codes:\n" + Paragraph(node.notes.exit_codes).substr(4);
    return page;
}

} // namespace

std::string ManualPage(CommandNode const& command, std::string const& version) {
    std::string page = ".TH PARAMDB 1 \"\" \"" + Plain(version) + "\" \"User Commands\"\n.ad l\n.nh\n";
    page += ".SH NAME\nparamdb \\- parameter files of the test bench\n.SH SYNOPSIS\n";
    page +=
        "\\fBparamdb\\fR [\\fIOPTIONS\\fR] \\fISUBCOMMAND\\fR ...\n.SH DESCRIPTION\n" + Line(command.about);
    for (auto const& paragraph : command.notes.paragraphs)
        page += Paragraph(paragraph);
    page += ".SH OPTIONS\n";
    for (CommandOption const& option : command.options)
        page += OptionText(option);
    page += ".SH SUBCOMMANDS\n";
    for (CommandNode const* node : AllNodes(command))
        if (node != &command)
            page += VerbText(*node);
    page += ".SH EXIT STATUS\n" + Paragraph(command.notes.exit_codes).substr(4);
    return page + Surroundings;
}

} // namespace paramdb::tools
