#include "tools/diff/comparison.h"

#include <algorithm>
#include <iterator>

namespace paramdb::tools {
namespace {

constexpr std::wstring_view LimitTables[] = {L"<TLimSValue>", L"<TLimCValue>", L"<TLimArea>",
                                             L"<TRelativeLimit>"};

std::vector<HeaderDifference> CompareHeaders(Snapshot const& a, Snapshot const& b) {
    HeaderDifference const all[] = {
        {"major_version", a.major, b.major},
        {"minor_version", a.minor, b.minor},
        {"learn_file", a.texts.learn_file, b.texts.learn_file},
        {"calib_file", a.texts.calib_file, b.texts.calib_file},
        {"base_type", a.texts.base_type, b.texts.base_type},
        {"alias_type", a.texts.alias_type, b.texts.alias_type},
    };
    std::vector<HeaderDifference> result;
    std::copy_if(std::begin(all), std::end(all), std::back_inserter(result),
                 [](HeaderDifference const& entry) { return entry.a != entry.b; });
    return result;
}

void AddIfDifferent(std::vector<TableDifference>& list, TableDifference difference) {
    difference.counts = CountsOf(difference.rows);
    if (!difference.rows.empty())
        list.push_back(std::move(difference));
}

} // namespace

DifferenceCounts Comparison::Rows() const {
    DifferenceCounts counts;
    for (TableDifference const& table : tables)
        counts += table.counts;
    return counts;
}

DifferenceCounts Comparison::Limits() const {
    DifferenceCounts counts;
    for (TableDifference const& table : tables)
        if (std::ranges::count(LimitTables, std::wstring_view(Catalogue()[table.place].tag)) > 0)
            counts += table.counts;
    return counts;
}

Comparison Compare(Snapshot const& a, Snapshot const& b) {
    Comparison result{&a, &b, CompareHeaders(a, b), {}, {}, a.answers && b.answers};
    for (std::size_t place = 0; place < a.tables.size(); ++place)
        AddIfDifferent(
            result.tables,
            {place, &a.tables[place], &b.tables[place], CompareTables(a.tables[place], b.tables[place]), {}});
    if (!result.has_answers)
        return result;
    for (std::size_t place = 0; place < AnswerTopics().size(); ++place) {
        RowTable const& left = (*a.answers)[place];
        RowTable const& right = (*b.answers)[place];
        auto rows = CompareTables(left, right);
        if (AnswerTopics()[place].HasOnlyChanges())
            std::erase_if(rows, [](RowDifference const& row) { return row.change != RowChange::Changed; });
        AddIfDifferent(result.answers, {place, &left, &right, std::move(rows), {}});
    }
    return result;
}

} // namespace paramdb::tools
