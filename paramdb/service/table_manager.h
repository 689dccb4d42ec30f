// The table manager: one operation on every table of the store, in the order of registration, and the version
// gate in front of every load.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/tables/table_interface.h>

#include <cstdint>
#include <vector>

class PARAMDB_API CQTableManager {
public:
    // The database version that the tables are made for: this major, and this minor or a later one.
    static constexpr std::int32_t RequiredMajor = 216;
    static constexpr std::int32_t RequiredMinor = 1;

    CQTableManager() { m_tables.reserve(100); }

    // Appends a table, which must outlive the manager. Returns the number of tables after it, so 1 for the
    // first.
    std::uint64_t RegisterTable(CQParamSeaTable& table);
    // The table at that place, counted from 0; null at or past the end.
    CQParamSeaTable const* Table(std::uint64_t index) const;

    // Reads all tables from the process-wide table set. False, before any table is touched, if the set is
    // empty (no message) or its version is refused (category 8, style 4). Throws std::bad_variant_access if a
    // version cell holds no whole number. Rows that fail are reported by their tables and change nothing
    // here.
    bool ReadTables();
    // The same from the process-wide lake; a lake without lines is an empty source.
    bool ReadTablesFromCandidateLake();

    void Clear();
    void PurgeTables();
    void DumpTables(int limit);
    // Writes every table to its own local sea, where it has one.
    void WriteTablesToLocalSeas();

private:
    std::vector<CQParamSeaTable*> m_tables;
};
