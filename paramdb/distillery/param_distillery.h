// The distillery: the store, what is derived from it, and the load from source to ready.
#pragma once

#include <paramdb/distillery/auto_mode_naming.h>
#include <paramdb/distillery/derived_info.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/service/param_store.h>
#include <paramdb/tables/load_progress.h>

#include <memory>
#include <utility>

class PARAMDB_API CQtParamDistillery : public CQtParamStore {
public:
    using AutoModeNaming = CAutoModeNaming;

    CQtParamDistillery();

    // The whole load. False where the source is empty or refused, then nothing has changed; or where the new
    // data cannot be used, then tables and named texts hold it already. A failed load leaves the initialized
    // flag as it was. Faulty rows are reported and do not fail a load.
    bool ReadTablesFromCandidateLake();

    // The callback that a load tells how far it has come; none at first, and an empty one for none again.
    void SetLoadProgress(paramdb::LoadProgress progress) { m_progress = std::move(progress); }

    bool Initialized() const { return m_initialized; }
    void ClearInitialized() { m_initialized = false; }

    // The application signal that holds the time signal, as the last load found it; -1 before and for none.
    static int TimeSignalId() { return s_time_signal_id; }

    CQtDerivedInfo& DerivedInfo() { return *m_derived_info; }
    CQtDerivedInfo const& DerivedInfo() const { return *m_derived_info; }

private:
    // Whether the two signal tables hold the same ids.
    bool CheckIntegrity() const;
    int FindTimeSignal() const;
    bool RefineDatabaseTables();

    std::unique_ptr<CQtDerivedInfo> m_derived_info;
    paramdb::LoadProgress m_progress;
    bool m_initialized = false;
    static int s_time_signal_id;
};
