#include "loading.h"

#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>

#include "input.h"

#include <string>

namespace fuzz {

bool HasVersion(std::string_view text) {
    return text.find("<DbDesign.CacheVersion>") != text.npos;
}

std::string WithVersion(std::string_view text) {
    std::string versioned =
        HasVersion(text) ? "" : "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n";
    return versioned += text;
}

void FillLake(std::string_view bytes) {
    ParamDb::CParameterTableSet::TableSet().clear();
    CParameterLake::Lake().clear();
    CParameterLake::Lake().read(ScratchFile("parameters.lake", bytes));
}

bool ReadAndDerive(CQtParamDistillery& distillery) {
    for (paramdb::CatalogueEntry const& entry : distillery.Entries())
        entry.table->ReadTable(CParameterLake::Lake());
    return distillery.DerivedInfo().BuildDerivedInfo();
}

} // namespace fuzz
