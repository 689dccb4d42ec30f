// A table of any key and row class, for tests of what prints rows.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <utility>
#include <vector>

template <class Key, class Row>
class FakeRows : public CQParamTableRows {
public:
    using List = std::vector<std::pair<Key, Row>>;

    explicit FakeRows(List rows) : m_rows(std::move(rows)) {}

    std::size_t RowCount() const override { return m_rows.size(); }
    std::size_t ContainerBytes() const override { return 100 * m_rows.size(); }
    void VisitRows(Visitor const& visitor) const override {
        for (auto const& [key, row] : m_rows) {
            if (!visitor(paramdb::ConstFields(key), paramdb::ConstFields(row)))
                return;
        }
    }

private:
    List m_rows;
};

// A description with these columns.
inline paramdb::TableDescription FakeTable(std::vector<paramdb::ColumnDescription> key_columns,
                                           std::vector<paramdb::ColumnDescription> row_columns) {
    return {.tag = L"<TFake>",
            .accessor = "Fake",
            .container = "CFake",
            .key = "QKey",
            .row = "QRow",
            .instrument_class = -1,
            .has_unique_keys = true,
            .key_columns = std::move(key_columns),
            .row_columns = std::move(row_columns)};
}
