#include "tools/check/known_ids.h"

#include "tools/nearest_names.h"

#include <algorithm>
#include <span>

namespace paramdb::tools::check {
namespace {

constexpr std::wstring_view IncongruentSignals = L"CQtParamDistillery::CheckIntegrity(): ";

// The column of the first text behind the key; the number of columns if there is none.
std::size_t NameColumn(TableDescription const& table) {
    auto const& columns = table.row_columns;
    auto const text = std::find_if(columns.begin(), columns.end(), [](ColumnDescription const& column) {
        return column.type == FieldType::Text;
    });
    return table.key_columns.size() + static_cast<std::size_t>(text - columns.begin());
}

bool HasNames(TableDescription const& table) {
    return NameColumn(table) < table.key_columns.size() + table.row_columns.size();
}

// The first one that is not below the id.
auto Above(std::vector<NamedId> const& rows, int id) {
    return std::lower_bound(rows.begin(), rows.end(), id,
                            [](NamedId const& row, int wanted) { return row.id < wanted; });
}

} // namespace

IdTable::IdTable(CheckContext const& context, CheckedTable const& table, std::string_view names)
    : m_context(&context), m_table(&table), m_tag(table.Tag()), m_names(names) {
    m_ids.reserve(table.RowCount());
    table.VisitRows([this](CheckedRow const& row) {
        int const id = static_cast<int>(row.Integer(0));
        if (m_ids.empty() || m_ids.back() != id)
            m_ids.push_back(id);
    });
    constexpr std::size_t most_bits_for_each = 2048;
    if (m_ids.empty())
        return;
    auto const range = static_cast<std::size_t>(std::int64_t{m_ids.back()} - m_ids.front()) + 1;
    if (range / most_bits_for_each > m_ids.size())
        return;
    m_is_there.resize(range);
    for (int const id : m_ids)
        m_is_there[static_cast<std::size_t>(std::int64_t{id} - m_ids.front())] = true;
}

bool IdTable::Contains(std::int64_t id) const {
    if (m_is_there.empty())
        return std::binary_search(m_ids.begin(), m_ids.end(), id);
    return id >= m_ids.front() && id <= m_ids.back() &&
           m_is_there[static_cast<std::size_t>(id - m_ids.front())];
}

std::vector<NamedId> const& IdTable::NamedRows() const {
    if (m_has_names)
        return m_named;
    m_has_names = true;
    CheckedTable const& table =
        HasNames(m_table->Description()) || m_names.empty() ? *m_table : m_context->Table(m_names);
    if (!HasNames(table.Description()))
        return m_named;
    std::size_t const name = NameColumn(table.Description());
    table.VisitRows([&](CheckedRow const& row) {
        if (!row.Text(name).empty() && Contains(row.Integer(0)))
            m_named.push_back({static_cast<int>(row.Integer(0)), std::wstring(row.Text(name))});
    });
    return m_named;
}

std::string IdTable::Shown(int id) const {
    auto const row = Above(NamedRows(), id);
    // -1 stands for none among names.
    return id != -1 && row != NamedRows().end() && row->id == id ? tools::Shown(*row) : std::to_string(id);
}

std::string IdTable::Hint(int id) const {
    if (m_ids.empty())
        return "add the row to " + m_tag;
    std::string text;
    auto const& named = NamedRows();
    if (named.empty()) {
        auto const above = std::lower_bound(m_ids.begin(), m_ids.end(), id);
        bool const is_below =
            above == m_ids.end() ||
            (above != m_ids.begin() && std::int64_t{id} - above[-1] <= std::int64_t{*above} - id);
        text = DidYouMean(std::vector{std::to_string(is_below ? above[-1] : *above)});
    } else {
        // The nearest ones are among these.
        constexpr std::ptrdiff_t enough = 3;
        auto const above = Above(named, id);
        auto const first = above - std::min(enough, above - named.begin());
        auto const last = above + std::min(enough, named.end() - above);
        text = DidYouMean(NearestIds(id, std::span(first, last)));
    }
    return text.substr(std::string_view("; ").size());
}

IdTable const& KnownIds::Of(std::string_view table, std::string_view names) {
    auto const found = m_tables.find(table);
    if (found != m_tables.end())
        return found->second;
    return m_tables.emplace(table, IdTable(m_context, m_context.Table(table), names)).first->second;
}

bool IsDerived(CheckContext const& context) {
    auto const& messages = context.Messages();
    return !context.IsRefused() &&
           std::none_of(messages.begin(), messages.end(), [](LoadMessage const& message) {
               return message.text.starts_with(IncongruentSignals);
           });
}

void ExplainMessages(CheckContext const& context, FindingList& findings, std::wstring_view begin,
                     std::size_t count) {
    auto const& messages = context.Messages();
    for (std::size_t index = 0; index < messages.size() && count > 0; ++index) {
        if (!findings.IsExplained(index) && messages[index].text.starts_with(begin)) {
            findings.Explain(index);
            --count;
        }
    }
}

} // namespace paramdb::tools::check
