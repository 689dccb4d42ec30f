#include "tools/diff/diff_words.h"

#include <paramdb/platform/core/utf8.h>

#include "tools/report.h"
#include "tools/short_number.h"
#include "tools/table_names.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <type_traits>

namespace paramdb::tools {
namespace {

std::string Quoted(std::wstring_view text) {
    return '"' + Printable(text) + '"';
}

std::string TableText(FieldValue const& value) {
    return std::visit(
        []<class T>(T const& field) -> std::string {
            if constexpr (std::is_same_v<T, std::wstring_view>)
                return Quoted(field);
            else if constexpr (std::is_floating_point_v<T>)
                return ShortNumber(field);
            else
                return std::to_string(field);
        },
        value);
}

std::string AnswerText(FieldValue const& value, ColumnMeaning const& meaning) {
    if (IsNothing(value, meaning))
        return "none";
    auto const* const text = std::get_if<std::wstring_view>(&value);
    return text != nullptr ? Printable(*text) : TableText(value);
}

// Shows the rows of one table.
class TableWords {
public:
    TableWords(Comparison const& comparison, TableDifference const& table, DifferencePart part)
        : m_comparison(comparison), m_table(table), m_columns(table.a->columns()), m_part(part) {
        bool const is_table = part == DifferencePart::Tables;
        std::wstring_view const tag = is_table ? Catalogue()[table.place].tag : L"";
        m_meanings = MeaningsOf(tag, m_columns);
        m_own_kind = is_table ? KindOf(Catalogue()[table.place]) : nullptr;
    }

    std::string Title() const {
        return m_part == DifferencePart::Tables ? TagOf(Catalogue()[m_table.place])
                                                : std::string(AnswerTopics()[m_table.place].title);
    }

    ShownFields Key(RowDifference const& row) const {
        ShownFields key;
        for (std::size_t column = 0; column < m_columns.key_columns; ++column) {
            key.push_back(
                {Name(column), row.change == RowChange::Removed ? InA(row, column) : InB(row, column)});
            ShownValue& value = key.back().value;
            if (m_meanings[column].kind != nullptr && m_meanings[column].kind == m_own_kind && ShowsName(row))
                value.name.clear();
            else if (value.name.empty() && row.change == RowChange::Changed)
                value.name = InA(row, column).name;
        }
        return key;
    }

    ShownFields Fields(RowDifference const& row) const {
        ShownFields fields;
        for (std::size_t column = m_columns.key_columns; column < m_columns.columns.size(); ++column)
            fields.push_back(
                {Name(column), row.change == RowChange::Removed ? InA(row, column) : InB(row, column)});
        return fields;
    }

    std::vector<ShownChange> Changes(RowDifference const& row) const {
        std::vector<ShownChange> changes;
        for (std::size_t column = m_columns.key_columns; column < m_columns.columns.size(); ++column)
            if (Differs(row, column))
                changes.push_back({Name(column), InA(row, column), InB(row, column)});
        return changes;
    }

private:
    static bool Differs(RowDifference const& row, std::size_t column) {
        return (row.columns >> column & 1U) != 0;
    }

    // Whether the name that belongs to the key stands among the fields.
    bool ShowsName(RowDifference const& row) const {
        if (row.change != RowChange::Changed)
            return true;
        auto const& columns = m_columns.columns;
        auto const text = std::ranges::find(columns, FieldType::Text, &ColumnDescription::type);
        return Differs(row, static_cast<std::size_t>(text - columns.begin()));
    }

    std::string_view Name(std::size_t column) const { return m_columns.columns[column].name; }
    ShownValue InA(RowDifference const& row, std::size_t column) const {
        return Shown(*m_comparison.a, m_table.a->Value(row.row_a, column), column);
    }
    ShownValue InB(RowDifference const& row, std::size_t column) const {
        return Shown(*m_comparison.b, m_table.b->Value(row.row_b, column), column);
    }
    ShownValue Shown(Snapshot const& snapshot, FieldValue const& value, std::size_t column) const {
        return {m_part == DifferencePart::Tables ? TableText(value) : AnswerText(value, m_meanings[column]),
                Printable(FromUtf8(NameBeside(snapshot, m_meanings[column], value)))};
    }

    Comparison const& m_comparison;
    TableDifference const& m_table;
    RowColumns const& m_columns;
    DifferencePart m_part;
    std::vector<ColumnMeaning> m_meanings;
    Kind const* m_own_kind;
};

// What two rows with the same change have in common.
std::string Likeness(std::vector<ShownChange> const& changes) {
    std::string text;
    for (ShownChange const& change : changes)
        for (std::string_view const part :
             {change.column, std::string_view(change.a.text), std::string_view(change.a.name),
              std::string_view(change.b.text), std::string_view(change.b.name)})
            text.append(part) += '\0';
    return text;
}

std::string Counted(std::size_t count, std::string_view one, std::string_view several) {
    return Grouped(count).append(" ").append(count == 1 ? one : several);
}

std::string Sentence(DifferenceCounts const& counts, CountPhrase const& changed, CountPhrase const& added,
                     CountPhrase const& removed) {
    std::string text;
    auto const add = [&text](std::size_t count, CountPhrase const& phrase) {
        if (count > 0)
            text.append(text.empty() ? "" : ", ").append(Counted(count, phrase.one, phrase.several));
    };
    add(counts.changed, changed);
    add(counts.added, added);
    add(counts.removed, removed);
    return text;
}

} // namespace

std::string NameBeside(Snapshot const& snapshot, ColumnMeaning const& meaning, FieldValue const& value) {
    auto const* const number = std::get_if<std::int32_t>(&value);
    if (number == nullptr)
        return "";
    if (meaning.setting != -1)
        return ToUtf8(SettingWord(meaning.setting, *number).value_or(L""));
    if (meaning.kind == nullptr || *number == -1)
        return "";
    return ToUtf8(snapshot.NameOf(*meaning.kind, *number).value_or(L""));
}

bool IsNothing(FieldValue const& value, ColumnMeaning const& meaning) {
    return std::visit(
        [&meaning]<class T>(T const& field) {
            if constexpr (std::is_same_v<T, std::wstring_view>)
                return field.empty();
            else if constexpr (std::is_floating_point_v<T>)
                return std::isnan(field);
            else
                return std::is_same_v<T, std::int32_t> && meaning.kind != nullptr &&
                       field == static_cast<T>(-1);
        },
        value);
}

ShownTable ShowTable(Comparison const& comparison, TableDifference const& table, DifferencePart part,
                     std::size_t limit) {
    TableWords const words(comparison, table, part);
    ShownTable result{words.Title(), {}, 0};
    std::size_t const shown = limit == 0 ? table.rows.size() : std::min(limit, table.rows.size());
    std::map<std::string, std::size_t> entries; // those of changed rows
    for (std::size_t place = 0; place < shown; ++place) {
        RowDifference const& row = table.rows[place];
        if (row.change != RowChange::Changed) {
            result.entries.push_back({row.change, {words.Key(row)}, words.Fields(row), {}});
            continue;
        }
        auto changes = words.Changes(row);
        auto const [entry, is_new] = entries.emplace(Likeness(changes), result.entries.size());
        if (is_new)
            result.entries.push_back({row.change, {words.Key(row)}, {}, std::move(changes)});
        else
            result.entries[entry->second].keys.push_back(words.Key(row));
    }
    result.left_out = table.rows.size() - shown;
    return result;
}

std::string HeaderName(HeaderDifference const& difference) {
    std::string name(difference.name);
    std::ranges::replace(name, '_', ' ');
    return name;
}

ShownValue HeaderValue(FieldValue const& value) {
    return {TableText(value), ""};
}

std::string Verdict(Comparison const& comparison) {
    std::string const all = Grouped(comparison.a->tables.size());
    if (comparison.IsEqual())
        return "No difference: " + all + " tables with " + Counted(comparison.a->RowCount(), "row", "rows");
    DifferenceCounts const rows = comparison.Rows();
    if (rows.All() == 0)
        return "No row differs, but what stands before the tables";
    std::string text = Counted(rows.All(), "row differs", "rows differ");
    text.append(" in ").append(Grouped(comparison.tables.size())).append(" of ").append(all);
    text += " tables: ";
    return text + Sentence(rows, {"changed", "changed"}, {"added", "added"}, {"removed", "removed"});
}

std::string TopicSentence(AnswerTopic const& topic, DifferenceCounts const& counts) {
    return Sentence(counts, topic.changed, topic.added, topic.removed);
}

std::string LimitSentence(DifferenceCounts const& counts) {
    return Sentence(counts, {"limit moves", "limits move"}, {"limit is new", "limits are new"},
                    {"limit is gone", "limits are gone"});
}

std::string WhyNoAnswers(Comparison const& comparison) {
    if (comparison.has_answers)
        return "";
    bool const both = !comparison.a->answers && !comparison.b->answers;
    std::string const which = both ? "A and B do" : comparison.a->answers ? "B does" : "A does";
    std::string const end = both ? "" : "; rows that a load corrects may differ for that alone";
    return "What follows from the tables is not compared, since " + which + " not load completely" + end;
}

} // namespace paramdb::tools
