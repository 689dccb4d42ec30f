// The store: the parameter data as it was read.
//
// It owns the tables, the four named texts and the table manager that applies one operation to all tables.
#pragma once

#include <paramdb/service/table_manager.h>

#include <memory>
#include <string>

class CQtParamStore {
public:
    CQtParamStore();
    CQtParamStore(CQtParamStore const&) = delete;
    CQtParamStore& operator=(CQtParamStore const&) = delete;
    ~CQtParamStore() = default;

    // Reads the tables and the named texts from the process-wide table set if that holds a table, and else from the
    // process-wide lake. False, with everything left as it was, if the source is empty (no message) or its version
    // is refused (category 8, style 4).
    bool ReadTablesFromCandidateLake();

    // Empties all tables and makes them forget their local seas; the named texts stay.
    void Clear();
    // Empties all tables and the named texts.
    void PurgeTables();
    // Outputs limit + 1 rows of each table at most, or all of them if the limit is 0.
    void DumpTables(int limit) const;
    // Writes every table to its local sea, where it has one.
    void WriteTablesToLocalSeas() const;

    std::wstring const& LearnFileName() const { return m_learn_file_name; }
    std::wstring const& CalibFileName() const { return m_calib_file_name; }
    std::wstring const& BaseType() const { return m_base_type; }
    std::wstring const& AliasType() const { return m_alias_type; }

private:
    template <class Source> void ReadNamedTexts(Source& source);

    std::wstring m_learn_file_name;
    std::wstring m_calib_file_name;
    std::wstring m_base_type;
    std::wstring m_alias_type;
    std::unique_ptr<CQTableManager> m_manager;
};
