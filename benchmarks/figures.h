// What a benchmark has found: a table for people and a JSON file for programs.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace benchmarks {

struct Figure {
    std::string work;
    std::size_t size;           // rows or lines
    std::vector<double> values; // one for each column; NaN where there is none
};

struct Figures {
    std::string title;
    std::string size_name; // "rows" or "lines"
    std::vector<std::string> columns;
    std::vector<Figure> figures = {};
};

// Prints the figures to standard output as a table in Markdown.
void Print(Figures const& figures);
// An array with an object for each figure: "work", the size, and each value under the name of its column.
void WriteJson(Figures const& figures, std::filesystem::path const& path);

} // namespace benchmarks
