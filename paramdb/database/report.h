// The messages of an operation on a database.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace paramdb::database {

class Report {
public:
    // What the messages begin with, and what they say failed: "Import from 'sqlite3:bench.db'".
    Report(std::wstring function, std::string operation)
        : m_function(std::move(function)), m_operation(std::move(operation)) {}

    void Note(std::string const& text);   // style 1
    void Fault(std::string const& text);  // style 3
    void Fail(std::string const& reason); // style 4

    std::size_t faults() const { return m_faults; }

private:
    void Output(int style, std::string const& text) const;

    std::wstring m_function;
    std::string m_operation;
    std::size_t m_faults = 0;
};

// "table 'TMode', column 'name', key '5': ", as far as they are told.
std::string PlaceText(std::string_view table, std::string_view column = {}, std::string_view key = {});

// "1 row", "2 rows"
std::string Count(std::size_t number, std::string_view one);

} // namespace paramdb::database
