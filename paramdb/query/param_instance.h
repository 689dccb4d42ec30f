// The query object: a handle onto the parameter data, through which a host loads it and asks it everything.
//
//     CParameterLake::Lake().read(L"gearbox.lake");
//     CQtParamInstance parameters;
//     if (!parameters.ReadTablesFromCandidateLake())
//         ...  // the reason has been given to PrWin::Output
//
// A handle has no state of its own and is copied freely. Queries are const and may run in several threads at
// once; a load, a clear or a purge must run alone.
#pragma once

#include <paramdb/distillery/param_distillery.h>

#include <string>

class CQtParamInstance {
public:
    // A handle onto this distillery, which is not owned; null stands for the one of the process.
    CQtParamInstance(CQtParamDistillery* distillery = nullptr);

    // Whether a load has gone through since the start or the last CQtParamServer::Clear. A failed load does
    // not lower it.
    bool Initialized() const { return m_distillery->Initialized(); }

    // The whole load, from the process-wide table set if that holds a table and else from the process-wide
    // lake. See CQtParamDistillery for what a failure leaves. Throws std::bad_variant_access if a version
    // cell of the table set holds no whole number.
    bool ReadTablesFromCandidateLake() { return m_distillery->ReadTablesFromCandidateLake(); }

    // Empties the tables and the named texts. The initialized flag and the derived information stay.
    void PurgeTables() { m_distillery->PurgeTables(); }

    // Outputs limit + 1 rows of each table at most, or all of them if the limit is 0 (category 8, style 1).
    void DumpTables(int limit) const { m_distillery->DumpTables(limit); }

    // Writes every table to its local sea, where it has one.
    void WriteTablesToLocalSeas() const { m_distillery->WriteTablesToLocalSeas(); }

    // Replaces the pieces of the names of virtual modes.
    void SetAutoModeNaming(CQtParamDistillery::AutoModeNaming const& naming);

    // Copies of the four named texts of the last load; empty before it and where its source had none.
    CString LearnFileName() const { return m_distillery->LearnFileName(); }
    CString CalibFileName() const { return m_distillery->CalibFileName(); }
    CString BaseType() const { return m_distillery->BaseType(); }
    CString AliasType() const { return m_distillery->AliasType(); }

    // The tables, each under the name of its tag without the leading T, unless the catalogue names it
    // otherwise. A family of tables is reached by instrument class: IpSvOfSpec().at(1001). Rows are valid
    // until the table is cleared or read again.
#define PARAMDB_NAME_TABLE(place, accessor, tag, key_column)                                                 \
    auto const& accessor() const {                                                                           \
        return m_distillery->Tables().accessor;                                                              \
    }
#define PARAMDB_TABLE(place, accessor, tag, container, key, row, key_columns, row_columns)                   \
    auto const& accessor() const {                                                                           \
        return m_distillery->Tables().accessor;                                                              \
    }
#define PARAMDB_CLASS_MAP(accessor, row)                                                                     \
    auto const& accessor() const {                                                                           \
        return m_distillery->Tables().accessor;                                                              \
    }
#include <paramdb/tables/catalogue.def>

    // All tables in the order of registration, with their descriptions and their rows whatever their classes.
    std::span<paramdb::CatalogueEntry const> Entries() const { return m_distillery->Entries(); }

    // Tables to which a host may add rows of its own.
    auto& AppSignalProperty() {
        return m_distillery->Tables().AppSignalProperty;
    }
    auto& ErrorCode() {
        return m_distillery->Tables().ErrorCode;
    }
    auto& SeverityProperty() {
        return m_distillery->Tables().SeverityProperty;
    }
    auto& SignalDispatch() {
        return m_distillery->Tables().SignalDispatch;
    }
    auto& TriggerParam() {
        return m_distillery->Tables().TriggerParam;
    }

    // The switch that makes names show their ids. It lives in the message sea; false while nobody has set it.
    static void ShowIdsInDialogs(bool show);
    static bool ShowIdsInDialogs();

    // The application signal that holds the time signal, as the last load found it; -1 before and for none.
    static int TimeSignalId() {
        return CQtParamDistillery::TimeSignalId();
    }

private:
    CQtParamDistillery* m_distillery;
};
