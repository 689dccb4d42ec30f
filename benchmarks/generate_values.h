// The keys and values of generated rows.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace benchmarks {

// A generator of random numbers whose sequence is the same with every standard library.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}

    std::uint64_t Next();
    // Below the limit, which must not be 0.
    std::uint64_t Below(std::uint64_t limit) { return Next() % limit; }
    // From low to high, both included.
    int Between(int low, int high);

private:
    std::uint64_t m_state;
};

// The keys of a table in their order, fields separated by tabs; several rows to a key where the table allows
// it.
class KeySequence {
public:
    explicit KeySequence(paramdb::TableDescription const& table) : m_table(&table) {}
    std::string Next();

private:
    paramdb::TableDescription const* m_table;
    std::size_t m_index = 0;
};

// A value that suits the type and the name of the column, as it stands in a line.
std::string RandomValue(paramdb::ColumnDescription const& column, Random& random);

} // namespace benchmarks
