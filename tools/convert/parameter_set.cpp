#include "tools/convert/parameter_set.h"

#include "tools/rewrite/row_fields.h"

#include <algorithm>

namespace paramdb::tools {
namespace {

template <class Names>
std::optional<std::size_t> PlaceOf(Names const& names, std::wstring_view key) {
    for (std::size_t place = 0; place < names.size(); ++place)
        if (key == names[place].key)
            return place;
    return std::nullopt;
}

bool IsSameRow(ParamDb::row_t const& left, ParamDb::row_t const& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), IsSameCell);
}

} // namespace

std::optional<std::size_t> VersionOfKey(std::wstring_view key) {
    return PlaceOf(VersionNames, key);
}

std::optional<std::size_t> TextOfKey(std::wstring_view key) {
    return PlaceOf(TextNames, key);
}

std::size_t ParameterSet::RowCount() const {
    std::size_t count = 0;
    for (auto const& [place, rows] : tables)
        count += rows.size();
    return count;
}

bool ParameterSet::operator==(ParameterSet const& other) const {
    return version == other.version && texts == other.texts &&
           std::equal(tables.begin(), tables.end(), other.tables.begin(), other.tables.end(),
                      [](auto const& left, auto const& right) {
                          return left.first == right.first &&
                                 std::equal(left.second.begin(), left.second.end(), right.second.begin(),
                                            right.second.end(), IsSameRow);
                      });
}

ParamDb::CDbTableSet TableSetOf(ParameterSet const& parameters) {
    ParamDb::CDbTableSet set;
    for (std::size_t part = 0; part < VersionNames.size(); ++part)
        if (parameters.version[part])
            set[VersionNames[part].key].push_back({*parameters.version[part]});
    for (std::size_t text = 0; text < TextNames.size(); ++text)
        if (parameters.texts[text])
            set[TextNames[text].key].push_back({*parameters.texts[text]});
    for (auto const& [place, rows] : parameters.tables) {
        ParamDb::CDbTable& table = set[Catalogue()[place].tag];
        for (ParamDb::row_t const& row : rows)
            table.push_back(row);
    }
    return set;
}

} // namespace paramdb::tools
