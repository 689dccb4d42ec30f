#include "tools/db/set_file.h"

#include <paramdb/tables/catalogue.h>

#include "tools/convert/conversion.h"
#include "tools/rewrite/file_bytes.h"
#include "tools/rewrite/safe_write.h"

#include <algorithm>
#include <ostream>

namespace paramdb::tools::db {
namespace {

constexpr std::size_t MostToldFaults = 10;

ParameterSet ParametersOf(ParamDb::CDbTableSet const& set) {
    ParameterSet parameters;
    auto const tables = Catalogue();
    for (std::size_t place = 0; place < tables.size(); ++place)
        if (auto const found = set.find(tables[place].tag); found != set.end())
            parameters.tables[place].assign(found->second.begin(), found->second.end());
    for (std::size_t part = 0; part < VersionNames.size(); ++part)
        if (auto const found = set.find(VersionNames[part].key); found != set.end() && !found->second.empty())
            parameters.version[part] = found->second.to_long();
    for (std::size_t text = 0; text < TextNames.size(); ++text)
        if (auto const found = set.find(TextNames[text].key); found != set.end() && !found->second.empty())
            parameters.texts[text] = ParamDb::CDbTable::to_wstring(found->second.front());
    return parameters;
}

// False if there are none.
bool TellFaults(std::string const& source, std::vector<std::string> const& faults, std::ostream& err) {
    for (std::size_t index = 0; index < std::min(faults.size(), MostToldFaults); ++index)
        err << "paramdb: " << ShownName(source) << ": " << faults[index] << '\n';
    if (faults.size() > MostToldFaults)
        err << "paramdb: " << ShownName(source) << ": and " << faults.size() - MostToldFaults << " more\n";
    return !faults.empty();
}

} // namespace

bool MayWriteSet(std::string const& target, bool may_replace, std::ostream& err) {
    auto const kind = KindOfName(target);
    if (!kind) {
        err << "paramdb: " << ShownName(target)
            << ": the name tells no kind of file: .lake, .sea, .json, or a folder for CSV\n";
        return false;
    }
    return *kind == FileKind::Csv ? MayWriteFolder(target, {}, may_replace, err)
                                  : MayWrite(target, {}, false, err);
}

std::optional<std::string> LakeOf(std::string const& source, ParamDb::CDbTableSet const& set,
                                  std::ostream& err) {
    std::vector<std::string> faults;
    FormContent content = WriteForm(FileKind::Lake, ParametersOf(set), faults);
    return TellFaults(source, faults, err) ? std::nullopt
                                           : std::optional(std::get<std::string>(std::move(content)));
}

bool WriteSet(std::string const& target, std::string const& source, ParamDb::CDbTableSet& set,
              std::ostream& err) {
    auto const kind = KindOfName(target);
    ReadResult const content{ParametersOf(set), {}, {}, ReadTables(set)};
    std::vector<std::string> faults;
    FormContent const result = WriteForm(*kind, content.parameters, faults);
    if (TellFaults(source, faults, err))
        return false;
    if (!ReadsAs(*kind, result, content)) {
        err << "paramdb: " << ShownName(target)
            << ": would not load as the revision does; nothing was written\n";
        return false;
    }
    return WriteContent(target, result, err);
}

} // namespace paramdb::tools::db
