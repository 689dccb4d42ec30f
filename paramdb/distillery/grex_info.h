// Polygons, and which of them judges what: the wildcard keys of <TIpTrackPolygon> expanded into the concrete
// keys of <TIpParamAndStore>.
#pragma once

#include <paramdb/keys/q_clavis.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/tables/unique_vector_map.h>

#include <span>
#include <utility>
#include <vector>

class CQtParamStore;

class PARAMDB_API CGrexInfo {
public:
    // A point of a polygon.
    struct group_element {
        float x;
        float y;
        friend bool operator==(group_element const&, group_element const&) = default;
    };
    // What holds for a concrete key.
    struct entry {
        int area_interpretation;
        int source_parameter;
        int group; // number of the polygon
        friend bool operator==(entry const&, entry const&) = default;
    };
    // Group number and element index to point.
    using group_map = CDbUniqueMap<std::pair<int, int>, group_element>;
    using expansion_map = CDbUniqueMap<QClavis, entry>;

    // The store must outlive this object.
    explicit CGrexInfo(CQtParamStore const& store) : m_store(&store) {}

    // Collects the polygons of <TIpPolygonValue>, adds one of two points for each match of a two-point
    // definition, and expands the wildcards. A second match of a key changes nothing and is reported
    // (category 8, style 1).
    void Init();

    // The points of a polygon in order; empty for a number that there is not.
    std::vector<group_element> Group(int number) const;
    // The entry of a concrete key, or null.
    entry const* Entry(QClavis const& key) const;

    group_map const& Groups() const { return m_groups; }
    expansion_map const& Entries() const { return m_entries; }

private:
    struct Match;

    void CollectPolygons();
    void Expand(std::vector<Match> const& matches, int& next_group);

    CQtParamStore const* m_store;
    expansion_map m_entries;
    group_map m_groups;
};
