// Proofs that a text reads as it is meant to, by the library's own reading.
//
// Nothing here touches what is process-wide but the message sink, which is borrowed while tables are read.
#pragma once

#include <paramdb/platform/sea/resource_sea.h>
#include <paramdb/storage/db_table_set.h>
#include <paramdb/storage/lake.h>

#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools {

// Makes the lake hold the lines of these bytes, as if they had been read from a file.
void FillLake(CLake& lake, std::string_view bytes);

// Whether every lookup finds the same in both: the same keys with the same values, and the same lines without
// key in the same order, in every section. What no lookup reaches may differ.
bool IsSameTree(CLake const& left, CLake const& right);

// What all tables hold after they were read from one source.
struct TableContents {
    std::vector<std::string> rows;      // of each table of the catalogue, all fields to the bit
    std::vector<std::wstring> messages; // that the reading gave

    bool operator==(TableContents const&) const = default;
};

TableContents ReadTables(CLake& lake);
TableContents ReadTables(ParamDb::CDbTableSet& set);
TableContents ReadTables(CResourceSea& sea);

} // namespace paramdb::tools
