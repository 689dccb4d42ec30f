#include "tools/row_origins.h"

#include "tools/row_buffer.h"

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

// Goes by the keys; of several rows with one key each gets its own line, in their order.
std::vector<CLakeNode const*> ByKeys(CatalogueEntry const& table, CLakeNode const& section) {
    struct Lines {
        std::vector<CLakeNode const*> lines;
        std::size_t taken = 0;
    };
    std::unordered_map<std::string, Lines> lines_of;
    std::string packed;
    GoodLines good(*table.description, section);
    while (CLakeNode const* const line = good.Next()) {
        PackFields(good.Key(), packed);
        Lines& lines = lines_of[packed];
        if (lines.lines.empty() || !table.description->has_unique_keys)
            lines.lines.push_back(line);
    }
    std::vector<CLakeNode const*> result;
    result.reserve(table.rows->RowCount());
    table.rows->VisitRows([&](auto key, auto) {
        PackFields(key, packed);
        auto const found = lines_of.find(packed);
        bool const has_line = found != lines_of.end() && found->second.taken < found->second.lines.size();
        result.push_back(has_line ? found->second.lines[found->second.taken++] : nullptr);
        return true;
    });
    return result;
}

} // namespace

RowOrigins::RowOrigins(CatalogueEntry const& table, CLake const& lake) {
    Silence const silence;
    auto const section = lake[table.description->tag];
    if (section.found() && section.position->is_section()) {
        m_lines = SideBySide(table, *section.position);
        if (m_lines.size() != table.rows->RowCount())
            m_lines = ByKeys(table, *section.position);
    }
    m_lines.resize(table.rows->RowCount());
}

} // namespace paramdb::tools
