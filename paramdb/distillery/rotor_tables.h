// Lookups over the tables of rotors and gears.
//
// The tables are keyed by physical mode, which is never reduced here; -1 stands for none everywhere. Every
// relation is one step in one table, so data that runs in circles does no harm.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/numeric/ratio.h>
#include <paramdb/tables/system_rows.h>

class CQtParamStore;

class PARAMDB_API CQtRotorTables {
public:
    // The store must outlive this object.
    explicit CQtRotorTables(CQtParamStore const& store) : m_store(&store) {}

    // The physical gear behind a gear; the gear itself without a row; -1 for an argument of -1.
    int PhysicalGear(int physical_mode, int gear) const;
    // The rotor of an order source; the source itself without a row; -1 for an argument of -1.
    int Rotor(int physical_mode, int source) const;
    // The base order or diameter of a physical gear; 0 without a row.
    float BaseOrder(int physical_gear) const;
    float GearDiameter(int physical_gear) const;
    bool HasBaseOrder(int physical_gear) const;

    // The speed source of a rotor as the tables have it. The source wins; the reference is looked at on
    // request.
    int SpeedSource(int physical_mode, int rotor, bool reference) const;
    // The signal of a speed source, and the first speed source of a signal; -1 on a miss.
    int SpeedSourceSignal(int speed_source) const;
    int SpeedSourceOfSignal(int signal) const;

    // The speed of a rotor or gear; 0.0 without a row.
    double Speed(int physical_mode, int rotor) const;
    // The same as a ratio: the fraction of the row, or its number where the denominator is 0.
    numeric::CRatio SpeedRatio(int physical_mode, int rotor) const;

private:
    QVRotorSpeeds const* SpeedRow(int physical_mode, int rotor) const;

    CQtParamStore const* m_store;
};
