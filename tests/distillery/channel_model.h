// Channel inheritance in its plainest form: each channel walks its own line of parents in each mode.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <cstddef>
#include <string>
#include <tests/support/messages.h>
#include <vector>

namespace derivation {

struct ChannelWalk {
    std::vector<std::wstring> rows; // as Rows() gives them
    std::vector<Message> messages;
    std::size_t longest_line = 0;
};

ChannelWalk WalkChannels(CParamTables const& tables);

/// Which channels random inheritance rows name: those of the channel table, others beside them, or parents
/// with a higher id alone, which make no cycle.
enum class ParentNames { All, Some, HigherOnly };

/// Fills the tables of modes, channels, properties and inheritance anew.
void FillChannelTables(CParamTables& tables, unsigned seed, ParentNames names);

} // namespace derivation
