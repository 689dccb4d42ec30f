// What is derived from the tables once per load, so that queries need not search.
#pragma once

#include <paramdb/distillery/auto_mode_naming.h>

class CQtParamStore;

class CQtDerivedInfo {
public:
    // The store must outlive this object.
    explicit CQtDerivedInfo(CQtParamStore& store) : m_store(&store) {}

    // Rebuilds everything from the tables. False ends the load.
    bool BuildDerivedInfo();

    CAutoModeNaming const& Naming() const { return m_naming; }
    void SetNaming(CAutoModeNaming const& naming) { m_naming = naming; }

private:
    CQtParamStore* m_store;
    CAutoModeNaming m_naming;
};
