// The store: the parameter data as it was read.
//
// It owns the tables, the four named texts and the table manager that applies one operation to all tables.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/cstring.h>
#include <paramdb/service/table_manager.h>
#include <paramdb/tables/catalogue.h>

#include <memory>
#include <string>

class PARAMDB_API CQtParamStore {
public:
    CQtParamStore();
    CQtParamStore(CQtParamStore const&) = delete;
    CQtParamStore& operator=(CQtParamStore const&) = delete;
    ~CQtParamStore() = default;

    // Reads the tables and the named texts from the process-wide table set if that holds a table, and else
    // from the process-wide lake. False, with everything left as it was, if the source is empty (no message)
    // or its version is refused (category 8, style 4).
    bool ReadTablesFromCandidateLake();

    // Empties all tables and makes them forget their local seas; the named texts stay.
    void Clear();
    // Empties all tables and the named texts.
    void PurgeTables();
    // Outputs limit + 1 rows of each table at most, or all of them if the limit is 0.
    void DumpTables(int limit) const;
    // Writes every table to its local sea, where it has one.
    void WriteTablesToLocalSeas() const;

    CString const& LearnFileName() const { return m_learn_file_name; }
    CString const& CalibFileName() const { return m_calib_file_name; }
    CString const& BaseType() const { return m_base_type; }
    CString const& AliasType() const { return m_alias_type; }

    CParamTables& Tables() { return m_tables; }
    CParamTables const& Tables() const { return m_tables; }
    // The tables in the order of registration, with their descriptions.
    std::span<paramdb::CatalogueEntry const> Entries() const { return m_entries; }

private:
    template <class Source>
    void ReadNamedTexts(Source& source);

    CParamTables m_tables;
    std::vector<paramdb::CatalogueEntry> m_entries;
    CString m_learn_file_name;
    CString m_calib_file_name;
    CString m_base_type;
    CString m_alias_type;
    std::unique_ptr<CQTableManager> m_manager;
};
