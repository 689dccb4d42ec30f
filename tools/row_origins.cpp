#include "tools/row_origins.h"

#include "tools/row_buffer.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>

namespace paramdb::tools {
namespace {

// The lines of a table's section that are read without fault, one after the other.
class GoodLines {
public:
    GoodLines(TableDescription const& table, CLakeNode const& section)
        : m_row(table), m_next(section.begin_unnamed()), m_end(section.end_unnamed()) {}

    // The next one, whose fields then stand in the buffer; null behind the last.
    CLakeNode const* Next() {
        while (m_next != m_end) {
            CLakeNode const& line = **m_next++;
            if (m_row.Read(line.value_text()))
                return &line;
        }
        return nullptr;
    }

    std::span<ConstField const> Key() const { return m_row.Key(); }

private:
    RowBuffer m_row;
    CLakeNode::unnamed_vector::const_iterator m_next;
    CLakeNode::unnamed_vector::const_iterator m_end;
};

// Most tables stand in the order of keys, without duplicates: rows and lines go side by side then. Empty
// where they do not.
std::vector<CLakeNode const*> SideBySide(CatalogueEntry const& table, CLakeNode const& section) {
    std::vector<CLakeNode const*> lines;
    lines.reserve(table.rows->RowCount());
    GoodLines good(*table.description, section);
    table.rows->VisitRows([&](auto key, auto) {
        CLakeNode const* const line = good.Next();
        if (line != nullptr && SameFields(good.Key(), key)) {
            lines.push_back(line);
            return true;
        }
        lines.clear();
        return false;
    });
    return lines;
}

// A load writes the instruments of relative limits into their keys, so that these are not those of the lines
// any more. The column; none in all other tables.
std::optional<std::size_t> RewrittenColumn(TableDescription const& table) {
    if (table.tag != std::wstring_view(L"<TRelativeLimit>"))
        return std::nullopt;
    return Clavis::qInstrument;
}

// Goes by the keys; of several rows with one key each gets its own line, in their order.
class LinesByKeys {
public:
    explicit LinesByKeys(CatalogueEntry const& table)
        : m_table(table), m_rewritten(RewrittenColumn(*table.description)) {}

    std::vector<CLakeNode const*> Find(CLakeNode const& section) {
        GoodLines good(*m_table.description, section);
        while (CLakeNode const* const line = good.Next())
            Add(good.Key(), line);
        std::vector<CLakeNode const*> result;
        result.reserve(m_table.rows->RowCount());
        m_table.rows->VisitRows([&](auto key, auto) {
            Pack(key);
            auto const found = m_lines.find(m_packed);
            bool const has_line = found != m_lines.end() && found->second.taken < found->second.lines.size();
            result.push_back(has_line ? found->second.lines[found->second.taken++].line : nullptr);
            return true;
        });
        return result;
    }

private:
    struct Line {
        int rewritten; // what stood in the rewritten column, by which the rows are in their order
        CLakeNode const* line;
    };
    struct Lines {
        std::vector<Line> lines;
        std::size_t taken = 0;
    };

    void Add(std::span<ConstField const> key, CLakeNode const* line) {
        Pack(key);
        std::vector<Line>& lines = m_lines[m_packed].lines;
        int const rewritten = m_rewritten ? key[*m_rewritten].As<std::int32_t>() : 0;
        auto const place =
            std::upper_bound(lines.begin(), lines.end(), rewritten,
                             [](int value, Line const& other) { return value < other.rewritten; });
        bool const is_there = place != lines.begin() && place[-1].rewritten == rewritten;
        if (!is_there || !m_table.description->has_unique_keys)
            lines.insert(place, {rewritten, line});
    }

    // The key without the column that the load writes.
    void Pack(std::span<ConstField const> key) {
        if (!m_rewritten) {
            PackFields(key, m_packed);
            return;
        }
        std::vector<ConstField> fields(key.begin(), key.end());
        fields.erase(fields.begin() + static_cast<std::ptrdiff_t>(*m_rewritten));
        PackFields(fields, m_packed);
    }

    CatalogueEntry const& m_table;
    std::optional<std::size_t> m_rewritten;
    std::string m_packed;
    std::unordered_map<std::string, Lines> m_lines;
};

} // namespace

RowOrigins::RowOrigins(CatalogueEntry const& table, CLake const& lake) {
    Silence const silence;
    auto const section = lake[table.description->tag];
    if (section.found() && section.position->is_section()) {
        m_lines = SideBySide(table, *section.position);
        if (m_lines.size() != table.rows->RowCount())
            m_lines = LinesByKeys(table).Find(*section.position);
    }
    m_lines.resize(table.rows->RowCount());
}

} // namespace paramdb::tools
