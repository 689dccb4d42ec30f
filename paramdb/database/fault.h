// What went wrong at a database. Stays inside this library: its functions turn it into messages.
#pragma once

#include <stdexcept>
#include <string>

namespace paramdb::database {

enum class FaultKind {
    Away,     // cannot be reached, or gave no answer in time; a local copy may help
    Conflict, // another writer came first; trying again helps
    Other,
};

// The text is UTF-8 and has no end of line.
class DatabaseFault : public std::runtime_error {
public:
    DatabaseFault(FaultKind kind, std::string const& text) : std::runtime_error(text), m_kind(kind) {}

    FaultKind kind() const { return m_kind; }

private:
    FaultKind m_kind;
};

} // namespace paramdb::database
