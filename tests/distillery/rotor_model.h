// A plain model of rotors and gears, against which the library is compared on random data.
#pragma once

#include <paramdb/platform/numeric/ratio.h>

#include <cstdint>
#include <map>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

struct RotorModel {
    using Pair = std::pair<int, int>;
    struct Speed {
        double ratio;
        int numerator;
        int denominator;
    };
    // Physical mode, speed source, rotor, serial number, order source.
    using Entry = std::tuple<int, int, int, int, int>;

    // The rows of the tables.
    std::map<int, int> physical_modes;
    std::map<Pair, int> gears;   // physical mode and gear
    std::map<Pair, int> sources; // order source and physical mode
    std::map<Pair, Speed> speeds;
    std::map<int, float> base_orders;
    std::map<int, float> diameters;
    std::map<Pair, int> speed_sources;
    std::map<Pair, int> speed_references;
    std::map<int, int> signals;
    std::map<Pair, int> channel_flags; // mode and channel

    int PhysicalMode(int mode) const;
    int PhysicalGear(int mode, int gear) const;
    int OrderSource2Rotor(int mode, int source) const;
    float BaseOrder(int mode, int gear) const;
    float GearDiameter(int mode, int gear) const;
    int RotorSpeedSource(int mode, int rotor, bool reference) const;
    int RotorSpeedSourceAppId(int mode, int rotor, bool reference) const;
    int SpeedInfoOfRotor(int mode, int rotor, bool reference) const;
    int RotorSpeedAppIdSource(int signal) const;
    double FrequencyRatio(int mode, int a, int b) const;
    double FrequencyRelativeToSource(int mode, int rotor, bool reference) const;
    numeric::CRatio RotorSpeedRatio(int mode, int a, int b) const;

    // The two derived tables, and the rotor and physical mode of each row that is left out.
    struct Derived {
        std::set<Entry> sources;
        std::set<Entry> references;
        std::vector<Pair> skipped;
    };
    Derived Derive() const;
    std::vector<Entry> OrderSources(Derived const& derived, int mode, int channel, int rotor,
                                    bool reference) const;

private:
    int DirectSource(int physical_mode, int rotor, bool reference) const;
    int GearOf(int physical_mode, int gear) const;
    int RotorOf(int physical_mode, int source) const;
    Speed const* SpeedOf(int mode, int rotor) const;
    numeric::CRatio RatioOf(int mode, int rotor) const;
};
