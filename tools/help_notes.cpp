#include "tools/help_notes.h"

#include <algorithm>

namespace paramdb::tools {
namespace {

std::vector<std::string> Lines(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        std::size_t const end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

void AddParagraph(HelpNotes& notes, std::vector<std::string> lines) {
    if (lines.empty())
        return;
    std::string const title = lines.front();
    if (title == "Examples:" || title == "Example:") {
        for (auto line = lines.begin() + 1; line != lines.end(); ++line)
            notes.examples.push_back(line->substr(std::min(line->find_first_not_of(' '), line->size())));
    } else if (title == "Exit codes:") {
        notes.exit_codes.assign(lines.begin() + 1, lines.end());
    } else {
        notes.paragraphs.push_back(std::move(lines));
    }
}

} // namespace

HelpNotes ReadHelpNotes(std::string_view text) {
    HelpNotes notes;
    std::vector<std::string> paragraph;
    for (std::string const& line : Lines(text)) {
        if (!line.empty()) {
            paragraph.push_back(line);
            continue;
        }
        AddParagraph(notes, std::move(paragraph));
        paragraph.clear();
    }
    AddParagraph(notes, std::move(paragraph));
    return notes;
}

} // namespace paramdb::tools
