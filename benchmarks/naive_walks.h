// Two steps of the derivation as plain loops that say what they mean, over the tables of the library or over
// those of the plain model.
#pragma once

#include <array>
#include <cstddef>
#include <utility>

namespace benchmarks {

// Whether a pattern, in which -1 stands for any value, fits a concrete key.
template <class Key>
bool FitsPattern(Key const& pattern, Key const& key) {
    for (std::size_t element = 0; element < 6; ++element)
        if (pattern[element] != -1 && pattern[element] != key[element])
            return false;
    return true;
}

// Every concrete key against every row with wildcards. Adds to the polygons and fills the entries, which are
// maps; `next_group` is the first free number of a polygon. Calls `report` for each ambiguous match.
template <class Tables, class Groups, class Entries, class Report>
void ExpandByLoops(Tables const& tables, int next_group, Groups& groups, Entries& entries,
                   Report const& report) {
    using Point = typename Groups::mapped_type;
    for (auto const& [key, stored] : tables.IpParamAndStore)
        for (auto const& [pattern, row] : tables.IpTrackPolygon) {
            if (!FitsPattern(pattern, key))
                continue;
            typename Entries::mapped_type entry{row.template get<"area_interpretation">(),
                                                row.template get<"source_parameter">(),
                                                row.template get<"polygon">()};
            if (row.template get<"polygon_mode">() == 1) {
                float const offset = row.template get<"offset">();
                entry.group = next_group++;
                groups.insert({{entry.group, 0},
                               Point{row.template get<"x_start">(), row.template get<"y_start">() + offset}});
                groups.insert({{entry.group, 1},
                               Point{row.template get<"x_end">(), row.template get<"y_end">() + offset}});
            }
            if (!entries.insert({key, entry}).second)
                report();
        }
}

// The parent of a channel: the row for that mode, else the row for any mode, else -1.
template <class Tables>
int ParentChannel(Tables const& tables, int mode, int channel) {
    auto row = tables.ChannelInheritance.find({channel, mode});
    if (row == tables.ChannelInheritance.end())
        row = tables.ChannelInheritance.find({channel, -1});
    return row != tables.ChannelInheritance.end() ? row->second.template get<"referred_id">() : -1;
}

// Each channel walks its own line of parents in each mode. The results are a map from mode and channel to
// last channel and flags.
template <class Tables, class Results>
void WalkChannelsByLoops(Tables const& tables, Results& results) {
    using Key = typename Results::key_type;
    using Result = typename Results::mapped_type;
    for (auto const& [mode, mode_name] : tables.Mode)
        for (auto const& [channel, channel_name] : tables.Channel) {
            unsigned int flags = 0;
            int last = channel[0];
            for (int current = last; current != -1; current = ParentChannel(tables, mode[0], current)) {
                auto const property = tables.ChannelProperty.find({current});
                if (property != tables.ChannelProperty.end())
                    flags |= property->second.template get<"flags">();
                last = current;
            }
            results.insert_or_assign(Key(mode[0], channel[0]), Result(last, static_cast<int>(flags)));
        }
}

} // namespace benchmarks
