#include "tools/check/context.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/storage/parameter_lake.h>

#include "tools/check/revision_files.h"
#include "tools/report.h"
#include "tools/table_names.h"

#include <stdexcept>
#include <type_traits>

namespace paramdb::tools::check {

std::unique_ptr<CheckContext> CheckContext::Make(std::vector<std::string> const& files, std::ostream& err) {
    std::unique_ptr<CheckContext> context(new CheckContext);
    RevisionFiles const lakes(files, err);
    if (!lakes.IsGood())
        return nullptr;
    auto load = LoadFiles(lakes.Names(), err, [&](int category, int style, std::wstring const& text) {
        context->m_messages.push_back({category, style, text});
    });
    if (!load)
        return nullptr;
    context->m_load = std::move(*load);
    for (std::size_t file = 0; file < files.size(); ++file)
        context->m_load.sources.files[file].name = files[file];
    context->m_origins = std::make_unique<LineOrigins>(context->Lake());
    context->m_outline = MakeOutline(context->Lake(), *context->m_origins);
    for (CatalogueEntry const& entry : context->m_parameters.Entries())
        context->m_tables.emplace_back(*context, entry, context->Lake());
    return context;
}

CLake const& CheckContext::Lake() const {
    return CParameterLake::Lake();
}

std::string CheckContext::FileName(std::size_t file) const {
    return Printable(FromUtf8(m_load.sources.files[file].name));
}

CheckedTable const& CheckContext::Table(std::string_view name) const {
    TableDescription const* const description = FindTable(name);
    for (CheckedTable const& table : m_tables) {
        if (&table.Description() == description)
            return table;
    }
    throw std::logic_error("no such table: " + std::string(name));
}

Place CheckContext::PlaceOf(CLakeNode const& line) const {
    return (line.is_named() ? line.key_text() : line.value_text()).Visit([&]<class View>(View text) {
        if constexpr (std::is_same_v<View, std::string_view>)
            return PlaceOf(text);
        auto const origin = m_origins->Find(line);
        return origin ? Place{origin->file, origin->line, origin->column, text.size()} : Place();
    });
}

Place CheckContext::PlaceOf(std::string_view text) const {
    auto const origin = m_origins->Find(text.data());
    return origin ? Place{origin->file, origin->line, origin->column, text.empty() ? 1 : text.size()}
                  : Place();
}

} // namespace paramdb::tools::check
