// The plain model: the way from a parameter file to ready tables as a competent programmer would write it the
// first time, with the standard library alone. It keeps the same lines, rows and derived structures as the
// library, in the containers that suggest themselves, and takes no trouble to be fast or slow.
//
//     PlainModel model;
//     model.ReadLake(path);
//     model.ReadTables();
//     model.Derive();
#pragma once

#include "model_lake.h"
#include "model_orders.h"
#include "model_tables.h"

#include <array>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <utility>

class CQtParamDistillery;

namespace benchmarks {

// What is derived from the tables.
struct ModelDerived {
    struct Point {
        float x;
        float y;
    };
    struct Entry {
        int area_interpretation;
        int source_parameter;
        int group;
    };
    using Interval = std::pair<ModelPosition, ModelPosition>;

    std::map<std::pair<int, int>, Point> groups;
    std::map<std::array<int, 6>, Entry> entries;
    std::map<std::pair<int, int>, std::pair<int, int>> channels; // mode, channel to last channel, flags
    std::map<std::pair<int, int>, Interval> intervals;           // parameter, index
    std::map<std::array<int, 4>, int> order_sources; // physical mode, source, rotor, serial number
    std::map<std::array<int, 4>, int> order_references;
    std::map<int, int> triggers;
    int extension_bits = 0;
    unsigned int extension_mask = 0;
    int time_signal = -1;
};

class PlainModel {
public:
    void ReadLake(std::filesystem::path const& path) { m_lake.Read(path); }
    // Fills the tables from the lake; false if its version is refused.
    bool ReadTables();
    // Derives and corrects the tables; false where the data cannot be used.
    bool Derive();

    ModelTables const& Tables() const { return m_tables; }
    ModelDerived const& Derived() const { return m_derived; }
    // Everything that the library would report.
    std::size_t Faults() const { return m_faults; }

private:
    template <class Table>
    void ReadTable(std::wstring const& tag, Table& table);
    std::wstring NamedText(std::wstring const& key) const;
    int Version(std::wstring const& key) const;

    bool SignalsAreCongruent() const;
    void DeriveGroups();
    void DeriveIntervals();
    void DeriveRotors();
    bool DeriveModes();
    void DeriveTriggers();
    bool Refine();
    template <class Table>
    void ConvertSpectra(Table& spectra);

    ModelLake m_lake;
    ModelTables m_tables = MakeModelTables();
    ModelDerived m_derived;
    std::array<std::wstring, 4> m_named_texts;
    std::size_t m_faults = 0;
};

// The same sum over all derived rows for the model and the library.
Digest DerivedDigest(ModelDerived const& derived);
Digest DerivedDigest(CQtParamDistillery const& distillery);

} // namespace benchmarks
