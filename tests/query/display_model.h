// A model of the lines that settings show: it renders them from the lines of a lake, by columns.
#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

namespace display_model {

using Fields = std::vector<std::string>;

// What a class shows, told by columns of the text lines, the key being column 0: label, kind, column, base.
// Kinds: t trigger, l location, i instrument, p parameter, o instrument of that parameter, e word at the
// base, f word 300, v value as it stands, r real number, a accumulation, c learn procedure, A accumulation
// that a load has converted.
struct Shown {
    int label;
    char kind;
    std::size_t column;
    int base = 0;
};
struct Layout {
    std::string tag;
    std::string columns; // n number, r real number, s text
    std::vector<Shown> lines;
};

// The classes with a table of their own.
std::map<int, Layout> const& Layouts();

// A lake as lists of lines; texts are of one word without quotes.
class TextLake {
public:
    void Add(std::string const& tag, std::string const& line) { m_sections[tag].push_back(line); }

    std::string Text() const;
    // The fields of the first line of that number, none without one.
    Fields Row(std::string const& tag, int number) const;
    // All lines of a section by their key of six numbers, the first of each.
    std::map<std::array<int, 6>, Fields> Keyed(std::string const& tag) const;

private:
    std::map<std::string, std::vector<std::string>> m_sections;
};

// Renders a parameter from the lines of the lake, in English and in Latin-1.
class Model {
public:
    explicit Model(TextLake const& lake) : m_lake(lake) {}

    // Throws std::out_of_range for the class that is looked for in the wrong family.
    std::string Display(int parameter, std::string const& prefix, std::string const& suffix) const;

private:
    std::vector<std::string> Lines(int parameter) const;
    std::vector<std::string> PolygonLines(int parameter) const;
    std::string Line(Shown const& shown, Fields const& row) const;
    std::string Value(Shown const& shown, std::string const& field, Fields const& row) const;
    std::string Name(std::string const& tag, int number, std::size_t column) const;
    std::string Instrument(std::string const& id) const;

    TextLake const& m_lake;
};

} // namespace display_model
