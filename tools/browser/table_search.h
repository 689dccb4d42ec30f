// Looking for a text in a table: in its tag, its columns and the texts of its rows.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <QtCore/QString>
#include <optional>

namespace paramdb::browser {

// Where a table has the text, without regard to case: empty for its tag, "column ratio", or the text of the
// first row that contains it. None if it has it nowhere. A text of one character is not looked for in rows;
// an empty one is in every tag.
[[nodiscard]] std::optional<QString> FindInTable(CatalogueEntry const& table, QString const& sought);

} // namespace paramdb::browser
