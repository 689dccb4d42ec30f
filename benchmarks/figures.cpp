#include "figures.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <locale>
#include <stdexcept>

namespace benchmarks {
namespace {

std::string WithSeparators(std::size_t number) {
    std::string text = std::to_string(number);
    for (std::size_t position = text.size(); position > 3;) {
        position -= 3;
        text.insert(position, ",");
    }
    return text;
}

// Three digits that count, at least; large numbers in groups of three digits.
std::string NumberText(double number) {
    if (std::isnan(number))
        return "";
    if (number >= 1000)
        return WithSeparators(static_cast<std::size_t>(std::llround(number)));
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", number < 10 ? 2 : number < 100 ? 1 : 0, number);
    return text;
}

} // namespace

void Print(Figures const& figures) {
    std::vector<std::vector<std::string>> lines{{"work", figures.size_name}};
    lines.front().insert(lines.front().end(), figures.columns.begin(), figures.columns.end());
    for (Figure const& figure : figures.figures) {
        std::vector<std::string>& line = lines.emplace_back();
        line = {figure.work, WithSeparators(figure.size)};
        for (double const value : figure.values)
            line.push_back(NumberText(value));
    }
    std::vector<std::size_t> widths(lines.front().size(), 3);
    for (auto const& line : lines)
        for (std::size_t column = 0; column < line.size(); ++column)
            widths[column] = std::max(widths[column], line[column].size());

    std::printf("%s\n\n", figures.title.c_str());
    for (std::size_t line = 0; line < lines.size(); ++line) {
        for (std::size_t column = 0; column < widths.size(); ++column)
            std::printf(column == 0 ? "| %-*s " : "| %*s ", static_cast<int>(widths[column]),
                        lines[line][column].c_str());
        std::printf("|\n");
        for (std::size_t column = 0; line == 0 && column < widths.size(); ++column)
            std::printf("|%s%s", std::string(widths[column] + 1, '-').c_str(), column == 0 ? "-" : ":");
        if (line == 0)
            std::printf("|\n");
    }
    std::printf("\n");
}

void WriteJson(Figures const& figures, std::filesystem::path const& path) {
    std::ofstream file(path);
    file.imbue(std::locale::classic());
    file.precision(6);
    char const* separator = "[\n";
    for (Figure const& figure : figures.figures) {
        file << separator << "  {\"work\": \"" << figure.work << "\", \"" << figures.size_name
             << "\": " << figure.size;
        for (std::size_t column = 0; column < figure.values.size(); ++column)
            if (!std::isnan(figure.values[column]))
                file << ", \"" << figures.columns[column] << "\": " << figure.values[column];
        file << '}';
        separator = ",\n";
    }
    file << "\n]\n";
    if (!file.flush())
        throw std::runtime_error("cannot write " + path.string());
}

} // namespace benchmarks
