// Parameter files that are the same on every machine: random rows for all tables, from a seed.
//
// Numbers of ids are few, so that rows refer to one another and most queries find something. Some fields
// cannot be read, some rows are short, some numbers stand at the limits of their types.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>
#include <string>

namespace equality {

// The engine and nothing else of the standard library: its distributions differ from library to library.
class Random {
public:
    explicit Random(std::uint32_t seed) : m_engine(seed) {}

    std::uint32_t Bits() { return static_cast<std::uint32_t>(m_engine()); }
    int Between(int low, int high) {
        return low + static_cast<int>(Bits() % (static_cast<std::uint32_t>(high - low) + 1));
    }
    bool OneIn(int count) { return Between(1, count) == 1; }
    template <class Values>
    auto Pick(Values const& values) {
        return values[Bits() % std::size(values)];
    }

private:
    std::mt19937 m_engine;
};

// Ids in rows go from -1 up to this one.
inline constexpr int HighestId = 11;
inline constexpr int HighestParameter = 39;

int RandomInstrument(Random& random);
// An order definition, now and then a bad one.
std::string RandomDefinition(Random& random);
// A number with a point, an exponent, both or neither, of any size, positive or negative.
std::string RandomReal(Random& random);
// A field as a row of a file has it: mostly one that the column takes.
std::string RandomField(paramdb::ColumnDescription const& column, Random& random);
// A row of a table, now and then a short one.
std::string RandomRow(paramdb::TableDescription const& table, Random& random);
// The bytes of a lake.
std::string RandomLake(Random& random);

} // namespace equality
