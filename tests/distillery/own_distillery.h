// A distillery of a test's own, filled row by row and built without a load.
#pragma once

#include <paramdb/query/param_instance.h>

class OwnDistillery {
public:
    CParamTables& tables() { return m_distillery.Tables(); }
    CParamTables const& tables() const { return m_distillery.Tables(); }
    CQtParamInstance& instance() { return m_instance; }
    CQtDerivedInfo const& derived() const { return m_distillery.DerivedInfo(); }

    bool Build() { return m_distillery.DerivedInfo().BuildDerivedInfo(); }
    void Clear() { m_distillery.PurgeTables(); }

    // A mode with its physical mode.
    void AddMode(int mode, wchar_t const* name, int physical_mode, unsigned int flags = 0) {
        tables().Mode.Add(mode, name);
        tables().ModeProperty.insert({mode, QVModeProps(physical_mode, flags, 0, 0)});
    }
    // A parameter of the grid of virtual modes, with its row in both tables.
    void AddParameter(int order, int signal, float start, float stop, float step, int state) {
        tables().AutoModeParamOrder.try_emplace(order, signal);
        AddParameterRow(signal, start, stop, step, state);
    }
    void AddParameterRow(int signal, float start, float stop, float step, int state) {
        QVAutoModeParams row;
        row.get<"start">() = start;
        row.get<"stop">() = stop;
        row.get<"step">() = step;
        row.get<"state">() = state;
        tables().AutoModeParam.try_emplace(signal, row);
    }
    void AddSignal(int signal, wchar_t const* unit, int unit_code = 1, int unit_prefix = 0) {
        tables().AppSignalProperty.insert({signal, QVAppSignalProperty(0, unit, 0, unit_code, unit_prefix)});
    }

private:
    CQtParamDistillery m_distillery;
    CQtParamInstance m_instance{&m_distillery};
};
